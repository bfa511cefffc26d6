// What is set for the chart windows of each system. The tables outlive the windows.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "records/records.h"

namespace fathomline {

inline constexpr int kLastWindowIndex = 1200;
// The satellite of slot n has the window index 1000 + n.
inline constexpr int kFirstSatelliteWindowIndex = 1000;
inline constexpr int kSNRWindowIndex = 12;

// The bottom axis follows the points, runs with the time, stands on a block of the day, or is left
// to the user.
inline constexpr std::string_view kAxisAutomatic = "Automatic";
inline constexpr std::string_view kAxisScrolling = "Scrolling time";
inline constexpr std::string_view kAxisFixed = "Fixed time";
inline constexpr std::string_view kAxisManual = "Manual";
inline constexpr std::array kAxisModes = {kAxisAutomatic, kAxisScrolling, kAxisFixed, kAxisManual};

struct TimeSpan {
  std::string_view text;
  std::int32_t seconds;
};
inline constexpr auto kTimeSpans = std::to_array<TimeSpan>({{"10 min", 600},
                                                            {"15 min", 900},
                                                            {"30 min", 1800},
                                                            {"01 hour", 3600},
                                                            {"02 hours", 7200},
                                                            {"06 hours", 21600},
                                                            {"12 hours", 43200},
                                                            {"24 hours", 86400}});

// What stands for "Off": 65535 in a signed field of 16 bits.
inline constexpr auto kFilterOff = static_cast<std::int16_t>(std::uint16_t{65535});

struct FilterChoice {
  std::string_view text;
  std::int16_t count;  // samples per point; 0 follows from the points or the time span
};
inline constexpr auto kFilterChoices = std::to_array<FilterChoice>({{"Automatic", 0},
                                                                    {"Off", kFilterOff},
                                                                    {"2 fix", 2},
                                                                    {"5 fix", 5},
                                                                    {"10 fix", 10},
                                                                    {"30 fix", 30},
                                                                    {"60 fix", 60},
                                                                    {"100 fix", 100}});

struct ChartSettings {
  std::string TimeAxisMode;     // one of the texts above
  std::int32_t TimeWindow = 0;  // seconds
  bool AutoFilter = false;
  std::int16_t FilterCount = 0;  // samples per point; none are filtered with 0 and less
};

class ChartTables {
 public:
  // Window indices are 0 to kLastWindowIndex; raises OutOfRange beyond. The row stays in its place.
  ChartSettings& operator()(int system, int windowIndex);

 private:
  PerSystem<std::map<int, ChartSettings>> rows_;
};

// Samples per point from the number of points drawn so far, and from the time span in seconds.
std::int16_t FilterCountFromPoints(int points);
std::int16_t FilterCountFromWindow(std::int32_t seconds);

}  // namespace fathomline
