#include "charts/axis_dialogs.h"

#include <gtest/gtest.h>

#include "charts/chart_session.h"

namespace fathomline {
namespace {

class AxisDialogTest : public ChartSession {
 protected:
  static constexpr int kManual = 3;

  AxisDialogTest() {
    attitude.Show();
    for (Chart& chart : attitude.TChart) {
      chart.Left().SetAutomatic(false);
      chart.Left().SetMinimum(-2.0);
      chart.Left().SetMaximum(4.0);
    }
  }

  frmTimeSeries& attitude = charts.TimeSeriesOf(1, SentenceType::ATT);
  frmYAxis& y = charts.yAxis;
  frmXAxis& x = charts.xAxis;
  frmSetTimeDate& moment = charts.setTimeDate;
};

TEST_F(AxisDialogTest, SetsTheRangeOfTheAxisClickedUnlessItIsRefused) {
  face.WhileWaiting([this] {
    EXPECT_EQ(y.txtMin.Text(), "-2.0");
    EXPECT_EQ(y.txtMax.Text(), "4.0");
    EXPECT_FALSE(y.chkAutomatic.Checked());
    y.txtMin.UserText("4");
    face.ExpectBox("Min higher than Max not allowed. Try again!");
    y.cmdOk.Click();
    EXPECT_TRUE(y.Visible());
    EXPECT_EQ(attitude.TChart(1).Left().Range(), (AxisRange{-2.0, 4.0}));
    y.txtMin.UserText("-1,5");
    y.txtMax.UserText("7.25");
    y.cmdOk.Click();
  });
  attitude.TChart(1).ClickAxis(AxisSide::Left);
  EXPECT_EQ(attitude.TChart(1).Left().Range(), (AxisRange{-1.5, 7.25}));
  EXPECT_EQ(attitude.TChart(0).Left().Range(), (AxisRange{-2.0, 4.0}));
}

TEST_F(AxisDialogTest, DisablesWhatIsAutomatic) {
  face.WhileWaiting([this] {
    y.chkAutMin.Click();
    EXPECT_FALSE(y.txtMin.Usable());
    EXPECT_TRUE(y.txtMax.Usable());
    y.chkAutomatic.Click();
    EXPECT_FALSE(y.txtMax.Usable());
    EXPECT_FALSE(y.chkAutMax.Usable());
    y.chkAutomatic.Click();
    y.cmdOk.Click();
  });
  Axis& left = attitude.TChart(0).Left();
  attitude.TChart(0).ClickAxis(AxisSide::Left);
  EXPECT_FALSE(left.Automatic());
  EXPECT_TRUE(left.AutomaticMinimum());
  EXPECT_FALSE(left.AutomaticMaximum());
  EXPECT_EQ(left.Maximum(), 4.0);
  face.WhileWaiting([this] {
    for (CheckBox* box : {&y.chkAutMin, &y.chkAutMax}) box->Click();
    y.cmdOk.Click();
  });
  attitude.TChart(0).ClickAxis(AxisSide::Left);
  EXPECT_TRUE(left.AutomaticMaximum() && !left.AutomaticMinimum());
  for (const bool automatic : {false, true}) {
    face.WhileWaiting([&] {
      EXPECT_EQ(y.chkAutomatic.Checked(), automatic);
      EXPECT_TRUE(automatic || (y.chkAutMax.Checked() && !y.chkAutMin.Checked()));
      y.chkAutomatic.Click();
      y.cmdOk.Click();
    });
    attitude.TChart(0).ClickAxis(AxisSide::Left);
    EXPECT_NE(left.Automatic(), automatic);
  }
}

TEST_F(AxisDialogTest, OpensTheTimeAxisInManualModeOnly) {
  face.ExpectBox("Time Axis has to be selected as manual to adjust Start/End time");
  attitude.TChart(0).ClickAxis(AxisSide::Bottom);
  EXPECT_FALSE(x.Visible());
}

TEST_F(AxisDialogTest, GivesAllChartsTheTimesThatWereChosenUnlessTheyAreRefused) {
  attitude.cmbOption.UserChoose(kManual);
  attitude.TChart(0).Bottom().SetMinimum(kDate.days);
  attitude.TChart(0).Bottom().SetMaximum(kDate.days + 0.5);
  attitude.TChart(1).Bottom().SetAutomaticMinimum(true);
  attitude.TChart(1).Bottom().SetAutomaticMaximum(true);
  const auto chooseStart = [this](int hour, int minute) {
    face.WhileWaiting([this, hour, minute] {
      EXPECT_EQ(moment.lblTitle.Text(), "Set X-Axis Start Date & Time");
      moment.lstHour.UserChoose(hour);
      moment.lstMin.UserChoose(minute);
      moment.lstSec.UserChoose(7);
      moment.cmdOk.Click();
    });
    x.cmdStart.Click();
  };
  face.WhileWaiting([&] {
    EXPECT_EQ(x.cmdStart.Text(), "02.01.2020 00:00:00");
    EXPECT_EQ(x.cmdEnd.Text(), "02.01.2020 12:00:00");
    chooseStart(12, 0);
    face.ExpectBox("Start time later than End time not allowed. Try again!");
    x.cmdOk.Click();
    EXPECT_TRUE(x.Visible());
    chooseStart(6, 30);
    EXPECT_EQ(x.cmdStart.Text(), "02.01.2020 06:30:07");
    x.cmdOk.Click();
  });
  attitude.TChart(0).ClickAxis(AxisSide::Bottom);
  for (const Chart& chart : attitude.TChart) {
    EXPECT_NEAR(chart.Bottom().Minimum(), kDate.days + (6.5 * 3600.0 + 7.0) / 86400.0, 1e-9);
    EXPECT_EQ(chart.Bottom().Maximum(), kDate.days + 0.5);
    EXPECT_FALSE(chart.Bottom().Automatic() || chart.Bottom().AutomaticMinimum() ||
                 chart.Bottom().AutomaticMaximum());
  }
  face.WhileWaiting([&] {
    x.chkAutMin.Click();
    x.cmdOk.Click();
  });
  attitude.TChart(1).ClickAxis(AxisSide::Bottom);
  for (const Chart& chart : attitude.TChart) {
    EXPECT_TRUE(chart.Bottom().AutomaticMinimum() && !chart.Bottom().AutomaticMaximum());
  }
}

TEST_F(AxisDialogTest, MovesADayBeyondTheMonthBackToItsEnd) {
  face.WhileWaiting([this] {
    EXPECT_EQ(moment.lblDate.Text(), "31 Mar 2020");
    EXPECT_EQ(moment.lstMonth.EntryText(2), "Mar");
    EXPECT_EQ(moment.lstDay.EntryText(4), "05");
    moment.lstMonth.UserChoose(3);
    EXPECT_EQ(moment.lblDate.Text(), "30 Apr 2020");
    moment.lstMonth.UserChoose(1);
    EXPECT_EQ(moment.lblDate.Text(), "29 Feb 2020");
    moment.lstYear.UserChoose(moment.lstYear.Choice() + 1);
    EXPECT_EQ(moment.lblDate.Text(), "28 Feb 2021");
    EXPECT_EQ(moment.lstDay.Count(), 28);
    moment.cmdOk.Click();
  });
  const auto chosen = moment.Ask("End", DateFromParts(2020, 3, 31) + TimeFromParts(1, 2, 3));
  ASSERT_TRUE(chosen);
  EXPECT_EQ(FormatDateTime(*chosen, "yyyy-mm-dd hh:nn:ss"), "2021-02-28 01:02:03");
  face.WhileWaiting([this] { moment.cmdCancel.Click(); });
  EXPECT_FALSE(moment.Ask("End", kDate));
}

}  // namespace
}  // namespace fathomline
