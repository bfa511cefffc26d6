#include "trial/trial_csv.h"

#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "base/csv.h"
#include "base/numbers.h"
#include "trial/trial_json.h"

namespace fathomline::trial {
namespace {

using Json = nlohmann::ordered_json;

std::string TextOf(const Json& value) {
  if (value.is_string()) return value.get<std::string>();
  if (value.is_number_float()) return ExactText(value.get<double>());
  return value.is_null() ? std::string() : value.dump();
}

// What tells the elements of a list apart, the keys of the first row that an element has.
std::string LabelOf(const Json& element) {
  const std::initializer_list<std::initializer_list<const char*>> kLabels = {
      {"name"},
      {"quality"},
      {"constellation", "signal", "number"},
      {"id", "channel"},
      {"signal"},
      {"from_deg"},
      {"limit", "system"},
      {"file", "system"}};
  for (const auto& keys : kLabels) {
    if (!element.contains(*keys.begin())) continue;
    std::string label;
    for (const char* key : keys) {
      if (!label.empty()) label += '/';
      label += TextOf(element[key]);
    }
    return label;
  }
  return {};
}

void WriteRow(std::ostream& out, std::initializer_list<std::string_view> cells) {
  bool isFirst = true;
  for (const std::string_view cell : cells) {
    if (!isFirst) out << ',';
    isFirst = false;
    WriteCsvCell(out, cell);
  }
  out << '\n';
}

void WriteFigures(std::ostream& out, const std::string& of, const std::string& path,
                  const Json& json) {
  if (!json.is_structured()) {
    WriteRow(out, {of, path, TextOf(json)});
    return;
  }
  for (const auto& [key, value] : json.items()) {
    const std::string step = json.is_array() ? LabelOf(value) : key;
    WriteFigures(out, of, path.empty() ? step : path + "." + step, value);
  }
}

// Nothing for what is not there.
std::string Cell(double value, int decimals) {
  return std::isnan(value) ? std::string() : FigureText(value, decimals);
}

void WriteTrack(std::ostream& out, const std::string& name, const PositionTrack& track,
                bool dated) {
  for (std::size_t i = 0; i < track.times.size(); ++i) {
    WriteRow(out, {name, ToText(Moment{track.times[i], dated}),
                   track.quality.empty() ? std::string() : std::to_string(track.quality[i]),
                   Cell(track.north[i], decimals::kLength), Cell(track.east[i], decimals::kLength),
                   Cell(track.up[i], decimals::kLength)});
  }
}

}  // namespace

void WriteFiguresCsv(const TrialFigures& figures, std::ostream& out) {
  const Json json = ToJson(figures);
  WriteRow(out, {"of", "figure", "value"});
  for (const auto& [key, value] : json.items()) {
    if (key != "systems" && key != "pairs") {
      WriteFigures(out, "", key, value);
      continue;
    }
    for (const Json& element : value) {
      WriteFigures(out, element["name"].get<std::string>(), "", element);
    }
  }
}

void WritePositionsCsv(const TrialFigures& figures, std::ostream& out) {
  WriteRow(out, {"system", "time", "quality", "north_m", "east_m", "up_m"});
  for (const SystemFigures& system : figures.systems) {
    WriteTrack(out, system.name, system.pictures.positions, system.ledger.dated);
  }
}

void WriteAnglesCsv(const TrialFigures& figures, std::ostream& out) {
  WriteRow(out, {"system", "angle", "name", "time", "deviation_deg"});
  for (const SystemFigures& system : figures.systems) {
    const struct {
      std::string_view angle;
      const std::vector<AngleTrack>& tracks;
    } lists[] = {{"heading", system.pictures.headings},
                 {"pitch", system.pictures.pitches},
                 {"roll", system.pictures.rolls}};
    for (const auto& [angle, tracks] : lists) {
      for (const AngleTrack& track : tracks) {
        for (std::size_t i = 0; i < track.times.size(); ++i) {
          WriteRow(out, {system.name, angle, track.name,
                         ToText(Moment{track.times[i], system.ledger.dated}),
                         Cell(track.deviations[i], decimals::kLength)});
        }
      }
    }
  }
}

void WriteSatellitesCsv(const TrialFigures& figures, std::ostream& out) {
  WriteRow(out, {"system", "constellation", "signal", "number", "time", "elevation_deg",
                 "azimuth_deg", "cn0_dbhz", "in_use"});
  const auto angle = [](int degrees, int missing) {
    return degrees == missing ? std::string() : std::to_string(degrees);
  };
  for (const SystemFigures& system : figures.systems) {
    for (const SatelliteTrack& track : system.pictures.satellites) {
      for (const SatelliteSample& sample : *track.samples) {
        WriteRow(out, {system.name, track.constellation, track.signal.value_or(""),
                       std::to_string(track.number),
                       ToText(Moment{track.TimeOf(sample), system.ledger.dated}),
                       angle(sample.elevation, SatelliteSample::kNoElevation),
                       angle(sample.azimuth, SatelliteSample::kNoAzimuth),
                       sample.cn0 > 0.0F ? FigureText(sample.cn0, decimals::kSignal) : "",
                       sample.inUse ? "1" : "0"});
      }
    }
  }
}

void WritePairsCsv(const TrialFigures& figures, std::ostream& out) {
  WriteRow(out, {"pair", "time", "quality", "north_m", "east_m", "up_m"});
  for (const PairFigures& pair : figures.pairs) {
    WriteTrack(out, pair.name, pair.differences,
               pair.horizontal.largestAt.value_or(Moment{}).dated);
  }
}

}  // namespace fathomline::trial
