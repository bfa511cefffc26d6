// The mode of the session, the tool bar of the online one, and the chain that brings a session back
// to its start.
#pragma once

#include <memory>
#include <string_view>

#include "analysis/statistics.h"
#include "charts/chart_windows.h"
#include "records/records.h"
#include "setup/setup_dialog.h"
#include "sources/line_sink.h"
#include "sources/live_input.h"
#include "sources/raw_log.h"
#include "toolkit/desktop.h"
#include "windows/ais_targets_window.h"
#include "windows/arpa_targets_window.h"
#include "windows/main_window.h"
#include "windows/numerics_window.h"
#include "windows/offline_status.h"
#include "windows/statistics_snr_window.h"
#include "windows/statistics_window.h"

namespace fathomline {

template <class Kind>
using SystemWindows = PerSystem<std::unique_ptr<Kind>>;
using NumericsWindows = SystemWindows<frmNumerics>;
using StatisticsWindows = SystemWindows<frmStatistics>;
using StatisticsSNRWindows = SystemWindows<frmStatisticsSNR>;

class SessionControl : public SessionReset {
 public:
  struct Windows {
    frmMain& main;
    frmOfflineStatus& offlineStatus;
    frmSetup& setupDialog;
    NumericsWindows& numerics;
    StatisticsWindows& statistics;
    StatisticsSNRWindows& statisticsSNR;
    ChartWindows& charts;
    ARPATargetsWindows& arpaTargets;
    AISTargetsWindows& aisTargets;
  };

  SessionControl(Records& records, Statistics& statistics, Desktop& desktop, LiveInput& input,
                 RawLog& log, const Windows& windows)
      : records_(records),
        statistics_(statistics),
        desktop_(desktop),
        input_(input),
        log_(log),
        windows_(windows) {}

  // The mode entries of the menu. Changing from one mode to the other asks; a mode that comes into
  // force resets the session, closes the links of the other one or opens its own.
  void ClickModeOnline();
  void ClickModeOffline();

  // A button of tbOnline, by its key. Keys without work do nothing.
  void Press(std::string_view key);

  // Neither the latest sentences nor the counts of errors are touched.
  void ResetAll() override;
  void ResetNumerics();
  void ResetStatisticsAll();
  void ResetTimeSeries();
  void ResetScatter();
  void ResetSkyplot();
  void ResetARPA();
  void ResetAIS();

 private:
  bool MayChangeMode(const MenuItem& modeInForce);
  bool Sure();
  void Pause();
  void ToggleLog();
  template <class SystemViews>
  void ResetFlagged(WindowFlag flag, const SystemViews& views);

  Records& records_;
  Statistics& statistics_;
  Desktop& desktop_;
  LiveInput& input_;
  RawLog& log_;
  Windows windows_;
};

}  // namespace fathomline
