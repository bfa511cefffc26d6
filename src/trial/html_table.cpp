#include "trial/html_table.h"

namespace fathomline::trial {
namespace {

const std::string& NoFigureCell() {
  static const std::string kCell(kNoFigure);
  return kCell;
}

}  // namespace

std::string Cell(double value, int decimals) {
  return FigureText(value, decimals);
}

std::string Cell(const Value& value, int decimals) {
  return value ? FigureText(*value, decimals) : NoFigureCell();
}

std::string Cell(Count count) {
  return std::to_string(count);
}

std::string Cell(const std::optional<Count>& count) {
  return count ? Cell(*count) : NoFigureCell();
}

std::string Cell(const At& at) {
  if (!at) return NoFigureCell();
  std::string text = ToText(*at);
  text.insert(text.find('T') + 1, kBehindDate);
  return text;
}

std::string Cell(const std::string& text) {
  return EscapedXml(text);
}

std::string Cell(const std::optional<std::string>& text) {
  return text ? EscapedXml(*text) : NoFigureCell();
}

std::string Cell(bool flag) {
  return flag ? "yes" : "no";
}

std::string Stacked(const std::string& above, const std::string& below) {
  return above + "<br/>" + below;
}

const std::string& FigureCells::operator[](std::string_view key) const {
  const auto found = std::find_if(cells_.begin(), cells_.end(),
                                  [key](const auto& cell) { return cell.first == key; });
  return found == cells_.end() ? NoFigureCell() : found->second;
}

// A name stands even where the figures do not.
void FigureCells::Keep(const std::string& key, std::string cell, std::string_view& why) {
  if (why.empty() || key == "name") {
    cells_.emplace_back(key, std::move(cell));
    return;
  }
  // Said once; the rest is left empty.
  const bool said = why == kNoFigure;
  cells_.emplace_back(key, said ? NoFigureCell() : "<i>" + EscapedXml(why) + "</i>");
  why = kNoFigure;
}

HtmlTable::HtmlTable(std::string_view caption, std::string_view cls) {
  const std::string name = EscapedXml(caption);
  opening_ = "\" tabindex=\"0\" role=\"region\" aria-label=\"" + name + "\">\n<table";
  if (!cls.empty()) opening_ += " class=\"" + std::string(cls) + "\"";
  opening_ += ">\n<caption>" + name + "</caption>\n";
}

void HtmlTable::Heads(const std::vector<std::string>& heads) {
  text_ += "<thead><tr>";
  for (const std::string& head : heads) {
    std::string broken = head;
    const std::size_t line = broken.find('\n');
    if (line != std::string::npos) broken.replace(line, 1, "<br/>");
    text_ += head.empty() ? "<td></td>" : "<th scope=\"col\">" + broken + "</th>";
  }
  text_ += "</tr></thead>\n<tbody>\n";
}

void HtmlTable::Row(const std::string& head, const std::vector<std::string>& cells,
                    std::string_view cls) {
  text_ += cls.empty() ? "<tr>" : "<tr class=\"" + std::string(cls) + "\">";
  text_ += "<th scope=\"row\">" + head + "</th>";
  for (const std::string& cell : cells) text_ += "<td>" + cell + "</td>";
  text_ += "</tr>\n";
  ++rows_;
}

// On paper a short table stays on one page.
std::string HtmlTable::Finish() && {
  constexpr int kShort = 14;
  return (rows_ > kShort ? "<div class=\"scroll" : "<div class=\"scroll short") + opening_ + text_ +
         "</tbody></table></div>\n";
}

std::string WordedHead(std::string_view key, bool meaning) {
  const FigureWords row = WordsOf(key);
  std::string head(row.label);
  if (!row.unit.empty()) head += ", " + std::string(row.unit);
  if (!meaning || row.meaning.empty()) return head;
  return "<span>" + head + "</span><small>" + EscapedXml(row.meaning) + "</small>";
}

}  // namespace fathomline::trial
