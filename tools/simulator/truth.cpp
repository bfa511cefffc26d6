#include "simulator/truth.h"

#include <algorithm>

namespace fathomline::simulator {

void RunningFigure::Add(double value) {
  ++count_;
  min_ = count_ == 1 ? value : std::min(min_, value);
  max_ = count_ == 1 ? value : std::max(max_, value);
  const double difference = value - mean_;
  mean_ += difference / static_cast<double>(count_);
  squares_ += difference * (value - mean_);
}

}  // namespace fathomline::simulator
