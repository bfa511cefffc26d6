// Limits that the figures are to keep: "[NAME:]path op number".
//
// The path leads from a system in the JSON to a number, as in "horizontal.reference.r95_m<=1.5", or
// begins with "pairs."; an element of a list goes by its name or its quality, as in
// "by_quality.4.share>=0.9". Without a name each system has to keep it. A figure that is not there
// misses its limit.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "trial/trial_figures.h"

namespace fathomline::trial {

struct Limit {
  enum class Comparison { Less, LessOrEqual, Equal, GreaterOrEqual, Greater };

  std::string text;
  std::optional<std::string> system;
  std::vector<std::string> path;
  Comparison comparison{};
  double number = 0.0;

  bool IsOfPairs() const { return path.front() == "pairs"; }
};

// Raises std::invalid_argument, which says what is wrong with the text.
Limit ReadLimit(std::string_view text);

// The limits of a file: one on a line; "#" begins a comment. Raises like ReadLimit, with the line.
std::vector<Limit> ReadLimits(std::string_view content);

// Whether the number, rounded as the figures are, keeps the limit.
bool Keeps(const Limit& limit, double value);

// Sets the figures' limits, in order of their texts and of the systems, and whether all are kept.
void JudgeLimits(TrialFigures& figures, std::vector<Limit> limits);

}  // namespace fathomline::trial
