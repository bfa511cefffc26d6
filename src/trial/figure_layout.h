// What the blocks of figures of a trial are made of.
//
// A leaf lists its figures once, in `Layout()`, with the key and the decimals that they are written
// with; JSON, CSV and the document walk it, so that all have the same numbers. A figure that is not
// there is an empty optional. A block without any says why, and then the rest of it means nothing.
//
// Metres, seconds, knots, degrees; degrees of latitude and longitude are north and east positive;
// shares are of 1; C/N0 is in dB-Hz.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "trial/moment.h"

namespace fathomline::trial {

using Count = std::int64_t;
using Value = std::optional<double>;
using At = std::optional<Moment>;

// Why a block has no figures.
namespace why {
inline constexpr std::string_view kTooFew = "too few";
inline constexpr std::string_view kNoneSent = "none sent";
inline constexpr std::string_view kNoFix = "no fix";
inline constexpr std::string_view kNoHeight = "no height";
inline constexpr std::string_view kNoReferenceHeight = "no reference height";
inline constexpr std::string_view kOtherHeights = "other heights";
inline constexpr std::string_view kNoOverlap = "no overlap";
inline constexpr std::string_view kNoMean = "no mean";
inline constexpr std::string_view kMoving = "moving";
}  // namespace why

// Decimals of a figure, by what it measures.
namespace decimals {
inline constexpr int kCount = 0;
inline constexpr int kLength = 4;  // metres, degrees and knots
inline constexpr int kPlace = 9;   // degrees of latitude and longitude
inline constexpr int kSeconds = 3;
inline constexpr int kShare = 6;
inline constexpr int kSignal = 2;     // dB-Hz
inline constexpr int kDirection = 2;  // of the error ellipse
inline constexpr int kMeanCount = 3;
inline constexpr int kAis = 2;  // metres
}  // namespace decimals

// One figure of a block. Its member is a Count, an optional Count, a double, a Value, an At, a text
// or a flag.
template <class Block, class Member>
struct Figure {
  std::string_view key;
  Member Block::*member;
  int decimals = 0;
};
template <class Block, class Member>
Figure(const char*, Member Block::*) -> Figure<Block, Member>;
template <class Block, class Member>
Figure(const char*, Member Block::*, int) -> Figure<Block, Member>;

// Steps longer than three intervals.
struct Gaps {
  std::string_view why;
  Count n = 0;
  Value longest;
  At longestAt;  // the last sample before it
  double sum = 0.0;

  static constexpr auto Layout() {
    using B = Gaps;
    return std::tuple{Figure{"n", &B::n}, Figure{"longest_s", &B::longest, decimals::kSeconds},
                      Figure{"longest_at", &B::longestAt},
                      Figure{"sum_s", &B::sum, decimals::kSeconds}};
  }
};

// The figure as it is written everywhere: "1.2000" with `decimals` digits, never "-0.0000".
std::string FigureText(double value, int decimals);
// The same rounding as a number.
double Rounded(double value, int decimals);

}  // namespace fathomline::trial
