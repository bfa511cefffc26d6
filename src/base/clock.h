// The present time, behind a seam so that tests and repeatable runs can freeze it.
#pragma once

#include "base/datetime.h"

namespace fathomline {

class Clock {
 public:
  virtual ~Clock() = default;
  // Whole seconds. The sentence clock runs on UTC; file names, logs and the status bar on local
  // time.
  virtual DateTime NowUtc() const = 0;
  virtual DateTime NowLocal() const = 0;
  // With its fraction of a second, where the clock has one.
  virtual DateTime NowLocalExact() const { return NowLocal(); }
};

class SystemClock : public Clock {
 public:
  DateTime NowUtc() const override;
  DateTime NowLocal() const override;
  DateTime NowLocalExact() const override;

 private:
  // The zone is asked for once a minute, since asking costs more than reading the clock.
  mutable long long zoneMinute_ = -1;
  mutable double zoneSeconds_ = 0.0;
};

// Stands still until it is set. UTC and local time are the same.
class FrozenClock : public Clock {
 public:
  explicit FrozenClock(DateTime now) : now_(now) {}
  DateTime NowUtc() const override { return now_; }
  DateTime NowLocal() const override { return now_; }
  void Set(DateTime now) { now_ = now; }

 private:
  DateTime now_;
};

}  // namespace fathomline
