// Which rows the numerics window has for which sentence.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "decoding/sentence_type.h"

namespace fathomline {

// A sentence without rows has no grid, only a hint where its figures are.
struct NumericsGrid {
  SentenceType type;
  std::string_view frame;
  std::string_view frameCaption;
  std::string_view grid;
  std::span<const std::string_view> rows;
};

namespace numerics_grids {

template <std::size_t Count>
using Rows = std::array<std::string_view, Count>;

inline constexpr Rows<11> kGGA = {"Latitude", "Longitude", "Ell.Hgt", "Geoide Sep",
                                  "Hgt AMSL", "Quality",   "Sats",    "hdop",
                                  "Age",      "Stn ID",    "UTC"};
inline constexpr Rows<11> kGNS = {"Latitude", "Longitude",      "Ell.Hgt", "Geoide Sep",
                                  "Hgt AMSL", "Mode Indicator", "Sats",    "hdop",
                                  "Age",      "Stn ID",         "UTC"};
inline constexpr Rows<4> kGLL = {"Latitude", "Longitude", "Status", "UTC"};
inline constexpr Rows<8> kRMC = {"Latitude", "Longitude", "SOG Knots", "COG True",
                                 "Magn Var", "Status",    "UTC",       "Date"};
inline constexpr Rows<4> kVTG = {"COG True", "COG Magn", "SOG Knots", "SOG km/h"};
inline constexpr Rows<3> kZDA = {"Date", "UTC", "Time Zone"};
inline constexpr Rows<1> kHDT = {"True Hdg"};
inline constexpr Rows<3> kATT = {"True Hdg", "Pitch", "Roll"};
inline constexpr Rows<2> kROT = {"Rate Of Turn", "Status"};
inline constexpr Rows<4> kVHW = {"Water Speed (knots)", "Water Speed (km/h)", "Water Hdg (true)",
                                 "Water Hdg (magn)"};
inline constexpr Rows<3> kDBT = {"Depth (feet)", "Depth (meter)", "Depth (fantoms)"};
inline constexpr Rows<7> kGST = {"RMS Pseudo ranges",
                                 "Sd Semi-Major axis",
                                 "Sd Semi-Minor axis",
                                 "Dir Semi-Major axis",
                                 "Sd Lat",
                                 "Sd Lon",
                                 "Sd Alt"};

}  // namespace numerics_grids

// In the order of the window.
inline constexpr std::array<NumericsGrid, 14> kNumericsGrids = {{
    {SentenceType::GGA, "frameGGA", "GGA Numerics", "fgGGA", numerics_grids::kGGA},
    {SentenceType::GNS, "frameGNS", "GNS Numerics", "fgGNS", numerics_grids::kGNS},
    {SentenceType::GLL, "frameGLL", "GLL Numerics", "fgGLL", numerics_grids::kGLL},
    {SentenceType::RMC, "frameRMC", "RMC Numerics", "fgRMC", numerics_grids::kRMC},
    {SentenceType::VTG, "frameVTG", "VTG Numerics", "fgVTG", numerics_grids::kVTG},
    {SentenceType::ZDA, "frameZDA", "ZDA Numerics", "fgZDA", numerics_grids::kZDA},
    {SentenceType::HDT, "frameHDT", "HDT Numerics", "fgHDT", numerics_grids::kHDT},
    {SentenceType::ATT, "frameATT", "ATT Numerics", "fgATT", numerics_grids::kATT},
    {SentenceType::ROT, "frameROT", "ROT Numerics", "fgROT", numerics_grids::kROT},
    {SentenceType::VHW, "frameVHW", "VHW Numerics", "fgVHW", numerics_grids::kVHW},
    {SentenceType::DBT, "frameDBT", "DBT Numerics", "fgDBT", numerics_grids::kDBT},
    {SentenceType::GST, "frameGST", "GST Numerics", "fgGST", numerics_grids::kGST},
    {SentenceType::GSA, "frameGSA", "GSA Numerics", "", {}},
    {SentenceType::GSV, "frameGSV", "GSV Numerics", "", {}},
}};

}  // namespace fathomline
