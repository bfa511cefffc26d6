// frmSources: whether each system's source still sends, over which link, and each of its sentences.
#pragma once

#include <chrono>

#include "base/settings.h"
#include "records/records.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "toolkit/window.h"
#include "watch/link_desk.h"
#include "watch/source_activity.h"

namespace fathomline {

class frmSources : public Window {
 public:
  frmSources(Desktop& desktop, const Records& records, LinkDesk& links,
             const SourceActivity& activity, SettingsStore& settings);

  // Looks at the sources anew, some times a second.
  void Refresh() override;

  Label lblNone{*this, "lblNone"};
  Grid fgSources;
  // Closes the link of its system and opens it again.
  ControlArray<Button> cmdReconnect{*this, "cmdReconnect", 1, kSystems, ""};
  CheckBox chkReconnect{*this, "chkReconnect", "Reconnect &lost links"};
  Frame frameSentences{*this, "frameSentences", "Sentences"};
  Grid fgSentences;

 protected:
  void Load() override;
  void Unload() override;

 private:
  void Look();
  void ShowSource(int row, int system);
  int ShowSentences(int row, int system);

  const Records& records_;
  LinkDesk& links_;
  const SourceActivity& activity_;
  SettingsStore& settings_;
  std::chrono::steady_clock::time_point looked_{};
  bool due_ = true;
};

}  // namespace fathomline
