#include "setup/setup_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "base/fault.h"
#include "base/numbers.h"
#include "base/text.h"

namespace fathomline {
namespace {

constexpr std::string_view kTrue = "#TRUE#";
constexpr std::string_view kFalse = "#FALSE#";

// Read in its own width, so that a single comes back to the last bit.
template <class Number>
Number ReadReal(std::string_view text) {
  std::string_view digits = text;
  if (digits.starts_with('+') && !digits.starts_with("+-")) digits.remove_prefix(1);
  Number value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc::invalid_argument || end != digits.data() + digits.size()) {
    Raise(FaultNumber::TypeMismatch);
  }
  // Beyond the width: too large is a fault, too small is 0.
  if (error == std::errc::result_out_of_range) return ConvertTo<Number>(ReadNumber(digits));
  if (!std::isfinite(value)) Raise(FaultNumber::TypeMismatch);
  return value;
}

// Enough digits to be read back exactly, without an exponent.
template <class Number>
std::string RealText(Number value) {
  std::array<char, 512> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed)
          .ptr;
  return {buffer.data(), end};
}

}  // namespace

bool CanBeStored(std::string_view text) {
  return text.find('"') == text.npos && FromWindows1252(ToWindows1252(text)) == text;
}

SetupReader::SetupReader(std::string_view bytes) : bytes_(bytes) {
  isUtf8_ = bytes_.starts_with(kByteOrderMark);
  if (isUtf8_) at_ = kByteOrderMark.size();
}

void SetupReader::SkipBlanks() {
  at_ = std::min(bytes_.find_first_not_of(" \t", at_), bytes_.size());
}

void SetupReader::SkipSeparator() {
  const std::string_view rest = bytes_.substr(at_);
  if (rest.starts_with("\r\n")) {
    at_ += 2;
  } else if (!rest.empty() && std::string_view(",\r\n").find(rest.front()) != rest.npos) {
    ++at_;
  }
}

bool SetupReader::AtEnd() {
  SkipBlanks();
  return at_ == bytes_.size();
}

SetupReader::Token SetupReader::Next() {
  if (AtEnd()) Raise(FaultNumber::PastEndOfFile);
  if (bytes_[at_] == '"') {
    const std::size_t begin = at_ + 1;
    const std::size_t end = bytes_.find('"', begin);
    if (end == std::string_view::npos) Raise(FaultNumber::PastEndOfFile);
    at_ = end + 1;
    SkipBlanks();
    SkipSeparator();
    return {bytes_.substr(begin, end - begin), true};
  }
  const std::size_t begin = at_;
  at_ = std::min(bytes_.find_first_of(",\r\n", at_), bytes_.size());
  const std::string_view word = Trim(bytes_.substr(begin, at_ - begin));
  SkipSeparator();
  return {word, false};
}

void SetupReader::Value(std::string& text) {
  const Token token = Next();
  text = isUtf8_ ? std::string(token.bytes) : FromWindows1252(token.bytes);
  // A quote inside a bare word could not be written again.
  if (!token.quoted) text = WithoutQuotes(text);
}

// A flag is a number as well.
double SetupReader::NextWhole() {
  const Token token = Next();
  if (token.quoted) Raise(FaultNumber::TypeMismatch);
  if (token.bytes == kTrue) return -1.0;
  if (token.bytes == kFalse) return 0.0;
  return ReadReal<double>(token.bytes);
}

void SetupReader::Value(std::int16_t& number) {
  number = ToInt16(NextWhole());
}
void SetupReader::Value(std::int32_t& number) {
  number = ToInt32(NextWhole());
}
void SetupReader::Value(bool& flag) {
  flag = ToInt16(NextWhole()) != 0;
}

void SetupReader::Value(float& number) {
  const Token token = Next();
  if (token.quoted) Raise(FaultNumber::TypeMismatch);
  number = ReadReal<float>(token.bytes);
}
void SetupReader::Value(double& number) {
  const Token token = Next();
  if (token.quoted) Raise(FaultNumber::TypeMismatch);
  number = ReadReal<double>(token.bytes);
}

void SetupWriter::Append(std::string_view text) {
  if (lineBegun_) bytes_.push_back(',');
  lineBegun_ = true;
  bytes_.append(text);
}

void SetupWriter::EndLine() {
  bytes_.append("\r\n");
  lineBegun_ = false;
}

void SetupWriter::Value(std::string& text) {
  Append("\"" + ToWindows1252(text) + "\"");
}
void SetupWriter::Value(std::int16_t& number) {
  Append(PlainText(number));
}
void SetupWriter::Value(std::int32_t& number) {
  Append(PlainText(number));
}
void SetupWriter::Value(float& number) {
  Append(RealText(number));
}
void SetupWriter::Value(double& number) {
  Append(RealText(number));
}
void SetupWriter::Value(bool& flag) {
  Append(flag ? kTrue : kFalse);
}
void SetupWriter::ValueSavedAsFalse(bool& flag) {
  flag = false;
  Value(flag);
}

void SetupWriter::Marker(std::string_view marker) {
  Append("\"" + std::string(marker) + "\"");
  EndLine();
}

}  // namespace fathomline
