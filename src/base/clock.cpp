#include "base/clock.h"

#include <chrono>
#include <cmath>
#include <ctime>

#include "base/system.h"

namespace fathomline {
namespace {

std::time_t UnixNow() {
  return std::time(nullptr);
}

}  // namespace

DateTime SystemClock::NowUtc() const {
  return FromUnixSeconds(static_cast<double>(UnixNow()));
}

DateTime SystemClock::NowLocal() const {
  const std::time_t now = UnixNow();
  if (now / 60 != zoneMinute_) {
    zoneMinute_ = now / 60;
    zoneSeconds_ = static_cast<double>(LocalOffset(now).count());
  }
  return FromUnixSeconds(static_cast<double>(now) + zoneSeconds_);
}

DateTime SystemClock::NowLocalExact() const {
  const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
  const DateTime zone = NowLocal() - NowUtc();
  return FromUnixSeconds(now.count()) + DateTime{std::round(zone.days * 96.0) / 96.0};
}

}  // namespace fathomline
