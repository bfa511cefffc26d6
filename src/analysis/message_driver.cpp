#include "analysis/message_driver.h"

#include <cmath>

#include "base/numbers.h"
#include "base/text.h"

namespace fathomline {
namespace {

// Day, month and year of a "ddmmyy" text; the year is of this century. Days and months out of
// range roll over. Raises TypeMismatch where a pair is no two digits.
DateTime ReadDate(std::string_view text) {
  const auto pair = [](std::string_view digits) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.size() != 2 || !isDigit(digits[0]) || !isDigit(digits[1])) {
      Raise(FaultNumber::TypeMismatch);
    }
    return (digits[0] - '0') * 10 + (digits[1] - '0');
  };
  const int day = pair(Mid(text, 1, 2));
  const int month = pair(Mid(text, 3, 2));
  const int year = pair(text.size() < 2 ? text : text.substr(text.size() - 2));
  return DateFromParts(year + 2000, month, day);
}

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

}  // namespace

MessageDriver::MessageDriver(Records& records, Statistics& statistics, const Clock& clock,
                             Dialogs& dialogs, MessageViews& views)
    : records_(records), statistics_(statistics), clock_(clock), dialogs_(dialogs), views_(views) {
  const DateTime now = clock.NowUtc();
  records_.MessageTime.Fill(now);
  records_.LastSentenceTime.Fill(now);
  records_.MessageDate.Fill(DateOnly(now));
}

void MessageDriver::ProcessMessage(int system, SentenceType type) {
  if (records_.SetTimeFromPC[system]) records_.MessageTime[system] = clock_.NowUtc();

  if (const AnalyseFlag* const analysed = FindAnalyseFlag(type); analysed == nullptr) {
    StageUnknown(type);
  } else if (!(records_.CommSetups[system].*analysed->flag)) {
    return;
  }
  RunStage(system, type);
  KeepClock(system);

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
      StageZDA(system);
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

void MessageDriver::ReadTime(int system, std::string_view time) {
  records_.MessageTime[system] = records_.MessageDate[system] + ReadTimeOfDay(Mid(time, 1, 8));
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
  ResumeNext([&] { ReadTime(system, record.Time); });
  TakePosition(system, {record.Time, record.Latitude, record.Longitude, record.Altitude,
                        record.Quality != 0});
}

void MessageDriver::StageGNS(int system) {
  const GNSRecord& record = records_.Messages[system].GNS.Record;
  ResumeNext([&] { ReadTime(system, record.Time); });
  TakePosition(system, {record.Time, record.Latitude, record.Longitude, record.Altitude,
                        record.Mode != "NN"});
}

void MessageDriver::StageGLL(int system) {
  const GLLRecord& record = records_.Messages[system].GLL.Record;
  ReadTime(system, record.Time);
  TakePosition(
      system, {record.Time, record.Latitude, record.Longitude, std::nullopt, record.Status == 'A'});
}

void MessageDriver::StageRMC(int system) {
  const RMCRecord& record = records_.Messages[system].RMC.Record;
  records_.MessageDate[system] = ReadDate(record.Date);
  ReadTime(system, record.Time);
  TakePosition(
      system, {record.Time, record.Latitude, record.Longitude, std::nullopt, record.Status == "A"});
}

void MessageDriver::StageZDA(int system) {
  const ZDARecord& record = records_.Messages[system].ZDA.Record;
  if (record.Year < kFirstYear || record.Year > kLastYear) Raise(FaultNumber::InvalidCall);
  records_.MessageDate[system] = DateFromParts(record.Year, record.Month, record.Day);
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
  const auto take = [&](SingleStat& mean, float angle, float from) {
    if (std::abs(angle - from) <= records_.OutlierLimit) AccumulateSingle(mean, angle, stamp);
  };
  take(statistics.HeadingMean, record.Heading, reference.ReferenceHeading);
  take(statistics.PitchMean, record.Pitch, reference.ReferencePitch);
  take(statistics.RollMean, record.Roll, reference.ReferenceRoll);
}

void MessageDriver::StageUnknown(SentenceType type) {
  dialogs_.Ask({.text = "A NMEA message type " + ToText(type) + " is received. No action",
                .canBeSilenced = true,
                .kind = "unknown type"});
}

// A time before the one of the sentence before means that midnight has passed.
void MessageDriver::KeepClock(int system) {
  DateTime& time = records_.MessageTime[system];
  if (DifferenceInSeconds(records_.LastSentenceTime[system], time) < 0) {
    records_.MessageDate[system] = records_.MessageDate[system] + kOneDay;
    time = time + kOneDay;
  }
  records_.LastSentenceTime[system] = time;
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
    cached = {time, FormatDateTime(time, "hh:mm:ss")};
  }
  return cached.text;
}

}  // namespace fathomline
