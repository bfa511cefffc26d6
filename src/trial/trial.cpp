#include "trial/trial.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>

#include "trial/angle_figures.h"
#include "trial/availability_figures.h"
#include "trial/pair_figures.h"
#include "trial/position_figures.h"

namespace fathomline::trial {
namespace {

constexpr double kMovingAbove = 1.0;  // knots
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// What the figures of one system are made of.
struct Work {
  const TrialSystem* system = nullptr;
  Window window;
  std::vector<PositionSeries> streams;  // by name
  const PositionSeries* chosen = nullptr;
  std::vector<ValueSeries> headings;

  const SystemRecorder& Recorder() const { return *system->recorder; }
  const TrialClock& Clock() const { return system->recorder->Clock(); }
};

std::vector<ValueSeries> SeriesOf(const std::vector<ValueSamples>& columns, const Work& work) {
  std::vector<ValueSeries> all;
  for (const ValueSamples& samples : columns) {
    ValueSeries series(samples, work.Clock(), work.window);
    if (!series.values.empty()) all.push_back(std::move(series));
  }
  std::sort(all.begin(), all.end(),
            [](const ValueSeries& a, const ValueSeries& b) { return a.name < b.name; });
  return all;
}

int TypeRank(SentenceType type) {
  switch (type) {
    case SentenceType::GGA:
      return 3;
    case SentenceType::GNS:
      return 2;
    case SentenceType::RMC:
      return 1;
    default:
      return 0;
  }
}

// The one named; else with fixes, with heights, most fixes, most epochs, by type and name. They
// stand by name.
const PositionSeries* ChosenStream(const std::vector<PositionSeries>& streams,
                                   const std::optional<std::string>& named) {
  const auto rank = [](const PositionSeries& s) {
    return std::tuple(s.Fixes() > 0, s.Heights() != HeightKind::None, s.Fixes(), s.size(),
                      TypeRank(s.Type()));
  };
  const auto chosen = named ? std::ranges::find(streams, *named, &PositionSeries::Name)
                            : std::ranges::max_element(streams, {}, rank);
  return chosen == streams.end() ? nullptr : &*chosen;
}

Work Prepare(const TrialSystem& system, const Window& window) {
  Work work;
  work.system = &system;
  work.window = window;
  for (const PositionSamples& samples : work.Recorder().Columns().Positions()) {
    PositionSeries series(samples, work.Clock(), window);
    if (series.size() > 0) work.streams.push_back(std::move(series));
  }
  std::sort(work.streams.begin(), work.streams.end(),
            [](const PositionSeries& a, const PositionSeries& b) { return a.Name() < b.Name(); });
  work.chosen = ChosenStream(work.streams, system.stream);
  work.headings = SeriesOf(work.Recorder().Columns().Headings(), work);
  return work;
}

StreamFigures FiguresOfStream(const PositionSeries& series, const PositionSeries* chosen) {
  StreamFigures figures;
  figures.name = series.Name();
  figures.chosen = &series == chosen;
  figures.epochs = static_cast<Count>(series.size());
  figures.fixes = series.Fixes();
  figures.heights = series.Heights();
  figures.interval = Seconds(series.Interval());
  figures.conflicting = series.Conflicting();
  if (chosen != nullptr && &series != chosen) {
    const StreamDistance distance = DistanceOf(*chosen, series);
    figures.matched = distance.matched;
    figures.medianDistance = distance.median;
  }
  return figures;
}

bool IsMoving(const std::vector<ValueSeries>& speeds) {
  const auto most = std::ranges::max_element(
      speeds, {}, [](const ValueSeries& series) { return series.values.size(); });
  if (most == speeds.end()) return false;
  std::vector<double> values = most->values;
  return PercentFigure(values, 50).value_or(0.0) > kMovingAbove;
}

std::vector<AngleErrors> AnglesOf(const std::vector<ValueSeries>& all, Value reference,
                                  AngleRange range, const TrialClock& clock,
                                  std::vector<AngleTrack>& tracks) {
  std::vector<AngleErrors> figures;
  for (const ValueSeries& series : all) {
    figures.push_back(AngleErrorsOf(series, reference, range, clock));
    tracks.push_back(AngleTrackOf(series, figures.back()));
  }
  return figures;
}

// What the errors of a system are about.
struct Comparison {
  Reference told;
  PositionErrors errors;  // of every place, fix or not
  std::string_view why;   // there are none, if there are none
};

Comparison CompareWithPlace(const Work& work, const TrialOptions& options, ReferenceKind kind) {
  Comparison comparison;
  comparison.told.kind = kind;
  comparison.why = why::kNoFix;
  std::optional<PlaceReference> reference;
  if (kind == ReferenceKind::Given) {
    const bool hasHeight = !std::isnan(options.given.height);
    reference = {options.given, hasHeight ? options.givenHeights : HeightKind::None};
  } else if (work.chosen != nullptr) {
    reference = kind == ReferenceKind::First ? FirstFix(*work.chosen) : MeanFix(*work.chosen);
  }
  if (!reference) {
    comparison.told.why = why::kNoFix;
    return comparison;
  }
  comparison.told.latitude = reference->place.latitude;
  comparison.told.longitude = reference->place.longitude;
  if (!std::isnan(reference->place.height)) comparison.told.height = reference->place.height;
  if (work.chosen != nullptr) comparison.errors = ErrorsAbout(*reference, *work.chosen);
  return comparison;
}

Comparison Compare(const Work& work, const Work* reference, const TrialOptions& options) {
  if (options.reference != ReferenceKind::System) {
    return CompareWithPlace(work, options, options.reference);
  }
  // The reference itself stands about its mean.
  if (reference == nullptr || reference == &work) {
    return CompareWithPlace(work, options, ReferenceKind::Mean);
  }
  Comparison comparison;
  comparison.told.kind = ReferenceKind::System;
  comparison.told.name = options.referenceSystem;
  const auto hasFix = [](const Work& w) { return w.chosen != nullptr && w.chosen->Fixes() > 0; };
  comparison.why = hasFix(work) && hasFix(*reference) ? why::kNoOverlap : why::kNoFix;
  if (!hasFix(*reference)) {
    comparison.told.why = why::kNoFix;
  } else if (work.chosen != nullptr) {
    comparison.errors = DifferencesAt(*work.chosen, *reference->chosen, BaseIs::Second).errors;
  }
  return comparison;
}

// All of the stream's epochs; NaN where there is no error.
PositionTrack TrackOf(const PositionSeries& series, const PositionErrors& errors) {
  PositionTrack track;
  track.times = series.AllTimes();
  track.north.assign(series.size(), kNone);
  track.east = track.up = track.north;
  track.quality.resize(series.size());
  for (std::size_t i = 0; i < series.size(); ++i) {
    track.quality[i] = static_cast<std::uint8_t>(series.QualityOf(i));
  }
  for (std::size_t i = 0; i < errors.places.size(); ++i) {
    const std::uint32_t place = errors.places[i];
    track.north[place] = errors.north[i];
    track.east[place] = errors.east[i];
    if (errors.whyNoUp.empty()) track.up[place] = errors.up[i];
  }
  return track;
}

std::vector<QualityFigures> ByQuality(const PositionSeries& series, const Comparison& comparison) {
  std::array<Count, 10> epochs{};
  for (std::size_t i = 0; i < series.size(); ++i) {
    ++epochs[static_cast<std::size_t>(series.QualityOf(i))];
  }
  std::vector<QualityFigures> all;
  for (int quality = 1; quality < 10; ++quality) {
    const Count n = epochs[static_cast<std::size_t>(quality)];
    if (n == 0) continue;
    QualityFigures& figures = all.emplace_back();
    figures.quality = quality;
    figures.epochs = n;
    figures.share = static_cast<double>(n) / static_cast<double>(series.size());
    const PositionErrors errors = OfQuality(comparison.errors, series, quality);
    figures.horizontal = HorizontalOf(errors, comparison.why, series.Clock());
    figures.vertical = VerticalOf(errors, comparison.why, series.Clock());
  }
  return all;
}

void WorkOutPositions(SystemFigures& figures, const Work& work, const Comparison& comparison) {
  figures.reference = comparison.told;
  const TrialClock& clock = work.Clock();
  PositionErrors errors;
  if (work.chosen != nullptr) {
    figures.stream = work.chosen->Name();
    figures.availability = AvailabilityOf(*work.chosen);
    figures.byQuality = ByQuality(*work.chosen, comparison);
    figures.pictures.positions = TrackOf(*work.chosen, comparison.errors);
    errors = OfFixes(comparison.errors, *work.chosen);
  } else {
    figures.availability.why = work.streams.empty() ? why::kNoneSent : why::kNoFix;
  }
  figures.horizontal = HorizontalOf(errors, comparison.why, clock);
  figures.vertical = VerticalOf(errors, comparison.why, clock);

  const std::string talker = figures.stream.value_or("").substr(0, 2);
  figures.gst = ClaimOf(work.Recorder().Columns().Claims(), talker, errors, comparison.why, clock,
                        work.window);
  const bool nothingStill = figures.moving && comparison.told.kind != ReferenceKind::System;
  if (nothingStill && figures.gst.why != why::kNoneSent && figures.gst.why != why::kNoFix) {
    figures.gst.why = why::kMoving;
  }
}

SystemFigures WorkOutSystem(const Work& work, const Work* reference, const TrialOptions& options) {
  const SystemRecorder& recorder = work.Recorder();
  const TrialClock& clock = recorder.Clock();
  const Samples& samples = recorder.Columns();
  SystemFigures figures;
  figures.name = work.system->name;
  figures.ledger = recorder.Lines().Figures(clock);
  for (const PositionSeries& series : work.streams) {
    figures.streams.push_back(FiguresOfStream(series, work.chosen));
  }
  const std::vector<ValueSeries> speeds = SeriesOf(samples.SpeedsOverGround(), work);
  figures.moving = IsMoving(speeds);
  WorkOutPositions(figures, work, Compare(work, reference, options));

  SystemPictures& pictures = figures.pictures;
  figures.heading =
      AnglesOf(work.headings, options.heading, AngleRange::Full, clock, pictures.headings);
  figures.pitch = AnglesOf(SeriesOf(samples.Pitches(), work), options.pitch, AngleRange::Signed,
                           clock, pictures.pitches);
  figures.roll = AnglesOf(SeriesOf(samples.Rolls(), work), options.roll, AngleRange::Signed, clock,
                          pictures.rolls);

  const std::array series = {SeriesOf(samples.Depths(), work),
                             SeriesOf(samples.RatesOfTurn(), work), speeds,
                             SeriesOf(samples.SpeedsThroughWater(), work)};
  for (std::size_t i = 0; i < series.size(); ++i) {
    for (const ValueSeries& one : series[i]) {
      figures.series[i].names.push_back(SeriesFiguresOf(one, clock));
    }
  }
  figures.satellites = recorder.Satellites().Figures(clock);
  figures.ais = recorder.Ais().Figures();
  figures.ais.ownPosition = OwnPositionOf(recorder.Ais(), work.chosen, clock, work.window);
  pictures.satellites = recorder.Satellites().Tracks(clock);
  pictures.availability = recorder.Lines().Spans(clock);
  return figures;
}

// The beginning of the day of the earliest time of the systems that tell a date, or that tell none.
std::optional<std::int64_t> FirstDay(const std::vector<TrialSystem>& systems, bool dated) {
  std::optional<std::int64_t> first;
  for (const TrialSystem& system : systems) {
    const TrialClock& clock = system.recorder->Clock();
    const auto& times = clock.KeptTimes();
    if (times.empty() || clock.IsDated() != dated) continue;
    const std::int64_t earliest = *std::min_element(times.begin(), times.end()) + clock.Offset();
    first = std::min(first.value_or(earliest), earliest);
  }
  if (!first) return std::nullopt;
  const std::int64_t rest = *first % kDayMilliseconds;
  return *first - (rest < 0 ? rest + kDayMilliseconds : rest);
}

// A bound as a time of the systems that tell a date, or of those that tell none.
std::optional<Moment> Resolve(const TimeBound& bound, bool dated,
                              const std::vector<TrialSystem>& systems) {
  if (bound.of == TimeBound::Of::FirstDay) {
    auto firstDay = FirstDay(systems, dated);
    // Recordings that tell no time at all still have a first day.
    if (!firstDay && !dated && !FirstDay(systems, true)) firstDay = 0;
    return firstDay ? std::optional(Moment{*firstDay + bound.milliseconds, dated}) : std::nullopt;
  }
  const Moment moment{bound.milliseconds, bound.of == TimeBound::Of::Date};
  return moment.dated == dated ? std::optional(moment) : std::nullopt;
}

// What lies between the bounds; nothing where a bound is no time of these systems.
Window WindowOf(const TrialOptions& options, bool dated, const std::vector<TrialSystem>& systems) {
  constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
  const auto resolve = [&](const std::optional<TimeBound>& bound) {
    return bound ? Resolve(*bound, dated, systems) : std::nullopt;
  };
  const auto from = resolve(options.from);
  const auto to = resolve(options.to);
  if ((options.from && !from) || (options.to && !to)) return {.from = kNever, .to = kNever};
  Window window;
  if (from) window.from = from->milliseconds;
  if (to) window.to = to->milliseconds;
  return window;
}

std::optional<std::string> BoundText(const std::optional<TimeBound>& bound,
                                     const std::vector<TrialSystem>& systems) {
  if (!bound) return std::nullopt;
  for (const bool dated : {true, false}) {
    if (const auto moment = Resolve(*bound, dated, systems)) return ToText(*moment);
  }
  return std::nullopt;
}

// A system may have a reference of its own.
TrialOptions OptionsOf(const TrialSystem& system, const TrialOptions& options) {
  TrialOptions own = options;
  if (const auto& reference = system.reference) {
    own.reference = reference->kind;
    own.given = reference->given;
    own.givenHeights = reference->givenHeights;
    own.heading = reference->heading;
    own.pitch = reference->pitch;
    own.roll = reference->roll;
  }
  return own;
}

}  // namespace

TrialFigures WorkOut(const std::vector<TrialSystem>& systems, const TrialOptions& options) {
  TrialFigures figures;
  figures.meta = options.meta;
  figures.meta.from = BoundText(options.from, systems);
  figures.meta.to = BoundText(options.to, systems);

  const std::array<Window, 2> windows = {WindowOf(options, false, systems),
                                         WindowOf(options, true, systems)};
  std::vector<Work> works;
  works.reserve(systems.size());
  for (const TrialSystem& system : systems) {
    works.push_back(Prepare(system, windows[system.recorder->Clock().IsDated() ? 1 : 0]));
  }
  const auto reference = std::find_if(works.begin(), works.end(), [&](const Work& work) {
    return work.system->name == options.referenceSystem;
  });
  for (const Work& work : works) {
    figures.systems.push_back(WorkOutSystem(work, reference == works.end() ? nullptr : &*reference,
                                            OptionsOf(*work.system, options)));
  }
  for (std::size_t i = 0; i < works.size(); ++i) {
    for (std::size_t j = i + 1; j < works.size(); ++j) {
      PairFigures& pair = figures.pairs.emplace_back(PairOf(works[i].chosen, works[j].chosen));
      pair.name = works[i].system->name + "-" + works[j].system->name;
      pair.heading =
          HeadingDifferences(ChosenHeading(works[i].headings), ChosenHeading(works[j].headings),
                             works[i].Clock(), works[j].Clock());
    }
  }
  return figures;
}

}  // namespace fathomline::trial
