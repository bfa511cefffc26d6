// A simulated session: a stream of sentences and the truth that they were made from.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "simulator/instrument_sentences.h"
#include "simulator/receiver.h"
#include "simulator/sentence_writer.h"
#include "simulator/traffic.h"
#include "simulator/traffic_reports.h"
#include "simulator/truth.h"
#include "simulator/vessel.h"

namespace fathomline::simulator {

inline constexpr double kLowestRate = 0.001;  // Hz
inline constexpr double kHighestRate = 1000.0;

struct SimulationOptions {
  const Scenario* scenario = nullptr;
  std::uint64_t seed = 1;
  double duration = 600.0;              // seconds
  DateTime start;                       // UTC, whole seconds
  std::vector<SentenceRate> sentences;  // at most one of a kind; rates within the limits above
  bool crLf = false;
};

// How often a kind comes in a scenario, in Hz. A rate asked for holds for the fast kinds; the
// others keep their own where that is lower. The reports of other ships keep their intervals.
double UsualRate(const Scenario& scenario, SentenceKind kind, std::optional<double> rate);
// The sentences that a scenario has when nothing else is asked for.
std::vector<SentenceRate> UsualSentences(const Scenario& scenario, std::optional<double> rate);

// The lines of one moment.
struct Epoch {
  SimulatedTime time = 0;
  LineBatch lines;
  std::optional<FixTruth> fix;  // where the receiver took one
};

// The same options give the same bytes on every machine. Memory does not grow with the duration.
class Simulator {
 public:
  explicit Simulator(const SimulationOptions& options);
  Simulator(const Simulator&) = delete;
  Simulator& operator=(const Simulator&) = delete;

  // The next moment at which anything is sent; false when the duration is over. Time rises from
  // epoch to epoch. An epoch may be used again for the next, which saves its memory.
  bool NextEpoch(Epoch& epoch);

  // Of all epochs so far.
  const SimulationTruth& Truth() const { return truth_; }

 private:
  struct Schedule {
    SentenceRate sentence;
    std::int64_t sent = 0;
    SimulatedTime due = 0;
  };

  SimulationOptions options_;
  SimulatedTime end_;
  UtcCalendar calendar_;
  Vessel vessel_;
  GNSSReceiver receiver_;
  Traffic traffic_;
  Instruments instruments_;
  std::optional<TrafficReports> reports_;
  OwnReports ownReports_;
  std::vector<Schedule> schedules_;
  SimulationTruth truth_;
};

}  // namespace fathomline::simulator
