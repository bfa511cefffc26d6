// Writing NMEA 0183 sentences, and the moments that stand in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/datetime.h"

namespace fathomline::simulator {

// Simulated time since the start, in nanoseconds: whole numbers, so that no rate drifts.
using SimulatedTime = std::int64_t;
inline constexpr SimulatedTime kOneSecond = 1'000'000'000;
inline constexpr double ToSeconds(SimulatedTime time) {
  return static_cast<double>(time) * 1e-9;
}

// A moment of UTC, cut off to hundredths of a second.
struct UtcMoment {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int hundredths = 0;
};

class UtcCalendar {
 public:
  // Takes the whole seconds of `start`.
  explicit UtcCalendar(DateTime start);

  UtcMoment At(SimulatedTime time);
  // Seconds since day 0 of DateTime.
  std::int64_t StartSecond() const { return startSecond_; }

 private:
  std::int64_t startSecond_;
  std::int64_t day_ = -1;
  CalendarTime date_;
};

// The lines of one moment, one behind the other.
class LineBatch {
 public:
  std::size_t Count() const { return ends_.size(); }
  // Without its line ending.
  std::string_view Line(std::size_t index) const;
  // All of it as it goes into a file or onto a link.
  const std::string& Text() const { return text_; }
  void Clear();

 private:
  friend class SentenceWriter;
  std::string text_;
  std::vector<std::size_t> ends_;
};

// Builds sentences field by field. Where a number is written the call returns the number that a
// reader will read, rounded half away from zero to the given decimals.
class SentenceWriter {
 public:
  SentenceWriter(LineBatch& batch, bool crLf) : batch_(batch), crLf_(crLf) {}

  // "$GPGGA", "!AIVDM".
  void Begin(std::string_view address);
  void End();

  SentenceWriter& Text(std::string_view field);
  SentenceWriter& Letter(char field) { return Text({&field, 1}); }
  SentenceWriter& Empty(int fields = 1);
  // At least `width` digits in front of the point.
  double Number(double value, int decimals, int width = 1);
  void Integer(std::int64_t value, int width = 1) { Number(static_cast<double>(value), 0, width); }
  // An angle from 0 to below 360; one that would round to 360 is written as 0.
  double Angle(double degrees, int decimals, int width = 1);
  // Both the number and the hemisphere: ddmm.mmm,N and dddmm.mmm,E. Returns degrees.
  double Latitude(double degrees, int minuteDecimals);
  double Longitude(double degrees, int minuteDecimals);
  void TimeOfDay(const UtcMoment& moment);  // hhmmss.ss
  void ShortDate(const UtcMoment& moment);  // ddmmyy

 private:
  double Coordinate(double degrees, int minuteDecimals, int degreeWidth, char positive,
                    char negative);
  void Digits(std::uint64_t value, int width);

  LineBatch& batch_;
  bool crLf_;
  std::size_t start_ = 0;
};

}  // namespace fathomline::simulator
