#include "analysis/message_driver.h"

#include <cmath>

#include "base/numbers.h"
#include "base/text.h"

namespace fathomline {

MessageDriver::MessageDriver(Records& records, Statistics& statistics, const Clock& clock,
                             Dialogs& dialogs, MessageViews& views)
    : records_(records),
      statistics_(statistics),
      clock_(clock),
      dialogs_(dialogs),
      views_(views),
      sentenceClock_(records, clock) {}

void MessageDriver::BeginReplay() {
  sentenceClock_.BeginReplay();
}

void MessageDriver::ProcessMessage(int system, SentenceType type) {
  sentenceClock_.Begin(system);
  if (const AnalyseFlag* const analysed = FindAnalyseFlag(type); analysed == nullptr) {
    StageUnknown(type);
  } else if (!(records_.CommSetups[system].*analysed->flag)) {
    return;
  }
  RunStage(system, type);
  // The points that a chart has taken before have no time of their own.
  if (sentenceClock_.Finish(system) && records_.OfflineRunning) views_.RestartSeries(system);

  const SystemSetup& open = records_.SystemSetups[system];
  if (open[WindowFlag::Numerics]) views_.UpdateNumerics(system, type);
  if (open[WindowFlag::ARPATargets]) views_.UpdateARPATargets(system, type);
  if (open[WindowFlag::AISTargets]) views_.UpdateAISTargets(system, type);
  if (records_.PausedOnline()) return;

  MoveReferenceToMean(system);
  statistics_.AccumulateStatistics(system, type, MessageTimeText(system));
  if (open[WindowFlag::Statistics] || open[WindowFlag::StatisticsSNR]) {
    views_.UpdateStatisticsView(system, type);
  }
  views_.UpdateTimeSeries(system, type);
  UpdatePlots(system, type);
}

void MessageDriver::RunStage(int system, SentenceType type) {
  switch (type) {
    case SentenceType::GGA:
      StageGGA(system);
      break;
    case SentenceType::GNS:
      StageGNS(system);
      break;
    case SentenceType::GLL:
      StageGLL(system);
      break;
    case SentenceType::RMC:
      StageRMC(system);
      break;
    case SentenceType::ZDA:
      sentenceClock_.TakeZDA(system, records_.Messages[system].ZDA.Record);
      break;
    case SentenceType::HDT:
      StageHDT(system);
      break;
    case SentenceType::ATT:
      StageATT(system);
      break;
    default:
      break;
  }
}

void MessageDriver::UpdatePlots(int system, SentenceType type) {
  const bool skyplotOpen = records_.SystemSetups[system][WindowFlag::Skyplot];
  switch (type) {
    case SentenceType::GGA:
    case SentenceType::GNS:
    case SentenceType::GLL:
    case SentenceType::RMC:
    case SentenceType::GST:
      views_.UpdateScatter(system, type);
      break;
    case SentenceType::GSA:
      if (skyplotOpen) views_.UpdateSkyplot(system);
      break;
    case SentenceType::GSV:
      if (skyplotOpen) views_.UpdateSatelliteTracking(system);
      break;
    default:
      break;
  }
}

// The first-sample reference follows every sentence until one has been accepted into the mean.
void MessageDriver::TakePosition(int system, const PositionSample& sample) {
  SystemStatistics& statistics = statistics_[system];
  ReferenceSetup& reference = records_.References[system];
  if (reference.ReferenceUsed == kFirstSample && statistics.LatitudeMean.Count == 0) {
    reference.ReferenceLatitude = sample.latitude;
    reference.ReferenceLongitude = sample.longitude;
    if (sample.altitude) reference.ReferenceHeight = *sample.altitude;
  }
  if (records_.OnlinePaused || !sample.usable) return;
  const Stamp stamp{sample.time, clock_};
  AccumulateDouble(statistics.LatitudeMean, sample.latitude, stamp);
  AccumulateDouble(statistics.LongitudeMean, sample.longitude, stamp);
  if (sample.altitude) AccumulateSingle(statistics.HeightMean, *sample.altitude, stamp);
}

void MessageDriver::StageGGA(int system) {
  const GGARecord& record = records_.Messages[system].GGA.Record;
  ResumeNext([&] { sentenceClock_.TakeTime(system, record.Time); });
  TakePosition(system, {record.Time, record.Latitude, record.Longitude, record.Altitude,
                        record.Quality != 0});
}

void MessageDriver::StageGNS(int system) {
  const GNSRecord& record = records_.Messages[system].GNS.Record;
  ResumeNext([&] { sentenceClock_.TakeTime(system, record.Time); });
  TakePosition(system, {record.Time, record.Latitude, record.Longitude, record.Altitude,
                        record.Mode != "NN"});
}

void MessageDriver::StageGLL(int system) {
  const GLLRecord& record = records_.Messages[system].GLL.Record;
  sentenceClock_.TakeTime(system, record.Time);
  TakePosition(
      system, {record.Time, record.Latitude, record.Longitude, std::nullopt, record.Status == 'A'});
}

void MessageDriver::StageRMC(int system) {
  const RMCRecord& record = records_.Messages[system].RMC.Record;
  sentenceClock_.TakeDateAndTime(system, record.Date, record.Time);
  TakePosition(
      system, {record.Time, record.Latitude, record.Longitude, std::nullopt, record.Status == "A"});
}

void MessageDriver::StageHDT(int system) {
  const float heading = records_.Messages[system].HDT.Record.Heading;
  SystemStatistics& statistics = statistics_[system];
  ReferenceSetup& reference = records_.References[system];
  if (reference.ReferenceUsed == kFirstSample && statistics.HeadingMean.Count == 0) {
    reference.ReferenceHeading = heading;
  }
  if (records_.OnlinePaused) return;
  AccumulateSingle(statistics.HeadingMean, heading, {MessageTimeText(system), clock_});
}

void MessageDriver::StageATT(int system) {
  const ATTRecord& record = records_.Messages[system].ATT.Record;
  SystemStatistics& statistics = statistics_[system];
  ReferenceSetup& reference = records_.References[system];
  if (reference.ReferenceUsed == kFirstSample && statistics.HeadingMean.Count == 0) {
    reference.ReferenceHeading = record.Heading;
    reference.ReferencePitch = record.Pitch;
    reference.ReferenceRoll = record.Roll;
  }
  if (records_.OnlinePaused) return;
  const Stamp stamp{MessageTimeText(system), clock_};
  // The difference is taken as it stands here, not wrapped: a heading across north of its
  // reference stays out of the mean.
  const float heading = SingleDifference(record.Heading, reference.ReferenceHeading);
  const float pitch = SingleDifference(record.Pitch, reference.ReferencePitch);
  const float roll = SingleDifference(record.Roll, reference.ReferenceRoll);
  const auto take = [&](SingleStat& mean, float angle, float difference) {
    if (std::abs(difference) <= records_.OutlierLimit) AccumulateSingle(mean, angle, stamp);
  };
  take(statistics.HeadingMean, record.Heading, heading);
  take(statistics.PitchMean, record.Pitch, pitch);
  take(statistics.RollMean, record.Roll, roll);
}

void MessageDriver::StageUnknown(SentenceType type) {
  dialogs_.Ask({.text = "A NMEA message type " + ToText(type) + " is received. No action",
                .canBeSilenced = true,
                .kind = "unknown type"});
}

void MessageDriver::MoveReferenceToMean(int system) {
  ReferenceSetup& reference = records_.References[system];
  if (reference.ReferenceUsed != kAverageOverTime) return;
  const SystemStatistics& statistics = statistics_[system];
  reference.ReferenceLatitude = statistics.LatitudeMean.Mean;
  reference.ReferenceLongitude = statistics.LongitudeMean.Mean;
  reference.ReferenceHeight = statistics.HeightMean.Mean;
  reference.ReferenceHeading = statistics.HeadingMean.Mean;
  reference.ReferencePitch = statistics.PitchMean.Mean;
  reference.ReferenceRoll = statistics.RollMean.Mean;
}

std::string_view MessageDriver::MessageTimeText(int system) {
  TimeText& cached = timeTexts_[system];
  const DateTime time = records_.MessageTime[system];
  if (cached.text.empty() || cached.of != time) {
    cached = {time, TimeOfDayText(time)};
  }
  return cached.text;
}

}  // namespace fathomline
