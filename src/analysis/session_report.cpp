#include "analysis/session_report.h"

#include <array>
#include <string>
#include <string_view>

#include "analysis/geodesy.h"
#include "base/fault.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/system.h"
#include "base/text.h"
#include "decoding/angles.h"
#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

constexpr std::string_view kReportFolder = "Reports";
constexpr std::int16_t kCoordinateDecimals = 3;
constexpr auto kReferenceNames =
    std::to_array<std::string_view>({" First sample", " Average over time", " True position"});
// The columns of the deviation table.
constexpr auto kColumns = std::to_array<StatSource>(
    {StatOf<GGARecord, &Deviations::dRad>, StatOf<GGARecord, &Deviations::dN>,
     StatOf<GGARecord, &Deviations::dE>, StatOf<GGARecord, &Deviations::dHgt>});

// Lines of the report, with tab stops counted in characters.
class Paper {
 public:
  Paper(FileTable& files, int file) : files_(files), file_(file) {}

  Paper& Text(std::string_view text) {
    line_.append(text);
    return *this;
  }
  // The following text begins at column n, counted from 1, or at once where that is passed.
  Paper& Tab(std::size_t n) {
    line_ = PadRight(line_, n - 1);
    return *this;
  }
  Paper& Figure(double value, std::string_view picture) {
    return Text(FormatRightAligned(value, picture));
  }
  void EndLine() {
    files_.Write(file_, line_ + "\r\n");
    line_.clear();
  }
  void Line(std::string_view text) { Text(text).EndLine(); }
  void Empty() { EndLine(); }
  void Dashes() { Line(std::string(60, '-')); }

 private:
  FileTable& files_;
  int file_;
  std::string line_;
};

std::string Coordinate(double radians, std::string_view type) {
  return FormatCoordinateCompact(radians * kDegreesPerRadian, type, "FORM", kCoordinateDecimals);
}

void WriteReference(Paper& paper, const ReferenceSetup& reference) {
  paper.Text("Reference position : ");
  const auto used = static_cast<std::size_t>(reference.ReferenceUsed);
  if (used < kReferenceNames.size()) paper.Text(kReferenceNames[used]);
  paper.EndLine();
  if (reference.ReferenceUsed == kAverageOverTime) return;
  paper.Line(" Latitude  :  " + Coordinate(reference.ReferenceLatitude, "LAT"));
  paper.Line(" Longitude : " + Coordinate(reference.ReferenceLongitude, "LON"));
  paper.Line(" Ellipsoidal Height :" + Format(reference.ReferenceHeight, "0.00 m"));
}

void WriteAverage(Paper& paper, const SystemStatistics& statistics) {
  const DoubleStat& latitude = statistics.LatitudeMean;
  const DoubleStat& longitude = statistics.LongitudeMean;
  const SingleStat& height = statistics.HeightMean;
  paper.Line("Average position");
  const NorthEast deviation = DifferenceToNorthEastOnEllipsoid(
      latitude.Mean, longitude.Mean, latitude.Mean + latitude.Sdev, longitude.Mean + longitude.Sdev,
      kSemiMajorAxis, kEccentricitySquared);
  const auto row = [&](const std::string& text, float sdev) {
    paper.Text(text).Tab(30).Text("   Sd ").Line(Format(sdev, "0.00 m"));
  };
  row(" Latitude  :  " + Coordinate(latitude.Mean, "LAT"), deviation.North);
  row(" Longitude : " + Coordinate(longitude.Mean, "LON"), deviation.East);
  row(" Ellipsoidal Height :" + Format(height.Mean, "0.00 m"), height.Sdev);
}

void WriteDeviationTable(Paper& paper, const SystemStatistics& statistics) {
  paper.Tab(7).Text("Horisontal").Tab(21).Text("dNorthing").Tab(33).Text("dEasting");
  paper.Tab(45).Line("dHeight");

  struct Row {
    std::string_view caption;
    float SingleStat::*figure;
    bool dashes;
  };
  constexpr auto kRows = std::to_array<Row>({{"Mean", &SingleStat::Mean, false},
                                             {"Sdev", &SingleStat::Sdev, true},
                                             {"Max", &SingleStat::Max, false},
                                             {"Min", &SingleStat::Min, true}});
  constexpr std::array<std::size_t, kColumns.size()> kFigureTabs = {10, 22, 34, 46};
  for (const Row& row : kRows) {
    paper.Text(row.caption);
    for (std::size_t c = 0; c < kColumns.size(); ++c) {
      paper.Tab(kFigureTabs[c]).Figure(kColumns[c](statistics).Stat.*row.figure, "#0.00 m");
    }
    paper.EndLine();
    if (row.dashes) paper.Dashes();
  }

  std::array<Percentiles, kColumns.size()> percentiles;
  for (std::size_t c = 0; c < kColumns.size(); ++c) {
    percentiles[c] = kColumns[c](statistics).ComputePercentiles();
  }
  constexpr std::array<std::size_t, kColumns.size()> kPercentileTabs = {11, 20, 32, 44};
  const auto percentileRow = [&](std::string_view caption, float Percentiles::*figure) {
    paper.Text(caption);
    paper.Tab(kPercentileTabs[0]).Figure(percentiles[0].*figure, "#0.0 m");
    for (std::size_t c = 1; c < kColumns.size(); ++c) {
      paper.Tab(kPercentileTabs[c]).Text("+/-").Figure(percentiles[c].*figure, "#0.00 m");
    }
    paper.EndLine();
  };
  percentileRow("68%", &Percentiles::P68);
  percentileRow("95%", &Percentiles::P95);
  paper.Dashes();
}

// The rows read bin i as the interval from (i - 1)/10 to i/10 metres, ten times the width that the
// percentiles give it. Reports are compared with older ones, so it stays.
class Distribution {
 public:
  Distribution(Paper& paper, const DeviationStat& stat) : paper_(paper), stat_(stat) {}

  void WriteRows() {
    for (std::size_t i = 1; i <= 20 && !Complete(); ++i) IntervalRow(i, 1);
    for (std::size_t i = 25; i <= 250 && !Complete(); i += 5) IntervalRow(i, 5);
    if (const std::int32_t beyond = stat_.AbsBins[251]; beyond > 0) {
      AddShare(beyond);
      paper_.Tab(5).Text(">25 m");
      CountAndShare(beyond);
    }
  }

 private:
  bool Complete() const { return share_ > 0.99999F; }

  void AddShare(std::int32_t count) {
    if (stat_.AbsTotal == 0) Raise(FaultNumber::DivisionByZero);
    share_ = static_cast<float>(share_ +
                                static_cast<double>(count) / static_cast<double>(stat_.AbsTotal));
  }

  void IntervalRow(std::size_t last, std::size_t width) {
    std::int32_t count = 0;
    for (std::size_t i = last - width + 1; i <= last; ++i) count += stat_.AbsBins[i];
    AddShare(count);
    const auto metres = [](std::size_t bin) { return static_cast<double>(bin) / 10.0; };
    paper_.Text(Format(metres(last - width), "#0.0")).Text("-");
    paper_.Text(Format(metres(last), "#0.0 m"));
    CountAndShare(count);
  }

  void CountAndShare(std::int32_t count) {
    paper_.Tab(15).Figure(count, "######0").Tab(25).Figure(share_, "##0.0 %");
    paper_.EndLine();
  }

  Paper& paper_;
  const DeviationStat& stat_;
  float share_ = 0.0F;
};

void WriteDistributionHead(Paper& paper, std::string_view title) {
  paper.Empty();
  paper.Line("Distribution of " + std::string(title) + " deviation");
  paper.Empty();
  paper.Text("Interval").Tab(15).Text("No of fix").Tab(25).Line("Accumulated percent");
}

void WriteHead(Paper& paper, const Records& records, int system, const DeviationStat& horizontal) {
  const CommSetup& setup = records.CommSetups[system];
  const bool offline = records.Offline();
  paper.Dashes();
  paper.Line("Summary of Fathomline session : " + setup.Name);
  paper.Empty();
  if (offline) {
    paper.Line("OFFLINE MODE, analysed file : ");
    paper.Line(setup.OfflineFile);
    paper.Empty();
  }
  paper.Dashes();
  paper.Line(records.SessionInfo);
  paper.Dashes();
  paper.Empty();

  paper.Text("Start at " + horizontal.Stat.FirstTime + "    ");
  paper.Line(offline ? std::string() : horizontal.Stat.FirstDate);
  paper.Text("Stop at  " + horizontal.Stat.LastTime + "    ");
  paper.Line(offline ? std::string() : FormatDateTime(records.MessageTime[system], "dd mmm yyyy"));
  paper.Empty();
  paper.Line("Number of accepted readings " + PlainText(horizontal.Stat.Count));
  paper.Line("Number of rejected readings " + PlainText(horizontal.RejectedCount));
  paper.Empty();
  paper.Dashes();
  paper.Empty();
  paper.Empty();
}

void WriteDistributions(Paper& paper, const DeviationStat& horizontal,
                        const DeviationStat& height) {
  WriteDistributionHead(paper, "horisontal");
  paper.Empty();
  Distribution(paper, horizontal).WriteRows();
  paper.Empty();
  paper.Dashes();
  WriteDistributionHead(paper, "height");
  Distribution(paper, height).WriteRows();
  paper.Empty();
  paper.Dashes();
  paper.Empty();
}

}  // namespace

std::string SessionReport::ReportPath(int system) const {
  return records_.ProgramFolder + std::string(kReportFolder) + kPathSeparator +
         FormatDateTime(clock_.NowLocal(), "yyyymmdd-hhnn") + "-" + records_.FilePartOf(system) +
         ".txt";
}

void SessionReport::Print_Report(int system) {
  const int file = files_.FreeFile();
  try {
    const std::string folder = records_.ProgramFolder + std::string(kReportFolder);
    if (!FolderExists(folder)) MakeFolder(folder);
    const std::string path = ReportPath(system);
    files_.OpenForOutput(file, path);
    Write(system, file);
    files_.Close(file);
    dialogs_.Say("Statistics summary printed to text file : " + path);
  } catch (const Fault& fault) {
    files_.Close(file);
    dialogs_.Say(fault.Description() + "(SUB: Print_Report)");
  }
}

void SessionReport::Write(int system, int file) {
  Paper paper(files_, file);
  const SystemStatistics& statistics = statistics_[system];
  const DeviationStat& horizontal = statistics.Of<GGARecord, &Deviations::dRad>();

  WriteHead(paper, records_, system, horizontal);
  WriteReference(paper, records_.References[system]);
  paper.Dashes();
  WriteAverage(paper, statistics);
  paper.Dashes();
  paper.Empty();
  paper.Line("Statistic deviation from reference position ");
  paper.Empty();
  WriteDeviationTable(paper, statistics);

  WriteDistributions(paper, horizontal, statistics.Of<GGARecord, &Deviations::dHgt>());
  if (records_.Offline()) {
    constexpr std::string_view kMoment = "hh:mm:ss  dd mmm yyyy";
    paper.Line("Processing start at " + FormatDateTime(records_.OfflineStartTime, kMoment));
    paper.Line("       completed at " + FormatDateTime(records_.OfflineEndTime, kMoment));
    paper.Empty();
    paper.Dashes();
    paper.Empty();
  }
}

}  // namespace fathomline
