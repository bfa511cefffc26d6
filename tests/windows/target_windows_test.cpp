#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "ais/sentence_feed.h"
#include "support/expect_fault.h"
#include "support/test_program.h"
#include "windows/ais_extra_info.h"
#include "windows/ais_targets_window.h"
#include "windows/arpa_targets_window.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

MessageBits Message(int id, std::int32_t mmsi, std::size_t bits = 168) {
  return MessageBits(bits).Put(1, 6, id).Put(9, 38, mmsi);
}

void PutText(MessageBits& bits, int first, std::string_view text) {
  for (const char character : text) {
    bits.Put(first, first + 5, character < '@' ? character : character - '@');
    first += 6;
  }
}

MessageBits VoyageData(std::int32_t mmsi, std::string_view name) {
  MessageBits bits = Message(5, mmsi, 426);
  PutText(bits, 113, name);
  return bits;
}

// A report of 12.3 knots over 180.5 degrees at 59.5 N, 5.25 W, without a heading.
MessageBits Report(std::int32_t mmsi, int rot) {
  MessageBits bits = Message(1, mmsi).Put(43, 50, rot).Put(51, 60, 123).Put(62, 89, -3150000);
  return bits.Put(90, 116, 35700000).Put(117, 128, 1805).Put(129, 137, 511);
}

std::vector<std::string> RowOf(Grid& grid, int row) {
  grid.OwningWindow().Refresh();
  std::vector<std::string> texts;
  for (int column = 0; column < grid.Columns(); ++column) texts.push_back(grid.Text(row, column));
  return texts;
}

class TargetWindows : public testing::Test {
 protected:
  void Feed(const MessageBits& bits) {
    test.program.engine.pipeline.ProcessSentence(
        1, Sentence("AIVDM,1,1,,A," + bits.Payload() + ",0", '!'));
  }
  void SetTime(int hour, int minute, int second) {
    test.records.MessageTime[1] = DateFromParts(2026, 1, 2) + TimeFromParts(hour, minute, second);
  }
  // The columns in which something stands.
  std::vector<int> Filled(int row) {
    std::vector<int> columns;
    for (int column = 0; column < grid.Columns(); ++column) {
      if (!RowOf(grid, row)[static_cast<std::size_t>(column)].empty()) columns.push_back(column);
    }
    return columns;
  }

  TestProgram test;
  frmAISTargets& list = *test.program.windows.aisTargets[1];
  Grid& grid = list.fgAISTargets;
  frmAISExtraInfo& extra = test.program.windows.aisExtraInfo;
};

TEST_F(TargetWindows, AListOpenedLateShowsAllThatIsKnown) {
  test.Analyse({"VDM"});
  list.Show();
  Feed(Message(4, 257000004));
  EXPECT_EQ(Filled(1), (std::vector<int>{0, 1, 2, 3, 8, 9}));
  list.Close();
  Feed(Message(5, 258000005, 426));
  list.Show();
  EXPECT_EQ(grid.Rows(), 3);
  EXPECT_EQ(Filled(2), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_EQ(RowOf(grid, 1)[4], " 0");
}

TEST_F(TargetWindows, AFullListGoesOnWithItsLastRow) {
  test.Analyse({"VDM"});
  list.Show();
  for (int i = 1; i <= 500; ++i) Feed(VoyageData(200000000 + i, "FULL"));
  EXPECT_EQ(grid.Rows(), 501);
  EXPECT_EQ(Filled(500), (std::vector<int>{0, 1, 8, 9}));

  // The station without room makes the latest one that has some show what it knows.
  test.face.ExpectBox(
      "Maximum limit AIS system 1, more than 500 targets stored. New targets ignored!");
  SetTime(1, 2, 3);
  Feed(Message(1, 300000000).Put(51, 60, 55));
  EXPECT_EQ(grid.Rows(), 501);
  EXPECT_THAT(RowOf(grid, 500),
              ElementsAre("200000500", "FULL                ", "00° 00.0000' N", "000° 00.0000' E",
                          " 0", " 0", " 0", " 0", testing::_, "500"));

  grid.ClickRow(500, 0, 0);
  extra.Refresh();
  EXPECT_EQ(extra.Caption(), "AIS Extended Info - FULL                ");
}

TEST_F(TargetWindows, SearchMarksTheFirstMatch) {
  test.Analyse({"VDM"});
  list.Show();
  Feed(VoyageData(211000001, "NORDWIND"));
  Feed(VoyageData(219000002, "SOUTHERN CROSS"));
  Feed(VoyageData(211000003, "NORTH STAR"));
  const auto search = [&](std::string_view typed) {
    list.txtSearch.UserText(typed);
    return grid.MarkedRow();
  };
  EXPECT_EQ(search("2110000"), 1);
  EXPECT_EQ(search("211000003"), 3);
  EXPECT_EQ(search("1000"), 0) << "an MMSI is typed from its beginning";
  EXPECT_EQ(search("cross"), 2);
  EXPECT_EQ(search("n"), 1) << "the heads are no targets";
  EXPECT_EQ(search("north s "), 3);
  EXPECT_EQ(search(""), 0);
  EXPECT_EQ(RowOf(grid, 1)[0], "211000001") << "the order stays";
}

TEST_F(TargetWindows, TheExtendedWindowShowsAndFollowsOneStation) {
  test.Analyse({"VDM"});
  SetTime(9, 0, 0);
  list.Show();
  test.program.desktop.SetChildArea({20000, 13000});
  list.SetPlace({1000, 2000, 12000, 7000});
  Feed(Report(2573500, -127).Put(39, 42, 5).Put(61, 61, 1));
  grid.ClickRow(1, 300, 40);
  EXPECT_EQ(extra.AISExtendedTarget(), (ExtendedTarget{1, 1}));
  EXPECT_EQ(extra.Place().left, 1300);
  EXPECT_EQ(extra.Place().top, 6000);
  grid.ClickRow(1, 9000, 40);
  EXPECT_EQ(extra.Place().left + extra.Place().width, 20000) << "it stays within the room";
  extra.Refresh();
  EXPECT_EQ(extra.Caption(), "AIS Extended Info - MMSI :2573500");
  const auto values = [&](int number) {
    Grid& shown = extra.fgAISExtraInfo(number);
    std::vector<std::string> texts;
    for (int row = 0; row < shown.Rows(); ++row) texts.push_back(RowOf(shown, row)[1]);
    return texts;
  };
  EXPECT_THAT(values(0),
              ElementsAre("002573500", "Class A Vessel", "59° 30.0000' N", "005° 15.0000' W",
                          " 12.3", " 180.5", "n/a", "-720", "Moored", "High accuracy, <10 m"));
  EXPECT_THAT(values(1), ElementsAre("", "", "", " 0", "", "n/a", "n/a", "", "Norway"));
  EXPECT_THAT(values(2), ElementsAre("", "", "n/a", "", " 0"));

  SetTime(9, 1, 5);
  MessageBits voyage = VoyageData(2573500, "SEA BREEZE@@@@@@@@@@");
  PutText(voyage, 71, "LABC12@");
  PutText(voyage, 303, "BERGEN@@@@@@@@@@@@@@");
  voyage.Put(41, 70, 9074729).Put(233, 240, 71).Put(241, 249, 60).Put(250, 258, 40);
  voyage.Put(259, 264, 9).Put(265, 270, 11).Put(271, 274, 1).Put(295, 302, 65);
  voyage.Put(275, 278, 2).Put(279, 283, 3).Put(284, 288, 4).Put(289, 294, 5);
  Feed(voyage);
  Feed(Message(1, 257000002));
  EXPECT_THAT(values(1),
              ElementsAre("", "SEA BREEZE          ", "LABC12 ", " 9074729", "Cargo ship",
                          "100     (A=60 B=40)", "20     (C=9 D=11)", "GPS", "Norway"));
  EXPECT_THAT(values(2),
              ElementsAre("", "BERGEN              ", "03 Feb 04:05",
                          "Carrying DG,HS or MP IMO hazard or pollutant category X", " 6.5"));
  EXPECT_THAT(values(3),
              ElementsAre("", "02 Jan 09:00:00", "02 Jan 09:01:05", "65", "1", "0", "0", "1"));
  EXPECT_THAT(values(4), ElementsAre("", "", ""));
  std::string captions;
  for (Grid& shown : extra.fgAISExtraInfo) {
    for (int row = 0; row < shown.Rows(); ++row) captions += RowOf(shown, row)[0] + "|";
  }
  EXPECT_EQ(
      captions,
      "MMSI|AIS Class|Latitude|Longitude|SOG|COG|Heading|Rate Of Turn|Nav Status|Pos Accuracy|"
      "Static data|Name|Call sign|IMO No.|Type of ship|Length|Bredth|Pos Device|Nationality|"
      "Voyage data|Destination|ETA|Cargo|Draught|Statistics|Time 1st msg|Time last msg|"
      "Period (s)|ID1 msgs|ID2 msgs|ID3 msgs|ID5 msgs|Special msg's|Passengers|"
      "Height over keel|");
  EXPECT_EQ(extra.Caption(), "AIS Extended Info - SEA BREEZE          ");

  // Without its list nobody tells it of news, however late it is looked at.
  Feed(VoyageData(2573500, "BEFORE@@@@@@@@@@@@@@"));
  list.Close();
  Feed(VoyageData(2573500, "BEHIND@@@@@@@@@@@@@@"));
  EXPECT_EQ(values(1)[1], "BEFORE              ");
  EXPECT_EQ(extra.AISExtendedTarget(), (ExtendedTarget{1, 1}));
  extra.Close();
  EXPECT_EQ(extra.AISExtendedTarget(), ExtendedTarget{});

  list.Show();
  grid.ClickRow(0, 0, 0);
  EXPECT_EQ(values(0)[0], "000000000");
  EXPECT_EQ(extra.Caption(), "AIS Extended Info - MMSI :0");
}

TEST_F(TargetWindows, PlacesAreKeptPerSystem) {
  frmARPATargets& arpa = *test.program.windows.arpaTargets[3];
  for (Window* const window : {static_cast<Window*>(&list), static_cast<Window*>(&arpa)}) {
    window->Show();
    window->SetPlace({150, 300, 9000, 4500});
    window->Close();
    window->Show();
    EXPECT_EQ(window->Place().left, 150);
  }
  EXPECT_EQ(test.settings.Get("Settings", "AISTargetsWidth1"), "9000");
  EXPECT_EQ(test.settings.Get("Settings", "ARPATargetsTop3"), "300");
}

class ARPAWindow : public TargetWindows {
 protected:
  ARPAWindow() {
    test.Analyse({"TTM", "VDM"});
    SetTime(10, 11, 12);
    arpa.Show();
  }
  frmARPATargets& arpa = *test.program.windows.arpaTargets[1];
  Grid& radar = arpa.fgARPATargets;
};

TEST_F(ARPAWindow, ASentenceThatCouldNotBeDecodedMakesNoTarget) {
  test.Feed("RATTM" + std::string(17, ','));
  EXPECT_EQ(radar.Rows(), 1);
}

TEST_F(ARPAWindow, TargetNumbersBeyondTheTableAreFaults) {
  test.Feed("RATTM,32765,1,2,T,3,4,T,5,6,N,LAST,L,,,A");
  EXPECT_EQ(radar.Rows(), 32767);
  EXPECT_EQ(RowOf(radar, 32766)[1], "LAST");
  for (const char* const name : {"NEXT", "AGAIN"}) {
    test.Feed("RATTM,32765,1,2,T,3,4,T,5,6,N," + std::string(name) + ",L,,,A");
    EXPECT_EQ(RowOf(radar, 32766)[1], name);
  }
  ExpectFault(FaultNumber::Overflow, [&] { test.Feed("RATTM,32766,1,2,T,3,4,T,5,6,N,,L,,,A"); });
  ExpectFault(FaultNumber::OutOfRange, [&] { test.Feed("RATTM,-1,1,2,T,3,4,T,5,6,N,,L,,,A"); });
  EXPECT_EQ(RowOf(radar, 0)[0], "No");
}

TEST_F(ARPAWindow, AResetEmptiesTheRadarTargetsAndKeepsTheStations) {
  list.Show();
  test.records.ReloadWindows = true;
  test.Feed("RATTM,5,1,2,T,3,4,T,5,6,N,ALPHA,L,,,A");
  Feed(VoyageData(211000001, "NORDWIND"));
  SetTime(11, 0, 0);
  test.program.session.control.ResetAll();
  EXPECT_TRUE(arpa.Visible() && list.Visible());
  EXPECT_EQ(radar.Rows(), 1);
  EXPECT_EQ(RowOf(grid, 1)[1], "NORDWIND            ");
  test.Feed("RATTM,5,1,2,T,3,4,T,5,6,N,ALPHA,L,,,A");
  EXPECT_EQ(RowOf(radar, 6)[13], "11:00:00");

  arpa.Close();
  test.program.session.control.ResetAll();
  EXPECT_FALSE(arpa.Visible());
}

}  // namespace
}  // namespace fathomline
