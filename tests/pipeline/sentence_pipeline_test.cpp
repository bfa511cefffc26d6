#include "pipeline/sentence_pipeline.h"

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

struct Gate : testing::Test, TestProgram {
  SentenceType Process(std::string_view line) {
    program.engine.pipeline.ProcessSentence(1, line);
    return program.engine.pipeline.HandedOn();
  }
};

TEST_F(Gate, CutsOffATagBlock) {
  const std::string gga = Sentence("GPGGA,120000,,,,,1,08,,,M,,M,,");
  frmNMEA& monitor = *program.windows.monitors[1];
  monitor.Show();
  EXPECT_EQ(Process("\\s:r,c:1*3A\\" + gga), SentenceType::GGA);
  EXPECT_EQ(records.Messages[1].GGA.Text, gga);
  EXPECT_EQ(monitor.txtNMEA.Text(), "\\s:r,c:1*3A\\" + gga) << "with the tag block";
  EXPECT_EQ(records.MonitorSystem, 1);

  ExpectFault(FaultNumber::OutOfRange, [&] { Process(std::string(11, '\\') + gga); });
  ExpectFault(FaultNumber::OutOfRange, [&] { program.engine.pipeline.ProcessSentence(5, gga); });
  EXPECT_EQ(records.SentenceCount, 3) << "each of them has been counted";
}

TEST_F(Gate, CountsWhatItRefusesAndTakesALineEndOfALink) {
  const std::string good = Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K");
  records.ChecksumTest[1] = true;
  EXPECT_EQ(Process(good + "\r\n"), SentenceType::VTG);
  EXPECT_EQ(records.Messages[1].VTG.Text, good + "\r\n");
  for (const std::string& line : {good + "\n", std::string()}) {
    EXPECT_EQ(Process(line), SentenceType::None) << line;
  }
  EXPECT_EQ(records.ChecksumErrors[1], 2);
  EXPECT_EQ(program.windows.main.sbStatusBar.PanelText(4), "2");
  EXPECT_EQ(records.ChecksumErrors[2], 0);
}

TEST_F(Gate, GivesAISToItsDecoderAndStoreInEveryCase) {
  Process("!AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0*24");
  EXPECT_EQ(program.engine.ais.Receiver(1).AISMessageId, 1);
  EXPECT_EQ(program.engine.targets.AISTargetCount(1), 1) << "though VDM is not analysed";
  Process("!AIVDM,2,1,3,B,55P5TL01VIaAL@7W,0*00");
  EXPECT_EQ(program.engine.ais.Receiver(1).AISMessageId, kOpenGroup);
  EXPECT_EQ(program.engine.ais.Receiver(2).AISMessageId, 0) << "systems do not mix";
}

}  // namespace
}  // namespace fathomline
