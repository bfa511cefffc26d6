#include "pipeline/sentence_pipeline.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/text.h"
#include "decoding/checksum.h"
#include "decoding/sentence_decoders.h"

namespace fathomline {
namespace {

constexpr std::size_t kMostBackslashes = 10;

// What follows the tag block, a text between two backslashes. With any other number of them the
// sentence is empty. Raises OutOfRange beyond ten.
std::string_view WithoutTagBlock(std::string_view line) {
  std::size_t first = line.find('\\');
  if (first == std::string_view::npos) return line;
  std::array<std::size_t, kMostBackslashes> positions{};
  std::size_t count = 0;
  for (std::size_t at = first; at != std::string_view::npos; at = line.find('\\', at + 1)) {
    if (count == positions.size()) Raise(FaultNumber::OutOfRange);
    positions[count++] = at;
  }
  return count == 2 ? line.substr(positions[1] + 1) : std::string_view{};
}

// Where the three letters stand that tell a type, counted from 1.
enum class Place : std::uint8_t { Fourth, Fifth, Ninth };
constexpr std::array<std::size_t, 3> kPlaces = {4, 5, 9};

}  // namespace

struct SentencePipeline::Recogniser {
  Place place;
  std::uint32_t letters;
  SentenceType type;
  void (SentencePipeline::*decode)(int system, std::string_view sentence);
};

// Text and record are written whether or not the type is analysed.
template <auto Member, auto Decoder>
void SentencePipeline::Decode(int system, std::string_view sentence) {
  auto& message = records_.Messages[system].*Member;
  message.Text.assign(sentence);
  Decoder(sentence, message.Record, dialogs_);
}

void SentencePipeline::DecodeVDM(int system, std::string_view sentence) {
  Decode<&SystemMessages::VDM, ExtractVDM>(system, sentence);
  ais_.ProcessVDM(system, records_.Messages[system].VDM.Record);
  const AISReceiver& receiver = ais_.Receiver(system);
  targets_.StoreAISTarget(system, receiver.AISMessageId, receiver.Messages,
                          records_.MessageTime[system]);
}

// The first row that matches wins. The talker is not looked at.
const SentencePipeline::Recogniser* SentencePipeline::Recognise(std::string_view sentence) {
  using P = SentencePipeline;
  using M = SystemMessages;
  using T = SentenceType;
  constexpr auto at = [](Place place, std::string_view letters, T type,
                         void (P::*decode)(int, std::string_view)) {
    return Recogniser{place, PackLetters(letters), type, decode};
  };
  static constexpr std::array<Recogniser, 18> kRecognisers = {{
      at(Place::Fourth, "GGA", T::GGA, &P::Decode<&M::GGA, ExtractGGA>),
      at(Place::Fourth, "GNS", T::GNS, &P::Decode<&M::GNS, ExtractGNS>),
      at(Place::Fourth, "GLL", T::GLL, &P::Decode<&M::GLL, ExtractGLL>),
      at(Place::Fourth, "RMC", T::RMC, &P::Decode<&M::RMC, ExtractRMC>),
      at(Place::Fourth, "ZDA", T::ZDA, &P::Decode<&M::ZDA, ExtractZDA>),
      at(Place::Fourth, "VTG", T::VTG, &P::Decode<&M::VTG, ExtractVTG>),
      at(Place::Fourth, "GSA", T::GSA, &P::Decode<&M::GSA, ExtractGSA>),
      at(Place::Fourth, "GST", T::GST, &P::Decode<&M::GST, ExtractGST>),
      at(Place::Fourth, "GSV", T::GSV, &P::Decode<&M::GSV, ExtractGSV>),
      at(Place::Fifth, "GSV", T::GSV, &P::Decode<&M::GSV, ExtractGSV>),
      at(Place::Fourth, "HDT", T::HDT, &P::Decode<&M::HDT, ExtractHDT>),
      at(Place::Ninth, "att", T::ATT, &P::Decode<&M::ATT, ExtractATT>),
      at(Place::Fourth, "ROT", T::ROT, &P::Decode<&M::ROT, ExtractROT>),
      at(Place::Fourth, "VHW", T::VHW, &P::Decode<&M::VHW, ExtractVHW>),
      at(Place::Fourth, "DBT", T::DBT, &P::Decode<&M::DBT, ExtractDBT>),
      at(Place::Fourth, "TTM", T::TTM, &P::Decode<&M::TTM, ExtractTTM>),
      at(Place::Fourth, "VDM", T::VDM, &P::DecodeVDM),
      at(Place::Fourth, "VDO", T::VDM, &P::DecodeVDM),
  }};

  // Nearly all stand at the fourth place, one type at most for three letters: they are found by a
  // table of slots instead of one by one.
  constexpr std::uint32_t kSlotCount = 68;  // the fewest that keep all types apart
  constexpr auto slotOf = [](std::uint32_t letters) { return letters % kSlotCount; };
  static constexpr auto kSlots = [slotOf] {
    std::array<const Recogniser*, kSlotCount> slots{};
    for (const Recogniser& row : kRecognisers) {
      if (row.place != Place::Fourth) continue;
      if (slots[slotOf(row.letters)] != nullptr) throw "two types in one slot";
      slots[slotOf(row.letters)] = &row;
    }
    return slots;
  }();

  static constexpr auto kElsewhere = [] {
    constexpr auto count = std::count_if(kRecognisers.begin(), kRecognisers.end(),
                                         [](auto& row) { return row.place != Place::Fourth; });
    std::array<const Recogniser*, count> rows{};
    std::size_t found = 0;
    for (const Recogniser& row : kRecognisers) {
      if (row.place != Place::Fourth) rows[found++] = &row;
    }
    return rows;
  }();

  const std::uint32_t fourth = PackLetters(Mid(sentence, 4, 3));
  const Recogniser* found = kSlots[slotOf(fourth)];
  if (found != nullptr && found->letters != fourth) found = nullptr;
  for (const Recogniser* const row : kElsewhere) {
    if (found != nullptr && found < row) break;
    const std::size_t place = kPlaces[static_cast<std::size_t>(row->place)];
    if (PackLetters(Mid(sentence, place, 3)) == row->letters) return row;
  }
  return found;
}

void SentencePipeline::ProcessSentence(int system, std::string_view line) {
  handedOn_ = SentenceType::None;
  if (records_.SentenceCount < std::numeric_limits<std::int32_t>::max()) ++records_.SentenceCount;
  if (records_.SystemSetups[system][WindowFlag::NMEA]) {
    records_.MonitorSystem = static_cast<std::int16_t>(system);
    observers_.MonitorLine(system, line);
  }
  if (records_.LoggingOn) observers_.LogRawData(system, line);

  const std::string_view sentence = WithoutTagBlock(line);
  if (records_.ChecksumTest[system] && !TestChecksum(sentence)) {
    observers_.ShowChecksumErrors(system, ++records_.ChecksumErrors[system]);
    return;
  }
  const Recogniser* const found = Recognise(sentence);
  if (found == nullptr) return;
  handedOn_ = found->type;
  (this->*found->decode)(system, sentence);
  driver_.ProcessMessage(system, found->type);
}

}  // namespace fathomline
