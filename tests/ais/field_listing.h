// The values of a decoded message as one line of text, in the order of its layout; texts stand in
// brackets.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <type_traits>

#include "ais/ais_messages.h"
#include "base/datetime.h"
#include "base/numbers.h"
#include "decoding/record_fields.h"

namespace fathomline {

inline std::string FieldText(const std::string& text) {
  return "[" + text + "]";
}
inline std::string FieldText(DateTime moment) {
  return moment == DateTime{} ? "zero" : FormatDateTime(moment, "yyyy-mm-dd/hh:nn:ss");
}
inline std::string FieldText(std::int32_t number) {
  return std::to_string(number);
}
inline std::string FieldText(float number) {
  return ExactText(number);
}
inline std::string FieldText(double number) {
  return ExactText(number);
}
template <class Element, std::size_t Size>
std::string FieldText(const std::array<Element, Size>& elements) {
  std::string text;
  for (const Element& element : elements) text += (text.empty() ? "" : ",") + FieldText(element);
  return text;
}

template <class Record>
std::string ListFields(const Record& record) {
  std::string listing;
  VisitFields(record, [&](std::string_view, const auto& value) {
    if (!listing.empty()) listing += ' ';
    if constexpr (requires { FieldText(value); }) {
      listing += FieldText(value);
    } else {
      listing += ListFields(value);
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
