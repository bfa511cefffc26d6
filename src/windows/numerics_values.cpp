#include "windows/numerics_values.h"

#include <array>
#include <span>

#include "base/numbers.h"
#include "base/text.h"
#include "decoding/angles.h"
#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

constexpr auto kQualities = std::to_array<std::string_view>(
    {" - Invalid", " - GPS", " - dGPS", " - PPS", " - RTK, fixed integers",
     " - RTK, floating integers", " - Estimated (DR)", " - Manual input", " - Simulator mode"});

// How a row is written: from a record, or from the member that it is a template of.

template <auto Member, class Record>
std::string Latitude(const Record& record, const CoordinateForm& form) {
  return FormatCoordinate(form.isDMS, form.decimals, record.*Member * kDegreesPerRadian, "LAT");
}

template <auto Member, class Record>
std::string Longitude(const Record& record, const CoordinateForm& form) {
  return FormatCoordinate(form.isDMS, form.decimals, record.*Member * kDegreesPerRadian, "LON");
}

template <auto Member, class Record>
std::string Value(const Record& record, const CoordinateForm&) {
  return ValueText(record.*Member);
}

template <auto Member, class Record>
std::string Text(const Record& record, const CoordinateForm&) {
  return record.*Member;
}

// Metres; NoValue where either part is. Raises Overflow.
template <class Record>
float HeightAboveEllipsoid(const Record& record) {
  constexpr float kMissing = NoValue;
  if (record.Altitude == kMissing || record.GeoidalSeparation == kMissing) return kMissing;
  return SingleSum(record.Altitude, record.GeoidalSeparation);
}

template <class Record>
std::string EllipsoidalHeight(const Record& record, const CoordinateForm&) {
  return ValueText(HeightAboveEllipsoid(record));
}

// With the letter that a member holds.
template <auto Member, auto Letter, class Record>
std::string WithLetter(const Record& record, const CoordinateForm&) {
  return ValueText(record.*Member) + " " + FromLatin1({&(record.*Letter), 1});
}

template <auto Member, class Record>
std::string Metres(const Record& record, const CoordinateForm&) {
  return ValueText(record.*Member) + " m";
}

std::string Quality(const GGARecord& record, const CoordinateForm&) {
  const std::int16_t quality = record.Quality;
  if (quality == NoValue) return std::string(kNotAvailable);
  std::string text = PlainText(quality);
  if (quality >= 0 && static_cast<std::size_t>(quality) < kQualities.size()) {
    text += kQualities[static_cast<std::size_t>(quality)];
  }
  return text;
}

std::string StatusText(const std::string& status) {
  if (status == "A") return status + " - Valid";
  if (status == "V") return status + " - Invalid";
  return status;
}
std::string StatusOfGLL(const GLLRecord& record, const CoordinateForm&) {
  return StatusText(FromLatin1({&record.Status, 1}));
}
std::string StatusOfRMC(const RMCRecord& record, const CoordinateForm&) {
  return StatusText(record.Status);
}
std::string StatusOfROT(const ROTRecord& record, const CoordinateForm&) {
  return FromLatin1({&record.Status, 1}) + (record.Status == 'A' ? " - Valid" : " - Invalid");
}

std::string DateOfZDA(const ZDARecord& record, const CoordinateForm&) {
  return FormattedValueText(record.Day, "00") + "-" + FormattedValueText(record.Month, "00") + "-" +
         FormattedValueText(record.Year, "0000");
}
std::string ZoneOfZDA(const ZDARecord& record, const CoordinateForm&) {
  return FormattedValueText(record.ZoneHours, "00") + ":" +
         FormattedValueText(record.ZoneMinutes, "00");
}

template <class Record>
struct Row {
  std::string_view caption;
  std::string (*text)(const Record& record, const CoordinateForm& form);
};
template <class Record, std::size_t Count>
using Rows = std::array<Row<Record>, Count>;

using GGA = GGARecord;
constexpr Rows<GGA, 11> kGGA = {
    {{"Latitude", Latitude<&GGA::Latitude>},
     {"Longitude", Longitude<&GGA::Longitude>},
     {"Ell.Hgt", EllipsoidalHeight},
     {"Geoide Sep", WithLetter<&GGA::GeoidalSeparation, &GGA::GeoidalUnit>},
     {"Hgt AMSL", WithLetter<&GGA::Altitude, &GGA::AltitudeUnit>},
     {"Quality", Quality},
     {"Sats", Value<&GGA::Satellites>},
     {"hdop", Value<&GGA::HDOP>},
     {"Age", Value<&GGA::DGPSAge>},
     {"Stn ID", Value<&GGA::DGPSStation>},
     {"UTC", Text<&GGA::Time>}}};

using GNS = GNSRecord;
constexpr Rows<GNS, 11> kGNS = {{{"Latitude", Latitude<&GNS::Latitude>},
                                 {"Longitude", Longitude<&GNS::Longitude>},
                                 {"Ell.Hgt", EllipsoidalHeight},
                                 {"Geoide Sep", Metres<&GNS::GeoidalSeparation>},
                                 {"Hgt AMSL", Metres<&GNS::Altitude>},
                                 {"Mode Indicator", Text<&GNS::Mode>},
                                 {"Sats", Value<&GNS::Satellites>},
                                 {"hdop", Value<&GNS::HDOP>},
                                 {"Age", Value<&GNS::DGPSAge>},
                                 {"Stn ID", Value<&GNS::DGPSStation>},
                                 {"UTC", Text<&GNS::Time>}}};

using GLL = GLLRecord;
constexpr Rows<GLL, 4> kGLL = {{{"Latitude", Latitude<&GLL::Latitude>},
                                {"Longitude", Longitude<&GLL::Longitude>},
                                {"Status", StatusOfGLL},
                                {"UTC", Text<&GLL::Time>}}};

using RMC = RMCRecord;
constexpr Rows<RMC, 8> kRMC = {
    {{"Latitude", Latitude<&RMC::Latitude>},
     {"Longitude", Longitude<&RMC::Longitude>},
     {"SOG Knots", Value<&RMC::SOG>},
     {"COG True", Value<&RMC::COG>},
     {"Magn Var", WithLetter<&RMC::MagneticVariation, &RMC::MagneticVariationSide>},
     {"Status", StatusOfRMC},
     {"UTC", Text<&RMC::Time>},
     {"Date", Text<&RMC::Date>}}};

using VTG = VTGRecord;
constexpr Rows<VTG, 4> kVTG = {{{"COG True", Value<&VTG::COGTrue>},
                                {"COG Magn", Value<&VTG::COGMagnetic>},
                                {"SOG Knots", Value<&VTG::SOGKnots>},
                                {"SOG km/h", Value<&VTG::SOGKmh>}}};

using ZDA = ZDARecord;
constexpr Rows<ZDA, 3> kZDA = {
    {{"Date", DateOfZDA}, {"UTC", Text<&ZDA::Time>}, {"Time Zone", ZoneOfZDA}}};

using HDT = HDTRecord;
constexpr Rows<HDT, 1> kHDT = {{{"True Hdg", Value<&HDT::Heading>}}};

using ATT = ATTRecord;
constexpr Rows<ATT, 3> kATT = {{{"True Hdg", Value<&ATT::Heading>},
                                {"Pitch", Value<&ATT::Pitch>},
                                {"Roll", Value<&ATT::Roll>}}};

using ROT = ROTRecord;
constexpr Rows<ROT, 2> kROT = {
    {{"Rate Of Turn", Value<&ROT::RateOfTurn>}, {"Status", StatusOfROT}}};

using VHW = VHWRecord;
constexpr Rows<VHW, 4> kVHW = {{{"Water Speed (knots)", Value<&VHW::SpeedKnots>},
                                {"Water Speed (km/h)", Value<&VHW::SpeedKmh>},
                                {"Water Hdg (true)", Value<&VHW::HeadingTrue>},
                                {"Water Hdg (magn)", Value<&VHW::HeadingMagnetic>}}};

using DBT = DBTRecord;
constexpr Rows<DBT, 3> kDBT = {{{"Depth (feet)", Value<&DBT::DepthFeet>},
                                {"Depth (meter)", Value<&DBT::DepthMetres>},
                                {"Depth (fantoms)", Value<&DBT::DepthFathoms>}}};

using GST = GSTRecord;
constexpr Rows<GST, 7> kGST = {{{"RMS Pseudo ranges", Value<&GST::RMS>},
                                {"Sd Semi-Major axis", Value<&GST::SdMajor>},
                                {"Sd Semi-Minor axis", Value<&GST::SdMinor>},
                                {"Dir Semi-Major axis", Value<&GST::DirMajor>},
                                {"Sd Lat", Value<&GST::SdLat>},
                                {"Sd Lon", Value<&GST::SdLon>},
                                {"Sd Alt", Value<&GST::SdAlt>}}};

// The figures of these two stand in the sky plot.
constexpr Rows<GSARecord, 0> kGSA{};
constexpr Rows<GSVRecord, 0> kGSV{};

template <class Record>
class NumericsOf : public SentenceNumerics {
 public:
  explicit NumericsOf(std::span<const Row<Record>> rows) : rows_(rows) {}

  SentenceType Type() const override { return kTypeOf<Record>; }

  std::vector<std::string_view> Captions() const override {
    std::vector<std::string_view> captions;
    for (const Row<Record>& row : rows_) captions.push_back(row.caption);
    return captions;
  }

  // Texts within are assigned into what they hold, without an allocation.
  void Keep(const SystemMessages& messages) override {
    const Record& record = (messages.*kSentenceOf<Record>.message).Record;
    // A height that does not fit is a fault of the sentence, not of whoever looks at it later.
    if constexpr (requires { record.GeoidalSeparation; }) HeightAboveEllipsoid(record);
    latest_ = record;
  }

  std::vector<std::string> Texts(const CoordinateForm& form) const override {
    std::vector<std::string> texts;
    for (const Row<Record>& row : rows_) texts.push_back(row.text(latest_, form));
    return texts;
  }

 private:
  std::span<const Row<Record>> rows_;
  Record latest_;
};

}  // namespace

std::vector<std::unique_ptr<SentenceNumerics>> MakeNumerics() {
  std::vector<std::unique_ptr<SentenceNumerics>> numerics;
  const auto add = [&]<class Record, std::size_t Count>(const Rows<Record, Count>& rows) {
    numerics.push_back(std::make_unique<NumericsOf<Record>>(rows));
  };
  const auto addAll = [&](const auto&... rows) { (add(rows), ...); };
  addAll(kGGA, kGNS, kGLL, kRMC, kVTG, kZDA, kHDT, kATT, kROT, kVHW, kDBT, kGST, kGSA, kGSV);
  return numerics;
}

}  // namespace fathomline
