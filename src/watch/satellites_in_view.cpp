#include "watch/satellites_in_view.h"

#include <algorithm>
#include <bit>

#include "base/strict_number.h"
#include "watch/sentence_address.h"

namespace fathomline {
namespace {

constexpr std::size_t kFirstSatelliteOfGSV = 4;
constexpr std::size_t kFieldsOfSatellite = 4;
constexpr std::size_t kFirstSatelliteOfGSA = 3;
constexpr std::size_t kSatellitesOfGSA = 12;
constexpr std::size_t kDilutions = kFirstSatelliteOfGSA + kSatellitesOfGSA;
constexpr std::size_t kSystemIdOfGSA = kDilutions + 3;
constexpr std::size_t kMostGroups = 64;
// What all others have told so often since will not be told again.
constexpr std::uint64_t kRoundsUntilStale = 10;

// Some receivers send "45.0".
std::optional<std::int16_t> Whole(std::string_view field, double least, double most) {
  const std::optional<double> number = StrictNumber<double>(field);
  if (!number || !(*number >= least && *number <= most)) return {};
  return static_cast<std::int16_t>(*number + (*number < 0.0 ? -0.5 : 0.5));
}

std::uint16_t Packed(std::string_view talker) {
  return static_cast<std::uint16_t>(static_cast<unsigned char>(talker[0]) << 8 |
                                    static_cast<unsigned char>(talker[1]));
}

std::string_view TalkerOf(std::string_view address) {
  return address.substr(1, 2);
}

}  // namespace

std::optional<std::int16_t> SatellitesInView::Satellite::BestCn0() const {
  std::optional<std::int16_t> best;
  for (const Signal& signal : signals) {
    if (signal.cn0 && (!best || *signal.cn0 > *best)) best = signal.cn0;
  }
  return best;
}

void SatellitesInView::Reset() {
  const std::uint64_t revision = revision_;
  *this = {};
  revision_ = revision + 1;
}

SatellitesInView::Fields SatellitesInView::Split(std::string_view sentence) {
  Fields fields;
  sentence = sentence.substr(0, sentence.rfind('*'));
  for (;;) {
    const std::size_t comma = sentence.find(',');
    fields.text[fields.count++] = sentence.substr(0, comma);
    if (comma == std::string_view::npos || fields.count == kMostFields) return fields;
    sentence.remove_prefix(comma + 1);
  }
}

void SatellitesInView::Take(std::string_view sentence) {
  constexpr std::size_t kAddress = 7;  // "$GPGSV,"
  const std::string_view type =
      sentence.size() > kAddress && sentence[kAddress - 1] == ',' ? sentence.substr(3, 3) : "";
  const bool gsa = type == "GSA";
  if (!gsa) {
    run_ = 0;
    latest_ = kStreams;
  }
  if (!gsa && type != "GSV") return;
  if (JudgeChecksum(sentence) == ChecksumVerdict::Wrong) return;
  const Fields fields = Split(sentence);
  ++revision_;
  if (gsa) {
    TakeGSA(fields);
  } else {
    TakeGSV(fields);
  }
}

SatellitesInView::Group& SatellitesInView::GroupOf(std::string_view talker, std::uint8_t signal) {
  const std::uint16_t packed = Packed(talker);
  for (Group& group : groups_) {
    if (group.talker == packed && group.signal == signal) return group;
  }
  if (groups_.size() == kMostGroups) {
    DropSignals(groups_.front(), true);
    groups_.erase(groups_.begin());
  }
  groups_.push_back({.talker = packed, .signal = signal, .ended = groupEnds_});
  return groups_.back();
}

void SatellitesInView::TakeGSV(const Fields& fields) {
  const std::optional<int> total = StrictNumber<int>(fields[1]);
  const std::optional<int> number = StrictNumber<int>(fields[2]);
  if (!total || !number || *number < 1 || *number > *total) return;
  // The signal id stands behind the last satellite.
  std::size_t end = std::max(fields.count, kFirstSatelliteOfGSV);
  std::uint8_t signal = 0;
  if ((end - kFirstSatelliteOfGSV) % kFieldsOfSatellite == 1) {
    const std::optional<int> id = StrictNumber<int>(fields[--end], 16);
    if (id && *id >= 0 && *id <= 0xF) signal = static_cast<std::uint8_t>(*id);
  }
  const std::string_view talker = TalkerOf(fields[0]);
  Group& group = GroupOf(talker, signal);
  if (*number == 1) {
    ++group.round;
    group.next = 2;
  } else {
    group.next = *number == group.next ? *number + 1 : 0;
  }
  const std::optional<GnssSystem> system = SystemOfTalker(talker);
  for (std::size_t at = kFirstSatelliteOfGSV; at < end; at += kFieldsOfSatellite) {
    TakeSatellite(system, fields, at, group);
  }
  if (*number == *total) EndGroup(group);
}

void SatellitesInView::TakeSatellite(std::optional<GnssSystem> system, const Fields& fields,
                                     std::size_t at, const Group& group) {
  const std::optional<int> number = StrictNumber<int>(fields[at]);
  if (!number) return;
  // A talker that speaks for nobody in particular most likely means GPS by a low number.
  const auto id = SatelliteOf(system ? system : GnssSystem::GPS, *number);
  if (!id) return;
  Satellite& satellite = Find(*id);
  satellite.sentAs = *number;
  const auto elevation = Whole(fields[at + 1], -90.0, 90.0);
  const auto azimuth = Whole(fields[at + 2], 0.0, 360.0);
  if (elevation && azimuth) {
    const Position position{*elevation, *azimuth};
    if (satellite.track.empty() || satellite.track.back() != position) {
      if (satellite.track.size() == kMostTrackPoints) {
        auto kept = satellite.track.begin();
        for (std::size_t i = 0; i < kMostTrackPoints; i += 2) *kept++ = satellite.track[i];
        satellite.track.erase(kept, satellite.track.end());
      }
      satellite.track.push_back(position);
    }
    satellite.position = position;
  } else {
    satellite.position.reset();
  }
  const auto cn0 = Whole(fields[at + 3], 0.0, 99.0);
  auto place = std::find_if(satellite.signals.begin(), satellite.signals.end(),
                            [&](const Signal& signal) { return signal.id >= group.signal; });
  if (place == satellite.signals.end() || place->id != group.signal) {
    if (satellite.signals.size() == kMostSignals) return;
    place = satellite.signals.insert(place, Signal{.id = group.signal});
  }
  place->cn0 = cn0;
  place->talker = group.talker;
  place->round = group.round;
}

// What a whole group does not name is not in view any more.
void SatellitesInView::EndGroup(Group& group) {
  const bool whole = group.next != 0;
  group.next = 0;
  group.ended = ++groupEnds_;
  if (whole) DropSignals(group, false);
  DropStaleGroups();
}

void SatellitesInView::DropSignals(const Group& group, bool all) {
  const auto gone = [&](const Signal& signal) {
    return signal.talker == group.talker && signal.id == group.signal &&
           (all || signal.round != group.round);
  };
  for (Satellite& satellite : satellites_) std::erase_if(satellite.signals, gone);
  std::erase_if(satellites_, [](const Satellite& satellite) { return satellite.signals.empty(); });
}

void SatellitesInView::DropStaleGroups() {
  const std::uint64_t limit = kRoundsUntilStale * groups_.size();
  for (std::size_t i = 0; i < groups_.size();) {
    if (groupEnds_ - groups_[i].ended <= limit) {
      ++i;
      continue;
    }
    const Group stale = groups_[i];
    groups_.erase(groups_.begin() + static_cast<std::ptrdiff_t>(i));
    DropSignals(stale, true);
  }
}

SatellitesInView::Satellite& SatellitesInView::Find(SatelliteId id) {
  const auto place = std::lower_bound(
      satellites_.begin(), satellites_.end(), id,
      [](const Satellite& satellite, SatelliteId sought) { return satellite.id < sought; });
  if (place != satellites_.end() && place->id == id) return *place;
  Satellite& added = *satellites_.insert(place, Satellite{.id = id});
  added.used = Has(AllUsed(), id);
  return added;
}

bool SatellitesInView::InView(SatelliteId id) const {
  return std::any_of(satellites_.begin(), satellites_.end(),
                     [id](const Satellite& satellite) { return satellite.id == id; });
}

// The constellation of a GSA whose talker stands for several and which has no system id. High
// numbers tell it; low ones mean the constellation in which most of them are in view, none twice in
// a run but for a sentence that had no room for all.
GnssSystem SatellitesInView::GuessSystem(const Fields& fields) {
  std::array<int, kGnssSystems> inView{};
  bool any = false;
  for (std::size_t i = 0; i < kSatellitesOfGSA; ++i) {
    const std::optional<int> number = StrictNumber<int>(fields[kFirstSatelliteOfGSA + i]);
    if (!number) continue;
    any = true;
    const auto told = SatelliteOf({}, *number);
    if (told && told->system != GnssSystem::SBAS) return told->system;
    for (std::size_t system = 0; system < kGnssSystems; ++system) {
      const auto id = SatelliteOf(static_cast<GnssSystem>(system), *number);
      if (id && static_cast<std::size_t>(id->system) == system && InView(*id)) ++inView[system];
    }
  }
  const auto best = [&](std::uint32_t barred) {
    std::size_t found = kGnssSystems;
    for (std::size_t system = 0; system < kGnssSystems; ++system) {
      if ((barred >> system & 1) != 0 || (any && inView[system] == 0)) continue;
      if (found == kGnssSystems || inView[system] > inView[found]) found = system;
    }
    return found;
  };
  std::uint32_t barred = run_;
  if (latestFull_ && latest_ < kStreams) barred &= ~(1U << latest_);
  std::size_t found = best(barred);
  if (found == kGnssSystems) {
    run_ = 0;
    latest_ = kStreams;
    found = best(0);
  }
  return found == kGnssSystems ? GnssSystem::GPS : static_cast<GnssSystem>(found);
}

void SatellitesInView::TakeGSA(const Fields& fields) {
  solution_ = {.mode = fields[1].empty() ? ' ' : fields[1].front(),
               .fix = StrictNumber<int>(fields[2]).value_or(0),
               .pdop = StrictNumber<double>(fields[kDilutions]),
               .hdop = StrictNumber<double>(fields[kDilutions + 1]),
               .vdop = StrictNumber<double>(fields[kDilutions + 2])};
  std::optional<GnssSystem> system =
      SystemOfId(StrictNumber<int>(fields[kSystemIdOfGSA], 16).value_or(0));
  if (!system) system = SystemOfTalker(TalkerOf(fields[0]));
  if (!system) system = GuessSystem(fields);

  const auto place = static_cast<std::size_t>(*system);
  Stream& stream = streams_[place];
  if (latest_ != place || !latestFull_) stream.used = {};
  bool full = true;
  for (std::size_t i = 0; i < kSatellitesOfGSA; ++i) {
    const std::optional<int> number = StrictNumber<int>(fields[kFirstSatelliteOfGSA + i]);
    full = full && number.has_value();
    const auto id = number ? SatelliteOf(system, *number) : std::nullopt;
    if (id) stream.used[static_cast<std::size_t>(id->system)] |= std::uint64_t{1} << id->number;
  }
  stream.told = ++toldStreams_;
  run_ |= 1U << place;
  latest_ = place;
  latestFull_ = full;
  DropStaleStreams();
  const Set used = AllUsed();
  for (Satellite& satellite : satellites_) satellite.used = Has(used, satellite.id);
}

void SatellitesInView::DropStaleStreams() {
  for (Stream& stream : streams_) {
    if (toldStreams_ - stream.told > kRoundsUntilStale * kStreams) stream.used = {};
  }
}

SatellitesInView::Set SatellitesInView::AllUsed() const {
  Set all{};
  for (const Stream& stream : streams_) {
    for (std::size_t i = 0; i < all.size(); ++i) all[i] |= stream.used[i];
  }
  return all;
}

int SatellitesInView::Used() const {
  int count = 0;
  for (const std::uint64_t set : AllUsed()) count += std::popcount(set);
  return count;
}

}  // namespace fathomline
