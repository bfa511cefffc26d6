#include "session/reasons.h"

namespace fathomline {

Reasons::Reasons(Engine& engine, Desktop& desktop, Windows& windows, frmSetup& setupDialog)
    : records_(engine.records), watch_(engine.watch), desktop_(desktop), setupDialog_(setupDialog) {
  windows.main.onAskWhy = windows.offlineStatus.onAskWhy = [this] { return Look(); };
  windows.main.cmdReason.onClick = windows.offlineStatus.cmdReason.onClick = [this] { Lead(); };
}

void Reasons::Restart() {
  errorsBefore_ = records_.ChecksumErrors;
}

WhyNothing Reasons::Look() const {
  PerSystem<std::int32_t> errors;
  for (int system = 1; system <= kSystems; ++system) {
    // Those of a setup that has just come into force begin anew.
    const std::int32_t count = records_.ChecksumErrors[system];
    errors[system] = count >= errorsBefore_[system] ? count - errorsBefore_[system] : count;
  }
  return WhyNothingShows(records_, watch_.Activity(), errors, desktop_.Now());
}

void Reasons::Lead() {
  const WhyNothing why = Look();
  setupDialog_.Open(why.system);
  if (why.place == WhyNothing::Place::Messages)
    setupDialog_.SSTab1.ShowChoice(frmSetup::kMessagesTab);
}

}  // namespace fathomline
