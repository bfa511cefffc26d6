#include "simulator/command.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <initializer_list>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/fault.h"
#include "simulator/truth_file.h"

namespace fathomline::simulator {
namespace {

constexpr std::string_view kProgram = "fathomline-simulate";
constexpr double kLongestDuration = 1e9;  // seconds

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
    {"--duration", "SECONDS", "simulated time (600)",
     [](Settings& settings, std::string_view option, std::string_view value) {
       settings.command.options.duration = Read(option, value, 0.0, kLongestDuration);
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
  std::ofstream file(path, std::ios::binary);
  if (!file) RefuseFile(path, errno);
  return file;
}

void Check(std::ostream& stream, std::string_view path) {
  if (!stream) RefuseFile(path.empty() ? "standard output" : path, errno);
}

void Simulate(const SimulateCommand& command, std::ostream& standardOutput) {
  std::ofstream file;
  if (!command.output.empty()) file = Open(command.output);
  std::ostream& out = command.output.empty() ? standardOutput : file;
  std::ofstream truthStream;
  std::optional<TruthFile> truthFile;
  Simulator simulator(command.options);
  if (!command.truth.empty()) {
    truthStream = Open(command.truth);
    truthFile.emplace(truthStream, command.options, simulator.Truth());
  }

  constexpr std::size_t kBlock = 1U << 18;
  std::string block;
  const auto flush = [&] {
    errno = 0;
    out.write(block.data(), static_cast<std::streamsize>(block.size()));
    Check(out, command.output);
    if (truthFile) Check(truthStream, command.truth);
    block.clear();
  };
  Epoch epoch;
  while (simulator.NextEpoch(epoch)) {
    block += epoch.lines.Text();
    if (truthFile && epoch.fix) truthFile->AddFix(*epoch.fix);
    if (block.size() >= kBlock) flush();
  }
  if (truthFile) truthFile->Finish(simulator.Truth());
  flush();
  errno = 0;
  Check(out.flush(), command.output);
  if (truthFile) Check(truthStream.flush(), command.truth);
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
      Simulate(command, out);
    }
    return 0;
  } catch (const Fault& fault) {
    err << kProgram << ": " << fault.Description() << '\n';
    return 2;
  }
}

}  // namespace fathomline::simulator
