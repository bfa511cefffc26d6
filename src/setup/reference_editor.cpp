#include "setup/reference_editor.h"

#include <algorithm>

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "decoding/angles.h"
#include "decoding/coordinate_parser.h"
#include "decoding/coordinate_text.h"

namespace fathomline {
namespace {

// A field of one number that is no coordinate.
struct SingleField {
  ReferenceField field;
  float ReferenceSetup::*member;
  std::string_view picture;
  bool counts;  // a change of it is a change of the reference position
};
constexpr auto kSingles = std::to_array<SingleField>(
    {{ReferenceField::Height, &ReferenceSetup::ReferenceHeight, "0.000", true},
     {ReferenceField::Heading, &ReferenceSetup::ReferenceHeading, "000.00", true},
     {ReferenceField::Pitch, &ReferenceSetup::ReferencePitch, "0.00", false},
     {ReferenceField::Roll, &ReferenceSetup::ReferenceRoll, "0.00", false}});

struct CoordinateField {
  ReferenceField field;
  double ReferenceSetup::*member;
  std::string_view type;
};
constexpr auto kCoordinates = std::to_array<CoordinateField>(
    {{ReferenceField::Latitude, &ReferenceSetup::ReferenceLatitude, "LAT"},
     {ReferenceField::Longitude, &ReferenceSetup::ReferenceLongitude, "LON"}});

}  // namespace

void ReferenceEditor::Load(int system) {
  system_ = system;
  loaded_ = values_ = records_.References[system];
  changed_ = false;
  ShowAll();
}

ReferenceEditor::CoordinateForm ReferenceEditor::FormInForce() const {
  return {records_.CoordinateFormatIsDMS, records_.CoordinateDecimals};
}

void ReferenceEditor::Show(ReferenceField field) {
  std::string& text = texts_[Index(field)];
  if (field == ReferenceField::Name) text = values_.ReferenceName;
  for (const CoordinateField& row : kCoordinates) {
    if (row.field != field) continue;
    const CoordinateForm form = forms_[Index(field)] = FormInForce();
    text = FormatCoordinate(form.isDMS, form.decimals, values_.*row.member * kDegreesPerRadian,
                            row.type);
  }
  for (const SingleField& row : kSingles) {
    if (row.field == field) text = Format(values_.*row.member, row.picture);
  }
}

void ReferenceEditor::ShowAll() {
  for (const ReferenceField field : kReferenceFields) Show(field);
}

bool ReferenceEditor::FollowFormat(ReferenceField field) {
  const bool coordinate =
      std::any_of(kCoordinates.begin(), kCoordinates.end(),
                  [field](const CoordinateField& row) { return row.field == field; });
  if (!coordinate || forms_[Index(field)] == FormInForce()) return false;
  Show(field);
  return true;
}

double ReferenceEditor::ReadRadians(std::string_view text, std::string_view type,
                                    CoordinateForm form) {
  std::string copy(text);
  const double degrees = form.isDMS ? ParseCoordinateDMS(copy, type, dialogs_)
                                    : ParseCoordinateDM(copy, type, form.decimals, dialogs_);
  return degrees * kRadiansPerDegree;
}

void ReferenceEditor::Leave(ReferenceField field, std::string_view text) {
  if (text == Text(field)) return;
  if (field == ReferenceField::Name) {
    values_.ReferenceName = WithoutQuotes(text);
    changed_ = changed_ || values_.ReferenceName != loaded_.ReferenceName;
  }
  for (const CoordinateField& row : kCoordinates) {
    if (row.field != field) continue;
    values_.*row.member = ReadRadians(text, row.type, forms_[Index(field)]);
    changed_ = changed_ || values_.*row.member != loaded_.*row.member;
  }
  for (const SingleField& row : kSingles) {
    if (row.field != field) continue;
    values_.*row.member = ToSingle(NumberFromText(text));
    changed_ = changed_ || (row.counts && values_.*row.member != loaded_.*row.member);
  }
  Show(field);
}

void ReferenceEditor::Choose(const ReferencePosition& position) {
  values_.ReferenceName = position.name;
  values_.ReferenceLatitude = position.latitude;
  values_.ReferenceLongitude = position.longitude;
  values_.ReferenceHeight = position.height;
  ShowAll();
}

bool ReferenceEditor::CopyAverage() {
  const SystemStatistics& statistics = statistics_[system_];
  const bool position = statistics.LatitudeMean.Count > 0;
  const bool heading = statistics.HeadingMean.Count > 0;
  if (!position && !heading) return false;
  values_.ReferenceName = "Avg " + FormatDateTime(clock_.NowLocal(), "hh:mm:ss dd mmm yyyy");
  if (position) {
    values_.ReferenceLatitude = statistics.LatitudeMean.Mean;
    values_.ReferenceLongitude = statistics.LongitudeMean.Mean;
  }
  if (statistics.HeightMean.Count > 0) values_.ReferenceHeight = statistics.HeightMean.Mean;
  if (heading) values_.ReferenceHeading = statistics.HeadingMean.Mean;
  changed_ = true;
  ShowAll();
  return true;
}

void ReferenceEditor::CopyPrimary() {
  const ReferenceSetup& primary = records_.References[1];
  values_.ReferenceName = primary.ReferenceName;
  values_.ReferenceLatitude = primary.ReferenceLatitude;
  values_.ReferenceLongitude = primary.ReferenceLongitude;
  values_.ReferenceHeight = primary.ReferenceHeight;
  values_.ReferenceHeading = primary.ReferenceHeading;
  changed_ = true;
  ShowAll();
}

}  // namespace fathomline
