#include "windows/session_text.h"

#include <string>

#include "base/text.h"

namespace fathomline {
namespace {

// Text boxes of some desktops part lines with a line feed alone.
std::string WithFullLineEnds(const std::string& text) {
  std::string lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) lines += '\r';
    lines += text[i];
  }
  return lines;
}

}  // namespace

frmDocument::frmDocument(Desktop& desktop, Records& records)
    : Window(desktop, {.name = "frmDocument",
                       .caption = "Session Information",
                       .place = {2000, 1500, 7500, 5500},
                       .style = WindowStyle::Dialog}),
      records_(records) {
  cmdOk.onClick = [this] { Ok(); };
  cmdCancel.onClick = [this] { Close(); };
  SetContent(Layout::Column({txtText, Layout::Row({Layout::Space(), cmdOk, cmdCancel})}));
}

void frmDocument::Load() {
  txtText.SetText(records_.SessionInfo);
}

void frmDocument::Ok() {
  records_.SessionInfo = WithoutQuotes(WithFullLineEnds(txtText.Text()));
  Close();
}

}  // namespace fathomline
