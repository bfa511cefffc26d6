#include "charts/axis_dialogs.h"

#include <string>

#include "base/format.h"
#include "base/text.h"
#include "decoding/coordinate_text.h"
#include "toolkit/desktop.h"

namespace fathomline {
namespace {

constexpr int kBesideChart = 900;
constexpr WindowPlace kPlace{0, 0, 4500, 3600};

constexpr std::string_view kMoment = "dd.mm.yyyy hh:nn:ss";

// The moment behind a caption of that form.
double ReadMoment(const std::string& text) {
  const auto number = [&text](std::size_t position, std::size_t digits) {
    return static_cast<int>(ReadNumber(Mid(text, position, digits)));
  };
  const DateTime date = DateFromParts(number(7, 4), number(4, 2), number(1, 2));
  const DateTime time = TimeFromParts(number(12, 2), number(15, 2), number(18, 2));
  return (date + time).days;
}

}  // namespace

Axis& AxisTarget::OfSide(Chart& of) const {
  switch (side) {
    case AxisSide::Left:
      return of.Left();
    case AxisSide::Right:
      return of.Right();
    case AxisSide::Bottom:
      break;
  }
  return of.Bottom();
}

AxisDialog::AxisDialog(Desktop& desktop, const Texts& texts)
    : Window(desktop, {.name = std::string(texts.name),
                       .caption = std::string(texts.caption),
                       .place = kPlace,
                       .style = WindowStyle::Dialog,
                       .resizable = false}),
      chkAutomatic(*this, "chkAutomatic", texts.automatic),
      frameMin(*this, "frameMin", texts.minimum),
      chkAutMin(frameMin, "chkAutMin", texts.automaticMinimum),
      frameMax(*this, "frameMax", texts.maximum),
      chkAutMax(frameMax, "chkAutMax", texts.automaticMaximum),
      texts_(texts) {
  for (CheckBox* box : {&chkAutomatic, &chkAutMin, &chkAutMax}) {
    box->onClick = [this] { EnableEnds(); };
  }
  cmdOk.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] { Close(); };
}

void AxisDialog::SetDialogContent(Control& minimum, Control& maximum) {
  SetContent(Layout::Column({chkAutomatic, Layout::Box(frameMax, Layout::Row({maximum, chkAutMax})),
                             Layout::Box(frameMin, Layout::Row({minimum, chkAutMin})),
                             Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void AxisDialog::Open(const AxisTarget& target) {
  target_ = target;
  OwningDesktop().ShowModal(*this);
}

void AxisDialog::Load() {
  // Shown on its own it has no axis to tell of.
  if (target_.chart == nullptr) return;
  const WindowPlace& chart = target_.window->Place();
  SetPlace({chart.left + kBesideChart, chart.top + kBesideChart, kPlace.width, kPlace.height});
  const Axis& axis = target_.ChosenAxis();
  chkAutomatic.SetChecked(axis.Automatic());
  chkAutMax.SetChecked(axis.AutomaticMaximum());
  chkAutMin.SetChecked(axis.AutomaticMinimum());
  ShowRange(axis.Range());
  EnableEnds();
}

void AxisDialog::EnableEnds() {
  for (Frame* frame : {&frameMin, &frameMax}) frame->SetEnabled(!chkAutomatic.Checked());
  MinimumControl().SetEnabled(!chkAutMin.Checked());
  MaximumControl().SetEnabled(!chkAutMax.Checked());
}

void AxisDialog::Accept() {
  if (target_.chart == nullptr) {
    Close();
    return;
  }
  Axis& axis = target_.ChosenAxis();
  const double maximum = chkAutMax.Checked() ? axis.Maximum() : EnteredMaximum();
  const double minimum = chkAutMin.Checked() ? axis.Minimum() : EnteredMinimum();
  if (maximum <= minimum) {
    OwningDesktop().Say(std::string(texts_.refusal));
    return;
  }
  axis.SetAutomatic(chkAutomatic.Checked());
  axis.SetAutomaticMaximum(chkAutMax.Checked());
  axis.SetAutomaticMinimum(chkAutMin.Checked());
  axis.SetMaximum(maximum);
  axis.SetMinimum(minimum);
  Applied();
  Close();
}

frmYAxis::frmYAxis(Desktop& desktop)
    : AxisDialog(desktop, {.name = "frmYAxis",
                           .caption = " Y-Axis",
                           .automatic = "Y-Axis Automatic",
                           .minimum = "Min value",
                           .maximum = "Max value",
                           .automaticMinimum = "Min Automatic",
                           .automaticMaximum = "Max Automatic",
                           .refusal = "Min higher than Max not allowed. Try again!"}) {
  SetDialogContent(txtMin, txtMax);
}

void frmYAxis::ShowRange(const AxisRange& range) {
  txtMax.SetText(Format(range.high, "0.0"));
  txtMin.SetText(Format(range.low, "0.0"));
}

double frmYAxis::EnteredMinimum() {
  return NumberFromText(txtMin.Text());
}

double frmYAxis::EnteredMaximum() {
  return NumberFromText(txtMax.Text());
}

frmXAxis::frmXAxis(Desktop& desktop, frmSetTimeDate& setTimeDate)
    : AxisDialog(desktop, {.name = "frmXAxis",
                           .caption = "X-Axis",
                           .automatic = "X-Axis Automatic",
                           .minimum = "Start time",
                           .maximum = "End time",
                           .automaticMinimum = "Automatic",
                           .automaticMaximum = "Automatic",
                           .refusal = "Start time later than End time not allowed. Try again!"}),
      setTimeDate_(setTimeDate) {
  cmdStart.onClick = [this] { AskFor(cmdStart, "Start"); };
  cmdEnd.onClick = [this] { AskFor(cmdEnd, "End"); };
  SetDialogContent(cmdStart, cmdEnd);
}

void frmXAxis::ShowRange(const AxisRange& range) {
  cmdStart.SetText(FormatDateTime({range.low}, kMoment));
  cmdEnd.SetText(FormatDateTime({range.high}, kMoment));
}

double frmXAxis::EnteredMinimum() {
  return ReadMoment(cmdStart.Text());
}

double frmXAxis::EnteredMaximum() {
  return ReadMoment(cmdEnd.Text());
}

void frmXAxis::AskFor(Button& button, std::string_view word) {
  if (const auto moment = setTimeDate_.Ask(word, {ReadMoment(button.Text())})) {
    button.SetText(FormatDateTime(*moment, kMoment));
  }
}

void frmXAxis::Applied() {
  const Axis& axis = Target().ChosenAxis();
  for (Chart& chart : *Target().charts) {
    if (&chart == Target().chart) continue;
    Axis& other = chart.Bottom();
    other.SetAutomatic(axis.Automatic());
    other.SetAutomaticMaximum(axis.AutomaticMaximum());
    other.SetAutomaticMinimum(axis.AutomaticMinimum());
    other.SetMaximum(axis.Maximum());
    other.SetMinimum(axis.Minimum());
  }
}

}  // namespace fathomline
