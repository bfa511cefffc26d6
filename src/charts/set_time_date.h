// frmSetTimeDate: one date and time, chosen from lists.
#pragma once

#include <optional>
#include <string_view>

#include "base/datetime.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

// Days of a month, 1 to 12. Every fourth year is a leap year here.
int DaysOfMonth(int year, int month);

class frmSetTimeDate : public Window {
 public:
  explicit frmSetTimeDate(Desktop& desktop);

  // Opens on the moment, for the "Start" or the "End" of the time axis; returns the chosen one, or
  // nothing when cancelled.
  std::optional<DateTime> Ask(std::string_view word, DateTime moment);

  Label lblTitle{*this, "lblTitle"};
  Choices lstYear{*this, "lstYear", ChoicesKind::List};
  Choices lstMonth{*this, "lstMonth", ChoicesKind::List};
  Choices lstDay{*this, "lstDay", ChoicesKind::List};
  Choices lstHour{*this, "lstHour", ChoicesKind::List};
  Choices lstMin{*this, "lstMin", ChoicesKind::List};
  Choices lstSec{*this, "lstSec", ChoicesKind::List};
  Label lblDate{*this, "lblDate"};
  Label lblTime{*this, "lblTime"};
  Button cmdOk{*this, "cmdOk", "OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  void FillDays(int chosen);
  DateTime Chosen() const;
  void ShowChosen();

  std::string_view word_;
  DateTime moment_;
  std::optional<DateTime> answer_;
};

}  // namespace fathomline
