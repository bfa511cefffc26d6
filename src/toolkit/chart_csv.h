// All charts of a window over time as one table.
#pragma once

#include <iosfwd>

namespace fathomline {

class Window;

// The window has charts, and time is the bottom axis of all of them.
bool HasChartsOverTime(const Window& window);

// All points that the charts hold as comma-separated values, whatever part of them is shown: a row
// for each moment in UTC, with thousandths of a second where any point needs them, and a column for
// each series, with its unit in brackets behind its title. A cell is empty where the series has no
// point; a Gantt bar stands at its end. Series of one title are told apart by the title of their
// chart or its left axis. Satellites without a point have no column.
void WriteWindowCsv(const Window& window, std::ostream& out);

}  // namespace fathomline
