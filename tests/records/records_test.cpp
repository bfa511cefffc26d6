#include "records/records.h"

#include <gtest/gtest.h>
#include <vector>

namespace fathomline {
namespace {

TEST(Records, DefaultsLeaveSomeThingsAlone) {
  Records records;
  CommSetup& setup = records.CommSetups[2];
  setup.Enabled = setup.UseUDP = setup.AnalyseGGA = setup.AnalyseTTM = setup.AnalyseVDM = true;
  setup.UDPPort = 7;
  records.Emptybuffer[2] = records.ChecksumTest[2] = true;
  records.SetDefaultSetup();
  EXPECT_FALSE(setup.Enabled || setup.AnalyseGGA || records.ChecksumTest[2]);
  EXPECT_EQ(setup.IPAddress, "127.0.0.1");
  EXPECT_EQ(setup.TCPPort, 8040);
  EXPECT_TRUE(setup.UseUDP && setup.AnalyseTTM && setup.AnalyseVDM && records.Emptybuffer[2]);
  EXPECT_EQ(setup.UDPPort, 7);
}

TEST(Records, TheFlagsFollowTheListOfMessages) {
  struct Row {
    MessageList list;
    std::vector<SentenceType> analysed;
  };
  using T = SentenceType;
  for (const Row& row : {Row{{"GGA", "XYZ", "gll", "VDO", "GSVx", "HDT"}, {T::GGA, T::HDT}},
                         Row{{"", "GGA", "HDT"}, {}}, Row{{"VDM", "", "HDT"}, {T::VDM}},
                         Row{{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "HDT"}, {}}}) {
    Records records;
    records.CommSetups[1].AnalyseRMC = true;
    records.MessagesToAnalyse[1] = row.list;
    records.SetMessageFlags(1);
    std::vector<SentenceType> analysed;
    for (const AnalyseFlag& flag : kAnalyseFlags) {
      if (records.CommSetups[1].*flag.flag) analysed.push_back(flag.type);
    }
    EXPECT_EQ(analysed, row.analysed) << row.list[0];
  }
}

}  // namespace
}  // namespace fathomline
