// The windows of the program, made once for its life; all but the setup dialog, which is a part of
// the session.
#pragma once

#include <functional>
#include <memory>

#include "base/clock.h"
#include "base/per_system.h"
#include "charts/chart_windows.h"
#include "pipeline/engine.h"
#include "toolkit/links.h"
#include "views/system_view.h"
#include "windows/about_box.h"
#include "windows/ais_extra_info.h"
#include "windows/ais_targets_window.h"
#include "windows/arpa_targets_window.h"
#include "windows/comport_info.h"
#include "windows/coordinate_format.h"
#include "windows/main_window.h"
#include "windows/monitor_window.h"
#include "windows/numerics_window.h"
#include "windows/offline_status.h"
#include "windows/session_text.h"
#include "windows/statistics_snr_window.h"
#include "windows/statistics_window.h"
#include "windows/view_selection.h"

namespace fathomline {

template <class Kind>
using SystemWindows = PerSystem<std::unique_ptr<Kind>>;

class Windows {
 public:
  // `tcpState` asks the TCP link of a system.
  Windows(const ViewSurroundings& surroundings, Engine& engine, const Clock& clock,
          const std::function<LinkState(int system)>& tcpState);

  // Opens a view of a system, or brings it forward.
  void OpenView(ViewKind kind, int system);
  // Opens statistics, numerics, charts, plots and target lists of a system, as far as what it
  // analyses feeds them.
  void OpenFigures(int system);
  // Opens every window of a system whose sentences are analysed.
  void OpenAnalysed(int system);

  frmAISExtraInfo aisExtraInfo;
  ChartWindows charts;
  frmMain main;
  frmOfflineStatus offlineStatus;
  frmNewWindow newWindow;
  frmDocument document;
  frmGeoFormat geoFormat;
  frmComportInfo comportInfo;
  frmAbout about;

  SystemWindows<frmNumerics> numerics;
  SystemWindows<frmStatistics> statistics;
  SystemWindows<frmStatisticsSNR> statisticsSNR;
  SystemWindows<frmNMEA> monitors;
  SystemWindows<frmAISTargets> aisTargets;
  SystemWindows<frmARPATargets> arpaTargets;

 private:
  void OpenTargets(int system);

  Records& records_;
};

}  // namespace fathomline
