// Which grid of the statistics window shows which figures.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "analysis/statistics.h"

namespace fathomline {

// A column shows the figures of one quantity. A caption may stand without figures.
struct StatisticsColumn {
  std::string_view caption;
  StatSource figures = nullptr;
  bool noPercentile = false;
};

struct StatisticsGrid {
  SentenceType type;
  std::span<const StatisticsColumn> columns;
};

namespace statistics_grids {

inline constexpr auto kGGA = std::to_array<StatisticsColumn>(
    {{"dRad", StatOf<GGARecord, &Deviations::dRad>},
     {"dN", StatOf<GGARecord, &Deviations::dN>},
     {"dE", StatOf<GGARecord, &Deviations::dE>},
     {"dHgt", StatOf<GGARecord, &Deviations::dHgt>},
     {"Qual", StatOf<GGARecord, &GGARecord::Quality>},
     {"Svs", StatOf<GGARecord, &GGARecord::Satellites>},
     {"hdop", StatOf<GGARecord, &GGARecord::HDOP>},
     {"Geoid", StatOf<GGARecord, &GGARecord::GeoidalSeparation>, true},
     {"Age", StatOf<GGARecord, &GGARecord::DGPSAge>}});
inline constexpr auto kGNS = std::to_array<StatisticsColumn>(
    {{"dRad", StatOf<GNSRecord, &Deviations::dRad>},
     {"dN", StatOf<GNSRecord, &Deviations::dN>},
     {"dE", StatOf<GNSRecord, &Deviations::dE>},
     {"dHgt", StatOf<GNSRecord, &Deviations::dHgt>},
     {"Mode"},
     {"Svs", StatOf<GNSRecord, &GNSRecord::Satellites>},
     {"hdop", StatOf<GNSRecord, &GNSRecord::HDOP>},
     {"Geoid", StatOf<GNSRecord, &GNSRecord::GeoidalSeparation>, true},
     {"Age", StatOf<GNSRecord, &GNSRecord::DGPSAge>}});
inline constexpr auto kGLL =
    std::to_array<StatisticsColumn>({{"dRad", StatOf<GLLRecord, &Deviations::dRad>},
                                     {"dN", StatOf<GLLRecord, &Deviations::dN>},
                                     {"dE", StatOf<GLLRecord, &Deviations::dE>}});
// The course has its percentiles here, unlike the one of VTG.
inline constexpr auto kRMC =
    std::to_array<StatisticsColumn>({{"dRad", StatOf<RMCRecord, &Deviations::dRad>},
                                     {"dN", StatOf<RMCRecord, &Deviations::dN>},
                                     {"dE", StatOf<RMCRecord, &Deviations::dE>},
                                     {"SOG (Knots)", StatOf<RMCRecord, &RMCRecord::SOG>},
                                     {"COG (True)", StatOf<RMCRecord, &RMCRecord::COG>}});
inline constexpr auto kVTG =
    std::to_array<StatisticsColumn>({{"SOG (Knots)", StatOf<VTGRecord, &VTGRecord::SOGKnots>},
                                     {"COG (True)", StatOf<VTGRecord, &VTGRecord::COGTrue>, true}});
inline constexpr auto kHDT =
    std::to_array<StatisticsColumn>({{"deltaHdg", StatOf<HDTRecord, &Deviations::deltaHdg>}});
inline constexpr auto kATT =
    std::to_array<StatisticsColumn>({{"deltaHdg", StatOf<ATTRecord, &Deviations::deltaHdg>},
                                     {"deltaPitch", StatOf<ATTRecord, &Deviations::deltaPitch>},
                                     {"deltaRoll", StatOf<ATTRecord, &Deviations::deltaRoll>}});
inline constexpr auto kROT =
    std::to_array<StatisticsColumn>({{"Rate Of Turn", StatOf<ROTRecord, &ROTRecord::RateOfTurn>}});
inline constexpr auto kVHW = std::to_array<StatisticsColumn>(
    {{"Water Speed", StatOf<VHWRecord, &VHWRecord::SpeedKnots>},
     {"Hdg (true)", StatOf<VHWRecord, &VHWRecord::HeadingTrue>},
     {"Hdg (magn)", StatOf<VHWRecord, &VHWRecord::HeadingMagnetic>}});
inline constexpr auto kDBT =
    std::to_array<StatisticsColumn>({{"Depth (m)", StatOf<DBTRecord, &DBTRecord::DepthMetres>}});
inline constexpr auto kGSA =
    std::to_array<StatisticsColumn>({{"pdop", StatOf<GSARecord, &GSARecord::PDOP>},
                                     {"hdop", StatOf<GSARecord, &GSARecord::HDOP>},
                                     {"vdop", StatOf<GSARecord, &GSARecord::VDOP>}});
inline constexpr auto kGSV = std::to_array<StatisticsColumn>({{"svs in view"}});
inline constexpr auto kGST = std::to_array<StatisticsColumn>(
    {{"RMS PseudoR", StatOf<GSTRecord, &GSTRecord::RMS>},
     {"Sd MajorAxis", StatOf<GSTRecord, &GSTRecord::SdMajor>},
     {"Sd MinorAxis", StatOf<GSTRecord, &GSTRecord::SdMinor>},
     {"Dir MajorAxis", StatOf<GSTRecord, &GSTRecord::DirMajor>, true},
     {"Sd Lat", StatOf<GSTRecord, &GSTRecord::SdLat>},
     {"Sd Lon", StatOf<GSTRecord, &GSTRecord::SdLon>},
     {"Sd Alt", StatOf<GSTRecord, &GSTRecord::SdAlt>}});

}  // namespace statistics_grids

// In the order of the window. GSV is filled from the record of the satellites in view.
inline constexpr auto kStatisticsGrids = std::to_array<StatisticsGrid>({
    {SentenceType::GGA, statistics_grids::kGGA},
    {SentenceType::GNS, statistics_grids::kGNS},
    {SentenceType::GLL, statistics_grids::kGLL},
    {SentenceType::RMC, statistics_grids::kRMC},
    {SentenceType::VTG, statistics_grids::kVTG},
    {SentenceType::HDT, statistics_grids::kHDT},
    {SentenceType::ATT, statistics_grids::kATT},
    {SentenceType::ROT, statistics_grids::kROT},
    {SentenceType::VHW, statistics_grids::kVHW},
    {SentenceType::DBT, statistics_grids::kDBT},
    {SentenceType::GSA, statistics_grids::kGSA},
    {SentenceType::GSV, statistics_grids::kGSV},
    {SentenceType::GST, statistics_grids::kGST},
});

// The columns of the grid of signal-to-noise ratios, one for each PRN from 1.
inline constexpr int kGPSSatellites = 32;

}  // namespace fathomline
