// The per-user settings: texts by section and key.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace fathomline {

// In memory. Sections and keys are compared as they are written.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  std::optional<std::string> Get(std::string_view section, std::string_view key) const;
  std::string Get(std::string_view section, std::string_view key, std::string_view missing) const;
  // `missing` also where the text is no whole number or does not fit.
  std::int32_t GetNumber(std::string_view section, std::string_view key,
                         std::int32_t missing) const;
  void Set(std::string_view section, std::string_view key, std::string_view text);
  void Set(std::string_view section, std::string_view key, std::int32_t number);

  // While held, the places of windows are read and not written: those of a passing session are none
  // that its user wants back.
  void HoldPlaces(bool held) { placesHeld_ = held; }
  bool PlacesHeld() const { return placesHeld_; }

  // Makes what has been set outlive the program, where the store can. Raises the fault of the file.
  virtual void Save() {}
  // The file that they are kept in; empty where there is none.
  virtual std::string Location() const { return {}; }
  // What its user has to know of the file as it was found; empty where it was read whole.
  virtual std::string Trouble() const { return {}; }

 protected:
  using Section = std::map<std::string, std::string, std::less<>>;

  std::map<std::string, Section, std::less<>> sections_;
  bool changed_ = false;

 private:
  bool placesHeld_ = false;
};

// Kept in an INI file, which a person may edit while the program does not run. A missing file is
// an empty store, and lines that cannot be read are passed over; such a file is kept with ".bak"
// behind its name before it is written anew. Texts that would not survive as they are, because of
// line ends or outer blanks, stand in double quotes with \n, \r, \" and \\.
class IniSettings : public SettingsStore {
 public:
  explicit IniSettings(std::string file);

  // Writes a second file and renames it over the first, so that there is a whole file at any time.
  // Does nothing where nothing has changed. Raises PathAccess with the cause.
  void Save() override;
  std::string Location() const override { return file_; }
  std::string Trouble() const override { return trouble_; }

 private:
  void Read();
  // Whether the line is one of the format; `section` is where it stands, empty for nowhere.
  bool Take(std::string_view line, std::string& section);

  std::string file_;
  std::string trouble_;
};

}  // namespace fathomline
