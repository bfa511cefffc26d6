// The mode of the session, the tool bar of the online one, and the chain that brings a session back
// to its start.
#pragma once

#include <functional>
#include <string_view>

#include "pipeline/engine.h"
#include "session/windows.h"
#include "setup/setup_dialog.h"
#include "sources/line_sink.h"
#include "sources/live_input.h"
#include "sources/raw_log.h"
#include "toolkit/desktop.h"

namespace fathomline {

class SessionControl : public SessionReset {
 public:
  SessionControl(Engine& engine, Desktop& desktop, LiveInput& input, RawLog& log, Windows& windows,
                 frmSetup& setupDialog)
      : records_(engine.records),
        statistics_(engine.statistics),
        watch_(engine.watch),
        desktop_(desktop),
        input_(input),
        log_(log),
        windows_(windows),
        setupDialog_(setupDialog) {}

  // The mode entries of the menu. Changing from one mode to the other asks; a mode that comes into
  // force resets the session, closes the links of the other one or opens its own.
  void ClickModeOnline();
  void ClickModeOffline();

  // A button of tbOnline, by its key. Keys without work do nothing.
  void Press(std::string_view key);

  // Called where the statistics begin anew.
  std::function<void()> onReset;

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
  class Kept;

  bool MayChangeMode(const MenuItem& modeInForce);
  bool Sure();
  void Pause();
  void ToggleLog();
  template <class SystemViews>
  void ResetFlagged(WindowFlag flag, const SystemViews& views);

  Records& records_;
  Statistics& statistics_;
  Watch& watch_;
  Desktop& desktop_;
  LiveInput& input_;
  RawLog& log_;
  Windows& windows_;
  frmSetup& setupDialog_;
};

}  // namespace fathomline
