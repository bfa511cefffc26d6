#include "windows/layouts_dialog.h"

#include "base/text.h"
#include "toolkit/desktop.h"

namespace fathomline {

frmLayouts::frmLayouts(Desktop& desktop, LayoutDesk& desk)
    : Window(desktop, {.name = "frmLayouts",
                       .caption = "Layouts",
                       .place = {2500, 2000, 5500, 4500},
                       .style = WindowStyle::Dialog}),
      desk_(desk) {
  lstLayouts.onChoose = [this] { txtName.SetText(lstLayouts.Text()); };
  cmdLoad.onClick = [this] { LoadNamed(); };
  cmdSave.onClick = [this] { SaveNamed(); };
  cmdDelete.onClick = [this] { DeleteNamed(); };
  cmdCancel.onClick = [this] { Close(); };
  SetContent(
      Layout::Column({Layout::Form({{"Layouts :", lstLayouts}, {"&Name :", txtName}}),
                      Layout::Row({Layout::Space(), cmdLoad, cmdSave, cmdDelete, cmdCancel})}));
}

void frmLayouts::Load() {
  ListNames();
}

void frmLayouts::ListNames() {
  lstLayouts.Clear();
  for (const std::string& name : desk_.LayoutNames()) lstLayouts.Add(name);
  cmdLoad.SetEnabled(lstLayouts.Count() > 0);
  cmdDelete.SetEnabled(lstLayouts.Count() > 0);
}

std::string frmLayouts::Name() const {
  return std::string(Trim(txtName.Text()));
}

bool frmLayouts::Listed(const std::string& name) const {
  for (int i = 0; i < lstLayouts.Count(); ++i) {
    if (lstLayouts.EntryText(i) == name) return true;
  }
  return false;
}

bool frmLayouts::Sure(const std::string& question) {
  return OwningDesktop().Ask(
             {.text = question, .icon = BoxIcon::Question, .buttons = BoxButtons::YesNo}) ==
         Answer::Yes;
}

void frmLayouts::LoadNamed() {
  if (!Listed(Name())) {
    OwningDesktop().Say("Choose one of the layouts in the list.");
    return;
  }
  const std::string name = Name();
  Close();
  desk_.LoadLayout(name);
}

void frmLayouts::SaveNamed() {
  if (Name().empty()) {
    OwningDesktop().Say("Type a name for the layout.");
    return;
  }
  if (Listed(Name()) && !Sure("There is a layout \"" + Name() + "\". Replace it?")) return;
  desk_.SaveLayout(Name());
  Close();
}

void frmLayouts::DeleteNamed() {
  if (!Listed(Name())) {
    OwningDesktop().Say("Choose one of the layouts in the list.");
    return;
  }
  if (!Sure("Delete the layout \"" + Name() + "\"?")) return;
  desk_.DeleteLayout(Name());
  txtName.SetText("");
  ListNames();
}

}  // namespace fathomline
