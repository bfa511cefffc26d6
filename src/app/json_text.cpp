#include "app/json_text.h"

#include <charconv>

#include "base/numbers.h"
#include "base/text.h"

namespace fathomline {
namespace {

// The library would write 1 as 1.0 and choose other exponents; these files are compared with older
// ones byte by byte.
void Write(std::ostream& out, const Json& json) {
  const char* separator = "";
  switch (json.type()) {
    case Json::value_t::object:
      out << '{';
      for (const auto& [name, value] : json.items()) {
        out << separator << Json(name).dump() << ':';
        Write(out, value);
        separator = ",";
      }
      out << '}';
      break;
    case Json::value_t::array:
      out << '[';
      for (const Json& element : json) {
        out << separator;
        Write(out, element);
        separator = ",";
      }
      out << ']';
      break;
    case Json::value_t::number_float:
      out << ExactText(json.get<double>());
      break;
    default:
      out << json.dump();
      break;
  }
}

}  // namespace

// The double of the same digits, since the value alone does not tell how wide it was.
Json ToJson(float number) {
  const std::string text = ExactText(number);
  double sameDigits = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), sameDigits);
  return sameDigits;
}

Json ToJson(char character) {
  return FromLatin1(std::string_view(&character, 1));
}

void WriteLine(std::ostream& out, const Json& json) {
  Write(out, json);
  out << '\n';
}

}  // namespace fathomline
