#include "trial/satellite_figures.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

namespace fathomline::trial {
namespace {

constexpr std::array<std::string_view, kConstellationCount> kConstellationNames = {
    "BeiDou", "GLONASS", "GPS", "Galileo", "NavIC", "QZSS", "SBAS", "unknown"};

constexpr std::pair<std::string_view, Constellation> kTalkers[] = {
    {"GP", Constellation::GPS},    {"GL", Constellation::GLONASS}, {"GA", Constellation::Galileo},
    {"GB", Constellation::BeiDou}, {"BD", Constellation::BeiDou},  {"GQ", Constellation::QZSS},
    {"QZ", Constellation::QZSS},   {"GI", Constellation::NavIC}};

constexpr struct {
  int first, last;
  Constellation constellation;
} kNumberRanges[] = {
    {1, 32, Constellation::GPS},       {33, 64, Constellation::SBAS},
    {65, 96, Constellation::GLONASS},  {120, 158, Constellation::SBAS},
    {193, 202, Constellation::QZSS},   {301, 336, Constellation::Galileo},
    {401, 463, Constellation::BeiDou},
};

// System identifiers of GSA 1 to 6, by the talkers that they stand for.
constexpr auto kSystemTalkers =
    std::to_array<std::string_view>({"GP", "GL", "GA", "GB", "GQ", "GI"});

constexpr std::int64_t kOldestUse = 10'000;  // milliseconds
constexpr int kBinDegrees = 10;
constexpr std::size_t kFieldsBeforeFours = 4;

Constellation ConstellationOfTalker(std::string_view talker) {
  for (const auto& [name, constellation] : kTalkers) {
    if (name == talker) return constellation;
  }
  return Constellation::Unknown;
}

// A satellite's number; 0 for what is none.
int NumberOf(double value) {
  const bool isNumber = value >= 1.0 && value <= 1e9 && value == std::floor(value);
  return isNumber ? static_cast<int>(value) : 0;
}

std::size_t Index(Constellation constellation) {
  return static_cast<std::size_t>(constellation);
}

// To whole degrees; `missing` for what was not sent or lies outside.
template <class Degrees>
Degrees WholeDegrees(double value, double least, double most, Degrees missing) {
  return value >= least && value <= most ? static_cast<Degrees>(std::lround(value)) : missing;
}

}  // namespace

std::string_view ToText(Constellation constellation) {
  return kConstellationNames[Index(constellation)];
}

Constellation ConstellationOf(std::string_view talker, int number) {
  const Constellation ofTalker = ConstellationOfTalker(talker);
  const bool isGps = ofTalker == Constellation::GPS;
  if (ofTalker != Constellation::Unknown && !(isGps && number > 32)) return ofTalker;
  for (const auto& range : kNumberRanges) {
    if (number >= range.first && number <= range.last) return range.constellation;
  }
  return ofTalker;
}

void SatelliteRecorder::Running::Add(double value) {
  ++n;
  least = n == 1 ? value : std::min(least, value);
  greatest = n == 1 ? value : std::max(greatest, value);
  const double before = value - mean;
  mean += before / static_cast<double>(n);
  squares += before * (value - mean);
}

Value SatelliteRecorder::Running::Std() const {
  return n > 1 ? Value(std::sqrt(squares / static_cast<double>(n - 1))) : Value();
}

void SatelliteRecorder::Range::Add(Count value, bool isFirst) {
  sum += value;
  least = isFirst ? value : std::min(least, value);
  greatest = isFirst ? value : std::max(greatest, value);
}

CountRange SatelliteRecorder::Range::Figures(Count n) const {
  return {.why = {},
          .mean = static_cast<double>(sum) / static_cast<double>(n),
          .least = least,
          .greatest = greatest};
}

void SatelliteRecorder::Used::Begin(Epoch present) {
  if (epoch == present) return;
  epoch = present;
  numbers.clear();
}

bool SatelliteRecorder::Used::Has(int number, Epoch present, const TrialClock& clock) const {
  if (epoch == TrialClock::kNone) return false;
  if (std::abs(clock.TimeOf(present) - clock.TimeOf(epoch)) > kOldestUse) return false;
  return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

SatelliteRecorder::Signal SatelliteRecorder::SignalOf(std::string_view text) {
  const auto found = std::find(signals_.begin(), signals_.end(), text);
  if (found == signals_.end()) {
    signals_.emplace_back(text);
    return static_cast<Signal>(signals_.size() - 1);
  }
  return static_cast<Signal>(found - signals_.begin());
}

std::uint32_t SatelliteRecorder::TalkerOf(const Sentence& sentence) {
  const std::string_view name = sentence.address.substr(0, 2);
  for (std::size_t i = 0; i < talkers_.size(); ++i) {
    if (talkers_[i].name == name) return static_cast<std::uint32_t>(i);
  }
  talkers_.push_back({.name = std::string(name), .group = {}, .groupsOf = {}});
  return static_cast<std::uint32_t>(talkers_.size() - 1);
}

bool SatelliteRecorder::ReadGroupLine(const Sentence& sentence, Group& group) {
  if (sentence.unreadable != 0 || sentence.fieldCount < kFieldsBeforeFours) return false;
  const std::size_t behind = sentence.fieldCount - kFieldsBeforeFours;
  const std::size_t fours = behind / 4;
  if (behind % 4 > 1 || fours > 4) return false;
  const Signal signal =
      behind % 4 == 1 ? SignalOf(sentence.Field(kFieldsBeforeFours + fours * 4)) : 0;
  if (std::find(group.signals.begin(), group.signals.end(), signal) == group.signals.end()) {
    group.signals.push_back(signal);
  }
  for (std::size_t i = 0; i < fours; ++i) {
    const int number = NumberOf(sentence.Number<&GSVRecord::PRN>(i));
    const bool isListed =
        std::any_of(group.listed.begin(), group.listed.end(),
                    [&](const Listed& l) { return l.number == number && l.signal == signal; });
    if (number == 0 || isListed) continue;
    group.listed.push_back({number, signal, sentence.Number<&GSVRecord::Elevation>(i),
                            sentence.Number<&GSVRecord::Azimuth>(i),
                            sentence.Number<&GSVRecord::SNR>(i)});
  }
  return true;
}

void SatelliteRecorder::TakeGSV(const Sentence& sentence, Epoch epoch) {
  anythingWasSent_ = true;
  const std::uint32_t talker = TalkerOf(sentence);
  Group& group = talkers_[talker].group;
  const int count = NumberOf(sentence.Number<&GSVRecord::MessageCount>());
  const int number = NumberOf(sentence.Number<&GSVRecord::MessageNumber>());
  if (number == 1) {
    if (group.state == Group::State::Open) ++groupsBroken_;
    group = {.state = Group::State::Open, .count = count, .next = 1, .signals = {}, .listed = {}};
  }
  if (group.state == Group::State::Broken) return;
  const bool goesOn = group.state == Group::State::Open && number == group.next &&
                      count == group.count && number <= count;
  if (!goesOn || !ReadGroupLine(sentence, group)) {
    ++groupsBroken_;
    group.state = Group::State::Broken;
    return;
  }
  if (++group.next <= count) return;
  group.state = Group::State::None;
  ++groupsWhole_;
  if (epoch != TrialClock::kNone) TakeWholeGroup(talker, epoch);
}

std::uint32_t SatelliteRecorder::PlaceOf(Constellation constellation, int number, Signal signal) {
  const std::uint64_t key = static_cast<std::uint64_t>(constellation) << 60 |
                            static_cast<std::uint64_t>(signal) << 32 |
                            static_cast<std::uint64_t>(number);
  const auto [found, isNew] = places_.try_emplace(key, static_cast<std::uint32_t>(samples_.size()));
  if (!isNew) return found->second;
  const auto elevations = std::find_if(
      state_.elevations.begin(), state_.elevations.end(), [&](const ElevationState& state) {
        return state.constellation == constellation && state.signal == signal;
      });
  const auto place = static_cast<std::uint32_t>(elevations - state_.elevations.begin());
  if (elevations == state_.elevations.end()) {
    state_.elevations.push_back({.constellation = constellation, .signal = signal, .bins = {}});
  }
  SatelliteState state;
  state.constellation = constellation;
  state.number = number;
  state.signal = signal;
  state.elevations = place;
  state_.satellites.push_back(state);
  samples_.emplace_back();
  listedBy_.emplace_back();
  return found->second;
}

void SatelliteRecorder::TakeWholeGroup(std::uint32_t talkerPlace, Epoch epoch) {
  Talker& talker = talkers_[talkerPlace];
  for (const Signal signal : talker.group.signals) ++talker.groupsOf[signal];
  // Its constellation has an epoch, even if the group lists none of it.
  state_.groupOfTalker[Index(ConstellationOfTalker(talker.name))] = true;
  for (const Listed& listed : talker.group.listed) {
    const std::uint32_t satellite =
        PlaceOf(ConstellationOf(talker.name, listed.number), listed.number, listed.signal);
    std::vector<std::uint32_t>& talkers = listedBy_[satellite];
    if (std::find(talkers.begin(), talkers.end(), talkerPlace) == talkers.end()) {
      talkers.push_back(talkerPlace);
    }
    const double cn0 = listed.cn0 > 0.0 ? listed.cn0 : 0.0;
    std::vector<SatelliteSample>& samples = samples_[satellite];
    state_.pending.push_back({.satellite = satellite,
                              .sample = static_cast<std::uint32_t>(samples.size()),
                              .elevation = listed.elevation,
                              .cn0 = cn0,
                              .inUse = false});
    samples.push_back({.epoch = epoch,
                       .cn0 = static_cast<float>(cn0),
                       .azimuth = WholeDegrees<std::int16_t>(listed.azimuth, 0.0, 360.0,
                                                             SatelliteSample::kNoAzimuth),
                       .elevation = WholeDegrees<std::int8_t>(listed.elevation, -90.0, 90.0,
                                                              SatelliteSample::kNoElevation)});
  }
}

void SatelliteRecorder::TakeGSA(const Sentence& sentence, Epoch epoch) {
  anythingWasSent_ = true;
  if (epoch == TrialClock::kNone) return;
  useWasSent_ = true;
  std::string_view talker = sentence.address.substr(0, 2);
  const std::string_view system = sentence.Field(18);
  if (talker == "GN" && system.size() == 1 && system[0] >= '1' && system[0] <= '6') {
    talker = kSystemTalkers[static_cast<std::size_t>(system[0] - '1')];
  }
  const Constellation ofTalker = ConstellationOfTalker(talker);
  if (ofTalker != Constellation::Unknown) used_[Index(ofTalker)].Begin(epoch);
  for (std::size_t i = 0; i < std::tuple_size_v<decltype(GSARecord::PRN)>; ++i) {
    const int number = NumberOf(sentence.Number<&GSARecord::PRN>(i));
    if (number == 0) continue;
    const Constellation constellation = ConstellationOf(talker, number);
    for (std::size_t c = 0; c < kConstellationCount; ++c) {
      // A number that tells no constellation counts for all.
      if (constellation != Constellation::Unknown && c != Index(constellation)) continue;
      used_[c].Begin(epoch);
      used_[c].numbers.push_back(number);
    }
  }
}

void SatelliteRecorder::EndEpoch(const TrialClock& clock) {
  EndEpoch(state_, clock);
  for (const Pending& pending : state_.pending) {
    samples_[pending.satellite][pending.sample].inUse = pending.inUse;
  }
  state_.pending.clear();
}

void SatelliteRecorder::EndEpoch(State& state, const TrialClock& clock) const {
  const Epoch present = clock.Present();
  // Numbers of each constellation, and whether they are in use.
  std::array<std::vector<std::pair<int, bool>>, kConstellationCount> inView;
  for (Pending& pending : state.pending) {
    SatelliteState& satellite = state.satellites[pending.satellite];
    const std::size_t constellation = Index(satellite.constellation);
    pending.inUse = used_[constellation].Has(satellite.number, present, clock);
    inView[constellation].emplace_back(satellite.number, pending.inUse);

    const std::int64_t now = clock.KeptTimes()[present];
    satellite.firstAt = satellite.n == 0 ? now : std::min(satellite.firstAt, now);
    satellite.lastAt = satellite.n == 0 ? now : std::max(satellite.lastAt, now);
    ++satellite.n;
    if (pending.inUse) ++satellite.used;
    if (pending.cn0 <= 0.0) continue;
    satellite.cn0.Add(pending.cn0);
    if (!(pending.elevation >= 0.0 && pending.elevation <= 90.0)) continue;
    auto& bins = state.elevations[satellite.elevations].bins;
    const auto bin = static_cast<std::size_t>(pending.elevation) / kBinDegrees;
    bins[std::min(bin, bins.size() - 1)].Add(pending.cn0);
  }
  for (std::size_t i = 0; i < kConstellationCount; ++i) {
    // Many a talker stands for no constellation.
    const bool isToldEmpty =
        state.groupOfTalker[i] && static_cast<Constellation>(i) != Constellation::Unknown;
    if (inView[i].empty() && !isToldEmpty) continue;
    std::sort(inView[i].begin(), inView[i].end());
    inView[i].erase(std::unique(inView[i].begin(), inView[i].end()), inView[i].end());
    ConstellationState& constellation = state.constellations[i];
    const bool isFirst = constellation.epochs++ == 0;
    constellation.inView.Add(static_cast<Count>(inView[i].size()), isFirst);
    constellation.inUse.Add(std::count_if(inView[i].begin(), inView[i].end(),
                                          [](const auto& satellite) { return satellite.second; }),
                            isFirst);
  }
  state.groupOfTalker.fill(false);
}

std::vector<std::uint32_t> SatelliteRecorder::Order() const {
  std::vector<std::uint32_t> order(state_.satellites.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
    const SatelliteState& left = state_.satellites[a];
    const SatelliteState& right = state_.satellites[b];
    return std::tie(kConstellationNames[Index(left.constellation)], signals_[left.signal],
                    left.number) < std::tie(kConstellationNames[Index(right.constellation)],
                                            signals_[right.signal], right.number);
  });
  return order;
}

namespace {

std::optional<std::string> TextOrNone(const std::string& signal) {
  return signal.empty() ? std::nullopt : std::optional(signal);
}

}  // namespace

SignalFigures SatelliteRecorder::FiguresOf(const ElevationState& elevations) const {
  SignalFigures figures{.signal = TextOrNone(signals_[elevations.signal]), .byElevation = {}};
  for (std::size_t i = 0; i < elevations.bins.size(); ++i) {
    const Running& bin = elevations.bins[i];
    figures.byElevation[i] = {.fromDegrees = static_cast<Count>(i) * kBinDegrees,
                              .n = bin.n,
                              .mean = bin.Mean(),
                              .std = bin.Std()};
  }
  return figures;
}

SatelliteFigures SatelliteRecorder::FiguresOf(const SatelliteState& satellite, Count groups,
                                              const TrialClock& clock) const {
  const auto shareOf = [](Count part, Count whole) {
    return whole > 0 ? Value(static_cast<double>(part) / static_cast<double>(whole)) : Value();
  };
  SatelliteFigures figures;
  figures.constellation = ToText(satellite.constellation);
  figures.signal = TextOrNone(signals_[satellite.signal]);
  figures.number = satellite.number;
  figures.n = satellite.n;
  figures.firstAt = clock.MomentOf(satellite.firstAt + clock.Offset());
  figures.lastAt = clock.MomentOf(satellite.lastAt + clock.Offset());
  figures.inViewShare = shareOf(satellite.n, groups);
  if (useWasSent_) figures.inUseShare = shareOf(satellite.used, satellite.n);
  const Running& cn0 = satellite.cn0;
  if (cn0.n == 0) {
    figures.cn0.why = why::kNoneSent;
  } else {
    figures.cn0 = {.why = {},
                   .n = cn0.n,
                   .mean = cn0.Mean(),
                   .std = cn0.Std(),
                   .least = cn0.least,
                   .greatest = cn0.greatest};
  }
  return figures;
}

Satellites SatelliteRecorder::Figures(const TrialClock& clock) const {
  Satellites figures;
  if (!anythingWasSent_) {
    figures.why = why::kNoneSent;
    return figures;
  }
  State state = state_;
  EndEpoch(state, clock);
  figures.groupsWhole = groupsWhole_;
  figures.groupsBroken =
      groupsBroken_ + std::count_if(talkers_.begin(), talkers_.end(), [](const Talker& talker) {
        return talker.group.state == Group::State::Open;
      });

  std::sort(state.elevations.begin(), state.elevations.end(),
            [this](const ElevationState& a, const ElevationState& b) {
              return signals_[a.signal] < signals_[b.signal];
            });
  for (std::size_t i = 0; i < kConstellationCount; ++i) {
    const ConstellationState& constellation = state.constellations[i];
    if (constellation.epochs == 0) continue;
    ConstellationFigures& of = figures.constellations.emplace_back();
    of.name = kConstellationNames[i];
    of.epochs = constellation.epochs;
    of.inView = constellation.inView.Figures(constellation.epochs);
    if (useWasSent_) {
      of.inUse = constellation.inUse.Figures(constellation.epochs);
    } else {
      of.inUse.why = why::kNoneSent;
    }
    for (const ElevationState& elevations : state.elevations) {
      if (Index(elevations.constellation) == i) of.signals.push_back(FiguresOf(elevations));
    }
  }
  for (const std::uint32_t place : Order()) {
    const SatelliteState& satellite = state.satellites[place];
    Count groups = 0;
    for (const std::uint32_t talker : listedBy_[place]) {
      groups += talkers_[talker].groupsOf.at(satellite.signal);
    }
    figures.satellites.push_back(FiguresOf(satellite, groups, clock));
  }
  return figures;
}

std::vector<SatelliteTrack> SatelliteRecorder::Tracks(const TrialClock& clock) const {
  std::vector<SatelliteTrack> tracks;
  for (const std::uint32_t place : Order()) {
    const SatelliteState& satellite = state_.satellites[place];
    SatelliteTrack& track = tracks.emplace_back();
    track.constellation = ToText(satellite.constellation);
    track.signal = TextOrNone(signals_[satellite.signal]);
    track.number = satellite.number;
    track.samples = &samples_[place];
    track.epochTimes = &clock.KeptTimes();
    track.offset = clock.Offset();
  }
  return tracks;
}

std::size_t SatelliteRecorder::Bytes() const {
  std::size_t bytes = 0;
  for (const auto& samples : samples_) bytes += samples.capacity() * sizeof(SatelliteSample);
  return bytes;
}

}  // namespace fathomline::trial
