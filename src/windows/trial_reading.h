// frmTrialReading: how far the reading of a recording for its trial report has got.
#pragma once

#include <functional>

#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

class frmTrialReading : public Window {
 public:
  explicit frmTrialReading(Desktop& desktop);

  // Whatever ends it but Done.
  std::function<void()> onCancel;
  // 0 to 1.
  void ShowShare(double share) { prgRead.SetShare(static_cast<int>(share * 1000.0)); }
  void Done();

  Label lblWhat{*this, "lblWhat", "Reading the recording again for its report..."};
  ProgressBar prgRead{*this, "prgRead"};
  Button cmdCancel{*this, "cmdCancel", "&Cancel", Button::Role::Cancel};

 protected:
  void Load() override { done_ = false; }
  void Unload() override;

 private:
  bool done_ = false;
};

}  // namespace fathomline
