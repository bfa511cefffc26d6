// The rows of which the layout of a sentence is made. A layout is read by the decoder, which fills
// the record from it, and by everything that walks over the fields of a record.
//
// Sentence fields are numbered from 0, field 0 being the address field.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace fathomline {

// How a sentence is split and what happens to a fault inside.
struct SentenceForm {
  std::string_view type;   // as it stands in message boxes
  std::size_t entries;     // fields that are kept
  std::size_t passes;      // commas that are looked for; with more, the last entry keeps the rest
  bool reportsFaults;      // with a message box, or without a word
  bool leavesWhenTooLong;  // a sentence with `passes` commas leaves the record as it was
};

// A field stored in its member's own width: number, one character, or text.
template <class Record, class Member>
struct Column {
  std::string_view name;
  std::size_t field;
  Member Record::*member;
};
template <class Record, class Member>
Column(const char*, int, Member Record::*) -> Column<Record, Member>;

// "hhmmss.ss", kept as "hh:mm:ss.ss".
template <class Record>
struct TimeColumn {
  std::string_view name;
  std::size_t field;
  std::string Record::*member;
};
template <class Record>
TimeColumn(const char*, int, std::string Record::*) -> TimeColumn<Record>;

// Bytes that are no text, kept as they came.
template <class Record>
struct BytesColumn {
  static constexpr bool kBytes = true;
  std::string_view name;
  std::size_t field;
  std::string Record::*member;
};
template <class Record>
BytesColumn(const char*, int, std::string Record::*) -> BytesColumn<Record>;

// "ddmm.mm" with its hemisphere in the next field, kept in radians.
template <class Record>
struct LatitudeColumn {
  std::string_view name;
  std::size_t field;
  double Record::*member;
};
template <class Record>
LatitudeColumn(const char*, int, double Record::*) -> LatitudeColumn<Record>;

// "dddmm.mm" likewise.
template <class Record>
struct LongitudeColumn {
  std::string_view name;
  std::size_t field;
  double Record::*member;
};
template <class Record>
LongitudeColumn(const char*, int, double Record::*) -> LongitudeColumn<Record>;

// Numbers that stand `step` fields apart.
template <class Record, class Element, std::size_t Count>
struct ArrayColumn {
  std::string_view name;
  std::size_t field;
  std::size_t step;
  std::array<Element, Count> Record::*member;
};
template <class Record, class Element, std::size_t Count>
ArrayColumn(const char*, int, int, std::array<Element, Count> Record::*)
    -> ArrayColumn<Record, Element, Count>;

}  // namespace fathomline
