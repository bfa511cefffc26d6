#include "base/clock.h"

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

}  // namespace fathomline
