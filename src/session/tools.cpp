#include "session/tools.h"

namespace fathomline {

Tools::Tools(Engine& engine, Desktop& desktop, const Clock& clock, SettingsStore& settings,
             LinkDesk& links, OfflineReplay& replay, Windows& windows)
    : sources(desktop, engine.records, links, engine.watch.Activity(), settings),
      sentenceLog(desktop, engine.records, engine.watch, clock, settings),
      satellites(desktop, engine.records, engine.watch, settings),
      marks(engine.records, desktop, links, engine.watch, windows.main) {
  PlugMenu(windows.main, links);
  PlugReplaySpeed(windows.main, replay);
}

void Tools::PlugReplaySpeed(frmMain& main, OfflineReplay& replay) {
  for (int item = 1; const ReplaySpeed& speed : kReplaySpeeds) {
    main.mnuToolsReplaySpeedOf(item++).onClick = [&main, &replay, times = speed.times] {
      replay.SetSpeed(times);
      main.ShowReplaySpeed(times);
    };
  }
}

void Tools::PlugMenu(frmMain& main, LinkDesk& links) {
  main.mnuToolsSources.onClick = [this] { sources.Show(); };
  main.mnuToolsSentenceLog.onClick = [this] { sentenceLog.Show(); };
  main.mnuToolsSatellites.onClick = [this] { satellites.Show(); };
  main.mnuOptionsReconnect.onClick = [&main, &links] {
    links.SetKeeping(!links.Keeping());
    main.mnuOptionsReconnect.SetChecked(links.Keeping());
  };
  main.sbStatusBar.onClickPanel = [this](int panel) {
    if (panel > frmMain::kSourcePanel) sources.Show();
  };
}

}  // namespace fathomline
