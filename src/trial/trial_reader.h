// One line of a recording: its class, and the values of its fields as they were sent.
//
// The layouts of decoding/ say where the fields stand; here they are read strictly, in double
// precision, and nothing is shown to anybody. A field that is not of its form is as empty.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "decoding/sentence_layout.h"
#include "decoding/sentence_records.h"
#include "decoding/sentence_type.h"

namespace fathomline::trial {

enum class LineClass : std::uint8_t {
  Good,
  Unreadable,  // a field of the layout is not empty and not of its form
  Unknown,     // no talker and type of the layouts
  WrongChecksum,
  NoChecksum,
  Malformed,
  Foreign,  // does not begin with "$" or "!"
  Empty
};
inline constexpr std::size_t kLineClasses = 8;

// A value of a layout stands in a slot: one for a row, one for each element of an array.
template <class Row>
inline constexpr std::size_t kSlotsOf = 1;
template <class Record, class Element, std::size_t Count>
inline constexpr std::size_t kSlotsOf<ArrayColumn<Record, Element, Count>> = Count;

namespace detail {

template <auto Member, class Row>
constexpr bool IsOf(const Row& row) {
  if constexpr (std::is_same_v<decltype(row.member), std::remove_const_t<decltype(Member)>>) {
    return row.member == Member;
  } else {
    return false;
  }
}

struct Place {
  std::size_t slot = 0;
  std::size_t field = 0;
};

template <auto Member, class Record, class Type>
consteval Place PlaceOf(Type Record::*) {
  Place place;
  bool found = false;
  std::size_t slot = 0;
  std::apply(
      [&](const auto&... row) {
        ((IsOf<Member>(row) ? (place = {slot, row.field}, found = true) : found,
          slot += kSlotsOf<std::remove_cvref_t<decltype(row)>>),
         ...);
      },
      Record::Layout());
  if (!found) throw "the layout has no such member";
  return place;
}

}  // namespace detail

// A line as it was read. Its views last as long as the line.
class Sentence {
 public:
  static constexpr std::size_t kMostFields = 24;
  static constexpr std::size_t kMostSlots = 20;

  LineClass lineClass = LineClass::Empty;
  bool tooLong = false;          // over 80 characters, whatever the class
  bool used = false;             // good, unreadable, or unchecked and of a type of the layouts
  SentenceType type{};           // of a sentence that is used
  std::string_view address;      // "GPGGA", from Unknown on
  std::uint64_t name = 0;        // talker and type as PackName, of a sentence that is used
  std::uint32_t unreadable = 0;  // a bit for each slot
  std::size_t fieldCount = 0;    // the address included, those beyond kMostFields too

  std::string_view Field(std::size_t index) const {
    return index < fieldCount && index < kMostFields ? fields_[index] : std::string_view();
  }

  // The value of a number, of a time in milliseconds of the day, of a date in days since 1970, of a
  // place in degrees; NaN where it was not sent or not read.
  template <auto Member>
  double Number(std::size_t element = 0) const {
    return values_[detail::PlaceOf<Member>(Member).slot + element];
  }
  // Of a one-character field; NUL where it was not sent or not read.
  template <auto Member>
  char Letter() const {
    const double value = Number<Member>();
    return std::isnan(value) ? '\0' : static_cast<char>(value);
  }
  // Of a field that has no form.
  template <auto Member>
  std::string_view Text() const {
    return Field(detail::PlaceOf<Member>(Member).field);
  }

 private:
  friend class TrialReader;
  std::array<std::string_view, kMostFields> fields_;
  std::array<double, kMostSlots> values_;
};

// Up to eight characters in a number, for names that are looked up for every line.
constexpr std::uint64_t PackName(std::string_view name) {
  std::uint64_t packed = 0;
  for (const char c : name) packed = packed << 8 | static_cast<unsigned char>(c);
  return packed;
}

// The name of what $PFEC,GPatt tells.
inline constexpr std::string_view kAttitudeName = "PFECATT";

class TrialReader {
 public:
  // Whether lines without a checksum are used too; they keep their class.
  explicit TrialReader(bool unchecked) : unchecked_(unchecked) {}

  // Reads a line, with or without what ends it. What it returns lasts until the next call.
  const Sentence& Read(std::string_view line);

 private:
  // Sets the class of what is cut into fields.
  LineClass Split(std::string_view line);
  // Sets type and name; false for what is no type of the layouts.
  bool FindType();
  template <class Record>
  void ReadLayout();

  bool unchecked_;
  Sentence sentence_;
};

// The name of the field in a slot of a type's layout.
std::string_view FieldName(SentenceType type, std::size_t slot);

}  // namespace fathomline::trial
