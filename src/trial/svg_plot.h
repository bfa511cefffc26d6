// What pictures in a document are drawn from: scales, ticks, and samples by the million brought
// down to as many places as a picture has, never by skipping. Lengths are user units of SVG.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace fathomline::trial {

// A length with at most one decimal, "-0" as "0".
void AppendLength(std::string& text, double length);
// A command of a path and its place: "M12.3 4".
void AppendPlace(std::string& path, char command, double x, double y);

// From values to lengths, straight. Top down for an axis that goes up: from > to.
class PlotScale {
 public:
  // low and high may be equal; the scale is then widened by one to either side.
  PlotScale(double low, double high, double from, double to);

  double Low() const { return low_; }
  double High() const { return high_; }
  double From() const { return from_; }
  double To() const { return to_; }
  double At(double value) const { return from_ + (value - low_) * slope_; }
  double Pixels() const { return std::abs(to_ - from_); }

 private:
  double low_;
  double high_;
  double from_;
  double to_;
  double slope_;
};

struct PlotTick {
  double at = 0.0;
  std::string label;
};

// Steps of 1, 2 or 5 times a power of ten, at least `apart` units from each other, but at least two
// of them, all within the scale. Labels have the decimals of the step.
std::vector<PlotTick> NumberTicks(const PlotScale& scale, double apart = 40.0);

// Whole steps of a clock. Values are milliseconds from 1970; dated: midnight is told as a date,
// else as a count of days from day 0.
std::vector<PlotTick> TimeTicks(const PlotScale& scale, bool dated, double apart = 64.0);

// A range that takes in low to high with a little room to either side, of at least `least`.
struct PlotRange {
  double low = 0.0;
  double high = 0.0;
};
PlotRange RoomyRange(double low, double high, double least);

// The samples of one line, of which each column of one unit keeps the first, the least, the
// greatest and the last: no peak is lost, however long the line. Samples come in the order of their
// x.
class PlotColumns {
 public:
  explicit PlotColumns(const PlotScale& x) : x_(x) {}

  void Add(double x, double y);
  // The next sample begins a stroke of its own.
  void Break() { broken_ = true; }

  bool Empty() const { return columns_.empty(); }
  // Whether there are more samples than a line can show one by one.
  bool Dense() const { return samples_ > 3 * columns_.size(); }
  // More than the greatest while there is no sample.
  double Least() const { return least_; }
  double Greatest() const { return greatest_; }
  // One stroke after the other; a lone sample is a stroke of no length, a dot under round caps.
  std::string Line(const PlotScale& y) const;

 private:
  struct Column {
    std::int32_t at = 0;
    bool begins = false;
    bool leastFirst = true;
    double first = 0.0;
    double least = 0.0;
    double greatest = 0.0;
    double last = 0.0;
  };

  PlotScale x_;
  bool broken_ = true;
  std::size_t samples_ = 0;
  double least_ = std::numeric_limits<double>::infinity();
  double greatest_ = -std::numeric_limits<double>::infinity();
  std::vector<Column> columns_;
};

// The area between the least and the greatest of each column, of samples in any order. Columns are
// `width` units wide; a column without a sample is a gap.
class PlotBand {
 public:
  PlotBand(const PlotScale& x, int width);

  // A value that holds from one x to another.
  void Add(double from, double to, double y);
  // At least `thick` units high.
  std::string Area(const PlotScale& y, double thick) const;

 private:
  struct Column {
    double least = std::numeric_limits<double>::infinity();
    double greatest = -std::numeric_limits<double>::infinity();

    bool Any() const { return least <= greatest; }
  };

  PlotScale x_;
  int width_;
  std::vector<Column> columns_;
};

// Where something was along an axis, as stretches of whole units. Samples or stretches come in the
// order of their beginning; what is shorter than a unit has one.
class PlotStretches {
 public:
  explicit PlotStretches(const PlotScale& x) : x_(x) {}

  void Add(double begin, double end);
  struct Stretch {
    std::int32_t begin = 0;
    std::int32_t end = 0;  // the first unit behind it
  };
  const std::vector<Stretch>& All() const { return stretches_; }
  // Boxes from y downwards.
  std::string Boxes(double y, double height) const;

 private:
  PlotScale x_;
  std::vector<Stretch> stretches_;
};

// Dots in a square, counted by cells of one unit for few or two units for many, so that each dot is
// seen and the densest place is told from a single one.
class PlotDots {
 public:
  static constexpr int kLevels = 4;

  // Both scales of the same length; dots beyond stand on the rim and are counted.
  PlotDots(const PlotScale& x, const PlotScale& y);

  // NaN is no place.
  void Add(double x, double y);
  std::int64_t Beyond() const { return beyond_; }
  // Paths of strokes, thin to dense; the width of the stroke is told by Width().
  std::vector<std::string> Levels() const;
  double Width() const;

 private:
  static constexpr std::size_t kFew = 3000;

  std::vector<std::uint32_t> Cells(int size) const;

  PlotScale x_;
  PlotScale y_;
  int side_;
  std::int64_t beyond_ = 0;
  std::size_t filled_ = 0;
  std::vector<std::uint32_t> counts_;
};

// A way over a plane as a line of few corners that passes each of its places within so many units.
// Every place is looked at once, by the sectors of J. Sklansky and V. Gonzalez, "Fast polygonal
// approximation of digitized curves" (1980), but that a corner need not be one of the places.
class PlotWay {
 public:
  explicit PlotWay(double within) : within_(within) {}

  void Add(double x, double y);
  // The next place begins a stroke of its own.
  void Break();
  // To be asked for once. A lone place is a stroke of no length, a dot under round caps.
  std::string Path() &&;

 private:
  struct Place {
    double x = 0.0;
    double y = 0.0;
  };

  void KeepCorner();
  bool GoesOn(const Place& place);

  double within_;
  std::string path_;
  bool begun_ = false;
  Place corner_;  // the last that was kept
  // Directions from it that pass all places since, as radians from that of the first of them.
  bool aimed_ = false;
  double aim_ = 0.0;
  double left_ = 0.0;
  double right_ = 0.0;
  double farthest_ = 0.0;
};

// How the shares of values grow from 0 to 1, exact at each unit of the scale.
class PlotShares {
 public:
  explicit PlotShares(const PlotScale& x);

  void Add(double value);
  std::string Line(const PlotScale& y) const;

 private:
  PlotScale x_;
  std::int64_t all_ = 0;
  std::vector<std::int64_t> counts_;
};

}  // namespace fathomline::trial
