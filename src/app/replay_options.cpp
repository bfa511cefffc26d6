#include "app/replay_options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "base/command_line.h"
#include "base/fault.h"
#include "base/numbers.h"
#include "session/start_up.h"
#include "version.h"

namespace fathomline {
namespace {

constexpr const char* kDescription =
    "Analyses a recording of NMEA 0183 sentences as the primary system, without a\n"
    "display. Message boxes go to standard error; questions are answered Yes. Without\n"
    "an option that writes something, the statistics are printed.";

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t comma = text.find(',');
    parts.push_back(text.substr(0, comma));
    if (comma == std::string_view::npos) return parts;
    text.remove_prefix(comma + 1);
  }
}

std::vector<SentenceType> SentencesOf(std::string_view text) {
  std::vector<SentenceType> types;
  for (const std::string_view word : SplitAtCommas(text)) {
    const auto* const known =
        std::find_if(kAnalyseFlags.begin(), kAnalyseFlags.end(), [word](const AnalyseFlag& flag) {
          return word.size() == 3 && flag.type == SentenceTypeOf(word);
        });
    if (known == kAnalyseFlags.end()) {
      Raise(FaultNumber::InvalidCall,
            "\"" + std::string(word) + "\" is not a sentence that can be analysed");
    }
    types.push_back(known->type);
  }
  return types;
}

ReferenceSetup ReferenceOf(std::string_view text) {
  const std::vector<std::string_view> parts = SplitAtCommas(text);
  std::array<double, 6> numbers{};
  if (parts.size() != numbers.size()) {
    Raise(FaultNumber::InvalidCall, "six numbers are wanted: LAT,LON,HGT,HDG,PITCH,ROLL");
  }
  std::transform(parts.begin(), parts.end(), numbers.begin(), NumberOf);
  ReferenceSetup reference;
  reference.ReferenceLatitude = numbers[0];
  reference.ReferenceLongitude = numbers[1];
  reference.ReferenceHeight = ToSingle(numbers[2]);
  reference.ReferenceHeading = ToSingle(numbers[3]);
  reference.ReferencePitch = ToSingle(numbers[4]);
  reference.ReferenceRoll = ToSingle(numbers[5]);
  return reference;
}

}  // namespace

std::optional<int> ReadReplayOptions(const std::vector<std::string>& arguments, ReplayOptions& o,
                                     std::ostream& out, std::ostream& err) {
  CommandLine line("fathomline-replay", kDescription, kVersion);
  const auto text = [&line](const char* name, const char* argument,
                            std::optional<std::string>& value, const std::string& help) {
    line.AddValue(name, argument, help, [&value](const std::string& given) { value = given; });
  };
  const auto whole = [&line](const char* name, std::optional<std::int16_t>& value, int most,
                             const char* help) {
    line.AddValue(name, "N", help, [&value, most](const std::string& given) {
      value = static_cast<std::int16_t>(WholeNumberOf(given, 0, most));
    });
  };
  line.add_option("RECORDING", o.recording, "the recording, which may be a pipe")
      ->type_name("")
      ->required();
  text("--setup", "FILE.ini", o.setup, "take the setup from a setup file");
  line.AddValue("--messages", "GGA,RMC,...",
                "analyse these sentences (without it and --setup: all)",
                [&](const std::string& given) { o.messages = SentencesOf(given); });
  text("--name", "TEXT", o.name, "the name of the system");
  line.AddFlag("--checksum", "refuse sentences whose checksum is wrong",
               [&o] { o.checksum = true; });
  line.AddFlag("--iala", "read AIS binary messages by the IALA proposal",
               [&o] { o.binaryStandardIALA = true; });
  whole("--reference-used", o.referenceUsed, kTruePosition,
        "0 first sample, 1 average over time, 2 true position");
  line.AddValue("--reference", "LAT,LON,HGT,HDG,PITCH,ROLL",
                "the true position and attitude: radians, metres, degrees",
                [&](const std::string& given) { o.reference = ReferenceOf(given); });
  line.AddValue("--outlier", "N", "limit of the attitude angles, in degrees (15)",
                [&](const std::string& given) { o.outlier = std::abs(ToSingle(NumberOf(given))); });
  text("--session-info", "TEXT", o.sessionInfo, "the session text of the report");
  CLI::Option* const dms =
      line.AddFlag("--dms", "positions in degrees, minutes and seconds", [&o] { o.dms = true; });
  line.AddFlag("--dm", "positions in degrees and minutes", [&o] { o.dms = false; })->excludes(dms);
  whole("--decimals", o.decimals, 6, "decimals of positions");
  line.AddValue("--now", "MOMENT",
                "freeze the clock at \"2026-01-02 03:04:05\", for output that repeats",
                [&](const std::string& given) { o.now = MomentOf(given); });
  text("--program-folder", "DIR", o.programFolder,
       "the folder of reports and error log (" + DefaultProgramFolder() + ")");
  line.AddFlag("--report", "write the session report and print its path",
               [&o] { o.report = true; });
  text("--windows", "DIR", o.windows, "write what the windows show, a file per window");
  text("--counters", "FILE", o.counters, "write counters and statistics as JSON");
  text("--trace", "FILE", o.trace, "write every line's decoded record as a line of JSON");
  line.AddFlag("--time", "print lines, seconds, lines per second and peak memory",
               [&o] { o.time = true; });
  return line.Take(arguments, out, err);
}

}  // namespace fathomline
