#include "charts/skyplot_window.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/format.h"
#include "base/numbers.h"
#include "decoding/angles.h"
#include "decoding/coordinate_text.h"
#include "toolkit/desktop.h"
#include "views/definitions.h"

namespace fathomline {
namespace {

constexpr WindowPlace kPlace{0, 0, 3000, 6000};

constexpr double kHorizon = 90.0;
constexpr std::string_view kDegree = "\u00B0";

constexpr int kSatellitesPerSentence = 4;
constexpr int kLastCleared = 150;
constexpr std::int64_t kTrendSeconds = 3600;

int GroupOf(int prn) {
  int group = 0;
  while (prn > kUsedGroups[static_cast<std::size_t>(group)].lastPRN) ++group;
  return group;
}

}  // namespace

frmSkyplot::frmSkyplot(const ViewSurroundings& surroundings, int system, SatelliteTable& satellites,
                       const Clock& clock)
    : SystemView(surroundings, system,
                 {.name = "frmSkyplot",
                  .caption = "Skyplot ",
                  .captionEnd = " - GSA/GSV Numerics",
                  .place = kPlace,
                  .placeKey = "Skyplot",
                  .icon = ViewIcon::OfSecondarySystems,
                  .flag = WindowFlag::Skyplot,
                  .feeds = kSatelliteTypes}),
      satellites_(satellites),
      clock_(clock) {
  txtElMask.onLeave = [this] { return TakeElevationMask(); };
  for (int row = 1; row <= kTrackingRows; ++row) {
    lblColor(row).SetColour(kWhite);
    for (auto* labels : {&lblChannel, &lblSv, &lblElevation, &lblAzimuth, &lblSNR, &lblColor}) {
      (*labels)(row).onClick = [this, row] { ClickRow(row); };
    }
  }
  DefineLabels();
  MakeContent();
}

void frmSkyplot::DefineLabels() {
  const auto define = [](Control& control, std::string_view head) {
    control.SetToolTip(DefinitionOf(DefinedTable::Skyplot, head));
  };
  define(txtElMask, "Mask");
  define(lblCurrentMode, "Mode");
  define(lblPdop, "Pdop");
  define(lblHdop, "Hdop");
  define(lblVdop, "Vdop");
  define(lblSvsInView, "In view");
  define(lblSvsInUse, "Used");
  for (Label& label : lblUsedSvs) define(label, "Used");
  for (int row = 1; row <= kTrackingRows; ++row) {
    define(lblChannel(row), "Ch");
    define(lblSv(row), "Sv");
    define(lblElevation(row), "Elevation");
    define(lblAzimuth(row), "Azimuth");
    define(lblSNR(row), "SNR");
    define(lblColor(row), "Colour");
  }
}

void frmSkyplot::MakeContent() {
  std::vector<FormLine> used;
  used.reserve(kUsedGroups.size());
  int group = 0;
  for (const UsedGroup& design : kUsedGroups) {
    used.push_back({std::string(design.caption), lblUsedSvs(group++)});
  }
  constexpr int kColumns = 6;
  std::vector<Layout> cells;
  for (const char* const head : {"Ch", "Sv", "Elevation", "Azimuth", "SNR", ""}) {
    cells.push_back(Layout::Words(head));
  }
  for (int row = 1; row <= kTrackingRows; ++row) {
    for (auto* labels : {&lblChannel, &lblSv, &lblElevation, &lblAzimuth, &lblSNR, &lblColor}) {
      cells.emplace_back((*labels)(row));
    }
  }
  const Layout picture = Layout::Box(
      frameSkyplot,
      Layout::Column({Layout::Row({Layout::Space(), lblNorth, Layout::Space()}), picSkyplot,
                      Layout::Row({Layout::Space(), lblSouth, Layout::Space()}),
                      Layout::Row({Layout::Words("Elevation mask :"), txtElMask,
                                   Layout::Words("deg"), Layout::Space()})}));
  const Layout numbers = Layout::Form({{"Current Mode : ", lblCurrentMode},
                                       {"Pdop : ", lblPdop},
                                       {"Hdop : ", lblHdop},
                                       {"Vdop : ", lblVdop},
                                       {"Satellites in view : ", lblSvsInView}});
  const Layout key = Layout::Row({Layout::Words("< decr"), Layout::Words("> incr"),
                                  Layout::Words("d - down"), Layout::Words("u - up")});
  SetContent(
      Layout::Row({Layout::Column({picture, numbers, lblSvsInUse, Layout::Form(std::move(used)),
                                   Layout::Space()}),
                   Layout::Box(frmSvTrackingStatus,
                               Layout::Column({key, Layout::Table(kColumns, std::move(cells))}))}));
}

void frmSkyplot::LoadView() {
  modeDue_ = inViewDue_ = false;
  used_ = {};
  rows_ = {};
  dots_.clear();
  DrawSkyplotBackground();
}

void frmSkyplot::DrawSkyplotBackground() {
  const std::int16_t mask = records_.ElevationMask;
  const std::string maskText = Format(mask, "00");
  drawnMask_ = mask;
  dotsDue_ = true;
  txtElMask.SetText(maskText);

  const auto degrees = [](std::string_view text) { return std::string(text).append(kDegree); };
  picSkyplot.Clear();
  picSkyplot.SetPersistent(true);
  picSkyplot.SetPen({.width = 1, .colour = kBlue, .scale = true});
  picSkyplot.Line(-kHorizon, 0.0, kHorizon, 0.0);
  picSkyplot.Line(0.0, -kHorizon, 0.0, kHorizon);
  picSkyplot.Circle(0.0, 0.0, 30.0);
  picSkyplot.Text(0.0, 0.0, degrees(" 90"));
  picSkyplot.Text(0.0, -30.0, degrees(" 60"));
  picSkyplot.Circle(0.0, 0.0, 60.0);
  picSkyplot.Text(0.0, -60.0, degrees(" 30"));
  picSkyplot.Circle(0.0, 0.0, kHorizon);

  picSkyplot.SetPen({.width = 1, .colour = kRed, .dashed = true});
  picSkyplot.Circle(0.0, 0.0, kHorizon - mask);
  constexpr std::int16_t kTextBelowEdge = 10;
  const double raised = mask < kTextBelowEdge ? kTextBelowEdge : 0.0;
  picSkyplot.Text(0.0, mask - kHorizon + raised, degrees(maskText));
}

bool frmSkyplot::TakeElevationMask() {
  double value = -1.0;
  ResumeNext([&] { value = NumberFromText(txtElMask.Text()); });
  if (value < 0.0 || value > 89.0) {
    OwningDesktop().Say("Invalid elevation mask. Must be within range 00-89 deg.");
    return false;
  }
  records_.ElevationMask = static_cast<std::int16_t>(value);
  DrawSkyplotBackground();
  return true;
}

void frmSkyplot::UpdateSkyplot() {
  mode_ = records_.Messages[Index()].GSA.Record;
  modeDue_ = true;
  if (records_.Messages[Index()].GSV.Record.MessageNumber == 1) {
    for (int slot = 1; slot <= kLastSlot; ++slot) {
      Satellite& satellite = satellites_(Index(), slot);
      satellite.Used = false;
      satellite.Channel = satellite.Elevation = satellite.Azimuth = satellite.SNR = 0;
    }
  }
  UsedList& list = used_[static_cast<std::size_t>(GroupOf(mode_.PRN.front()))];
  list.count = 0;
  list.due = true;
  for (const std::int16_t prn : mode_.PRN) {
    if (prn == NoValue || prn == 0) continue;
    list.prns[list.count++] = prn;
    if (IsSlot(prn)) satellites_(Index(), prn).Used = true;
  }
}

void frmSkyplot::UpdateSatelliteTracking() {
  const GSVRecord& record = records_.Messages[Index()].GSV.Record;
  satellitesInView_ = record.SatellitesInView;
  inViewDue_ = true;
  if (record.MessageNumber == 1) {
    for (int slot = 1; slot <= kLastCleared; ++slot) {
      Satellite& satellite = satellites_(Index(), slot);
      satellite.Elevation = satellite.Azimuth = satellite.SNR = 0;
    }
  }
  int lastRow = 0;
  for (int position = 1; position <= kSatellitesPerSentence; ++position) {
    const auto at = static_cast<std::size_t>(position - 1);
    if (record.PRN[at] <= 0) continue;
    lastRow = (record.MessageNumber - 1) * kSatellitesPerSentence + position;
    TakeSatellite(record.PRN[at], at, lastRow);
  }
  if (record.MessageNumber != record.MessageCount) return;

  const int lastOfSentence = (record.MessageNumber - 1) * kSatellitesPerSentence;
  for (int row = std::max({lastRow, lastOfSentence, 0}) + 1; row <= kTrackingRows; ++row) {
    if (!RowAt(row).empty) RowAt(row) = {};
  }
  DrawSatellites();
  if (onGroupDone) onGroupDone();
}

void frmSkyplot::TakeSatellite(std::int16_t prn, std::size_t position, int row) {
  if (!IsSlot(prn)) {
    if (row >= 1 && row <= kTrackingRows) RowAt(row) = {};
    return;
  }
  const GSVRecord& record = records_.Messages[Index()].GSV.Record;
  Satellite& satellite = satellites_(Index(), prn);
  const auto follow = [&](std::int16_t value, std::int16_t& previous, char& trend, char falls,
                          char rises) {
    if (value == previous) return;
    // What was never drawn was drawn in 1899, which is long enough ago.
    const bool seen = DifferenceInSeconds(satellite.LastDrawn, clock_.NowUtc()) < kTrendSeconds;
    trend = !seen ? ' ' : value <= previous ? falls : rises;
    previous = value;
  };
  satellite.Elevation = record.Elevation[position];
  satellite.Azimuth = record.Azimuth[position];
  satellite.SNR = record.SNR[position];
  const bool shown = row >= 1 && row <= kTrackingRows;
  satellite.Channel = shown ? static_cast<std::int16_t>(row) : std::int16_t{0};
  follow(satellite.Elevation, satellite.ElevationPrev, satellite.ElevationTrend, 'd', 'u');
  follow(satellite.Azimuth, satellite.AzimuthPrev, satellite.AzimuthTrend, '<', '>');
  if (shown) NoteRow(row, prn, satellite);
}

void frmSkyplot::NoteRow(int row, std::int16_t prn, const Satellite& satellite) {
  TrackingRow& shown = RowAt(row);
  shown.empty = false;
  shown.due = true;
  shown.prn = prn;
  shown.satellite = satellite;
  const auto blackIf = [](bool good) { return good ? kBlack : kRed; };
  shown.svColour = blackIf(satellite.Used);
  shown.elevationColour = blackIf(satellite.Elevation >= records_.ElevationMask);
  shown.snrColour = blackIf(satellite.SNR != 0);
}

void frmSkyplot::DrawSatellites() {
  dots_.clear();
  dotsDue_ = true;
  const DateTime now = clock_.NowUtc();
  for (int slot = 1; slot <= kLastSlot; ++slot) {
    Satellite& satellite = satellites_(Index(), slot);
    if (satellite.Elevation <= 0) continue;
    dots_.push_back({slot, satellite.Elevation, satellite.Azimuth, satellite.Used});
    satellite.LastDrawn = now;
  }
}

void frmSkyplot::ClickRow(int row) {
  if (!RowAt(row).empty && onChooseSatellite) onChooseSatellite(RowAt(row).prn);
}

void frmSkyplot::Refresh() {
  // The mask is shared by all systems.
  if (drawnMask_ != records_.ElevationMask && Focus() != &txtElMask) DrawSkyplotBackground();
  if (std::exchange(modeDue_, false)) WriteMode();
  for (int group = 0; group <= lblUsedSvs.Last(); ++group) {
    if (std::exchange(used_[static_cast<std::size_t>(group)].due, false)) WriteUsed(group);
  }
  if (std::exchange(inViewDue_, false)) {
    lblSvsInView.SetText(satellitesInView_ == NoValue ? std::string(kNotAvailable)
                                                      : PlainText(satellitesInView_));
  }
  for (int row = 1; row <= kTrackingRows; ++row) {
    if (std::exchange(RowAt(row).due, false)) WriteRow(row);
  }
  if (std::exchange(dotsDue_, false)) PaintDots();
}

void frmSkyplot::WriteMode() {
  lblCurrentMode.SetText(mode_.FixType == 1 ? std::string("Fix Not Available")
                                            : PlainText(mode_.FixType) +
                                                  (mode_.Mode == 'A' ? "D Auto" : "D Manual"));
  lblPdop.SetText(FormattedValueText(mode_.PDOP, "0.0"));
  lblHdop.SetText(FormattedValueText(mode_.HDOP, "0.0"));
  lblVdop.SetText(FormattedValueText(mode_.VDOP, "0.0"));
}

void frmSkyplot::WriteUsed(int group) {
  UsedList& list = used_[static_cast<std::size_t>(group)];
  const auto end = list.prns.begin() + static_cast<std::ptrdiff_t>(list.count);
  std::sort(list.prns.begin(), end);
  std::string text = PlainText(static_cast<std::int32_t>(list.count)) + " - ";
  std::for_each(list.prns.begin(), end, [&text](std::int16_t prn) { text += NumberText(prn); });
  lblUsedSvs(group).SetText(text);
}

void frmSkyplot::WriteRow(int row) {
  const TrackingRow& shown = RowAt(row);
  const Satellite& satellite = shown.satellite;
  lblSv(row).SetTabStop(!shown.empty && satellite.Elevation > 0);
  if (shown.empty) {
    for (auto* labels : {&lblChannel, &lblSv, &lblElevation, &lblAzimuth, &lblSNR}) {
      (*labels)(row).SetText("*");
      (*labels)(row).SetColour(look::kMutedInk);
    }
    lblColor(row).SetColour(kWhite);
    return;
  }
  for (auto* labels : {&lblChannel, &lblAzimuth}) (*labels)(row).SetColour({});
  lblSv(row).SetColour(shown.svColour);
  lblElevation(row).SetColour(shown.elevationColour);
  lblSNR(row).SetColour(shown.snrColour);
  lblChannel(row).SetText(PlainText(row));
  if (satellite.Elevation <= 0) {
    for (auto* labels : {&lblSv, &lblElevation, &lblAzimuth, &lblSNR}) (*labels)(row).SetText("");
    lblColor(row).SetColour(kWhite);
    return;
  }
  const auto degrees = [](std::int16_t value, std::string_view picture, char trend) {
    return FormattedValueText(value, picture) + trend;
  };
  lblSv(row).SetText(PlainText(shown.prn));
  lblElevation(row).SetText(degrees(satellite.Elevation, "00  ", satellite.ElevationTrend));
  lblAzimuth(row).SetText(degrees(satellite.Azimuth, "000  ", satellite.AzimuthTrend));
  lblSNR(row).SetText(satellite.SNR == NoValue ? std::string(kNotAvailable)
                                               : PlainText(satellite.SNR));
  lblColor(row).SetColour(satellite.Colour);
}

void frmSkyplot::PaintDots() {
  constexpr int kDotWidth = 5;
  picSkyplot.ClearTransient();
  picSkyplot.SetPersistent(false);
  for (const Dot& dot : dots_) {
    const double radius = kHorizon - dot.elevation;
    const double angle = dot.azimuth * kRadiansPerDegree;
    const double x = PolarX(radius, 0.0, angle);
    const double y = PolarY(radius, 0.0, angle);
    picSkyplot.SetPen({.width = kDotWidth, .colour = dot.used ? kBlack : kRed});
    picSkyplot.Dot(x, y, !dot.used);
    picSkyplot.Text(x, y, PlainText(dot.slot));
  }
}

}  // namespace fathomline
