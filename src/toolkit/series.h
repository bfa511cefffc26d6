// The points of one series of a chart.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "base/fault.h"

namespace fathomline {

enum class SeriesKind : std::uint8_t { Line, Bar, Gantt, Points };

// A point that has this colour is drawn in the colour of its series.
inline constexpr Colour kSeriesColour = 0x20000000;

struct AxisRange {
  double low = 0.0;
  double high = 1.0;

  bool operator==(const AxisRange&) const = default;
};

struct SeriesDesign {
  std::string title;
  SeriesKind kind = SeriesKind::Line;
  Colour colour = kBlack;
  bool rightAxis = false;
  std::string unit = {};  // of the values, as it is read out behind them
  bool whole = false;     // the values have no decimals
  int satellite = -1;     // the slot of the satellite whose line it is, or none
  bool steps = false;     // bars drawn as a quiet line of steps, since others are to be seen
  bool digits = false;    // a run of equal bars says its value

  bool operator==(const SeriesDesign&) const = default;
};

// Sixteen bytes a point, and eight more for the end of a Gantt bar. Points stand in the order in
// which they were added, 0 is the oldest. An index that is not there raises OutOfRange.
class Series {
 public:
  struct Point {
    double x = 0.0;
    double end = 0.0;  // of a Gantt bar, else x
    float y = 0.0F;    // 0 of a null point
    bool null = false;
    Colour colour = kSeriesColour;
  };

  // `changes` is counted up with every change.
  Series(std::uint64_t& changes, SeriesDesign design);

  const std::string& Title() const { return design_.title; }
  SeriesKind Kind() const { return design_.kind; }
  Colour ShownColour() const { return design_.colour; }
  bool RightAxis() const { return design_.rightAxis; }
  const SeriesDesign& Design() const { return design_; }
  void SetDesign(const SeriesDesign& design);
  void SetTitle(std::string_view title);
  void SetColour(Colour colour);
  // The user has put the curve out of sight. Its points stay, and go on.
  bool Hidden() const { return hidden_; }
  void SetHidden(bool hidden);

  // x: days for a time axis.
  void Add(double x, float y, Colour colour = kSeriesColour) { Append(x, x, y, colour); }
  // Breaks the line. It counts as a point and takes no part in the extremes of y.
  void AddNull(double x);
  void AddGantt(double start, double end, float y) { Append(start, end, y, kSeriesColour); }
  void DeleteOldest();
  void Delete(int index);
  // Takes away what lies wholly beyond a span of x. Quick where that is nothing, or only the
  // oldest.
  void KeepWithin(const AxisRange& x);
  void Clear();

  int Count() const { return count_; }
  Point At(int index) const;
  double FirstX() const { return At(0).x; }
  double LastX() const { return At(count_ - 1).x; }
  // Some hundred neighbouring points, with what holds for all of them: who draws a day of points
  // takes those as a whole that fall onto one column of pixels.
  struct Stretch {
    int begin = 0;
    int end = 0;                 // one beyond the last
    AxisRange x;                 // covers the ends of Gantt bars
    std::optional<AxisRange> y;  // none where all points are null
    bool uniform = false;        // no null point, and one colour
  };
  int StretchCount() const { return static_cast<int>(blocks_.size() - first_ / kBlockSize); }
  Stretch StretchAt(int index) const;

  // None while there is no such value. x covers the ends of Gantt bars.
  std::optional<AxisRange> RangeX() const;
  std::optional<AxisRange> RangeY() const;

 private:
  // The extremes of values that come and go. Taking away one of the two extremes makes them
  // unknown until somebody counts again.
  struct Extremes {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    bool known = true;

    void Include(double value) {
      low = std::min(low, value);
      high = std::max(high, value);
    }
    void Exclude(double value) {
      if (value <= low || value >= high) known = false;
    }
    void Include(const Extremes& other) {
      low = std::min(low, other.low);
      high = std::max(high, other.high);
    }
    std::optional<AxisRange> Range() const;
  };

  struct Stored {
    double x;
    float y;
    Colour colour;
  };

  // Points lie in blocks with extremes of their own, so that a day of points need not be walked
  // through when an extreme one ages out. A vector of blocks, since most series of a window of
  // satellites stay empty and are to cost next to nothing.
  struct Block {
    std::vector<Stored> points;
    std::vector<double> ends;  // of a Gantt series only
    Extremes x;
    Extremes y;
    bool uniform = true;
  };

  static constexpr std::size_t kBlockSize = 128;
  static constexpr Colour kNullPoint = kSeriesColour + 1;

  void Append(double x, double end, float y, Colour colour);
  std::size_t Position(int index) const {
    if (index < 0 || index >= count_) Raise(FaultNumber::OutOfRange);
    return first_ + static_cast<std::size_t>(index);
  }
  void Forget(Block& block, std::size_t at);
  static void CountX(Block& block, std::size_t from);
  static void CountY(Block& block, std::size_t from);
  template <void (*Count)(Block&, std::size_t)>
  void Recount(Extremes Block::*axis, Extremes& all) const;

  std::uint64_t& changes_;
  SeriesDesign design_;
  bool hidden_ = false;
  mutable std::vector<Block> blocks_;
  mutable Extremes x_;
  mutable Extremes y_;
  std::size_t first_ = 0;  // position of the oldest point; emptied blocks may stand before it
  int count_ = 0;
};

inline Series::Point Series::At(int index) const {
  const std::size_t position = Position(index);
  const Block& block = blocks_[position / kBlockSize];
  const std::size_t at = position % kBlockSize;
  const Stored& stored = block.points[at];
  const bool null = stored.colour == kNullPoint;
  return {stored.x, at < block.ends.size() ? block.ends[at] : stored.x, stored.y, null,
          null ? kSeriesColour : stored.colour};
}

}  // namespace fathomline
