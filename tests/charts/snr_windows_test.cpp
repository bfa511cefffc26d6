#include "charts/snr_windows.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "charts/chart_session.h"

namespace fathomline {
namespace {

TEST(SNRRows, FollowTheTestsOfThePRN) {
  constexpr std::array kPRNs = {1, 32, 33, 64, 65, 96, 97, 99, 100, 132, 133, 151};
  constexpr std::array kRows = {1, 1, 2, 2, 3, 3, 0, 0, 4, 4, 0, 0};
  for (std::size_t i = 0; i < kPRNs.size(); ++i) EXPECT_EQ(SNRRowOf(kPRNs[i]), kRows[i]) << i;
}

class SNRTest : public ChartSession {
 protected:
  void SendSatellite(int prn, int elevation, int snr = 40) {
    Send("$GPGSV,1,1,01," + std::to_string(prn) + "," + std::to_string(elevation) + ",200," +
         std::to_string(snr) + "*00");
  }
  // From more than six hundred points on, an automatic filter takes every second sample.
  void FillFirst(ChartWindow& window) {
    for (int i = 0; i < 601; ++i) window.TChart(0).Series(0).Add(43832.0, 40.0F);
  }
  Points Ratios(int row, int prn) { return Values(charts.SNROf(1, row).ChartOf(prn)->Series(0)); }
};

TEST_F(SNRTest, FeedsTheChartsOfTheSatellitesInView) {
  charts.OpenSNR(1, 1);
  charts.OpenSNR(1, 4);
  EXPECT_TRUE(charts.SkyplotOf(1).Visible()) << "it feeds these windows";
  SendSatellite(5, 20);
  SendSatellite(5, 0);
  SendSatellite(131, 30, 41);
  SendSatellite(132, 30, 41);
  EXPECT_EQ(Ratios(1, 5), Points{40.0F});
  EXPECT_EQ(Values(charts.SNROf(1, 1).TChart(4).Series(1)), Points{20.0F});
  EXPECT_EQ(Values(charts.SNROf(1, 1).TChart(4).Series(2)), Points{200.0F});
  EXPECT_EQ(Ratios(4, 131), Points{41.0F});
  EXPECT_EQ(charts.SNROf(1, 4).ChartOf(132), nullptr);
  EXPECT_EQ(charts.SNROf(1, 2).TChart(31).Text(), " PRN 64");
  SendSatellite(7, 60, 48);
  charts.SNROf(1, 1).Refresh();
  EXPECT_EQ(charts.SNROf(1, 1).ChartOf(5)->Left().Range(), (AxisRange{0.0, 60.0}))
      << "one scale for all";
}

TEST_F(SNRTest, SharesTheBlocksOfItsFilterWithTheChartsOfTheGroup) {
  charts.OpenSNR(1, 1);
  charts.SNROf(1, 1).cmbFilter.UserChoose(2);
  charts.TimeSeriesOf(1, SentenceType::GSV).cmbFilter.UserChoose(2);
  SendSatellite(5, 20, 41);
  SendSatellite(5, 20, 42);
  // Each group gives a sample to both: the charts of the group begin each block, these windows end
  // it.
  EXPECT_TRUE(Values(SeriesOf(SentenceType::GSV, 2, 5)).empty());
  EXPECT_EQ(Ratios(1, 5), (Points{41.0F, 42.0F}));
}

TEST_F(SNRTest, AsksBeforeItIsClosed) {
  charts.OpenSNR(1, 1);
  charts.OpenSNR(1, 2);
  frmTimeSeriesSNR& window = charts.SNROf(1, 1);
  face.ExpectBox("Are you sure ? All timeseries data will be lost.", Answer::No);
  window.UserClose();
  EXPECT_TRUE(window.Visible());
  face.ExpectBox("Are you sure ? All timeseries data will be lost.", Answer::Yes);
  window.UserClose();
  EXPECT_FALSE(window.Loaded());
  EXPECT_TRUE(records.SystemSetups[1][WindowFlag::TimeSeriesSNR]) << "one is left";
  charts.SNROf(1, 2).Close();
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::TimeSeriesSNR]);
}

TEST_F(SNRTest, ShowsTheSatellitesChosenAndLosesNoPoints) {
  charts.OpenSNR(1, 2);
  frmTimeSeriesSNR& window = charts.SNROf(1, 2);
  SendSatellite(34, 20);
  frmVisibleSNRTimeSeries& dialog = charts.visibleSNR;
  face.WhileWaiting([&] {
    EXPECT_EQ(dialog.chkPRN(0).Text(), "PRN033");
    EXPECT_EQ(dialog.lblNoOfSeries.Text(), "32");
    EXPECT_EQ(dialog.cmbColumns.Text(), "4");
    dialog.chkPRN(0).Click();
    EXPECT_EQ(dialog.lblNoOfSeries.Text(), "31");
    dialog.cmbColumns.UserChoose(0);
    dialog.cmdOk.Click();
  });
  window.mnuWindow.Click();
  EXPECT_FALSE(records.VisibleSNR[1].Shown[0]);
  EXPECT_EQ(records.VisibleSNR[1].Columns, 1);
  EXPECT_FALSE(window.TChart(0).Visible());
  EXPECT_EQ(window.Content().Children().at(1).Columns(), 1);
  EXPECT_EQ(window.Content().Children().at(1).Children().size(), 31U);
  EXPECT_EQ(Ratios(2, 34), Points{40.0F});
  FillFirst(window);
  SendSatellite(34, 20);
  EXPECT_EQ(window.lblFilter.Text(), "2");

  face.WhileWaiting([&] {
    EXPECT_EQ(dialog.cmbColumns.Text(), "1");
    dialog.chkPRN(5).Click();
    dialog.cmdCancel.Click();
  });
  window.mnuWindow.Click();
  EXPECT_TRUE(records.VisibleSNR[1].Shown[5]);
}

TEST_F(SNRTest, PlotsASingleSatelliteAndHidesOnClose) {
  charts.OpenSkyplot(1);
  charts.OpenSatellite(1, 7);
  const auto& windows = program.desktop.Windows();
  const auto found = std::find_if(windows.begin(), windows.end(), [](const Window* one) {
    return one->FullName() == "frmTimeSeriesGSV_SVbySV-1-7";
  });
  ASSERT_NE(found, windows.end());
  auto& window = static_cast<frmTimeSeriesGSV_SVbySV&>(**found);
  const auto flag = static_cast<WindowFlag>(14 + 7);
  FillFirst(window);
  SendSatellite(7, 1);
  EXPECT_EQ(window.lblFilter.Text(), "2");
  charts.ResetTimeSeries();
  window.Refresh();
  EXPECT_EQ(window.lblEl.Text(), "");
  window.cmbOption.UserChoose(1);
  SendSatellite(7, 1);
  window.Refresh();
  EXPECT_EQ(window.lblEl.Text(), "1");
  EXPECT_EQ(window.TChart(0).Bottom().Maximum(), records.MessageTime[1].days) << "it scrolls";
  EXPECT_EQ(Values(window.TChart(0).Series(0)), Points{40.0F});
  EXPECT_TRUE(records.SystemSetups[1][flag]);
  window.UserClose();
  EXPECT_TRUE(window.Loaded());
  EXPECT_FALSE(records.SystemSetups[1][flag]);
  SendSatellite(7, 34);
  EXPECT_EQ(window.TChart(0).Series(0).Count(), 2);
  charts.ResetTimeSeries();
  EXPECT_FALSE(window.Visible());
  EXPECT_EQ(window.TChart(0).Series(0).Count(), 0);
  charts.OpenSatellite(1, 149);
  EXPECT_TRUE(records.SystemSetups[1][static_cast<WindowFlag>(14 + 149)]);
  charts.OpenSatellite(1, 150);
  charts.OpenSatellite(1, 151);
}

}  // namespace
}  // namespace fathomline
