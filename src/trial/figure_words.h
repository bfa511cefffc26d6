// What the figures of a trial are called in its document, in which unit, and what each means.
#pragma once

#include <array>
#include <string_view>

namespace fathomline::trial {

struct FigureWords {
  std::string_view key;  // as in the JSON
  std::string_view label;
  std::string_view unit;
  std::string_view meaning;
};

namespace words {

inline constexpr std::string_view kMetres = "m";
inline constexpr std::string_view kDegrees = "°";
inline constexpr std::string_view kSeconds = "s";
inline constexpr std::string_view kOfOne = "of 1";
inline constexpr std::string_view kDecibelHertz = "dB-Hz";

// One row for each key that a block of figures may have; a key means the same wherever it stands.
inline constexpr auto kFigures = std::to_array<FigureWords>({
    {"n", "Samples", "", "How many samples the figures are made of."},
    {"name", "Name", "", "Talker and type of the sentence."},

    {"bias_north_m", "Bias north", kMetres, "Mean of the errors to the north."},
    {"bias_east_m", "Bias east", kMetres, "Mean of the errors to the east."},
    {"std_north_m", "Std. deviation north", kMetres,
     "Spread of the northern errors about their mean, with n − 1."},
    {"std_east_m", "Std. deviation east", kMetres,
     "Spread of the eastern errors about their mean, with n − 1."},
    {"drms_m", "DRMS", kMetres, "Root of the mean square of the distances."},
    {"2drms_m", "2DRMS", kMetres, "Twice the DRMS."},
    {"r50_m", "R50 (CEP)", kMetres, "Half of the distances are no larger: counted, not modelled."},
    {"r68_m", "R68", kMetres, "At least 68% of the distances are no larger."},
    {"r95_m", "R95", kMetres, "At least 95% of the distances are no larger."},
    {"r99_m", "R99", kMetres, "At least 99% of the distances are no larger."},
    {"largest_m", "Largest", kMetres, "The largest error of all."},
    {"largest_at", "Largest at", "UTC", "When the largest error was first reached."},

    {"semi_major_m", "Long semi-axis", kMetres,
     "Half the length of the ellipse that holds 95% of normally distributed errors about the "
     "mean."},
    {"semi_minor_m", "Short semi-axis", kMetres, "Half its width."},
    {"direction_deg", "Direction", kDegrees, "Of the long axis, from north, 0 to 180."},
    {"inside_share", "Inside", kOfOne, "Share of the fixes that do lie within; 0.95 if normal."},

    {"bias_m", "Bias up", kMetres, "Mean of the errors of height, upwards positive."},
    {"std_m", "Std. deviation", kMetres, "Spread about the mean, with n − 1."},
    {"rms_m", "RMS", kMetres, "Root of the mean square error."},
    {"p50_m", "50%", kMetres, "Half of the absolute errors are no larger."},
    {"p68_m", "68%", kMetres, "At least 68% of the absolute errors are no larger."},
    {"p95_m", "95%", kMetres, "At least 95% of the absolute errors are no larger."},
    {"p99_m", "99%", kMetres, "At least 99% of the absolute errors are no larger."},

    {"reference_deg", "Reference", kDegrees, "What the angle is compared with."},
    {"mean_deg", "Mean", kDegrees, "Direction of the summed unit vectors."},
    {"bias_deg", "Bias", kDegrees, "Mean less reference, along the shorter arc."},
    {"std_deg", "Std. deviation", kDegrees, "Spread about the mean, with n − 1."},
    {"rms_deg", "RMS", kDegrees, "Root of the mean square deviation from the reference."},
    {"p50_deg", "50%", kDegrees, "Half of the absolute deviations are no larger."},
    {"p68_deg", "68%", kDegrees, "At least 68% of the absolute deviations are no larger."},
    {"p95_deg", "95%", kDegrees, "At least 95% of the absolute deviations are no larger."},
    {"p99_deg", "99%", kDegrees, "At least 99% of the absolute deviations are no larger."},
    {"largest_deg", "Largest", kDegrees,
     "The largest deviation from the reference, with its sign."},

    {"before_first_fix", "Before the first fix", "epochs",
     "Epochs in which the receiver had no fix yet; counted, not judged."},
    {"epochs", "Epochs", "", "Distinct times at which something was told."},
    {"fixes", "Fixes", "", "Epochs with a position of quality 1 to 5 or 9."},
    {"interval_s", "Interval", kSeconds, "Median step from one epoch to the next."},
    {"expected", "Expected", "epochs", "Epochs that the interval would have given without a gap."},
    {"share", "Available", kOfOne, "Fixes of the expected epochs, at most 1."},
    {"jumps", "Jumps", "", "Steps of the clock of more than twelve hours."},

    {"within_1_share", "Within one claimed σ", kOfOne,
     "Share of the errors within one sent standard deviation. An honest claim gives 0.683."},
    {"within_2_share", "Within two claimed σ", kOfOne,
     "Share of the errors within two of them. An honest claim gives 0.954."},
    {"rms_ratio", "RMS of error / claim", "",
     "1 for an honest claim; above, the receiver flatters itself."},

    {"mean", "Mean", "", ""},
    {"least", "Least", "", ""},
    {"greatest", "Greatest", "", ""},
    {"mean_dbhz", "Mean", kDecibelHertz, ""},
    {"std_dbhz", "Std. dev.", kDecibelHertz, ""},
    {"least_dbhz", "Least", kDecibelHertz, ""},
    {"greatest_dbhz", "Greatest", kDecibelHertz, ""},
    {"from_deg", "Elevation from", kDegrees, ""},
    {"gaps.n", "Gaps", "", "Steps from one to the next of more than three intervals."},
    {"gaps.longest_s", "Longest gap", kSeconds, "The longest of them."},
    {"gaps.longest_at", "Longest gap from", "UTC", "The last sample before it."},
    {"gaps.sum_s", "Gaps together", kSeconds, "The lengths of all gaps."},

    {"lines", "Lines", "", "Pieces of the recording between line feeds."},
    {"too_long", "Too long", "lines", "Over 80 characters; counted in their classes as well."},
    {"first_at", "First time", "UTC", "The earliest time that a sentence has."},
    {"last_at", "Last time", "UTC", "The latest one."},
    {"span_s", "Span", kSeconds, "From the first time to the last."},
    {"dated", "Dated", "", "Whether any sentence tells the date."},
    {"steps_back", "Steps back", "", "How often time went back, of the name that did so most."},
    {"good", "Good", "lines", "Read field by field, and used."},
    {"unreadable", "Unreadable field", "lines",
     "A field is not of the form that its layout asks for; the rest of the line is used."},
    {"unknown", "Unknown", "lines", "Well formed, but of no type that is judged here."},
    {"wrong_checksum", "Wrong checksum", "lines", "The two digits behind the * disagree."},
    {"no_checksum", "No checksum", "lines", "No * at the end."},
    {"malformed", "Malformed", "lines",
     "A second start, a byte that no sentence has, or an address not of letters and digits."},
    {"foreign", "Foreign", "lines", "Begins with neither $ nor !."},
    {"empty", "Empty", "lines", "Nothing but line ends and blanks."},

    {"messages", "Messages received", "", "Whole messages of other stations (VDM)."},
    {"own_messages", "Own messages", "", "Whole messages of the own transponder (VDO)."},
    {"incomplete", "Incomplete", "", "Messages of which a sentence never came or was unreadable."},
    {"short", "Too short", "", "Messages of under 38 bits, which hold no number of a station."},
    {"base", "Base stations", "", "Stations that ever sent message 4."},
    {"aton", "Aids to navigation", "", "Stations that ever sent message 21."},
    {"sar", "Search and rescue aircraft", "", "Stations that ever sent message 9."},
    {"class_a", "Class A", "", "Stations that ever sent message 1, 2, 3 or 5."},
    {"class_b", "Class B", "", "Stations that ever sent message 18, 19 or 24."},
    {"other", "Others", "", "Stations that sent none of these."},
    {"of", "Of", "", "How many own positions were sent."},
});

}  // namespace words

// Words of a key. A key without a row is a mistake of ours; it then stands for itself.
constexpr FigureWords WordsOf(std::string_view key) {
  for (const FigureWords& row : words::kFigures) {
    if (row.key == key) return row;
  }
  return {key, key, "", ""};
}

}  // namespace fathomline::trial
