// frmLayouts: keeps how the windows stand under a name, and brings that back.
#pragma once

#include <string>
#include <vector>

#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

// Where the layouts are kept. Names are compared as they are written.
class LayoutDesk {
 public:
  virtual ~LayoutDesk() = default;
  // In the order in which they were first saved.
  virtual std::vector<std::string> LayoutNames() const = 0;
  // Keeps how the windows stand now, in place of what had that name.
  virtual void SaveLayout(const std::string& name) = 0;
  // Lets the windows stand so. A name that is not there does nothing.
  virtual void LoadLayout(const std::string& name) = 0;
  virtual void DeleteLayout(const std::string& name) = 0;
};

class frmLayouts : public Window {
 public:
  frmLayouts(Desktop& desktop, LayoutDesk& desk);

  Choices lstLayouts{*this, "lstLayouts", ChoicesKind::List};
  TextBox txtName{*this, "txtName"};
  Button cmdLoad{*this, "cmdLoad", "&Load", Button::Role::Default};
  Button cmdSave{*this, "cmdSave", "&Save"};
  Button cmdDelete{*this, "cmdDelete", "&Delete"};
  Button cmdCancel{*this, "cmdCancel", "&Close", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  void ListNames();
  // The name that has been typed or chosen, without outer blanks.
  std::string Name() const;
  bool Listed(const std::string& name) const;
  bool Sure(const std::string& question);
  void LoadNamed();
  void SaveNamed();
  void DeleteNamed();

  LayoutDesk& desk_;
};

}  // namespace fathomline
