#include "trial/trial_figures.h"

#include <array>

namespace fathomline::trial {

std::string_view ToText(ReferenceKind kind) {
  constexpr auto kTexts = std::to_array<std::string_view>({"mean", "first", "given", "system"});
  return kTexts[static_cast<std::size_t>(kind)];
}

std::string_view ToText(HeightKind kind) {
  constexpr auto kTexts = std::to_array<std::string_view>({"none", "ellipsoid", "geoid"});
  return kTexts[static_cast<std::size_t>(kind)];
}

}  // namespace fathomline::trial
