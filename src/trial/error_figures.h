// Figures of what is compared with something: errors of positions, heights and angles, and what the
// receiver claims of them. Each block lists its figures as figure_layout.h says.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "trial/figure_layout.h"

namespace fathomline::trial {

struct HorizontalErrors {
  std::string_view why;
  Count n = 0;
  Value biasNorth, biasEast, stdNorth, stdEast, drms, twoDrms, r50, r68, r95, r99, largest;
  At largestAt;

  static constexpr auto Layout() {
    using B = HorizontalErrors;
    constexpr int kM = decimals::kLength;
    return std::tuple{Figure{"n", &B::n},
                      Figure{"bias_north_m", &B::biasNorth, kM},
                      Figure{"bias_east_m", &B::biasEast, kM},
                      Figure{"std_north_m", &B::stdNorth, kM},
                      Figure{"std_east_m", &B::stdEast, kM},
                      Figure{"drms_m", &B::drms, kM},
                      Figure{"2drms_m", &B::twoDrms, kM},
                      Figure{"r50_m", &B::r50, kM},
                      Figure{"r68_m", &B::r68, kM},
                      Figure{"r95_m", &B::r95, kM},
                      Figure{"r99_m", &B::r99, kM},
                      Figure{"largest_m", &B::largest, kM},
                      Figure{"largest_at", &B::largestAt}};
  }
};

struct VerticalErrors {
  std::string_view why;
  Count n = 0;
  Value bias, std, rms, p50, p68, p95, p99, largest;
  At largestAt;

  static constexpr auto Layout() {
    using B = VerticalErrors;
    constexpr int kM = decimals::kLength;
    return std::tuple{Figure{"n", &B::n},
                      Figure{"bias_m", &B::bias, kM},
                      Figure{"std_m", &B::std, kM},
                      Figure{"rms_m", &B::rms, kM},
                      Figure{"p50_m", &B::p50, kM},
                      Figure{"p68_m", &B::p68, kM},
                      Figure{"p95_m", &B::p95, kM},
                      Figure{"p99_m", &B::p99, kM},
                      Figure{"largest_m", &B::largest, kM},
                      Figure{"largest_at", &B::largestAt}};
  }
};

// The ellipse that holds 95% of normally distributed errors about their mean.
struct ErrorEllipse {
  std::string_view why;
  Value semiMajor, semiMinor;
  Value direction;  // of the long axis, from north, 0 to below 180
  Value insideShare;

  static constexpr auto Layout() {
    using B = ErrorEllipse;
    return std::tuple{Figure{"semi_major_m", &B::semiMajor, decimals::kLength},
                      Figure{"semi_minor_m", &B::semiMinor, decimals::kLength},
                      Figure{"direction_deg", &B::direction, decimals::kDirection},
                      Figure{"inside_share", &B::insideShare, decimals::kShare}};
  }
};

struct Horizontal {
  HorizontalErrors reference, mean;
  ErrorEllipse ellipse;
};

struct Vertical {
  VerticalErrors reference, mean;
};

struct AngleErrors {
  std::string name;
  std::string_view why;  // with `name` and `n`
  Count n = 0;
  Value reference, mean, bias, std, rms, p50, p68, p95, p99;
  Value largest;  // with its sign
  At largestAt;

  static constexpr auto Layout() {
    using B = AngleErrors;
    constexpr int kDegrees = decimals::kLength;
    return std::tuple{Figure{"name", &B::name},
                      Figure{"n", &B::n},
                      Figure{"reference_deg", &B::reference, kDegrees},
                      Figure{"mean_deg", &B::mean, kDegrees},
                      Figure{"bias_deg", &B::bias, kDegrees},
                      Figure{"std_deg", &B::std, kDegrees},
                      Figure{"rms_deg", &B::rms, kDegrees},
                      Figure{"p50_deg", &B::p50, kDegrees},
                      Figure{"p68_deg", &B::p68, kDegrees},
                      Figure{"p95_deg", &B::p95, kDegrees},
                      Figure{"p99_deg", &B::p99, kDegrees},
                      Figure{"largest_deg", &B::largest, kDegrees},
                      Figure{"largest_at", &B::largestAt}};
  }
};

struct QualityFigures {
  int quality = 0;
  Count epochs = 0;
  Value share;
  Horizontal horizontal;
  Vertical vertical;
};

struct ClaimAxis {
  std::string_view why;
  Count n = 0;
  Value within1, within2, rmsRatio;

  static constexpr auto Layout() {
    using B = ClaimAxis;
    return std::tuple{Figure{"n", &B::n}, Figure{"within_1_share", &B::within1, decimals::kShare},
                      Figure{"within_2_share", &B::within2, decimals::kShare},
                      Figure{"rms_ratio", &B::rmsRatio, decimals::kShare}};
  }
};

// What the receiver claims in GST against what happened.
struct Claim {
  std::string_view why;
  std::optional<std::string> talker;
  ClaimAxis north, east, up;
};

}  // namespace fathomline::trial
