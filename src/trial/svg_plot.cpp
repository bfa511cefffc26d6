#include "trial/svg_plot.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <utility>

#include "trial/trial_figures.h"

namespace fathomline::trial {
namespace {

constexpr double kSecond = 1000.0;
constexpr double kMinute = 60.0 * kSecond;
constexpr double kHour = 60.0 * kMinute;
constexpr double kDay = 24.0 * kHour;
constexpr auto kClockSteps = std::to_array<double>(
    {100.0,          200.0,          500.0,          kSecond,    2.0 * kSecond, 5.0 * kSecond,
     10.0 * kSecond, 15.0 * kSecond, 30.0 * kSecond, kMinute,    2.0 * kMinute, 5.0 * kMinute,
     10.0 * kMinute, 15.0 * kMinute, 30.0 * kMinute, kHour,      2.0 * kHour,   3.0 * kHour,
     6.0 * kHour,    12.0 * kHour,   kDay,           2.0 * kDay, 5.0 * kDay,    10.0 * kDay,
     20.0 * kDay,    50.0 * kDay,    100.0 * kDay});

// The least of 1, 2, 5 times a power of ten that is no smaller than `least`.
double NiceStep(double least) {
  const double power = std::pow(10.0, std::floor(std::log10(least)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= least * (1.0 - 1e-9)) return factor * power;
  }
  return 10.0 * power;
}

// No more of them than a picture can have.
std::vector<double> Multiples(double low, double high, double step) {
  constexpr int kMost = 200;
  const double slack = step * 1e-6;
  const double first = std::ceil((low - slack) / step);
  std::vector<double> values;
  for (int i = 0; i < kMost && (first + i) * step <= high + slack; ++i) {
    values.push_back((first + i) * step);
  }
  return values;
}

void AppendTwoDigits(std::string& text, int number) {
  text += static_cast<char>('0' + number / 10);
  text += static_cast<char>('0' + number % 10);
}

std::string DayText(double milliseconds, bool dated) {
  const int days = static_cast<int>(std::floor(milliseconds / kDay));
  if (!dated) return "day +" + std::to_string(days);
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{days}}};
  constexpr auto kMonths = std::to_array<const char*>(
      {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"});
  return std::to_string(static_cast<unsigned>(date.day())) + " " +
         kMonths[static_cast<unsigned>(date.month()) - 1];
}

std::string ClockText(double milliseconds, double step, bool dated) {
  const double ofDay = milliseconds - std::floor(milliseconds / kDay) * kDay;
  if (ofDay == 0.0 && step >= kMinute) return DayText(milliseconds, dated);
  std::string text;
  AppendTwoDigits(text, static_cast<int>(ofDay / kHour));
  text += ':';
  AppendTwoDigits(text, static_cast<int>(std::fmod(ofDay, kHour) / kMinute));
  if (step >= kMinute) return text;
  text += ':';
  AppendTwoDigits(text, static_cast<int>(std::fmod(ofDay, kMinute) / kSecond));
  if (step >= kSecond) return text;
  text += '.';
  text += static_cast<char>('0' + static_cast<int>(std::fmod(ofDay, kSecond) / 100.0));
  return text;
}

double Tenths(double length) {
  return std::round(length * 10.0) / 10.0;
}

}  // namespace

void AppendLength(std::string& text, double length) {
  const auto tenths = static_cast<long long>(std::llround(length * 10.0));
  const long long size = std::llabs(tenths);
  std::array<char, 24> buffer{};
  if (tenths < 0) text += '-';
  text.append(buffer.data(),
              std::to_chars(buffer.data(), buffer.data() + buffer.size(), size / 10).ptr);
  if (size % 10 != 0) {
    text += '.';
    text += static_cast<char>('0' + size % 10);
  }
}

void AppendPlace(std::string& path, char command, double x, double y) {
  path += command;
  AppendLength(path, x);
  path += ' ';
  AppendLength(path, y);
}

PlotScale::PlotScale(double low, double high, double from, double to)
    : low_(low), high_(high), from_(from), to_(to) {
  if (!(low_ < high_)) {
    low_ -= 1.0;
    high_ = low_ + 2.0;
  }
  slope_ = (to_ - from_) / (high_ - low_);
}

std::vector<PlotTick> NumberTicks(const PlotScale& scale, double apart) {
  const double span = scale.High() - scale.Low();
  double step = NiceStep(span * apart / scale.Pixels());
  std::vector<double> values = Multiples(scale.Low(), scale.High(), step);
  for (int finer = 0; finer < 3 && values.size() < 2; ++finer) {
    step = NiceStep(step * 0.3);
    values = Multiples(scale.Low(), scale.High(), step);
  }
  const int decimals = std::clamp(-static_cast<int>(std::floor(std::log10(step) + 1e-9)), 0, 9);
  std::vector<PlotTick> ticks(values.size());
  std::transform(values.begin(), values.end(), ticks.begin(), [decimals](double value) {
    return PlotTick{value, FigureText(value, decimals)};
  });
  return ticks;
}

std::vector<PlotTick> TimeTicks(const PlotScale& scale, bool dated, double apart) {
  const double least = (scale.High() - scale.Low()) * apart / scale.Pixels();
  const auto* found = std::find_if(kClockSteps.begin(), kClockSteps.end(),
                                   [least](double step) { return step >= least; });
  const double step = found == kClockSteps.end() ? kDay * NiceStep(least / kDay) : *found;
  std::vector<PlotTick> ticks;
  for (const double value : Multiples(scale.Low(), scale.High(), step)) {
    ticks.push_back({value, ClockText(value, step, dated)});
  }
  return ticks;
}

PlotRange RoomyRange(double low, double high, double least) {
  const double room = std::max((high - low) * 0.04, (least - (high - low)) / 2.0);
  return {low - room, high + room};
}

void PlotColumns::Add(double x, double y) {
  const auto at = static_cast<std::int32_t>(std::floor(x_.At(x)));
  ++samples_;
  least_ = std::min(least_, y);
  greatest_ = std::max(greatest_, y);
  if (columns_.empty() || columns_.back().at != at || broken_) {
    columns_.push_back({at, broken_, true, y, y, y, y});
    broken_ = false;
    return;
  }
  Column& column = columns_.back();
  column.last = y;
  if (y < column.least) {
    column.least = y;
    column.leastFirst = false;
  } else if (y > column.greatest) {
    column.greatest = y;
    column.leastFirst = true;
  }
}

std::string PlotColumns::Line(const PlotScale& y) const {
  std::string path;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const Column& column = columns_[i];
    AppendPlace(path, column.begins ? 'M' : 'L', column.at, y.At(column.first));
    double previous = column.first;
    const auto up = [&](double value) {
      if (value == previous) return;
      path += 'V';
      AppendLength(path, y.At(value));
      previous = value;
    };
    up(column.leastFirst ? column.least : column.greatest);
    up(column.leastFirst ? column.greatest : column.least);
    up(column.last);
    const bool ends = i + 1 == columns_.size() || columns_[i + 1].begins;
    if (column.begins && ends && column.least == column.greatest) path += "h0";
  }
  return path;
}

PlotBand::PlotBand(const PlotScale& x, int width)
    : x_(x), width_(width), columns_(static_cast<std::size_t>(x.Pixels() / width) + 1) {}

void PlotBand::Add(double from, double to, double y) {
  const double last = static_cast<double>(columns_.size()) - 1.0;
  const auto at = [&](double x) {
    return static_cast<std::size_t>(
        std::clamp(std::floor((x_.At(x) - x_.From()) / width_), 0.0, last));
  };
  for (std::size_t i = at(from), end = at(to); i <= end; ++i) {
    Column& column = columns_[i];
    column.least = std::min(column.least, y);
    column.greatest = std::max(column.greatest, y);
  }
}

std::string PlotBand::Area(const PlotScale& y, double thick) const {
  std::string path;
  const auto edge = [&](std::size_t column, bool upper) {
    const double top = y.At(columns_[column].greatest);
    const double bottom = y.At(columns_[column].least);
    const double more = std::max(0.0, (thick - (bottom - top)) / 2.0);
    return std::round((upper ? top - more : bottom + more) * 10.0);
  };
  // Along columns of one height in one go, then up or down, by differences, which are short.
  double at = 0.0;
  int run = 0;
  const auto walk = [&](double tenths, int along) {
    if (tenths != at) {
      if (run != 0) path += 'h';
      if (run != 0) AppendLength(path, run);
      path += 'v';
      AppendLength(path, (tenths - at) / 10.0);
      at = tenths;
      run = 0;
    }
    run += along;
  };
  const auto halt = [&] {
    path += 'h';
    AppendLength(path, run);
    run = 0;
  };
  for (std::size_t begin = 0; begin < columns_.size(); ++begin) {
    if (!columns_[begin].Any()) continue;
    at = edge(begin, true);
    AppendPlace(path, 'M', x_.From() + static_cast<double>(begin) * width_, at / 10.0);
    std::size_t end = begin;
    for (; end < columns_.size() && columns_[end].Any(); ++end) walk(edge(end, true), width_);
    halt();
    for (std::size_t i = end; i-- > begin;) walk(edge(i, false), -width_);
    halt();
    path += 'z';
    begin = end;
  }
  return path;
}

void PlotStretches::Add(double begin, double end) {
  const auto first = static_cast<std::int32_t>(std::floor(x_.At(begin)));
  const auto behind = static_cast<std::int32_t>(std::floor(x_.At(end))) + 1;
  if (!stretches_.empty() && first <= stretches_.back().end) {
    stretches_.back().end = std::max(stretches_.back().end, behind);
  } else {
    stretches_.push_back({first, behind});
  }
}

std::string PlotStretches::Boxes(double y, double height) const {
  std::string path;
  for (const Stretch& stretch : stretches_) {
    AppendPlace(path, 'M', stretch.begin, y);
    path += 'h';
    AppendLength(path, stretch.end - stretch.begin);
    path += 'v';
    AppendLength(path, height);
    path += 'H';
    AppendLength(path, stretch.begin);
    path += 'z';
  }
  return path;
}

PlotDots::PlotDots(const PlotScale& x, const PlotScale& y)
    : x_(x),
      y_(y),
      side_(static_cast<int>(x.Pixels()) + 1),
      counts_(static_cast<std::size_t>(side_) * static_cast<std::size_t>(side_)) {}

void PlotDots::Add(double x, double y) {
  const double limit = side_ - 1;
  const double right = x_.At(x) - x_.From();
  const double down = y_.At(y) - y_.To();
  if (std::isnan(right) || std::isnan(down)) return;
  if (right < 0.0 || right > limit || down < 0.0 || down > limit) ++beyond_;
  const auto column = static_cast<std::size_t>(std::clamp(std::round(right), 0.0, limit));
  const auto row = static_cast<std::size_t>(std::clamp(std::round(down), 0.0, limit));
  std::uint32_t& count = counts_[row * static_cast<std::size_t>(side_) + column];
  if (count++ == 0) ++filled_;
}

double PlotDots::Width() const {
  if (filled_ <= kFew / 10) return 4.0;
  return filled_ <= kFew ? 2.5 : 2.0;
}

// Counts of cells of so many units.
std::vector<std::uint32_t> PlotDots::Cells(int size) const {
  const auto side = static_cast<std::size_t>(side_);
  const auto cells = (side + static_cast<std::size_t>(size) - 1) / static_cast<std::size_t>(size);
  std::vector<std::uint32_t> sums(cells * cells);
  for (std::size_t row = 0; row < side; ++row) {
    for (std::size_t column = 0; column < side; ++column) {
      sums[row / static_cast<std::size_t>(size) * cells +
           column / static_cast<std::size_t>(size)] += counts_[row * side + column];
    }
  }
  return sums;
}

std::vector<std::string> PlotDots::Levels() const {
  const int size = filled_ <= kFew ? 1 : 2;
  const std::vector<std::uint32_t> cells = Cells(size);
  const int across = (side_ + size - 1) / size;
  const std::uint32_t most = *std::max_element(cells.begin(), cells.end());
  // Each level takes in a like part of the powers of two up to the densest cell.
  const double powers = std::log2(std::max(most, 2U));
  const auto level = [powers](std::uint32_t count) {
    return std::min(kLevels - 1, static_cast<int>(std::log2(count) / powers * kLevels));
  };
  std::vector<std::string> paths(kLevels);
  for (int row = 0; row < across; ++row) {
    for (int column = 0; column < across;) {
      const auto at = [&](int c) { return cells[static_cast<std::size_t>(row * across + c)]; };
      if (at(column) == 0) {
        ++column;
        continue;
      }
      const int here = level(at(column));
      int end = column + 1;
      if (size > 1) {
        while (end < across && at(end) != 0 && level(at(end)) == here) ++end;
      }
      std::string& path = paths[static_cast<std::size_t>(here)];
      const int middle = size * row + size / 2;
      AppendPlace(path, 'M', x_.From() + size * column, y_.To() + middle);
      path += 'h';
      AppendLength(path, size > 1 ? size * (end - column) : 0);
      column = end;
    }
  }
  return paths;
}

void PlotWay::Add(double x, double y) {
  if (!begun_) {
    begun_ = true;
    corner_ = {Tenths(x), Tenths(y)};
    AppendPlace(path_, 'M', corner_.x, corner_.y);
    path_ += "h0";
  } else if (!GoesOn({x, y})) {
    KeepCorner();
    GoesOn({x, y});
  }
}

void PlotWay::Break() {
  KeepCorner();
  begun_ = false;
}

std::string PlotWay::Path() && {
  KeepCorner();
  return std::move(path_);
}

// In the middle of the directions, as far as the places went.
void PlotWay::KeepCorner() {
  if (aimed_) {
    const double direction = aim_ + (left_ + right_) / 2.0;
    // Differences of what is written do not add up to an error.
    const Place next{Tenths(corner_.x + farthest_ * std::cos(direction)),
                     Tenths(corner_.y + farthest_ * std::sin(direction))};
    AppendPlace(path_, 'l', next.x - corner_.x, next.y - corner_.y);
    corner_ = next;
  }
  aimed_ = false;
  farthest_ = 0.0;
}

// Whether one straight line from the corner passes this place and all in between, and none of them
// lies beyond it.
bool PlotWay::GoesOn(const Place& place) {
  const double right = place.x - corner_.x;
  const double down = place.y - corner_.y;
  const double length = std::hypot(right, down);
  if (length < farthest_ - within_) return false;
  if (length > within_) {
    const double direction = std::atan2(down, right);
    const double half = std::asin(within_ / length);
    if (!aimed_) {
      aimed_ = true;
      aim_ = direction;
      left_ = -half;
      right_ = half;
    }
    const double aside = std::remainder(direction - aim_, 2.0 * std::numbers::pi);
    if (aside - half > right_ || aside + half < left_) return false;
    left_ = std::max(left_, aside - half);
    right_ = std::min(right_, aside + half);
  }
  farthest_ = std::max(farthest_, length);
  return true;
}

PlotShares::PlotShares(const PlotScale& x)
    : x_(x), counts_(static_cast<std::size_t>(x.Pixels()) + 1) {}

void PlotShares::Add(double value) {
  ++all_;
  const double at = std::ceil(x_.At(value) - x_.From());
  if (at < static_cast<double>(counts_.size())) {
    ++counts_[static_cast<std::size_t>(std::max(at, 0.0))];
  }
}

std::string PlotShares::Line(const PlotScale& y) const {
  std::string path;
  std::int64_t sum = 0;
  std::int64_t told = -1;
  for (std::size_t i = 0; i < counts_.size() && all_ > 0; ++i) {
    sum += counts_[i];
    const bool last = i + 1 == counts_.size();
    if (sum == told && !last) continue;
    const double x = x_.From() + static_cast<double>(i);
    const double height = y.At(static_cast<double>(sum) / static_cast<double>(all_));
    if (path.empty()) {
      AppendPlace(path, 'M', x, height);
    } else {
      path += 'H';
      AppendLength(path, x);
      if (sum != told) {
        path += 'V';
        AppendLength(path, height);
      }
    }
    told = sum;
  }
  return path;
}

}  // namespace fathomline::trial
