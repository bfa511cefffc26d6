#include "trial/trial_figures.h"

#include <array>

namespace fathomline::trial {

std::string_view ToText(ReferenceKind kind) {
  constexpr std::array<std::string_view, 4> kTexts = {"mean", "first", "given", "system"};
  return kTexts[static_cast<std::size_t>(kind)];
}

std::string_view ToText(HeightKind kind) {
  constexpr std::array<std::string_view, 3> kTexts = {"none", "ellipsoid", "geoid"};
  return kTexts[static_cast<std::size_t>(kind)];
}

}  // namespace fathomline::trial
