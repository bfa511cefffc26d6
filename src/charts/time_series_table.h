// The windows of time series: one row per class, per chart and per series.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "analysis/statistics.h"
#include "base/look.h"
#include "charts/chart_engine.h"
#include "records/records.h"

namespace fathomline {

// In the order in which a reset walks over them.
struct TimeSeriesClass {
  SentenceType type;
  std::string_view name;
  std::string_view caption;
  int windowIndex;
  int charts;
  WindowFlag flag;
  bool CommSetup::*analysed = FindAnalyseFlag(type)->flag;
};

inline constexpr auto kTimeSeriesClasses = std::to_array<TimeSeriesClass>(
    {{SentenceType::GGA, "frmTimeSeriesGGA", "Position Time Series ", 0, 4,
      WindowFlag::TimeSeriesGGA},
     {SentenceType::GNS, "frmTimeSeriesGNS", "GNS Time Series ", 11, 4, WindowFlag::TimeSeriesGNS},
     {SentenceType::GLL, "frmTimeSeriesGLL", "GLL Time Series ", 1, 1, WindowFlag::TimeSeriesGLL},
     {SentenceType::RMC, "frmTimeSeriesRMC", "RMC Time Series ", 2, 2, WindowFlag::TimeSeriesRMC},
     {SentenceType::VTG, "frmTimeSeriesVTG", "VTG Time Series ", 3, 1, WindowFlag::TimeSeriesVTG},
     {SentenceType::GSA, "frmTimeSeriesGSA", "GSA Time ", 4, 2, WindowFlag::TimeSeriesGSA},
     {SentenceType::GST, "frmTimeSeriesGST", "GST Time Series ", 13, 3, WindowFlag::TimeSeriesGST},
     {SentenceType::GSV, "frmTimeSeriesGSV", "GSV Time Series ", 5, 3, WindowFlag::TimeSeriesGSV},
     {SentenceType::HDT, "frmTimeSeriesHDT", "HDT Time Series ", 6, 1, WindowFlag::TimeSeriesHDT},
     {SentenceType::ATT, "frmTimeSeriesATT", "ATT Time Series ", 7, 2, WindowFlag::TimeSeriesATT},
     {SentenceType::ROT, "frmTimeSeriesROT", "ROT Time Series ", 8, 1, WindowFlag::TimeSeriesROT},
     {SentenceType::VHW, "frmTimeSeriesVHW", "VHW Time Series ", 9, 1, WindowFlag::TimeSeriesVHW},
     {SentenceType::DBT, "frmTimeSeriesDBT", "DBT Time Series ", 10, 1,
      WindowFlag::TimeSeriesDBT}});

inline constexpr std::string_view kSatelliteCountNote =
    "Svs Bar Colors : Yellow>4, Violet =4, Red <4";
inline constexpr std::string_view kQualityNote =
    "Quality Bar Color Code : 1-GPS (red) 2-dGPS (blue) 3-PPS (green) 4-RTK Fixed (magenta) 5-RTK "
    "Float (yellow) 6-Estimated (cyan) 7-Manual (white) 8-Simulated (yellow)";

struct TimeSeriesChart {
  SentenceType type;
  int chart;
  std::string_view left;
  std::string_view right = {};
  std::string_view note = {};
};

inline constexpr auto kTimeSeriesCharts =
    std::to_array<TimeSeriesChart>({{SentenceType::GGA, 0, "m"},
                                    {SentenceType::GGA, 1, "m"},
                                    {SentenceType::GGA, 2, "Svs, hdop", {}, kSatelliteCountNote},
                                    {SentenceType::GGA, 3, "Quality, s", "Stn ID", kQualityNote},
                                    {SentenceType::GNS, 0, "m"},
                                    {SentenceType::GNS, 1, "m"},
                                    {SentenceType::GNS, 2, "Svs, hdop", {}, kSatelliteCountNote},
                                    {SentenceType::GNS, 3, "s", "Stn ID"},
                                    {SentenceType::GLL, 0, "m"},
                                    {SentenceType::RMC, 0, "m"},
                                    {SentenceType::RMC, 1, "knots", "deg"},
                                    {SentenceType::VTG, 0, "knots", "deg"},
                                    {SentenceType::GSA, 0, "dop"},
                                    {SentenceType::GSA, 1, "PRN"},
                                    {SentenceType::GST, 0, "m"},
                                    {SentenceType::GST, 1, "m"},
                                    {SentenceType::GST, 2, "m", "deg"},
                                    {SentenceType::GSV, 0, "Elevation (deg)"},
                                    {SentenceType::GSV, 1, "Azimuth (deg)"},
                                    {SentenceType::GSV, 2, "SNR (dB)"},
                                    {SentenceType::HDT, 0, "deg", "Heading (deg)"},
                                    {SentenceType::ATT, 0, "deg"},
                                    {SentenceType::ATT, 1, "deg"},
                                    {SentenceType::ROT, 0, "deg/min"},
                                    {SentenceType::VHW, 0, "knots, deg", "deg"},
                                    {SentenceType::DBT, 0, "m"}});

// What the values of a sentence are read from.
struct FeedSource {
  const SystemMessages& messages;
  const Deviations& present;
};
using FeedValue = double (*)(const FeedSource&);

template <auto MessageMember, auto Field>
constexpr double Decoded(const FeedSource& source) {
  return static_cast<double>((source.messages.*MessageMember).Record.*Field);
}
template <auto Field>
constexpr double Deviation(const FeedSource& source) {
  return static_cast<double>(source.present.*Field);
}

// On what else, beside the statistic, it depends whether and how a sample is plotted.
enum class FeedRule : std::uint8_t {
  None,
  Radius,          // moves the markers, and feeds the two series behind it
  Computed,        // fed with the series in front of it
  SatelliteCount,  // coloured bars
  Quality,         // coloured bars, while data of differential corrections are shown
  Age,             // only then, broken where the kind of fix changes
  Station,         // only then, as bars of equal values
  Heading,         // moves the markers and the right axis
  FixType,         // in a colour that tells the mode
};

// The series of a chart, in the order of their numbers. A series without a value is fed by none of
// the rows.
struct TimeSeriesRow {
  SentenceType type;
  int chart;
  std::string_view title;
  Colour colour;
  FeedValue value = nullptr;
  StatSource statistic = nullptr;  // that must not have seen NoValue last
  FeedRule rule = FeedRule::None;
  SeriesKind kind = SeriesKind::Line;
  bool rightAxis = false;
  std::string_view unit = {};  // where the title of the axis names more than one
};

namespace time_series_rows {

using T = SentenceType;
using M = SystemMessages;
inline constexpr bool kRightAxis = true;
inline constexpr SeriesKind kLine = SeriesKind::Line;

inline constexpr FeedValue kDRad = Deviation<&Deviations::dRad>;
inline constexpr FeedValue kDLat = Deviation<&Deviations::dN>;
inline constexpr FeedValue kDLon = Deviation<&Deviations::dE>;
inline constexpr FeedValue kDHeight = Deviation<&Deviations::dHgt>;
inline constexpr FeedValue kDHeading = Deviation<&Deviations::deltaHdg>;

inline constexpr auto kRows = std::to_array<TimeSeriesRow>({
    {T::GGA, 0, "dRad", kBlue, kDRad, StatOf<GGARecord, &Deviations::dRad>, FeedRule::Radius},
    {T::GGA, 0, "Avg", kDarkRed, nullptr, nullptr, FeedRule::Computed},
    {T::GGA, 0, "sDev", kDarkGreen, nullptr, nullptr, FeedRule::Computed},
    {T::GGA, 1, "dLat", kBlue, kDLat, StatOf<GGARecord, &Deviations::dN>},
    {T::GGA, 1, "dLon", kRed, kDLon, StatOf<GGARecord, &Deviations::dE>},
    {T::GGA, 1, "dh", kDarkGreen, kDHeight, StatOf<GGARecord, &Deviations::dHgt>},
    {T::GGA, 2, "Svs (Color-coded)", kYellow, Decoded<&M::GGA, &GGARecord::Satellites>, nullptr,
     FeedRule::SatelliteCount, SeriesKind::Bar},
    {T::GGA, 2, "hdop", kNavy, Decoded<&M::GGA, &GGARecord::HDOP>,
     StatOf<GGARecord, &GGARecord::HDOP>},
    {T::GGA, 3, "Quality (Color-coded)", kBlue, Decoded<&M::GGA, &GGARecord::Quality>, nullptr,
     FeedRule::Quality, SeriesKind::Bar},
    {T::GGA, 3, "Age", kBlack, Decoded<&M::GGA, &GGARecord::DGPSAge>, nullptr, FeedRule::Age, kLine,
     false, "s"},
    {T::GGA, 3, "Stn ID", kOrange, Decoded<&M::GGA, &GGARecord::DGPSStation>, nullptr,
     FeedRule::Station, SeriesKind::Gantt, kRightAxis},

    {T::GNS, 0, "dRad", kBlue, kDRad, StatOf<GNSRecord, &Deviations::dRad>, FeedRule::Radius},
    {T::GNS, 0, "Avg", kDarkRed, nullptr, nullptr, FeedRule::Computed},
    {T::GNS, 0, "sDev", kDarkGreen, nullptr, nullptr, FeedRule::Computed},
    {T::GNS, 1, "dLat", kBlue, kDLat, StatOf<GNSRecord, &Deviations::dN>},
    {T::GNS, 1, "dLon", kRed, kDLon, StatOf<GNSRecord, &Deviations::dE>},
    {T::GNS, 1, "dh", kDarkGreen, kDHeight, StatOf<GNSRecord, &Deviations::dHgt>},
    {T::GNS, 2, "Svs (Color-coded)", kYellow, Decoded<&M::GNS, &GNSRecord::Satellites>, nullptr,
     FeedRule::SatelliteCount, SeriesKind::Bar},
    {T::GNS, 2, "hdop", kNavy, Decoded<&M::GNS, &GNSRecord::HDOP>,
     StatOf<GNSRecord, &GNSRecord::HDOP>},
    {T::GNS, 3, "Mode (Color-coded)", kBlue, nullptr, nullptr, FeedRule::None, SeriesKind::Bar},
    {T::GNS, 3, "Age", kBlack, Decoded<&M::GNS, &GNSRecord::DGPSAge>, nullptr, FeedRule::Age},
    {T::GNS, 3, "Stn ID", kOrange, Decoded<&M::GNS, &GNSRecord::DGPSStation>, nullptr,
     FeedRule::Station, SeriesKind::Gantt, kRightAxis},

    {T::GLL, 0, "dRad", kBlue, kDRad},
    {T::GLL, 0, "dLat", kRed, kDLat},
    {T::GLL, 0, "dLon", kDarkGreen, kDLon},

    {T::RMC, 0, "dRad", kBlue, kDRad},
    {T::RMC, 0, "dLat", kRed, kDLat},
    {T::RMC, 0, "dLon", kDarkGreen, kDLon},
    {T::RMC, 1, "SOG (Knots)", kBlue, Decoded<&M::RMC, &RMCRecord::SOG>},
    {T::RMC, 1, "COG (True)", kRed, Decoded<&M::RMC, &RMCRecord::COG>, nullptr, FeedRule::None,
     kLine, kRightAxis},

    {T::VTG, 0, "SOG (Knots)", kBlue, Decoded<&M::VTG, &VTGRecord::SOGKnots>},
    {T::VTG, 0, "COG (True)", kRed, Decoded<&M::VTG, &VTGRecord::COGTrue>, nullptr, FeedRule::None,
     kLine, kRightAxis},

    {T::GSA, 0, "pdop", kBlue, Decoded<&M::GSA, &GSARecord::PDOP>},
    {T::GSA, 0, "hdop", kRed, Decoded<&M::GSA, &GSARecord::HDOP>},
    {T::GSA, 0, "vdop", kDarkGreen, Decoded<&M::GSA, &GSARecord::VDOP>},
    {T::GSA, 0, "2D/3D (Yellow if manual)", kBlack, Decoded<&M::GSA, &GSARecord::FixType>, nullptr,
     FeedRule::FixType},
    {T::GSA, 1, "00", SatelliteColour(0)},

    {T::GST, 0, "RMS Pseudo Range", kBlue, Decoded<&M::GST, &GSTRecord::RMS>},
    {T::GST, 1, "sd Lat", kBlue, Decoded<&M::GST, &GSTRecord::SdLat>},
    {T::GST, 1, "sd Lon", kRed, Decoded<&M::GST, &GSTRecord::SdLon>},
    {T::GST, 1, "sd Alt", kDarkGreen, Decoded<&M::GST, &GSTRecord::SdAlt>},
    {T::GST, 2, "sd Semi-MajorAxis", kBlue, Decoded<&M::GST, &GSTRecord::SdMajor>},
    {T::GST, 2, "sd Semi-MinorAxis", kRed, Decoded<&M::GST, &GSTRecord::SdMinor>},
    {T::GST, 2, "Dir Semi-MajorAxis (Right axis)", kDarkGreen,
     Decoded<&M::GST, &GSTRecord::DirMajor>, nullptr, FeedRule::None, kLine, kRightAxis},

    {T::GSV, 0, "00", SatelliteColour(0)},
    {T::GSV, 1, "00", SatelliteColour(0)},
    {T::GSV, 2, "Svs", SatelliteColour(0), nullptr, nullptr, FeedRule::None, SeriesKind::Bar},

    {T::HDT, 0, "deltaHeading", kBlue, kDHeading, StatOf<HDTRecord, &Deviations::deltaHdg>,
     FeedRule::Heading},
    {T::HDT, 0, "Ref Hdg", kBlack},
    {T::HDT, 0, "Avg Hdg", kDarkRed},
    {T::HDT, 0, "Sdev", look::kDeviationBand},

    {T::ATT, 0, "deltaHeading", kBlue, kDHeading},
    {T::ATT, 1, "Pitch", kBlue, Decoded<&M::ATT, &ATTRecord::Pitch>},
    {T::ATT, 1, "Roll", kRed, Decoded<&M::ATT, &ATTRecord::Roll>},

    {T::ROT, 0, "Rate Of Turn", kBlue, Decoded<&M::ROT, &ROTRecord::RateOfTurn>},

    {T::VHW, 0, "WaterSpeed (Knots)", kBlue, Decoded<&M::VHW, &VHWRecord::SpeedKnots>, nullptr,
     FeedRule::None, kLine, false, "knots"},
    {T::VHW, 0, "Water Hdg (True)", kRed, Decoded<&M::VHW, &VHWRecord::HeadingTrue>, nullptr,
     FeedRule::None, kLine, kRightAxis},
    {T::VHW, 0, "Hdg (Magnetic)", kDarkGreen, Decoded<&M::VHW, &VHWRecord::HeadingMagnetic>,
     nullptr, FeedRule::None, kLine, false, "deg"},

    {T::DBT, 0, "Depth (below transducer)", kBlue, Decoded<&M::DBT, &DBTRecord::DepthMetres>},
});

}  // namespace time_series_rows

inline constexpr auto& kTimeSeriesRows = time_series_rows::kRows;

// The charts of GNS whose series are those of GGA.
inline constexpr int kSharedPositionCharts = 3;

// The row whose filter a row uses: its own, but of the position in GNS that of the same series of
// GGA, so that a system that sends both feeds one block from both.
constexpr std::size_t FilterRow(std::size_t row) {
  const TimeSeriesRow& own = kTimeSeriesRows[row];
  if (own.type != SentenceType::GNS || own.chart >= kSharedPositionCharts) return row;
  int position = 0;
  for (std::size_t i = row; i > 0 && kTimeSeriesRows[i - 1].type == own.type &&
                            kTimeSeriesRows[i - 1].chart == own.chart;
       --i) {
    ++position;
  }
  for (std::size_t i = 0; i < kTimeSeriesRows.size(); ++i) {
    const TimeSeriesRow& other = kTimeSeriesRows[i];
    if (other.type == SentenceType::GGA && other.chart == own.chart && position-- == 0) return i;
  }
  return row;
}

constexpr bool FiltersAreOfTheSameSeries() {
  for (std::size_t row = 0; row < kTimeSeriesRows.size(); ++row) {
    const TimeSeriesRow& own = kTimeSeriesRows[row];
    const TimeSeriesRow& other = kTimeSeriesRows[FilterRow(row)];
    if (own.title != other.title) return false;
    const bool shared = own.type == SentenceType::GNS && own.chart < kSharedPositionCharts;
    if (other.type != (shared ? SentenceType::GGA : own.type)) return false;
  }
  return true;
}
static_assert(FiltersAreOfTheSameSeries());

// Every class has a row for each of its charts, and every series one of those charts.
constexpr bool ChartsFitTheirClasses() {
  for (const TimeSeriesClass& design : kTimeSeriesClasses) {
    int charts = 0;
    for (const TimeSeriesChart& chart : kTimeSeriesCharts) {
      if (chart.type == design.type && chart.chart != charts++) return false;
    }
    if (charts != design.charts) return false;
    for (const TimeSeriesRow& row : kTimeSeriesRows) {
      if (row.type == design.type && row.chart >= charts) return false;
    }
  }
  return true;
}
static_assert(ChartsFitTheirClasses());

}  // namespace fathomline
