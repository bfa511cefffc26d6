// frmSatellites: the satellites of a receiver of today, of all constellations at once and with all
// of their signals: where they stand and have gone, how strong they are, which are used.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "base/settings.h"
#include "records/records.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/grid.h"
#include "toolkit/picture.h"
#include "toolkit/window.h"
#include "watch/watch.h"

namespace fathomline {

class frmSatellites : public Window {
 public:
  frmSatellites(Desktop& desktop, const Records& records, Watch& watch, SettingsStore& settings);

  void Refresh() override;

  Choices cmbSystem{*this, "cmbSystem", ChoicesKind::Combo};
  Label lblSolution{*this, "lblSolution"};
  Picture picSky{*this, "picSky"};
  Grid fgSatellites;
  Picture picSignals{*this, "picSignals"};

 protected:
  void Load() override;
  void Unload() override;

 private:
  void ChooseSystem();
  void ChooseOrder(int column);
  void ShowSolution();
  void ShowTable();

  const Records& records_;
  Watch& watch_;
  SettingsStore& settings_;
  std::uint64_t shown_ = 0;
  bool due_ = true;
  std::chrono::steady_clock::time_point drawn_{};
  Picture::Size sky_;
  Picture::Size signals_;
};

}  // namespace fathomline
