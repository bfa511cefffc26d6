// The rows of which the layout of an AIS message is made. A layout is read by the decoder, which
// fills the record from it, and by everything that walks over the fields of a record.
//
// Bits are counted from 1 and ranges include both ends, as in payload_bits.h.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "ais/code_table.h"
#include "ais/payload_bits.h"
#include "base/clock.h"
#include "base/numbers.h"

namespace fathomline {

// One received message and what decoding it depends on.
struct AISReception {
  const PayloadBits& bits;
  int payloadLength;  // characters, those beyond the bit array included
  int fillBits;       // as received, so any value of 16 bits
  bool binaryStandardIALA;
  const Clock& clock;
};

// From the raw number to the stored one: (raw * multiplier / divisor / divisor2) + offset, stored
// in the width of its field; then, between numbers of that width, the test that makes it NoValue.
enum class Unavailable { Never, Exactly, AtOrAbove };

struct Conversion {
  constexpr bool Scales() const {
    return multiplier != 1.0 || divisor != 1.0 || divisor2 != 1.0 || offset != 0.0;
  }

  bool isSigned = false;
  double multiplier = 1.0;
  double divisor = 1.0;
  double divisor2 = 1.0;
  double offset = 0.0;
  Unavailable unavailable = Unavailable::Never;
  double limit = 0.0;
  bool allOnesMeansNoValue = false;
};

inline constexpr Conversion kSigned{.isSigned = true};

// Degrees from ten-thousandths of a minute, and from tenths in the short positions.
inline constexpr Conversion kLongitude{.isSigned = true,
                                       .divisor = 10000,
                                       .divisor2 = 60,
                                       .unavailable = Unavailable::Exactly,
                                       .limit = 181};
inline constexpr Conversion kLatitude{.isSigned = true,
                                      .divisor = 10000,
                                      .divisor2 = 60,
                                      .unavailable = Unavailable::Exactly,
                                      .limit = 91};
inline constexpr Conversion kShortLongitude{.isSigned = true,
                                            .divisor = 10,
                                            .divisor2 = 60,
                                            .unavailable = Unavailable::Exactly,
                                            .limit = 181};
inline constexpr Conversion kShortLatitude{.isSigned = true,
                                           .divisor = 10,
                                           .divisor2 = 60,
                                           .unavailable = Unavailable::Exactly,
                                           .limit = 91};
// Knots and degrees from tenths.
inline constexpr Conversion kSOG{
    .divisor = 10, .unavailable = Unavailable::AtOrAbove, .limit = 102.3};
inline constexpr Conversion kCOG{.divisor = 10, .unavailable = Unavailable::Exactly, .limit = 360};
inline constexpr Conversion kHeading{.unavailable = Unavailable::Exactly, .limit = 511};

template <class Value>
Value ReadValue(const PayloadBits& bits, int first, int last, const Conversion& conversion) {
  double number =
      BitsToValue(bits, first, last, conversion.isSigned, conversion.allOnesMeansNoValue,
                  conversion.divisor * conversion.divisor2);
  if (conversion.Scales()) {
    number = number * conversion.multiplier / conversion.divisor / conversion.divisor2;
    if (conversion.offset != 0.0 && number != NoValue) number += conversion.offset;
  }
  const auto value = static_cast<Value>(number);
  const auto limit = static_cast<Value>(conversion.limit);
  switch (conversion.unavailable) {
    case Unavailable::Never:
      return value;
    case Unavailable::Exactly:
      return value == limit ? static_cast<Value>(NoValue) : value;
    case Unavailable::AtOrAbove:
      return value >= limit ? static_cast<Value>(NoValue) : value;
  }
  return value;
}

// A number between two bits.
template <class Record, class Value>
struct Bits {
  std::string_view name;
  int first;
  int last;
  Value Record::*member;
  Conversion conversion = {};
};
template <class Record, class Value>
Bits(const char*, int, int, Value Record::*) -> Bits<Record, Value>;
template <class Record, class Value>
Bits(const char*, int, int, Value Record::*, Conversion) -> Bits<Record, Value>;

// Six-bit text between two bits.
template <class Record>
struct Text {
  std::string_view name;
  int first;
  int last;
  std::string Record::*member;
};
template <class Record>
Text(const char*, int, int, std::string Record::*) -> Text<Record>;

// Six-bit text whose last possible start depends on the length of the message.
template <class Record>
struct TextToLimit {
  std::string_view name;
  int first;
  int (*limit)(const AISReception& reception);
  std::string Record::*member;
};
template <class Record>
TextToLimit(const char*, int, int (*)(const AISReception&), std::string Record::*)
    -> TextToLimit<Record>;

// The text of a code that stands earlier in the layout. A code outside the table leaves the text
// of the message before.
template <class Record, std::size_t Size>
struct CodeName {
  std::string_view name;
  const CodeTable<Size>* table;
  std::int16_t Record::*code;
  std::string Record::*member;
};
template <class Record, std::size_t Size>
CodeName(const char*, const CodeTable<Size>*, std::type_identity_t<std::int16_t Record::*>,
         std::string Record::*) -> CodeName<Record, Size>;

// A field with a rule of its own: a function of the record so far and the reception.
template <class Record, class Value, class Rule>
struct Computed {
  std::string_view name;
  Rule rule;
  Value Record::*member;
};
template <class Record, class Value, class Rule>
Computed(const char*, Rule, Value Record::*) -> Computed<Record, Value, Rule>;

// A row that is read only where the record so far says so.
template <class Condition, class Row>
struct When : Row {
  Condition condition;

  constexpr When(Condition when, Row row) : Row(row), condition(when) {}
};

// The same for several rows.
template <class Condition, class... Rows>
constexpr auto OnlyWhen(Condition condition, const std::tuple<Rows...>& rows) {
  return std::apply([&](const auto&... row) { return std::tuple{When{condition, row}...}; }, rows);
}

// A number in each of several blocks, `stride` bits apart, as many as the record says.
template <class Record, class Value, std::size_t Size>
struct RepeatedBits {
  std::string_view name;
  int first;
  int last;
  int stride;
  int (*count)(const Record& record);
  std::array<Value, Size> Record::*member;
  Conversion conversion = {};
};
template <class Record, class Value, std::size_t Size>
RepeatedBits(const char*, int, int, int, std::type_identity_t<int (*)(const Record&)>,
             std::array<Value, Size> Record::*) -> RepeatedBits<Record, Value, Size>;
template <class Record, class Value, std::size_t Size>
RepeatedBits(const char*, int, int, int, std::type_identity_t<int (*)(const Record&)>,
             std::array<Value, Size> Record::*, Conversion) -> RepeatedBits<Record, Value, Size>;

// A field that is filled elsewhere.
template <class Record, class Value>
struct Kept {
  std::string_view name;
  Value Record::*member;
};
template <class Record, class Value>
Kept(const char*, Value Record::*) -> Kept<Record, Value>;

// Rows of application data, which follow one another without gaps.
template <class Record, class Value>
struct NextBits {
  std::string_view name;
  int width;
  Value Record::*member;
  Conversion conversion = {};
};
template <class Record, class Value>
NextBits(const char*, int, Value Record::*) -> NextBits<Record, Value>;
template <class Record, class Value>
NextBits(const char*, int, Value Record::*, Conversion) -> NextBits<Record, Value>;

template <class Record>
struct NextText {
  std::string_view name;
  int width;
  std::string Record::*member;
};
template <class Record>
NextText(const char*, int, std::string Record::*) -> NextText<Record>;

template <class Record, class Group>
struct NextGroup {
  std::string_view name;
  Group Record::*member;
};
template <class Record, class Group>
NextGroup(const char*, Group Record::*) -> NextGroup<Record, Group>;

template <class Target, class Record, class Value>
void ReadRow(const Bits<Record, Value>& row, const AISReception& reception, Target& record) {
  record.*(row.member) = ReadValue<Value>(reception.bits, row.first, row.last, row.conversion);
}

template <class Target, class Record>
void ReadRow(const Text<Record>& row, const AISReception& reception, Target& record) {
  BitsToText(reception.bits, row.first, row.last, record.*(row.member));
}

template <class Target, class Record>
void ReadRow(const TextToLimit<Record>& row, const AISReception& reception, Target& record) {
  BitsToText(reception.bits, row.first, row.limit(reception), record.*(row.member));
}

template <class Target, class Record, std::size_t Size>
void ReadRow(const CodeName<Record, Size>& row, const AISReception&, Target& record) {
  const auto code = static_cast<std::size_t>(record.*(row.code));
  if (code < Size) record.*(row.member) = (*row.table)[code];
}

template <class Target, class Record, class Value, class Rule>
void ReadRow(const Computed<Record, Value, Rule>& row, const AISReception& reception,
             Target& record) {
  record.*(row.member) = row.rule(record, reception);
}

template <class Target, class Record, class Value, std::size_t Size>
void ReadRow(const RepeatedBits<Record, Value, Size>& row, const AISReception& reception,
             Target& record) {
  const int count = row.count(record);
  for (int i = 0; i < count; ++i) {
    const int shift = i * row.stride;
    (record.*(row.member))[static_cast<std::size_t>(i)] =
        ReadValue<Value>(reception.bits, row.first + shift, row.last + shift, row.conversion);
  }
}

template <class Target, class Record, class Value>
void ReadRow(const Kept<Record, Value>&, const AISReception&, Target&) {}

template <class Target, class Condition, class Row>
void ReadRow(const When<Condition, Row>& row, const AISReception& reception, Target& record) {
  if (row.condition(record)) ReadRow(static_cast<const Row&>(row), reception, record);
}

// Fills a record from its layout, whatever the length of the message.
template <class Record>
void ReadFields(Record& record, const AISReception& reception) {
  static constexpr auto layout = Record::Layout();
  std::apply([&](const auto&... row) { (ReadRow(row, reception, record), ...); }, layout);
}

template <class Group>
void ReadInOrder(Group& group, const PayloadBits& bits, int& position);

template <class Record, class Value>
void ReadNext(const NextBits<Record, Value>& row, const PayloadBits& bits, int& position,
              Record& record) {
  const int first = position;
  position += row.width;
  record.*(row.member) = ReadValue<Value>(bits, first, position - 1, row.conversion);
}

template <class Record>
void ReadNext(const NextText<Record>& row, const PayloadBits& bits, int& position, Record& record) {
  const int first = position;
  position += row.width;
  BitsToText(bits, first, position - 1, record.*(row.member));
}

template <class Record, class Group>
void ReadNext(const NextGroup<Record, Group>& row, const PayloadBits& bits, int& position,
              Record& record) {
  ReadInOrder(record.*(row.member), bits, position);
}

template <class Record, class Condition, class Row>
void ReadNext(const When<Condition, Row>& row, const PayloadBits& bits, int& position,
              Record& record) {
  if (row.condition(record)) ReadNext(static_cast<const Row&>(row), bits, position, record);
}

// Fills a group of application data from `position`, which moves behind it.
template <class Group>
void ReadInOrder(Group& group, const PayloadBits& bits, int& position) {
  static constexpr auto layout = Group::Layout();
  std::apply([&](const auto&... row) { (ReadNext(row, bits, position, group), ...); }, layout);
}

template <class Value>
constexpr bool Fits(int width, bool isSigned) {
  if constexpr (std::is_integral_v<Value>) {
    // The top bit alone stays positive, so that a sign leaves no room.
    return width < static_cast<int>(8 * sizeof(Value)) && width >= (isSigned ? 2 : 1);
  } else {
    return width >= 1 && width <= 53;
  }
}

constexpr bool InPayload(int first, int last) {
  return first >= 1 && first <= last &&
         last <= static_cast<int>(PayloadBits::kLongestPayload) * PayloadBits::kBitsPerCharacter;
}

template <class Row>
constexpr bool IsSound(const Row&) {
  return true;
}
template <class Record, class Value>
constexpr bool IsSound(const Bits<Record, Value>& row) {
  return InPayload(row.first, row.last) &&
         Fits<Value>(row.last - row.first + 1, row.conversion.isSigned);
}
template <class Record>
constexpr bool IsSound(const Text<Record>& row) {
  return InPayload(row.first, row.last) &&
         (row.last - row.first + 1) % PayloadBits::kBitsPerCharacter == 0;
}
template <class Record, class Value, std::size_t Size>
constexpr bool IsSound(const RepeatedBits<Record, Value, Size>& row) {
  return InPayload(row.first, row.last + static_cast<int>(Size - 1) * row.stride) &&
         Fits<Value>(row.last - row.first + 1, row.conversion.isSigned);
}
template <class Record, class Value>
constexpr bool IsSound(const NextBits<Record, Value>& row) {
  return Fits<Value>(row.width, row.conversion.isSigned);
}
template <class Record>
constexpr bool IsSound(const NextText<Record>& row) {
  return row.width > 0 && row.width % PayloadBits::kBitsPerCharacter == 0;
}
template <class Condition, class Row>
constexpr bool IsSound(const When<Condition, Row>& row) {
  return IsSound(static_cast<const Row&>(row));
}

// Every row of a layout lies in the payload and fits its field, and no name stands twice.
template <class Record>
constexpr bool LayoutIsSound() {
  constexpr auto layout = Record::Layout();
  return std::apply(
      [](const auto&... row) {
        const std::array<std::string_view, sizeof...(row)> names{row.name...};
        for (std::size_t i = 0; i < names.size(); ++i) {
          for (std::size_t j = 0; j < i; ++j) {
            if (names[i] == names[j]) return false;
          }
        }
        return (IsSound(row) && ...);
      },
      layout);
}

}  // namespace fathomline
