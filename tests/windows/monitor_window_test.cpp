#include "support/session.h"

namespace fathomline {
namespace {

struct Monitor : ::testing::Test {
  void Start(const std::function<void(CommSetup& setup)>& link, std::string_view mode = kOnline) {
    session.Prepare([&](Records& records) {
      records.Mode = mode;
      link(records.CommSetups[1]);
      records.Comport(5).System = 1;
      records.Comport(5).Parity = "odd";
    });
    ASSERT_TRUE(session.Start());
    window = session.program->windows.monitors[1].get();
    window->Show();
  }
  void StartOnUdp() {
    Start([](CommSetup& setup) {
      setup.UseUDP = true;
      setup.UDPPort = 10110;
    });
  }
  void Receive(std::string_view text) {
    session.links.WinsockUDP(1).Arrive(text);
    session.Deliver();
  }
  // Messages, NMEA, AIS, checksum right, checksum wrong.
  std::string Counters() {
    window->Refresh();
    std::string text;
    for (const Label* label : {&window->lblMessages, &window->lblNMEACount, &window->lblAISCount,
                               &window->lblCheckSumOK, &window->lblCheckSumError}) {
      text += label->Text() + " ";
    }
    return text;
  }
  std::string Panels() {
    std::string texts;
    for (int panel = 1; panel <= window->StatusBar1.Panels(); ++panel) {
      texts += "|" + window->StatusBar1.PanelText(panel);
    }
    return texts;
  }

  Session session;
  frmNMEA* window = nullptr;
};

TEST_F(Monitor, CountsWhatItRecognises) {
  StartOnUdp();
  EXPECT_EQ(Panels(), "|UDP|Port :10110");
  Receive("hello\r\n");
  EXPECT_EQ(Counters(), "1 0 0 0 0 ");
  Receive("!AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0*24\r\n");
  EXPECT_EQ(Counters(), "2 0 1 1 0 ");
  Receive("$GPHDT,1,T*\r\n");
  Receive("$GPHDT,1,T\r\n");
  Receive("$GPHDT,1,T*zz\r\n");
  Receive("$HEHDT,10.0,T*17\n");  // a bare line feed is no ending
  EXPECT_EQ(Counters(), "6 4 1 1 4 ");
  EXPECT_EQ(session.records().ChecksumErrors[1], 0);
}

TEST_F(Monitor, StartsAgainFromTheTopWhenFull) {
  StartOnUdp();
  window->txtNMEA.SetHeight(2550);
  for (int line = 0; line < 10; ++line) Receive("line\r\n");
  EXPECT_EQ(window->txtNMEA.Text().size(), 60U);
  EXPECT_EQ(window->txtNMEA.Tag(), "10");
  Receive("eleven\xE6\r\n");
  EXPECT_EQ(window->txtNMEA.Text(), "eleven\xC3\xA6\r\n");
  EXPECT_EQ(window->txtNMEA.Tag(), "1");
  window->cmdCLS.Click();
  EXPECT_EQ(window->txtNMEA.Text(), "");
  EXPECT_EQ(window->txtNMEA.Tag(), "0");
}

TEST_F(Monitor, FrozenItCountsOn) {
  StartOnUdp();
  Receive("one\r\n");
  window->cmdFreeze.Click();
  EXPECT_EQ(window->cmdFreeze.Text(), "Continue");
  Receive("two\r\n");
  EXPECT_EQ(window->txtNMEA.Text(), "one\r\n  \r\n");
  window->Refresh();
  EXPECT_EQ(window->lblInputBuffer2.Text(), "two ");
  window->cmdFreeze.Click();
  EXPECT_EQ(window->cmdFreeze.Text(), "Freeze");
  Receive("three\r\n");
  EXPECT_EQ(window->txtNMEA.Text(), "one\r\n  \r\nthree\r\n");
  EXPECT_EQ(Counters(), "3 0 0 0 0 ");

  session.face.Expect({"", Answer::No});
  window->cmdResetCounters.Click();
  EXPECT_EQ(Counters(), "3 0 0 0 0 ");
  session.face.Expect({"", Answer::Yes});
  window->cmdResetCounters.Click();
  EXPECT_EQ(Counters(), "0 0 0 0 0 ");
}

TEST_F(Monitor, LinesOfAFileGetAnEnding) {
  Start([this](CommSetup& setup) { setup.OfflineFile = session.folder.Write("a.log", "one\ntwo"); },
        kOffline);
  EXPECT_EQ(Panels(), "|File : " + session.folder / "a.log");
  session.mainWindow().tbOffline.Click("PLAY");
  session.Deliver();
  EXPECT_EQ(window->txtNMEA.Text(), "one\r\ntwo\r\n");
  window->Refresh();
  EXPECT_EQ(window->lblInputBuffer2.Text(), "two");
}

TEST_F(Monitor, FollowsTheModeAndShowsTheSettingsOfASerialPort) {
  Start([](CommSetup& setup) { setup.ComPort = 5; });
  EXPECT_EQ(window->lblInputBuffer1.Text(), "COM-port inputbuffer :");
  EXPECT_EQ(Panels(), "|Comport :5|Baud rate :4800|Data bits :8|Parity : odd|Stop bits :1");
  EXPECT_FALSE(window->timer_State.Enabled());
  session.face.Expect({kModeQuestion, Answer::Yes});
  session.mainWindow().mnuModeOffline.Click();
  window->Refresh();
  EXPECT_EQ(window->lblInputBuffer1.Text(), "File inputbuffer :");
  EXPECT_EQ(Panels(), "|File : ");
}

TEST_F(Monitor, AsksAStableTcpLinkSeldomAndAChangingOneOften) {
  ScriptedFace face;
  Desktop desktop(face);
  Records records;
  records.CommSetups[2].UseTCPIP = true;
  records.CommSetups[2].IPAddress = "host";
  records.CommSetups[2].TCPPort = 8040;
  SettingsStore settings;
  LinkState state = LinkState::Open;
  frmNMEA second({desktop, records, settings}, 2, [&state](int) { return state; });
  window = &second;
  second.Show();
  EXPECT_EQ(Panels(), "|TCP/IP|IP :host|Port :8040|");
  struct Row {
    int state;
    const char* text;
    int interval;
  };
  constexpr Row kRows[] = {
      {2, "Listening", 1000},         {3, "Connection pending", 1000},
      {4, "Resolving host", 1000},    {5, "Host Resolved", 1000},
      {6, "Connecting to host", 200}, {7, "Connected to host", 10000},
      {8, "Closing", 1000},           {9, "Error", 1000},
      {0, "Closed", 10000},           {1, "Closed", 10000}};  // an open one shows nothing new
  for (const Row& row : kRows) {
    state = static_cast<LinkState>(row.state);
    const std::string before = second.StatusBar1.PanelText(4);
    face.Advance(std::chrono::milliseconds(second.timer_State.Interval() - 1));
    EXPECT_EQ(second.StatusBar1.PanelText(4), before);
    face.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(second.StatusBar1.PanelText(4), row.text);
    EXPECT_EQ(second.timer_State.Interval(), row.interval) << row.text;
  }
  records.Mode = kOffline;
  second.ShowInput("of the link");
  second.Refresh();
  EXPECT_FALSE(second.timer_State.Enabled());
  EXPECT_EQ(second.lblInputBuffer2.Text(), "of the link");
  second.ShowInput("since");
  second.Close();
  second.Show();
  second.Refresh();
  EXPECT_EQ(second.lblInputBuffer2.Text(), "");
}

}  // namespace
}  // namespace fathomline
