// Figures of places about a reference and about their mean.
#pragma once

#include <GeographicLib/LocalCartesian.hpp>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "trial/percent_figures.h"
#include "trial/position_series.h"
#include "trial/samples.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// North, east and up in metres; up is NaN where heights cannot be compared.
struct LocalPosition {
  double north, east, up;
};

// The frame of a place: north and east of the plane that touches the ellipsoid there
// (GeographicLib, LocalCartesian), and the difference of heights, since the plane's own up falls
// with distance.
class Frame {
 public:
  explicit Frame(const Place& origin);
  // A place without a height takes that of the origin, and an origin without one is at 0.
  LocalPosition Locate(const Place& place) const;

 private:
  double height_;  // NaN without one
  GeographicLib::LocalCartesian frame_;
};

// Errors in order of time. `up` is NaN where there is none.
struct PositionErrors {
  // Why heights cannot be compared with the reference, if they cannot; and whether `up` then holds
  // the heights themselves, which still have a mean.
  std::string_view whyNoUp;
  bool upIsHeight = false;
  Times times;
  std::vector<double> north, east, up;
  std::vector<std::uint32_t> places;  // in the series that they are errors of

  void Add(std::int64_t time, const LocalPosition& position, std::uint32_t place = 0);
};

// A place of its own that a stream is compared with.
struct PlaceReference {
  Place place;                            // the height is NaN where there is none
  HeightKind heights = HeightKind::None;  // of the place
};

// The reference that a stream makes for itself, from its first fix in order of arrival or from all;
// none where it has no fix.
std::optional<PlaceReference> FirstFix(const PositionSeries& series);
std::optional<PlaceReference> MeanFix(const PositionSeries& series);

// Errors of all samples that have a place, fixes or not, about a reference.
PositionErrors ErrorsAbout(const PlaceReference& reference, const PositionSeries& series);

// The errors whose sample is of that quality, or is a fix.
PositionErrors OfQuality(const PositionErrors& errors, const PositionSeries& series, int quality);
PositionErrors OfFixes(const PositionErrors& errors, const PositionSeries& series);

// Figures about the reference, which is at zero, and about the mean of the errors. `why` there are
// no errors at all, if there are none.
Horizontal HorizontalOf(const PositionErrors& errors, std::string_view why,
                        const TrialClock& clock);
Vertical VerticalOf(const PositionErrors& errors, std::string_view why, const TrialClock& clock);

// About a point of the frame; empty optionals where there are too few.
HorizontalErrors HorizontalAbout(const PositionErrors& errors, double north, double east,
                                 const TrialClock& clock);
VerticalErrors VerticalAbout(const PositionErrors& errors, double up, const TrialClock& clock);
ErrorEllipse EllipseOf(const PositionErrors& errors);

}  // namespace fathomline::trial
