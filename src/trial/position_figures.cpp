#include "trial/position_figures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace fathomline::trial {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t kLeastForEllipse = 20;

// -2 ln 0.05: the square of the radius, in deviations, that 95% of a normal distribution in the
// plane lie within.
const double kEllipseScale = -2.0 * std::log(0.05);

double RootMeanSquare(double squares, std::size_t n) {
  return std::sqrt(squares / static_cast<double>(n));
}

}  // namespace

Frame::Frame(const Place& origin)
    : height_(origin.height),
      frame_(origin.latitude, origin.longitude, std::isnan(origin.height) ? 0.0 : origin.height) {}

LocalPosition Frame::Locate(const Place& place) const {
  const double height = std::isnan(place.height) ? frame_.HeightOrigin() : place.height;
  LocalPosition position{};
  double plane{};
  frame_.Forward(place.latitude, place.longitude, height, position.east, position.north, plane);
  position.up = place.height - height_;
  return position;
}

void PositionErrors::Add(std::int64_t time, const LocalPosition& position, std::uint32_t place) {
  times.push_back(time);
  north.push_back(position.north);
  east.push_back(position.east);
  up.push_back(position.up);
  places.push_back(place);
}

std::optional<PlaceReference> FirstFix(const PositionSeries& series) {
  std::optional<std::size_t> first;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (!series.IsFixAt(i)) continue;
    if (!first || series.ArrivalOf(i) < series.ArrivalOf(*first)) first = i;
  }
  if (!first) return std::nullopt;
  const Place place = series.PlaceOf(*first);
  return PlaceReference{place, std::isnan(place.height) ? HeightKind::None : series.Heights()};
}

std::optional<PlaceReference> MeanFix(const PositionSeries& series) {
  std::optional<Place> first;
  double latitudes = 0.0;
  double longitudes = 0.0;
  std::vector<double> heights;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (!series.IsFixAt(i)) continue;
    const Place place = series.PlaceOf(i);
    if (!first) first = place;
    latitudes += place.latitude - first->latitude;
    longitudes += Wrapped(place.longitude - first->longitude);
    if (!std::isnan(place.height)) heights.push_back(place.height);
  }
  if (!first) return std::nullopt;
  const auto n = static_cast<double>(series.Fixes());
  Place mean{first->latitude + latitudes / n, Wrapped(first->longitude + longitudes / n), kNone};
  if (!heights.empty()) mean.height = SpreadOf(heights).mean;
  return PlaceReference{mean, heights.empty() ? HeightKind::None : series.Heights()};
}

PositionErrors ErrorsAbout(const PlaceReference& reference, const PositionSeries& series) {
  const Frame frame(reference.place);
  PositionErrors errors;
  if (series.Heights() == HeightKind::None) {
    errors.whyNoUp = why::kNoHeight;
  } else if (reference.heights == HeightKind::None) {
    errors.whyNoUp = why::kNoReferenceHeight;
  } else if (reference.heights != series.Heights()) {
    errors.whyNoUp = why::kOtherHeights;
  }
  const bool otherHeights = errors.whyNoUp == why::kOtherHeights;
  errors.upIsHeight = !errors.whyNoUp.empty();
  for (std::size_t i = 0; i < series.size(); ++i) {
    Place place = series.PlaceOf(i);
    if (std::isnan(place.latitude)) continue;
    const double height = place.height;
    if (otherHeights) place.height = kNone;
    LocalPosition position = frame.Locate(place);
    if (errors.upIsHeight) position.up = height;
    errors.Add(series.TimeOf(i), position, static_cast<std::uint32_t>(i));
  }
  return errors;
}

namespace {

template <class Wanted>
PositionErrors Only(const PositionErrors& errors, Wanted&& wanted) {
  PositionErrors only;
  only.whyNoUp = errors.whyNoUp;
  only.upIsHeight = errors.upIsHeight;
  for (std::size_t i = 0; i < errors.times.size(); ++i) {
    if (!wanted(errors.places[i])) continue;
    only.Add(errors.times[i], {errors.north[i], errors.east[i], errors.up[i]}, errors.places[i]);
  }
  return only;
}

}  // namespace

PositionErrors OfQuality(const PositionErrors& errors, const PositionSeries& series, int quality) {
  return Only(errors, [&](std::uint32_t place) { return series.QualityOf(place) == quality; });
}

PositionErrors OfFixes(const PositionErrors& errors, const PositionSeries& series) {
  return Only(errors, [&](std::uint32_t place) { return series.IsFixAt(place); });
}

HorizontalErrors HorizontalAbout(const PositionErrors& errors, double north, double east,
                                 const TrialClock& clock) {
  const std::size_t n = errors.times.size();
  HorizontalErrors figures;
  figures.n = static_cast<Count>(n);
  if (n == 0) return figures;
  const Spread spreadNorth = SpreadOf(errors.north);
  const Spread spreadEast = SpreadOf(errors.east);
  figures.biasNorth = spreadNorth.mean - north;
  figures.biasEast = spreadEast.mean - east;
  figures.stdNorth = spreadNorth.std;
  figures.stdEast = spreadEast.std;

  std::vector<double> distances(n);
  double squares = 0.0;
  std::size_t largest = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const double toNorth = errors.north[i] - north;
    const double toEast = errors.east[i] - east;
    squares += toNorth * toNorth + toEast * toEast;
    distances[i] = std::hypot(toNorth, toEast);
    if (distances[i] > distances[largest]) largest = i;
  }
  figures.drms = RootMeanSquare(squares, n);
  figures.twoDrms = 2.0 * *figures.drms;
  figures.largest = distances[largest];
  figures.largestAt = clock.MomentOf(errors.times[largest]);
  const auto percents = PercentFigures(distances);
  figures.r50 = percents[0];
  figures.r68 = percents[1];
  figures.r95 = percents[2];
  figures.r99 = percents[3];
  return figures;
}

VerticalErrors VerticalAbout(const PositionErrors& errors, double up, const TrialClock& clock) {
  VerticalErrors figures;
  std::vector<double> deviations;
  double squares = 0.0;
  for (std::size_t i = 0; i < errors.times.size(); ++i) {
    if (std::isnan(errors.up[i])) continue;
    const double deviation = errors.up[i] - up;
    deviations.push_back(deviation);
    squares += deviation * deviation;
    if (figures.largest && std::abs(deviation) <= *figures.largest) continue;
    figures.largest = std::abs(deviation);
    figures.largestAt = clock.MomentOf(errors.times[i]);
  }
  figures.n = static_cast<Count>(deviations.size());
  if (deviations.empty()) return figures;
  const Spread spread = SpreadOf(deviations);
  figures.bias = spread.mean;
  figures.std = spread.std;
  figures.rms = RootMeanSquare(squares, deviations.size());
  for (double& deviation : deviations) deviation = std::abs(deviation);
  const auto percents = PercentFigures(deviations);
  figures.p50 = percents[0];
  figures.p68 = percents[1];
  figures.p95 = percents[2];
  figures.p99 = percents[3];
  return figures;
}

ErrorEllipse EllipseOf(const PositionErrors& errors) {
  ErrorEllipse ellipse;
  const std::size_t n = errors.times.size();
  if (n < kLeastForEllipse) {
    ellipse.why = why::kTooFew;
    return ellipse;
  }
  const double meanNorth = SpreadOf(errors.north).mean;
  const double meanEast = SpreadOf(errors.east).mean;
  double northNorth = 0.0;
  double eastEast = 0.0;
  double northEast = 0.0;
  for (std::size_t i = 0; i < n; ++i) {
    const double north = errors.north[i] - meanNorth;
    const double east = errors.east[i] - meanEast;
    northNorth += north * north;
    eastEast += east * east;
    northEast += north * east;
  }
  const auto freedoms = static_cast<double>(n - 1);
  const double half = (northNorth - eastEast) / 2.0 / freedoms;
  const double middle = (northNorth + eastEast) / 2.0 / freedoms;
  const double covariance = northEast / freedoms;
  const double spread = std::hypot(half, covariance);
  const double major = middle + spread;
  const double minor = std::max(middle - spread, 0.0);
  const double direction = std::atan2(covariance, half) / 2.0;

  // All on a line, or on one place, but for rounding: the other axis decides nothing.
  constexpr double kFlat = 1e-12;
  const bool isFlat = minor <= kFlat * major;
  Count inside = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const double north = errors.north[i] - meanNorth;
    const double east = errors.east[i] - meanEast;
    const double along = north * std::cos(direction) + east * std::sin(direction);
    const double across = east * std::cos(direction) - north * std::sin(direction);
    const double square = isFlat ? (major > 0.0 ? along * along / major : 0.0)
                                 : along * along / major + across * across / minor;
    if (square <= kEllipseScale) ++inside;
  }
  ellipse.semiMajor = std::sqrt(major * kEllipseScale);
  ellipse.semiMinor = std::sqrt(minor * kEllipseScale);
  const double degrees = direction * 180.0 / std::numbers::pi;
  ellipse.direction = degrees < 0.0 ? degrees + 180.0 : degrees;
  // What would be written as 180 is 0.
  if (Rounded(*ellipse.direction, decimals::kDirection) >= 180.0) ellipse.direction = 0.0;
  ellipse.insideShare = static_cast<double>(inside) / static_cast<double>(n);
  return ellipse;
}

Horizontal HorizontalOf(const PositionErrors& errors, std::string_view why,
                        const TrialClock& clock) {
  Horizontal horizontal;
  if (errors.times.empty()) {
    horizontal.reference.why = horizontal.mean.why = horizontal.ellipse.why = why;
    return horizontal;
  }
  horizontal.reference = HorizontalAbout(errors, 0.0, 0.0, clock);
  horizontal.mean = HorizontalAbout(errors, *horizontal.reference.biasNorth,
                                    *horizontal.reference.biasEast, clock);
  horizontal.ellipse = EllipseOf(errors);
  return horizontal;
}

Vertical VerticalOf(const PositionErrors& errors, std::string_view why, const TrialClock& clock) {
  Vertical vertical;
  std::vector<double> ups;
  for (const double up : errors.up) {
    if (!std::isnan(up)) ups.push_back(up);
  }
  if (ups.empty()) {
    if (!errors.times.empty()) {
      why = errors.upIsHeight || errors.whyNoUp.empty() ? why::kNoHeight : errors.whyNoUp;
    }
    vertical.reference.why = vertical.mean.why = why;
    return vertical;
  }
  if (errors.whyNoUp.empty()) {
    vertical.reference = VerticalAbout(errors, 0.0, clock);
  } else {
    vertical.reference.why = errors.whyNoUp;
  }
  vertical.mean = VerticalAbout(errors, SpreadOf(ups).mean, clock);
  return vertical;
}

}  // namespace fathomline::trial
