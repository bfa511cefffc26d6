#include "windows/statistics_window.h"

#include <string>
#include <utility>

#include "analysis/geodesy.h"
#include "base/format.h"
#include "base/numbers.h"
#include "decoding/angles.h"
#include "decoding/coordinate_text.h"
#include "views/definitions.h"
#include "windows/statistics_columns.h"

namespace fathomline {
namespace {

constexpr WindowPlace kDefaultPlace{0, 0, 12000, 9000};

struct ReferenceTexts {
  std::string_view position;
  std::string_view attitude;
};
constexpr auto kReferenceTexts =
    std::to_array<ReferenceTexts>({{"Ref is : First sample", "Ref is : First sample"},
                                   {"Ref is : Average over time", "Ref is : Average over time"},
                                   {"Ref is : True position", "Ref is : True value"}});

}  // namespace

frmStatistics::SentenceGrid::SentenceGrid(Window& window, const StatisticsGrid& table)
    : design(table),
      frame(window, "frame" + ToText(table.type), ToText(table.type) + " Statistics"),
      grid(frame, "fg" + ToText(table.type), kStatisticsRows,
           static_cast<int>(table.columns.size()) + 1) {
  frame.SetToolTip(NameOfSentence(table.type));
}

std::deque<frmStatistics::SentenceGrid> frmStatistics::MakeGrids(Window& window) {
  std::deque<SentenceGrid> grids;
  for (const StatisticsGrid& design : kStatisticsGrids) grids.emplace_back(window, design);
  return grids;
}

frmStatistics::frmStatistics(const ViewSurroundings& surroundings, int system,
                             const Statistics& statistics)
    : SystemView(surroundings, system,
                 {.name = "frmStatistics",
                  .caption = "Statistics ",
                  .place = kDefaultPlace,
                  .placeKey = "Statistics",
                  .placeOfItsOwn = false,
                  .icon = ViewIcon::OfEverySystem,
                  .flag = WindowFlag::Statistics}),
      statistics_(statistics) {
  std::vector<Layout> rows;
  rows.push_back(Layout::Row(
      {Layout::Box(frameRefPos,
                   Layout::Column({lblRefPosOption, Layout::Form({{"Ref Lat :", lblRefLat},
                                                                  {"Ref Lon :", lblRefLon},
                                                                  {"Ref Hgt :", lblRefHgt},
                                                                  {"Start time", lblStartTime}})})),
       Layout::Box(frameAvgPos, Layout::Form({{"Avg Lat :", Layout::Row({lblAvgLat, lblSdLat})},
                                              {"Avg Lon :", Layout::Row({lblAvgLon, lblSdLon})},
                                              {"Avg Hgt :", Layout::Row({lblAvgHgt, lblSdHgt})},
                                              {"Count  :", lblAvgPosCount},
                                              {"Current time :", lblCurrentTime}})),
       Layout::Box(frameHeading,
                   Layout::Column(
                       {lblRefHdgOption,
                        Layout::Table(4, {Layout::Words("Ref :"), lblRefHdg, lblRefPitch,
                                          lblRefRoll, Layout::Words("Avg :"), lblAvgHdg,
                                          lblAvgPitch, lblAvgRoll, Layout::Words("Sd :"), lblSdHdg,
                                          lblSdPitch, lblSdRoll, Layout::Words("Count :"),
                                          lblAvgHdgCount, lblAvgPitchCount, lblAvgRollCount})})),
       Layout::Space()}));
  for (SentenceGrid& grid : grids_) rows.push_back(Layout::Box(grid.frame, grid.grid));
  rows.push_back(Layout::Box(frameGSV_GPS, fgGSV_GPS));
  SetContent(Layout::Column(std::move(rows)));
}

void frmStatistics::LoadView() {
  positionWritten_ = attitudeWritten_ = positionDue_ = attitudeDue_ = averagesDue_ = false;
  timesOf_ = nullptr;
  for (SentenceGrid& grid : grids_) {
    grid.due = false;
    grid.frame.SetVisible(Setup().Analyses(grid.design.type));
  }
  frameGSV_GPS.SetVisible(Setup().AnalyseGSV);
  WriteCaptions();

  const std::int16_t used = records_.References[Index()].ReferenceUsed;
  const auto option = static_cast<std::size_t>(used);
  if (option < kReferenceTexts.size()) {
    lblRefPosOption.SetText(kReferenceTexts[option].position);
    lblRefHdgOption.SetText(kReferenceTexts[option].attitude);
  }
  if (used == kAverageOverTime) {
    for (Label* label : {&lblRefLat, &lblRefLon, &lblRefHgt}) label->SetText("equal to average");
    for (Label* label : {&lblRefHdg, &lblRefPitch, &lblRefRoll}) label->SetText("= avg");
  } else if (used == kTruePosition) {
    NoteReferencePosition();
    NoteReferenceAttitude();
  }

  if (!records_.Offline()) return;
  // Opened behind a replay it is filled at once; only the grid of GST waits for the next sentence.
  for (const StatisticsGrid& grid : kStatisticsGrids) {
    if (grid.type != SentenceType::GST) UpdateStatisticsView(grid.type);
  }
}

void frmStatistics::WriteCaptions() {
  for (SentenceGrid& grid : grids_) {
    const bool snr = grid.design.type == SentenceType::GSV;
    WriteStatisticsCaptions(grid.grid, snr ? PercentileKind::Above : PercentileKind::Below);
    int column = 0;
    for (const StatisticsColumn& design : grid.design.columns) {
      grid.grid.Set(0, ++column, design.caption);
    }
    DefineHeads(grid.grid, DefinedTable::Statistics);
  }
  WriteStatisticsCaptions(fgGSV_GPS, PercentileKind::Above);
  fgGSV_GPS.Set(0, 0, "PRN");
  for (int prn = 1; prn <= kGPSSatellites; ++prn) fgGSV_GPS.Set(0, prn, Format(prn, "00"));
  DefineHeads(fgGSV_GPS, DefinedTable::SNR);
}

frmStatistics::SentenceGrid* frmStatistics::Find(SentenceType type) {
  for (SentenceGrid& grid : grids_) {
    if (grid.design.type == type) return &grid;
  }
  return nullptr;
}

Grid& frmStatistics::GridOf(SentenceType type) {
  SentenceGrid* const found = Find(type);
  if (found == nullptr) Raise(FaultNumber::OutOfRange);
  return found->grid;
}

void frmStatistics::UpdateStatisticsView(SentenceType type) {
  const std::int16_t used = records_.References[Index()].ReferenceUsed;
  if (!positionWritten_ && used != kAverageOverTime) NoteReferencePosition();
  if (!attitudeWritten_ && used != kAverageOverTime) NoteReferenceAttitude();
  averagesDue_ = true;

  SentenceGrid* const grid = Find(type);
  if (grid == nullptr || !records_.CommSetups[Index()].Analyses(type)) return;
  if (const PositionStats* const position = FindPositionStats(type)) {
    timesOf_ = position;
    if (used == kFirstSample) NoteReferencePosition();
  } else if (type == SentenceType::HDT || type == SentenceType::ATT) {
    if (used == kFirstSample) NoteReferenceAttitude();
  }
  grid->due = true;
}

void frmStatistics::NoteReferencePosition() {
  const ReferenceSetup& reference = records_.References[Index()];
  shownReference_.ReferenceLatitude = reference.ReferenceLatitude;
  shownReference_.ReferenceLongitude = reference.ReferenceLongitude;
  shownReference_.ReferenceHeight = reference.ReferenceHeight;
  positionWritten_ = positionDue_ = true;
}

void frmStatistics::NoteReferenceAttitude() {
  const ReferenceSetup& reference = records_.References[Index()];
  shownReference_.ReferenceHeading = reference.ReferenceHeading;
  shownReference_.ReferencePitch = reference.ReferencePitch;
  shownReference_.ReferenceRoll = reference.ReferenceRoll;
  attitudeWritten_ = attitudeDue_ = true;
}

void frmStatistics::Refresh() {
  WriteReference();
  if (std::exchange(averagesDue_, false)) WriteAverages();
  if (timesOf_ != nullptr) WriteTimes();
  timesOf_ = nullptr;
  for (SentenceGrid& grid : grids_) {
    if (std::exchange(grid.due, false)) WriteGrid(grid);
  }
}

std::string frmStatistics::Coordinate(double radians, std::string_view type) const {
  return FormatCoordinate(records_.CoordinateFormatIsDMS, records_.CoordinateDecimals,
                          radians * kDegreesPerRadian, type);
}

void frmStatistics::WriteReference() {
  if (std::exchange(positionDue_, false)) {
    lblRefLat.SetText(Coordinate(shownReference_.ReferenceLatitude, "LAT"));
    lblRefLon.SetText(Coordinate(shownReference_.ReferenceLongitude, "LON"));
    lblRefHgt.SetText(Format(shownReference_.ReferenceHeight, "0.000"));
  }
  if (std::exchange(attitudeDue_, false)) {
    lblRefHdg.SetText(Format(shownReference_.ReferenceHeading, "000.00"));
    lblRefPitch.SetText(Format(shownReference_.ReferencePitch, "0.00"));
    lblRefRoll.SetText(Format(shownReference_.ReferenceRoll, "0.00"));
  }
}

void frmStatistics::WriteAverages() {
  const SystemStatistics& statistics = statistics_[Index()];
  const DoubleStat& latitude = statistics.LatitudeMean;
  const DoubleStat& longitude = statistics.LongitudeMean;
  lblAvgLat.SetText(Coordinate(latitude.Mean, "LAT"));
  lblAvgLon.SetText(Coordinate(longitude.Mean, "LON"));
  // Positions of nonsense may spread beyond a single; the labels then keep what they show.
  ResumeNext([&] {
    const NorthEast sdev = DifferenceToNorthEastOnEllipsoid(
        latitude.Mean, longitude.Mean, latitude.Mean + latitude.Sdev,
        longitude.Mean + longitude.Sdev, kSemiMajorAxis, kEccentricitySquared);
    lblSdLat.SetText(Format(sdev.North, "0.000"));
    lblSdLon.SetText(Format(sdev.East, "0.000"));
  });
  lblAvgHgt.SetText(Format(statistics.HeightMean.Mean, "0.000"));
  lblSdHgt.SetText(Format(statistics.HeightMean.Sdev, "0.000"));
  lblAvgPosCount.SetText(PlainText(latitude.Count));

  struct Angle {
    const SingleStat& stat;
    std::string_view picture;
    Label& mean;
    Label& sdev;
    Label& count;
  };
  const std::array<Angle, 3> angles = {
      {{statistics.HeadingMean, "000.00", lblAvgHdg, lblSdHdg, lblAvgHdgCount},
       {statistics.PitchMean, "0.00", lblAvgPitch, lblSdPitch, lblAvgPitchCount},
       {statistics.RollMean, "0.00", lblAvgRoll, lblSdRoll, lblAvgRollCount}}};
  for (const Angle& angle : angles) {
    angle.mean.SetText(Format(angle.stat.Mean, angle.picture));
    angle.sdev.SetText(Format(angle.stat.Sdev, "0.00"));
    angle.count.SetText(PlainText(angle.stat.Count));
  }
}

void frmStatistics::WriteTimes() {
  const SingleStat& first = timesOf_->dRad(statistics_[Index()]).Stat;
  lblStartTime.SetText(first.Count == 0 ? std::string(kNotAvailable)
                                        : first.FirstTime + " " + first.FirstDate);
  lblCurrentTime.SetText(first.LastTime);
}

void frmStatistics::WriteGrid(SentenceGrid& grid) {
  const SystemStatistics& statistics = statistics_[Index()];
  if (grid.design.type == SentenceType::GSV) {
    ShowSNRColumn(grid.grid, statistics.SatellitesInView, 1);
    for (int prn = 1; prn <= kGPSSatellites; ++prn) {
      ShowSNRColumn(fgGSV_GPS, statistics.Satellites[0][static_cast<std::size_t>(prn - 1)], prn);
    }
    return;
  }
  int column = 0;
  for (const StatisticsColumn& design : grid.design.columns) {
    ++column;
    if (design.figures == nullptr) continue;
    ShowDeviationColumn(grid.grid, design.figures(statistics), column, design.noPercentile);
  }
}

}  // namespace fathomline
