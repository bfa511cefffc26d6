#include "views/definitions.h"

#include <array>

#include "records/records.h"

namespace fathomline {
namespace {

struct Definition {
  DefinedTable table;
  std::string_view head;
  std::string_view text;
  std::string_view unit = {};
};

using enum DefinedTable;

constexpr auto kDefinitions = std::to_array<Definition>({
    // Columns of the statistics.
    {Statistics, "dRad", "Horizontal distance from the reference position", "m"},
    {Statistics, "dN", "Distance north of the reference position, south negative", "m"},
    {Statistics, "dE", "Distance east of the reference position, west negative", "m"},
    {Statistics, "dHgt", "Height above the reference height", "m"},
    {Statistics, "Qual",
     "Quality indicator of the fix: 0 invalid, 1 GPS, 2 differential, 4 RTK, 5 float"},
    {Statistics, "Mode",
     "Mode indicator of GNS, a letter for each satellite system: has no figures"},
    {Statistics, "Svs", "Number of satellites used"},
    {Statistics, "svs in view", "Number of satellites in view"},
    {Statistics, "Geoid", "Geoidal separation: height of the geoid above the ellipsoid", "m"},
    {Statistics, "Age", "Age of the differential corrections", "s"},
    {Statistics, "SOG (Knots)", "Speed over ground", "knots"},
    {Statistics, "COG (True)", "Course over ground from true north", "degrees"},
    {Statistics, "deltaHdg", "Heading less the reference heading", "degrees"},
    {Statistics, "deltaPitch", "Pitch less the reference pitch", "degrees"},
    {Statistics, "deltaRoll", "Roll less the reference roll", "degrees"},
    {Statistics, "Rate Of Turn", "Rate of turn, to port negative", "degrees a minute"},
    {Statistics, "Water Speed", "Speed through the water", "knots"},
    {Statistics, "Hdg (true)", "Heading from true north", "degrees"},
    {Statistics, "Hdg (magn)", "Heading from magnetic north", "degrees"},
    {Statistics, "Depth (m)", "Depth below the transducer", "m"},
    {Statistics, "pdop", "Dilution of precision of the position in three dimensions"},
    {Statistics, "hdop", "Dilution of precision of the horizontal position"},
    {Statistics, "vdop", "Dilution of precision of the height"},
    {Statistics, "RMS PseudoR", "Root mean square of the errors of the ranges to the satellites",
     "m"},
    {Statistics, "Sd MajorAxis", "Standard deviation along the major axis of the error ellipse",
     "m"},
    {Statistics, "Sd MinorAxis", "Standard deviation along the minor axis of the error ellipse",
     "m"},
    {Statistics, "Dir MajorAxis", "Direction of the major axis from true north", "degrees"},
    {Statistics, "Sd Lat", "Standard deviation of the latitude", "m"},
    {Statistics, "Sd Lon", "Standard deviation of the longitude", "m"},
    {Statistics, "Sd Alt", "Standard deviation of the height", "m"},
    // And their rows.
    {Statistics, "Current", "The latest sample"},
    {Statistics, "MEAN", "Mean of the accepted samples"},
    {Statistics, "Sdev", "Standard deviation of the accepted samples"},
    {Statistics, "Max", "Largest accepted sample"},
    {Statistics, "Min", "Smallest accepted sample"},
    {Statistics, "68%  <", "68% of the samples did not pass this limit, signs aside"},
    {Statistics, "95%  <", "95% of the samples did not pass this limit, signs aside"},
    {Statistics, "68%  >", "68% of the samples reached this limit"},
    {Statistics, "95%  >", "95% of the samples reached this limit"},
    {Statistics, "Count", "Number of accepted samples"},
    {Statistics, "Rejected", "Number of samples that the limits of the setup kept out"},
    {SNR, "", "Signal-to-noise ratio of this satellite, as GSV sends it", "dB-Hz"},
    // Rows of the numerics.
    {Numerics, "Current value", "The latest one received"},
    {Numerics, "Latitude", "Latitude, in the format chosen under Options", "degrees"},
    {Numerics, "Longitude", "Longitude, in the format chosen under Options", "degrees"},
    {Numerics, "Ell.Hgt",
     "Height above the ellipsoid: above mean sea level, and geoidal separation", "m"},
    {Numerics, "Geoide Sep", "Geoidal separation: height of the geoid above the ellipsoid", "m"},
    {Numerics, "Hgt AMSL", "Height of the antenna above mean sea level", "m"},
    {Numerics, "Quality", "Quality indicator of the fix"},
    {Numerics, "Mode Indicator", "Mode of the fix, a letter for each satellite system"},
    {Numerics, "Sats", "Number of satellites used"},
    {Numerics, "hdop", "Dilution of precision of the horizontal position"},
    {Numerics, "Age", "Age of the differential corrections", "s"},
    {Numerics, "Stn ID", "Number of the reference station of the corrections"},
    {Numerics, "UTC", "Time of the sentence, in UTC"},
    {Numerics, "Date", "Date of the sentence, in UTC"},
    {Numerics, "Time Zone", "Local zone, as ZDA sends it"},
    {Numerics, "Status", "A: data valid, V: warning"},
    {Numerics, "SOG Knots", "Speed over ground", "knots"},
    {Numerics, "SOG km/h", "Speed over ground", "km/h"},
    {Numerics, "COG True", "Course over ground from true north", "degrees"},
    {Numerics, "COG Magn", "Course over ground from magnetic north", "degrees"},
    {Numerics, "Magn Var", "Magnetic variation", "degrees"},
    {Numerics, "True Hdg", "Heading from true north", "degrees"},
    {Numerics, "Pitch", "Pitch", "degrees"},
    {Numerics, "Roll", "Roll", "degrees"},
    {Numerics, "Rate Of Turn", "Rate of turn, to port negative", "degrees a minute"},
    {Numerics, "Water Speed (knots)", "Speed through the water", "knots"},
    {Numerics, "Water Speed (km/h)", "Speed through the water", "km/h"},
    {Numerics, "Water Hdg (true)", "Heading from true north", "degrees"},
    {Numerics, "Water Hdg (magn)", "Heading from magnetic north", "degrees"},
    {Numerics, "Depth (feet)", "Depth below the transducer", "feet"},
    {Numerics, "Depth (meter)", "Depth below the transducer", "m"},
    {Numerics, "Depth (fantoms)", "Depth below the transducer", "fathoms"},
    {Numerics, "RMS Pseudo ranges",
     "Root mean square of the errors of the ranges to the satellites", "m"},
    {Numerics, "Sd Semi-Major axis", "Standard deviation along the major axis of the error ellipse",
     "m"},
    {Numerics, "Sd Semi-Minor axis", "Standard deviation along the minor axis of the error ellipse",
     "m"},
    {Numerics, "Dir Semi-Major axis", "Direction of the major axis from true north", "degrees"},
    {Numerics, "Sd Lat", "Standard deviation of the latitude", "m"},
    {Numerics, "Sd Lon", "Standard deviation of the longitude", "m"},
    {Numerics, "Sd Alt", "Standard deviation of the height", "m"},
    {AIS, "MMSI", "Maritime Mobile Service Identity of the station"},
    {AIS, "Name", "Name that the station sends of itself"},
    {AIS, "Lat", "Latitude, in the format chosen under Options", "degrees"},
    {AIS, "Lon", "Longitude, in the format chosen under Options", "degrees"},
    {AIS, "SOG", "Speed over ground", "knots"},
    {AIS, "COG", "Course over ground from true north", "degrees"},
    {AIS, "HDG", "Heading from true north", "degrees"},
    {AIS, "ROT", "Rate of turn, to port negative; > at the end of the scale", "degrees a minute"},
    {AIS, "Time last msg", "Sentence time of the station's latest message"},
    {AIS, "Index", "Place in the order of the first messages"},
    {ARPA, "No", "Number that the radar gives the target"},
    {ARPA, "Name", "Name of the target, where the radar has one"},
    {ARPA, "Distance", "Distance from own ship", "as in Unit"},
    {ARPA, "Bearing", "Bearing from own ship", "degrees"},
    {ARPA, "T/R", "What the column before is measured from: T true north, R own ship's heading"},
    {ARPA, "Speed", "Speed of the target", "as in Unit"},
    {ARPA, "Course", "Course of the target", "degrees"},
    {ARPA, "CPA", "Distance at the closest point of approach", "as in Unit"},
    {ARPA, "TCPA", "Time to the closest point of approach, negative behind it", "minutes"},
    {ARPA, "Unit",
     "K: km and km/h, N: nautical miles and knots, S: statute miles and miles an hour"},
    {ARPA, "Status", "L: lost, Q: being acquired, T: tracked"},
    {ARPA, "Ref Target", "R: the target is a reference for own ship's speed"},
    {ARPA, "First msg", "Sentence time of the target's first message"},
    {ARPA, "Last msg", "Sentence time of the target's latest message"},
    {Sources, "State", "Alive; late after three of its own intervals; dead"},
    {Sources, "System", "Number and name of the system"},
    {Sources, "Link", "Serial, TCP, UDP or file"},
    {Sources, "Address", "Device, address and port, or file"},
    {Sources, "Condition", "Whether it is connected, or why not"},
    {Sources, "Lines/s", "Lines received", "a second"},
    {Sources, "Last line", "Time since the latest line"},
    {Sources, "Checksum errors", "Lines whose checksum is wrong, where the setup tests it"},
    {Sources, "Talker", "The two letters of the device in front of the sentence: GP, GN, AI ..."},
    {Sources, "Sentence", "The three letters of the sentence"},
    {Sources, "Lines", "Lines received"},
    {Recording, "Talker", "The two letters of the device in front of the sentence: GP, GN, AI ..."},
    {Recording, "Sentence", "The three letters of the sentence"},
    {Recording, "Lines", "Lines in the recording"},
    {Recording, "Lines/s", "Lines in the recording by its own time", "a second"},
    {Recording, "Wrong checksum", "Lines whose checksum is wrong"},
    {Recording, "Analysed", "Whether the sentence can be analysed, and whether it will be"},
    {Satellites, "Satellite", "Letter of the constellation and number of the satellite"},
    {Satellites, "Constellation", "Satellite system"},
    {Satellites, "Sent as", "Number of the satellite as the sentence has it"},
    {Satellites, "Signal", "Signal that is received"},
    {Satellites, "C/N0 dB-Hz", "Carrier-to-noise density", "dB-Hz"},
    {Satellites, "Elevation \u00B0", "Angle above the horizon", "degrees"},
    {Satellites, "Azimuth \u00B0", "Direction from true north", "degrees"},
    {Satellites, "Used", "Whether the receiver uses it for its position"},
    {SentenceLog, "Time", "Time of arrival by the clock of this computer, local", "hh:mm:ss.sss"},
    {SentenceLog, "System", "Number of the system", "1 to 4"},
    {SentenceLog, "Line", "The line as it was received"},
    {Skyplot, "Mask", "Elevations below it are shown in red", "degrees"},
    {Skyplot, "Mode", "Kind of fix, and whether the receiver chooses it or its user"},
    {Skyplot, "Pdop", "Dilution of precision of the position in three dimensions"},
    {Skyplot, "Hdop", "Dilution of precision of the horizontal position"},
    {Skyplot, "Vdop", "Dilution of precision of the height"},
    {Skyplot, "In view", "Number of satellites in view, from GSV"},
    {Skyplot, "Used", "Number of satellites used, and which, from GSA"},
    {Skyplot, "Ch", "Place of the satellite in the GSV sentences"},
    {Skyplot, "Sv",
     "Number of the satellite, red where it is not used. A click opens its signal strength over "
     "time."},
    {Skyplot, "Elevation", "Angle above the horizon; u - rising, d - setting", "degrees"},
    {Skyplot, "Azimuth", "Direction from true north; > increasing, < decreasing", "degrees"},
    {Skyplot, "SNR", "Signal-to-noise ratio, red where none is received", "dB"},
    {Skyplot, "Colour", "Colour of the satellite in the charts of GSV"},
});

}  // namespace

std::string_view NameOfSentence(SentenceType type) {
  std::string_view name;
  VisitSentence(type, [&](const auto& sentence) { name = sentence.name; });
  return name;
}

std::string DefinitionOf(DefinedTable table, std::string_view head) {
  for (const Definition& row : kDefinitions) {
    if (row.table != table || row.head != head) continue;
    std::string text(row.text);
    if (!row.unit.empty()) text.append(" [").append(row.unit).append("]");
    return text;
  }
  return {};
}

void DefineHeads(Grid& grid, DefinedTable table) {
  const auto define = [&](int row, int column) {
    const std::string& head = grid.Text(row, column);
    // The heads of columns of signal strengths are the numbers of the satellites.
    const bool satellite = table == SNR && row == 0 && column > 0;
    const DefinedTable rows = table == SNR ? Statistics : table;
    const std::string text = satellite ? DefinitionOf(SNR, "") : DefinitionOf(rows, head);
    if (!text.empty()) grid.SetHeadTip(row, column, text);
  };
  if (grid.Rows() == 0) return;
  for (int column = 0; column < grid.Columns(); ++column) define(0, column);
  if (grid.ShownHeads().columns == 0) return;
  for (int row = 1; row < grid.Rows(); ++row) define(row, 0);
}

}  // namespace fathomline
