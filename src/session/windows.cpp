#include "session/windows.h"

#include <algorithm>

namespace fathomline {

Windows::Windows(const ViewSurroundings& surroundings, Engine& engine, const Clock& clock,
                 const std::function<LinkState(int)>& tcpState)
    : aisExtraInfo(surroundings.desktop, engine.records, engine.targets),
      charts(surroundings, engine.statistics, clock),
      main(surroundings.desktop, engine.records, clock, surroundings.settings),
      offlineStatus(surroundings.desktop, engine.records, clock),
      newWindow(surroundings.desktop, engine.records,
                [this](ViewKind kind, int system) { OpenView(kind, system); }),
      document(surroundings.desktop, engine.records),
      geoFormat(surroundings.desktop, engine.records),
      comportInfo(surroundings.desktop, surroundings.settings),
      about(surroundings.desktop),
      records_(engine.records) {
  for (int system = 1; system <= kSystems; ++system) {
    numerics[system] = std::make_unique<frmNumerics>(surroundings, system);
    statistics[system] = std::make_unique<frmStatistics>(surroundings, system, engine.statistics);
    statisticsSNR[system] =
        std::make_unique<frmStatisticsSNR>(surroundings, system, engine.statistics);
    monitors[system] = std::make_unique<frmNMEA>(surroundings, system, tcpState);
    aisTargets[system] = std::make_unique<frmAISTargets>(surroundings, system, engine.ais,
                                                         engine.targets, aisExtraInfo);
    arpaTargets[system] = std::make_unique<frmARPATargets>(surroundings, system);
  }
}

void Windows::OpenFigures(int system) {
  // Of AIS alone these two have nothing to show.
  const CommSetup& setup = records_.CommSetups[system];
  const bool figures =
      std::any_of(kAnalyseFlags.begin(), kAnalyseFlags.end(), [&setup](const AnalyseFlag& row) {
        return setup.*row.flag && row.flag != &CommSetup::AnalyseVDM;
      });
  if (figures) {
    OpenView(ViewKind::Numerics, system);
    OpenView(ViewKind::Statistics, system);
  }
  charts.OpenFigures(system);
  OpenTargets(system);
}

void Windows::OpenAnalysed(int system) {
  OpenView(ViewKind::Numerics, system);
  OpenView(ViewKind::Statistics, system);
  charts.OpenAnalysed(system);
  OpenTargets(system);
}

void Windows::OpenTargets(int system) {
  const CommSetup& analysed = records_.CommSetups[system];
  if (analysed.AnalyseTTM) OpenView(ViewKind::ARPATargets, system);
  if (analysed.AnalyseVDM) OpenView(ViewKind::AISTargets, system);
}

void Windows::OpenView(ViewKind kind, int system) {
  switch (kind) {
    case ViewKind::Numerics:
      numerics[system]->ShowView();
      break;
    case ViewKind::Statistics:
      statistics[system]->ShowView();
      if (records_.CommSetups[system].AnalyseGSV) statisticsSNR[system]->ShowView();
      break;
    case ViewKind::TimeSeries:
      charts.OpenTimeSeries(system);
      break;
    case ViewKind::Scatter:
      charts.OpenScatter(system);
      break;
    case ViewKind::Skyplot:
      charts.OpenSkyplot(system);
      break;
    case ViewKind::ARPATargets:
      arpaTargets[system]->ShowView();
      break;
    case ViewKind::AISTargets:
      aisTargets[system]->ShowView();
      break;
    case ViewKind::NMEA:
      monitors[system]->ShowView();
      break;
    case ViewKind::SNRGPS:
    case ViewKind::SNRSBAS:
    case ViewKind::SNRGLONASS:
    case ViewKind::SNRBeiDou:
    case ViewKind::SNRGalileo:
      charts.OpenSNR(system, 1 + static_cast<int>(kind) - static_cast<int>(ViewKind::SNRGPS));
      break;
  }
}

}  // namespace fathomline
