// When the targets report by AIS, and what.
#pragma once

#include <cstdint>
#include <queue>

#include "simulator/ais_encoder.h"
#include "simulator/receiver.h"
#include "simulator/traffic.h"

namespace fathomline::simulator {

class TrafficReports {
 public:
  // `rate` shortens the reporting intervals of the standard by that factor.
  TrafficReports(const Traffic& traffic, const LocalMap& map, std::uint64_t seed, double rate);

  // When the next report is due; beyond every time where there is nobody to report.
  SimulatedTime NextDue() const;
  // Writes the report that is due first and plans its successor.
  void WriteNext(SentenceWriter& writer, const UtcMoment& moment);

 private:
  struct Report {
    SimulatedTime due;
    int target;
    bool isStatic;

    // The earliest comes first in the queue; the target decides between two of the same moment.
    friend bool operator<(const Report& a, const Report& b) {
      if (a.due != b.due) return a.due > b.due;
      if (a.target != b.target) return a.target > b.target;
      return a.isStatic > b.isStatic;
    }
  };
  double Interval(const Report& report, const TargetMotion& motion) const;
  void WritePosition(SentenceWriter& writer, const Report& report, const TargetMotion& motion,
                     const UtcMoment& moment);
  void WriteStatic(SentenceWriter& writer, const Report& report, const TargetMotion& motion,
                   const UtcMoment& moment);

  const Traffic& traffic_;
  LocalMap map_;
  double rate_;
  std::priority_queue<Report> queue_;
  AISSentences sentences_;
  int slot_ = 0;
};

// Our own vessel's reports, in VDO sentences.
class OwnReports {
 public:
  // A position report by the receiver's fix, and at times the static data.
  void Write(SentenceWriter& writer, const VesselState& vessel, const ReceiverFix& fix,
             const UtcMoment& moment);

 private:
  TargetIdentity identity_ = OwnIdentity();
  AISSentences sentences_;
  int count_ = 0;
};

}  // namespace fathomline::simulator
