// The figures of a trial: plain structs of what its documents tell, in the shape and the order of
// the JSON, and the columns of samples that the pictures are drawn from.
//
// A leaf lists its figures once, in `Layout()`, with the key and the decimals that they are written
// with; JSON, CSV and the document walk it, so that all have the same numbers. A figure that is not
// there is an empty optional. A block without any says why, and then the rest of it means nothing.
//
// Metres, seconds, knots, degrees; degrees of latitude and longitude are north and east positive;
// shares are of 1; C/N0 is in dB-Hz.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "trial/moment.h"
#include "trial/trial_pictures.h"

namespace fathomline::trial {

using Count = std::int64_t;
using Value = std::optional<double>;
using At = std::optional<Moment>;

// Why a block has no figures.
namespace why {
inline constexpr std::string_view kTooFew = "too few";
inline constexpr std::string_view kNoneSent = "none sent";
inline constexpr std::string_view kNoFix = "no fix";
inline constexpr std::string_view kNoHeight = "no height";
inline constexpr std::string_view kNoReferenceHeight = "no reference height";
inline constexpr std::string_view kOtherHeights = "other heights";
inline constexpr std::string_view kNoOverlap = "no overlap";
inline constexpr std::string_view kNoMean = "no mean";
inline constexpr std::string_view kMoving = "moving";
}  // namespace why

// Decimals of a figure, by what it measures.
namespace decimals {
inline constexpr int kCount = 0;
inline constexpr int kLength = 4;  // metres, degrees and knots
inline constexpr int kPlace = 9;   // degrees of latitude and longitude
inline constexpr int kSeconds = 3;
inline constexpr int kShare = 6;
inline constexpr int kSignal = 2;     // dB-Hz
inline constexpr int kDirection = 2;  // of the error ellipse
inline constexpr int kMeanCount = 3;
inline constexpr int kAis = 2;  // metres
}  // namespace decimals

// One figure of a block. Its member is a Count, an optional Count, a double, a Value, an At, a text
// or a flag.
template <class Block, class Member>
struct Figure {
  std::string_view key;
  Member Block::*member;
  int decimals = 0;
};
template <class Block, class Member>
Figure(const char*, Member Block::*) -> Figure<Block, Member>;
template <class Block, class Member>
Figure(const char*, Member Block::*, int) -> Figure<Block, Member>;

// Steps longer than three intervals.
struct Gaps {
  std::string_view why;
  Count n = 0;
  Value longest;
  At longestAt;  // the last sample before it
  double sum = 0.0;

  static constexpr auto Layout() {
    using B = Gaps;
    return std::tuple{Figure{"n", &B::n}, Figure{"longest_s", &B::longest, decimals::kSeconds},
                      Figure{"longest_at", &B::longestAt},
                      Figure{"sum_s", &B::sum, decimals::kSeconds}};
  }
};

struct HorizontalErrors {
  std::string_view why;
  Count n = 0;
  Value biasNorth, biasEast, stdNorth, stdEast, drms, twoDrms, r50, r68, r95, r99, largest;
  At largestAt;

  static constexpr auto Layout() {
    using B = HorizontalErrors;
    constexpr int kM = decimals::kLength;
    return std::tuple{Figure{"n", &B::n},
                      Figure{"bias_north_m", &B::biasNorth, kM},
                      Figure{"bias_east_m", &B::biasEast, kM},
                      Figure{"std_north_m", &B::stdNorth, kM},
                      Figure{"std_east_m", &B::stdEast, kM},
                      Figure{"drms_m", &B::drms, kM},
                      Figure{"2drms_m", &B::twoDrms, kM},
                      Figure{"r50_m", &B::r50, kM},
                      Figure{"r68_m", &B::r68, kM},
                      Figure{"r95_m", &B::r95, kM},
                      Figure{"r99_m", &B::r99, kM},
                      Figure{"largest_m", &B::largest, kM},
                      Figure{"largest_at", &B::largestAt}};
  }
};

struct VerticalErrors {
  std::string_view why;
  Count n = 0;
  Value bias, std, rms, p50, p68, p95, p99, largest;
  At largestAt;

  static constexpr auto Layout() {
    using B = VerticalErrors;
    constexpr int kM = decimals::kLength;
    return std::tuple{Figure{"n", &B::n},
                      Figure{"bias_m", &B::bias, kM},
                      Figure{"std_m", &B::std, kM},
                      Figure{"rms_m", &B::rms, kM},
                      Figure{"p50_m", &B::p50, kM},
                      Figure{"p68_m", &B::p68, kM},
                      Figure{"p95_m", &B::p95, kM},
                      Figure{"p99_m", &B::p99, kM},
                      Figure{"largest_m", &B::largest, kM},
                      Figure{"largest_at", &B::largestAt}};
  }
};

// The ellipse that holds 95% of normally distributed errors about their mean.
struct ErrorEllipse {
  std::string_view why;
  Value semiMajor, semiMinor;
  Value direction;  // of the long axis, from north, 0 to below 180
  Value insideShare;

  static constexpr auto Layout() {
    using B = ErrorEllipse;
    return std::tuple{Figure{"semi_major_m", &B::semiMajor, decimals::kLength},
                      Figure{"semi_minor_m", &B::semiMinor, decimals::kLength},
                      Figure{"direction_deg", &B::direction, decimals::kDirection},
                      Figure{"inside_share", &B::insideShare, decimals::kShare}};
  }
};

struct Horizontal {
  HorizontalErrors reference, mean;
  ErrorEllipse ellipse;
};

struct Vertical {
  VerticalErrors reference, mean;
};

struct AngleErrors {
  std::string name;
  std::string_view why;  // with `name` and `n`
  Count n = 0;
  Value reference, mean, bias, std, rms, p50, p68, p95, p99;
  Value largest;  // with its sign
  At largestAt;

  static constexpr auto Layout() {
    using B = AngleErrors;
    constexpr int kDegrees = decimals::kLength;
    return std::tuple{Figure{"name", &B::name},
                      Figure{"n", &B::n},
                      Figure{"reference_deg", &B::reference, kDegrees},
                      Figure{"mean_deg", &B::mean, kDegrees},
                      Figure{"bias_deg", &B::bias, kDegrees},
                      Figure{"std_deg", &B::std, kDegrees},
                      Figure{"rms_deg", &B::rms, kDegrees},
                      Figure{"p50_deg", &B::p50, kDegrees},
                      Figure{"p68_deg", &B::p68, kDegrees},
                      Figure{"p95_deg", &B::p95, kDegrees},
                      Figure{"p99_deg", &B::p99, kDegrees},
                      Figure{"largest_deg", &B::largest, kDegrees},
                      Figure{"largest_at", &B::largestAt}};
  }
};

// Depth, rate of turn or speed of one name. The keys end in the unit of the list they stand in.
struct SeriesFigures {
  std::string name;
  Count n = 0;
  Value mean, std, least;
  At leastAt;
  Value greatest;
  At greatestAt;
  Gaps gaps;
};

// The four lists of them.
struct SeriesList {
  std::string_view key;   // in the JSON
  std::string_view unit;  // behind the "_" of a key
  std::vector<SeriesFigures> names;
};

enum class ReferenceKind { Mean, First, Given, System };
std::string_view ToText(ReferenceKind kind);  // "mean", "first", "given", "system"

struct Reference {
  ReferenceKind kind = ReferenceKind::Mean;
  std::optional<std::string> name;  // of the system
  Value latitude, longitude, height;
  std::string_view why;  // beside the rest, where there is no place
};

enum class HeightKind { None, Ellipsoid, Geoid };
std::string_view ToText(HeightKind kind);  // "none", "ellipsoid", "geoid"

struct StreamFigures {
  std::string name;  // talker and type
  bool chosen = false;
  Count epochs = 0;
  Count fixes = 0;
  HeightKind heights = HeightKind::None;
  Value interval;  // median
  Count conflicting = 0;
  std::optional<Count> matched;  // with the chosen one
  Value medianDistance;
};

struct LineClasses {
  Count good = 0, unreadable = 0, unknown = 0, wrongChecksum = 0, noChecksum = 0, malformed = 0,
        foreign = 0, empty = 0;

  static constexpr auto Layout() {
    using B = LineClasses;
    return std::tuple{Figure{"good", &B::good},
                      Figure{"unreadable", &B::unreadable},
                      Figure{"unknown", &B::unknown},
                      Figure{"wrong_checksum", &B::wrongChecksum},
                      Figure{"no_checksum", &B::noChecksum},
                      Figure{"malformed", &B::malformed},
                      Figure{"foreign", &B::foreign},
                      Figure{"empty", &B::empty}};
  }
};

struct NameLedger {
  std::string name;
  Count n = 0;
  Count epochs = 0;  // distinct times
  Count withoutTime = 0;
  At firstAt, lastAt;
  Value interval;   // median
  Value jitterP95;  // of |step - median|
  Gaps gaps;
  std::optional<Count> stepsBack, repeated;  // of names that tell the time

  static constexpr auto Layout() {
    using B = NameLedger;
    constexpr int kS = decimals::kSeconds;
    return std::tuple{Figure{"name", &B::name},
                      Figure{"n", &B::n},
                      Figure{"epochs", &B::epochs},
                      Figure{"without_time", &B::withoutTime},
                      Figure{"first_at", &B::firstAt},
                      Figure{"last_at", &B::lastAt},
                      Figure{"interval_s", &B::interval, kS},
                      Figure{"jitter_p95_s", &B::jitterP95, kS},
                      Figure{"gaps", &B::gaps},
                      Figure{"steps_back", &B::stepsBack},
                      Figure{"repeated", &B::repeated}};
  }
};

struct NameCount {
  std::string name;
  Count n = 0;

  static constexpr auto Layout() {
    return std::tuple{Figure{"name", &NameCount::name}, Figure{"n", &NameCount::n}};
  }
};

struct LedgerFigures {
  Count lines = 0;
  LineClasses classes;
  Count tooLong = 0;
  At firstAt, lastAt;
  Value span;
  bool dated = false;
  Count stepsBack = 0;
  std::vector<NameLedger> byName;
  std::vector<NameCount> unknown;     // by address
  std::vector<NameCount> unreadable;  // by name and field, "GPGGA.Time"

  static constexpr auto Layout() {
    using B = LedgerFigures;
    return std::tuple{
        Figure{"lines", &B::lines},          Figure{"classes", &B::classes},
        Figure{"too_long", &B::tooLong},     Figure{"first_at", &B::firstAt},
        Figure{"last_at", &B::lastAt},       Figure{"span_s", &B::span, decimals::kSeconds},
        Figure{"dated", &B::dated},          Figure{"steps_back", &B::stepsBack},
        Figure{"by_name", &B::byName},       Figure{"unknown", &B::unknown},
        Figure{"unreadable", &B::unreadable}};
  }
};

struct Availability {
  std::string_view why;
  Count beforeFirstFix = 0;
  Count epochs = 0;
  Count fixes = 0;
  Value interval;
  std::optional<Count> expected;
  Value share;
  Count jumps = 0;
  Gaps gaps;

  static constexpr auto Layout() {
    using B = Availability;
    return std::tuple{Figure{"before_first_fix", &B::beforeFirstFix},
                      Figure{"epochs", &B::epochs},
                      Figure{"fixes", &B::fixes},
                      Figure{"interval_s", &B::interval, decimals::kSeconds},
                      Figure{"expected", &B::expected},
                      Figure{"share", &B::share, decimals::kShare},
                      Figure{"jumps", &B::jumps},
                      Figure{"gaps", &B::gaps}};
  }
};

struct QualityFigures {
  int quality = 0;
  Count epochs = 0;
  Value share;
  Horizontal horizontal;
  Vertical vertical;
};

struct ClaimAxis {
  std::string_view why;
  Count n = 0;
  Value within1, within2, rmsRatio;

  static constexpr auto Layout() {
    using B = ClaimAxis;
    return std::tuple{Figure{"n", &B::n}, Figure{"within_1_share", &B::within1, decimals::kShare},
                      Figure{"within_2_share", &B::within2, decimals::kShare},
                      Figure{"rms_ratio", &B::rmsRatio, decimals::kShare}};
  }
};

// What the receiver claims in GST against what happened.
struct Claim {
  std::string_view why;
  std::optional<std::string> talker;
  ClaimAxis north, east, up;
};

struct CountRange {
  std::string_view why;
  Value mean;
  std::optional<Count> least, greatest;

  static constexpr auto Layout() {
    using B = CountRange;
    return std::tuple{Figure{"mean", &B::mean, decimals::kMeanCount}, Figure{"least", &B::least},
                      Figure{"greatest", &B::greatest}};
  }
};

// C/N0 of satellites within ten degrees of elevation.
struct ElevationBin {
  Count fromDegrees = 0;
  Count n = 0;
  Value mean, std;

  static constexpr auto Layout() {
    using B = ElevationBin;
    return std::tuple{Figure{"from_deg", &B::fromDegrees}, Figure{"n", &B::n},
                      Figure{"mean_dbhz", &B::mean, decimals::kSignal},
                      Figure{"std_dbhz", &B::std, decimals::kSignal}};
  }
};

struct SignalFigures {
  std::optional<std::string> signal;
  std::array<ElevationBin, 9> byElevation;
};

struct ConstellationFigures {
  std::string name;
  Count epochs = 0;
  CountRange inView, inUse;
  std::vector<SignalFigures> signals;
};

struct SignalStrength {
  std::string_view why;
  Count n = 0;
  Value mean, std, least, greatest;

  static constexpr auto Layout() {
    using B = SignalStrength;
    constexpr int kD = decimals::kSignal;
    return std::tuple{Figure{"n", &B::n}, Figure{"mean_dbhz", &B::mean, kD},
                      Figure{"std_dbhz", &B::std, kD}, Figure{"least_dbhz", &B::least, kD},
                      Figure{"greatest_dbhz", &B::greatest, kD}};
  }
};

struct SatelliteFigures {
  std::string constellation;
  std::optional<std::string> signal;
  Count number = 0;
  Count n = 0;
  At firstAt, lastAt;
  Value inViewShare, inUseShare;
  SignalStrength cn0;

  static constexpr auto Layout() {
    using B = SatelliteFigures;
    return std::tuple{Figure{"constellation", &B::constellation},
                      Figure{"signal", &B::signal},
                      Figure{"number", &B::number},
                      Figure{"n", &B::n},
                      Figure{"first_at", &B::firstAt},
                      Figure{"last_at", &B::lastAt},
                      Figure{"in_view_share", &B::inViewShare, decimals::kShare},
                      Figure{"in_use_share", &B::inUseShare, decimals::kShare},
                      Figure{"cn0", &B::cn0}};
  }
};

struct Satellites {
  std::string_view why;
  Count groupsWhole = 0;
  Count groupsBroken = 0;
  std::vector<ConstellationFigures> constellations;
  std::vector<SatelliteFigures> satellites;
};

struct AisIdCount {
  Count id = 0;
  std::optional<std::string> channel;
  Count n = 0;

  static constexpr auto Layout() {
    using B = AisIdCount;
    return std::tuple{Figure{"id", &B::id}, Figure{"channel", &B::channel}, Figure{"n", &B::n}};
  }
};

struct AisStations {
  Count base = 0, aton = 0, sar = 0, classA = 0, classB = 0, other = 0;

  static constexpr auto Layout() {
    using B = AisStations;
    return std::tuple{Figure{"base", &B::base},      Figure{"aton", &B::aton},
                      Figure{"sar", &B::sar},        Figure{"class_a", &B::classA},
                      Figure{"class_b", &B::classB}, Figure{"other", &B::other}};
  }
};

struct OwnPosition {
  std::string_view why;
  Count n = 0;
  Count of = 0;
  Value r50, r95, largest;

  static constexpr auto Layout() {
    using B = OwnPosition;
    return std::tuple{
        Figure{"n", &B::n}, Figure{"of", &B::of}, Figure{"r50_m", &B::r50, decimals::kAis},
        Figure{"r95_m", &B::r95, decimals::kAis}, Figure{"largest_m", &B::largest, decimals::kAis}};
  }
};

struct Ais {
  std::string_view why;
  Count messages = 0;
  Count ownMessages = 0;
  Count incomplete = 0;
  Count tooShort = 0;
  std::vector<AisIdCount> byId;
  AisStations stations;
  OwnPosition ownPosition;

  static constexpr auto Layout() {
    using B = Ais;
    return std::tuple{Figure{"messages", &B::messages},
                      Figure{"own_messages", &B::ownMessages},
                      Figure{"incomplete", &B::incomplete},
                      Figure{"short", &B::tooShort},
                      Figure{"by_id", &B::byId},
                      Figure{"stations", &B::stations},
                      Figure{"own_position", &B::ownPosition}};
  }
};

struct SystemFigures {
  std::string name;
  Reference reference;
  std::optional<std::string> stream;
  bool moving = false;
  std::vector<StreamFigures> streams;
  LedgerFigures ledger;
  Availability availability;
  Horizontal horizontal;
  Vertical vertical;
  std::vector<QualityFigures> byQuality;
  Claim gst;
  std::vector<AngleErrors> heading, pitch, roll;
  // Depth, rate of turn, speed over ground, speed through water.
  std::array<SeriesList, 4> series{{{"depth", "m", {}},
                                    {"rate_of_turn", "deg_min", {}},
                                    {"speed_over_ground", "kn", {}},
                                    {"speed_through_water", "kn", {}}}};
  Satellites satellites;
  Ais ais;
  SystemPictures pictures;
};

// The second system less the first.
struct PairFigures {
  std::string name;  // "A-B"
  Count of = 0;
  Count sameTime = 0;
  Count interpolated = 0;
  HorizontalErrors horizontal;
  VerticalErrors vertical;
  AngleErrors heading;
  PositionTrack differences;
};

struct LimitFigures {
  std::string limit;
  std::optional<std::string> system;  // none for one of a pair
  Value value;
  bool kept = false;
};

struct RecordingFile {
  std::string system;
  std::string file;
  Count bytes = 0;
  std::string sha256;

  static constexpr auto Layout() {
    using B = RecordingFile;
    return std::tuple{Figure{"system", &B::system}, Figure{"file", &B::file},
                      Figure{"bytes", &B::bytes}, Figure{"sha256", &B::sha256}};
  }
};

struct Meta {
  std::string version;
  std::optional<std::string> title, note, writtenAt, from, to;
  bool unchecked = false;
  std::vector<RecordingFile> files;

  static constexpr auto Layout() {
    using B = Meta;
    return std::tuple{Figure{"version", &B::version},     Figure{"title", &B::title},
                      Figure{"note", &B::note},           Figure{"written_at", &B::writtenAt},
                      Figure{"from", &B::from},           Figure{"to", &B::to},
                      Figure{"unchecked", &B::unchecked}, Figure{"files", &B::files}};
  }
};

struct TrialFigures {
  Meta meta;
  std::vector<SystemFigures> systems;
  std::vector<PairFigures> pairs;
  std::vector<LimitFigures> limits;
  bool kept = true;
};

// The figure as it is written everywhere: "1.2000" with `decimals` digits, never "-0.0000".
std::string FigureText(double value, int decimals);
// The same rounding as a number.
double Rounded(double value, int decimals);

}  // namespace fathomline::trial
