#include "views/system_view.h"

#include <algorithm>

#include "base/numbers.h"
#include "toolkit/desktop.h"
#include "toolkit/window_places.h"

namespace fathomline {

SystemView::SystemView(const ViewSurroundings& surroundings, int system,
                       const SystemViewDesign& design)
    : Window(surroundings.desktop, {.name = design.name,
                                    .index = system,
                                    .caption = design.caption,
                                    .place = design.place,
                                    .part = design.part}),
      records_(surroundings.records),
      settings_(surroundings.settings),
      design_(design) {}

void SystemView::ShowView() {
  Show();
  SetFlag(true);
}

void SystemView::LoadHidden() {
  OwningDesktop().Load(*this);
  SetFlag(false);
}

void SystemView::Reset(ViewState state) {
  if (records_.ReloadWindows) Close();
  if (state == ViewState::Shown) {
    ShowView();
  } else if (state == ViewState::Hidden) {
    LoadHidden();
  }
}

void SystemView::CloseUnlessFed() {
  if (HasData()) return;
  Close();
  SetFlag(false);
}

bool SystemView::HasData() const {
  return Setup().Enabled && (design_.feeds.empty() || Setup().AnalysesAny(design_.feeds));
}

void SystemView::Load() {
  SetCaption(design_.caption + PlainText(Index()) + " - " + Setup().Name + design_.captionEnd);
  if (design_.icon == ViewIcon::OfEverySystem ||
      (design_.icon == ViewIcon::OfSecondarySystems && Index() > 1)) {
    SetIconColour(SystemColour(Index()));
  }
  RestorePlace(*this, settings_, design_.placeKey, design_.place, PlaceSuffix());
  SetFlag(true);
  LoadView();
}

void SystemView::Unload() {
  SetFlag(false);
  SavePlace(*this, settings_, design_.placeKey, PlaceSuffix());
  UnloadView();
}

void SystemView::SetFlag(bool shown) {
  if (design_.flag) records_.SystemSetups[Index()][*design_.flag] = shown;
}

std::string SystemView::PlaceSuffix() const {
  return design_.placeOfItsOwn ? PlainText(Index()) : std::string();
}

}  // namespace fathomline
