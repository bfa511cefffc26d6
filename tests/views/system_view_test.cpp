#include "views/system_view.h"

#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/test_program.h"

namespace fathomline {
namespace {

constexpr int kSystem = 2;

struct Told {
  const char* caption;
  int flag;         // its position among those of the system
  const char* key;  // of its left edge
};

// Of every view that the program makes when it starts.
const std::map<std::string, Told> kViews = {
    {"frmNumerics-2", {"Numerics 2 - Gyro", 0, "NumericsLeft"}},
    {"frmStatistics-2", {"Statistics 2 - Gyro", 2, "StatisticsLeft"}},
    {"frmStatisticsSNR-2", {"Statistics SNR 2 - Gyro", 3, "StatisticsSNRLeft"}},
    {"frmNMEA-2", {"NMEA Monitor 2 - Gyro", 4, "MonitorLeft"}},
    {"frmScatter-2", {"Scatter plot 2 - Gyro", 5, "ScatterLeft2"}},
    {"frmSkyplot-2", {"Skyplot 2 - Gyro - GSA/GSV Numerics", 6, "SkyplotLeft2"}},
    {"frmTimeSeriesGGA-2", {"Position Time Series 2 - Gyro", 7, "TimeSeriesGGALeft2"}},
    {"frmTimeSeriesGNS-2", {"GNS Time Series 2 - Gyro", 8, "TimeSeriesGNSLeft2"}},
    {"frmTimeSeriesGLL-2", {"GLL Time Series 2 - Gyro", 9, "TimeSeriesGLLLeft2"}},
    {"frmTimeSeriesRMC-2", {"RMC Time Series 2 - Gyro", 10, "TimeSeriesRMCLeft2"}},
    {"frmTimeSeriesVTG-2", {"VTG Time Series 2 - Gyro", 11, "TimeSeriesVTGLeft2"}},
    {"frmTimeSeriesGSA-2", {"GSA Time 2 - Gyro", 12, "TimeSeriesGSALeft2"}},
    {"frmTimeSeriesGSV-2", {"GSV Time Series 2 - Gyro", 13, "TimeSeriesGSVLeft2"}},
    {"frmTimeSeriesHDT-2", {"HDT Time Series 2 - Gyro", 164, "TimeSeriesHDTLeft2"}},
    {"frmTimeSeriesATT-2", {"ATT Time Series 2 - Gyro", 165, "TimeSeriesATTLeft2"}},
    {"frmTimeSeriesROT-2", {"ROT Time Series 2 - Gyro", 166, "TimeSeriesROTLeft2"}},
    {"frmTimeSeriesVHW-2", {"VHW Time Series 2 - Gyro", 167, "TimeSeriesVHWLeft2"}},
    {"frmTimeSeriesDBT-2", {"DBT Time Series 2 - Gyro", 168, "TimeSeriesDBTLeft2"}},
    {"frmARPATargets-2", {"ARPA Targets 2 - Gyro", 169, "ARPATargetsLeft2"}},
    {"frmAISTargets-2", {"AIS Targets 2 - Gyro", 170, "AISTargetsLeft2"}},
    {"frmTimeSeriesGST-2", {"GST Time Series 2 - Gyro", 172, "TimeSeriesGSTLeft2"}},
    {"frmTimeSeriesSNR-2-1", {"GPS SNR Timeseries 2 - Gyro", 171, "TimeSeriesSNRLeft"}},
    {"frmTimeSeriesSNR-2-2", {"SBAS SNR Timeseries 2 - Gyro", 171, "TimeSeriesSNRLeft"}},
    {"frmTimeSeriesSNR-2-3", {"GLONASS SNR Timeseries 2 - Gyro", 171, "TimeSeriesSNRLeft"}},
    {"frmTimeSeriesSNR-2-4", {"BeiDou SNR Timeseries 2 - Gyro", 171, "TimeSeriesSNRLeft"}},
    {"frmTimeSeriesSNR-2-5", {"Galileo SNR Timeseries 2 - Gyro", 171, "TimeSeriesSNRLeft"}},
    {"frmTimeSeriesGSV_SVbySV-2-7",
     {"PRN 07 Time Series 2 - Gyro", 21, "TimeSeriesGSV_SVbySVLeft2"}},
};

std::string Written(Window& window) {
  std::ostringstream out;
  window.Write(out);
  return out.str();
}

// Every one is told of its system, is flagged there and nowhere else while it is shown, comes back
// where it was left, and begins anew after a reset.
TEST(SystemView, AllOfThemKeepWhatViewsHaveInCommon) {
  TestProgram test;
  Records& records = test.records;
  records.CommSetups[kSystem].Enabled = true;
  records.CommSetups[kSystem].Name = "Gyro";
  test.Analyse({"GGA", "HDT", "GSV"}, kSystem);
  test.program.windows.charts.OpenSatellite(kSystem, 7);
  records.ReloadWindows = true;
  test.program.session.startUp.CloseSetup();

  const auto flags = [&records] {
    std::vector<int> set;
    for (int system = 1; system <= kSystems; ++system) {
      for (int flag = 0; flag < static_cast<int>(kWindowFlags); ++flag) {
        if (records.SystemSetups[system][static_cast<WindowFlag>(flag)]) {
          set.push_back(1000 * system + flag);
        }
      }
    }
    return set;
  };

  std::vector<std::string> seen;
  for (Window* const window : test.program.desktop.Windows()) {
    if (window->Style() != WindowStyle::Child || window->Index() != kSystem) continue;
    SCOPED_TRACE(window->FullName());
    seen.push_back(window->FullName());
    auto* const view = dynamic_cast<SystemView*>(window);
    ASSERT_NE(view, nullptr);
    const auto told = kViews.find(window->FullName());
    ASSERT_NE(told, kViews.end());
    view->Close();

    view->LoadHidden();
    EXPECT_TRUE(view->Loaded() && !view->Visible());
    EXPECT_EQ(flags(), std::vector<int>{});
    const std::string fresh = Written(*view);
    view->ShowView();
    EXPECT_EQ(view->Caption(), told->second.caption);
    EXPECT_EQ(flags(), std::vector<int>{1000 * kSystem + told->second.flag});

    view->UserPlace({1500, 1200, 7500, 6000});
    for (const char* const body :
         {"GPGGA,101112,5930.5,N,01045.2,E,1,08,0.9,12.5,M,40,M,,", "HEHDT,10.5,T",
          "GPGSV,1,1,1,07,45,120,40", "RATTM,3,1.5,90,T,5,10,T,0.1,2,N,A,T,,101112,A"}) {
      test.Feed(body, kSystem);
    }
    records.ReloadWindows = false;
    const std::uint64_t loads = view->Loads();
    view->Reset(ViewState::Shown);
    EXPECT_EQ(view->Loads(), loads);
    records.ReloadWindows = true;
    view->Reset(ViewState::Shown);
    EXPECT_EQ(view->Loads(), loads + 1);
    EXPECT_TRUE(view->Visible());
    EXPECT_EQ(view->Place(), (WindowPlace{1500, 1200, 7500, 6000}));
    EXPECT_EQ(test.settings.Get("Settings", told->second.key, "none"), "1500");
    // The counters of the monitor have a button of their own.
    if (view->Name() != "frmNMEA") {
      EXPECT_EQ(Written(*view), fresh);
    }

    view->Close();
    EXPECT_EQ(flags(), std::vector<int>{});
    view->Reset(ViewState::Closed);
    EXPECT_FALSE(view->Loaded());
  }
  EXPECT_EQ(seen.size(), kViews.size());
}

}  // namespace
}  // namespace fathomline
