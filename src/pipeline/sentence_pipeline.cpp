#include "pipeline/sentence_pipeline.h"

#include <algorithm>
#include <array>
#include <limits>
#include <tuple>
#include <type_traits>

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

// Three letters from a place, counted from 1; fewer at the end of the sentence.
std::uint32_t LettersAt(std::string_view sentence, std::size_t place) {
  if (place + 2 > sentence.size()) return PackLetters(Mid(sentence, place, 3));
  return PackLetters({sentence.data() + place - 1, 3});
}

}  // namespace

struct SentencePipeline::Recogniser {
  std::size_t place;  // of its three letters, counted from 1
  std::uint32_t letters;
  SentenceType type;
  void (SentencePipeline::*decode)(int system, std::string_view sentence);
};

// Text and record are written whether or not the type is analysed.
template <class Record>
void SentencePipeline::Decode(int system, std::string_view sentence) {
  Message<Record>& message = records_.Messages[system].*kSentenceOf<Record>.message;
  message.Text.assign(sentence);
  Extract(sentence, message.Record, dialogs_);
  if constexpr (std::is_same_v<Record, VDMRecord>) {
    ais_.ProcessVDM(system, message.Record);
    const AISReceiver& receiver = ais_.Receiver(system);
    targets_.StoreAISTarget(system, receiver.AISMessageId, receiver.Messages(),
                            records_.MessageTime[system]);
  }
}

// The first row that matches wins.
const SentencePipeline::Recogniser* SentencePipeline::Recognise(std::string_view sentence) {
  static constexpr std::size_t kMarks = std::apply(
      [](const auto&... row) { return ((row.marks[1].place == 0 ? 1U : 2U) + ...); }, kSentences);
  static constexpr auto kRecognisers = [] {
    std::array<Recogniser, kMarks> recognisers{};
    std::size_t count = 0;
    const auto add = [&]<class Record>(const SentenceRow<Record>& row) {
      for (const SentenceMark& mark : row.marks) {
        if (mark.place == 0) continue;
        recognisers[count++] = {mark.place, PackLetters(mark.letters), row.kType,
                                &SentencePipeline::Decode<Record>};
      }
    };
    std::apply([&](const auto&... row) { (add(row), ...); }, kSentences);
    return recognisers;
  }();

  // Nearly all stand at the fourth place, one type at most for three letters: they are found by a
  // table of slots instead of one by one. It has the fewest slots that keep all types apart.
  static constexpr std::size_t kUsualPlace = 4;
  static constexpr std::uint32_t kSlotCount = [] {
    std::uint32_t count = kMarks;
    const auto collide = [&count](const Recogniser& a, const Recogniser& b) {
      return &a != &b && a.place == kUsualPlace && b.place == kUsualPlace &&
             a.letters % count == b.letters % count;
    };
    while (std::any_of(kRecognisers.begin(), kRecognisers.end(), [&](const Recogniser& a) {
      return std::any_of(kRecognisers.begin(), kRecognisers.end(),
                         [&](const Recogniser& b) { return collide(a, b); });
    })) {
      ++count;
    }
    return count;
  }();
  static constexpr auto kSlots = [] {
    std::array<const Recogniser*, kSlotCount> slots{};
    for (const Recogniser& row : kRecognisers) {
      if (row.place == kUsualPlace) slots[row.letters % kSlotCount] = &row;
    }
    return slots;
  }();

  static constexpr auto kElsewhere = [] {
    constexpr auto count = std::count_if(kRecognisers.begin(), kRecognisers.end(),
                                         [](auto& row) { return row.place != kUsualPlace; });
    std::array<const Recogniser*, count> rows{};
    std::size_t found = 0;
    for (const Recogniser& row : kRecognisers) {
      if (row.place != kUsualPlace) rows[found++] = &row;
    }
    return rows;
  }();

  const std::uint32_t usual = LettersAt(sentence, kUsualPlace);
  const Recogniser* found = kSlots[usual % kSlotCount];
  if (found != nullptr && found->letters != usual) found = nullptr;
  for (const Recogniser* const row : kElsewhere) {
    if (found != nullptr && found < row) break;
    if (LettersAt(sentence, row->place) == row->letters) return row;
  }
  return found;
}

SentenceType SentencePipeline::TypeOf(std::string_view sentence) {
  const Recogniser* const found = Recognise(sentence);
  return found == nullptr ? SentenceType::None : found->type;
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
