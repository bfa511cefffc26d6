// The look of the program: style, colours, icon.
#pragma once

#include <QColor>
#include <QIcon>
#include <optional>

#include "base/look.h"

class QApplication;

namespace fathomline {

// Style, palette and icon of the whole program. Returns whether that changes light to dark or back.
bool ApplyLook(QApplication& application, LookChoice choice);
// What it is painted as at present.
LookMode PresentLook();

// The program's icon, or the same in the colour of a system and with its digit.
QIcon ProgramIcon(std::optional<Colour> colour = {}, int system = 0);

// A colour of the table in the look that the program has at present.
QColor PaintOf(Colour colour, ColourUse use = ColourUse::Line);

}  // namespace fathomline
