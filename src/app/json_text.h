// JSON as the replay tool writes it: compact, in the order in which it is filled, and with numbers
// in the fewest digits that read back exactly in their own width.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <string_view>

#include "base/datetime.h"
#include "decoding/record_fields.h"

namespace fathomline {

using Json = nlohmann::ordered_json;

// A value of a record. Bytes are those of UTF-8; a character is one of Latin-1.
inline Json ToJson(bool flag) {
  return flag;
}
inline Json ToJson(std::int32_t number) {
  return number;
}
inline Json ToJson(std::int16_t number) {
  return number;
}
inline Json ToJson(double number) {
  return number;
}
Json ToJson(float number);
Json ToJson(char character);
inline Json ToJson(std::string_view text) {
  return text;
}
inline Json ToJson(const std::string& text) {
  return text;
}
inline Json ToJson(DateTime moment) {
  return moment.days;
}

template <class Element, std::size_t Count>
Json ToJson(const std::array<Element, Count>& elements) {
  Json array = Json::array();
  for (const Element& element : elements) array.push_back(ToJson(element));
  return array;
}

// All fields of a record, under their names.
template <class Record>
requires requires {
  Record::Layout();
}
Json ToJson(const Record& record) {
  Json object = Json::object();
  VisitFields(record, [&object](std::string_view name, const auto& value) {
    object.emplace(name, ToJson(value));
  });
  return object;
}

// One line, with its end.
void WriteLine(std::ostream& out, const Json& json);

}  // namespace fathomline
