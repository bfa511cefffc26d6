#include "session/figure_windows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

namespace fathomline {
namespace {

// What a window needs to be read, in twips.
constexpr int kLeastWidth = 380 * kTwipsPerPixel;
constexpr int kLeastHeight = 210 * kTwipsPerPixel;
constexpr int kIcons = 32 * kTwipsPerPixel;

// Those first that say most.
constexpr auto kOrder = std::to_array<std::string_view>(
    {"frmStatistics",    "frmTimeSeriesGGA", "frmTimeSeriesGNS", "frmTimeSeriesRMC",
     "frmTimeSeriesGLL", "frmScatter",       "frmSkyplot",       "frmNumerics",
     "frmAISTargets",    "frmTimeSeriesHDT", "frmTimeSeriesATT", "frmTimeSeriesVTG",
     "frmARPATargets",   "frmTimeSeriesVHW", "frmTimeSeriesDBT", "frmTimeSeriesGSV",
     "frmTimeSeriesGSA", "frmTimeSeriesROT", "frmTimeSeriesGST", "frmStatisticsSNR"});

// The windows of a system that are shown, in that order.
std::vector<Window*> FiguresOf(const Desktop& desktop, int system) {
  std::vector<Window*> figures;
  for (const std::string_view name : kOrder) {
    for (Window* const window : desktop.ShownChildren()) {
      if (window->Name() == name && window->Index() == system) figures.push_back(window);
    }
  }
  return figures;
}

int Capacity(const WindowPlace& room) {
  return (room.width / kLeastWidth) * (room.height / kLeastHeight);
}

// Puts the windows into equal rows, which the last one fills with fewer and wider ones.
void Fill(const WindowPlace& room, std::vector<Window*>::iterator begin,
          std::vector<Window*>::iterator end) {
  const int count = static_cast<int>(end - begin);
  if (count == 0) return;
  // As near as can be to the shape that a window needs.
  int rows = 1;
  double best = 0.0;
  for (int tried = 1; tried <= count; ++tried) {
    const int columns = (count + tried - 1) / tried;
    const double fit = std::min(static_cast<double>(room.width) / columns / kLeastWidth,
                                static_cast<double>(room.height) / tried / kLeastHeight);
    if (fit > best) {
      best = fit;
      rows = tried;
    }
  }
  for (int row = 0; row < rows; ++row) {
    // Later rows take what does not divide evenly.
    const int first = count * row / rows;
    const int columns = count * (row + 1) / rows - first;
    const int top = room.height * row / rows;
    const int height = room.height * (row + 1) / rows - top;
    for (int column = 0; column < columns; ++column) {
      Window& window = **(begin + first + column);
      const int left = room.width * column / columns;
      window.SetState(WindowState::Normal);
      window.SetPlace(
          {room.left + left, room.top + top, room.width * (column + 1) / columns - left, height});
    }
  }
}

void ArrangeAround(Window& status, std::vector<Window*> figures, const Desktop::Area& area) {
  const int width = status.Place().width;
  const int strip = std::min(status.Place().height, area.height / 2);
  const auto rooms = [&](int icons) {
    const int height = area.height - icons;
    const int top = std::max(height - strip, 0);
    return std::array<WindowPlace, 2>{
        {{0, 0, area.width, top}, {width, top, area.width - width, height - top}}};
  };
  // The strip beside the status is lower than a window should be, and good enough for one or two.
  const auto beside = [&](const WindowPlace& room) {
    return std::max(room.width / kLeastWidth, 0);
  };
  const int count = static_cast<int>(figures.size());
  auto [above, below] = rooms(0);
  if (count > Capacity(above) + beside(below)) {
    above = rooms(kIcons)[0];
    below = rooms(kIcons)[1];
  }
  const int inAbove = std::min(count, std::max(Capacity(above), 1));
  const int inBelow = std::min(count - inAbove, beside(below));
  const auto first = figures.begin();
  Fill(above, first, first + inAbove);
  Fill(below, first + inAbove, first + inAbove + inBelow);
  std::for_each(first + inAbove + inBelow, figures.end(),
                [](Window* window) { window->SetState(WindowState::Minimised); });
  status.SetPlace({0, below.top, width, status.Place().height});
}

}  // namespace

void OpenFigureWindows(Desktop& desktop, Windows& windows, int system) {
  windows.OpenFigures(system);
  ArrangeAround(windows.offlineStatus, FiguresOf(desktop, system), desktop.ChildArea());
}

}  // namespace fathomline
