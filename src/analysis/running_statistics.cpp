#include "analysis/running_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/fault.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr float kShare68 = 0.68F;
constexpr float kShare95 = 0.95F;
constexpr std::size_t kLastClearedBin = 251;

void CountUp(std::int32_t& count) {
  if (count == std::numeric_limits<std::int32_t>::max()) Raise(FaultNumber::Overflow);
  ++count;
}

void AddTo(double& sum, double term) {
  const double grown = sum + term;
  if (!std::isfinite(grown)) Raise(FaultNumber::Overflow);
  sum = grown;
}

template <class Number>
void TakeExtremes(Number& max, Number& min, Number value, bool first) {
  if (first) {
    max = min = value;
    return;
  }
  if (value > max) max = value;
  if (value < min) min = value;
}

template <class Number>
void Accumulate(RunningStat<Number>& stat, Number value, const Stamp& stamp) {
  if (value == NoValue) {
    stat.NoValueSeen = true;
    return;
  }
  stat.NoValueSeen = false;
  stat.Current = value;
  CountUp(stat.Count);
  if (stat.Count == 1) {
    stat.FirstDate = FormatDateTime(stamp.Computer.NowLocal(), "dd mmm yyyy");
    stat.FirstTime.assign(stamp.Time);
    stat.First = value;
  }
  stat.LastTime.assign(stamp.Time);

  const double first = stat.First;
  const double difference = static_cast<double>(value) - first;
  const double count = stat.Count;
  AddTo(stat.SumDifference, difference);
  stat.Mean = ConvertTo<Number>(first + stat.SumDifference / count);
  TakeExtremes(stat.Max, stat.Min, value, stat.Count == 1);
  AddTo(stat.SumSquares, difference * difference);
  if (stat.Count > 1) {
    // The mean as it was stored. Where rounding makes the variance negative, the deviation keeps
    // its previous value.
    const double shift = static_cast<double>(stat.Mean) - first;
    const double deviation = std::sqrt((stat.SumSquares - count * (shift * shift)) / (count - 1.0));
    if (deviation <= std::numeric_limits<Number>::max()) stat.Sdev = static_cast<Number>(deviation);
  }
}

template <class Stat>
void Reject(Stat& stat, float value) {
  stat.Stat.NoValueSeen = true;
  TakeExtremes(stat.RejectedMax, stat.RejectedMin, value, stat.RejectedCount == 1);
  CountUp(stat.RejectedCount);
}

void CountSigned(DeviationStat& stat, float value) {
  const float d = value - stat.SignedCentre;
  constexpr int kRounds = 10;
  int bin = kRounds + 1;
  for (int i = 1; i <= kRounds && bin > kRounds; ++i) {
    if (std::abs(d) < stat.SignedLimits[static_cast<std::size_t>(kRounds + i)]) bin = i;
  }
  if (d < 0.0F) bin = -bin;
  CountUp(stat.SignedCounts[static_cast<std::size_t>(kRounds + 1 + bin)]);
}

void CountAbsolute(DeviationStat& stat, float value) {
  CountUp(stat.AbsTotal);
  const float a = std::abs(value);
  const std::size_t bin =
      a <= 10.0F ? static_cast<std::size_t>(a * 100.0F) + 1 : DeviationStat::kLastBin;
  CountUp(stat.AbsBins[bin]);
}

// Walks the bins in the given order until the accumulated share passes 95%. The share is a
// single; each division is made in double precision. A figure that is not reached stays.
template <class Bins, class Figure>
Percentiles WalkBins(const Bins& bins, std::int32_t total, int from, int to, Figure figure,
                     Percentiles percentiles = {}) {
  if (total == 0) return percentiles;
  const int step = from < to ? 1 : -1;
  bool pending68 = true;
  float share = 0.0F;
  for (int i = from; i != to + step; i += step) {
    const std::int32_t count = bins[static_cast<std::size_t>(i)];
    if (count == 0) continue;
    share = static_cast<float>(share + static_cast<double>(count) / static_cast<double>(total));
    if (pending68 && kShare68 < share) {
      percentiles.P68 = figure(i);
      pending68 = false;
    }
    if (kShare95 < share) {
      percentiles.P95 = figure(i);
      break;
    }
  }
  return percentiles;
}

}  // namespace

void AccumulateDouble(DoubleStat& stat, double value, const Stamp& stamp) {
  Accumulate(stat, value, stamp);
}

void AccumulateSingle(SingleStat& stat, float value, const Stamp& stamp) {
  Accumulate(stat, value, stamp);
}

void ResetDoubleStat(DoubleStat& stat) {
  stat = {};
}
void ResetSingleStat(SingleStat& stat) {
  stat = {};
}

Percentiles DeviationStat::ComputePercentiles() const {
  return WalkBins(AbsBins, AbsTotal, 1, kLastBin,
                  [](int i) { return static_cast<float>((i - 1) / 100.0); });
}

void AccumulateDeviation(float value, DeviationStat& stat, const Stamp& stamp) {
  if (value == NoValue) {
    Reject(stat, value);
    return;
  }
  AccumulateSingle(stat.Stat, value, stamp);
  CountSigned(stat, value);
  CountAbsolute(stat, value);
}

void ResetDeviationStat(DeviationStat& stat) {
  ResetSingleStat(stat.Stat);
  stat.RejectedCount = 0;
  stat.RejectedMax = 0.0F;
  stat.RejectedMin = 0.0F;
  stat.SignedCounts.fill(0);
  stat.AbsTotal = 0;
  std::fill_n(stat.AbsBins.begin() + 1, kLastClearedBin, 0);
}

Percentiles SNRStat::ComputePercentiles() const {
  return Kept ? *Kept : Walk({});
}

Percentiles SNRStat::Walk(const Percentiles& before) const {
  return WalkBins(
      SNRBins, SNRTotal, kLastBin, 1, [](int i) { return static_cast<float>(i - 1); }, before);
}

void AccumulateSNR(float value, SNRStat& stat, const Stamp& stamp) {
  if (value == NoValue || value == 0.0F) {
    Reject(stat, value);
    return;
  }
  AccumulateSingle(stat.Stat, value, stamp);
  if (value < 0.0F && !stat.Kept) stat.Kept = stat.ComputePercentiles();
  CountUp(stat.SNRTotal);
  if (value < 0.0F) Raise(FaultNumber::OutOfRange);
  CountUp(stat.SNRBins[value <= 100.0F ? static_cast<std::size_t>(value) : SNRStat::kLastBin]);
  if (stat.Kept) stat.Kept = stat.Walk(*stat.Kept);
}

void ResetSNRStat(SNRStat& stat) {
  stat = {};
}

}  // namespace fathomline
