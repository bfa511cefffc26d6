// The replay tool over the cases that stand in the *.txt files of this folder: sentences go in, and
// what comes out is compared with the reviewed text beside them. That text is written from what the
// program is meant to do; nothing here writes it anew from what the program does.
//
// A line at the left edge opens a section, and the indented lines under it belong to it. "#" begins
// a comment. Each "replay" begins a case:
//
//   replay --messages GGA,HDT       the options of the tool
//   setup                           a setup file for it
//     "REM Mode"
//   $HEHDT,10.5,T*                  a line of the recording; a "*" at its end gets its checksum.
//     HDT Heading=10.5              What the trace says of it: all fields, or those before "...";
//                                   n/a is no value, the numbers are compared as far as written,
//                                   "-" stands for no type
//   "$HE\x01HDT\r"                  a line with escapes
//   repeat 3                        the line before, three times more
//   somewhere                       what the trace says of some line or other, of a recording that
//     VDM id=4 MMSI=3669702 ...     the case takes with "replay recording:NAME"
//   boxes                           every message box; without this section there is none
//     Error ExtractRMC: Error 9 ...
//   counters                        pieces of the counters
//     "lines":5
//   report                          the report, each line behind a bar
//     |Summary of Fathomline session : DGPS
//   window frmStatistics-1          what a window shows, as far as it is listed:
//     lblRefHgt = 10.000            a label; "not shown" is a value like any other,
//     fgGGA dN = 1.50 | 2.50 | ...  a column of a grid by its head, from the first row down,
//     fgGGA 1 = Mean | 1.50 | ...   or a row by its number,
//     fgGGA rows = 9                and how many there are below the heads;
//     TChart(0).1 dLat = 1.5 | - | 8:255    the points of a series: a dash for a gap, the colour of
//     TChart(0).1 times = 12:00:00 | ...    one behind a colon; and their times of day, or their x
//
// "·" is a blank at the edge of a text.
#include <charconv>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <iomanip>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "app/replay_tool.h"
#include "base/datetime.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/system.h"
#include "base/text.h"
#include "support/case_files.h"
#include "support/places.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using nlohmann::ordered_json;

const std::filesystem::path kFolder = std::filesystem::path(kSourceFolder) / "tests/golden";

struct Line {
  int number;
  std::string text;
};
struct Section {
  Line head;
  std::vector<Line> body;
};
using Shown = std::map<std::string, std::string>;

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0, end = 0; end != std::string_view::npos;
       begin = end + separator.size()) {
    end = text.find(separator, begin);
    parts.emplace_back(text.substr(begin, end - begin));
  }
  return parts;
}

// Parts between blanks; what stands in double quotes stays together.
std::vector<std::string> Tokens(std::string_view text) {
  std::vector<std::string> tokens;
  bool quoted = false;
  bool begun = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"' && text[i - 1] != '\\') quoted = !quoted;
    if (const bool blank = text[i] == ' ' && !quoted; !blank) {
      if (!begun) tokens.emplace_back();
      tokens.back() += text[i];
      begun = true;
    } else {
      begun = false;
    }
  }
  return tokens;
}

std::vector<std::string> Unquoted(std::vector<std::string> words) {
  for (std::string& word : words) std::erase(word, '"');
  return words;
}

// As it stands here: blanks at the edges of a text can be seen.
std::string Visible(std::string text) {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  const std::size_t last = std::max(text.find_last_not_of(' ') + 1, first);
  std::string shown = text.substr(first, last - first);
  for (std::size_t i = 0; i < first; ++i) shown.insert(0, "\u00B7");
  for (std::size_t i = last; i < text.size(); ++i) shown += "\u00B7";
  return shown;
}

bool ReadAll(std::string_view text, double& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc{} && end == text.data() + text.size();
}

// A number to the decimals that are written, any other text as it is. A colour may stand behind a
// number.
bool Agree(std::string_view written, std::string_view came) {
  const std::size_t colon = std::min(written.find(':'), written.size());
  if (!came.ends_with(written.substr(colon))) return false;
  came.remove_suffix(written.size() - colon);
  written = written.substr(0, colon);
  const std::size_t point = written.find('.');
  double wanted = 0.0;
  double number = 0.0;
  if (written == came || point == std::string_view::npos) return written == came;
  if (!ReadAll(written, wanted) || !ReadAll(came, number)) return false;
  const auto decimals = static_cast<double>(written.size() - point - 1);
  return std::abs(number - wanted) <= 0.5000001 * std::pow(10.0, -decimals);
}

bool AllAgree(std::string_view written, std::string_view came, std::string_view separator) {
  const auto wanted = Split(written, separator);
  const auto parts = Split(came, separator);
  return std::equal(wanted.begin(), wanted.end(), parts.begin(), parts.end(), Agree);
}

std::string Recorded(std::string_view head) {
  if (head.front() != '"') {
    return head.back() == '*' ? Sentence(head.substr(1, head.size() - 2), head.front())
                              : std::string(head);
  }
  std::string bytes;
  for (std::size_t i = 1; i + 1 < head.size(); ++i) {
    if (head[i] != '\\') {
      bytes += head[i];
    } else if (head[++i] == 'x') {
      bytes += static_cast<char>(std::stoi(std::string(head.substr(i + 1, 2)), nullptr, 16));
      i += 2;
    } else {
      bytes += head[i] == 'r' ? '\r' : head[i];
    }
  }
  return bytes;
}

// The fields of a line of the trace, those of a group as "Group.Field".
void List(const ordered_json& value, const std::string& name, Shown& fields) {
  const auto text = [](const ordered_json& one) {
    if (one == NoValue) return std::string("n/a");
    return one.is_number_float() ? ExactText(one.get<double>()) : one.dump();
  };
  if (value.is_object()) {
    for (const auto& [key, inner] : value.items()) {
      List(inner, name.empty() || name == "record" ? key : name + "." + key, fields);
    }
  } else if (name == "ETA" || name == "Received") {
    fields[name] = FormatDateTime(DateTime{value.get<double>()}, "yyyy-mm-dd/hh:nn:ss");
  } else if (value.is_array()) {
    std::string& all = fields[name];
    for (const ordered_json& one : value) all += (all.empty() ? "" : ",") + text(one);
  } else {
    fields[name] = text(value);
  }
}

// What a written window shows, under the names by which it is asked for here.
Shown ReadWindow(const std::string& written) {
  Shown shown;
  std::istringstream in(written);
  const auto add = [&shown](const std::string& name, const std::string& text) {
    const auto [all, isFirst] = shown.emplace(name, text);
    if (!isFirst) all->second += " | " + text;
  };
  for (std::string line; std::getline(in, line);) {
    const std::vector<std::string> what = Split(line, "\t");
    if (what[0] == "label") {
      shown[what[1]] = Visible(what[2]);
      continue;
    }
    const bool isGrid = what[0] == "grid";
    const std::string name = what[1] + (isGrid ? " " : "." + what[2] + " ");
    std::vector<std::string> heads;
    if (!isGrid) shown[name + what[3]] = "";
    for (int row = 0; row < std::stoi(isGrid ? what[2] : what[4]); ++row) {
      std::getline(in, line);
      const std::vector<std::string> cells = Split(line, "\t");
      if (!isGrid) {
        const std::string value = cells[1].empty() ? "-" : cells[1];
        std::string& points = shown[name + what[3]];
        points += (row > 0 ? " | " : "") + value + (cells.size() > 2 ? ":" + cells[2] : "");
        add(name + "x", cells[0]);
        add(name + "times", FormatDateTime(DateTime{ReadNumber(cells[0])}, "hh:nn:ss"));
        continue;
      }
      if (row == 0) heads = cells;
      for (std::size_t i = 0; i < cells.size(); ++i) {
        add(name + std::to_string(row), Visible(cells[i]));
        if (row > 0) add(std::string(Trim(name + heads[i])), Visible(cells[i]));
      }
    }
    if (isGrid) shown[name + "rows"] = std::to_string(std::stoi(what[2]) - 1);
  }
  return shown;
}

class Case {
 public:
  Case(const std::string& file, const std::vector<Section>& sections)
      : file_(file), sections_(sections) {}

  void Run() {
    std::string recording;
    std::string last;
    std::vector<std::string> arguments = Unquoted(Tokens(sections_.front().head.text));
    arguments.front() = folder_ / "recording.log";
    if (constexpr std::string_view kMark = "recording:";
        arguments.size() > 1 && arguments[1].starts_with(kMark)) {
      if (kRecordings.empty()) return;
      arguments.front() = kRecordings + "/" + arguments[1].substr(kMark.size());
      arguments.erase(arguments.begin() + 1);
    }
    for (const Section& section : sections_) {
      const std::string& head = section.head.text;
      if (IsRecorded(section)) {
        recording += last = Recorded(head) + "\n";
      } else if (head.starts_with("repeat ")) {
        for (int i = std::stoi(head.substr(7)); i > 0; --i) recording += last;
      } else if (head == "setup") {
        std::string text;
        for (const Line& line : section.body) text += line.text + "\r\n";
        arguments.insert(arguments.end(), {"--setup", folder_.Write("setup.ini", text)});
      } else if (head == "report") {
        arguments.emplace_back("--report");
      }
    }
    folder_.Write("recording.log", recording);
    arguments.insert(
        arguments.end(),
        {"--program-folder", folder_ / "program", "--now", "2026-01-02 03:04:05", "--trace",
         folder_ / "trace", "--counters", folder_ / "counters", "--windows", folder_ / "windows"});
    std::ostringstream out;
    std::ostringstream boxes;
    ASSERT_EQ(RunReplayTool(arguments, out, boxes), 0) << boxes.str();

    const std::vector<std::string> trace = Split(ReadWholeFile(folder_ / "trace"), "\n");
    std::size_t line = 0;
    std::vector<Line> wantedBoxes;
    for (const Section& section : sections_) {
      const std::string& head = section.head.text;
      if (IsRecorded(section)) {
        CompareTrace(section, trace.at(line++));
      } else if (head.starts_with("repeat ")) {
        line += std::stoul(head.substr(7));
      } else if (head == "somewhere") {
        const bool met = std::any_of(trace.begin(), trace.end() - 1, [&](const std::string& one) {
          return Difference(section, one).second.empty();
        });
        Expect(met, section.body.front(), "no line is so");
      } else if (head == "boxes") {
        wantedBoxes = section.body;
      } else if (head == "counters") {
        const std::string counters = ReadWholeFile(folder_ / "counters");
        for (const Line& piece : section.body) {
          Expect(counters.find(piece.text) != std::string::npos, piece, counters);
        }
      } else if (head == "report") {
        std::vector<std::string> lines =
            Split(Placeless(ReadWholeFile(Split(out.str(), "\n")[0])), "\r\n");
        lines.pop_back();
        for (std::string& text : lines) text.insert(0, "|");
        CompareLines(section.head, section.body, lines);
      } else if (head.starts_with("window ")) {
        CompareWindow(section);
      }
    }
    std::vector<std::string> came;
    for (const std::string& box : Split(Placeless(boxes.str()), "\n")) {
      // Behind them stands how often each has come.
      if (box.empty() || std::isdigit(static_cast<unsigned char>(box[0])) != 0) break;
      came.push_back(box);
    }
    CompareLines(sections_.front().head, wantedBoxes, came);
  }

 private:
  // With the folder of the case called FOLDER, and slashes in what stands in it.
  std::string Placeless(std::string text) const {
    const std::string path = folder_.Path();
    for (auto at = text.find(path); at != std::string::npos; at = text.find(path)) {
      text.replace(at, path.size(), "FOLDER/");
      for (auto i = at; i < text.size() && text[i] != '\n'; ++i) {
        if (text[i] == kPathSeparator) text[i] = '/';
      }
    }
    return text;
  }

  // Whatever is none of the other sections.
  static bool IsRecorded(const Section& section) {
    const std::string word = section.head.text.substr(0, section.head.text.find(' '));
    for (const char* other :
         {"replay", "setup", "repeat", "somewhere", "boxes", "counters", "report", "window"}) {
      if (word == other) return false;
    }
    return true;
  }

  void Expect(bool holds, const Line& line, const std::string& came) {
    if (!holds) ADD_FAILURE_AT(file_.c_str(), line.number) << line.text << "\n  but: " << came;
  }

  void CompareLines(const Line& head, const std::vector<Line>& wanted,
                    const std::vector<std::string>& came) {
    for (std::size_t i = 0; i < std::max(wanted.size(), came.size()); ++i) {
      const std::string text = i < came.size() ? came[i] : "nothing more";
      if (i < wanted.size()) {
        Expect(wanted[i].text == text, wanted[i], text);
      } else {
        Expect(false, wanted.empty() ? head : wanted.back(), "and more: " + text);
      }
    }
  }

  // The first field of a line of the trace that is not as the section says; empty: there is none.
  static std::pair<Line, std::string> Difference(const Section& section, const std::string& json) {
    Shown fields;
    List(ordered_json::parse(json), {}, fields);
    fields.erase("line");
    bool isFirst = true;
    for (const Line& line : section.body) {
      for (const std::string& token : Tokens(line.text)) {
        if (token == "...") return {};
        const std::size_t equals = isFirst ? 0 : token.find('=');
        const std::string name = isFirst ? "type" : token.substr(0, equals);
        const std::string written =
            isFirst ? '"' + (token == "-" ? "" : token) + '"' : token.substr(equals + 1);
        isFirst = false;
        if (!fields.contains(name)) return {line, name + " is not there"};
        if (!AllAgree(written, fields[name], ",")) return {line, name + "=" + fields[name]};
        fields.erase(name);
      }
    }
    if (fields.empty() || section.body.empty()) return {};
    return {section.body.back(), fields.begin()->first + " is not listed"};
  }

  void CompareTrace(const Section& section, const std::string& json) {
    const auto [line, what] = Difference(section, json);
    Expect(what.empty(), line, what);
  }

  void CompareWindow(const Section& section) {
    const std::string path = folder_ / ("windows/" + section.head.text.substr(7) + ".txt");
    const Shown shown = FileExists(path) ? ReadWindow(ReadWholeFile(path)) : Shown{};
    for (const Line& line : section.body) {
      const std::size_t equals = line.text.find(" =");
      const std::string written(Trim(line.text.substr(equals + 2)));
      const auto found = shown.find(std::string(Trim(line.text.substr(0, equals))));
      const std::string came(found == shown.end() ? "not shown" : Trim(found->second));
      const bool isSeries = line.text.starts_with("TChart");
      Expect(isSeries ? AllAgree(written, came, " | ") : written == came, line, came);
    }
  }

  const std::string& file_;
  const std::vector<Section>& sections_;
  TemporaryFolder folder_;
};

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, Cases) {
  const std::string path = (kFolder / (GetParam() + ".txt")).string();
  std::vector<std::vector<Section>> cases;
  int number = 0;
  for (const std::string& text : Split(ReadWholeFile(path), "\n")) {
    ++number;
    if (Trim(text).empty() || text[0] == '#') continue;
    if (text[0] == ' ') {
      cases.back().back().body.push_back({number, text.substr(2)});
    } else {
      if (text.starts_with("replay")) cases.emplace_back();
      cases.back().push_back({{number, text}, {}});
    }
  }
  ASSERT_FALSE(cases.empty());
  for (const auto& sections : cases) Case(path, sections).Run();
}

INSTANTIATE_TEST_SUITE_P(Files, Golden, testing::ValuesIn(CaseFiles(kFolder)),
                         [](const auto& file) { return file.param; });

}  // namespace
}  // namespace fathomline
