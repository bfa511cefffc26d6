// The systems that the program follows. They are numbered 1 to 4; 1 is the primary system.
#pragma once

#include <array>
#include <cstddef>

#include "base/fault.h"

namespace fathomline {

inline constexpr int kSystems = 4;

// A table of one row per system, addressed by the system's number. Raises OutOfRange outside it.
template <class Row>
class PerSystem {
 public:
  Row& operator[](int system) { return rows_[Index(system)]; }
  const Row& operator[](int system) const { return rows_[Index(system)]; }
  auto begin() { return rows_.begin(); }
  auto end() { return rows_.end(); }
  auto begin() const { return rows_.begin(); }
  auto end() const { return rows_.end(); }
  void Fill(const Row& row) { rows_.fill(row); }

 private:
  static std::size_t Index(int system) {
    if (system < 1 || system > kSystems) Raise(FaultNumber::OutOfRange);
    return static_cast<std::size_t>(system - 1);
  }

  std::array<Row, kSystems> rows_{};
};

}  // namespace fathomline
