#include "simulator/command.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <optional>
#include <system_error>

#include "base/command_line.h"
#include "base/fault.h"
#include "base/numbers.h"
#include "base/system.h"
#include "simulator/live_server.h"
#include "simulator/truth_file.h"

namespace fathomline::simulator {
namespace {

constexpr std::string_view kProgram = "fathomline-simulate";
constexpr double kLongestDuration = 1e9;  // seconds
constexpr double kLowestSpeed = 0.001;
constexpr double kHighestSpeed = 1e6;

using Words = std::initializer_list<std::string_view>;

std::string Joined(Words words) {
  std::string text;
  for (const std::string_view word : words) text += word;
  return text;
}

[[noreturn]] void Refuse(Words words) {
  Raise(FaultNumber::InvalidCall, Joined(words));
}

double NumberWithin(std::string_view text, double lowest, double highest) {
  const double value = NumberOf(text);
  if (value < lowest || value > highest) {
    Refuse({"\"", text, "\" is not between ", ExactText(lowest), " and ", ExactText(highest)});
  }
  return value;
}

std::uint64_t SeedOf(std::string_view text) {
  std::uint64_t seed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seed);
  if (error != std::errc() || end != text.data() + text.size()) {
    Refuse({"\"", text, "\" is not a whole number"});
  }
  return seed;
}

DateTime StartOf(std::string_view text) {
  const DateTime start = MomentOf(text);
  // The date of RMC has two digits for the year.
  const int year = ToCalendar(start).year;
  if (year < 2000 || year > 2099) Refuse({"\"", text, "\" is not of this century"});
  return start;
}

std::vector<SentenceRate> ReadSentences(std::string_view list, const Scenario& scenario,
                                        std::optional<double> rate) {
  std::vector<SentenceRate> sentences;
  for (std::size_t from = 0; from <= list.size();) {
    const std::size_t end = std::min(list.find(',', from), list.size());
    const std::string_view item = list.substr(from, end - from);
    from = end + 1;
    const std::size_t colon = std::min(item.find(':'), item.size());
    const std::string_view name = item.substr(0, colon);
    const auto row = std::find_if(kSentenceKinds.begin(), kSentenceKinds.end(),
                                  [&](const SentenceKindRow& kind) { return kind.name == name; });
    if (row == kSentenceKinds.end()) Refuse({"no sentence is called \"", name, "\""});
    const auto kind = static_cast<SentenceKind>(row - kSentenceKinds.begin());
    if (std::any_of(sentences.begin(), sentences.end(),
                    [&](const SentenceRate& other) { return other.kind == kind; })) {
      Refuse({"the sentence \"", name, "\" is listed twice"});
    }
    sentences.push_back({kind, colon < item.size()
                                   ? NumberWithin(item.substr(colon + 1), kLowestRate, kHighestRate)
                                   : UsualRate(scenario, kind, rate)});
  }
  return sentences;
}

std::string HelpLine(std::string_view left, std::string_view right) {
  constexpr std::size_t kRightColumn = 24;
  std::string line = Joined({"  ", left});
  line.resize(kRightColumn, ' ');
  return Joined({line, right, "\n"});
}

// What stands behind the options in the help.
std::string Footer() {
  std::string text = Joined(
      {"With --tcp, --udp or --pty, as often as wanted, the simulation is live: it begins when "
       "somebody\nlistens and goes by the clock. HOST is ",
       kLoopback, " where none is named; lines end with CR LF.\n\nScenarios:\n"});
  for (const Scenario& scenario : Scenarios()) text += HelpLine(scenario.name, scenario.summary);
  text += "\nSentences:\n ";
  for (const SentenceKindRow& kind : kSentenceKinds) text += Joined({" ", kind.name});
  return text + "\nThe rate of VDM is a factor on the reporting intervals of the ships.";
}

[[noreturn]] void RefuseFile(std::string_view path, int error) {
  const std::string cause = std::generic_category().message(error == 0 ? EIO : error);
  Raise(FaultNumber::PathAccess, Joined({"cannot write \"", path, "\": ", cause}));
}

std::ofstream Open(const std::string& path) {
  errno = 0;
  std::ofstream file(PathOf(path), std::ios::binary);
  if (!file) RefuseFile(path, errno);
  return file;
}

void Check(std::ostream& stream, std::string_view path) {
  if (!stream) RefuseFile(path.empty() ? "standard output" : path, errno);
}

// What is kept of a simulation in files.
class Recording {
 public:
  // Null for `standardOutput`: sentences are kept only where a file is named.
  Recording(const SimulateCommand& command, const Simulator& simulator,
            std::ostream* standardOutput)
      : path_(command.output), truthPath_(command.truth), simulator_(simulator) {
    if (!path_.empty()) file_ = Open(path_);
    out_ = path_.empty() ? standardOutput : &file_;
    if (truthPath_.empty()) return;
    truthStream_ = Open(truthPath_);
    truth_.emplace(truthStream_, command.options, simulator.Truth());
  }

  void Add(const Epoch& epoch) {
    if (truth_ && epoch.fix) truth_->AddFix(*epoch.fix);
    if (out_ == nullptr) return;
    block_ += epoch.lines.Text();
    constexpr std::size_t kBlock = 1U << 18;
    if (block_.size() >= kBlock) Write();
  }

  void Finish() {
    if (truth_) truth_->Finish(simulator_.Truth());
    Write();
    errno = 0;
    if (out_ != nullptr) Check(out_->flush(), path_);
    if (truth_) Check(truthStream_.flush(), truthPath_);
  }

 private:
  void Write() {
    errno = 0;
    if (out_ != nullptr) {
      out_->write(block_.data(), static_cast<std::streamsize>(block_.size()));
      Check(*out_, path_);
    }
    if (truth_) Check(truthStream_, truthPath_);
    block_.clear();
  }

  std::string path_;
  std::string truthPath_;
  const Simulator& simulator_;
  std::ofstream file_;
  std::ostream* out_ = nullptr;
  std::ofstream truthStream_;
  std::optional<TruthFile> truth_;
  std::string block_;
};

std::unique_ptr<Outlet> MakeOutlet(const OutletChoice& choice, std::ostream& log) {
  switch (choice.kind) {
    case OutletKind::Tcp:
      return std::make_unique<TcpOutlet>(choice.endpoint, log);
    case OutletKind::Udp:
      return std::make_unique<UdpOutlet>(choice.endpoint);
    case OutletKind::Terminal:
      break;
  }
  return MakeTerminalOutlet(choice.linkPath, log);
}

void Serve(const SimulateCommand& command, const LiveServer::Source& source, std::ostream& out,
           std::ostream& err) {
  std::vector<std::unique_ptr<Outlet>> outlets;
  for (const OutletChoice& choice : command.outlets) outlets.push_back(MakeOutlet(choice, err));
  for (const auto& outlet : outlets) out << outlet->Where() << std::endl;
  LiveServer server(std::move(outlets), command.speed, source);
  while (server.Step(std::chrono::seconds(1))) {
  }
}

void Simulate(const SimulateCommand& command, std::ostream& out, std::ostream& err) {
  const bool live = !command.outlets.empty();
  Simulator simulator(command.options);
  Recording recording(command, simulator, live ? nullptr : &out);
  const auto source = [&](Epoch& epoch) {
    if (!simulator.NextEpoch(epoch)) return false;
    recording.Add(epoch);
    return true;
  };
  if (live) {
    Serve(command, source, out, err);
  } else {
    for (Epoch epoch; source(epoch);) {
    }
  }
  recording.Finish();
}

}  // namespace

std::optional<int> ReadSimulateCommand(const std::vector<std::string>& arguments,
                                       SimulateCommand& command, std::ostream& out,
                                       std::ostream& err) {
  CommandLine line(std::string(kProgram),
                   "Writes the NMEA 0183 sentences of a simulated vessel. The same options write "
                   "the same bytes.",
                   FATHOMLINE_SIMULATOR_VERSION);
  line.footer(Footer());
  SimulationOptions& options = command.options;
  options.start = DateFromParts(2026, 1, 2) + TimeFromParts(3, 4, 5);
  options.scenario = FindScenario("voyage");
  std::optional<double> rate;
  line.AddValue("--scenario", "NAME", "what to simulate (voyage)", [&](const std::string& text) {
    options.scenario = FindScenario(text);
    if (options.scenario == nullptr) Refuse({"no scenario is called \"", text, "\""});
  });
  line.AddValue("--seed", "N", "start of the random numbers (1)",
                [&](const std::string& text) { options.seed = SeedOf(text); });
  line.AddValue("--duration", "SECONDS", "simulated time, or \"forever\" (600)",
                [&](const std::string& text) {
                  options.duration = text == "forever" ? kLongestDuration
                                                       : NumberWithin(text, 0.0, kLongestDuration);
                });
  line.AddValue("--start", "TIME", "first moment, UTC (\"2026-01-02 03:04:05\")",
                [&](const std::string& text) { options.start = StartOf(text); });
  line.AddValue(
      "--rate", "HZ", "rate of the position, course and attitude sentences",
      [&](const std::string& text) { rate = NumberWithin(text, kLowestRate, kHighestRate); });
  // Behind what their usual rates depend on; options are taken in the order of this list.
  line.AddValue("--sentences", "LIST", "sentences, each with a rate if wanted: GGA,RMC:5,VDM",
                [&](const std::string& text) {
                  options.sentences = ReadSentences(text, *options.scenario, rate);
                });
  line.AddFlag("--crlf", "end lines with CR LF instead of LF", [&] { options.crLf = true; });
  line.AddValue("--output", "FILE", "write the sentences there instead of to standard output",
                [&](const std::string& text) { command.output = text; });
  line.AddValue("--truth", "FILE", "write what the sentences were made from there, as JSON",
                [&](const std::string& text) { command.truth = text; });
  const auto outlet = [&](const std::string& name, const std::string& argument,
                          const std::string& help, OutletKind kind) {
    line.AddValue(name, argument, help,
                  [&command, kind](const std::string& text) {
                    command.outlets.push_back(
                        {kind, kind == OutletKind::Terminal ? Endpoint{} : ParseEndpoint(text),
                         kind == OutletKind::Terminal ? text : std::string()});
                  })
        ->trigger_on_parse();
  };
  outlet("--tcp", "[HOST:]PORT", "serve TCP clients there", OutletKind::Tcp);
  outlet("--udp", "[HOST:]PORT", "send datagrams there, one per sentence", OutletKind::Udp);
  line.AddFlag("--pty", "serve on a pseudo-terminal, as on a serial port (not on Windows)",
               [&] {
                 command.outlets.push_back({OutletKind::Terminal, {}, {}});
               })
      ->trigger_on_parse();
  outlet("--pty-link", "PATH", "the same, with a symbolic link to it", OutletKind::Terminal);
  line.AddValue(
      "--speed", "FACTOR", "of a live simulation, or \"max\" (1)", [&](const std::string& text) {
        command.speed =
            text == "max" ? kUnlimitedSpeed : NumberWithin(text, kLowestSpeed, kHighestSpeed);
      });
  if (const auto status = line.Take(arguments, out, err)) return status;
  if (options.sentences.empty()) options.sentences = UsualSentences(*options.scenario, rate);
  // As the standard wants it on a link.
  if (!command.outlets.empty()) options.crLf = true;
  return std::nullopt;
}

int RunSimulateCommand(const std::vector<std::string>& arguments, std::ostream& out,
                       std::ostream& err) {
  SimulateCommand command;
  if (const auto status = ReadSimulateCommand(arguments, command, out, err)) return *status;
  try {
    Simulate(command, out, err);
    return 0;
  } catch (const Fault& fault) {
    err << kProgram << ": " << fault.Description() << '\n';
    return kUsageFailed;
  }
}

}  // namespace fathomline::simulator
