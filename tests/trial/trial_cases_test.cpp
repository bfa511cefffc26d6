// The trial over the cases that stand in the *.txt files of this folder: recordings go in, and the
// figures that come out are compared with the reviewed ones beside them, which are worked out from
// the definitions in docs/trial.md. Nothing here writes them anew from what the program does.
//
// A line at the left edge opens a section, and the indented lines under it belong to it. "#" begins
// a comment. Each "trial" begins a case:
//
//   trial --reference first        the options of the command
//   recording A                    its recordings
//     $GPGGA,120000,...*           a line; a "*" at its end gets its checksum
//     "$GP\x01GGA\r"               a line with escapes
//     @120000+1                    from now on "{t}" is this time of day, and steps by so many
//                                  seconds (whole ones, or with decimals)
//     25x $GPGGA,{t},{1|2},...* ; $HEHDT,{t}*
//                                  the lines 25 times over; "{1|2}" is 1 and 2 in turn, and then
//                                  the time steps
//   status 1                       what the command returns; without it 0
//   figures A                      rows of figures.csv: of a system or a pair, or of neither;
//     horizontal.reference.n = 5   n/a is none, "-" says that there is no such row; numbers are
//                                  compared as far as they are written
//   picture claims                 a picture of the page by its name:
//     text 102 57 e north          its elements with what their attributes say, from the back to
//                                  the front
//   summary                        what the command says where it writes no file
//     System A
//   tables                         those of the page
//     = Depth                      the caption, then the rows
//     DBT | 12 | 3.2 / 4.1         cells; what stands in one on top of each other
//   style svg .q                   the rules of the page's style sheet, or the colours, that begin
//   in
//     svg .q0{fill:var(--qf0)}     a certain way, each on a line
//   csv angles                     angles.csv as it is
//     system,angle,name,time,deviation_deg
#include <charconv>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/trial_command.h"
#include "base/files.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/system.h"
#include "support/case_files.h"
#include "support/places.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using nlohmann::ordered_json;

const std::filesystem::path kFolder = std::filesystem::path(kSourceFolder) / "tests/trial";

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + separator.size()) {
    end = text.find(separator, begin);
    parts.push_back(text.substr(begin, end - begin));
  }
  return parts;
}

// The first place where a value is not what the schema says; empty where it is. Only the keywords
// that our schema has are known. Keys stand in the order of the schema.
std::string Violation(const ordered_json& value, const ordered_json& schema,
                      const ordered_json& root, const std::string& at) {
  const auto violation = [&](const ordered_json& v, const ordered_json& s, const std::string& to) {
    return Violation(v, s, root, at + to);
  };
  for (const auto& [word, rule] : schema.items()) {
    if (word == "$ref") {
      const std::string wrong = violation(
          value, root.at(ordered_json::json_pointer(rule.get<std::string>().substr(1))), "");
      if (!wrong.empty()) return wrong;
    } else if (word == "type") {
      std::vector<std::string> types = {value.type_name()};
      if (value.is_number()) types.emplace_back(value.is_number_float() ? "" : "integer");
      const bool fits =
          std::any_of(types.begin(), types.end(), [&allowed = rule](const std::string& type) {
            return allowed.is_array()
                       ? std::find(allowed.begin(), allowed.end(), type) != allowed.end()
                       : allowed == type;
          });
      if (!fits) return at + " is of type " + types.front();
    } else if (word == "const" || word == "enum") {
      const bool fits = word == "const" ? value == rule
                                        : std::find(rule.begin(), rule.end(), value) != rule.end();
      if (!fits) return at + " is " + value.dump();
    } else if (word == "anyOf") {
      std::string farthest;
      bool fits = false;
      for (const ordered_json& one : rule) {
        const std::string wrong = violation(value, one, "");
        fits = fits || wrong.empty();
        if (wrong.size() > farthest.size()) farthest = wrong;
      }
      if (!fits) return farthest;
    } else if (word == "minimum" || word == "maximum") {
      if (!value.is_number()) continue;
      if (word == "minimum" ? value < rule : value > rule) return at + " is " + value.dump();
    } else if (word == "minItems" || word == "maxItems") {
      if (word == "minItems" ? value.size() < rule : value.size() > rule) return at + " in number";
    } else if (word == "pattern") {
      // Making one takes longer than everything else here.
      static std::map<std::string, std::regex> expressions;
      const auto text = rule.get<std::string>();
      const auto expression = expressions.try_emplace(text, text).first;
      if (value.is_string() && !std::regex_search(value.get<std::string>(), expression->second)) {
        return at + " is " + value.dump();
      }
    } else if (word == "items") {
      for (std::size_t i = 0; value.is_array() && i < value.size(); ++i) {
        const std::string wrong = violation(value[i], rule, "/" + std::to_string(i));
        if (!wrong.empty()) return wrong;
      }
    } else if (word == "properties" && value.is_object()) {
      auto expected = rule.begin();
      for (const auto& [key, inner] : value.items()) {
        while (expected != rule.end() && expected.key() != key) ++expected;
        if (expected == rule.end()) return at + "/" + key + " is not here";
        const std::string wrong = violation(inner, *expected, "/" + key);
        if (!wrong.empty()) return wrong;
      }
    } else if (word == "required" && value.is_object()) {
      for (const ordered_json& key : rule) {
        if (!value.contains(key.get<std::string>())) return at + " lacks " + key.dump();
      }
    }
  }
  return {};
}

std::string Violation(const std::string& json) {
  static const auto schema =
      ordered_json::parse(ReadWholeFile(std::string(kSourceFolder) + "/docs/trial.schema.json"));
  return Violation(ordered_json::parse(json), schema, schema, "");
}

// What a line of a case stands for in the recording.
class RecordingText {
 public:
  void Add(const std::string& line) {
    if (line[0] == '@') {
      const auto parts = Split(line.substr(1), "+");
      const double clock = ReadNumber(parts[0]);
      const int whole = static_cast<int>(clock);
      time_ = whole / 10000 * 3600 + whole / 100 % 100 * 60 + whole % 100 + clock - whole;
      step_ = ReadNumber(parts[1]);
      return;
    }
    static const std::regex kRepeated("^([0-9]+)x (.*)$");
    std::smatch match;
    const bool repeated = std::regex_match(line, match, kRepeated);
    for (int turn = 0, turns = repeated ? std::stoi(match[1]) : 1; turn < turns; ++turn) {
      for (const std::string& one : Split(repeated ? match[2].str() : line, " ; ")) {
        text += Recorded(Filled(one, turn)) + "\n";
      }
      if (repeated) time_ += step_;
    }
  }
  std::string text;

 private:
  std::string Filled(std::string line, int turn) const {
    for (auto begin = line.find('{'); begin != std::string::npos; begin = line.find('{')) {
      const auto end = line.find('}', begin);
      const std::string inner = line.substr(begin + 1, end - begin - 1);
      const auto choices = Split(inner, "|");
      line.replace(
          begin, end + 1 - begin,
          inner == "t" ? TimeText() : choices[static_cast<std::size_t>(turn) % choices.size()]);
    }
    return line;
  }
  std::string TimeText() const {
    const auto milliseconds = static_cast<long>(std::lround(time_ * 1000.0)) % 86'400'000;
    char text_[32];
    std::snprintf(text_, sizeof text_, "%02ld%02ld%02ld.%03ld", milliseconds / 3'600'000,
                  milliseconds / 60'000 % 60, milliseconds / 1000 % 60, milliseconds % 1000);
    return text_;
  }
  static std::string Recorded(const std::string& line) {
    if (line[0] != '"') {
      const bool isWhole = line.back() != '*' || (line[0] != '$' && line[0] != '!');
      return isWhole ? line : Sentence(line.substr(1, line.size() - 2), line[0]);
    }
    std::string bytes;
    for (std::size_t i = 1; i + 1 < line.size(); ++i) {
      if (line[i] != '\\') {
        bytes += line[i];
      } else if (line[++i] == 'x') {
        bytes += static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16));
        i += 2;
      } else {
        bytes += line[i] == 'r' ? '\r' : line[i] == 't' ? '\t' : line[i];
      }
    }
    return bytes;
  }

  double time_ = 0.0;
  double step_ = 1.0;
};

// Numbers as far as they are written, any other text as it is.
bool Agree(const std::string& written, const std::string& came) {
  if (written == came) return true;
  double wanted = 0.0;
  double number = 0.0;
  const auto read = [](const std::string& text, double& to) {
    const auto end = std::from_chars(text.data(), text.data() + text.size(), to);
    return end.ec == std::errc{} && end.ptr == text.data() + text.size();
  };
  if (!read(written, wanted) || !read(came, number)) return false;
  const std::size_t point = std::min(written.find('.'), written.size() - 1);
  const auto decimals = static_cast<double>(written.size() - point - 1);
  return std::abs(number - wanted) <= 0.5000001 * std::pow(10.0, -decimals);
}

// The elements of a picture of the page, each in a line; those alone that begin in a certain way,
// if that stands behind the name.
std::string PictureOf(const std::string& page, const std::string& wanted) {
  const std::string name = wanted.substr(0, wanted.find(' '));
  const std::string front = name == wanted ? "" : wanted.substr(name.size() + 1);
  static const std::regex kElement(R"re(<(/?\w+)([^>]*?)/?>([^<\n]*))re");
  static const std::regex kAttribute(R"re(([\w-]+)="([^"]*)")re");
  const std::size_t title = page.find("<title id=\"" + name + "-t\"");
  if (title == std::string::npos) return "none\n";
  const std::size_t begin = page.rfind("<svg ", title);
  const std::string svg = page.substr(begin, page.find("</svg>", begin) - begin);
  std::string elements;
  for (std::sregex_iterator it(svg.begin(), svg.end(), kElement), end; it != end; ++it) {
    if ((*it)[1] == "title" || (*it)[1] == "desc" || (*it)[1].str().starts_with("/")) continue;
    std::string element = (*it)[1];
    const std::string said = (*it)[2];
    for (std::sregex_iterator at(said.begin(), said.end(), kAttribute); at != end; ++at) {
      if ((*at)[1] == "role" || (*at)[1] == "aria-labelledby") continue;
      element += " " + (*at)[2].str();
    }
    if (!element.starts_with(front)) continue;
    elements += element + ((*it)[3].length() == 0 ? "" : " ") + (*it)[3].str() + "\n";
  }
  return elements;
}

// The rows of all tables of the page that begin in a certain way, captions with their classes.
std::string TablesOf(const std::string& page, const std::string& front) {
  static const std::regex kPiece(
      R"re(<(?:div|table) class="(?:scroll ?)?(\w*)"|<caption>(.*?)</caption>|<t[hd][^>]*>(.*?)</t[hd]>|</tr>)re");
  static const std::regex kBreak("<br/>|<small>");
  static const std::regex kTag("<[^>]*>");
  std::string text;
  std::string row;
  std::string classes;
  const auto endRow = [&] {
    if (row.starts_with(front)) text += row + "\n";
    row.clear();
  };
  for (std::sregex_iterator it(page.begin(), page.end(), kPiece), end; it != end; ++it) {
    if ((*it)[1].matched) {
      classes += ((*it)[1].length() == 0 ? "" : " | ") + (*it)[1].str();
    } else if ((*it)[2].matched) {
      row = "= " + (*it)[2].str() + classes;
      classes.clear();
      endRow();
    } else if ((*it)[3].matched) {
      const std::string parted = std::regex_replace((*it)[3].str(), kBreak, " / ");
      row += (row.empty() ? "" : " | ") + std::regex_replace(parted, kTag, "");
      if (row.empty()) row = "-";
    } else {
      endRow();
    }
  }
  return text;
}

// The sections that the page has, with what they are called, and their headings, paragraphs and
// lists, up to the files.
std::string WordsOf(const std::string& page) {
  static const std::regex kTag("<[^>]*>");
  std::string words;
  const std::size_t files = page.find("<section id=\"files\"");
  for (std::size_t at = page.find("<h1>"); at < files; at = page.find('<', at + 1)) {
    const std::size_t behind = page.find('>', at);
    const std::string tag = page.substr(at + 1, behind - at - 1);
    const std::string name = tag.substr(0, tag.find(' '));
    if (name == "section") {
      words += tag + "\n";
    } else if (name == "h1" || name == "h3" || name == "p" || name == "li") {
      const std::string text = page.substr(behind + 1, page.find("</" + name, at) - behind - 1);
      words += std::regex_replace(text, kTag, "") + "\n";
    }
  }
  return words;
}

// The lines of the style sheet that begin in a certain way. Each colour stands on one of its own.
std::string StyleOf(const std::string& page, const std::string& front) {
  const std::string head = page.substr(0, page.find("</style>"));
  std::string rules;
  for (const auto& rule : Split(std::regex_replace(head, std::regex(";--"), ";\n--"), "\n")) {
    if (rule.starts_with(front)) rules += rule + "\n";
  }
  return rules;
}

struct Line {
  int number;
  std::string text;
};

class Case {
 public:
  explicit Case(std::string file) : file_(std::move(file)) {}

  void Take(const Line& line) {
    const bool isHead = line.text[0] != ' ';
    const std::string text = isHead ? line.text : line.text.substr(2);
    const auto words = Split(text, " ");
    if (isHead) {
      section_ = words[0];
      of_ = text.substr(std::min(section_.size() + 1, text.size()));
      if (section_ == "trial") {
        TakeOptions(text);
      } else if (section_ == "status") {
        status_ = std::stoi(of_);
      } else if (section_ == "recording") {
        recordings_.emplace_back(of_, RecordingText());
      } else if (section_ != "figures") {
        texts_[{section_, of_}];
      }
    } else if (section_ == "recording") {
      recordings_.back().second.Add(text);
    } else if (section_ == "figures") {
      figures_.push_back({line.number, of_ + " " + text});
    } else {
      texts_[{section_, of_}] += text + "\n";
    }
  }

  void Run() {
    std::vector<std::string> arguments = options_;
    for (const auto& [name, recording] : recordings_) {
      arguments.push_back(name + "=" + folder_.Write(name + ".log", recording.text));
    }
    std::ostringstream out;
    std::ostringstream err;
    if (texts_.contains({"summary", ""})) {
      ASSERT_EQ(RunTrialCommand(arguments, out, err), status_) << file_ << ": " << err.str();
    }
    arguments.insert(arguments.end(), {"--csv", folder_ / "csv", "--json", folder_ / "json"});
    arguments.insert(arguments.end(), {"--html", folder_ / "html"});
    ASSERT_EQ(RunTrialCommand(arguments, out, err), status_) << file_ << ": " << err.str();
    EXPECT_EQ(Violation(ReadWholeFile(folder_ / "json")), "") << file_;

    EXPECT_EQ(CsvFiles(), "angles.csv figures.csv pairs.csv positions.csv satellites.csv ");
    std::map<std::string, std::string> came;
    for (const std::string& row : Split(ReadWholeFile(folder_ / "csv/figures.csv"), "\n")) {
      const std::size_t first = row.find(',');
      const std::size_t second = row.find(',', first + 1);
      if (second == std::string::npos) continue;
      came[row.substr(0, first) + " " + row.substr(first + 1, second - first - 1)] =
          row.substr(second + 1);
    }
    for (const Line& line : figures_) {
      const auto parts = Split(line.text, " = ");
      const auto found = came.find(parts[0]);
      const std::string value = found == came.end()     ? "-"
                                : found->second.empty() ? "n/a"
                                                        : found->second;
      if (parts.size() == 2 && Agree(parts[1], value)) continue;
      ADD_FAILURE_AT(file_.c_str(), line.number) << line.text << "\n  but: " << value;
    }
    std::string page = ReadWholeFile(folder_ / "html");
    for (std::size_t at = 0; (at = page.find(folder_.Path())) != std::string::npos;) {
      page.replace(at, folder_.Path().size(), "");
    }
    for (const auto& [section, wanted] : texts_) {
      const auto& [kind, of] = section;
      EXPECT_EQ(kind == "picture"  ? PictureOf(page, of)
                : kind == "tables" ? TablesOf(page, of)
                : kind == "words"  ? WordsOf(page)
                : kind == "style"  ? StyleOf(page, of)
                : kind == "csv"    ? ReadWholeFile(folder_ / ("csv/" + of + ".csv"))
                                   : out.str(),
                wanted)
          << kind << " " << of;
    }
  }

 private:
  std::string CsvFiles() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(PathOf(folder_ / "csv"))) {
      names.insert(entry.path().filename().string());
    }
    std::string all;
    for (const std::string& name : names) all += name + " ";
    return all;
  }

  void TakeOptions(const std::string& text) {
    // What stands in double quotes stays together.
    bool quoted = false;
    std::string word;
    for (const char c : text.substr(5) + " ") {
      if (c == '"') quoted = !quoted;
      if (c == ' ' && !quoted) {
        if (!word.empty()) options_.push_back(word);
        word.clear();
      } else if (c != '"') {
        word += c;
      }
    }
  }

  std::string file_;
  TemporaryFolder folder_;
  std::string section_, of_;
  int status_ = 0;
  std::vector<std::string> options_;
  std::vector<std::pair<std::string, RecordingText>> recordings_;
  std::vector<Line> figures_;
  // What stands in a section, by its kind and by what stands behind that.
  std::map<std::pair<std::string, std::string>, std::string> texts_;
};

class TrialCases : public testing::TestWithParam<std::string> {};

TEST_P(TrialCases, GiveTheReviewedFigures) {
  const std::string path = (kFolder / (GetParam() + ".txt")).string();
  std::unique_ptr<Case> one;
  int number = 0;
  for (const std::string& text : Split(ReadWholeFile(path), "\n")) {
    ++number;
    if (text.empty() || text[text.find_first_not_of(' ')] == '#') continue;
    if (text.starts_with("trial")) {
      if (one) one->Run();
      one = std::make_unique<Case>(path);
    }
    one->Take({number, text});
  }
  ASSERT_TRUE(one);
  one->Run();
}

INSTANTIATE_TEST_SUITE_P(Files, TrialCases, testing::ValuesIn(CaseFiles(kFolder)),
                         [](const auto& file) { return file.param; });

}  // namespace
}  // namespace fathomline
