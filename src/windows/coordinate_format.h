// frmGeoFormat: how coordinates are shown everywhere.
#pragma once

#include "records/records.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

class frmGeoFormat : public Window {
 public:
  frmGeoFormat(Desktop& desktop, Records& records);

  // Entry 0 degrees and minutes, entry 1 degrees, minutes and seconds.
  Choices optFormat{
      *this, "optFormat", ChoicesKind::Options, {"dd\u00B0 mm.mmmm' N", "dd\u00B0 mm' ss.ss\" N"}};
  Choices cmbDecimals{*this, "cmbDecimals", ChoicesKind::Combo};
  Label lblExample{*this, "lblExample"};
  Button cmdOk{*this, "cmdOk", "&OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "&Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  bool IsDMS() const { return optFormat.Choice() == 1; }
  void OfferDecimals(int wanted);
  void ShowExample();
  void Ok();

  Records& records_;
};

}  // namespace fathomline
