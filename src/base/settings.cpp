#include "base/settings.h"

#include <sstream>
#include <utility>

#include "base/fault.h"
#include "base/files.h"
#include "base/strict_number.h"
#include "base/system.h"
#include "base/text.h"

namespace fathomline {

namespace {

constexpr const char* kKept = ".bak";

bool Survives(std::string_view text) {
  return text == TrimLine(text) && text.find_first_of("\n\r") == std::string_view::npos &&
         (text.empty() || text.front() != '"');
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char character : text) {
    switch (character) {
      case '\n':
        quoted += "\\n";
        break;
      case '\r':
        quoted += "\\r";
        break;
      case '"':
        quoted += "\\\"";
        break;
      case '\\':
        quoted += "\\\\";
        break;
      default:
        quoted += character;
    }
  }
  return quoted + '"';
}

std::string Unquoted(std::string_view text) {
  if (text.size() < 2 || text.front() != '"' || text.back() != '"') return std::string(text);
  text = text.substr(1, text.size() - 2);
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char next = text[++i];
    plain += next == 'n' ? '\n' : next == 'r' ? '\r' : next;
  }
  return plain;
}

}  // namespace

std::optional<std::string> SettingsStore::Get(std::string_view section,
                                              std::string_view key) const {
  const auto group = sections_.find(section);
  if (group == sections_.end()) return {};
  const auto entry = group->second.find(key);
  if (entry == group->second.end()) return {};
  return entry->second;
}

std::string SettingsStore::Get(std::string_view section, std::string_view key,
                               std::string_view missing) const {
  return Get(section, key).value_or(std::string(missing));
}

std::int32_t SettingsStore::GetNumber(std::string_view section, std::string_view key,
                                      std::int32_t missing) const {
  return StrictNumber<std::int32_t>(Get(section, key, {})).value_or(missing);
}

void SettingsStore::Set(std::string_view section, std::string_view key, std::string_view text) {
  auto group = sections_.find(section);
  if (group == sections_.end()) group = sections_.emplace(section, Section{}).first;
  auto [entry, fresh] = group->second.try_emplace(std::string(key), text);
  if (!fresh && entry->second == text) return;
  entry->second = text;
  changed_ = true;
}

void SettingsStore::Set(std::string_view section, std::string_view key, std::int32_t number) {
  Set(section, key, std::to_string(number));
}

IniSettings::IniSettings(std::string file) : file_(std::move(file)) {
  Read();
}

void IniSettings::Read() {
  if (!FileExists(file_) && !FolderExists(file_)) return;
  std::string cause;
  try {
    std::istringstream in(ReadWholeFile(file_));
    std::string section;
    int strange = 0;
    for (std::string line; std::getline(in, line);) {
      if (!Take(TrimLine(line), section)) ++strange;
    }
    if (strange > 0) cause = "lines passed over: " + std::to_string(strange);
  } catch (const Fault& fault) {
    cause = fault.Description();
  }
  if (cause.empty()) return;
  trouble_ = "The settings in " + file_ + " could not be read: " + cause +
             ".\r\nWhat is missing has its usual value. The file is kept, with \"" +
             std::string(kKept) + "\" behind its name, before it is written anew.";
}

bool IniSettings::Take(std::string_view line, std::string& section) {
  if (line.empty() || line.front() == ';' || line.front() == '#') return true;
  if (line.front() == '[') {
    // What follows an unreadable head belongs to no section.
    const bool whole = line.size() > 2 && line.back() == ']';
    section = whole ? line.substr(1, line.size() - 2) : std::string_view{};
    return whole;
  }
  const std::size_t equals = line.find('=');
  if (section.empty() || equals == std::string_view::npos) return false;
  const std::string_view key = TrimLine(line.substr(0, equals));
  if (key.empty()) return false;
  sections_[section][std::string(key)] = Unquoted(TrimLine(line.substr(equals + 1)));
  return true;
}

void IniSettings::Save() {
  if (!changed_) return;
  std::string content;
  for (const auto& [name, section] : sections_) {
    content.append("[").append(name).append("]\n");
    for (const auto& [key, text] : section) {
      content.append(key).append("=").append(Survives(text) ? text : Quoted(text)).append("\n");
    }
    content += '\n';
  }
  try {
    MakeFolders(PathText(PathOf(file_).parent_path()));
    if (!trouble_.empty()) {
      ResumeNext([this] { RenameFile(file_, file_ + kKept); });
      trouble_.clear();
    }
    ReplaceFile(file_, content, file_ + ".new");
  } catch (const Fault& fault) {
    Raise(FaultNumber::PathAccess,
          "The settings could not be saved in " + file_ + ": " + fault.Description());
  }
  changed_ = false;
}

}  // namespace fathomline
