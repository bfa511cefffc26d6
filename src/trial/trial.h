// The whole trial: up to four systems, each by itself and in pairs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "trial/moment.h"
#include "trial/position_series.h"
#include "trial/recorder.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// What the errors of one system are about, where that is not the same for all.
struct OwnReference {
  ReferenceKind kind = ReferenceKind::Mean;  // no other system
  Place given;                               // of ReferenceKind::Given; the height may be NaN
  HeightKind givenHeights = HeightKind::Ellipsoid;
  Value heading, pitch, roll;  // degrees; else their means
};

struct TrialSystem {
  std::string name;
  const SystemRecorder* recorder = nullptr;
  std::optional<std::string> stream;           // talker and type; else the best is chosen
  std::optional<OwnReference> reference = {};  // else that of the trial
};

struct TrialOptions {
  ReferenceKind reference = ReferenceKind::Mean;
  Place given;  // of ReferenceKind::Given; the height may be NaN
  HeightKind givenHeights = HeightKind::Ellipsoid;
  std::string referenceSystem;  // of ReferenceKind::System, one of the names
  Value heading, pitch, roll;   // degrees; else their means
  std::optional<TimeBound> from, to;
  // What the document tells of itself.
  Meta meta;
};

// Everything but the limits. The pictures look into the recorders, which must outlive the figures.
TrialFigures WorkOut(const std::vector<TrialSystem>& systems, const TrialOptions& options);

}  // namespace fathomline::trial
