#include "windows/statistics_columns.h"

#include <array>
#include <string>
#include <string_view>

#include "base/format.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr std::array<std::string_view, kStatisticsRows> kBelowCaptions = {
    "", "Current", "MEAN", "Sdev", "Max", "Min", "68%  <", "95%  <", "Count", "Rejected"};
constexpr std::string_view kPercentile68Above = "68%  >";
constexpr std::string_view kPercentile95Above = "95%  >";
constexpr int kPercentile68Row = 6;
constexpr int kPercentile95Row = 7;
constexpr std::string_view kNoPercentile = "       n/a";

// The figures of the first five rows have one picture each; the counts are plain numbers.
using Pictures = std::array<std::string_view, 5>;
constexpr Pictures kDeviationPictures = {"0.00", "0.00", "0.00", "0.00", "0.00"};
constexpr Pictures kSNRPictures = {"00", "0.0", "0.0", "00", "00"};

void ShowFigures(Grid& grid, const SingleStat& stat, std::int32_t rejected, int column,
                 const Pictures& pictures) {
  const std::array<float, 5> figures = {stat.Current, stat.Mean, stat.Sdev, stat.Max, stat.Min};
  for (std::size_t i = 0; i < figures.size(); ++i) {
    grid.Set(static_cast<int>(i) + 1, column, Format(figures[i], pictures[i]));
  }
  grid.Set(8, column, PlainText(stat.Count));
  grid.Set(9, column, PlainText(rejected));
}

std::string DeviationPercentile(float figure) {
  return figure < 10.0F ? Format(figure, "0.00") : ">10";
}

}  // namespace

void WriteStatisticsCaptions(Grid& grid, PercentileKind kind) {
  for (int row = 1; row < kStatisticsRows; ++row) {
    grid.Set(row, 0, kBelowCaptions[static_cast<std::size_t>(row)]);
  }
  if (kind == PercentileKind::Below) return;
  grid.Set(kPercentile68Row, 0, kPercentile68Above);
  grid.Set(kPercentile95Row, 0, kPercentile95Above);
}

void ShowDeviationColumn(Grid& grid, const DeviationStat& stat, int column, bool noPercentile) {
  ShowFigures(grid, stat.Stat, stat.RejectedCount, column, kDeviationPictures);
  if (noPercentile) {
    grid.Set(kPercentile68Row, column, kNoPercentile);
    grid.Set(kPercentile95Row, column, kNoPercentile);
    return;
  }
  const Percentiles percentiles = stat.ComputePercentiles();
  grid.Set(kPercentile68Row, column, DeviationPercentile(percentiles.P68));
  grid.Set(kPercentile95Row, column, DeviationPercentile(percentiles.P95));
}

void ShowSNRColumn(Grid& grid, const SNRStat& stat, int column) {
  ShowFigures(grid, stat.Stat, stat.RejectedCount, column, kSNRPictures);
  const Percentiles percentiles = stat.ComputePercentiles();
  grid.Set(kPercentile68Row, column, Format(percentiles.P68, "00"));
  grid.Set(kPercentile95Row, column, Format(percentiles.P95, "00"));
}

}  // namespace fathomline
