#include "trial/trial_html.h"

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <gmock/gmock.h>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "support/places.h"
#include "trial/figure_words.h"
#include "trial/limits.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "trial/trial_json.h"
#include "trial/trial_summary.h"

namespace fathomline::trial {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

struct Document : ::testing::Test {
  void Take(SystemRecorder& into, const std::string& bytes) {
    LineCutter cutter(into);
    cutter.TakeBytes(bytes);
    cutter.End();
  }
  // A stream of its own makes a second system of the same recording.
  void Add(const std::string& name, const SystemRecorder& kept,
           std::optional<std::string> stream = {}) {
    TrialSystem& system = systems.emplace_back();
    system.name = name;
    system.recorder = &kept;
    system.stream = std::move(stream);
    options.meta.files.push_back({name, "/data/" + name + ".log", 4711, std::string(64, 'a')});
  }

  SystemRecorder recorder;
  std::deque<SystemRecorder> recorders;
  std::vector<TrialSystem> systems;
  TrialOptions options;
};

std::string Sample(const char* name) {
  return ReadWholeFile(kSourceFolder + "/samples/" + name);
}

// What a reader sees of the page, each piece of text in a line.
enum class Pictures : std::uint8_t { Without, With };
std::string Seen(const std::string& page, Pictures pictures = Pictures::Without) {
  std::string text;
  std::size_t at = page.find("<body>");
  while (at < page.size()) {
    if (pictures == Pictures::Without && page.compare(at, 5, "<svg ") == 0) {
      at = page.find("</svg>", at);
    }
    if (page[at] == '<') {
      if (page.compare(at, 5, "<wbr/") != 0) text += '\n';
      at = page.find('>', at) + 1;
    } else {
      text += page[at++];
    }
  }
  return text;
}

using Numbers = std::map<double, int>;

Numbers NumbersOf(const std::string& text) {
  static const std::regex kNumber(R"((^|[^\w.:+])(-?\d+(\.\d+)?)(?![\w:]))");
  Numbers numbers;
  for (std::sregex_iterator it(text.begin(), text.end(), kNumber), end; it != end; ++it) {
    ++numbers[ReadNumber((*it)[2].str())];
  }
  return numbers;
}

// Every number and time of the figures; the bins of the elevation are heads of columns there.
void Collect(const nlohmann::ordered_json& node, Numbers& numbers,
             std::vector<std::string>& times) {
  static const std::regex kTime(R"((\d{4}-\d\d-\d\d|\+\d+)T(.*Z))");
  for (const auto& item : node.items()) {
    std::smatch match;
    const std::string text = item.value().is_string() ? item.value().get<std::string>() : "";
    if (item.value().is_number() && item.key() != "from_deg" && item.key() != "trial") {
      ++numbers[item.value().get<double>()];
    } else if (std::regex_match(text, match, kTime)) {
      times.push_back(match[2]);
    } else if (item.value().is_structured()) {
      Collect(item.value(), numbers, times);
    }
  }
}

void ExpectEveryFigure(const TrialFigures& figures) {
  Numbers wanted;
  std::vector<std::string> times;
  Collect(ToJson(figures), wanted, times);
  ASSERT_GT(wanted.size(), 100U);
  const std::string text = Seen(ToHtml(figures));
  Numbers there = NumbersOf(text);
  for (const auto& [number, count] : wanted) EXPECT_GE(there[number], count) << number;
  for (const std::string& time : times) EXPECT_THAT(text, HasSubstr(time));
  // A figure that has no words shows its key.
  EXPECT_FALSE(std::regex_search(text, std::regex(R"([a-z]_(m|s|deg|at|dbhz|share|ratio)\b)")));
}

TEST_F(Document, HoldsEveryFigureOfItsJson) {
  Take(recorder, Sample("moored.log"));
  Add("A", recorder);
  Add("B", recorder, "GNRMC");
  TrialFigures figures = WorkOut(systems, options);
  JudgeLimits(figures, {ReadLimit("horizontal.reference.r95_m<=1.5")});
  ExpectEveryFigure(figures);

  SystemRecorder voyage;
  Take(voyage, Sample("voyage.log"));
  systems.clear();
  Add("C", voyage);
  ExpectEveryFigure(WorkOut(systems, options));
}

// The texts with a small letter in them, each where it is first met.
std::string Words(const std::string& seen) {
  std::string words;
  std::set<std::string> met;
  std::istringstream in(seen);
  for (std::string piece; std::getline(in, piece);) {
    if (std::none_of(piece.begin(), piece.end(), [](char c) { return c >= 'a' && c <= 'z'; })) {
      continue;
    }
    const std::string text(Trim(piece));
    if (met.insert(text).second) words += text + "\n";
  }
  return words;
}

std::set<std::string> SetOf(const std::string& words) {
  std::istringstream in(words);
  return {std::istream_iterator<std::string>(in), {}};
}

const std::set<std::string> kElements = SetOf(
    "a b body br caption circle clipPath code desc div ellipse figcaption figure footer g h1 h2 h3 "
    "head header html i li line main meta nav ol p path rect section small span style svg table "
    "tbody td text th thead time title tr ul wbr");
const std::set<std::string> kAttributes = SetOf(
    "aria-label aria-labelledby charset class clip-path content cx cy d datetime height href id "
    "lang name r role rx ry scope stroke-width tabindex transform viewBox width x x1 x2 xmlns y y1 "
    "y2");

// What a tag says is known to browsers, and what it names stands in the page.
void ExpectKnown(const std::string& page, const std::string& element, const std::string& said) {
  static const std::regex kAttribute(R"re(([\w:-]+)="([^"]*)")re");
  EXPECT_TRUE(kElements.contains(element)) << element;
  for (std::sregex_iterator it(said.begin(), said.end(), kAttribute), end; it != end; ++it) {
    const std::string attribute = (*it)[1];
    const std::string value = (*it)[2];
    EXPECT_TRUE(kAttributes.contains(attribute)) << attribute;
    for (const std::string& name : SetOf(value)) {
      if (attribute == "class" && name != "limits" && name != "o3") {
        EXPECT_THAT(page, HasSubstr("." + name)) << "has no style";
      } else if (attribute == "aria-labelledby" || attribute == "href") {
        EXPECT_THAT(page, HasSubstr("id=\"" + name.substr(name[0] == '#' ? 1 : 0) + "\""));
      }
    }
  }
}

// Tags that close in order, quoted attributes, no stray mark.
void ExpectWellFormed(const std::string& page) {
  static const std::regex kTag(R"(<(/?)([a-zA-Z][a-zA-Z0-9]*)((?:\s+[\w:-]+="[^"<>]*")*)\s*(/?)>)");
  static const std::regex kText(R"((?:[^<>&]|&(?:amp|lt|gt|quot|#39);)*)");
  std::vector<std::string> open;
  std::size_t at = page.find('\n');  // behind the document type
  const auto text = [&](std::size_t end) {
    const std::string between = page.substr(at, end - at);
    EXPECT_TRUE(between.size() > 4000 || std::regex_match(between, kText)) << between;
  };
  for (std::sregex_iterator it(page.begin(), page.end(), kTag), end; it != end; ++it) {
    text(static_cast<std::size_t>(it->position()));
    at = static_cast<std::size_t>(it->position() + it->length());
    const std::string name = (*it)[2];
    ExpectKnown(page, name, (*it)[3]);
    if ((*it)[1].length() == 0) {
      if ((*it)[4].length() == 0) open.push_back(name);
    } else {
      ASSERT_FALSE(open.empty());
      ASSERT_EQ(open.back(), name) << page.substr(at > 300 ? at - 300 : 0, 300);
      open.pop_back();
    }
  }
  text(page.size());
  EXPECT_THAT(open, IsEmpty());
}

TEST_F(Document, IsOneWellFormedFileThatNeedsNothing) {
  Take(recorder, Sample("moored.log"));
  Add("A", recorder);
  options.meta.title = "<b>&\"'\x01\xFF";
  options.meta.note = "Quay 3 <script>";
  const TrialFigures figures = WorkOut(systems, options);
  const std::string page = ToHtml(figures);
  ExpectWellFormed(page);
  EXPECT_THAT(page, HasSubstr("<h1>&lt;b&gt;&amp;&quot;&#39;\uFFFD\uFFFD</h1>"));
  for (const char* outside : {"<script", "<link", "src=", "href=\"http", "url(h", "@import"}) {
    EXPECT_THAT(page, Not(HasSubstr(outside)));
  }
  EXPECT_EQ(page, ToHtml(figures));
  // Every colour that is named has its value by day and in the dark.
  const auto colours = [&page](const char* form) {
    std::map<std::string, int> counts;
    const std::regex named(form);
    for (std::sregex_iterator it(page.begin(), page.end(), named), end; it != end; ++it) {
      ++counts[(*it)[1]];
    }
    return counts;
  };
  const auto given = colours("--([a-z]+\\d*):#");
  for (const auto& [name, count] : colours("var\\(--([a-z]+\\d*)\\)")) {
    EXPECT_TRUE(given.contains(name) && given.at(name) == 2) << name;
  }
  // The day is told once, not with every time.
  EXPECT_THAT(Seen(page), Not(HasSubstr("2026-01-02T03:13")));

  systems.clear();
  const SystemRecorder nothing;
  Add("A", nothing);
  ExpectWellFormed(ToHtml(WorkOut(systems, options)));
}

// But for what is cut off at a frame.
void ExpectDrawnWithinThePictures(const std::string& page) {
  static const std::regex kFrame(R"re(viewBox="0 0 ([\d.]+) ([\d.]+)")re");
  static const std::regex kPlace(R"re( (c?[xy])\d?="(-?[\d.]+)")re");
  static const std::regex kPoint(R"([ML](-?[\d.]+)[ ,](-?[\d.]+))");
  for (auto at = page.find("<svg "); at != std::string::npos; at = page.find("<svg ", at + 1)) {
    std::string picture = page.substr(at, page.find("</svg>", at) - at);
    for (auto cut = picture.find("<g clip"); cut != std::string::npos;
         cut = picture.find("<g clip")) {
      picture.erase(cut, picture.find("</g>", cut) - cut);
    }
    std::smatch frame;
    ASSERT_TRUE(std::regex_search(picture, frame, kFrame));
    const auto expect = [&](const std::string& number, bool across) {
      EXPECT_GE(ReadNumber(number), 0.0) << picture.substr(0, 200);
      EXPECT_LE(ReadNumber(number), ReadNumber(frame[across ? 1 : 2].str()))
          << picture.substr(0, 200);
    };
    const std::sregex_iterator end;
    for (std::sregex_iterator it(picture.begin(), picture.end(), kPlace); it != end; ++it) {
      expect((*it)[2], (*it)[1].str().back() == 'x');
    }
    for (std::sregex_iterator it(picture.begin(), picture.end(), kPoint); it != end; ++it) {
      expect((*it)[1], true);
      expect((*it)[2], false);
    }
  }
}

// page.lst is read through by whoever changes it: it is what the pages are meant to say.
TEST_F(Document, SaysWhatIsListedAndDrawsWithinItsPictures) {
  std::string seen;
  const auto add = [&](const char* name, const char* sample) {
    SystemRecorder& kept = recorders.emplace_back();
    Take(kept, Sample(sample));
    Add(name, kept);
    TrialFigures figures = WorkOut(systems, options);
    JudgeLimits(figures, {ReadLimit("availability.share>=0.5"), ReadLimit("ais.own.n>2")});
    const std::string page = ToHtml(figures);
    ExpectWellFormed(page);
    ExpectDrawnWithinThePictures(page);
    std::ostringstream summary;
    WriteSummary(figures, summary);
    static const std::regex kNumber(R"(-?\d+(\.\d+)?)");
    seen += Seen(page, Pictures::With) + std::regex_replace(summary.str(), kNumber, "#");
  };
  add("A", "moored.log");
  add("B", "voyage.log");
  systems.clear();
  options.meta = {};
  add("C", "satellites.log");
  EXPECT_EQ(Words(seen), ReadWholeFile(kSourceFolder + "/tests/trial/page.lst"));
}

TEST(FigureWords, AllStandInTheReadersText) {
  const std::string text = ReadWholeFile(kSourceFolder + "/docs/trial.md");
  for (const FigureWords& row : words::kFigures) {
    const std::string key(row.key.substr(row.key.find('.') + 1));
    EXPECT_NE(text.find("`" + key + "`"), std::string::npos) << key;
  }
}

}  // namespace
}  // namespace fathomline::trial
