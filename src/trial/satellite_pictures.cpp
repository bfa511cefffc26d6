#include "trial/satellite_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <optional>
#include <utility>

#include "trial/picture_parts.h"

namespace fathomline::trial {
namespace {

constexpr std::size_t kOtherConstellation = kConstellations.size();

std::size_t ConstellationOf(std::string_view name) {
  const auto* found = std::find_if(kConstellations.begin(), kConstellations.end(),
                                   [name](const Constellation& row) { return row.name == name; });
  return static_cast<std::size_t>(found - kConstellations.begin());
}

MarkShape MarkOf(std::size_t constellation) {
  return constellation < kOtherConstellation ? kConstellations[constellation].mark
                                             : MarkShape::Ring;
}

std::string SignalName(std::string_view constellation, const std::optional<std::string>& signal) {
  return std::string(constellation) + (signal ? " " + *signal : "");
}

// "G07".
std::string SatelliteName(const SatelliteTrack& track) {
  const std::size_t row = ConstellationOf(track.constellation);
  std::string name(1, row < kOtherConstellation ? kConstellations[row].letter : '?');
  if (track.number < 10) name += '0';
  return name + std::to_string(track.number);
}

// Radius from the zenith in the middle to the horizon on the rim.
struct Sky {
  double x = 0.0;
  double y = 0.0;
  double radius = 0.0;

  std::pair<double, double> At(double elevation, double azimuth) const {
    const double length = radius * (90.0 - elevation) / 90.0;
    const double angle = azimuth * std::numbers::pi / 180.0;
    return {x + length * std::sin(angle), y - length * std::cos(angle)};
  }
};

void DrawRings(SvgPicture& picture, const Sky& sky) {
  for (const double elevation : {0.0, 30.0, 60.0}) {
    picture.Circle(sky.x, sky.y, sky.radius * (90.0 - elevation) / 90.0, "sky");
  }
  picture.Line(sky.x - sky.radius, sky.y, sky.x + sky.radius, sky.y, "sky");
  picture.Line(sky.x, sky.y - sky.radius, sky.x, sky.y + sky.radius, "sky");
  picture.Text(sky.x, sky.y - sky.radius - 6.0, "N", "m");
  picture.Text(sky.x + sky.radius + 6.0, sky.y + 4.0, "E", "");
  picture.Text(sky.x, sky.y + sky.radius + 15.0, "S", "m");
  picture.Text(sky.x - sky.radius - 6.0, sky.y + 4.0, "W", "e");
}

// All signals of a satellite go the same way, so one of them is drawn.
std::vector<const SatelliteTrack*> OnePerSatellite(const SystemFigures& system) {
  std::map<std::pair<std::string, Count>, const SatelliteTrack*> byNumber;
  for (const SatelliteTrack& track : system.pictures.satellites) {
    const SatelliteTrack*& kept = byNumber[{track.constellation, track.number}];
    if (kept == nullptr || track.samples->size() > kept->samples->size()) kept = &track;
  }
  std::vector<const SatelliteTrack*> tracks;
  tracks.reserve(byNumber.size());
  for (const auto& [key, track] : byNumber) tracks.push_back(track);
  return tracks;
}

bool HasPlace(const SatelliteSample& sample) {
  return sample.elevation >= 0 && sample.azimuth != SatelliteSample::kNoAzimuth;
}

// Where a track ends, with a mark and a name.
struct TrackEnd {
  const SatelliteTrack* track;
  double x, y;
  std::int64_t time;  // as Moment::milliseconds
  bool inUse;         // more often than not
};

// Of a sky that is full of tracks only those satellites have marks and names that were there in the
// end.
constexpr std::size_t kFullSky = 45;
constexpr std::int64_t kLongAgo = 600'000;

// The line is as true as whole degrees are: to half of one.
std::optional<TrackEnd> DrawTrack(SvgPicture& picture, const Sky& sky, const SatelliteTrack& track,
                                  bool full) {
  constexpr double kHalfDegree = std::numbers::pi / 360.0;
  PlotWay way(sky.radius * kHalfDegree);
  const SatelliteSample* last = nullptr;
  std::int64_t lastTime = 0;
  for (const SatelliteSample& sample : *track.samples) {
    if (!HasPlace(sample)) continue;
    const std::int64_t time = track.TimeOf(sample);
    const bool goesOn = last != nullptr && time >= lastTime && time - lastTime <= kLongAgo;
    lastTime = time;
    const bool same =
        last != nullptr && sample.elevation == last->elevation && sample.azimuth == last->azimuth;
    last = &sample;
    if (same) continue;
    if (!goesOn) way.Break();
    const auto [x, y] = sky.At(sample.elevation, sample.azimuth);
    way.Add(x, y);
  }
  if (last == nullptr) return std::nullopt;
  const std::string cls = Numbered("c", ConstellationOf(track.constellation));
  picture.Path(std::move(way).Path(), full ? cls + " dense" : cls);
  const auto [x, y] = sky.At(last->elevation, last->azimuth);
  const auto used = std::count_if(track.samples->begin(), track.samples->end(),
                                  [](const SatelliteSample& sample) { return sample.inUse; });
  return TrackEnd{&track, x, y, lastTime,
                  2 * used > static_cast<std::ptrdiff_t>(track.samples->size())};
}

struct NamePlace {
  double left, top;  // of the box of a name
};
constexpr double kNameWidth = 24.0;
constexpr double kNameHeight = 10.0;

// The first of eight places about a mark that covers no mark and no other name; else the first.
NamePlace PlaceForName(const TrackEnd& end, const std::vector<TrackEnd>& ends,
                       const std::vector<NamePlace>& names) {
  constexpr double kAway = 5.0;
  const auto free = [&](const NamePlace& place) {
    const bool onMark = std::any_of(ends.begin(), ends.end(), [&](const TrackEnd& other) {
      return other.x > place.left - kAway && other.x < place.left + kNameWidth + kAway &&
             other.y > place.top - kAway && other.y < place.top + kNameHeight + kAway;
    });
    return !onMark && std::none_of(names.begin(), names.end(), [&](const NamePlace& other) {
      return std::abs(other.left - place.left) < kNameWidth &&
             std::abs(other.top - place.top) < kNameHeight;
    });
  };
  const double right = end.x + kAway + 1.0;
  const double left = end.x - kAway - 1.0 - kNameWidth;
  const double middle = end.x - kNameWidth / 2.0;
  const double above = end.y - kAway - 1.0 - kNameHeight;
  const double beside = end.y - kNameHeight / 2.0;
  const double below = end.y + kAway + 1.0;
  const std::array<NamePlace, 8> places = {{{right, above},
                                            {right, beside},
                                            {right, below},
                                            {left, above},
                                            {left, beside},
                                            {left, below},
                                            {middle, above},
                                            {middle, below}}};
  const auto* found = std::find_if(places.begin(), places.end(), free);
  return found == places.end() ? places.front() : *found;
}

void DrawTracks(SvgPicture& picture, const Sky& sky, const SystemFigures& system) {
  std::vector<TrackEnd> ends;
  const std::vector<const SatelliteTrack*> tracks = OnePerSatellite(system);
  const bool full = tracks.size() > kFullSky;
  std::int64_t latest = std::numeric_limits<std::int64_t>::min();
  for (const SatelliteTrack* track : tracks) {
    const auto end = DrawTrack(picture, sky, *track, full);
    if (!end) continue;
    ends.push_back(*end);
    latest = std::max(latest, end->time);
  }
  if (full) {
    std::erase_if(ends, [latest](const TrackEnd& end) { return end.time < latest - kLongAgo; });
  }
  std::vector<NamePlace> names;
  for (const TrackEnd& end : ends) {
    const std::size_t row = ConstellationOf(end.track->constellation);
    picture.Mark(MarkOf(row), end.x, end.y, end.inUse ? 4.5 : 3.5,
                 Numbered(end.inUse ? "cf" : "unused c", row));
    names.push_back(PlaceForName(end, ends, names));
    picture.Text(names.back().left, names.back().top + kNameHeight - 1.0, SatelliteName(*end.track),
                 "halo small w");
  }
}

void DrawConstellationLegend(SvgPicture& picture, double x, double y, double width,
                             const std::vector<std::size_t>& rows) {
  const double each = std::min(width / static_cast<double>(rows.size()), 100.0);
  for (const std::size_t row : rows) {
    picture.Mark(MarkOf(row), x + 5.0, y - 4.0, 4.5, Numbered("cf", row));
    picture.Text(
        x + 14.0, y,
        row < kOtherConstellation ? kConstellations[row].name : std::string_view("unknown"), "");
    x += each;
  }
}

std::vector<std::size_t> ConstellationsOf(const SystemFigures& system) {
  std::vector<std::size_t> rows;
  for (const SatelliteTrack& track : system.pictures.satellites) {
    rows.push_back(ConstellationOf(track.constellation));
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

// Each value holds until the next one, if that comes within three usual steps.
PlotBand BandOf(const SatelliteTrack& track, const PlotScale& x, int width,
                const PlotRange& range) {
  constexpr std::size_t kEnough = 1000;
  const std::vector<SatelliteSample>& samples = *track.samples;
  std::vector<std::int64_t> steps;
  for (std::size_t i = 1; i < samples.size() && i <= kEnough; ++i) {
    steps.push_back(track.TimeOf(samples[i]) - track.TimeOf(samples[i - 1]));
  }
  const std::int64_t longest = 3 * UsualStep(std::move(steps));
  PlotBand band(x, width);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (samples[i].cn0 <= 0.0F) continue;
    const std::int64_t from = track.TimeOf(samples[i]);
    const std::int64_t next = i + 1 < samples.size() ? track.TimeOf(samples[i + 1]) : from;
    const std::int64_t to = next >= from && next - from <= longest ? next : from;
    band.Add(static_cast<double>(from), static_cast<double>(to),
             std::clamp(static_cast<double>(samples[i].cn0), range.low, range.high));
  }
  return band;
}

PlotTimes TimesOfSatellites(const SystemFigures& system) {
  PlotTimes times;
  for (const SatelliteTrack& track : system.pictures.satellites) {
    for (const SatelliteSample& sample : *track.samples) times.Include(track.TimeOf(sample));
  }
  return times;
}

}  // namespace

std::string SkyPicture(const TrialFigures& trial) {
  std::vector<const SystemFigures*> shown;
  std::vector<std::size_t> rows;
  for (const SystemFigures& system : trial.systems) {
    if (system.pictures.satellites.empty()) continue;
    shown.push_back(&system);
    for (const std::size_t row : ConstellationsOf(system)) rows.push_back(row);
  }
  if (shown.empty()) return {};
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  const bool one = shown.size() == 1;
  const double radius = one ? 210.0 : 150.0;
  const double down = radius * 2.0 + 70.0;
  const double width = one ? radius * 2.0 + 60.0 : kPictureWidth;
  SvgPicture picture(width, 24.0 + down * std::ceil(static_cast<double>(shown.size()) / 2.0), "sky",
                     "Tracks over the sky",
                     "The sky seen from below the zenith, north on top, the horizon as the rim and "
                     "rings at 30 and 60 degrees of elevation. Lines are the tracks of satellites, "
                     "marks their last places, filled where the satellite was mostly in use.",
                     one ? "square" : "");
  DrawConstellationLegend(picture, 10.0, 14.0, width - 10.0, rows);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const double middle = one ? width / 2.0 : width * (i % 2 == 0 ? 0.25 : 0.75);
    const Sky sky{middle, 62.0 + radius + down * std::floor(static_cast<double>(i) / 2.0), radius};
    if (!one) {
      picture.Text(sky.x - radius - 14.0, sky.y - radius - 6.0, "System " + shown[i]->name, "b");
    }
    DrawRings(picture, sky);
    DrawTracks(picture, sky, *shown[i]);
  }
  return std::move(picture).Finish();
}

std::string SignalPicture(const SystemFigures& system, std::size_t number) {
  const PlotTimes times = TimesOfSatellites(system);
  std::vector<const SatelliteTrack*> tracks;
  for (const SatelliteTrack& track : system.pictures.satellites) {
    if (std::any_of(track.samples->begin(), track.samples->end(),
                    [](const SatelliteSample& sample) { return sample.cn0 > 0.0F; })) {
      tracks.push_back(&track);
    }
  }
  if (tracks.empty()) return {};
  std::stable_sort(tracks.begin(), tracks.end(), [](const auto* a, const auto* b) {
    return ConstellationOf(a->constellation) < ConstellationOf(b->constellation);
  });
  constexpr double kRow = 19.0;
  constexpr double kTop = 48.0;
  constexpr double kLeft = 84.0;
  constexpr double kLow = 15.0;  // dB-Hz at the foot of a row
  constexpr double kHigh = 55.0;
  const double bottom = kTop + kRow * static_cast<double>(tracks.size());
  const PlotScale x = times.Scale(kLeft, kPlotRight);
  // Long lists have coarser columns.
  const int width = tracks.size() <= 40 ? 2 : tracks.size() <= 80 ? 3 : 5;
  SvgPicture picture(kPictureWidth, bottom + 26.0, Numbered("signals", number),
                     "Signal strengths of system " + system.name + " over time",
                     "One row for each satellite and signal. The band goes from the least to the "
                     "greatest C/N0 of each moment; the foot of a row is 15 dB-Hz, its top 55.");
  DrawConstellationLegend(picture, 20.0, 14.0, kPictureWidth - 20.0, ConstellationsOf(system));
  picture.Text(kLeft, kTop - 10.0, "each row 15 to 55 dB-Hz", "unit");
  picture.Text(kPlotRight, kTop - 10.0, DayOfAxis(times, system.ledger.dated), "e");
  DrawAxes(picture, x, ScaleOfRows(kTop, bottom), {TimeTicks(x, system.ledger.dated), {}});
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    const double above = kTop + kRow * static_cast<double>(i);
    const PlotScale y(kLow, kHigh, above + kRow - 1.0, above + 1.0);
    const PlotBand band = BandOf(*tracks[i], x, width, {kLow, kHigh});
    picture.Line(kLeft, above + kRow, kPlotRight, above + kRow, "grid");
    const std::string name = SatelliteName(*tracks[i]);
    picture.Text(kLeft - 6.0, above + 14.0,
                 tracks[i]->signal ? name + " · " + *tracks[i]->signal : name, "e row");
    picture.Path(band.Area(y, 2.0), Numbered("cf", ConstellationOf(tracks[i]->constellation)));
  }
  return std::move(picture).Finish();
}

std::string ElevationPicture(const SystemFigures& system, std::size_t number) {
  constexpr double kTop = 44.0;
  constexpr double kBottom = 240.0;
  constexpr double kHalf = 5.0;  // of a bin
  struct Line {
    std::size_t row;
    std::string name;
    const SignalFigures* signal;
  };
  std::vector<Line> lines;
  double least = std::numeric_limits<double>::infinity();
  double greatest = -least;
  for (const ConstellationFigures& constellation : system.satellites.constellations) {
    for (const SignalFigures& signal : constellation.signals) {
      bool any = false;
      for (const ElevationBin& bin : signal.byElevation) {
        if (!bin.mean) continue;
        any = true;
        const double spread = bin.std.value_or(0.0);
        least = std::min(least, *bin.mean - spread);
        greatest = std::max(greatest, *bin.mean + spread);
      }
      if (any) {
        lines.push_back({ConstellationOf(constellation.name),
                         SignalName(constellation.name, signal.signal), &signal});
      }
    }
  }
  if (lines.empty()) return {};
  const PlotRange range = RoomyRange(least, greatest, 10.0);
  const PlotScale x(0.0, 90.0, kPlotLeft, kPlotRight - 120.0);
  const PlotScale y(range.low, range.high, kBottom, kTop);
  SvgPicture picture(kPictureWidth, kBottom + 42.0, Numbered("elevation", number),
                     "Signal strength of system " + system.name + " by elevation",
                     "Mean C/N0 in steps of ten degrees of elevation, with one standard deviation "
                     "up and down, for each constellation and signal.");
  picture.Text(kPlotLeft, kTop - 10.0, "C/N0, dB-Hz", "unit");
  picture.Text(x.To(), kBottom + 36.0, "elevation, °", "e");
  std::vector<PlotTick> degrees;
  for (int at = 0; at <= 90; at += 10) degrees.push_back({double(at), std::to_string(at)});
  DrawAxes(picture, x, y, {degrees, NumberTicks(y, kUnderEachOther)});
  const double count = static_cast<double>(lines.size());
  // Names stand at the ends of their lines, pushed apart.
  std::vector<std::pair<double, std::size_t>> ends;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    // Side by side within a bin, so that no spread hides another.
    const double aside = (static_cast<double>(i) - (count - 1.0) / 2.0) *
                         std::min(4.0, 30.0 / count) * (x.High() - x.Low()) / x.Pixels();
    PlotColumns line(x);
    double end = 0.0;
    for (const ElevationBin& bin : lines[i].signal->byElevation) {
      if (!bin.mean) continue;
      const double at = static_cast<double>(bin.fromDegrees) + kHalf + aside;
      line.Add(at, *bin.mean);
      end = y.At(*bin.mean);
      const double spread = bin.std.value_or(0.0);
      picture.Line(x.At(at), y.At(*bin.mean - spread), x.At(at), y.At(*bin.mean + spread),
                   Numbered("c", lines[i].row) + " thin");
      picture.Mark(MarkOf(lines[i].row), x.At(at), y.At(*bin.mean), 4.0,
                   Numbered("cf", lines[i].row));
    }
    picture.Path(line.Line(y), Numbered("c", lines[i].row));
    ends.emplace_back(end, i);
  }
  std::sort(ends.begin(), ends.end());
  double free = kTop;
  for (const auto& [end, i] : ends) {
    const double at = std::max(end + 4.0, free);
    picture.Mark(MarkOf(lines[i].row), x.To() + 9.0, at - 4.0, 4.0, Numbered("cf", lines[i].row));
    picture.Text(x.To() + 19.0, at, lines[i].name, "row");
    free = at + 15.0;
  }
  return std::move(picture).Finish();
}

}  // namespace fathomline::trial
