#include "app/trial_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

#include "base/command_line.h"
#include "base/fault.h"
#include "base/files.h"
#include "base/per_system.h"
#include "trial/strict_fields.h"
#include "version.h"

namespace fathomline {
namespace {

[[noreturn]] void Refuse(const std::string& why) {
  throw TrialUsageError(why);
}

// What is written on the command line, before it is understood.
struct Words {
  std::vector<std::string> recordings, streams, limits, limitFiles;
  std::string reference = "mean";
  std::optional<std::string> heading, pitch, roll, from, to, now;
};

void Declare(CLI::App& app, Words& words, TrialCommand& command) {
  app.add_option("RECORDING", words.recordings,
                 "one to four recordings, each a system (A to D, or NAME=RECORDING)")
      ->type_name("")
      ->required();
  const auto text = [&](const std::string& name, auto& variable, const char* kind,
                        const char* help) {
    return app.add_option(name, variable, help)->type_name(kind);
  };
  text("--reference", words.reference, "WHAT",
       "LAT,LON[,HGT] in degrees and metres above the ellipsoid, mean, first, or the name of a "
       "system, epoch by epoch (mean)");
  text("--heading", words.heading, "DEG", "the true heading, if it stands still (the mean)");
  text("--pitch", words.pitch, "DEG", "the true pitch (the mean)");
  text("--roll", words.roll, "DEG", "the true roll (the mean)");
  text("--stream", words.streams, "[NAME:]TALKERTYPE",
       "judge the positions of this talker and type, such as GPGGA")
      ->allow_extra_args(false);
  text("--from", words.from, "TIME", "from this time: ISO, or hh:mm:ss of the first day");
  text("--to", words.to, "TIME", "to before this time");
  app.add_flag("--unchecked", command.unchecked, "use lines without a checksum too");
  text("--limit", words.limits, "\"PATH<=NUMBER\"",
       "a limit that the figures are to keep; again and again")
      ->allow_extra_args(false);
  text("--limits", words.limitFiles, "FILE", "limits, one on a line")->allow_extra_args(false);
  text("--title", command.options.meta.title, "TEXT", "the title of the document");
  text("--note", command.options.meta.note, "TEXT", "a note at its beginning");
  text("--now", words.now, "TIME", "when it is written, in ISO; else it does not say");
  text("--html", command.html, "FILE", "write the document");
  text("--json", command.json, "FILE", "write every figure as JSON");
  text("--csv", command.csv, "DIR", "write figures and samples as CSV");
  app.add_flag("--quiet", command.quiet, "write no summary and no progress");
}

double Number(const char* option, std::string_view text) {
  const auto number = trial::ReadStrictNumber(text);
  if (!number) Refuse(std::string(option) + ": \"" + std::string(text) + "\" is not a number");
  return *number;
}

bool IsName(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
  });
}

void TakeRecordings(const std::vector<std::string>& words, TrialCommand& command) {
  if (words.size() > kSystems) Refuse("more than four recordings");
  for (const std::string& word : words) {
    TrialRecording recording{std::string(1, static_cast<char>('A' + command.recordings.size())),
                             word, std::nullopt};
    const std::size_t equals = word.find('=');
    if (equals != std::string::npos && IsName(word.substr(0, equals))) {
      recording.system = word.substr(0, equals);
      recording.path = word.substr(equals + 1);
    }
    if (recording.path.empty()) Refuse("a recording has no file name: " + word);
    for (const TrialRecording& other : command.recordings) {
      if (other.system == recording.system) Refuse("two systems are named " + other.system);
    }
    command.recordings.push_back(recording);
  }
}

TrialRecording& SystemNamed(const char* option, const std::string& name, TrialCommand& command) {
  for (TrialRecording& recording : command.recordings) {
    if (recording.system == name) return recording;
  }
  Refuse(std::string(option) + ": no system is named " + name);
}

void TakeStreams(const std::vector<std::string>& words, TrialCommand& command) {
  for (const std::string& word : words) {
    const std::size_t colon = word.find(':');
    const std::string stream = colon == std::string::npos ? word : word.substr(colon + 1);
    if (stream.size() != 5 || !IsName(stream)) {
      Refuse("--stream: \"" + stream + "\" is no talker and type, such as GPGGA");
    }
    if (colon != std::string::npos) {
      SystemNamed("--stream", word.substr(0, colon), command).stream = stream;
      continue;
    }
    for (TrialRecording& recording : command.recordings) recording.stream = stream;
  }
}

void TakeReference(const std::string& word, TrialCommand& command) {
  trial::TrialOptions& options = command.options;
  if (word == "mean" || word == "first") {
    options.reference = word == "mean" ? trial::ReferenceKind::Mean : trial::ReferenceKind::First;
    return;
  }
  const std::size_t comma = word.find(',');
  if (comma == std::string::npos) {
    options.reference = trial::ReferenceKind::System;
    options.referenceSystem = SystemNamed("--reference", word, command).system;
    return;
  }
  options.reference = trial::ReferenceKind::Given;
  const std::string_view rest = std::string_view(word).substr(comma + 1);
  const std::size_t second = rest.find(',');
  options.given.latitude = Number("--reference", std::string_view(word).substr(0, comma));
  options.given.longitude = Number("--reference", rest.substr(0, second));
  options.given.height = second == std::string_view::npos
                             ? std::numeric_limits<double>::quiet_NaN()
                             : Number("--reference", rest.substr(second + 1));
  if (std::abs(options.given.latitude) > 90.0 || std::abs(options.given.longitude) > 180.0) {
    Refuse("--reference: " + word + " is no place on earth");
  }
}

std::optional<trial::TimeBound> Bound(const char* option, const std::optional<std::string>& word) {
  if (!word) return std::nullopt;
  const auto bound = trial::ReadTimeBound(*word);
  if (!bound) {
    Refuse(std::string(option) + ": \"" + *word +
           "\" is no time, such as 2026-01-02T03:04:05 or 03:04:05");
  }
  return bound;
}

std::optional<std::string> WrittenAt(const std::optional<std::string>& word) {
  if (!word) return std::nullopt;
  std::string iso = *word;
  // As the other programs take it.
  if (iso.size() > 10 && iso[10] == ' ') iso[10] = 'T';
  const auto moment = trial::ReadTimeBound(iso);
  if (!moment || moment->of != trial::TimeBound::Of::Date) {
    Refuse("--now: \"" + *word + "\" is no moment, such as 2026-01-02T03:04:05");
  }
  return ToText(trial::Moment{moment->milliseconds, true});
}

void TakeLimits(const Words& words, TrialCommand& command) {
  const auto take = [&](trial::Limit limit) {
    if (limit.system) SystemNamed("--limit", *limit.system, command);
    command.limits.push_back(std::move(limit));
  };
  for (const std::string& word : words.limits) {
    try {
      take(trial::ReadLimit(word));
    } catch (const std::invalid_argument& refused) {
      Refuse(refused.what());
    }
  }
  for (const std::string& path : words.limitFiles) {
    try {
      for (trial::Limit& limit : trial::ReadLimits(ReadWholeFile(path))) take(std::move(limit));
    } catch (const std::invalid_argument& refused) {
      Refuse(path + ": " + refused.what());
    } catch (const Fault& fault) {
      Refuse(fault.Description());
    }
  }
}

}  // namespace

TrialCommand ParseTrialCommand(const std::vector<std::string>& arguments) {
  CommandLine app("fathomline-trial", "What recordings of NMEA 0183 say of their sensors.",
                  kVersion);
  Words words;
  TrialCommand command;
  Declare(app, words, command);
  try {
    // The parser takes them from the back.
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::CallForHelp&) {
    command.shown = app.help();
    return command;
  } catch (const CLI::CallForVersion& version) {
    command.shown = std::string(version.what()) + "\n";
    return command;
  } catch (const CLI::ParseError& error) {
    Refuse(error.what());
  }
  TakeRecordings(words.recordings, command);
  TakeStreams(words.streams, command);
  TakeReference(words.reference, command);
  trial::TrialOptions& options = command.options;
  const auto angle = [](const char* option, const std::optional<std::string>& word) {
    return word ? trial::Value(Number(option, *word)) : trial::Value();
  };
  options.heading = angle("--heading", words.heading);
  options.pitch = angle("--pitch", words.pitch);
  options.roll = angle("--roll", words.roll);
  options.from = Bound("--from", words.from);
  options.to = Bound("--to", words.to);
  options.meta.version = kVersion;
  options.meta.unchecked = command.unchecked;
  options.meta.writtenAt = WrittenAt(words.now);
  TakeLimits(words, command);
  return command;
}

std::string TrialHelp() {
  return *ParseTrialCommand({"--help"}).shown;
}

}  // namespace fathomline
