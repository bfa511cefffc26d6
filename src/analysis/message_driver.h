// What happens to a sentence after its decoder has filled the record: the clock of its system, the
// reference, the means, and then everybody who is to see it, in a fixed order.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "analysis/sentence_clock.h"
#include "analysis/statistics.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "records/records.h"

namespace fathomline {

// The views that follow the sentences, each called with the system and the type. A view that does
// not stand is left at doing nothing.
class MessageViews {
 public:
  virtual ~MessageViews() = default;
  virtual void UpdateNumerics(int /*system*/, SentenceType /*type*/) {}
  virtual void UpdateARPATargets(int /*system*/, SentenceType /*type*/) {}
  virtual void UpdateAISTargets(int /*system*/, SentenceType /*type*/) {}
  virtual void UpdateStatisticsView(int /*system*/, SentenceType /*type*/) {}
  // The clock of a replay has been told: the points so far have no time of their own.
  virtual void RestartSeries(int /*system*/) {}
  virtual void UpdateTimeSeries(int /*system*/, SentenceType /*type*/) {}
  virtual void UpdateScatter(int /*system*/, SentenceType /*type*/) {}
  virtual void UpdateSkyplot(int /*system*/) {}
  virtual void UpdateSatelliteTracking(int /*system*/) {}
};

class MessageDriver {
 public:
  MessageDriver(Records& records, Statistics& statistics, const Clock& clock, Dialogs& dialogs,
                MessageViews& views);

  // A replay begins from rest.
  void BeginReplay();
  void KnowDates(int system, RecordedDates dates) {
    sentenceClock_.KnowDates(system, std::move(dates));
  }

  // Takes the latest sentence of a type through all steps. A type that is not analysed by the
  // system ends at once. Raises TypeMismatch for a GLL or RMC whose time, an RMC whose date, or a
  // ZDA whose year cannot be read; the rest of the steps is then skipped.
  void ProcessMessage(int system, SentenceType type);

 private:
  // What GGA, GNS, GLL and RMC have in common; the last two carry no altitude.
  struct PositionSample {
    std::string_view time;
    double latitude;
    double longitude;
    std::optional<float> altitude;
    bool usable;
  };

  // What the types do of their own before all others are served alike.
  void RunStage(int system, SentenceType type);
  // Scatter and sky plot, which follow a few types only.
  void UpdatePlots(int system, SentenceType type);
  void TakePosition(int system, const PositionSample& sample);
  void StageGGA(int system);
  void StageGNS(int system);
  void StageGLL(int system);
  void StageRMC(int system);
  void StageHDT(int system);
  void StageATT(int system);
  void StageUnknown(SentenceType type);
  void MoveReferenceToMean(int system);
  std::string_view MessageTimeText(int system);

  // The text of a sentence time, made once for all sentences of the same second.
  struct TimeText {
    DateTime of;
    std::string text;
  };

  Records& records_;
  Statistics& statistics_;
  const Clock& clock_;
  Dialogs& dialogs_;
  MessageViews& views_;
  SentenceClock sentenceClock_;
  PerSystem<TimeText> timeTexts_;
};

}  // namespace fathomline
