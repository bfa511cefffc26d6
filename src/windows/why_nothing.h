// Why nothing shows, where that can be told: for who forgot a tick and sees empty windows.
#pragma once

#include <cstdint>
#include <string>

#include "base/per_system.h"
#include "records/records.h"
#include "watch/source_activity.h"

namespace fathomline {

struct WhyNothing {
  // Where its user can do something about it.
  enum class Place : std::uint8_t { General, Messages };

  std::string text;  // empty: there is nothing to tell
  Place place = Place::General;
  int system = 1;

  // The caption of a button that leads there.
  std::string Button() const;
};

// The first that holds: no system is enabled; no sentence of an enabled system is ticked; all its
// lines failed the checksum test; none of what is ticked has occurred, with what has. What has come
// is judged when a replay has ended or stands, and of a live source when enough has come.
//
// It is worked out of what is counted anyway. The errors are those since the activity was reset.
WhyNothing WhyNothingShows(const Records& records, const SourceActivity& activity,
                           const PerSystem<std::int32_t>& checksumErrors, SourceActivity::Time now);

}  // namespace fathomline
