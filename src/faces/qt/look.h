// The look of the program: style, colours, icon.
#pragma once

#include <QColor>
#include <QIcon>
#include <optional>

#include "base/look.h"

class QApplication;

namespace fathomline {

// Style, palette and icon of the whole program.
void ApplyLook(QApplication& application);

// The program's icon, or the same in the colour of a system.
QIcon ProgramIcon(std::optional<Colour> colour = {});

// A colour of the table in the look that the program has at present.
QColor PaintOf(Colour colour, ColourUse use = ColourUse::Line);

}  // namespace fathomline
