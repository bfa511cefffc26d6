#include "charts/skyplot_window.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "charts/chart_session.h"
#include "support/drawn_shapes.h"

namespace fathomline {
namespace {

class SkyplotTest : public ChartSession {
 protected:
  SkyplotTest() { charts.OpenSkyplot(1); }

  std::string Row(int row) {
    sky.Refresh();
    return sky.lblSv(row).Text() + "|" + sky.lblElevation(row).Text() + "|" +
           sky.lblAzimuth(row).Text() + "|" + sky.lblSNR(row).Text();
  }
  // A group of one sentence with one satellite.
  void SendSatellite(int prn, int elevation, int azimuth, std::string_view snr = "40") {
    Send("$GPGSV,1,1,01," + std::to_string(prn) + "," + std::to_string(elevation) + "," +
         std::to_string(azimuth) + "," + std::string(snr) + "*00");
  }
  // The numbers drawn beside the dots.
  std::vector<std::string> Drawn() {
    sky.Refresh();
    std::vector<std::string> texts;
    for (const Shape& shape : sky.picSkyplot.Transient()) {
      if (shape.kind == ShapeKind::Text) texts.push_back(shape.text);
    }
    return texts;
  }

  frmSkyplot& sky = charts.SkyplotOf(1);
  static constexpr Colour kRed = 255;
};

TEST_F(SkyplotTest, ShowsTheModeAndTheSatellitesUsedByTheGroupOfTheFirst) {
  Send("$GNGSA,A,3,70,05,33,,,,,,,,,,2.04,1.0,*00");
  sky.Refresh();
  EXPECT_EQ(sky.lblCurrentMode.Text(), "3D Auto");
  EXPECT_EQ(sky.lblPdop.Text(), "2.0");
  EXPECT_EQ(sky.lblVdop.Text(), "n/a");
  EXPECT_EQ(sky.lblUsedSvs(2).Text(), "3 -  5 33 70");
  EXPECT_EQ(sky.lblUsedSvs(0).Text(), "");
  Send("$GNGSA,M,2,05,200,0,,,,,,,,,,2.0,1.0,1.7*00");
  sky.Refresh();
  EXPECT_EQ(sky.lblCurrentMode.Text(), "2D Manual");
  EXPECT_EQ(sky.lblUsedSvs(0).Text(), "2 -  5 200");
  EXPECT_EQ(sky.lblUsedSvs(2).Text(), "3 -  5 33 70");
  Send("$GNGSA,A,1,,,,,,,,,,,,,,,*00");
  sky.Refresh();
  EXPECT_EQ(sky.lblCurrentMode.Text(), "Fix Not Available");
  EXPECT_EQ(sky.lblUsedSvs(0).Text(), "0 - ");
  // The first and the last number of each group, all listed by number.
  for (const int first : {1, 32, 33, 64, 65, 99, 100, 149, 150}) {
    Send("$GNGSA,A,3," + std::to_string(first) + ",,,,,,,,,,,,2.0,1.0,1.7*00");
  }
  sky.Refresh();
  for (int group = 0; const char* const last : {"32", "64", "99", "149", "150"}) {
    EXPECT_EQ(sky.lblUsedSvs(group++).Text(), std::string("1 -  ") + last);
  }
}

TEST_F(SkyplotTest, FillsTheTableRowByRowOverTheSentencesOfAGroup) {
  records.ElevationMask = 10;
  Send("$GPGSA,A,3,03,,,,,,,,,,,,2.0,1.0,1.7*00");
  Send("$GPGSV,2,1,06,03,40,120,35,04,01,030,,05,00,140,37,152,42,150,38*00");
  Send("$GPGSV,2,2,06,07,50,160,39*00");
  EXPECT_EQ(Row(1), "3|40   |120   |35");
  EXPECT_EQ(Row(2), "4|01   |030   |n/a");
  EXPECT_EQ(Row(3), "|||") << "on the horizon";
  EXPECT_EQ(Row(4), "*|*|*|*") << "beyond the table";
  EXPECT_EQ(Row(5), "7|50   |160   |39");
  EXPECT_EQ(Row(6), "*|*|*|*");
  EXPECT_EQ(sky.lblSvsInView.Text(), "6");
  EXPECT_EQ(sky.lblSv(1).ShownColour(), 0);
  EXPECT_EQ(sky.lblSv(2).ShownColour(), kRed) << "not in the GSA";
  EXPECT_EQ(sky.lblElevation(1).ShownColour(), 0);
  EXPECT_EQ(sky.lblElevation(2).ShownColour(), kRed) << "below the mask";
  EXPECT_EQ(sky.lblColor(1).ShownColour(), charts.Satellites()(1, 3).Colour);
  EXPECT_EQ(Drawn(), (std::vector<std::string>{"3", "4", "7"}));
  EXPECT_EQ(charts.Satellites()(1, 7).Channel, 5);
  SendSatellite(9, 60, 90);
  EXPECT_EQ(Row(5), "*|*|*|*");
  EXPECT_EQ(sky.lblColor(5).ShownColour(), kWhite);
  EXPECT_EQ(Drawn(), std::vector<std::string>{"9"});
  EXPECT_EQ(DrawnShapes(sky.picSkyplot.Transient()),
            "dot 30 0 red width 5 hollow\ntext 30 0 red width 5 at -1 -1 9\n");
  SendSatellite(9, 60, 90, "01");
  EXPECT_EQ(Row(1), "9|60   |090   |1");
  EXPECT_EQ(sky.lblSNR(1).ShownColour(), 0);
  SendSatellite(9, 10, 90, "00");
  EXPECT_EQ(Row(1), "9|10  d|090   |0");
  EXPECT_EQ(sky.lblElevation(1).ShownColour(), 0) << "on the mask";
  EXPECT_EQ(sky.lblSNR(1).ShownColour(), kRed);
  SendSatellite(9, 0, 90);
  EXPECT_EQ(Row(1), "|||");
  EXPECT_EQ(sky.lblColor(1).ShownColour(), kWhite);
}

TEST_F(SkyplotTest, HasAsManyRowsAsItShowsOfALargeGroup) {
  for (int number = 1; number <= 13; ++number) {
    std::string sentence = "$GPGSV,13," + std::to_string(number) + ",52";
    for (int prn = 4 * number - 3; prn <= 4 * number; ++prn) {
      sentence += "," + std::to_string(prn) + ",10,020,30";
    }
    Send(sentence + "*00");
  }
  EXPECT_EQ(Row(1), "1|10   |020   |30");
  EXPECT_EQ(Row(50), "50|10   |020   |30");
  EXPECT_EQ(sky.lblChannel(50).Text(), "50");
  EXPECT_EQ(charts.Satellites()(1, 50).Channel, 50);
  EXPECT_EQ(charts.Satellites()(1, 51).Channel, 0);
  Send("$GPGSV,1,1,00*00");
  for (int row = 1; row <= 50; ++row) EXPECT_EQ(Row(row), "*|*|*|*") << row;
}

TEST_F(SkyplotTest, ShowsTheTrendWithinAnHourOfTheComputersTime) {
  SendSatellite(9, 20, 200);
  SendSatellite(9, 21, 199);
  EXPECT_EQ(Row(1), "9|21  u|199  <|40");
  SendSatellite(9, 21, 199);
  EXPECT_EQ(Row(1), "9|21  u|199  <|40");
  clock.Set(clock.NowUtc() + DateTime{3599.0 / 86400.0});
  SendSatellite(9, 20, 201);
  EXPECT_EQ(Row(1), "9|20  d|201  >|40");
  clock.Set(clock.NowUtc() + DateTime{3600.0 / 86400.0});
  SendSatellite(9, 25, 202);
  EXPECT_EQ(Row(1), "9|25   |202   |40");
}

TEST_F(SkyplotTest, ClearsTheTableAsTheTwoSentencesSay) {
  SendSatellite(151, 30, 10);
  EXPECT_EQ(Drawn(), std::vector<std::string>{"151"});
  SendSatellite(150, 30, 10);
  SendSatellite(9, 20, 200);
  const SatelliteTable& table = charts.Satellites();
  EXPECT_EQ(table(1, 150).Elevation, 0);
  EXPECT_EQ(table(1, 151).Elevation, 30) << "the first sentence of a group stops before it";
  Send("$GPGSA,A,3,09,,,,,,,,,,,,2.0,1.0,1.7*00");
  EXPECT_EQ(table(1, 151).Elevation, 0);
  EXPECT_TRUE(table(1, 9).Used);
  Send("$GPGSA,A,3,08,,,,,,,,,,,,2.0,1.0,1.7*00");
  EXPECT_FALSE(table(1, 9).Used);
  EXPECT_EQ(table(2, 9).Elevation, 0);
}

TEST_F(SkyplotTest, TakesAMaskWithinItsLimits) {
  const auto enter = [this](const char* text) {
    sky.FocusTo(sky.txtElMask);
    sky.txtElMask.UserText(text);
    return sky.FocusTo(sky.lblPdop);
  };
  EXPECT_TRUE(enter("12.7"));
  EXPECT_EQ(records.ElevationMask, 12);
  EXPECT_EQ(sky.txtElMask.Text(), "12");
  EXPECT_TRUE(enter("89"));
  for (const char* const wrong : {"90", "-1", "89.5", "1E999"}) {
    face.ExpectBox("Invalid elevation mask. Must be within range 00-89 deg.");
    EXPECT_FALSE(enter(wrong));
  }
  EXPECT_EQ(records.ElevationMask, 89);
  EXPECT_TRUE(enter("5"));
  // What stands behind the dots: lines, circles of 60, 30 and 0 degrees and of the mask, and their
  // texts, of which that of a low mask is moved up by 10.
  EXPECT_EQ(DrawnShapes(sky.picSkyplot.Persistent()),
            "line -90 0 to 90 0 blue scale\n"
            "line 0 -90 to 0 90 blue scale\n"
            "circle 0 0 r 30 blue scale\n"
            "text 0 0 blue scale at -1 -1  90°\n"
            "text 0 -30 blue scale at -1 -1  60°\n"
            "circle 0 0 r 60 blue scale\n"
            "text 0 -60 blue scale at -1 -1  30°\n"
            "circle 0 0 r 90 blue scale\n"
            "circle 0 0 r 85 red dashed\n"
            "text 0 -75 red dashed at -1 -1 05°\n");
  // From 10 degrees on the text of the mask stands at its circle.
  EXPECT_TRUE(enter("10"));
  EXPECT_EQ(sky.picSkyplot.Persistent().back().y, -80.0);
  EXPECT_TRUE(enter("0"));
  // One that was entered elsewhere is drawn here too, with the dots, but not while one is entered.
  SendSatellite(9, 20, 200);
  EXPECT_FALSE(Drawn().empty());
  for (const int mask : {33, 34}) {
    records.ElevationMask = static_cast<std::int16_t>(mask);
    EXPECT_EQ(Drawn(), std::vector<std::string>{"9"});
    EXPECT_EQ(sky.picSkyplot.Persistent().back().text, "33\u00B0");
    sky.FocusTo(sky.txtElMask);
  }
}

TEST_F(SkyplotTest, OpensTheWindowOfTheSatelliteClickedAndResetsWhereItIsOpen) {
  const auto flag = static_cast<WindowFlag>(14 + 9);
  SendSatellite(9, 20, 200);
  sky.Refresh();
  sky.lblSv(2).Click();
  EXPECT_FALSE(records.SystemSetups[1][flag]);
  sky.lblSv(1).Click();
  EXPECT_TRUE(records.SystemSetups[1][flag]);
  charts.ResetSkyplot();
  EXPECT_TRUE(sky.Visible());
  EXPECT_EQ(Row(1), "*|*|*|*");
  EXPECT_TRUE(Drawn().empty());
  EXPECT_FALSE(charts.SkyplotOf(2).Loaded());
  SendSatellite(9, 20, 200);
  EXPECT_FALSE(Drawn().empty());
  sky.UserClose();
  EXPECT_FALSE(records.SystemSetups[1][WindowFlag::Skyplot]);
  sky.Show();
  EXPECT_TRUE(Drawn().empty());
  records.ElevationMask = 7;  // all is drawn anew
  EXPECT_TRUE(Drawn().empty());
  EXPECT_EQ(Row(1), "*|*|*|*");
  EXPECT_TRUE(settings.Get("Settings", "SkyplotWidth1"));
}

}  // namespace
}  // namespace fathomline
