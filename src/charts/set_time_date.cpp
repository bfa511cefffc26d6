#include "charts/set_time_date.h"

#include <algorithm>
#include <string>

#include "base/format.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr int kYearsAround = 20;

// Fills the list with first to last and shows the chosen one.
void Fill(Choices& list, int first, int last, int chosen) {
  list.Clear();
  for (int n = first; n <= last; ++n) list.Add(Format(n, "00"), n);
  list.ShowChoice(chosen - first);
}

int ChosenNumber(const Choices& list) {
  return list.EntryData(list.Choice());
}

}  // namespace

int DaysOfMonth(int year, int month) {
  if (month == 2) return year % 4 == 0 ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

frmSetTimeDate::frmSetTimeDate(Desktop& desktop)
    : Window(desktop, {.name = "frmSetTimeDate",
                       .caption = "Set Date & Time",
                       .place = {1500, 1500, 6000, 4500},
                       .style = WindowStyle::Dialog,
                       .resizable = false}) {
  for (Choices* list : {&lstYear, &lstMonth}) {
    list->onChoose = [this] {
      FillDays(ChosenNumber(lstDay));
      ShowChosen();
    };
  }
  for (Choices* list : {&lstDay, &lstHour, &lstMin, &lstSec}) {
    list->onChoose = [this] { ShowChosen(); };
  }
  cmdOk.onClick = [this] {
    answer_ = Chosen();
    Close();
  };
  cmdCancel.onClick = [this] { Close(); };
  SetContent(Layout::Column({lblTitle,
                             Layout::Row({Layout::Column({Layout::Words("Year"), lstYear}),
                                          Layout::Column({Layout::Words("Month"), lstMonth}),
                                          Layout::Column({Layout::Words("Day"), lstDay}),
                                          Layout::Column({Layout::Words("Hour"), lstHour}),
                                          Layout::Column({Layout::Words("Min"), lstMin}),
                                          Layout::Column({Layout::Words("Sec"), lstSec})}),
                             Layout::Row({lblDate, lblTime, Layout::Space(), cmdOk, cmdCancel})}));
}

std::optional<DateTime> frmSetTimeDate::Ask(std::string_view word, DateTime moment) {
  word_ = word;
  moment_ = moment;
  answer_.reset();
  OwningDesktop().ShowModal(*this);
  return answer_;
}

void frmSetTimeDate::Load() {
  lblTitle.SetText("Set X-Axis " + std::string(word_) + " Date & Time");
  const CalendarTime shown = ToCalendar(moment_);
  Fill(lstYear, shown.year - kYearsAround, shown.year + kYearsAround, shown.year);
  lstMonth.Clear();
  for (int month = 1; month <= 12; ++month) {
    lstMonth.Add(FormatDateTime(DateFromParts(shown.year, month, 1), "Mmm"), month);
  }
  lstMonth.ShowChoice(shown.month - 1);
  FillDays(shown.day);
  Fill(lstHour, 0, 23, shown.hour);
  Fill(lstMin, 0, 59, shown.minute);
  Fill(lstSec, 0, 59, shown.second);
  ShowChosen();
}

// A day beyond the end of the month moves back to its last one.
void frmSetTimeDate::FillDays(int chosen) {
  const int days = DaysOfMonth(ChosenNumber(lstYear), ChosenNumber(lstMonth));
  Fill(lstDay, 1, days, std::min(chosen, days));
}

DateTime frmSetTimeDate::Chosen() const {
  return DateFromParts(ChosenNumber(lstYear), ChosenNumber(lstMonth), ChosenNumber(lstDay)) +
         TimeFromParts(ChosenNumber(lstHour), ChosenNumber(lstMin), ChosenNumber(lstSec));
}

void frmSetTimeDate::ShowChosen() {
  lblDate.SetText(FormatDateTime(Chosen(), "dd mmm yyyy"));
  lblTime.SetText(TimeOfDayText(Chosen()));
}

}  // namespace fathomline
