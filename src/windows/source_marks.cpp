#include "windows/source_marks.h"

#include <cmath>

#include "base/format.h"
#include "base/look.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

constexpr Mark kReplaying{"● replay", look::kAlive};
constexpr Mark kResting{"○ file", look::kMutedInk};

Liveliness OfSilence(double seconds) {
  if (seconds <= SourceActivity::kLeastLimit) return Liveliness::Alive;
  const double dead = SourceActivity::kLeastLimit * SourceActivity::kLimitsUntilDead;
  return seconds <= dead ? Liveliness::Late : Liveliness::Dead;
}

std::string ConditionText(const LinkCondition& link) {
  switch (link.stage) {
    case LinkStage::Closed:
      if (link.kind == SourceKind::None) return "no link chosen";
      return link.kind == SourceKind::File ? "at rest" : "closed";
    case LinkStage::Opening:
      return "connecting";
    case LinkStage::Open:
      if (link.kind == SourceKind::File) return "being replayed";
      return link.kind == SourceKind::Tcp ? "connected" : "open";
    case LinkStage::Lost:
      return link.cause;
    case LinkStage::Waiting:
      break;
  }
  const auto seconds = static_cast<std::int32_t>(std::ceil(link.nextTry));
  return link.cause + "; try " + PlainText(std::int32_t{link.tries + 1}) + " in " +
         PlainText(seconds) + " s";
}

}  // namespace

Mark MarkOf(Liveliness state) {
  switch (state) {
    case Liveliness::Alive:
      return {"● alive", look::kAlive};
    case Liveliness::Late:
      return {"▲ late", look::kLate};
    case Liveliness::Dead:
      break;
  }
  return {"■ dead", look::kDead};
}

std::string AgeText(double seconds, bool tenths) {
  if (seconds < 10.0)
    return Format(tenths ? seconds : std::floor(seconds), tenths ? "0.0" : "0") + " s";
  if (seconds < 120.0) return Format(seconds, "0") + " s";
  if (seconds < 7200.0) return Format(seconds / 60.0, "0") + " min";
  return Format(seconds / 3600.0, "0") + " h";
}

std::string RateText(double rate) {
  if (rate >= 100.0) return Format(rate, "0");
  if (rate >= 1.0 || rate == 0.0) return Format(rate, "0.0");
  return Format(rate, rate >= 0.1 ? "0.00" : "0.000");
}

SourceReading ReadSource(const Records& records, LinkDesk& links, const SourceActivity& activity,
                         int system, SourceActivity::Time now) {
  SourceReading reading{.link = links.Look(system),
                        .source = activity.Look(system, now),
                        .mark = kResting,
                        .condition = {},
                        .lastLine = {}};
  reading.condition = ConditionText(reading.link);
  if (reading.source.lines > 0) reading.lastLine = AgeText(reading.source.age) + " ago";
  if (records.Offline()) {
    reading.mark = reading.link.stage == LinkStage::Open ? kReplaying : kResting;
  } else if (reading.link.stage != LinkStage::Open) {
    reading.mark = MarkOf(Liveliness::Dead);
  } else if (reading.source.lines == 0) {
    reading.mark = MarkOf(OfSilence(reading.link.openFor));
  } else {
    reading.mark = MarkOf(reading.source.state);
  }
  return reading;
}

SourceMarks::SourceMarks(const Records& records, Desktop& desktop, LinkDesk& links, Watch& watch,
                         frmMain& mainWindow)
    : records_(records), desktop_(desktop), links_(links), watch_(watch), mainWindow_(mainWindow) {
  mainWindow_.onSecond = [this] { Renew(); };
}

void SourceMarks::Renew() {
  const auto now = desktop_.Now();
  for (int system = 1; system <= kSystems; ++system) {
    const CommSetup& setup = records_.CommSetups[system];
    if (!setup.Enabled) {
      mainWindow_.HideSource(system);
      continue;
    }
    const SourceReading reading = ReadSource(records_, links_, watch_.Activity(), system, now);
    // The shape, the number of the system, the word, the age.
    const std::string_view mark = reading.mark.text;
    const std::size_t shape = mark.find(' ');
    std::string text(mark.substr(0, shape));
    text.append(" ").append(PlainText(std::int32_t{system})).append(mark.substr(shape));
    if (!records_.Offline() && reading.source.lines > 0) {
      text += " " + AgeText(reading.source.age, false);
    }
    std::string tip = SystemTitle(system);
    if (!setup.Name.empty()) tip += ", " + setup.Name;
    tip += "\n" + reading.link.address + (reading.link.address.empty() ? "" : ": ") +
           reading.condition;
    if (!reading.lastLine.empty()) {
      tip += "\n" + RateText(reading.source.rate) + " lines a second, the last one " +
             reading.lastLine;
    }
    mainWindow_.ShowSource(system, text, reading.mark.colour, tip);
  }
  mainWindow_.mnuOptionsReconnect.SetChecked(links_.Keeping());
  watch_.Activity().Tick(now);
}

}  // namespace fathomline
