// What the setup dialog accepts and what excludes what, without the dialog.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "decoding/sentence_type.h"
#include "records/records.h"

namespace fathomline {

// The sentence types that can be ticked, in the order of their boxes. It is the order in which they
// are written to MessagesToAnalyse as well.
inline constexpr auto kSentenceBoxes =
    std::apply([](const auto&... sentence) { return std::array{sentence.kType...}; }, kSentences);

// Which of the boxes are ticked, in the order of kSentenceBoxes.
class SentenceSelection {
 public:
  bool operator[](SentenceType type) const { return ticked_[Index(type)]; }
  // Raises OutOfRange for a type that has no box.
  void Set(SentenceType type, bool ticked) { ticked_[Index(type)] = ticked; }
  std::vector<SentenceType> Ticked() const;

 private:
  static std::size_t Index(SentenceType type);

  std::array<bool, kSentenceBoxes.size()> ticked_{};
};

// A box that is cleared where another one has just been ticked.
struct Exclusion {
  SentenceType ticked;
  SentenceType cleared;
  std::string_view group;    // "GGA/GNS/GLL/RMC"
  std::string_view content;  // what the group has in common: "position data"

  // What the user is told.
  std::string Message() const;
};

// The exclusions that a box just ticked brings, in the order in which they take place.
std::vector<Exclusion> ExclusionsOf(SentenceType ticked, const SentenceSelection& selection);

// A dotted address of at most 15 characters: four parts of digits from 0 to 255, the first not
// below 1, the last not 0.
bool IsIPAddress(std::string_view text);

// The port, 1 to 65535; none for any other text. Outer blanks do not matter.
std::optional<std::int32_t> PortNumber(std::string_view text);

// Keeps the ten latest addresses: one that is new goes to the end and drops the oldest where there
// is no room.
void ReArrange_IP_List(Records& records, std::string_view address);

// The words of SystemType and the captions of its buttons, in the order of the buttons.
struct SystemTypeWord {
  std::string_view caption;
  std::string_view word;
};
inline constexpr auto kSystemTypes = std::to_array<SystemTypeWord>({{"GNSS", "GPS/GLONASS"},
                                                                    {"Loran C", "Loran C"},
                                                                    {"Gyro", "Gyro"},
                                                                    {"Speed Log", "Speed Log"},
                                                                    {"Echosounder", "Echosounder"},
                                                                    {"ARPA radar", "ARPA Radar"},
                                                                    {"AIS", "AIS"},
                                                                    {"other", "other"}});

// The button of a word of SystemType; the first where the word is none of them.
int SystemTypeButton(std::string_view word);

// The buttons of the reference stand in another order than the numbers that are stored.
struct ReferenceOption {
  std::string_view caption;
  std::int16_t used;
};
inline constexpr auto kReferenceOptions =
    std::to_array<ReferenceOption>({{"Position/heading vs. first sample", kFirstSample},
                                    {"Position/heading vs. true", kTruePosition},
                                    {"Position/heading vs. average over time", kAverageOverTime}});
inline constexpr int kTrueButton = 1;

// The button of a stored ReferenceUsed; the first for a number that is none of the three.
int ReferenceButton(std::int16_t used);

}  // namespace fathomline
