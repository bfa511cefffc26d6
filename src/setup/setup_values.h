// The values of a setup file, one after the other. A section states once which values it holds, and
// the same statement reads and writes them.
//
// Texts stand in double quotes, which cannot be escaped; flags are #TRUE# and #FALSE#; numbers have
// a point whatever the locale. A comma and a line end separate values alike. The bytes of a file
// are Windows-1252; those behind a byte-order mark are UTF-8, as an editor has left them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fathomline {

// Whether the file gives the text back as it is: it has no double quote, and no character that
// Windows-1252 lacks.
bool CanBeStored(std::string_view text);

class SetupValues {
 public:
  virtual ~SetupValues() = default;

  virtual void Value(std::string& text) = 0;
  virtual void Value(std::int16_t& number) = 0;
  virtual void Value(std::int32_t& number) = 0;
  virtual void Value(float& number) = 0;
  virtual void Value(double& number) = 0;
  virtual void Value(bool& flag) = 0;
  // A flag that saving clears, in memory too.
  virtual void ValueSavedAsFalse(bool& flag) = 0;
  virtual void EndLine() = 0;

  template <class... Values>
  void Line(Values&... values) {
    (Value(values), ...);
    EndLine();
  }
};

// Takes values out of the bytes of a file. Each raises PastEndOfFile where none is left or a quote
// is not closed, TypeMismatch for what is no number, Overflow for one beyond its width.
class SetupReader final : public SetupValues {
 public:
  explicit SetupReader(std::string_view bytes);

  bool AtEnd();

  void Value(std::string& text) override;
  void Value(std::int16_t& number) override;
  void Value(std::int32_t& number) override;
  void Value(float& number) override;
  void Value(double& number) override;
  void Value(bool& flag) override;
  void ValueSavedAsFalse(bool& flag) override { Value(flag); }
  void EndLine() override {}

 private:
  struct Token {
    std::string_view bytes;
    bool quoted;
  };
  Token Next();
  double NextWhole();
  void SkipBlanks();
  void SkipSeparator();

  std::string_view bytes_;
  std::size_t at_ = 0;
  bool isUtf8_ = false;
};

// Puts values into lines that end in CR LF.
class SetupWriter final : public SetupValues {
 public:
  const std::string& Bytes() const { return bytes_; }

  void Value(std::string& text) override;
  void Value(std::int16_t& number) override;
  void Value(std::int32_t& number) override;
  void Value(float& number) override;
  void Value(double& number) override;
  void Value(bool& flag) override;
  void ValueSavedAsFalse(bool& flag) override;
  void EndLine() override;

  void Marker(std::string_view marker);

 private:
  void Append(std::string_view text);

  std::string bytes_;
  bool lineBegun_ = false;
};

}  // namespace fathomline
