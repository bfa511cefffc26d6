// Tables of a trial's document, made from the layouts of the figures, so that what stands in the
// JSON stands in the document, with the same digits.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "trial/figure_words.h"
#include "trial/svg_picture.h"
#include "trial/trial_figures.h"

namespace fathomline::trial {

// What stands where no figure is.
inline constexpr std::string_view kNoFigure = "–";

inline constexpr std::string_view kBehindDate = "<wbr/>";

// Cells, as HTML.
std::string Cell(double value, int decimals);
std::string Cell(const Value& value, int decimals);
std::string Cell(Count count);
std::string Cell(const std::optional<Count>& count);
std::string Cell(const At& at);  // with kBehindDate behind its date, where it may break
std::string Cell(const std::string& text);
std::string Cell(const std::optional<std::string>& text);
std::string Cell(bool flag);
// Two of them under each other.
std::string Stacked(const std::string& above, const std::string& below);

// The cells of a block, by key; those of a block within are called "gaps.n". Lists are left out. A
// block that has no figures says why in its first cell.
class FigureCells {
 public:
  template <class Block>
  explicit FigureCells(const Block& block) {
    Add(block, "", {});
  }

  // "–" for a key that is not there.
  const std::string& operator[](std::string_view key) const;
  const std::vector<std::pair<std::string, std::string>>& All() const { return cells_; }

 private:
  template <class Type>
  struct IsList : std::false_type {};
  template <class Item>
  struct IsList<std::vector<Item>> : std::true_type {};

  template <class Block>
  void Add(const Block& block, const std::string& prefix, std::string_view why) {
    if constexpr (requires { block.why; }) why = why.empty() ? block.why : why;
    std::apply(
        [&](const auto&... figures) {
          (AddFigure(prefix + std::string(figures.key), block.*figures.member, figures.decimals,
                     why),
           ...);
        },
        Block::Layout());
  }

  template <class Member>
  void AddFigure(const std::string& key, const Member& member, int decimals,
                 std::string_view& why) {
    if constexpr (IsList<Member>::value) {
      return;
    } else if constexpr (requires { Member::Layout(); }) {
      Add(member, key + ".", why);
    } else if constexpr (std::is_same_v<Member, double> || std::is_same_v<Member, Value>) {
      Keep(key, Cell(member, decimals), why);
    } else {
      Keep(key, Cell(member), why);
    }
  }

  void Keep(const std::string& key, std::string cell, std::string_view& why);

  std::vector<std::pair<std::string, std::string>> cells_;
};

// One table. Heads and cells are HTML; the first cell of a row names it.
class HtmlTable {
 public:
  explicit HtmlTable(std::string_view caption, std::string_view cls = {});

  // Two heads in one cell are parted by '\n'.
  void Heads(const std::vector<std::string>& heads);
  void Row(const std::string& head, const std::vector<std::string>& cells,
           std::string_view cls = {});
  std::string Finish() &&;

 private:
  std::string opening_;
  std::string text_;
  int rows_ = 0;
};

// "R95, m", and its meaning in small below.
std::string WordedHead(std::string_view key, bool meaning = true);

// One block beside the other under each other's figures.
template <class Block>
struct FigureColumn {
  std::string head;
  const Block* block;
};

// A row for each of the keys, or for all of them if none are given.
template <class Block>
std::string FigureTable(std::string_view caption, const std::vector<FigureColumn<Block>>& columns,
                        std::vector<std::string_view> keys = {}) {
  // Meanings have room beside the names of the rows only where columns are few.
  HtmlTable table(caption, columns.size() > 3 ? "wide" : columns.size() > 2 ? "below" : "beside");
  std::vector<std::string> heads = {""};
  std::vector<FigureCells> cells;
  for (const auto& column : columns) {
    heads.push_back(column.head);
    cells.emplace_back(*column.block);
  }
  table.Heads(heads);
  if (keys.empty() && !cells.empty()) {
    for (const auto& cell : cells.front().All()) keys.emplace_back(cell.first);
  }
  for (const std::string_view key : keys) {
    std::vector<std::string> row;
    row.reserve(cells.size());
    for (const FigureCells& column : cells) row.push_back(column[key]);
    table.Row(WordedHead(key), row);
  }
  return std::move(table).Finish();
}

}  // namespace fathomline::trial
