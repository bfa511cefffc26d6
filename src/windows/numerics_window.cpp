#include "windows/numerics_window.h"

#include <string>
#include <utility>

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{0, 3000, 5500, 9000};
constexpr std::string_view kEmptyCell = "           n/a";

template <auto Member>
void Copy(const SystemMessages& messages, NumericsRecord& latest) {
  const auto& record = (messages.*Member).Record;
  using Kind = std::remove_cvref_t<decltype(record)>;
  // A height that does not fit is a fault of the sentence, not of whoever looks at it later.
  if constexpr (requires { record.GeoidalSeparation; }) {
    EllipsoidalHeight(record.Altitude, record.GeoidalSeparation);
  }
  // Texts within are assigned into what they hold, without an allocation.
  if (auto* const kept = std::get_if<Kind>(&latest)) {
    *kept = record;
  } else {
    latest = record;
  }
}

struct Source {
  SentenceType type;
  void (*copy)(const SystemMessages& messages, NumericsRecord& latest);
};
constexpr std::array<Source, 12> kSources = {{
    {SentenceType::GGA, Copy<&SystemMessages::GGA>},
    {SentenceType::GNS, Copy<&SystemMessages::GNS>},
    {SentenceType::GLL, Copy<&SystemMessages::GLL>},
    {SentenceType::RMC, Copy<&SystemMessages::RMC>},
    {SentenceType::ZDA, Copy<&SystemMessages::ZDA>},
    {SentenceType::VTG, Copy<&SystemMessages::VTG>},
    {SentenceType::HDT, Copy<&SystemMessages::HDT>},
    {SentenceType::ATT, Copy<&SystemMessages::ATT>},
    {SentenceType::ROT, Copy<&SystemMessages::ROT>},
    {SentenceType::VHW, Copy<&SystemMessages::VHW>},
    {SentenceType::DBT, Copy<&SystemMessages::DBT>},
    {SentenceType::GST, Copy<&SystemMessages::GST>},
}};

}  // namespace

frmNumerics::SentenceFrame::SentenceFrame(Window& window, const NumericsGrid& table)
    : design(table), frame(window, table.frame, table.frameCaption) {
  if (table.rows.empty()) {
    label.emplace_back(frame, "lbl" + ToText(table.type), "See Skyplot Window");
  } else {
    grid.emplace_back(frame, table.grid, static_cast<int>(table.rows.size()) + 1, 2);
  }
}

std::deque<frmNumerics::SentenceFrame> frmNumerics::MakeFrames(Window& window) {
  std::deque<SentenceFrame> frames;
  for (const NumericsGrid& design : kNumericsGrids) frames.emplace_back(window, design);
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
    frame.frame.SetVisible(Setup().Analyses(frame.design.type));
    if (frame.grid.empty()) continue;
    Grid& grid = frame.grid.front();
    grid.Set(0, 1, "Current value");
    int row = 0;
    for (const std::string_view caption : frame.design.rows) {
      grid.Set(++row, 0, caption);
      grid.Set(row, 1, kEmptyCell);
    }
  }
}

frmNumerics::SentenceFrame* frmNumerics::Find(SentenceType type) {
  for (SentenceFrame& frame : frames_) {
    if (frame.design.type == type) return &frame;
  }
  return nullptr;
}

Grid& frmNumerics::GridOf(SentenceType type) {
  SentenceFrame* const found = Find(type);
  if (found == nullptr || found->grid.empty()) Raise(FaultNumber::OutOfRange);
  return found->grid.front();
}

void frmNumerics::UpdateNumerics(SentenceType type) {
  for (const Source& source : kSources) {
    if (source.type != type) continue;
    SentenceFrame* const frame = Find(type);
    if (frame == nullptr || !Setup().Analyses(type)) return;
    source.copy(records_.Messages[Index()], frame->latest);
    frame->due = true;
    return;
  }
}

void frmNumerics::Refresh() {
  const CoordinateForm form{records_.CoordinateFormatIsDMS, records_.CoordinateDecimals};
  for (SentenceFrame& frame : frames_) {
    if (!std::exchange(frame.due, false)) continue;
    int row = 0;
    for (const std::string& text : NumericsValues(frame.latest, form)) {
      frame.grid.front().Set(++row, 1, text);
    }
  }
}

}  // namespace fathomline
