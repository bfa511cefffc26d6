#include "windows/about_box.h"

#include "base/dialogs.h"
#include "windows/main_window.h"

namespace fathomline {

frmAbout::frmAbout(Desktop& desktop)
    : Window(desktop, {.name = "frmAbout",
                       .caption = std::string("About ") + kProgramTitle,
                       .place = {3000, 2500, 5500, 2800},
                       .style = WindowStyle::Dialog,
                       .resizable = false}) {
  lblTitle.SetText(kProgramTitle);
  lblVersion.SetText(std::string("Version : ") + kVersionText);
  cmdOk.onClick = [this] { Close(); };
  SetContent(Layout::Column(
      {lblTitle, lblVersion, lblDescription, Layout::Row({Layout::Space(), cmdOk})}));
}

}  // namespace fathomline
