#include "watch/satellites_in_view.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "support/sentences.h"
#include "watch/signal_tables.h"

namespace fathomline {
namespace {

struct Sky : ::testing::Test {
  void Take(std::initializer_list<const char*> bodies) {
    for (const char* const body : bodies) sky.Take(Sentence(body));
  }
  // "G01* 1:40 8:33, G07 1:-": with a star what is used, then signals and their C/N0.
  std::string View() const {
    std::string text;
    for (const auto& satellite : sky.Satellites()) {
      if (!text.empty()) text += ", ";
      text += NameOf(satellite.id);
      if (satellite.used) text += '*';
      for (const auto& signal : satellite.signals) {
        text += " " + std::to_string(signal.id) + ":" +
                (signal.cn0 ? std::to_string(*signal.cn0) : "-");
      }
    }
    return text;
  }

  SatellitesInView sky;
};

// The table of GSV's signal ids of NMEA 0183, 4.11, from 1 on.
TEST(Signals, HaveTheNamesOfTheirSystem) {
  const std::vector<std::pair<GnssSystem, std::string>> systems = {
      {GnssSystem::GPS, "L1 C/A,L1 P(Y),L1 M,L2 P(Y),L2C-M,L2C-L,L5-I,L5-Q,signal 9"},
      {GnssSystem::GLONASS, "G1 C/A,G1 P,G2 C/A,G2 P,signal 5"},
      {GnssSystem::Galileo, "E5a,E5b,E5 a+b,E6-A,E6-BC,E1-A,E1-BC,signal 8"},
      {GnssSystem::BeiDou, "B1I,B1Q,B1C,B1A,B2a,B2b,B2 a+b,B3I,B3Q,B3A,B2I,B2Q,signal 13"},
      {GnssSystem::QZSS, "L1 C/A,L1C (D),L1C (P),L1S,L2C-M,L2C-L,L5-I,L5-Q,L6D,L6E,signal 11"},
      {GnssSystem::NavIC, "L5-SPS,S-SPS,L5-RS,S-RS,L1-SPS,signal 6"},
      {GnssSystem::SBAS, "L1 C/A,L1 P(Y)"}};
  for (const auto& [system, names] : systems) {
    std::string told;
    const auto count = std::count(names.begin(), names.end(), ',') + 1;
    for (int id = 1; id <= count; ++id) told += (id > 1 ? "," : "") + SignalName(system, id);
    EXPECT_EQ(told, names);
    EXPECT_EQ(SignalName(system, 0), "not told");
  }
}

// An epoch of a receiver of four constellations and two bands: GSV per signal, GSA with system ids.
TEST_F(Sky, ShowsAllConstellationsAndSignalsOfAReceiverOfToday) {
  const auto epoch = [this](const char* gpsL5) {
    Take({"GNRMC,1", "GNGSA,A,3,01,17,,,,,,,,,,,1.2,0.7,1.0,1",
          "GNGSA,A,3,65,72,,,,,,,,,,,1.2,0.7,1.0,2", "GNGSA,A,3,01,36,,,,,,,,,,,1.2,0.7,1.0,3",
          "GNGSA,A,3,19,,,,,,,,,,,,1.2,0.7,1.0,4", "GNGSA,A,3,02,,,,,,,,,,,,1.2,0.7,1.0,5",
          "GPGSV,2,1,05,01,40,083,46,17,05,010,41,32,17,308,,46,38,215,44,1",
          "GPGSV,2,2,05,131,10,200,33,1", gpsL5, "GLGSV,1,1,02,65,20,100,30,72,30,200,,1",
          "GLGSV,1,1,01,72,30,200,29,3", "GAGSV,1,1,02,01,60,045,45,36,12,330,37,7",
          "GAGSV,1,1,01,36,12,330,35,2", "GBGSV,1,1,02,19,50,120,40,63,11,010,,1",
          "GBGSV,1,1,01,19,50,120,39,B", "GQGSV,1,1,01,02,70,180,43,1",
          "GIGSV,1,1,01,03,33,140,38,1", "GNGLL,1"});
  };
  const std::string others =
      ", R01* 1:30, R08* 1:- 3:29, E01* 7:45, E36* 2:35 7:37, C19* 1:40 11:39, C63 1:-, "
      "J02* 1:43, I03 1:38, S31 1:33, S33 1:44";
  epoch("GPGSV,1,1,02,01,40,083,40,17,05,010,38,8");
  EXPECT_EQ(View(), "G01* 1:46 8:40, G17* 1:41 8:38, G32 1:-" + others);
  EXPECT_EQ(sky.Used(), 8);
  EXPECT_EQ(sky.LatestSolution().fix, 3);
  EXPECT_EQ(sky.LatestSolution().pdop, 1.2);
  // A signal that goes leaves the others; a whole group without a satellite removes that.
  epoch("GPGSV,1,1,01,01,40,083,39,8");
  EXPECT_EQ(View(), "G01* 1:46 8:39, G17* 1:41, G32 1:-" + others);
  EXPECT_EQ(SignalName(GnssSystem::BeiDou, 11), "B2I");
  EXPECT_EQ(SignalName(GnssSystem::SBAS, 1), "L1 C/A");
  EXPECT_EQ(SignalName(GnssSystem::NavIC, 9), "signal 9");

  // QZSS is not told any more while the others go on.
  for (int i = 0; i < 80; ++i) {
    Take({"GPGSV,1,1,01,01,40,083,46,1", "GLGSV,1,1,01,65,20,100,30,1",
          "GNGSA,A,3,01,,,,,,,,,,,,,,,1"});
  }
  EXPECT_EQ(View(), "G01* 1:46, R01 1:30");
  sky.Reset();
  EXPECT_EQ(View(), "");
}

// Older receivers: one talker for all by their numbers, GSA without ids, more than twelve used.
TEST_F(Sky, ReadsOlderReceiversByTheirNumbers) {
  Take({"GPGSV,3,1,09,07,10,333,39,08,12,279,35,39,16,158,33,75,48,226,32",
        "GPGSV,3,2,09,95,14,188,27,194,70,083,31,301,11,091,46,420,20,010,40",
        "GPGSV,3,3,09,158,01,001,", "GPGSA,A,3,07,39,75,,,,,,,,,,1.10,0.60,0.90"});
  EXPECT_EQ(
      View(),
      "G07* 0:39, G08 0:35, R11* 0:32, R31 0:27, E01 0:46, C20 0:40, J02 0:31, S26* 0:33, S58 0:-");

  sky.Reset();
  Take({"GPGSV,4,1,14,01,,,1,02,,,1,03,,,1,04,,,1", "GPGSV,4,2,14,05,,,1,06,,,1,07,,,1,08,,,1",
        "GPGSV,4,3,14,09,,,1,10,,,1,11,,,1,12,,,1", "GPGSV,4,4,14,13,,,1,14,,,1",
        "GBGSV,1,1,03,102,,,2,207,,,2,11,,,2"});
  for (int i = 0; i < 3; ++i) {
    Take({"GNGSA,A,3,01,02,03,04,05,06,07,08,09,10,11,12,1,1,1", "GNGSA,A,3,13,,,,,,,,,,,,1,1,1",
          "GNGSA,A,3,02,07,11,,,,,,,,,,1,1,1", "GNVTG,1"});
  }
  EXPECT_EQ(
      View(),
      "G01* 0:1, G02* 0:1, G03* 0:1, G04* 0:1, G05* 0:1, G06* 0:1, G07* 0:1, G08* 0:1, "
      "G09* 0:1, G10* 0:1, G11* 0:1, G12* 0:1, G13* 0:1, G14 0:1, C02* 0:2, C07* 0:2, C11* 0:2");
}

// Lost and damaged sentences neither remove what they did not reach nor bring in what is not there.
TEST_F(Sky, SurvivesLostAndDamagedSentences) {
  Take({"GPGSV,2,1,05,01,10,100,40,02,10,100,40,03,10,100,40,04,10,100,40",
        "GPGSV,2,2,05,05,91,360,100"});
  EXPECT_EQ(View(), "G01 0:40, G02 0:40, G03 0:40, G04 0:40, G05 0:-");
  Take({"GPGSV,2,2,05,06,10,100,40"});  // its first sentence was lost
  EXPECT_EQ(View(), "G01 0:40, G02 0:40, G03 0:40, G04 0:40, G05 0:-, G06 0:40");
  sky.Take("$GPGSV,1,1,01,09,10,100,40*00");
  for (const char* const line :
       {"$GPGSV,", "$GPGSV,1,1", "$GPGSV,x,1,1,07,1,1,1", "$GPGSV,1,2,1,07",
        "$GPGSV,1,1,1,-7,1,1,1", "$GPGSV,1,1,1,999999999999,1,1,1", "$GPGSA,",
        "$GPGSA,A,3,x,-1,999", "$XXGSV,9", "", "$"}) {
    sky.Take(line);
  }
  EXPECT_EQ(View(), "");  // two of these were whole groups of no satellite
  Take({"GPGSV,1,1,01,05,45,180,44", "GPGSV,1,1,01,05,45,181,44", "GPGSV,1,1,01,05,45,181,43",
        "GPGSV,1,1,01,05,,,43"});
  ASSERT_EQ(sky.Satellites().size(), 1U);
  EXPECT_EQ(sky.Satellites()[0].track.size(), 2U);
  EXPECT_FALSE(sky.Satellites()[0].position.has_value());
  for (int i = 0; i < 2000; ++i) {
    Take({("GPGSV,1,1,01,05,45," + std::to_string(i % 360) + ",43").c_str()});
  }
  EXPECT_LE(sky.Satellites()[0].track.size(), SatellitesInView::kMostTrackPoints);
  EXPECT_EQ(sky.Satellites()[0].track.back().azimuth, 1999 % 360);
}

}  // namespace
}  // namespace fathomline
