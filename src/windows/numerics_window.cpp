#include "windows/numerics_window.h"

#include <string>
#include <utility>

#include "views/definitions.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{0, 3000, 5500, 9000};
constexpr std::string_view kEmptyCell = "           n/a";

}  // namespace

frmNumerics::SentenceFrame::SentenceFrame(Window& window, std::unique_ptr<SentenceNumerics> shown)
    : numerics(std::move(shown)),
      type(numerics->Type()),
      frame(window, "frame" + ToText(type), ToText(type) + " Numerics") {
  frame.SetToolTip(NameOfSentence(type));
  if (const int rows = static_cast<int>(numerics->Captions().size()); rows == 0) {
    label.emplace_back(frame, "lbl" + ToText(type), "See Skyplot Window");
  } else {
    grid.emplace_back(frame, "fg" + ToText(type), rows + 1, 2);
  }
}

std::deque<frmNumerics::SentenceFrame> frmNumerics::MakeFrames(Window& window) {
  std::deque<SentenceFrame> frames;
  for (auto& numerics : MakeNumerics()) frames.emplace_back(window, std::move(numerics));
  return frames;
}

frmNumerics::frmNumerics(const ViewSurroundings& surroundings, int system)
    : SystemView(surroundings, system,
                 {.name = "frmNumerics",
                  .caption = "Numerics ",
                  .place = kDefaultPlace,
                  .placeKey = "Numerics",
                  .placeOfItsOwn = false,
                  .icon = ViewIcon::OfEverySystem,
                  .flag = WindowFlag::Numerics}) {
  std::vector<Layout> rows;
  for (SentenceFrame& frame : frames_) {
    Layout content = frame.grid.empty() ? Layout(frame.label.front()) : Layout(frame.grid.front());
    rows.push_back(Layout::Box(frame.frame, std::move(content)));
  }
  SetContent(Layout::Column(std::move(rows)));
}

void frmNumerics::LoadView() {
  for (SentenceFrame& frame : frames_) {
    frame.due = false;
    frame.frame.SetVisible(Setup().Analyses(frame.type));
    if (frame.grid.empty()) continue;
    Grid& grid = frame.grid.front();
    grid.Set(0, 1, "Current value");
    int row = 0;
    for (const std::string_view caption : frame.numerics->Captions()) {
      grid.Set(++row, 0, caption);
      grid.Set(row, 1, kEmptyCell);
    }
    DefineHeads(grid, DefinedTable::Numerics);
  }
}

frmNumerics::SentenceFrame* frmNumerics::Find(SentenceType type) {
  for (SentenceFrame& frame : frames_) {
    if (frame.type == type) return &frame;
  }
  return nullptr;
}

Grid& frmNumerics::GridOf(SentenceType type) {
  SentenceFrame* const found = Find(type);
  if (found == nullptr || found->grid.empty()) Raise(FaultNumber::OutOfRange);
  return found->grid.front();
}

void frmNumerics::UpdateNumerics(SentenceType type) {
  SentenceFrame* const frame = Find(type);
  if (frame == nullptr || frame->grid.empty() || !Setup().Analyses(type)) return;
  frame->numerics->Keep(records_.Messages[Index()]);
  frame->due = true;
}

void frmNumerics::Refresh() {
  const CoordinateForm form{records_.CoordinateFormatIsDMS, records_.CoordinateDecimals};
  for (SentenceFrame& frame : frames_) {
    if (!std::exchange(frame.due, false)) continue;
    int row = 0;
    for (const std::string& text : frame.numerics->Texts(form)) {
      frame.grid.front().Set(++row, 1, text);
    }
  }
}

}  // namespace fathomline
