// The chain that brings a session back to its start.
#pragma once

#include <functional>
#include <memory>

#include "analysis/statistics.h"
#include "analysis/statistics_window.h"
#include "pipeline/records.h"
#include "sources/line_sink.h"

namespace fathomline {

using StatisticsWindows = PerSystem<std::unique_ptr<frmStatistics>>;

class SessionControl : public SessionReset {
 public:
  SessionControl(Records& records, Statistics& statistics, StatisticsWindows& statisticsWindows)
      : records_(records), statistics_(statistics), statisticsWindows_(statisticsWindows) {}

  // Neither the latest sentences nor the counts of errors are touched.
  void ResetAll() override;
  void ResetStatisticsAll();

 private:
  // A view is reset by closing and opening it again, where its window flag is set.
  void Reopen(int system, WindowFlag flag, Window& window);

  Records& records_;
  Statistics& statistics_;
  StatisticsWindows& statisticsWindows_;
};

}  // namespace fathomline
