// Which grid of the statistics window shows which figures.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "decoding/sentence_type.h"

namespace fathomline {

// A column shows one quantity of its sentence, by its place among the quantities. A caption may
// stand without figures.
struct StatisticsColumn {
  std::string_view caption;
  int quantity;
  bool noPercentile = false;
};
inline constexpr int kNoFigures = -1;

struct StatisticsGrid {
  SentenceType type;
  std::string_view frame;
  std::string_view frameCaption;
  std::string_view grid;
  std::span<const StatisticsColumn> columns;
};

namespace statistics_grids {

inline constexpr std::array<StatisticsColumn, 9> kGGA = {{{"dRad", 0},
                                                          {"dN", 1},
                                                          {"dE", 2},
                                                          {"dHgt", 3},
                                                          {"Qual", 5},
                                                          {"Svs", 6},
                                                          {"hdop", 7},
                                                          {"Geoid", 4, true},
                                                          {"Age", 8}}};
inline constexpr std::array<StatisticsColumn, 9> kGNS = {{{"dRad", 0},
                                                          {"dN", 1},
                                                          {"dE", 2},
                                                          {"dHgt", 3},
                                                          {"Mode", kNoFigures},
                                                          {"Svs", 5},
                                                          {"hdop", 6},
                                                          {"Geoid", 4, true},
                                                          {"Age", 7}}};
inline constexpr std::array<StatisticsColumn, 3> kGLL = {{{"dRad", 0}, {"dN", 1}, {"dE", 2}}};
// The course has its percentiles here, unlike the one of VTG.
inline constexpr std::array<StatisticsColumn, 5> kRMC = {
    {{"dRad", 0}, {"dN", 1}, {"dE", 2}, {"SOG (Knots)", 3}, {"COG (True)", 4}}};
inline constexpr std::array<StatisticsColumn, 2> kVTG = {
    {{"SOG (Knots)", 0}, {"COG (True)", 1, true}}};
inline constexpr std::array<StatisticsColumn, 1> kHDT = {{{"deltaHdg", 0}}};
inline constexpr std::array<StatisticsColumn, 3> kATT = {
    {{"deltaHdg", 0}, {"deltaPitch", 1}, {"deltaRoll", 2}}};
inline constexpr std::array<StatisticsColumn, 1> kROT = {{{"Rate Of Turn", 0}}};
inline constexpr std::array<StatisticsColumn, 3> kVHW = {
    {{"Water Speed", 0}, {"Hdg (true)", 1}, {"Hdg (magn)", 2}}};
inline constexpr std::array<StatisticsColumn, 1> kDBT = {{{"Depth (m)", 0}}};
inline constexpr std::array<StatisticsColumn, 3> kGSA = {{{"pdop", 0}, {"hdop", 1}, {"vdop", 2}}};
inline constexpr std::array<StatisticsColumn, 1> kGSV = {{{"svs in view", kNoFigures}}};
inline constexpr std::array<StatisticsColumn, 7> kGST = {{{"RMS PseudoR", 0},
                                                          {"Sd MajorAxis", 1},
                                                          {"Sd MinorAxis", 2},
                                                          {"Dir MajorAxis", 3, true},
                                                          {"Sd Lat", 4},
                                                          {"Sd Lon", 5},
                                                          {"Sd Alt", 6}}};

}  // namespace statistics_grids

// In the order of the window. GSV is filled from the record of the satellites in view.
inline constexpr std::array<StatisticsGrid, 13> kStatisticsGrids = {{
    {SentenceType::GGA, "frameGGA", "GGA Statistics", "fgGGA", statistics_grids::kGGA},
    {SentenceType::GNS, "frameGNS", "GNS Statistics", "fgGNS", statistics_grids::kGNS},
    {SentenceType::GLL, "frameGLL", "GLL Statistics", "fgGLL", statistics_grids::kGLL},
    {SentenceType::RMC, "frameRMC", "RMC Statistics", "fgRMC", statistics_grids::kRMC},
    {SentenceType::VTG, "frameVTG", "VTG Statistics", "fgVTG", statistics_grids::kVTG},
    {SentenceType::HDT, "frameHDT", "HDT Statistics", "fgHDT", statistics_grids::kHDT},
    {SentenceType::ATT, "frameATT", "ATT Statistics", "fgATT", statistics_grids::kATT},
    {SentenceType::ROT, "frameROT", "ROT Statistics", "fgROT", statistics_grids::kROT},
    {SentenceType::VHW, "frameVHW", "VHW Statistics", "fgVHW", statistics_grids::kVHW},
    {SentenceType::DBT, "frameDBT", "DBT Statistics", "fgDBT", statistics_grids::kDBT},
    {SentenceType::GSA, "frameGSA", "GSA Statistics", "fgGSA", statistics_grids::kGSA},
    {SentenceType::GSV, "frameGSV", "GSV Statistics", "fgGSV", statistics_grids::kGSV},
    {SentenceType::GST, "frameGST", "GST Statistics", "fgGST", statistics_grids::kGST},
}};

// The columns of the grid of signal-to-noise ratios, one for each PRN from 1.
inline constexpr int kGPSSatellites = 32;

}  // namespace fathomline
