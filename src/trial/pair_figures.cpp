#include "trial/pair_figures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace fathomline::trial {
namespace {

constexpr Count kLeastForClaim = 20;

struct ClaimSums {
  Count n = 0, within1 = 0, within2 = 0;
  double squares = 0.0;

  void Add(double error, double claimed) {
    // Neither a claim of nothing nor what was not sent or has no error.
    if (!(claimed > 0.0) || std::isnan(error)) return;
    ++n;
    if (std::abs(error) <= claimed) ++within1;
    if (std::abs(error) <= 2.0 * claimed) ++within2;
    squares += (error / claimed) * (error / claimed);
  }

  ClaimAxis Figures() const {
    ClaimAxis axis;
    axis.n = n;
    if (n < kLeastForClaim) {
      axis.why = why::kTooFew;
      return axis;
    }
    const auto count = static_cast<double>(n);
    axis.within1 = static_cast<double>(within1) / count;
    axis.within2 = static_cast<double>(within2) / count;
    axis.rmsRatio = std::sqrt(squares / count);
    return axis;
  }
};

}  // namespace

Differences DifferencesAt(const PositionSeries& base, const PositionSeries& other, BaseIs baseIs) {
  Differences differences;
  differences.of = base.Fixes();
  const bool baseIsFirst = baseIs == BaseIs::First;
  const HeightKind ofFirst = (baseIsFirst ? base : other).Heights();
  const HeightKind ofSecond = (baseIsFirst ? other : base).Heights();
  std::string_view& whyNoUp = differences.errors.whyNoUp;
  if (ofSecond == HeightKind::None) {
    whyNoUp = why::kNoHeight;
  } else if (ofFirst == HeightKind::None) {
    whyNoUp = why::kNoReferenceHeight;
  } else if (ofFirst != ofSecond) {
    whyNoUp = why::kOtherHeights;
  }
  // A time without a date is no time of the other's.
  if (base.Clock().IsDated() != other.Clock().IsDated()) return differences;

  FixWalker walker(other);
  for (std::size_t i = 0; i < base.size(); ++i) {
    Place first = base.PlaceOf(i);
    if (std::isnan(first.latitude)) continue;
    const std::int64_t time = base.TimeOf(i);
    const auto found = walker.At(time);
    if (!found) continue;
    if (base.IsFixAt(i)) ++(found->sameTime ? differences.sameTime : differences.interpolated);
    Place second = found->place;
    if (!baseIsFirst) std::swap(first, second);
    if (whyNoUp == why::kOtherHeights) second.height = std::numeric_limits<double>::quiet_NaN();
    differences.errors.Add(time, Frame(first).Locate(second), static_cast<std::uint32_t>(i));
  }
  return differences;
}

Differences DifferencesOf(const PositionSeries& first, const PositionSeries& second) {
  const double ofFirst = first.Interval().value_or(HUGE_VAL);
  const double ofSecond = second.Interval().value_or(HUGE_VAL);
  const bool atSecond = ofSecond > ofFirst;
  const PositionSeries& base = atSecond ? second : first;
  Differences differences =
      DifferencesAt(base, atSecond ? first : second, atSecond ? BaseIs::Second : BaseIs::First);
  differences.errors = OfFixes(differences.errors, base);
  return differences;
}

PairFigures PairOf(const PositionSeries* first, const PositionSeries* second) {
  PairFigures pair;
  pair.horizontal.why = pair.vertical.why = why::kNoFix;
  if (first == nullptr || second == nullptr) return pair;
  Differences differences = DifferencesOf(*first, *second);
  pair.of = differences.of;
  if (first->Fixes() == 0 || second->Fixes() == 0) return pair;
  pair.sameTime = differences.sameTime;
  pair.interpolated = differences.interpolated;
  PositionErrors& errors = differences.errors;
  // Neither of the two is a reference here.
  if (errors.whyNoUp == why::kNoReferenceHeight) errors.whyNoUp = why::kNoHeight;
  pair.horizontal = HorizontalOf(errors, why::kNoOverlap, first->Clock()).reference;
  pair.vertical = VerticalOf(errors, why::kNoOverlap, first->Clock()).reference;
  pair.differences = {.times = std::move(errors.times),
                      .north = std::move(errors.north),
                      .east = std::move(errors.east),
                      .up = std::move(errors.up),
                      .quality = {}};
  return pair;
}

StreamDistance DistanceOf(const PositionSeries& first, const PositionSeries& second) {
  const Differences differences = DifferencesOf(first, second);
  std::vector<double> distances;
  for (std::size_t i = 0; i < differences.errors.times.size(); ++i) {
    distances.push_back(std::hypot(differences.errors.north[i], differences.errors.east[i]));
  }
  return {differences.sameTime + differences.interpolated, PercentFigure(distances, 50)};
}

Claim ClaimOf(const std::vector<ClaimSamples>& claims, std::string_view talker,
              const PositionErrors& errors, std::string_view whyNone, const TrialClock& clock,
              const Window& window) {
  const ClaimSamples* chosen = nullptr;
  std::tuple<bool, std::size_t> rank;
  for (const ClaimSamples& samples : claims) {
    const auto n = static_cast<std::size_t>(
        std::count_if(samples.epochs.begin(), samples.epochs.end(),
                      [&](Epoch epoch) { return window.Holds(clock.TimeOf(epoch)); }));
    if (n == 0) continue;
    const std::tuple<bool, std::size_t> own{samples.name.substr(0, 2) == talker, n};
    if (chosen == nullptr || own > rank || (own == rank && samples.name < chosen->name)) {
      chosen = &samples;
      rank = own;
    }
  }
  Claim claim;
  if (chosen == nullptr) {
    claim.why = why::kNoneSent;
    return claim;
  }
  if (errors.times.empty()) {
    claim.why = whyNone;
    return claim;
  }
  claim.talker = chosen->name.substr(0, 2);

  std::vector<std::uint32_t> order(chosen->epochs.size());
  std::iota(order.begin(), order.end(), 0U);
  const auto timeOf = [&](std::uint32_t i) { return clock.TimeOf(chosen->epochs[i]); };
  std::ranges::stable_sort(order, {}, timeOf);
  ClaimSums north, east, up;
  auto next = order.begin();
  for (std::size_t i = 0; i < errors.times.size(); ++i) {
    while (next != order.end() && timeOf(*next) < errors.times[i]) ++next;
    if (next == order.end()) break;
    if (timeOf(*next) != errors.times[i]) continue;
    north.Add(errors.north[i], chosen->north[*next]);
    east.Add(errors.east[i], chosen->east[*next]);
    if (errors.whyNoUp.empty()) up.Add(errors.up[i], chosen->up[*next]);
  }
  claim.north = north.Figures();
  claim.east = east.Figures();
  claim.up = up.Figures();
  if (up.n == 0 && !errors.whyNoUp.empty()) claim.up.why = errors.whyNoUp;
  return claim;
}

}  // namespace fathomline::trial
