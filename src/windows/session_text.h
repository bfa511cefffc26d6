// frmDocument: the free text of the session, which the report prints.
#pragma once

#include "records/records.h"
#include "toolkit/controls.h"
#include "toolkit/window.h"

namespace fathomline {

class frmDocument : public Window {
 public:
  frmDocument(Desktop& desktop, Records& records);

  TextBox txtText{*this, "txtText", "", TextBox::Lines::Many};
  Button cmdOk{*this, "cmdOk", "&OK"};
  Button cmdCancel{*this, "cmdCancel", "&Cancel", Button::Role::Cancel};

 protected:
  void Load() override;

 private:
  void Ok();

  Records& records_;
};

}  // namespace fathomline
