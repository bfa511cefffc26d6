#include "pipeline/sentence_pipeline.h"

#include "support/expect_fault.h"
#include "support/test_program.h"

namespace fathomline {
namespace {

struct Gate : testing::Test, TestProgram {
  SentenceType Process(std::string_view line) {
    program.pipeline.ProcessSentence(1, line);
    return program.pipeline.HandedOn();
  }
};

TEST_F(Gate, RecognisesTypesByTheirPlaces) {
  struct Row {
    const char* line;
    SentenceType type;
  };
  using T = SentenceType;
  for (const Row& row :
       {Row{"$GPGGA,", T::GGA}, Row{"$GNGNS,", T::GNS}, Row{"$GPGLL,", T::GLL},
        Row{"$GPRMC,", T::RMC}, Row{"$GPZDA,", T::ZDA}, Row{"$GPVTG,", T::VTG},
        Row{"$GPGSA,", T::GSA}, Row{"$GPGST,", T::GST}, Row{"$GPGSV,", T::GSV},
        Row{"$PXGNGSV", T::None}, Row{"$XGPGSV,", T::GSV}, Row{"$HEHDT,", T::HDT},
        Row{"$PFEC,GPatt,", T::ATT}, Row{"$GPATT,", T::None}, Row{"$HEROT,", T::ROT},
        Row{"$VWVHW,", T::VHW}, Row{"$SDDBT,", T::DBT}, Row{"$RATTM,", T::TTM},
        Row{"!AIVDM,", T::VDM}, Row{"$AIVDM,", T::VDM}, Row{"$GPVDO,", T::VDM},
        Row{"xxxGGA", T::GGA}, Row{"$GPgga,", T::None}, Row{"$GPGG", T::None}, Row{"", T::None},
        // The first row of the table wins over the later ones.
        Row{"$GPHDTGPatt", T::HDT}, Row{"$GPGGAGSV", T::GGA}}) {
    EXPECT_EQ(Process(row.line), row.type) << row.line;
  }
}

TEST_F(Gate, StoresTextAndRecordWhetherOrNotTheTypeIsAnalysed) {
  Process("$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48\r\n");
  EXPECT_EQ(records.Messages[1].VTG.Text, "$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48\r\n");
  EXPECT_EQ(records.Messages[1].VTG.Record.SOGKnots, 5.5F);
  EXPECT_EQ(program.statistics[1].Of(SentenceType::VTG)[0].Stat.Count, 0);
  EXPECT_EQ(records.SentenceCount, 1);
}

TEST_F(Gate, CutsOffATagBlock) {
  const std::string gga = Sentence("GPGGA,120000,,,,,1,08,,,M,,M,,");
  frmNMEA& monitor = *program.monitorWindows[1];
  monitor.Show();
  EXPECT_EQ(Process("\\s:r,c:1*3A\\" + gga), SentenceType::GGA);
  EXPECT_EQ(records.Messages[1].GGA.Text, gga);
  EXPECT_EQ(monitor.txtNMEA.Text(), "\\s:r,c:1*3A\\" + gga) << "with the tag block";
  EXPECT_EQ(records.MonitorSystem, 1);

  for (const char* tag : {"\\s:r*3A", "\\a\\b\\", "\\a\\b\\c\\d\\e\\f\\g\\h\\i\\j"}) {
    EXPECT_EQ(Process(tag + gga), SentenceType::None) << tag;
  }
  ExpectFault(FaultNumber::OutOfRange, [&] { Process(std::string(11, '\\') + gga); });
  ExpectFault(FaultNumber::OutOfRange, [&] { program.pipeline.ProcessSentence(5, gga); });
  EXPECT_EQ(records.SentenceCount, 6) << "each of them has been counted";
}

TEST_F(Gate, RefusesWrongChecksumsWhereTheSystemWantsIt) {
  const std::string good = Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K");
  const std::string bad = "$GPVTG,054.7,T,034.4,M,007.5,N,010.2,K*48";
  EXPECT_EQ(Process(bad), SentenceType::VTG);
  EXPECT_EQ(records.Messages[1].VTG.Record.SOGKnots, 7.5F);

  records.ChecksumTest[1] = true;
  EXPECT_EQ(Process(good + "\r\n"), SentenceType::VTG);
  for (const std::string& line :
       {bad, good + "\n", std::string(), std::string("$A*41"), "\\s:r*3A" + good}) {
    EXPECT_EQ(Process(line), SentenceType::None) << line;
  }
  EXPECT_EQ(records.ChecksumErrors[1], 5);
  EXPECT_EQ(program.mainWindow.sbStatusBar.PanelText(4), "5");
  EXPECT_EQ(records.Messages[1].VTG.Record.SOGKnots, 5.5F) << "the record before stays";
  EXPECT_EQ(records.ChecksumErrors[2], 0);
}

TEST_F(Gate, GivesAISToItsDecoderAndStoreInEveryCase) {
  Process("!AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0*24");
  EXPECT_EQ(program.ais.Receiver(1).AISMessageId, 1);
  EXPECT_EQ(program.targets.AISTargetCount(1), 1) << "though VDM is not analysed";
  Process("!AIVDM,2,1,3,B,55P5TL01VIaAL@7W,0*00");
  EXPECT_EQ(program.ais.Receiver(1).AISMessageId, kOpenGroup);
  EXPECT_EQ(program.ais.Receiver(2).AISMessageId, 0) << "systems do not mix";
}

}  // namespace
}  // namespace fathomline
