#include "toolkit/series.h"

#include <cmath>
#include <utility>

namespace fathomline {

std::optional<AxisRange> Series::Extremes::Range() const {
  if (low > high) return {};
  return AxisRange{low, high};
}

Series::Series(std::uint64_t& changes, SeriesDesign design)
    : changes_(changes), design_(std::move(design)) {}

void Series::SetDesign(const SeriesDesign& design) {
  if (design_ == design) return;
  design_ = design;
  ++changes_;
}

void Series::SetTitle(std::string_view title) {
  if (design_.title == title) return;
  design_.title = title;
  ++changes_;
}

void Series::SetColour(Colour colour) {
  if (design_.colour == colour) return;
  design_.colour = colour;
  ++changes_;
}

void Series::SetHidden(bool hidden) {
  if (hidden_ == hidden) return;
  hidden_ = hidden;
  ++changes_;
}

void Series::AddNull(double x) {
  Append(x, x, 0.0F, kNullPoint);
}

void Series::Append(double x, double end, float y, Colour colour) {
  if (blocks_.empty() || blocks_.back().points.size() == kBlockSize) blocks_.emplace_back();
  Block& block = blocks_.back();
  block.points.push_back({x, y, colour});
  block.uniform = block.uniform && colour != kNullPoint && colour == block.points.front().colour &&
                  std::isfinite(y);
  if (design_.kind == SeriesKind::Gantt) block.ends.push_back(end);
  for (Extremes* extremes : {&block.x, &x_}) {
    extremes->Include(x);
    extremes->Include(end);
  }
  if (colour != kNullPoint) {
    block.y.Include(static_cast<double>(y));
    y_.Include(static_cast<double>(y));
  }
  ++count_;
  ++changes_;
}

// The point at that place no longer counts for the extremes.
void Series::Forget(Block& block, std::size_t at) {
  const Stored& stored = block.points[at];
  const double end = at < block.ends.size() ? block.ends[at] : stored.x;
  for (Extremes* extremes : {&block.x, &x_}) {
    extremes->Exclude(stored.x);
    extremes->Exclude(end);
  }
  if (stored.colour == kNullPoint) return;
  block.y.Exclude(static_cast<double>(stored.y));
  y_.Exclude(static_cast<double>(stored.y));
}

void Series::DeleteOldest() {
  const std::size_t block = Position(0) / kBlockSize;
  if (count_ == 1) {
    Clear();
    return;
  }
  Forget(blocks_[block], first_ % kBlockSize);
  --count_;
  ++changes_;
  if (++first_ % kBlockSize != 0) return;
  blocks_[block] = {};
  // Closing up costs a step per block that is left, so it waits until that is little.
  if (2 * (block + 1) < blocks_.size()) return;
  blocks_.erase(blocks_.begin(), blocks_.begin() + static_cast<std::ptrdiff_t>(block + 1));
  first_ = 0;
}

void Series::Delete(int index) {
  const std::size_t position = Position(index);
  if (index == 0) {
    DeleteOldest();
    return;
  }
  Forget(blocks_[position / kBlockSize], position % kBlockSize);
  const std::size_t last = Position(count_ - 1);
  for (std::size_t i = position; i < last; ++i) {
    Block& to = blocks_[i / kBlockSize];
    const Block& from = blocks_[(i + 1) / kBlockSize];
    to.points[i % kBlockSize] = from.points[(i + 1) % kBlockSize];
    if (!to.ends.empty()) to.ends[i % kBlockSize] = from.ends[(i + 1) % kBlockSize];
    to.x.known = false;
    to.y.known = false;
    to.uniform = false;
  }
  Block& block = blocks_.back();
  block.points.pop_back();
  if (!block.ends.empty()) block.ends.pop_back();
  block.x.known = false;
  block.y.known = false;
  if (block.points.empty()) blocks_.pop_back();
  --count_;
  ++changes_;
}

void Series::KeepWithin(const AxisRange& x) {
  while (count_ > 0 && At(0).end < x.low) DeleteOldest();
  const auto range = RangeX();
  // A bar that began early may go on into the span; those that do not come to be the oldest.
  const bool early = range && range->low < x.low && design_.kind != SeriesKind::Gantt;
  if (!range || (!early && range->high <= x.high)) return;
  Series kept(changes_, design_);
  for (int i = 0; i < count_; ++i) {
    const Point point = At(i);
    if (point.end < x.low || point.x > x.high) continue;
    kept.Append(point.x, point.end, point.y, point.null ? kNullPoint : point.colour);
  }
  if (kept.count_ == count_) return;
  blocks_ = std::move(kept.blocks_);
  x_ = kept.x_;
  y_ = kept.y_;
  first_ = 0;
  count_ = kept.count_;
  ++changes_;
}

void Series::Clear() {
  if (count_ == 0) return;
  blocks_.clear();
  x_ = {};
  y_ = {};
  first_ = 0;
  count_ = 0;
  ++changes_;
}

void Series::CountX(Block& block, std::size_t from) {
  if (block.x.known) return;
  block.x = {};
  for (std::size_t i = from; i < block.points.size(); ++i) block.x.Include(block.points[i].x);
  for (std::size_t i = from; i < block.ends.size(); ++i) block.x.Include(block.ends[i]);
}

void Series::CountY(Block& block, std::size_t from) {
  if (block.y.known) return;
  block.y = {};
  for (std::size_t i = from; i < block.points.size(); ++i) {
    const Stored& stored = block.points[i];
    if (stored.colour != kNullPoint) block.y.Include(static_cast<double>(stored.y));
  }
}

// The one axis or the other: x becomes unknown with every point that ages out, y seldom.
template <void (*Count)(Series::Block&, std::size_t)>
void Series::Recount(Extremes Block::*axis, Extremes& all) const {
  all = {};
  std::size_t from = first_ % kBlockSize;
  for (std::size_t i = first_ / kBlockSize; i < blocks_.size(); ++i) {
    Count(blocks_[i], from);
    all.Include(blocks_[i].*axis);
    from = 0;
  }
}

Series::Stretch Series::StretchAt(int index) const {
  if (index < 0 || index >= StretchCount()) Raise(FaultNumber::OutOfRange);
  const std::size_t at = first_ / kBlockSize + static_cast<std::size_t>(index);
  Block& block = blocks_[at];
  const std::size_t from = index == 0 ? first_ % kBlockSize : 0;
  CountX(block, from);
  CountY(block, from);
  const int begin = static_cast<int>(at * kBlockSize) - static_cast<int>(first_);
  return {begin + static_cast<int>(from),
          begin + static_cast<int>(block.points.size()),
          {block.x.low, block.x.high},
          block.y.Range(),
          block.uniform};
}

std::optional<AxisRange> Series::RangeX() const {
  if (!x_.known) Recount<CountX>(&Block::x, x_);
  return x_.Range();
}

std::optional<AxisRange> Series::RangeY() const {
  if (!y_.known) Recount<CountY>(&Block::y, y_);
  return y_.Range();
}

}  // namespace fathomline
