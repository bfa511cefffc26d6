#include "trial/figure_layout.h"

#include <array>
#include <charconv>
#include <cmath>

namespace fathomline::trial {
namespace {

constexpr auto kPowersOfTen =
    std::to_array<double>({1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9});

}  // namespace

double Rounded(double value, int decimals) {
  const double power = kPowersOfTen[static_cast<std::size_t>(decimals)];
  const double scaled = std::round(value * power) / power;
  // A value beyond the digits of a double stays; no figure is a negative zero.
  return std::isfinite(scaled) ? scaled + 0.0 : value;
}

std::string FigureText(double value, int decimals) {
  std::array<char, 400> text{};
  const auto written = std::to_chars(text.data(), text.data() + text.size(),
                                     Rounded(value, decimals), std::chars_format::fixed, decimals);
  return std::string(text.data(), written.ptr);
}

}  // namespace fathomline::trial
