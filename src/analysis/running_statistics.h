// Running figures of one quantity: nothing is kept sample by sample, so that a session of any
// length takes the same memory.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"

namespace fathomline {

// The time stamp that comes with a value: a text, and the computer's clock for the date of the
// first one.
struct Stamp {
  std::string_view Time;
  const Clock& Computer;
};

// Mean, standard deviation and extremes in the width of the quantity. All sums are taken in
// double precision, of differences from the first value.
template <class Number>
struct RunningStat {
  Number Current = 0;
  std::int32_t Count = 0;
  std::string FirstDate;  // of the computer, "dd mmm yyyy"
  std::string FirstTime;
  std::string LastTime;
  double SumDifference = 0.0;
  double SumSquares = 0.0;
  Number Max = 0;
  Number Min = 0;
  Number Mean = 0;
  Number Sdev = 0;  // sample standard deviation, divisor n - 1
  Number First = 0;
  bool NoValueSeen = false;  // the last value offered was NoValue
};

using DoubleStat = RunningStat<double>;
using SingleStat = RunningStat<float>;

// Take one value. NoValue only sets NoValueSeen. Raise Overflow where a sum or count runs over.
void AccumulateDouble(DoubleStat& stat, double value, const Stamp& stamp);
void AccumulateSingle(SingleStat& stat, float value, const Stamp& stamp);

void ResetDoubleStat(DoubleStat& stat);
void ResetSingleStat(SingleStat& stat);

// The figures below which 68% and 95% of the absolute values lie, or above which for an SNRStat.
struct Percentiles {
  float P68 = 0.0F;
  float P95 = 0.0F;
};

// One quantity of one sentence.
struct DeviationStat {
  SingleStat Stat;
  std::int32_t RejectedCount = 0;  // values that arrived as NoValue
  float RejectedMax = 0.0F;
  float RejectedMin = 0.0F;

  // Signed histogram around its centre, indices -10 to 10 and -11 to 11. Its limits are all 0, so
  // that every sample lands in an outer bin; it stands for the form of the record.
  float SignedCentre = 0.0F;
  std::array<float, 21> SignedLimits{};
  std::array<std::int32_t, 23> SignedCounts{};

  // Absolute value in bins of 0.01; bin i, from 1, holds (i - 1)/100 up to i/100, and the last one
  // everything from 10. Entry 0 is not used.
  static constexpr int kLastBin = 1001;
  std::int32_t AbsTotal = 0;
  std::array<std::int32_t, kLastBin + 1> AbsBins{};

  // The lower edges of the first bins at which the share passes 68% and 95%.
  Percentiles ComputePercentiles() const;
};

// Takes one value; NoValue is counted as rejected. Raises Overflow as above.
void AccumulateDeviation(float value, DeviationStat& stat, const Stamp& stamp);

// Bins above 251 keep their counts, so that old samples of 2.51 and more stay in the figures of
// a session after a reset.
void ResetDeviationStat(DeviationStat& stat);

// A signal-to-noise ratio, or a count of satellites.
struct SNRStat {
  SingleStat Stat;
  std::int32_t RejectedCount = 0;  // NoValue and 0
  float RejectedMax = 0.0F;
  float RejectedMin = 0.0F;
  // Whole numbers 1 to 100, and the last bin for all above.
  static constexpr int kLastBin = 101;
  std::int32_t SNRTotal = 0;
  std::array<std::int32_t, kLastBin + 1> SNRBins{};

  // The figures from the first negative value on, taken at every sample: it is in the total and in
  // no bin, so that they are no longer those of the bins alone.
  std::optional<Percentiles> Kept;

  // Lower bounds: 68% and 95% of the samples lie above them.
  Percentiles ComputePercentiles() const;
  Percentiles Walk(const Percentiles& before) const;
};

// Takes one value; NoValue and 0 are counted as rejected. Raises OutOfRange for a negative one.
void AccumulateSNR(float value, SNRStat& stat, const Stamp& stamp);

void ResetSNRStat(SNRStat& stat);

}  // namespace fathomline
