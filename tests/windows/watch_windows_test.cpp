// The windows that watch the sources: Sources with its marks in the status bar, the sentence log,
// and the satellites.
#include <gmock/gmock.h>
#include <sstream>

#include "base/files.h"
#include "support/drawn_shapes.h"
#include "support/places.h"
#include "support/sentences.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct WatchWindows : ::testing::Test {
  WatchWindows() {
    session.Prepare([](Records& records) {
      for (const int system : {1, 3}) {
        CommSetup& setup = records.CommSetups[system];
        setup.Enabled = true;
        setup.UseTCPIP = true;
        setup.IPAddress = "10.1.2.3";
        setup.TCPPort = 8040 + system;
        setup.Name = system == 1 ? "Bridge" : "";
      }
      records.ChecksumTest[1] = true;
    });
    EXPECT_TRUE(session.Start());
    Second();
  }
  ~WatchWindows() override { session.program.reset(); }

  Program& program() { return *session.program; }
  frmMain& mainWindow() { return session.mainWindow(); }
  HeadlessTcpLink& Tcp(int system) { return session.links.Winsock1(system); }
  void Send(int system, const std::string& line) {
    Tcp(system).Arrive(line + "\r\n");
    session.face.Advance(std::chrono::milliseconds(1));
  }
  void Second() { session.face.Advance(std::chrono::seconds(1)); }
  static std::vector<std::string> Row(const Grid& grid, int row) {
    std::vector<std::string> cells;
    for (int column = 0; column < grid.Columns(); ++column) cells.push_back(grid.Text(row, column));
    return cells;
  }
  std::string MarkOfSystem(int system) {
    const int panel = frmMain::kSourcePanel + system;
    const StatusBar& bar = mainWindow().sbStatusBar;
    return bar.PanelVisible(panel) ? bar.PanelText(panel) : "hidden";
  }

  Session session;
};

TEST_F(WatchWindows, SourcesTellStateAndReasonAndOpenALinkAgain) {
  for (int i = 0; i < 20; ++i) {
    Send(1, Sentence("GPZDA,120000,01,01,2026,00,00"));
    Send(1, Sentence("HEHDT,1.0,T"));
    Second();
  }
  Send(1, "$HEHDT,1.0,T*00");
  Second();
  EXPECT_EQ(MarkOfSystem(1), "● 1 alive 0 s");
  EXPECT_EQ(MarkOfSystem(2), "hidden");
  EXPECT_EQ(MarkOfSystem(3), "▲ 3 late") << "open for twenty seconds without a line";

  mainWindow().sbStatusBar.ClickPanel(frmMain::kSourcePanel + 1);
  frmSources& sources = program().session.tools.sources;
  ASSERT_TRUE(sources.Visible());
  sources.Refresh();
  EXPECT_THAT(Row(sources.fgSources, 1),
              ElementsAre("● alive", "1 - Bridge", "TCP", "10.1.2.3:8041", "connected", "1.7",
                          "1.0 s ago", "1"));
  EXPECT_THAT(Row(sources.fgSources, 2), ElementsAre("▲ late", "3", "TCP", "10.1.2.3:8043",
                                                     "connected", "0.0", "", "not tested"));
  EXPECT_THAT(Row(sources.fgSentences, 1),
              ElementsAre("● alive", "1", "GP", "ZDA", "1.00", "2.0 s", "20"));
  EXPECT_THAT(Row(sources.fgSentences, 2),
              ElementsAre("● alive", "1", "HE", "HDT", "1.00", "1.0 s", "21"));
  EXPECT_EQ(sources.fgSentences.Rows(), 3);
  EXPECT_EQ(sources.fgSources.CellColour(1, 0), look::kAlive);
  // In order of their age whatever its unit.
  const std::vector<std::pair<const char*, double>> ages = {
      {"9.5 s", 9.5}, {"119 s", 119.0}, {"2 min", 120.0}, {"3 h", 10800.0}};
  for (const auto& [text, seconds] : ages) {
    sources.fgSentences.Set(2, 5, text);
    EXPECT_EQ(sources.fgSentences.sortKey(2, 5), seconds);
  }

  // The link goes, with the box that is told; by hand it comes back, and nothing is forgotten.
  session.face.ExpectBox("TCP/IP Error, system 1 :10054 - The remote host closed the connection");
  Tcp(1).Fail(10054, "The remote host closed the connection");
  Second();
  EXPECT_THAT(MarkOfSystem(1), HasSubstr("■ 1 dead"));
  sources.Refresh();
  EXPECT_EQ(sources.fgSources.Text(1, 4), "The remote host closed the connection");
  EXPECT_TRUE(sources.cmdReconnect(1).Shown());
  EXPECT_FALSE(sources.cmdReconnect(2).Shown());
  sources.cmdReconnect(1).Click();
  sources.Refresh();
  EXPECT_EQ(sources.fgSources.Text(1, 4), "connected");
  Send(1, Sentence("HEHDT,1.0,T"));
  EXPECT_EQ(session.records().SentenceCount, 42);

  // The option stands at two places, and is kept.
  EXPECT_FALSE(mainWindow().mnuOptionsReconnect.Checked());
  sources.chkReconnect.Click();
  Second();
  EXPECT_TRUE(mainWindow().mnuOptionsReconnect.Checked());
  EXPECT_EQ(session.settings.GetNumber("Settings", "ReconnectLostLinks", 0), 1);
  Tcp(1).refusal = {10061, "Connection refused"};
  Tcp(1).Fail(10054, "reset");
  session.face.Advance(std::chrono::milliseconds(1500));
  sources.Refresh();
  EXPECT_EQ(sources.fgSources.Text(1, 4), "Connection refused; try 2 in 2 s");
  mainWindow().mnuOptionsReconnect.Click();
  session.face.Advance(std::chrono::milliseconds(300));
  sources.Refresh();
  EXPECT_FALSE(sources.chkReconnect.Checked());
  EXPECT_EQ(sources.fgSources.Text(1, 4), "Connection refused");

  for (const int rows : {4, 3}) {
    Send(3, Sentence("HEHDT,1.0,T"));
    session.records().CommSetups[3].Enabled = rows == 4;
    Second();
    sources.Refresh();
    EXPECT_EQ(sources.fgSentences.Rows(), rows) << "what is not enabled is not listed";
  }
}

TEST(SourceTexts, HaveAsManyDigitsAsCanBeRead) {
  std::string texts = AgeText(9.94, false);
  for (const double seconds : {0.0, 9.94, 10.0, 119.4, 120.0, 7199.0, 7200.0, 86400.0}) {
    texts += "|" + AgeText(seconds);
  }
  for (const double rate : {100.0, 99.94, 1.0, 0.0, 0.99, 0.1, 0.017})
    texts += "|" + RateText(rate);
  EXPECT_EQ(texts,
            "9 s|0.0 s|9.9 s|10 s|119 s|2 min|120 min|2 h|24 h|100|99.9|1.0|0.0|0.99|0.10|0.017");
}

TEST_F(WatchWindows, TheSentenceLogFiltersPausesCopiesAndSaves) {
  const std::string hdt = Sentence("HEHDT,1.0,T");
  const std::string zda = Sentence("GPZDA,120000,01,01,2026,00,00");
  Send(1, hdt);
  mainWindow().mnuToolsSentenceLog.Click();
  frmSentenceLog& log = program().session.tools.sentenceLog;
  const LongListSource& lines = log.lstLines.Source();
  Second();
  for (const auto& [system, line] :
       {std::pair(1, hdt), {1, "$HEHDT,9.0,T*00"}, {3, zda}, {3, "no sentence"}}) {
    Send(system, line);
  }
  log.Refresh();
  EXPECT_EQ(log.lblShown.Text(), "4 of 4 shown");
  EXPECT_EQ(lines.Cell(0, 0), "03:04:06.000") << "a second after it was opened";
  EXPECT_EQ(lines.Cell(2, 1) + lines.Cell(2, 2), "3" + zda);

  log.cmbTalker.UserChoose(2);
  EXPECT_EQ(log.cmbTalker.Text(), "HE");
  EXPECT_EQ(log.lblShown.Text(), "2 of 4 shown");
  const std::string vdm = Sentence("AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0", '!');
  Send(1, vdm);
  log.Refresh();
  EXPECT_EQ(log.cmbTalker.Text(), "HE") << "though others have come before it";
  log.cmbChecksum.UserChoose(2);
  ASSERT_EQ(log.lblShown.Text(), "1 of 5 shown");
  EXPECT_EQ(lines.Cell(0, 2), "$HEHDT,9.0,T*00");
  log.cmbTalker.UserChoose(0);
  log.cmbChecksum.UserChoose(0);
  log.cmbSystem.UserChoose(2);
  log.txtText.UserText("zda");
  EXPECT_EQ(log.lblShown.Text(), "1 of 5 shown");
  log.cmbSystem.UserChoose(0);
  log.txtText.UserText("");

  log.txtFind.UserText("hehdt");
  for (const std::uint64_t row : {0U, 1U, 0U}) {
    log.cmdNext.Click();
    EXPECT_THAT(log.lstLines.Selection(), ElementsAre(LongList::Range{row, row}));
  }
  log.cmdPrevious.Click();
  log.lstLines.Copy();
  EXPECT_EQ(session.face.CopiedText(), "$HEHDT,9.0,T*00\n");
  const int beeps = session.face.Beeps();
  log.txtFind.UserText("nothing");
  log.cmdNext.Click();
  EXPECT_EQ(session.face.Beeps(), beeps + 1);

  log.cmdPause.Click();
  Send(1, zda);
  log.Refresh();
  EXPECT_EQ(log.lblShown.Text(), "5 of 5 shown, paused: 1 have passed by");
  EXPECT_EQ(log.cmdPause.Text(), "C&ontinue");
  log.cmdPause.Click();
  EXPECT_EQ(log.cmdPause.Text(), "&Pause");
  Send(1, zda);
  log.cmbChecksum.UserChoose(1);
  const std::string path = session.folder.Path() + "/saved.log";
  session.face.ExpectFile(path);
  log.cmdSave.Click();
  EXPECT_TRUE(session.face.Files().back().save);
  EXPECT_EQ(ReadWholeFile(path), hdt + "\r\n" + zda + "\r\n" + vdm + "\r\n" + zda + "\r\n");
  session.face.ExpectFile(session.folder.Path() + "/no/such/folder.log");
  session.face.ExpectBox("");
  log.cmdSave.Click();
  EXPECT_THAT(session.face.Boxes().back().text, HasSubstr("could not be saved"));

  log.Close();
  EXPECT_FALSE(program().engine.watch.Log().Running());
  Send(1, hdt);
  log.Show();
  log.Refresh();
  EXPECT_EQ(log.lblShown.Text(), "0 of 0 shown");
  // The choices begin anew too.
  for (const std::string& line : {hdt, zda, vdm}) Send(1, line);
  log.Refresh();
  EXPECT_EQ(log.cmbTalker.Count(), 4);
  EXPECT_EQ(log.cmbSentence.Count(), 4);
}

TEST_F(WatchWindows, SatellitesOfTheChosenSystemAreListed) {
  mainWindow().mnuToolsSatellites.Click();
  frmSatellites& window = program().session.tools.satellites;
  const Grid& grid = window.fgSatellites;
  for (const char* const body :
       {"GPGSV,1,1,02,07,40,083,46,09,05,010,,1", "GBGSV,1,1,01,19,50,120,44,1"}) {
    Send(1, Sentence(body));
  }
  Send(3, Sentence("GAGSV,1,1,01,05,60,120,50,7"));
  window.Refresh();
  EXPECT_EQ(grid.Rows(), 4);
  window.cmbSystem.UserChoose(1);
  Send(3, Sentence("GAGSV,1,1,01,05,60,120,50,7"));
  Second();
  window.Refresh();
  EXPECT_EQ(grid.Text(1, 0), "E05");
  session.records().CommSetups[3].Enabled = false;
  window.Refresh();
  EXPECT_EQ(window.cmbSystem.Text(), "1 - Bridge");
  EXPECT_EQ(grid.Rows(), 1);
  session.records().CommSetups[1].Name = "Mast";
  window.Refresh();
  EXPECT_EQ(window.cmbSystem.Text(), "1 - Mast");
  window.Close();
  EXPECT_EQ(program().engine.watch.SystemOfSatellites(), 0);
  // It begins with the first system that analyses satellites.
  session.records().CommSetups[3].Enabled = session.records().CommSetups[3].AnalyseGSA = true;
  for (const int system : {3, 1}) {
    session.records().CommSetups[system].AnalyseGSV = true;
    window.Show();
    EXPECT_EQ(program().engine.watch.SystemOfSatellites(), system);
    window.Close();
  }
}

// satellites.lst has the sentences and what they draw and list, worked out from how the pictures
// are described: the zenith in the middle, the horizon 18 pixels within the edge, bars as high as
// C/N0 over a foot of two lines of text.
TEST_F(WatchWindows, SatellitesAreDrawnAndOrderedAsTheListHasThem) {
  mainWindow().mnuToolsSatellites.Click();
  frmSatellites& window = program().session.tools.satellites;
  std::string drawn;
  std::istringstream list(ReadWholeFile(kSourceFolder + "/tests/windows/satellites.lst"));
  std::string wanted;
  for (std::string line; std::getline(list, line);) {
    if (line.starts_with("$")) {
      Send(1, Sentence(line.substr(1)));
    } else if (line.starts_with("wait ")) {
      session.face.Advance(std::chrono::milliseconds(std::stoi(line.substr(5))));
    } else if (line.starts_with("head ")) {
      window.fgSatellites.ClickHead(std::stoi(line.substr(5)));
    } else if (line == "table") {
      window.Refresh();
      drawn += window.lblSolution.Text() + "\n";
      for (int row = 1; row < window.fgSatellites.Rows(); ++row) {
        for (const std::string& cell : Row(window.fgSatellites, row)) drawn += cell + "|";
        drawn += "\n";
      }
    } else if (line.starts_with("size ")) {
      std::istringstream size(line.substr(5));
      Picture::Size surface;
      size >> surface.width >> surface.height;
      for (Picture* picture : {&window.picSky, &window.picSignals})
        picture->SetSurface(surface, {});
      window.Refresh();
    } else if (line == "sky" || line == "signals") {
      const Picture& picture = line == "sky" ? window.picSky : window.picSignals;
      Second();
      window.Refresh();
      drawn += line + " at least " + PlainText(picture.Least().width) + " by " +
               PlainText(picture.Least().height) + "\n" + DrawnShapes(picture.Persistent());
      EXPECT_TRUE(picture.Transient().empty());
    } else if (!line.starts_with("#")) {
      wanted += line + "\n";
    }
  }
  EXPECT_EQ(drawn, wanted);
}

}  // namespace
}  // namespace fathomline
