#include "charts/time_series_window.h"

#include <cmath>
#include <gtest/gtest.h>
#include <sstream>

#include "charts/chart_session.h"

namespace fathomline {
namespace {

class TimeSeriesWindowTest : public ChartSession {
 protected:
  // Entries of the combo boxes.
  enum Mode { kAutomatic, kScrolling, kFixed, kManual };
  enum Interval {
    kTenMinutes,
    kQuarter,
    kHalf,
    kOneHour,
    kTwoHours,
    kSixHours,
    kTwelveHours,
    kDay
  };

  frmTimeSeries& Window(SentenceType type) { return charts.TimeSeriesOf(1, type); }

  // What the bottom axis shows, as minutes of the day.
  AxisRange MinutesShown(const Chart& chart) {
    const AxisRange range = chart.Bottom().Range();
    const auto minutes = [](double days) {
      return std::round((days - kDate.days) * 86400.0) / 60.0;
    };
    return {minutes(range.low), minutes(range.high)};
  }

  frmTimeSeries& depth = Window(SentenceType::DBT);
  frmTimeSeries& position = Window(SentenceType::GGA);
};

TEST_F(TimeSeriesWindowTest, HaveASeriesForEachSatellite) {
  EXPECT_EQ(Window(SentenceType::GSA).TChart(1).SeriesCount(), 152);
  const Chart& elevations = Window(SentenceType::GSV).TChart(0);
  EXPECT_EQ(elevations.SeriesCount(), 152);
  EXPECT_EQ(elevations.Series(7).Title(), "07");
  EXPECT_EQ(elevations.Series(151).Title(), "151");
  EXPECT_EQ(elevations.Series(20).ShownColour(), elevations.Series(1).ShownColour());
  EXPECT_EQ(Window(SentenceType::GSV).TChart(2).Series(21).ShownColour(),
            elevations.Series(21).ShownColour());
}

TEST_F(TimeSeriesWindowTest, TellItsSystemByLabelAndIconAndKeepItsPlace) {
  frmTimeSeries& secondary = charts.TimeSeriesOf(2, SentenceType::DBT);
  EXPECT_EQ(depth.lblSystemColor.Text(), "PRIMARY SYSTEM (blue)");
  EXPECT_FALSE(depth.IconColour());
  EXPECT_EQ(secondary.lblSystemColor.Text(), "(Green)");
  EXPECT_EQ(secondary.lblSystemColor.ShownColour(), 65280);
  EXPECT_EQ(secondary.IconColour(), 32768);
  EXPECT_EQ(secondary.Caption(), "DBT Time Series 2 - Aft");
  depth.UserPlace({300, 450, 6000, 4500});
  depth.Close();
  EXPECT_EQ(settings.Get("Settings", "TimeSeriesDBTLeft1"), "300");
  depth.Show();
  EXPECT_EQ(depth.Place(), (WindowPlace{300, 450, 6000, 4500}));
}

TEST_F(TimeSeriesWindowTest, ScrollsWithTheTimeEvenBackwards) {
  depth.cmbOption.UserChoose(kScrolling);
  EXPECT_TRUE(depth.cmbInterval.Visible());
  depth.cmbInterval.UserChoose(kQuarter);
  SetTime(12, 0, 0);
  SendDepth(4.0F);
  EXPECT_EQ(MinutesShown(depth.TChart(0)), (AxisRange{705.0, 720.0}));
  SetTime(2, 0, 0);
  SendDepth(4.0F);
  EXPECT_EQ(MinutesShown(depth.TChart(0)), (AxisRange{105.0, 120.0}));
}

TEST_F(TimeSeriesWindowTest, StandsOnABlockOfTheDay) {
  depth.cmbOption.UserChoose(kFixed);
  struct Case {
    int interval;
    int hour, minute, second;
    AxisRange minutes;
  };
  for (const Case& one : std::vector<Case>{{kTenMinutes, 12, 9, 59, {720, 730}},
                                           {kTenMinutes, 12, 10, 0, {730, 740}},
                                           {kQuarter, 12, 44, 0, {750, 765}},
                                           {kHalf, 12, 44, 0, {750, 780}},
                                           {kOneHour, 12, 44, 0, {720, 780}},
                                           {kTwoHours, 13, 44, 0, {720, 840}},
                                           {kSixHours, 13, 44, 0, {720, 1080}},
                                           {kTwelveHours, 11, 44, 0, {0, 720}},
                                           {kDay, 23, 44, 0, {0, 1440}}}) {
    depth.cmbInterval.UserChoose(one.interval);
    SetTime(one.hour, one.minute, one.second);
    SendDepth(4.0F);
    EXPECT_EQ(MinutesShown(depth.TChart(0)), one.minutes) << one.interval;
  }
}

TEST_F(TimeSeriesWindowTest, GivesAllChartsOneTimeAxis) {
  frmTimeSeries& attitude = Window(SentenceType::ATT);
  attitude.cmbOption.UserChoose(kScrolling);
  SetTime(12, 0, 0);
  Send("$PFEC,GPatt,10.0,-1.5,2.5*00");
  EXPECT_EQ(MinutesShown(attitude.TChart(1)), (AxisRange{710.0, 720.0}));

  attitude.cmbOption.UserChoose(kAutomatic);
  const AxisRange zoom{kDate.days + 0.5, kDate.days + 0.6};
  attitude.TChart(1).UserZoom({.bottom = zoom, .left = {}, .right = {}});
  EXPECT_EQ(attitude.TChart(0).Bottom().Range(), zoom);
  Send("$PFEC,GPatt,10.0,-1.5,2.5*00");
  EXPECT_EQ(attitude.TChart(0).Bottom().Range(), zoom) << "holds while data come in";
  attitude.TChart(0).UserZoom({.bottom = {}, .left = AxisRange{0.0, 1.0}, .right = {}});
  attitude.TChart(1).UserUndoZoom();
  EXPECT_FALSE(attitude.TChart(0).Left().Zoom()) << "the last step of the window";
  EXPECT_EQ(attitude.TChart(0).Bottom().Range(), zoom);
  attitude.TChart(0).UserUndoZoom();
  EXPECT_FALSE(attitude.TChart(1).Bottom().Zoom());
  EXPECT_TRUE(attitude.TChart(1).Bottom().Automatic());
  attitude.TChart(0).UserZoom({.bottom = zoom, .left = {}, .right = {}});
  EXPECT_EQ(attitude.TChart(1).Bottom().Range(), zoom) << "of the first chart, too";
}

TEST_F(TimeSeriesWindowTest, ChoosesTheFilterByHandOrByTheTable) {
  const ChartSettings& chosen = depth.Settings();
  EXPECT_EQ(chosen.TimeAxisMode, "Automatic");
  EXPECT_TRUE(chosen.AutoFilter);
  depth.cmbFilter.UserChoose(1);
  EXPECT_EQ(chosen.FilterCount, -1);
  EXPECT_FALSE(depth.lblFilter.Visible());
  depth.cmbFilter.UserChoose(7);
  EXPECT_EQ(chosen.FilterCount, 100);
  EXPECT_EQ(depth.lblFilter.Text(), "100");
  depth.cmbOption.UserChoose(kFixed);
  depth.cmbInterval.UserChoose(kOneHour);
  EXPECT_EQ(chosen.FilterCount, 100);
  depth.cmbFilter.UserChoose(0);
  EXPECT_EQ(chosen.FilterCount, 10) << "from the span of an hour";
  EXPECT_EQ(depth.lblFilter.Text(), "10");
  EXPECT_TRUE(depth.lblFilter.Visible());
  depth.cmbOption.UserChoose(kAutomatic);
  SetTime(12, 0, 0);
  depth.TChart(0).Series(0).Add(kDate.days + 0.5, 0.0F);
  for (int i = 0; i < 600; ++i) depth.TChart(0).Series(0).Add(kDate.days + 0.5, 4.0F);
  depth.Settings().FilterCount = 0;
  SendDepth(4.0F);
  EXPECT_EQ(depth.lblFilter.Text(), "2") << "from the points drawn";
}

TEST_F(TimeSeriesWindowTest, KeepsTheRangeShownWhenItIsTakenOverByHand) {
  SetTime(12, 0, 0);
  SendDepth(4.0F);
  SetTime(12, 10, 0);
  SendDepth(5.0F);
  depth.cmbOption.UserChoose(kManual);
  EXPECT_FALSE(depth.cmbInterval.Visible());
  EXPECT_FALSE(depth.TChart(0).Bottom().Automatic());
  EXPECT_EQ(MinutesShown(depth.TChart(0)), (AxisRange{720.0, 730.0}));
  SetTime(12, 20, 0);
  SendDepth(5.0F);
  EXPECT_EQ(MinutesShown(depth.TChart(0)), (AxisRange{720.0, 730.0}));
}

TEST_F(TimeSeriesWindowTest, HidesOnCloseAndComesBackFromAResetAsItWasButEmpty) {
  charts.OpenTimeSeries(1);
  EXPECT_TRUE(records.SystemSetups[1][WindowFlag::TimeSeriesDBT]);
  depth.UserClose();
  EXPECT_TRUE(depth.Loaded()) << "hides instead of closing, and goes on plotting";
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::TimeSeriesDBT]);
  Send("$TIROT,-3.5,A*00");
  SendDepth(4.0F);
  EXPECT_EQ(depth.TChart(0).Series(0).Count(), 1);
  records.CommSetups[1].AnalyseVTG = false;
  charts.ResetTimeSeries();
  EXPECT_TRUE(Window(SentenceType::ROT).Visible());
  EXPECT_EQ(SeriesOf(SentenceType::ROT, 0, 0).Count(), 0);
  EXPECT_TRUE(depth.Loaded());
  EXPECT_FALSE(depth.Visible());
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::TimeSeriesDBT]);
  EXPECT_EQ(depth.TChart(0).Series(0).Count(), 0);
  EXPECT_EQ(Window(SentenceType::GSV).TChart(1).SeriesCount(), 152);
  EXPECT_FALSE(Window(SentenceType::VTG).Loaded());
  EXPECT_FALSE(charts.TimeSeriesOf(3, SentenceType::DBT).Loaded()) << "not enabled";
}

TEST_F(TimeSeriesWindowTest, ShowsTheChartOfDifferentialDataOnlyWhereWanted) {
  EXPECT_TRUE(position.chkDGPS->Checked());
  position.chkDGPS->Click();
  EXPECT_FALSE(position.TChart(3).Visible());
  EXPECT_TRUE(records.NotDisplayDGPS[1]);
  position.Close();
  position.Show();
  EXPECT_FALSE(position.chkDGPS->Checked());
  EXPECT_FALSE(position.TChart(3).Visible());

  position.UserState(WindowState::Maximised);
  face.ExpectBox("No effect as long as form is maximized!");
  position.chkDGPS->Click();
  EXPECT_FALSE(position.chkDGPS->Checked());
  EXPECT_FALSE(position.TChart(3).Visible());
  position.UserState(WindowState::Normal);
  position.chkDGPS->Click();
  EXPECT_TRUE(position.TChart(3).Visible());
  EXPECT_FALSE(records.NotDisplayDGPS[1]);
}

TEST_F(TimeSeriesWindowTest, ForgetsTheRunOfAStationWhenClosed) {
  const std::string fix = "$GPGGA,120000,0000.0000,N,00000.1000,E,2,9,1.2,12.5,M,0.0,M,3.0,5*00";
  Send(fix);
  Send("$GPGGA,120001,0000.0000,N,00000.2000,E,2,9,1.2,12.5,M,0.0,M,3.0,5*00");
  position.Close();
  position.Show();
  Send(fix);
  EXPECT_EQ(SeriesOf(SentenceType::GGA, 3, 2).Count(), 0);
  EXPECT_EQ(Values(SeriesOf(SentenceType::GGA, 0, 1)), Values(SeriesOf(SentenceType::GGA, 0, 0)))
      << "one fix is its own mean";
  Send(fix);
  EXPECT_EQ(SeriesOf(SentenceType::GGA, 3, 2).Count(), 1);
}

TEST_F(TimeSeriesWindowTest, WritesThePointsShownAsCSV) {
  SetTime(12, 0, 0);
  SendDepth(4.5F);
  SetTime(12, 10, 0);
  SendDepth(5.0F);
  depth.TChart(0).UserZoom(
      {.bottom = AxisRange{kDate.days + 0.49, kDate.days + 0.501}, .left = {}, .right = {}});
  std::ostringstream out;
  depth.TChart(0).WriteCsv(out);
  EXPECT_EQ(out.str(),
            "Time (UTC),Series,Value\n2020-01-02 12:00:00,Depth (below transducer),4.5\n");
}

}  // namespace
}  // namespace fathomline
