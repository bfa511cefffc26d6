#include "pipeline/main_window.h"

#include "platform/dialogs.h"
#include "platform/numbers.h"

namespace fathomline {
namespace {

constexpr const char* kVersionText = "v 3.02a - 26 Sep 2019 ";
constexpr WindowPlace kDefaultPlace{1000, 1000, 13000, 13000};

}  // namespace

frmMain::frmMain(Desktop& desktop)
    : Window(desktop, {.name = "frmMain",
                       .caption = std::string(kProgramTitle) + " - Version : " + kVersionText,
                       .place = kDefaultPlace,
                       .style = WindowStyle::Main}) {}

void frmMain::ShowChecksumErrors(int system, std::int32_t count) {
  sbStatusBar.SetPanelText(kChecksumPanel + system, PlainText(count));
}

}  // namespace fathomline
