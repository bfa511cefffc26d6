#include "windows/monitor_window.h"

#include <limits>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "base/text.h"
#include "decoding/checksum.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{900, 3900, 9000, 6500};
constexpr std::string_view kLineEnd = "\r\n";
constexpr int kLineHeight = 255;  // twips
constexpr std::string_view kTrue = "True";
constexpr std::string_view kFalse = "False";
constexpr int kStatePanel = 4;

// How a state of the TCP link reads, and when to ask for the next one: a stable link seldom, a
// changing one often.
struct StateText {
  LinkState state;
  std::string_view text;
  bool withHost;
  int interval;  // milliseconds
};
constexpr auto kStateTexts = std::to_array<StateText>({
    {LinkState::Closed, "Closed", false, 10000},
    {LinkState::Listening, "Listening", false, 1000},
    {LinkState::ConnectionPending, "Connection pending", false, 1000},
    {LinkState::ResolvingHost, "Resolving host", false, 1000},
    {LinkState::HostResolved, "Host Resolved", false, 1000},
    {LinkState::Connecting, "Connecting to ", true, 200},
    {LinkState::Connected, "Connected to ", true, 10000},
    {LinkState::Closing, "Closing", false, 1000},
    {LinkState::Error, "Error", false, 1000},
});

// Received text in one line: each of its line ends is a blank.
std::string InOneLine(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes.substr(i).starts_with(kLineEnd)) ++i;
    text += bytes[i] == '\r' || bytes[i] == '\n' ? ' ' : bytes[i];
  }
  return FromLatin1(text);
}

void Count(std::int32_t& counter) {
  if (counter < std::numeric_limits<std::int32_t>::max()) ++counter;
}

}  // namespace

frmNMEA::frmNMEA(const ViewSurroundings& surroundings, int system,
                 std::function<LinkState(int)> tcpState)
    : SystemView(surroundings, system,
                 {.name = "frmNMEA",
                  .caption = "NMEA Monitor ",
                  .place = kDefaultPlace,
                  .placeKey = "Monitor",
                  .placeOfItsOwn = false,
                  .icon = ViewIcon::OfEverySystem,
                  .flag = WindowFlag::NMEA}),
      tcpState_(std::move(tcpState)) {
  txtNMEA.SetReadOnly(true);
  txtNMEA.SetTag("0");
  cmdFreeze.SetTag(kFalse);
  cmdFreeze.onClick = [this] { Freeze(); };
  cmdCLS.onClick = [this] { Clear(); };
  cmdResetCounters.onClick = [this] { ResetCounters(); };
  timer_State.onTick = [this] { ShowState(); };
  SetContent(Layout::Column(
      {Layout::Row({lblInputBuffer1, lblInputBuffer2}), txtNMEA,
       Layout::Row(
           {Layout::Form({{"Number of messages", lblMessages},
                          {"Recognized as NMEA", lblNMEACount},
                          {"Recognized as AIS", lblAISCount}}),
            Layout::Space(),
            Layout::Form({{"Checksum OK", lblCheckSumOK}, {"Checksum Error", lblCheckSumError}}),
            Layout::Space(), Layout::Column({cmdFreeze, cmdCLS, cmdResetCounters})}),
       StatusBar1}));
}

void frmNMEA::LoadView() {
  inputDue_ = false;
  LayOutStatusBar();
}

// Runs when the window is first shown, which is no bringing forward.
void frmNMEA::Resize() {
  seenFrontOrder_ = FrontOrder();
}

void frmNMEA::ShowLink() {
  if (!Loaded()) return;
  timer_State.SetEnabled(false);
  LayOutStatusBar();
}

void frmNMEA::LayOutStatusBar() {
  const CommSetup& setup = Setup();
  shownOffline_ = records_.Offline();
  lblInputBuffer1.SetText(shownOffline_ ? "File inputbuffer :" : "COM-port inputbuffer :");
  if (shownOffline_) {
    StatusBar1.SetPanels({"File : " + setup.OfflineFile});
  } else if (setup.UseTCPIP) {
    StatusBar1.SetPanels(
        {"TCP/IP", "IP :" + setup.IPAddress, "Port :" + PlainText(setup.TCPPort), ""});
    timer_State.SetEnabled(true);
    ShowState();
  } else if (setup.UseUDP) {
    StatusBar1.SetPanels({"UDP", "Port :" + PlainText(setup.UDPPort)});
  } else if (setup.ComPort == 0) {
    StatusBar1.SetPanels({"not defined"});
  } else {
    const ComportSetup& row = records_.Comport(setup.ComPort);
    StatusBar1.SetPanels({"Comport :" + PlainText(setup.ComPort),
                          "Baud rate :" + PlainText(row.Baud),
                          "Data bits :" + PlainText(row.DataBits), "Parity : " + row.Parity,
                          "Stop bits :" + PlainText(row.StopBits)});
  }
}

void frmNMEA::ShowState() {
  const LinkState state = tcpState_(Index());
  for (const StateText& row : kStateTexts) {
    if (row.state != state) continue;
    std::string text(row.text);
    if (row.withHost) text += Setup().IPAddress;
    StatusBar1.SetPanelText(kStatePanel, text);
    timer_State.SetInterval(row.interval);
  }
}

bool frmNMEA::Frozen() const {
  return cmdFreeze.Tag() == kTrue;
}

// A port that lags holds much, and tells of it at each of its events.
void frmNMEA::ShowInput(std::string_view text) {
  input_.assign(text);
  inputDue_ = true;
}

void frmNMEA::MonitorLine(std::string_view line) {
  Count(counters_.MonitorMessages);
  if (!Frozen()) ShowLine(line);
  if (line.starts_with('$') || line.starts_with('!')) CountSentence(line);
}

// The view starts again from the top once it is full.
void frmNMEA::ShowLine(std::string_view line) {
  std::int32_t lines = ToInt32(ReadNumber(txtNMEA.Tag()));
  if (lines >= txtNMEA.Height() / kLineHeight) {
    txtNMEA.SetText("");
    lines = 0;
  }
  std::string text = FromLatin1(line);
  if (records_.Offline()) text += kLineEnd;
  txtNMEA.Append(text);
  txtNMEA.SetTag(PlainText(lines + 1));
}

void frmNMEA::CountSentence(std::string_view line) {
  if (line.ends_with(kLineEnd)) line.remove_suffix(kLineEnd.size());
  Count(line.front() == '$' ? counters_.MonitorNMEACount : counters_.MonitorAISCount);
  const std::size_t star = line.find('*');
  const bool correct = star != std::string_view::npos &&
                       line.substr(star + 1) == std::string_view(ComputeChecksum(line));
  Count(correct ? counters_.MonitorChecksumOK : counters_.MonitorChecksumError);
}

void frmNMEA::Freeze() {
  if (Frozen()) {
    cmdFreeze.SetText("Freeze");
    cmdFreeze.SetTag(kFalse);
    return;
  }
  txtNMEA.Append("  \r\n");
  cmdFreeze.SetText("Continue");
  cmdFreeze.SetTag(kTrue);
}

void frmNMEA::Clear() {
  txtNMEA.SetText("");
  txtNMEA.SetTag("0");
}

void frmNMEA::ResetCounters() {
  const Answer answer =
      OwningDesktop().Ask({.text = "Are you sure ?", .buttons = BoxButtons::YesNo});
  if (answer == Answer::Yes) counters_ = {};
}

void frmNMEA::Refresh() {
  // A change of mode leaves the window open.
  if (shownOffline_ != records_.Offline()) ShowLink();
  if (std::exchange(inputDue_, false)) lblInputBuffer2.SetText(InOneLine(input_));
  lblMessages.SetText(PlainText(counters_.MonitorMessages));
  lblNMEACount.SetText(PlainText(counters_.MonitorNMEACount));
  lblAISCount.SetText(PlainText(counters_.MonitorAISCount));
  lblCheckSumOK.SetText(PlainText(counters_.MonitorChecksumOK));
  lblCheckSumError.SetText(PlainText(counters_.MonitorChecksumError));
  if (std::exchange(seenFrontOrder_, FrontOrder()) != FrontOrder()) {
    SetFlag(true);
  }
}

}  // namespace fathomline
