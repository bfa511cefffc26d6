#include "trial/ledger.h"

#include <algorithm>

namespace fathomline::trial {

bool TellsTime(SentenceType type) {
  switch (type) {
    case SentenceType::GGA:
    case SentenceType::GNS:
    case SentenceType::GLL:
    case SentenceType::RMC:
    case SentenceType::ZDA:
    case SentenceType::GST:
      return true;
    default:
      return false;
  }
}

void Ledger::TakeLine(const Sentence& sentence) {
  ++classes_[static_cast<std::size_t>(sentence.lineClass)];
  if (sentence.tooLong) ++tooLong_;
  if (sentence.lineClass != LineClass::Unknown) return;
  const auto found = unknown_.find(sentence.address);
  if (found != unknown_.end()) {
    ++found->second;
  } else {
    unknown_.emplace(sentence.address, 1);
  }
}

Ledger::Name Ledger::NameFor(const Sentence& sentence) {
  const auto [found, isNew] = places_.try_emplace(sentence.name, static_cast<Name>(names_.size()));
  if (isNew) {
    NameState state;
    state.name = sentence.type == SentenceType::ATT ? kAttitudeName : sentence.address;
    state.type = sentence.type;
    names_.push_back(std::move(state));
  }
  return found->second;
}

void Ledger::TakeSentence(Name name, const Sentence& sentence, Epoch epoch) {
  NameState& state = names_[name];
  ++state.n;
  if (epoch == TrialClock::kNone) {
    ++state.withoutTime;
  } else if (state.epochs.empty() || state.epochs.back() != epoch) {
    state.epochs.push_back(epoch);
  }
  if (sentence.unreadable == 0) return;
  for (std::size_t slot = 0; slot < state.unreadable.size(); ++slot) {
    if ((sentence.unreadable >> slot & 1U) != 0) ++state.unreadable[slot];
  }
}

Times Ledger::TimesOf(const NameState& state, const TrialClock& clock) const {
  Times times(state.epochs.size());
  std::transform(state.epochs.begin(), state.epochs.end(), times.begin(),
                 [&](Epoch epoch) { return clock.TimeOf(epoch); });
  if (!std::is_sorted(times.begin(), times.end())) std::sort(times.begin(), times.end());
  times.erase(std::unique(times.begin(), times.end()), times.end());
  return times;
}

NameLedger Ledger::FiguresOf(const NameState& state, const TrialClock& clock) const {
  const Times times = TimesOf(state, clock);
  const Value median = MedianStep(times);
  NameLedger figures;
  figures.name = state.name;
  figures.n = state.n;
  figures.epochs = static_cast<Count>(times.size());
  figures.withoutTime = state.withoutTime;
  if (!times.empty()) {
    figures.firstAt = clock.MomentOf(times.front());
    figures.lastAt = clock.MomentOf(times.back());
  }
  figures.interval = Seconds(median);
  if (median) figures.jitterP95 = Seconds(StepJitter(times, *median));
  figures.gaps = GapsOf(times, median, clock);
  if (TellsTime(state.type)) {
    figures.repeated = state.n - state.withoutTime - figures.epochs;
    figures.stepsBack = 0;
    for (std::size_t i = 1; i < state.epochs.size(); ++i) {
      if (clock.TimeOf(state.epochs[i]) < clock.TimeOf(state.epochs[i - 1])) ++*figures.stepsBack;
    }
  }
  return figures;
}

LedgerFigures Ledger::Figures(const TrialClock& clock) const {
  LedgerFigures figures;
  const auto classCount = [&](LineClass lineClass) {
    const Count n = classes_[static_cast<std::size_t>(lineClass)];
    figures.lines += n;
    return n;
  };
  figures.classes = {.good = classCount(LineClass::Good),
                     .unreadable = classCount(LineClass::Unreadable),
                     .unknown = classCount(LineClass::Unknown),
                     .wrongChecksum = classCount(LineClass::WrongChecksum),
                     .noChecksum = classCount(LineClass::NoChecksum),
                     .malformed = classCount(LineClass::Malformed),
                     .foreign = classCount(LineClass::Foreign),
                     .empty = classCount(LineClass::Empty)};
  figures.tooLong = tooLong_;
  figures.dated = clock.IsDated();

  std::map<std::string, Count> unreadable;
  for (const NameState& state : names_) {
    figures.byName.push_back(FiguresOf(state, clock));
    for (std::size_t slot = 0; slot < state.unreadable.size(); ++slot) {
      if (state.unreadable[slot] == 0) continue;
      unreadable[state.name + "." + std::string(FieldName(state.type, slot))] +=
          state.unreadable[slot];
    }
  }
  std::sort(figures.byName.begin(), figures.byName.end(),
            [](const NameLedger& a, const NameLedger& b) { return a.name < b.name; });
  for (const NameLedger& name : figures.byName) {
    if (name.firstAt) {
      figures.firstAt = figures.firstAt ? std::min(figures.firstAt, name.firstAt) : name.firstAt;
      figures.lastAt = figures.lastAt ? std::max(figures.lastAt, name.lastAt) : name.lastAt;
    }
    figures.stepsBack = std::max(figures.stepsBack, name.stepsBack.value_or(0));
  }
  if (figures.firstAt) {
    figures.span =
        static_cast<double>(figures.lastAt->milliseconds - figures.firstAt->milliseconds) / 1000.0;
  }
  for (const auto& [name, n] : unknown_) figures.unknown.push_back({name, n});
  for (const auto& [name, n] : unreadable) figures.unreadable.push_back({name, n});
  return figures;
}

std::vector<NameSpans> Ledger::Spans(const TrialClock& clock) const {
  std::vector<NameSpans> spans;
  for (const NameState& state : names_) {
    const Times times = TimesOf(state, clock);
    const Value median = MedianStep(times);
    NameSpans name{.name = state.name, .spans = {}};
    for (const std::int64_t time : times) {
      const bool goesOn = !name.spans.empty() && median &&
                          static_cast<double>(time - name.spans.back().to) <= 3.0 * *median;
      if (goesOn) {
        name.spans.back().to = time;
      } else {
        name.spans.push_back({time, time});
      }
    }
    spans.push_back(std::move(name));
  }
  std::sort(spans.begin(), spans.end(),
            [](const NameSpans& a, const NameSpans& b) { return a.name < b.name; });
  return spans;
}

std::size_t Ledger::Bytes() const {
  std::size_t bytes = 0;
  for (const NameState& state : names_) bytes += state.epochs.capacity() * sizeof(Epoch);
  return bytes;
}

}  // namespace fathomline::trial
