#include "trial/ais_figures.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <optional>

#include "ais/payload_bits.h"
#include "trial/position_figures.h"

namespace fathomline::trial {
namespace {

constexpr Count kGivenUpAfter = 50;   // sentences of VDM and VDO
constexpr int kMostParts = 9;         // a digit
constexpr int kMostFillBits = 5;      // of a character of six
constexpr int kShortestMessage = 38;  // bits: id, repeat indicator and station
constexpr double kUnitsPerDegree = 600'000.0;

constexpr std::uint64_t Ids(std::initializer_list<unsigned> ids) {
  std::uint64_t bits = 0;
  for (const unsigned id : ids) bits |= std::uint64_t{1} << id;
  return bits;
}

// The first kind that has sent one of its ids is that of the station.
constexpr struct {
  std::uint64_t ids;
  Count AisStations::*kind;
} kStations[] = {{Ids({4}), &AisStations::base},
                 {Ids({21}), &AisStations::aton},
                 {Ids({9}), &AisStations::sar},
                 {Ids({1, 2, 3, 5}), &AisStations::classA},
                 {Ids({18, 19, 24}), &AisStations::classB},
                 {~std::uint64_t{0}, &AisStations::other}};

// Where the place stands in the ids that tell an own one; bits are counted from 1.
struct PositionLayout {
  std::uint64_t ids;
  int longitude, latitude, second;  // first bits of 28, 27 and 6
};
constexpr PositionLayout kPositionLayouts[] = {{Ids({1, 2, 3}), 62, 90, 138},
                                               {Ids({18, 19}), 58, 86, 134}};

// A whole number from 0; below zero for what is none.
int WholeNumber(double value) {
  return value >= 0.0 && value <= 1e9 && value == std::floor(value) ? static_cast<int>(value) : -1;
}

}  // namespace

void AisRecorder::GiveUpOld() {
  const auto firstKept = std::find_if(groups_.begin(), groups_.end(), [this](const Group& group) {
    return sentences_ - group.begunAt <= kGivenUpAfter;
  });
  incomplete_ += firstKept - groups_.begin();
  groups_.erase(groups_.begin(), firstKept);
}

void AisRecorder::Take(const Sentence& sentence, Epoch epoch) {
  ++sentences_;
  if (!groups_.empty()) GiveUpOld();
  const int total = WholeNumber(sentence.Number<&VDMRecord::TotalFragments>());
  const int number = WholeNumber(sentence.Number<&VDMRecord::FragmentNumber>());
  const double fill = sentence.Number<&VDMRecord::FillBits>();
  const int fillBits = std::isnan(fill) ? 0 : WholeNumber(fill);
  if (sentence.unreadable != 0 || number < 1 || number > total || total > kMostParts ||
      fillBits < 0 || fillBits > kMostFillBits) {
    ++incomplete_;
    return;
  }
  const char channel = sentence.Letter<&VDMRecord::Channel>();
  const std::string_view payload = sentence.Text<&VDMRecord::Payload>();
  if (total == 1) {
    TakeMessage(sentence.type, channel, std::string(payload), fillBits, epoch);
    return;
  }
  const int sequence = WholeNumber(sentence.Number<&VDMRecord::SequenceId>());
  auto group = std::find_if(groups_.begin(), groups_.end(), [&](const Group& g) {
    return g.name == sentence.name && g.sequence == sequence && g.channel == channel;
  });
  const auto part = static_cast<std::size_t>(number - 1);
  if (group != groups_.end() && (group->total != total || (group->present >> part & 1U) != 0)) {
    ++incomplete_;
    groups_.erase(group);
    group = groups_.end();
  }
  if (group == groups_.end()) {
    groups_.push_back({.name = sentence.name,
                       .sequence = sequence,
                       .channel = channel,
                       .total = total,
                       .begunAt = sentences_,
                       .fillBits = 0,
                       .present = 0,
                       .parts = std::vector<std::string>(static_cast<std::size_t>(total))});
    group = groups_.end() - 1;
  }
  group->present |= 1U << part;
  group->parts[part] = payload;
  if (number == total) group->fillBits = fillBits;
  if (group->present != (1U << total) - 1) return;
  std::string whole;
  for (const std::string& p : group->parts) whole += p;
  const int wholeFillBits = group->fillBits;
  groups_.erase(group);
  TakeMessage(sentence.type, channel, whole, wholeFillBits, epoch);
}

void AisRecorder::TakeMessage(SentenceType type, char channel, const std::string& payload,
                              int fillBits, Epoch epoch) {
  const auto bitCount =
      static_cast<std::int64_t>(payload.size()) * PayloadBits::kBitsPerCharacter - fillBits;
  if (bitCount < kShortestMessage) {
    ++tooShort_;
    return;
  }
  const PayloadBits bits(payload);
  const auto id = static_cast<unsigned>(bits.Unsigned(1, 6));
  if (type == SentenceType::VDO) {
    ++ownMessages_;
    for (const PositionLayout& layout : kPositionLayouts) {
      if ((layout.ids >> id & 1U) == 0 || bitCount < layout.second + 5) continue;
      const double longitude =
          BitsToValue(bits, layout.longitude, layout.longitude + 27, true) / kUnitsPerDegree;
      const double latitude =
          BitsToValue(bits, layout.latitude, layout.latitude + 26, true) / kUnitsPerDegree;
      if (std::abs(longitude) > 180.0 || std::abs(latitude) > 90.0) continue;
      if (epoch == TrialClock::kNone) continue;
      ownPositions_.epochs.push_back(epoch);
      ownPositions_.seconds.push_back(
          static_cast<std::uint8_t>(bits.Unsigned(layout.second, layout.second + 5)));
      ownPositions_.latitude.push_back(latitude);
      ownPositions_.longitude.push_back(longitude);
    }
    return;
  }
  ++messages_;
  ++byId_[{id, channel}];
  idsOfStation_[static_cast<std::uint32_t>(bits.Unsigned(9, 38))] |= std::uint64_t{1} << id;
}

Ais AisRecorder::Figures() const {
  Ais figures;
  if (sentences_ == 0) {
    figures.why = why::kNoneSent;
    return figures;
  }
  figures.messages = messages_;
  figures.ownMessages = ownMessages_;
  figures.incomplete = incomplete_ + static_cast<Count>(groups_.size());
  figures.tooShort = tooShort_;
  for (const auto& [idAndChannel, n] : byId_) {
    AisIdCount& count = figures.byId.emplace_back();
    count.id = idAndChannel.first;
    if (idAndChannel.second != '\0') count.channel = std::string(1, idAndChannel.second);
    count.n = n;
  }
  for (const auto& [station, ids] : idsOfStation_) {
    for (const auto& kind : kStations) {
      if ((kind.ids & ids) == 0) continue;
      ++(figures.stations.*kind.kind);
      break;
    }
  }
  return figures;
}

std::size_t AisRecorder::Bytes() const {
  return ownPositions_.epochs.capacity() * (sizeof(Epoch) + 1 + 2 * sizeof(double)) +
         idsOfStation_.size() * 32;
}

namespace {

constexpr std::int64_t kMinute = 60'000;

// The time of that second of a minute which is nearest to the time; of two the earlier.
std::int64_t NearestSecond(std::int64_t time, int second) {
  std::int64_t ofMinute = time % kMinute;
  if (ofMinute < 0) ofMinute += kMinute;
  std::int64_t step = second * std::int64_t{1000} - ofMinute;
  if (step >= kMinute / 2) step -= kMinute;
  if (step < -kMinute / 2) step += kMinute;
  return time + step;
}

}  // namespace

OwnPosition OwnPositionOf(const AisRecorder& recorder, const PositionSeries* stream,
                          const TrialClock& clock, const Window& window) {
  OwnPosition figures;
  const OwnPositionSamples& own = recorder.OwnPositions();
  std::optional<FixWalker> walker;
  if (stream != nullptr) walker.emplace(*stream);
  std::vector<double> distances;
  for (std::size_t i = 0; i < own.epochs.size(); ++i) {
    const std::int64_t time = clock.TimeOf(own.epochs[i]);
    if (!window.Holds(time)) continue;
    ++figures.of;
    if (own.seconds[i] > 59 || !walker) continue;
    const auto found = walker->At(NearestSecond(time, own.seconds[i]));
    if (!found) continue;
    const Place place{own.latitude[i], own.longitude[i], std::numeric_limits<double>::quiet_NaN()};
    const LocalPosition position = Frame(found->place).Locate(place);
    distances.push_back(std::hypot(position.north, position.east));
  }
  figures.n = static_cast<Count>(distances.size());
  if (distances.empty()) {
    const bool noFix = stream == nullptr || stream->Fixes() == 0;
    figures.why = figures.of == 0 ? why::kNoneSent : noFix ? why::kNoFix : why::kNoOverlap;
    return figures;
  }
  figures.largest = *std::max_element(distances.begin(), distances.end());
  const auto percents = PercentFigures(distances);
  figures.r50 = percents[0];
  figures.r95 = percents[2];
  return figures;
}

}  // namespace fathomline::trial
