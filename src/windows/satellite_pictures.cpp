#include "windows/satellite_pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>
#include <utility>

#include "base/look.h"
#include "base/numbers.h"

namespace fathomline {
namespace {

using Satellite = SatellitesInView::Satellite;

constexpr double kHorizon = 90.0;  // degrees from the zenith
constexpr double kMarkRadius = 5.0;
constexpr double kGap = 4.0;
// Points of a track that lie closer together than this would only cost time.
constexpr double kTrackStep = 4.0;

const Constellation& ConstellationOf(const Satellite& satellite) {
  return kConstellations.at(static_cast<std::size_t>(satellite.id.system));
}

struct Point {
  double x;
  double y;
};

// Upper left corner and size.
struct Area {
  double x;
  double y;
  double width;
  double height;

  bool Meets(const Area& other) const {
    return x < other.x + other.width && other.x < x + width && y < other.y + other.height &&
           other.y < y + height;
  }
};

class Sky {
 public:
  explicit Sky(Picture& picture)
      : picture_(picture),
        text_(picture.SmallText()),
        middle_{picture.Surface().width / 2.0, picture.Surface().height / 2.0},
        radius_(std::min(middle_.x, middle_.y) - text_.line - kGap) {}

  void DrawRings() {
    picture_.SetPen({.width = 1, .colour = look::kSkyRings});
    for (const double elevation : {0.0, 30.0, 60.0}) {
      picture_.Circle(middle_.x, middle_.y, Distance(elevation));
    }
    picture_.Line(middle_.x, middle_.y - radius_, middle_.x, middle_.y + radius_);
    picture_.Line(middle_.x - radius_, middle_.y, middle_.x + radius_, middle_.y);
    picture_.SetPen({.colour = look::kMutedInk, .small = true});
    const double beyond = radius_ + kGap;
    picture_.Text(middle_.x, middle_.y - beyond, "N", {0, 1});
    picture_.Text(middle_.x, middle_.y + beyond, "S", {0, -1});
    picture_.Text(middle_.x + beyond, middle_.y, "E", {-1, 0});
    picture_.Text(middle_.x - beyond, middle_.y, "W", {1, 0});
    for (const int elevation : {30, 60}) {
      WriteAt({middle_.x + kGap / 2.0, middle_.y - Distance(elevation)},
              PlainText(std::int32_t{elevation}) + "°");
    }
  }

  void DrawTrack(const Satellite& satellite) {
    picture_.SetPen({.width = 1, .colour = ConstellationOf(satellite).colour});
    std::optional<Point> last;
    for (const auto& position : satellite.track) {
      const Point point = At(position);
      if (last && std::hypot(point.x - last->x, point.y - last->y) < kTrackStep) continue;
      if (last) picture_.Line(last->x, last->y, point.x, point.y);
      last = point;
    }
    const Point now = At(*satellite.position);
    if (last) picture_.Line(last->x, last->y, now.x, now.y);
  }

  void DrawMark(const Satellite& satellite) {
    const Constellation& constellation = ConstellationOf(satellite);
    const Point at = At(*satellite.position);
    picture_.SetPen({.width = 1, .colour = constellation.colour});
    picture_.Mark(at.x, at.y, constellation.mark, kMarkRadius, satellite.used);
    taken_.push_back({at.x - kMarkRadius, at.y - kMarkRadius, 2 * kMarkRadius, 2 * kMarkRadius});
  }

  // Where no other name or mark stands; to the right where all places are taken.
  void WriteName(const Satellite& satellite) {
    const Point at = At(*satellite.position);
    const std::string name = NameOf(satellite.id);
    const double width = text_.character * static_cast<double>(name.size());
    const double away = kMarkRadius + 2.0;
    const std::array<Point, 8> places = {{{away, -text_.line / 2.0},
                                          {-away - width, -text_.line / 2.0},
                                          {-width / 2.0, -away - text_.line},
                                          {-width / 2.0, away},
                                          {away, -away - text_.line / 2.0},
                                          {away, away - text_.line / 2.0},
                                          {-away - width, -away - text_.line / 2.0},
                                          {-away - width, away - text_.line / 2.0}}};
    Area chosen{at.x + places[0].x, at.y + places[0].y, width, text_.line};
    for (const Point& place : places) {
      const Area area{at.x + place.x, at.y + place.y, width, text_.line};
      if (std::none_of(taken_.begin(), taken_.end(),
                       [&](const Area& other) { return area.Meets(other); })) {
        chosen = area;
        break;
      }
    }
    picture_.SetPen({.colour = satellite.used ? look::kInk : look::kMutedInk, .small = true});
    picture_.Text(chosen.x, chosen.y, name);
    taken_.push_back(chosen);
  }

  void Say(const char* what) {
    picture_.SetPen({.colour = look::kMutedInk});
    picture_.Text(middle_.x, middle_.y, what, {0, 0});
  }

 private:
  double Distance(double elevation) const {
    return radius_ * (kHorizon - std::clamp(elevation, 0.0, kHorizon)) / kHorizon;
  }
  Point At(const SatellitesInView::Position& position) const {
    const double azimuth = position.azimuth * std::numbers::pi / 180.0;
    const double distance = Distance(position.elevation);
    return {middle_.x + distance * std::sin(azimuth), middle_.y - distance * std::cos(azimuth)};
  }
  void WriteAt(Point at, const std::string& text) {
    picture_.Text(at.x, at.y, text);
    taken_.push_back({at.x, at.y, text_.character * 3.0, text_.line});
  }

  Picture& picture_;
  Picture::TextSize text_;
  Point middle_;
  double radius_;
  std::vector<Area> taken_;
};

// What is drawn of a satellite in the picture of the signals.
struct Bars {
  const Satellite* satellite;
  std::vector<const SatellitesInView::Signal*> signals;
};

std::vector<Bars> TrackedOf(const std::vector<Satellite>& satellites) {
  std::vector<Bars> tracked;
  for (const Satellite& satellite : satellites) {
    Bars bars{&satellite, {}};
    for (const auto& signal : satellite.signals) {
      if (signal.cn0) bars.signals.push_back(&signal);
    }
    if (!bars.signals.empty()) tracked.push_back(std::move(bars));
  }
  return tracked;
}

// "1" of L1 C/A, "5" of E5a: the band.
std::string BandOf(const Satellite& satellite, int signal) {
  if (signal == 0) return {};
  const std::string name = SignalName(satellite.id.system, signal);
  if (name.size() > 1 && name[1] >= '0' && name[1] <= '9') return name.substr(1, 1);
  return name.substr(0, 1);
}

class SignalBars {
 public:
  explicit SignalBars(Picture& picture) : picture_(picture), text_(picture.SmallText()) {}

  // Returns how high it is.
  double DrawLegend(const std::vector<Satellite>& satellites) {
    struct Count {
      int used = 0;
      int inView = 0;
    };
    std::array<Count, kGnssSystems> counts{};
    for (const Satellite& satellite : satellites) {
      Count& count = counts[static_cast<std::size_t>(satellite.id.system)];
      ++count.inView;
      if (satellite.used) ++count.used;
    }
    double x = kGap;
    double y = kGap;
    const double right = picture_.Surface().width;
    for (std::size_t i = 0; i < kGnssSystems; ++i) {
      if (counts[i].inView == 0) continue;
      const Constellation& constellation = kConstellations[i];
      const std::string text = std::string(constellation.name) + " " +
                               PlainText(std::int32_t{counts[i].used}) + " of " +
                               PlainText(std::int32_t{counts[i].inView}) + " used";
      const double width = 2 * kMarkRadius + kGap +
                           text_.character * 1.1 * static_cast<double>(text.size()) + 4 * kGap;
      if (x > kGap && x + width > right) {
        x = kGap;
        y += text_.line + kGap;
      }
      picture_.SetPen({.width = 1, .colour = constellation.colour});
      picture_.Mark(x + kMarkRadius, y + text_.line / 2.0, constellation.mark, kMarkRadius, true);
      picture_.SetPen({.colour = look::kInk, .small = true});
      picture_.Text(x + 2 * kMarkRadius + kGap, y, text);
      x += width;
    }
    return y + text_.line + 2 * kGap;
  }

  void DrawRows(const std::vector<Bars>& tracked, double top) {
    left_ = text_.character * 3.0 + kGap;
    const double room = picture_.Surface().width - left_ - kGap;
    const double nameWidth = text_.character * 3.6;
    const auto widthOf = [&](const Bars& bars) {
      const double least = static_cast<double>(bars.signals.size()) * kLeastBar;
      return std::max(least, nameWidth) + kBetween;
    };
    // As many rows as the narrowest bars need, then as wide as there is room.
    std::vector<std::pair<std::size_t, double>> rows;  // the first one behind the row, its width
    double width = 0.0;
    for (std::size_t i = 0; i < tracked.size(); ++i) {
      const double next = widthOf(tracked[i]);
      if (width > 0.0 && width + next > room) {
        rows.emplace_back(i, width);
        width = 0.0;
      }
      width += next;
    }
    rows.emplace_back(tracked.size(), width);
    const double least = text_.line * 2.0 + kLeastHeight;
    const auto count = static_cast<double>(rows.size());
    const double height = std::max((picture_.Surface().height - top) / count, least);
    picture_.SetLeast({kLeastWidth, static_cast<int>(std::ceil(top + least * count))});
    std::size_t at = 0;
    for (const auto& [end, used] : rows) {
      const double stretch = std::clamp(room / used, 1.0, kWidest);
      DrawScale(top, height, left_ + used * stretch);
      double x = left_;
      for (; at < end; ++at) {
        const double wide = widthOf(tracked[at]) * stretch;
        DrawSatellite(tracked[at], x, wide, top, height);
        x += wide;
      }
      top += height;
    }
  }

 private:
  static constexpr double kLeastBar = 7.0;
  static constexpr double kBetween = 5.0;
  static constexpr double kLeastHeight = 56.0;
  static constexpr int kLeastWidth = 260;
  static constexpr double kWidest = 2.0;  // times the least width
  static constexpr double kMostCn0 = 60.0;

  double Base(double top, double height) const { return top + height - 2.0 * text_.line - kGap; }
  double Height(double cn0, double height) const {
    return (height - 2.0 * text_.line - 2.0 * kGap) * std::clamp(cn0, 0.0, kMostCn0) / kMostCn0;
  }

  void DrawScale(double top, double height, double right) {
    const double base = Base(top, height);
    for (const int cn0 : {20, 40}) {
      const double y = base - Height(cn0, height);
      picture_.SetPen({.width = 1, .colour = look::kGridLines});
      picture_.Line(left_, y, right, y);
      picture_.SetPen({.colour = look::kMutedInk, .small = true});
      picture_.Text(left_ - kGap, y, PlainText(std::int32_t{cn0}), {1, 0});
    }
    picture_.SetPen({.width = 1, .colour = look::kFrameLines});
    picture_.Line(left_, base, right, base);
    picture_.SetPen({.colour = look::kMutedInk, .small = true});
    picture_.Text(0.0, base, "dB", {-1, 0});
  }

  void DrawSatellite(const Bars& bars, double x, double width, double top, double height) {
    const Satellite& satellite = *bars.satellite;
    const Constellation& constellation = ConstellationOf(satellite);
    const double base = Base(top, height);
    const double bar = (width - kBetween) / static_cast<double>(bars.signals.size());
    double left = x + kBetween / 2.0;
    for (const auto* const signal : bars.signals) {
      const double upper = base - Height(*signal->cn0, height);
      const double right = left + bar - 1.0;
      picture_.SetPen({.width = 1, .colour = constellation.colour, .dashed = !satellite.used});
      if (satellite.used) {
        picture_.Box(left, upper, right, base, true);
        picture_.SetPen({.width = 2, .colour = constellation.colour});
        picture_.Line(left, upper, right, upper);
      } else {
        picture_.Box(left, upper, right, base, false);
      }
      picture_.SetPen({.colour = look::kMutedInk, .small = true});
      const double middle = (left + right) / 2.0;
      picture_.Text(middle, base, BandOf(satellite, signal->id), {0, -1});
      if (bar >= text_.character * 2.4) {
        picture_.Text(middle, upper, PlainText(*signal->cn0), {0, 1});
      }
      left += bar;
    }
    picture_.SetPen({.colour = satellite.used ? look::kInk : look::kMutedInk, .small = true});
    picture_.Text(x + width / 2.0, base + text_.line, NameOf(satellite.id), {0, -1});
  }

  Picture& picture_;
  Picture::TextSize text_;
  double left_ = 0.0;
};

}  // namespace

void DrawSky(Picture& picture, const std::vector<Satellite>& satellites) {
  picture.Clear();
  Sky sky(picture);
  sky.DrawRings();
  std::vector<const Satellite*> placed;
  for (const Satellite& satellite : satellites) {
    if (satellite.position) placed.push_back(&satellite);
  }
  if (placed.empty()) return sky.Say("No GSV yet");
  for (const Satellite* const satellite : placed) sky.DrawTrack(*satellite);
  for (const Satellite* const satellite : placed) sky.DrawMark(*satellite);
  for (const Satellite* const satellite : placed) sky.WriteName(*satellite);
}

void DrawSignals(Picture& picture, const std::vector<Satellite>& satellites) {
  picture.Clear();
  const std::vector<Bars> tracked = TrackedOf(satellites);
  if (tracked.empty()) {
    picture.SetPen({.colour = look::kMutedInk});
    picture.Text(picture.Surface().width / 2.0, picture.Surface().height / 2.0,
                 satellites.empty() ? "No GSV yet" : "No satellite is tracked", {0, 0});
    return;
  }
  SignalBars bars(picture);
  const double top = bars.DrawLegend(satellites);
  bars.DrawRows(tracked, top);
}

}  // namespace fathomline
