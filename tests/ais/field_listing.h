// The fields of a decoded message as one line of text: "Name=value Name=value ...".
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <type_traits>

#include "ais/ais_messages.h"
#include "decoding/record_fields.h"
#include "platform/datetime.h"
#include "platform/numbers.h"

namespace fathomline {

template <class Record>
std::string ListFields(const Record& record, const std::string& group = "");

inline std::string FieldText(const std::string& text) {
  return "[" + text + "]";
}
inline std::string FieldText(DateTime moment) {
  return moment == DateTime{} ? "zero" : FormatDateTime(moment, "yyyy-mm-dd/hh:nn:ss");
}
template <class Number>
requires std::is_arithmetic_v<Number> std::string FieldText(Number number) {
  if constexpr (std::is_integral_v<Number>) {
    return std::to_string(number);
  } else {
    return ExactText(number);
  }
}
template <class Element, std::size_t Size>
std::string FieldText(const std::array<Element, Size>& elements) {
  std::string text;
  for (const Element& element : elements) text += (text.empty() ? "" : ",") + FieldText(element);
  return text;
}

// Fields of a group stand as "Group.Name".
template <class Record>
std::string ListFields(const Record& record, const std::string& group) {
  std::string listing;
  VisitFields(record, [&](std::string_view name, const auto& value) {
    const std::string full = group + std::string(name);
    if (!listing.empty()) listing += ' ';
    if constexpr (requires { FieldText(value); }) {
      listing += full + '=' + FieldText(value);
    } else {
      listing += ListFields(value, full + '.');
    }
  });
  return listing;
}

inline std::string ListMessage(const AISMessages& messages, int id) {
  std::string listing;
  VisitMessage(messages, id, [&](const auto& record) { listing = ListFields(record); });
  return listing;
}

}  // namespace fathomline
