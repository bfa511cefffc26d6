// How the values of an AIS station read in the windows: the cells that their tables are made of.
#pragma once

#include <string>
#include <string_view>

#include "ais/target_store.h"
#include "decoding/coordinate_text.h"
#include "records/records.h"

namespace fathomline {

// A station as a window sees it, with its place in the table and the user's settings.
struct TargetView {
  const AISTarget& target;
  int index;
  const Records& records;
};

using TargetCell = std::string (*)(const TargetView& view);

template <auto Member>
std::string TargetText(const TargetView& view) {
  return view.target.*Member;
}

// The general number-to-text conversion, "n/a" for NoValue.
template <auto Member>
std::string TargetValue(const TargetView& view) {
  return ValueText(view.target.*Member);
}

template <auto Member>
std::string TargetCount(const TargetView& view) {
  return PlainText(view.target.*Member);
}

inline std::string TargetPosition(const Records& records, double degrees, std::string_view type) {
  if (degrees == NoValue) return std::string(kNotAvailable);
  return FormatCoordinate(records.CoordinateFormatIsDMS, records.CoordinateDecimals, degrees, type);
}
inline std::string TargetLatitude(const TargetView& view) {
  return TargetPosition(view.records, view.target.Latitude, "LAT");
}
inline std::string TargetLongitude(const TargetView& view) {
  return TargetPosition(view.records, view.target.Longitude, "LON");
}

// The time of a message.
template <auto Member>
std::string TargetTime(const TargetView& view) {
  return FormatDateTime(view.target.*Member, "dd mmm hh:mm:ss");
}

}  // namespace fathomline
