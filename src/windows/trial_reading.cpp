#include "windows/trial_reading.h"

#include "toolkit/desktop.h"

namespace fathomline {

frmTrialReading::frmTrialReading(Desktop& desktop)
    : Window(desktop, {.name = "frmTrialReading",
                       .caption = "Trial Report",
                       .place = {3000, 2500, 6000, 1800},
                       .style = WindowStyle::Dialog}) {
  cmdCancel.onClick = [this] { Close(CloseReason::User); };
  SetContent(Layout::Column({lblWhat, prgRead, Layout::Row({Layout::Space(), cmdCancel})}));
}

void frmTrialReading::Done() {
  done_ = true;
  Close();
}

void frmTrialReading::Unload() {
  if (!done_ && onCancel) onCancel();
}

}  // namespace fathomline
