#include "toolkit/long_list.h"

#include <utility>

#include "toolkit/window.h"

namespace fathomline {

void LongList::Restart() {
  selection_.clear();
  ++restarts_;
  Touch();
}

void LongList::SelectRow(int row) {
  if (row < 0 || row >= source_.Rows()) Raise(FaultNumber::OutOfRange);
  const std::uint64_t number = source_.Gone() + static_cast<std::uint64_t>(row);
  selection_ = {{number, number}};
  ++marks_;
  Touch();
}

void LongList::UserSelect(std::vector<Range> selection) {
  selection_ = std::move(selection);
}

void LongList::Copy() {
  OwningWindow().UserAct(*this, [this] {
    if (onCopy) onCopy();
  });
}

void LongList::Reset() {
  Control::Reset();
  Restart();
}

}  // namespace fathomline
