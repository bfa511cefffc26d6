// Boxes, file dialogs and page set-up on the desktop. They stand on the stack of whoever asked.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "toolkit/face.h"

class QDialog;
class QPrinter;
class QWidget;

namespace fathomline {

// Where a dialog stands, and what lets everything go on until it has been answered; false where it
// was not accepted.
struct DialogStand {
  QWidget* parent;
  std::function<bool(QDialog& dialog)> run;
};

Face::Reply ShowBox(const DialogStand& stand, const MessageBox& box);
// The path that the user has chosen; none where he has cancelled.
std::optional<std::string> ShowFileDialog(const DialogStand& stand, const FileQuestion& question);
void ShowPageSetupDialog(const DialogStand& stand, QPrinter& printer);

}  // namespace fathomline
