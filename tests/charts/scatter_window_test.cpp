#include "charts/scatter_window.h"

#include <gtest/gtest.h>

#include "base/numbers.h"
#include "charts/chart_session.h"

namespace fathomline {
namespace {

class ScatterTest : public ChartSession {
 protected:
  frmScatter& scatter = charts.ScatterOf(1);
  const Chart& chart = scatter.TChart1;
  frmXYAxis& dialog = charts.xyAxis;

  AxisRange Shown() { return chart.Left().Range(); }
};

TEST_F(ScatterTest, FollowsThePointsThatStoodBefore) {
  scatter.AddScatterPoint(1.0F, 12.4F);
  EXPECT_EQ(Shown(), (AxisRange{-1.0, 1.0}));
  EXPECT_EQ(chart.Left().Title(), "Northing +/- 1 m");
  scatter.AddScatterPoint(-3.0F, 2.0F);
  EXPECT_EQ(Shown(), (AxisRange{-13.0, 13.0}));
  EXPECT_EQ(chart.Bottom().Title(), "Easting +/- 13 m");
  EXPECT_EQ(chart.Tools(0).Value(), 2.0);
  EXPECT_EQ(chart.Tools(1).Value(), -3.0);
  const AxisRange zoom{-4.0, -2.0};
  scatter.TChart1.UserZoom({.bottom = {}, .left = zoom, .right = {}});
  scatter.AddScatterPoint(-27.5F, 2.0F);
  scatter.AddScatterPoint(0.0F, 0.0F);
  EXPECT_EQ(Shown(), zoom) << "holds while fixes come in";
  EXPECT_EQ(chart.Bottom().Range(), (AxisRange{-1.0, 1.0})) << "as much to the east";
  EXPECT_EQ(chart.Left().Title(), "Northing -4.0 to -2.0 m");
  scatter.TChart1.UserZoom({.bottom = {}, .left = AxisRange{-4.0, -2.5}, .right = {}});
  EXPECT_EQ(chart.Left().Title(), "Northing -4.00 to -2.50 m");
  scatter.TChart1.UserUndoZoom();
  scatter.TChart1.UserUndoZoom();
  EXPECT_EQ(chart.Left().Title(), "Northing +/- 28 m");
  EXPECT_EQ(Shown(), (AxisRange{-28.0, 28.0}));
  scatter.AddScatterPoint(NoValue, 2.0F);
  EXPECT_EQ(chart.Series(0).Count(), 4);
  EXPECT_EQ(chart.Series(0).At(0).x, 12.4F);
  EXPECT_EQ(chart.Series(0).At(0).y, 1.0F);
  EXPECT_EQ(chart.Series(0).At(0).colour, 16711680);
}

TEST_F(ScatterTest, TakesTheScaleOfItsDialogAtTheNextFix) {
  scatter.Show();
  face.WhileWaiting([this] {
    EXPECT_TRUE(dialog.chkAutomatic.Checked());
    EXPECT_EQ(dialog.txtMax.Text(), "1.0");
    dialog.chkAutomatic.Click();
    dialog.txtMax.UserText("0.5");
    dialog.cmdOk.Click();
  });
  scatter.TChart1.ClickAxis(AxisSide::Right);
  scatter.AddScatterPoint(9.0F, 9.0F);
  EXPECT_EQ(Shown(), (AxisRange{-0.5, 0.5}));
  EXPECT_EQ(chart.Left().Title(), "Northing +/- 0.5 m");

  face.WhileWaiting([this] {
    EXPECT_EQ(dialog.txtMax.Text(), "0.5");
    dialog.txtMax.UserText("0");
    face.ExpectBox("");
    dialog.cmdOk.Click();
    EXPECT_TRUE(dialog.Visible());
    dialog.cmdCancel.Click();
  });
  scatter.TChart1.ClickAxis(AxisSide::Right);
  scatter.AddScatterPoint(9.0F, 9.0F);
  EXPECT_EQ(Shown(), (AxisRange{-0.5, 0.5}));

  scatter.Close();
  scatter.Show();
  EXPECT_EQ(chart.Left().Title(), "Northing +/- 1.0 m");
  scatter.AddScatterPoint(9.0F, 9.0F);
  EXPECT_EQ(Shown(), (AxisRange{-0.5, 0.5})) << "the scale outlives the window";
}

TEST_F(ScatterTest, TakesFixesOfPositionSentencesOnly) {
  Send("$GPGGA,120000,0000.1000,N,00000.0000,E,1,9,1.2,12.5,M,0.0,M,,*00");
  Send("$GPGLL,0000.1000,N,00000.0000,E,120001,A,A*00");
  Send("$GPGST,120000,1.5,2.5,3.5,45.6,4.5,5.5,6.5*00");
  EXPECT_EQ(chart.Series(0).Count(), 2);
  Send("$GPGGA,120002,0000.1000,N,00000.0000,E,0,0,,,M,0.0,M,,*00");
  EXPECT_EQ(chart.Series(0).Count(), 2);
  EXPECT_NEAR(chart.Series(0).At(0).y, 184.29F, 0.05F);
}

TEST_F(ScatterTest, SwitchesTheCirclesOfTheHorizontalFigures) {
  scatter.Show();
  EXPECT_FALSE(chart.Tools(2).Design().visible);
  Send("$GPGGA,120000,0000.0010,N,00000.0000,E,1,9,1.2,12.5,M,0.0,M,,*00");
  scatter.mnuCircle95.Click();
  EXPECT_TRUE(scatter.mnuCircle95.Checked());
  EXPECT_TRUE(chart.Tools(3).Design().visible);
  EXPECT_FALSE(chart.Tools(2).Design().visible);
  scatter.Refresh();
  // 1.8429 m north of the reference; the lower edge of its bin of a centimetre.
  EXPECT_NEAR(chart.Tools(3).Value(), 1.84, 0.0101);
  scatter.mnuCircle68.Click();
  EXPECT_TRUE(chart.Tools(2).Design().visible);
  EXPECT_NEAR(chart.Tools(2).Value(), 1.84, 0.0101);
  scatter.mnuCircle68.Click();
  EXPECT_FALSE(chart.Tools(2).Design().visible);
  // Beyond the bins there is no figure to draw.
  Send("$GPGGA,120001,0000.0100,N,00000.0000,E,1,9,1.2,12.5,M,0.0,M,,*00");
  scatter.Refresh();
  EXPECT_FALSE(chart.Tools(3).Design().visible);
  EXPECT_EQ(scatter.mnuCircle95.Text(), "&95% of the fixes (> 10 m)");
  scatter.mnuCircle95.Click();
  EXPECT_FALSE(chart.Tools(3).Design().visible);
  EXPECT_EQ(scatter.mnuCircle95.Text(), "&95% of the fixes");
  scatter.Close();
  scatter.Show();
  scatter.mnuCircle95.Click();
  EXPECT_EQ(chart.Tools(3).Value(), 0.0) << "no fix since it was opened";
}

TEST_F(ScatterTest, ComesBackFromAResetShownOrHidden) {
  charts.OpenScatter(1);
  scatter.AddScatterPoint(1.0F, 1.0F);
  charts.ResetScatter();
  EXPECT_TRUE(scatter.Visible());
  EXPECT_EQ(chart.Series(0).Count(), 0);
  scatter.UserClose();
  EXPECT_FALSE(scatter.Loaded());
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::Scatter]);
  charts.ResetScatter();
  EXPECT_TRUE(scatter.Loaded());
  EXPECT_FALSE(scatter.Visible());
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::Scatter]);
}

}  // namespace
}  // namespace fathomline
