// The reference of a system while it is being edited: texts to be seen, and the exact numbers
// behind them.
//
// A text that nobody has changed stands for the number it was made from, so that showing a
// reference and taking it back moves nothing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/statistics.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "records/records.h"
#include "setup/reference_positions.h"

namespace fathomline {

enum class ReferenceField : std::uint8_t {
  Name,
  Latitude,
  Longitude,
  Height,
  Heading,
  Pitch,
  Roll,
};
inline constexpr auto kReferenceFields = std::to_array<ReferenceField>(
    {ReferenceField::Name, ReferenceField::Latitude, ReferenceField::Longitude,
     ReferenceField::Height, ReferenceField::Heading, ReferenceField::Pitch, ReferenceField::Roll});

class ReferenceEditor {
 public:
  ReferenceEditor(const Records& records, const Statistics& statistics, const Clock& clock,
                  Dialogs& dialogs)
      : records_(records), statistics_(statistics), clock_(clock), dialogs_(dialogs) {}

  // Begins with the reference in force.
  void Load(int system);

  // What the field shows; a coordinate in the form of the user that was in force when it was
  // written.
  const std::string& Text(ReferenceField field) const { return texts_[Index(field)]; }
  // Writes a coordinate anew from its number where the user's form has changed since. Whether it
  // had.
  bool FollowFormat(ReferenceField field);
  // The user leaves the field, which now reads so. What cannot stand in a coordinate is repaired
  // and told in a box. Raises Overflow for a number beyond a single; the field keeps its value
  // then.
  void Leave(ReferenceField field, std::string_view text);

  // A position of the list; heading, pitch and roll stay. It is no change, since the list has it.
  void Choose(const ReferencePosition& position);
  // The means of the system's session up to now, but for pitch and roll. What has no
  // sample yet stays as it is. False where nothing has, and nothing is copied.
  bool CopyAverage();
  // The reference of system 1, but for pitch and roll.
  void CopyPrimary();

  // Whether the user has changed name, position, height or heading.
  bool ReferenceChanged() const { return changed_; }
  // With ReferenceUsed as it was loaded.
  const ReferenceSetup& Values() const { return values_; }

 private:
  struct CoordinateForm {
    bool isDMS = false;
    std::int16_t decimals = 0;

    bool operator==(const CoordinateForm&) const = default;
  };

  static std::size_t Index(ReferenceField field) { return static_cast<std::size_t>(field); }
  void Show(ReferenceField field);
  void ShowAll();
  CoordinateForm FormInForce() const;
  double ReadRadians(std::string_view text, std::string_view type, CoordinateForm form);

  const Records& records_;
  const Statistics& statistics_;
  const Clock& clock_;
  Dialogs& dialogs_;
  int system_ = 1;
  ReferenceSetup loaded_;
  ReferenceSetup values_;
  std::array<std::string, kReferenceFields.size()> texts_;
  std::array<CoordinateForm, kReferenceFields.size()> forms_;
  bool changed_ = false;
};

}  // namespace fathomline
