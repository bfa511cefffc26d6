// frmNewWindow: opens a view of a chosen system.
#pragma once

#include <cstdint>
#include <functional>

#include "records/records.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

// In the order of the list. The SNR windows stand in the order of their constellations.
enum class ViewKind : std::uint8_t {
  Numerics,
  Statistics,
  TimeSeries,
  Scatter,
  Skyplot,
  ARPATargets,
  NMEA,
  AISTargets,
  SNRGPS,
  SNRSBAS,
  SNRGLONASS,
  SNRBeiDou,
  SNRGalileo,
};

class frmNewWindow : public Window {
 public:
  // `open` opens a view of a system, or brings it forward.
  frmNewWindow(Desktop& desktop, const Records& records,
               std::function<void(ViewKind kind, int system)> open);

  Choices cmbSystem{*this, "cmbSystem", ChoicesKind::Combo};
  Choices cmbType{*this, "cmbType", ChoicesKind::List};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "&Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  void Ok();

  const Records& records_;
  std::function<void(ViewKind, int)> open_;
};

}  // namespace fathomline
