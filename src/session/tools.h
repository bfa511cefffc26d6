// The menu Tools: windows that watch the sources of all systems, and the marks in the status bar.
#pragma once

#include "base/clock.h"
#include "base/settings.h"
#include "pipeline/engine.h"
#include "session/windows.h"
#include "sources/offline_replay.h"
#include "toolkit/desktop.h"
#include "watch/link_desk.h"
#include "windows/satellites_window.h"
#include "windows/sentence_log_window.h"
#include "windows/source_marks.h"
#include "windows/sources_window.h"

namespace fathomline {

class Tools {
 public:
  Tools(Engine& engine, Desktop& desktop, const Clock& clock, SettingsStore& settings,
        LinkDesk& links, OfflineReplay& replay, Windows& windows);

  frmSources sources;
  frmSentenceLog sentenceLog;
  frmSatellites satellites;
  SourceMarks marks;

 private:
  void PlugMenu(frmMain& main, LinkDesk& links);
  static void PlugReplaySpeed(frmMain& main, OfflineReplay& replay);
};

}  // namespace fathomline
