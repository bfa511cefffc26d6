#include "app/replay_options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

#include "base/fault.h"
#include "base/numbers.h"
#include "decoding/angles.h"

namespace fathomline {
namespace {

[[noreturn]] void Refuse(const std::string& why) {
  throw UsageError(why);
}

// The whole text must be one number.
double ParseNumber(const std::string& option, std::string_view text) {
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) {
    Refuse(option + ": \"" + std::string(text) + "\" is not a number");
  }
  return value;
}

int ParseInteger(const std::string& option, std::string_view text, int least, int most) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || value < least || value > most) {
    Refuse(option + ": \"" + std::string(text) + "\" is not a whole number from " +
           std::to_string(least) + " to " + std::to_string(most));
  }
  return value;
}

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t comma = text.find(',');
    parts.push_back(text.substr(0, comma));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

std::vector<SentenceType> ParseMessages(const std::string& option, const std::string& text) {
  std::vector<SentenceType> types;
  for (const std::string_view word : SplitAtCommas(text)) {
    const auto* const known =
        std::find_if(kAnalyseFlags.begin(), kAnalyseFlags.end(), [word](const AnalyseFlag& flag) {
          return word.size() == 3 && flag.type == SentenceTypeOf(word);
        });
    if (known == kAnalyseFlags.end()) {
      Refuse(option + ": \"" + std::string(word) + "\" is not a sentence that can be analysed");
    }
    types.push_back(known->type);
  }
  return types;
}

ReferenceSetup ParseReference(const std::string& option, const std::string& text) {
  const std::vector<std::string_view> parts = SplitAtCommas(text);
  if (parts.size() != 6) {
    Refuse(option + ": six numbers are wanted: LAT,LON,HGT,HDG,PITCH,ROLL");
  }
  const auto number = [&](std::size_t i) { return ParseNumber(option, parts[i]); };
  ReferenceSetup reference;
  reference.ReferenceLatitude = number(0);
  reference.ReferenceLongitude = number(1);
  reference.ReferenceHeight = ToSingle(number(2));
  reference.ReferenceHeading = ToSingle(number(3));
  reference.ReferencePitch = ToSingle(number(4));
  reference.ReferenceRoll = ToSingle(number(5));
  return reference;
}

// "yyyy-mm-dd hh:mm:ss"
DateTime ParseMoment(const std::string& option, const std::string& text) {
  constexpr std::string_view kForm = "dddd-dd-dd dd:dd:dd";
  const bool formed = text.size() == kForm.size() &&
                      std::equal(text.begin(), text.end(), kForm.begin(), [](char c, char form) {
                        return form == 'd' ? c >= '0' && c <= '9' : c == form;
                      });
  if (!formed) Refuse(option + ": a moment is written \"2026-01-02 03:04:05\"");
  const auto part = [&](std::size_t at, std::size_t size, int least, int most) {
    return ParseInteger(option, std::string_view(text).substr(at, size), least, most);
  };
  return DateFromParts(part(0, 4, 100, 9999), part(5, 2, 1, 12), part(8, 2, 1, 31)) +
         TimeFromParts(part(11, 2, 0, 23), part(14, 2, 0, 59), part(17, 2, 0, 59));
}

struct Option {
  std::string_view name;
  std::string_view argument;  // empty: none
  std::string_view help;
  void (*take)(ReplayOptions& options, const std::string& name, const std::string& argument);
};

using O = ReplayOptions;
using S = const std::string;

constexpr std::array<Option, 21> kOptions = {{
    {"--setup", "FILE.ini", "take the setup from a setup file",
     [](O& o, S&, S& text) { o.setup = text; }},
    {"--messages", "GGA,RMC,...", "analyse these sentences (without it and --setup: all)",
     [](O& o, S& name, S& text) { o.messages = ParseMessages(name, text); }},
    {"--name", "TEXT", "the name of the system", [](O& o, S&, S& text) { o.name = text; }},
    {"--checksum", "", "refuse sentences whose checksum is wrong",
     [](O& o, S&, S&) { o.checksum = true; }},
    {"--iala", "", "read AIS binary messages by the IALA proposal",
     [](O& o, S&, S&) { o.binaryStandardIALA = true; }},
    {"--reference-used", "N", "0 first sample, 1 average over time, 2 true position",
     [](O& o, S& name, S& text) {
       o.referenceUsed = static_cast<std::int16_t>(ParseInteger(name, text, 0, 2));
     }},
    {"--reference", "LAT,LON,HGT,HDG,PITCH,ROLL",
     "the true position and attitude: radians, metres, degrees",
     [](O& o, S& name, S& text) { o.reference = ParseReference(name, text); }},
    {"--outlier", "N", "limit of the attitude angles, in degrees (15)",
     [](O& o, S& name, S& text) { o.outlier = std::abs(ToSingle(ParseNumber(name, text))); }},
    {"--session-info", "TEXT", "the session text of the report",
     [](O& o, S&, S& text) { o.sessionInfo = text; }},
    {"--dms", "", "positions in degrees, minutes and seconds", [](O& o, S&, S&) { o.dms = true; }},
    {"--dm", "", "positions in degrees and minutes", [](O& o, S&, S&) { o.dms = false; }},
    {"--decimals", "N", "decimals of positions",
     [](O& o, S& name, S& text) {
       o.decimals = static_cast<std::int16_t>(ParseInteger(name, text, 0, 6));
     }},
    {"--now", "\"2026-01-02 03:04:05\"", "freeze the clock, for output that repeats",
     [](O& o, S& name, S& text) { o.now = ParseMoment(name, text); }},
    {"--program-folder", "DIR", "the folder of reports and error log (~/Keelhaven/Fathomline)",
     [](O& o, S&, S& text) { o.programFolder = text; }},
    {"--report", "", "write the session report and print its path",
     [](O& o, S&, S&) { o.report = true; }},
    {"--windows", "DIR", "write what the windows show, a file per window",
     [](O& o, S&, S& text) { o.windows = text; }},
    {"--counters", "FILE", "write counters and statistics as JSON",
     [](O& o, S&, S& text) { o.counters = text; }},
    {"--trace", "FILE", "write every line's decoded record as a line of JSON",
     [](O& o, S&, S& text) { o.trace = text; }},
    {"--time", "", "print lines, seconds, lines per second and peak memory",
     [](O& o, S&, S&) { o.time = true; }},
    {"--help", "", "show this", [](O& o, S&, S&) { o.help = true; }},
    {"--version", "", "show the version", [](O& o, S&, S&) { o.version = true; }},
}};

const Option& FindOption(const std::string& name) {
  const auto* const found = std::find_if(kOptions.begin(), kOptions.end(),
                                         [&](const Option& row) { return row.name == name; });
  if (found == kOptions.end()) Refuse("unknown option " + name);
  return *found;
}

}  // namespace

ReplayOptions ParseReplayOptions(const std::vector<std::string>& arguments) {
  ReplayOptions options;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (!optionsEnded && argument == "--") {
      optionsEnded = true;
      continue;
    }
    if (!optionsEnded && argument.size() > 1 && argument.front() == '-') {
      const std::size_t equals = argument.find('=');
      const std::string name = argument.substr(0, equals);
      const Option& option = FindOption(name);
      std::string value;
      if (option.argument.empty()) {
        if (equals != std::string::npos) Refuse(name + " takes no argument");
      } else if (equals != std::string::npos) {
        value = argument.substr(equals + 1);
      } else {
        if (i + 1 == arguments.size()) {
          Refuse(name + " needs an argument: " + std::string(option.argument));
        }
        value = arguments[++i];
      }
      try {
        option.take(options, name, value);
      } catch (const Fault& fault) {
        Refuse(name + ": " + fault.Description());
      }
      continue;
    }
    if (!options.recording.empty()) Refuse("more than one recording: " + argument);
    options.recording = argument;
  }
  if (options.help || options.version) return options;
  if (options.recording.empty()) Refuse("a recording is wanted; --help tells more");
  return options;
}

std::string ReplayHelp() {
  std::string text =
      "fathomline-replay RECORDING [options]\n"
      "\n"
      "Analyses a recording of NMEA 0183 sentences as the primary system, without a\n"
      "display. Message boxes go to standard error; questions are answered Yes. Without\n"
      "an option that writes something, the statistics are printed.\n"
      "\n";
  for (const Option& option : kOptions) {
    std::string left = "  " + std::string(option.name);
    if (!option.argument.empty()) left.append(" ").append(option.argument);
    constexpr std::size_t kColumn = 34;
    if (left.size() < kColumn) {
      left.append(kColumn - left.size(), ' ');
    } else {
      left.append("\n").append(kColumn, ' ');
    }
    text += left + std::string(option.help) + "\n";
  }
  return text;
}

}  // namespace fathomline
