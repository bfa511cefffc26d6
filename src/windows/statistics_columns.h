// The rows that every statistics grid has, and the filling of one column from a record.
#pragma once

#include "analysis/running_statistics.h"
#include "toolkit/grid.h"

namespace fathomline {

// Row 0 holds the column heads, column 0 the row captions.
inline constexpr int kStatisticsRows = 10;

// Whether a percentile row says "less than" (of a deviation) or "more than" (of an SNR).
enum class PercentileKind { Below, Above };

// Writes the row captions into column 0; the cell above them stays as it is.
void WriteStatisticsCaptions(Grid& grid, PercentileKind kind);

// Rows 1 to 9 of a column. Without percentiles the two rows say so: those of a direction, or of a
// value that should not move, mean nothing.
void ShowDeviationColumn(Grid& grid, const DeviationStat& stat, int column, bool noPercentile);
void ShowSNRColumn(Grid& grid, const SNRStat& stat, int column);

}  // namespace fathomline
