#include "app/replay_output.h"

#include <string_view>

#include "ais/ais_messages.h"
#include "app/json_text.h"
#include "base/format.h"

namespace fathomline {
namespace {

template <class Number>
Json MeanOf(const RunningStat<Number>& stat) {
  return {{"Count", stat.Count},     {"Mean", ToJson(stat.Mean)}, {"Sdev", ToJson(stat.Sdev)},
          {"Max", ToJson(stat.Max)}, {"Min", ToJson(stat.Min)},   {"First", ToJson(stat.First)}};
}

template <class Stat>
Json FiguresOf(const Stat& stat) {
  const Percentiles percentiles = stat.ComputePercentiles();
  return {{"Count", stat.Stat.Count},        {"RejectedCount", stat.RejectedCount},
          {"Mean", ToJson(stat.Stat.Mean)},  {"Sdev", ToJson(stat.Stat.Sdev)},
          {"Max", ToJson(stat.Stat.Max)},    {"Min", ToJson(stat.Stat.Min)},
          {"P68", ToJson(percentiles.P68)},  {"P95", ToJson(percentiles.P95)},
          {"First", ToJson(stat.Stat.First)}};
}

// Satellites in view, and every satellite that was ever reported, as "GPS 05".
Json SatellitesOf(const SystemStatistics& statistics) {
  Json satellites = {{"SatellitesInView", FiguresOf(statistics.SatellitesInView)}};
  for (std::size_t g = 0; g < kSatelliteGroups.size(); ++g) {
    const SatelliteGroup& group = kSatelliteGroups[g];
    for (std::size_t i = 0; i < group.Entries; ++i) {
      const SNRStat& stat = statistics.Satellites[g][i];
      if (stat.Stat.Count == 0 && stat.RejectedCount == 0) continue;
      const auto prn = group.FirstPRN + static_cast<int>(i);
      satellites[std::string(group.Name) + " " + Format(prn, "00")] = FiguresOf(stat);
    }
  }
  return satellites;
}

}  // namespace

void TraceWriter::LineDone() {
  const Engine& engine = program_.engine;
  const SentenceType type = engine.pipeline.HandedOn();
  const SystemMessages& messages = engine.records.Messages[kReplayedSystem];
  Json line = {{"line", ++line_}, {"type", ToText(type)}};
  if (type == SentenceType::VDM) {
    const AISReceiver& receiver = engine.ais.Receiver(kReplayedSystem);
    line["vdm"] = ToJson(messages.VDM.Record);
    line["id"] = receiver.AISMessageId;
    VisitMessage(receiver.Messages(), receiver.AISMessageId,
                 [&line](const auto& record) { line["record"] = ToJson(record); });
  } else {
    VisitSentence(type, [&](const auto& sentence) {
      line["record"] = ToJson((messages.*sentence.message).Record);
    });
  }
  WriteLine(out_, line);
}

void WriteCounters(std::ostream& out, const Program& program, const BoxCounts& decoderBoxes) {
  const Records& records = program.engine.records;
  const SystemStatistics& statistics = program.engine.statistics[kReplayedSystem];
  Json boxes = Json::object();
  for (const auto& [title, count] : decoderBoxes) boxes[title] = count;
  Json sentences;
  statistics.Visit([&](SentenceType type, std::string_view name, const DeviationStat& stat) {
    sentences[ToText(type)][std::string(name)] = FiguresOf(stat);
  });
  sentences["GSV"] = SatellitesOf(statistics);
  WriteLine(out, {{"lines", records.SentenceCount},
                  {"checksum_errors", records.ChecksumErrors[kReplayedSystem]},
                  {"faults",
                   {{"decoder_boxes", boxes}, {"error_log", program.session.errorLog.Written()}}},
                  {"ais_targets", program.engine.targets.AISTargetCount(kReplayedSystem)},
                  {"means",
                   {{"LatitudeMean", MeanOf(statistics.LatitudeMean)},
                    {"LongitudeMean", MeanOf(statistics.LongitudeMean)},
                    {"HeightMean", MeanOf(statistics.HeightMean)},
                    {"HeadingMean", MeanOf(statistics.HeadingMean)},
                    {"PitchMean", MeanOf(statistics.PitchMean)},
                    {"RollMean", MeanOf(statistics.RollMean)}}},
                  {"statistics", sentences}});
}

}  // namespace fathomline
