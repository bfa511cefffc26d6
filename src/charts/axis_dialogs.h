// The dialogs that set the range of an axis: frmYAxis for the left and the right one, frmXAxis for
// the time axis.
#pragma once

#include <string_view>

#include "charts/set_time_date.h"
#include "toolkit/chart.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

// The axis that was clicked, of one of the charts of a window.
struct AxisTarget {
  Window* window = nullptr;
  ControlArray<Chart>* charts = nullptr;
  Chart* chart = nullptr;
  AxisSide side = AxisSide::Left;

  Axis& ChosenAxis() const { return OfSide(*chart); }
  Axis& OfSide(Chart& of) const;
};

// What both dialogs do. Cancel changes nothing, and OK nothing while the ends are refused.
class AxisDialog : public Window {
 public:
  // Returns when the dialog is closed.
  void Open(const AxisTarget& target);

  CheckBox chkAutomatic;
  Frame frameMin;
  CheckBox chkAutMin;
  Frame frameMax;
  CheckBox chkAutMax;

 protected:
  struct Texts {
    std::string_view name;
    std::string_view caption;
    std::string_view automatic;
    std::string_view minimum;
    std::string_view maximum;
    std::string_view automaticMinimum;
    std::string_view automaticMaximum;
    std::string_view refusal;
  };

  AxisDialog(Desktop& desktop, const Texts& texts);

  void Load() override;
  void SetDialogContent(Control& minimum, Control& maximum);
  void Accept();

  const AxisTarget& Target() const { return target_; }
  // The controls of the two ends.
  virtual Control& MinimumControl() = 0;
  virtual Control& MaximumControl() = 0;
  virtual void ShowRange(const AxisRange& range) = 0;
  // What the two controls say.
  virtual double EnteredMinimum() = 0;
  virtual double EnteredMaximum() = 0;
  virtual void Applied() {}

 private:
  void EnableEnds();

  Texts texts_;
  AxisTarget target_;

 public:
  Button cmdOk{*this, "cmdOk", "OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "Cancel", Button::Role::Cancel};
};

class frmYAxis : public AxisDialog {
 public:
  explicit frmYAxis(Desktop& desktop);

  TextBox txtMin{frameMin, "txtMin"};
  TextBox txtMax{frameMax, "txtMax"};

 protected:
  Control& MinimumControl() override { return txtMin; }
  Control& MaximumControl() override { return txtMax; }
  void ShowRange(const AxisRange& range) override;
  double EnteredMinimum() override;
  double EnteredMaximum() override;
};

// Its OK gives the other charts of the window the same time axis.
class frmXAxis : public AxisDialog {
 public:
  frmXAxis(Desktop& desktop, frmSetTimeDate& setTimeDate);

  Button cmdStart{frameMin, "cmdStart", ""};
  Button cmdEnd{frameMax, "cmdEnd", ""};

 protected:
  Control& MinimumControl() override { return cmdStart; }
  Control& MaximumControl() override { return cmdEnd; }
  void ShowRange(const AxisRange& range) override;
  double EnteredMinimum() override;
  double EnteredMaximum() override;
  void Applied() override;

 private:
  void AskFor(Button& button, std::string_view word);

  frmSetTimeDate& setTimeDate_;
};

}  // namespace fathomline
