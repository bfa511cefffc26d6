#include "trial/recorder.h"

#include <cmath>
#include <optional>

#include "trial/strict_fields.h"

namespace fathomline::trial {
namespace {

double TimeOf(const Sentence& sentence) {
  switch (sentence.type) {
    case SentenceType::GGA:
      return sentence.Number<&GGARecord::Time>();
    case SentenceType::GNS:
      return sentence.Number<&GNSRecord::Time>();
    case SentenceType::GLL:
      return sentence.Number<&GLLRecord::Time>();
    case SentenceType::RMC:
      return sentence.Number<&RMCRecord::Time>();
    case SentenceType::ZDA:
      return sentence.Number<&ZDARecord::Time>();
    default:
      return sentence.Number<&GSTRecord::Time>();
  }
}

std::optional<std::int64_t> DateOf(const Sentence& sentence) {
  if (sentence.type == SentenceType::ZDA) {
    return DayOfDate(sentence.Number<&ZDARecord::Year>(), sentence.Number<&ZDARecord::Month>(),
                     sentence.Number<&ZDARecord::Day>());
  }
  if (sentence.type != SentenceType::RMC || sentence.Text<&RMCRecord::Status>() != "A") {
    return std::nullopt;
  }
  const double day = sentence.Number<&RMCRecord::Date>();
  return std::isnan(day) ? std::nullopt : std::optional(static_cast<std::int64_t>(day));
}

}  // namespace

void SystemRecorder::TellTime(const Sentence& sentence) {
  const double time = TimeOf(sentence);
  if (!std::isnan(time)) {
    const auto timeOfDay = static_cast<std::int64_t>(time);
    if (clock_.Begins(timeOfDay)) {
      satellites_.EndEpoch(clock_);
      clock_.BeginEpoch(timeOfDay);
    }
  }
  if (const auto day = DateOf(sentence)) clock_.TellDate(*day);
}

void SystemRecorder::TakeLine(std::string_view line) {
  const Sentence& sentence = reader_.Read(line);
  ledger_.TakeLine(sentence);
  if (!sentence.used) return;
  if (TellsTime(sentence.type)) TellTime(sentence);
  const Epoch epoch = clock_.Present();
  const Ledger::Name name = ledger_.NameFor(sentence);
  ledger_.TakeSentence(name, sentence, epoch);
  switch (sentence.type) {
    case SentenceType::GSV:
      return satellites_.TakeGSV(sentence, epoch);
    case SentenceType::GSA:
      return satellites_.TakeGSA(sentence, epoch);
    case SentenceType::VDM:
    case SentenceType::VDO:
      return ais_.Take(sentence, epoch);
    default:
      if (epoch != TrialClock::kNone) samples_.Take(name, sentence, epoch, ledger_);
  }
}

std::size_t SystemRecorder::Bytes() const {
  return clock_.KeptTimes().capacity() * sizeof(std::int64_t) + ledger_.Bytes() + samples_.Bytes() +
         satellites_.Bytes() + ais_.Bytes();
}

void LineCutter::TakeBytes(std::string_view bytes) {
  while (true) {
    const std::size_t end = bytes.find('\n');
    if (end == std::string_view::npos) break;
    if (begun_.empty()) {
      recorder_.TakeLine(bytes.substr(0, end));
    } else {
      begun_.append(bytes.substr(0, end));
      recorder_.TakeLine(begun_);
      begun_.clear();
    }
    bytes.remove_prefix(end + 1);
  }
  begun_.append(bytes);
  if (begun_.size() > kLongestLine) End();
}

void LineCutter::End() {
  if (begun_.empty()) return;
  recorder_.TakeLine(begun_);
  begun_.clear();
}

}  // namespace fathomline::trial
