// Simulated sessions for tests, and the little that is needed to read them back without the
// program's own decoders.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/command.h"
#include "simulator/simulator.h"

namespace fathomline::simulator {

inline SimulationOptions OptionsOf(std::string_view scenario, double duration,
                                   const std::vector<SentenceRate>& sentences = {}) {
  SimulationOptions options;
  options.scenario = FindScenario(scenario);
  options.duration = duration;
  options.start = DateFromParts(2026, 3, 4) + TimeFromParts(5, 6, 7);
  options.sentences = sentences.empty() ? UsualSentences(*options.scenario, {}) : sentences;
  return options;
}

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

// The command that arguments without a fault stand for.
inline SimulateCommand CommandOf(const std::vector<std::string_view>& arguments) {
  SimulateCommand command;
  std::ostringstream out, err;
  EXPECT_FALSE(ReadSimulateCommand({arguments.begin(), arguments.end()}, command, out, err))
      << err.str();
  return command;
}

inline Outcome Simulate(const std::vector<std::string_view>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = RunSimulateCommand({arguments.begin(), arguments.end()}, out, err);
  return {status, out.str(), err.str()};
}

template <class Visit>
void ForEachEpoch(Simulator& simulator, Visit&& visit) {
  Epoch epoch;
  while (simulator.NextEpoch(epoch)) visit(epoch);
}

inline std::string Recording(const SimulationOptions& options) {
  std::string text;
  Simulator simulator(options);
  ForEachEpoch(simulator, [&](const Epoch& epoch) { text += epoch.lines.Text(); });
  return text;
}

inline std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

// The fields in front of the "*"; field 0 is the address.
inline std::vector<std::string> Fields(std::string_view line) {
  return Split(line.substr(0, line.find('*')), ',');
}

inline std::string KindOf(std::string_view line) {
  return line.substr(0, 5) == "$PFEC" ? "ATT" : std::string(line.substr(3, 3));
}

// A whole field as a number, whatever the locale.
inline double Number(const std::string& text) {
  double value = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

// The bits of armoured payload characters as a text of "0" and "1".
inline std::string PayloadBits(std::string_view characters) {
  std::string bits;
  for (const char character : characters) {
    const int value = character < 'X' ? character - 48 : character - 56;
    for (int bit = 5; bit >= 0; --bit) bits += (value >> bit & 1) != 0 ? '1' : '0';
  }
  return bits;
}

// Bits `first` to `last`, counted from 1 as the standard's tables do.
inline std::int64_t Unsigned(const std::string& bits, std::size_t first, std::size_t last) {
  return std::stoll(bits.substr(first - 1, last - first + 1), nullptr, 2);
}

inline std::int64_t Signed(const std::string& bits, std::size_t first, std::size_t last) {
  const std::int64_t value = Unsigned(bits, first, last);
  const std::int64_t range = std::int64_t{1} << (last - first + 1);
  return value >= range / 2 ? value - range : value;
}

// Of a position report, in degrees.
inline double Angle(const std::string& bits, std::size_t first, std::size_t last) {
  return static_cast<double>(Signed(bits, first, last)) / 600'000.0;
}

}  // namespace fathomline::simulator
