// What works on the engine and the windows while the program runs: the sources of the lines, the
// logs, the control of the session and the menus.
#pragma once

#include <functional>

#include "base/clock.h"
#include "base/settings.h"
#include "pipeline/engine.h"
#include "session/error_log.h"
#include "session/layouts.h"
#include "session/main_menu.h"
#include "session/reasons.h"
#include "session/recordings.h"
#include "session/session_control.h"
#include "session/session_setup.h"
#include "session/start_up.h"
#include "session/tools.h"
#include "session/trial_session.h"
#include "session/windows.h"
#include "setup/setup_dialog.h"
#include "sources/line_sink.h"
#include "sources/link_keeper.h"
#include "sources/live_input.h"
#include "sources/offline_replay.h"
#include "sources/raw_log.h"
#include "toolkit/desktop.h"
#include "toolkit/links.h"

namespace fathomline {

// Where the session stands. All of it outlives the session.
struct SessionSurroundings {
  Engine& engine;
  Desktop& desktop;
  Windows& windows;
  const Clock& clock;
  SettingsStore& settings;
  Links& links;
  LineSink& lines;
  // Ends the process at once, where the user does not want to go on after a fault.
  std::function<void()> endProcess;
};

struct RunningSession {
  explicit RunningSession(const SessionSurroundings& around)
      : errorLog(around.engine.records, around.engine.files, around.clock, around.desktop,
                 around.endProcess),
        rawLog(around.engine.records, around.engine.files, around.clock, around.desktop),
        input(around.engine.records, around.links, around.desktop, around.lines, errorLog),
        keeper(around.engine.records, around.links, input, around.desktop, around.settings),
        trial(around.engine, around.clock, around.settings, around.desktop, around.windows.main),
        control(around.engine, around.desktop, input, rawLog, around.windows, setupDialog),
        setup(around.engine.records, around.links, input, control, around.windows),
        setupDialog(around.desktop, around.engine.records, around.engine.statistics, around.clock,
                    around.links, setup),
        replay(around.engine.records, around.engine.files, around.clock, around.desktop,
               around.windows.main.tbOffline, around.windows.offlineStatus, around.lines, control,
               errorLog),
        startUp(around.engine, around.desktop, around.clock, around.settings, around.windows,
                setupDialog, control, input, trial),
        menu(around.engine, around.desktop, around.settings, around.windows, setupDialog, control,
             startUp),
        recordings(around.engine, around.desktop, around.settings, around.windows, startUp, replay),
        reasons(around.engine, around.desktop, around.windows, setupDialog),
        tools(around.engine, around.desktop, around.clock, around.settings, keeper, replay,
              around.windows),
        layouts(around.desktop, around.windows,
                {&tools.sources, &tools.sentenceLog, &tools.satellites}, around.settings, startUp) {
    control.onReset = [this] {
      trial.Clear();
      reasons.Restart();
    };
  }

  ErrorLog errorLog;
  RawLog rawLog;
  LiveInput input;
  LinkKeeper keeper;
  TrialSession trial;
  SessionControl control;
  SessionSetup setup;
  frmSetup setupDialog;
  OfflineReplay replay;
  StartUp startUp;
  MainMenu menu;
  Recordings recordings;
  Reasons reasons;
  Tools tools;
  Layouts layouts;
};

}  // namespace fathomline
