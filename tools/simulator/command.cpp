#include "simulator/command.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <memory>
#include <optional>
#include <system_error>

#include "base/fault.h"
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

template <class Number>
Number Read(std::string_view option, std::string_view text, Number lowest, Number highest) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() ||
      !(value >= lowest && value <= highest)) {
    Refuse({"\"", text, "\" is no valid value for ", option});
  }
  return value;
}

// "2026-01-02 03:04:05"
DateTime ReadStart(std::string_view option, std::string_view text) {
  constexpr std::string_view kPattern = "####-##-## ##:##:##";
  const auto part = [&](std::size_t from, std::size_t length, int lowest, int highest) {
    return Read(option, text.substr(from, length), lowest, highest);
  };
  bool fits = text.size() == kPattern.size();
  for (std::size_t i = 0; fits && i < text.size(); ++i) {
    fits = kPattern[i] == '#' ? text[i] >= '0' && text[i] <= '9' : text[i] == kPattern[i];
  }
  if (!fits) Refuse({"\"", text, "\" is no date and time like \"2026-01-02 03:04:05\""});
  // The date of RMC has two digits for the year.
  const int year = part(0, 4, 2000, 2099);
  const int month = part(5, 2, 1, 12);
  const int day = part(8, 2, 1, 31);
  const DateTime date = DateFromParts(year, month, day);
  if (ToCalendar(date).month != month) Refuse({"\"", text, "\" is no date of the calendar"});
  return date + TimeFromParts(part(11, 2, 0, 23), part(14, 2, 0, 59), part(17, 2, 0, 59));
}

// What the arguments say, before the scenario's own settings fill the gaps.
struct Settings {
  std::string scenario = "voyage";
  std::optional<double> rate;
  std::optional<std::string> sentences;
  SimulateCommand command;
};

struct OptionRow {
  std::string_view name;
  std::string_view argument;  // empty where it has none
  std::string_view help;
  void (*apply)(Settings& settings, std::string_view option, std::string_view value);
};

constexpr OptionRow kOptions[] = {
    {"--scenario", "NAME", "what to simulate (voyage)",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.scenario = value;
     }},
    {"--seed", "N", "start of the random numbers (1)",
     [](Settings& settings, std::string_view option, std::string_view value) {
       settings.command.options.seed =
           Read<std::uint64_t>(option, value, 0, std::numeric_limits<std::uint64_t>::max());
     }},
    {"--duration", "SECONDS", "simulated time, or \"forever\" (600)",
     [](Settings& settings, std::string_view option, std::string_view value) {
       settings.command.options.duration =
           value == "forever" ? kLongestDuration : Read(option, value, 0.0, kLongestDuration);
     }},
    {"--start", "TIME", "first moment, UTC (\"2026-01-02 03:04:05\")",
     [](Settings& settings, std::string_view option, std::string_view value) {
       settings.command.options.start = ReadStart(option, value);
     }},
    {"--rate", "HZ", "rate of the position, course and attitude sentences",
     [](Settings& settings, std::string_view option, std::string_view value) {
       settings.rate = Read(option, value, kLowestRate, kHighestRate);
     }},
    {"--sentences", "LIST", "sentences, each with a rate if wanted: GGA,RMC:5,VDM",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.sentences = value;
     }},
    {"--crlf", "", "end lines with CR LF instead of LF",
     [](Settings& settings, std::string_view, std::string_view) {
       settings.command.options.crLf = true;
     }},
    {"--output", "FILE", "write the sentences there instead of to standard output",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.command.output = value;
     }},
    {"--truth", "FILE", "write what the sentences were made from there, as JSON",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.command.truth = value;
     }},
    {"--tcp", "[HOST:]PORT", "serve TCP clients there",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.command.outlets.push_back({OutletKind::Tcp, ParseEndpoint(value), {}});
     }},
    {"--udp", "[HOST:]PORT", "send datagrams there, one per sentence",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.command.outlets.push_back({OutletKind::Udp, ParseEndpoint(value), {}});
     }},
    {"--pty", "", "serve on a pseudo-terminal, as on a serial port (not on Windows)",
     [](Settings& settings, std::string_view, std::string_view) {
       settings.command.outlets.push_back({OutletKind::Terminal, {}, {}});
     }},
    {"--pty-link", "PATH", "the same, with a symbolic link to it",
     [](Settings& settings, std::string_view, std::string_view value) {
       settings.command.outlets.push_back({OutletKind::Terminal, {}, std::string(value)});
     }},
    {"--speed", "FACTOR", "of a live simulation, or \"max\" (1)",
     [](Settings& settings, std::string_view option, std::string_view value) {
       settings.command.speed =
           value == "max" ? kUnlimitedSpeed : Read(option, value, kLowestSpeed, kHighestSpeed);
     }},
    {"--help", "", "show this text",
     [](Settings& settings, std::string_view, std::string_view) { settings.command.help = true; }},
    {"--version", "", "show the version",
     [](Settings& settings, std::string_view, std::string_view) {
       settings.command.version = true;
     }},
};

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
    sentences.push_back({kind, colon < item.size() ? Read("--sentences", item.substr(colon + 1),
                                                          kLowestRate, kHighestRate)
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

void WriteHelp(std::ostream& out) {
  out << "Usage: " << kProgram << " [OPTION]...\n"
      << "Writes the NMEA 0183 sentences of a simulated vessel. The same options write the same "
         "bytes.\n\n";
  for (const OptionRow& row : kOptions) {
    out << HelpLine(Joined({row.name, " ", row.argument}), row.help);
  }
  out << "\nWith --tcp, --udp or --pty, as often as wanted, the simulation is live: it begins when "
         "somebody\nlistens and goes by the clock. HOST is "
      << kLoopback << " where none is named; lines end with CR LF.\n";
  out << "\nScenarios:\n";
  for (const Scenario& scenario : Scenarios()) {
    out << HelpLine(scenario.name, scenario.summary);
  }
  out << "\nSentences:\n ";
  for (const SentenceKindRow& kind : kSentenceKinds) out << ' ' << kind.name;
  out << "\nThe rate of VDM is a factor on the reporting intervals of the ships.\n";
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

SimulateCommand ParseSimulateCommand(std::span<const std::string_view> arguments) {
  Settings settings;
  settings.command.options.start = DateFromParts(2026, 1, 2) + TimeFromParts(3, 4, 5);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view option = arguments[i];
    const auto row = std::find_if(std::begin(kOptions), std::end(kOptions),
                                  [&](const OptionRow& known) { return known.name == option; });
    if (row == std::end(kOptions)) Refuse({"unknown option \"", option, "\""});
    std::string_view value;
    if (!row->argument.empty()) {
      if (++i == arguments.size()) Refuse({"the option ", option, " needs a value"});
      value = arguments[i];
    }
    row->apply(settings, option, value);
  }
  SimulationOptions& options = settings.command.options;
  options.scenario = FindScenario(settings.scenario);
  if (options.scenario == nullptr) Refuse({"no scenario is called \"", settings.scenario, "\""});
  options.sentences = settings.sentences
                          ? ReadSentences(*settings.sentences, *options.scenario, settings.rate)
                          : UsualSentences(*options.scenario, settings.rate);
  // As the standard wants it on a link.
  if (!settings.command.outlets.empty()) options.crLf = true;
  return settings.command;
}

int RunSimulateCommand(std::span<const std::string_view> arguments, std::ostream& out,
                       std::ostream& err) {
  try {
    const SimulateCommand command = ParseSimulateCommand(arguments);
    if (command.help) {
      WriteHelp(out);
    } else if (command.version) {
      out << kProgram << " " FATHOMLINE_SIMULATOR_VERSION "\n";
    } else {
      Simulate(command, out, err);
    }
    return 0;
  } catch (const Fault& fault) {
    err << kProgram << ": " << fault.Description() << '\n';
    return 2;
  }
}

}  // namespace fathomline::simulator
