// The look of the program: style, colours, icon.
#pragma once

#include <QIcon>
#include <optional>

#include "base/colour.h"

class QApplication;

namespace fathomline {

// Style, palette and icon of the whole program.
void ApplyLook(QApplication& application);

// The program's icon, or the same in the colour of a system.
QIcon ProgramIcon(std::optional<Colour> colour = {});

// A text colour that can be read on a light window, as near to the given one as that allows.
QColor ReadableText(const QColor& colour);

}  // namespace fathomline
