// JSON, written as it comes: numbers in digits that read back exactly in their own width.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "base/datetime.h"
#include "base/numbers.h"
#include "decoding/record_fields.h"

namespace fathomline {

class JsonWriter {
 public:
  explicit JsonWriter(std::ostream& out) : out_(out) {}

  void BeginObject() { Open('{'); }
  void EndObject() { Close('}'); }
  void BeginArray() { Open('['); }
  void EndArray() { Close(']'); }

  JsonWriter& Key(std::string_view name) {
    Separate();
    WriteQuoted(name);
    out_.put(':');
    first_ = true;
    return *this;
  }

  void Value(std::string_view text) { Separate(), WriteQuoted(text); }
  void Value(const char* text) { Value(std::string_view(text)); }
  void Value(const std::string& text) { Value(std::string_view(text)); }
  void Value(bool flag) { Separate(), out_ << (flag ? "true" : "false"); }
  void Value(std::int16_t number) { Value(std::int32_t{number}); }
  void Value(std::int32_t number) { Separate(), out_ << PlainText(number); }
  void Value(float number) { Separate(), out_ << ExactText(number); }
  void Value(double number) { Separate(), out_ << ExactText(number); }
  void Value(DateTime moment) { Value(moment.days); }
  // One character of a received sentence, as Latin-1.
  void Value(char character);

  template <class Element, std::size_t Count>
  void Value(const std::array<Element, Count>& elements) {
    BeginArray();
    for (const Element& element : elements) Value(element);
    EndArray();
  }

  // A record: all of its fields, under their names.
  template <class Record>
  requires requires { Record::Layout(); }
  void Value(const Record& record) {
    BeginObject();
    VisitFields(record,
                [this](std::string_view name, const auto& value) { Key(name).Value(value); });
    EndObject();
  }

  template <class Type>
  void Field(std::string_view name, const Type& value) {
    Key(name).Value(value);
  }

  // Ends a document that is one line.
  void EndLine() {
    out_.put('\n');
    first_ = true;
  }

 private:
  void Separate() {
    if (!first_) out_.put(',');
    first_ = false;
  }
  void Open(char bracket) {
    Separate();
    out_.put(bracket);
    first_ = true;
  }
  void Close(char bracket) {
    out_.put(bracket);
    first_ = false;
  }
  void WriteQuoted(std::string_view text);

  std::ostream& out_;
  bool first_ = true;
};

}  // namespace fathomline
