#include "simulator/simulator.h"

#include <algorithm>
#include <cmath>

#include "simulator/gnss_sentences.h"

namespace fathomline::simulator {
namespace {

// Whether a sentence tells what the receiver has measured.
bool NeedsFix(SentenceKind kind) {
  return kind == SentenceKind::VDO || (kind >= SentenceKind::GGA && kind <= SentenceKind::GST);
}

}  // namespace

double UsualRate(const Scenario& scenario, SentenceKind kind, std::optional<double> rate) {
  double usual = 1.0;
  for (const SentenceRate& row : scenario.sentences) {
    if (row.kind == kind) usual = row.rate;
  }
  if (!rate || kind == SentenceKind::VDM) return usual;
  const bool fast = kSentenceKinds[static_cast<std::size_t>(kind)].fast;
  return fast ? *rate : std::min(usual, *rate);
}

std::vector<SentenceRate> UsualSentences(const Scenario& scenario, std::optional<double> rate) {
  std::vector<SentenceRate> sentences;
  for (const SentenceRate& row : scenario.sentences) {
    sentences.push_back({row.kind, UsualRate(scenario, row.kind, rate)});
  }
  return sentences;
}

Simulator::Simulator(const SimulationOptions& options)
    : options_(options),
      end_(std::llround(options.duration * 1e9)),
      calendar_(options.start),
      vessel_(*options.scenario),
      receiver_(*options.scenario, options.seed, calendar_.StartSecond()),
      traffic_(*options.scenario, options.seed),
      instruments_(*options.scenario, options.seed) {
  for (const SentenceRate& sentence : options.sentences) {
    if (sentence.kind == SentenceKind::VDM) {
      reports_.emplace(traffic_, vessel_.Map(), options.seed, sentence.rate);
    } else {
      schedules_.push_back({sentence});
    }
  }
  std::sort(schedules_.begin(), schedules_.end(),
            [](const Schedule& a, const Schedule& b) { return a.sentence.kind < b.sentence.kind; });
  const VesselState start = vessel_.At(0.0);
  truth_.moored = options.scenario->route.empty();
  truth_.reference.position = start.position;
  truth_.reference.height = options.scenario->antennaHeight;
  truth_.reference.heading = truth_.moored ? options.scenario->heading : start.heading;
}

bool Simulator::NextEpoch(Epoch& epoch) {
  SimulatedTime now = reports_ ? reports_->NextDue() : end_;
  for (const Schedule& schedule : schedules_) now = std::min(now, schedule.due);
  if (now >= end_) return false;

  epoch.time = now;
  epoch.lines.Clear();
  epoch.fix.reset();
  SentenceWriter writer(epoch.lines, options_.crLf);
  const double seconds = ToSeconds(now);
  const UtcMoment moment = calendar_.At(now);
  const bool anyDue = std::any_of(schedules_.begin(), schedules_.end(),
                                  [&](const Schedule& schedule) { return schedule.due == now; });
  const VesselState vessel = anyDue ? vessel_.At(seconds) : VesselState{};
  const auto count = [&](SentenceKind kind, std::size_t before) {
    truth_.sentences[static_cast<std::size_t>(kind)] +=
        static_cast<std::int64_t>(epoch.lines.Count() - before);
  };

  for (Schedule& schedule : schedules_) {
    if (schedule.due != now) continue;
    const SentenceKind kind = schedule.sentence.kind;
    if (NeedsFix(kind) && !epoch.fix) {
      const ReceiverFix& fix = receiver_.Measure(now, vessel);
      epoch.fix = fix.truth;
      ++truth_.fixes;
      if (fix.Usable()) ++truth_.usableFixes;
    }
    const std::size_t before = epoch.lines.Count();
    if (kind == SentenceKind::VDO) {
      ownReports_.Write(writer, vessel, receiver_.Fix(), moment);
    } else if (kind <= SentenceKind::GST) {
      WriteGNSSSentence(kind, writer, receiver_, moment, truth_);
    } else {
      instruments_.Write(kind, writer, vessel, traffic_, seconds, moment, truth_);
    }
    count(kind, before);
    ++schedule.sent;
    schedule.due = std::llround(static_cast<double>(schedule.sent) * 1e9 / schedule.sentence.rate);
  }
  if (reports_) {
    const std::size_t before = epoch.lines.Count();
    while (reports_->NextDue() <= now) reports_->WriteNext(writer, moment);
    count(SentenceKind::VDM, before);
  }
  return true;
}

}  // namespace fathomline::simulator
