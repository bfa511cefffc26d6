// The trial as comma-separated values: every figure of the JSON in a row of its own, and the
// samples that the pictures are drawn from, rounded as the figures are.
#pragma once

#include <array>
#include <iosfwd>
#include <string_view>

#include "trial/trial_figures.h"

namespace fathomline::trial {

void WriteFiguresCsv(const TrialFigures& figures, std::ostream& out);
void WritePositionsCsv(const TrialFigures& figures, std::ostream& out);
void WriteAnglesCsv(const TrialFigures& figures, std::ostream& out);
void WriteSatellitesCsv(const TrialFigures& figures, std::ostream& out);
void WritePairsCsv(const TrialFigures& figures, std::ostream& out);

struct CsvFile {
  std::string_view name;
  void (*write)(const TrialFigures& figures, std::ostream& out);
};
inline constexpr std::array kCsvFiles = {
    CsvFile{"figures.csv", WriteFiguresCsv}, CsvFile{"positions.csv", WritePositionsCsv},
    CsvFile{"angles.csv", WriteAnglesCsv}, CsvFile{"satellites.csv", WriteSatellitesCsv},
    CsvFile{"pairs.csv", WritePairsCsv}};

}  // namespace fathomline::trial
