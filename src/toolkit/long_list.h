// A list of so many rows, coming and going so fast, that nobody keeps their texts: it asks its
// source for those that are looked at.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/control.h"

namespace fathomline {

// Rows count from 0, the oldest first; new ones come at the end, and old ones go from the front.
class LongListSource {
 public:
  virtual ~LongListSource() = default;
  virtual int Rows() const = 0;
  // How many rows have gone from the front, in all.
  virtual std::uint64_t Gone() const = 0;
  // Empty for a row that has gone meanwhile.
  virtual std::string Cell(int row, int column) const = 0;
};

class LongList : public Control {
 public:
  struct Column {
    std::string head;
    int characters = 10;   // for which it has room; the last column takes what there is
    std::string tip = {};  // what the head means
  };
  // Rows by the number that they keep: their place and those gone before. Both ends belong to it.
  struct Range {
    std::uint64_t first = 0;
    std::uint64_t last = 0;

    bool operator==(const Range&) const = default;
  };

  LongList(Parent parent, std::string_view name, std::vector<Column> columns,
           const LongListSource& source)
      : Control(ControlKind::LongList, parent, name),
        columns_(std::move(columns)),
        source_(source) {}

  const std::vector<Column>& Columns() const { return columns_; }
  const LongListSource& Source() const { return source_; }

  // Rows have come or gone.
  void Follow() { Touch(); }
  // The rows are other ones than before.
  void Restart();
  std::uint64_t Restarts() const { return restarts_; }

  // Picks out a row and brings it into view; raises OutOfRange.
  void SelectRow(int row);
  // Grows with it, for the face.
  std::uint64_t Marks() const { return marks_; }
  const std::vector<Range>& Selection() const { return selection_; }

  // The user has selected these, in their order.
  void UserSelect(std::vector<Range> selection);
  // The user copies what is selected, or all where nothing is.
  void Copy();
  std::function<void()> onCopy;

 protected:
  void Reset() override;

 private:
  std::vector<Column> columns_;
  const LongListSource& source_;
  std::vector<Range> selection_;
  std::uint64_t restarts_ = 0;
  std::uint64_t marks_ = 0;
};

}  // namespace fathomline
