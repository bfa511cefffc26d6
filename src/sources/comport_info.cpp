#include "sources/comport_info.h"

namespace fathomline {

frmComportInfo::frmComportInfo(Desktop& desktop)
    : Window(desktop, {.name = "frmComportInfo",
                       .caption = "Comport Info",
                       .place = {3000, 2500, 6800, 4200},
                       .style = WindowStyle::Dialog,
                       .resizable = false}) {
  cmdOk.onClick = [this] { Close(); };
  SetContent(Layout::Column({lblInfo, Layout::Row({Layout::Space(), cmdOk})}));
}

}  // namespace fathomline
