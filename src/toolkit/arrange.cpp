// Places for the child windows of the main window. Fixed windows take part with the size they have.
#include <algorithm>
#include <cmath>
#include <vector>

#include "toolkit/desktop.h"

namespace fathomline {

namespace {

constexpr int kCascadeStep = 450;
constexpr int kSmallest = 1500;
// A frame with its title, and some of what is in it.
constexpr int kLeastWidth = 2700;
constexpr int kLeastHeight = 1350;

// A window that is larger than its share overlaps its neighbours rather than standing out of the
// area.
void Put(Window& window, WindowPlace place, const Desktop::Area& area) {
  if (window.Resizable()) {
    place.width = std::max(place.width, kLeastWidth);
    place.height = std::max(place.height, kLeastHeight);
  } else {
    place.width = window.Place().width;
    place.height = window.Place().height;
  }
  place.left = std::max(std::min(place.left, area.width - place.width), 0);
  place.top = std::max(std::min(place.top, area.height - place.height), 0);
  window.SetState(WindowState::Normal);
  window.SetPlace(place);
}

void Cascade(const std::vector<Window*>& windows, const Desktop::Area& area) {
  const int width = std::max(area.width * 3 / 4, kSmallest);
  const int height = std::max(area.height * 3 / 4, kSmallest);
  const int steps = std::max(std::min(area.width - width, area.height - height) / kCascadeStep, 1);
  int step = 0;
  for (Window* window : windows) {
    Put(*window, {step * kCascadeStep, step * kCascadeStep, width, height}, area);
    step = (step + 1) % steps;
  }
}

// Divides the windows into lanes side by side, the later lanes taking what does not divide evenly.
// `across` exchanges the two directions.
void Tile(const std::vector<Window*>& windows, const Desktop::Area& area, bool across) {
  const int count = static_cast<int>(windows.size());
  if (count == 0) return;
  const int lanes = static_cast<int>(std::sqrt(static_cast<double>(count)));
  const int breadth = (across ? area.height : area.width) / lanes;
  const int length = across ? area.width : area.height;
  std::size_t next = 0;
  for (int lane = 0; lane < lanes; ++lane) {
    const int inLane = count / lanes + (lane >= lanes - count % lanes ? 1 : 0);
    for (int i = 0; i < inLane; ++i) {
      const int start = length * i / inLane;
      const int size = length * (i + 1) / inLane - start;
      WindowPlace place{lane * breadth, start, breadth, size};
      if (across) place = {start, lane * breadth, size, breadth};
      Put(*windows[next++], place, area);
    }
  }
}

}  // namespace

void Desktop::Arrange(Arrangement arrangement) {
  if (arrangement == Arrangement::Icons) {
    face_.ArrangeIcons();
    return;
  }
  const std::vector<Window*> windows = WindowsToArrange();
  if (arrangement == Arrangement::Cascade) {
    Cascade(windows, childArea_);
  } else {
    Tile(windows, childArea_, arrangement == Arrangement::TileVertically);
  }
}

}  // namespace fathomline
