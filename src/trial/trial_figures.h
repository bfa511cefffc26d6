// The figures of a trial: plain structs of what its documents tell, in the shape and the order of
// the JSON, and the columns of samples that the pictures are drawn from.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "trial/error_figures.h"
#include "trial/figure_layout.h"
#include "trial/reception_figures.h"
#include "trial/trial_pictures.h"

namespace fathomline::trial {

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

}  // namespace fathomline::trial
