// Colours by their names, for what a person reads through.
#pragma once

#include <string>
#include <utility>

#include "base/colour.h"
#include "base/look.h"
#include "base/numbers.h"

namespace fathomline {

inline std::string ColourName(Colour colour) {
  constexpr std::pair<Colour, const char*> kNames[] = {
      {kBlack, "black"},
      {kRed, "red"},
      {kGreen, "green"},
      {kYellow, "yellow"},
      {kBlue, "blue"},
      {kMagenta, "magenta"},
      {kCyan, "cyan"},
      {kWhite, "white"},
      {kDarkGreen, "dark green"},
      {kDarkYellow, "dark yellow"},
      {kDarkRed, "dark red"},
      {kOrange, "orange"},
      {kTeal, "teal"},
      {kNavy, "navy"},
      {look::kInk, "ink"},
      {look::kMutedInk, "muted"},
      {look::kGridLines, "grid"},
      {look::kFrameLines, "frame"},
      {look::kSkyRings, "rings"},
      {look::kAlive, "alive"},
      {look::kLate, "late"},
      {look::kDead, "dead"},
      {look::kDeviationBand, "deviation band"},
  };
  for (const auto& [value, name] : kNames) {
    if (value == colour) return name;
  }
  const std::string place = PlainText(colour & look_families::kPlace);
  switch (colour & look_families::kFamily) {
    case look_families::kSeries:
      return "series " + place;
    case look_families::kSatellites:
      return "satellite " + place;
    default:
      return "colour " + place;
  }
}

}  // namespace fathomline
