#include "app/replay_output.h"

#include <string_view>

#include "base/format.h"

namespace fathomline {
namespace {

constexpr int kSystem = 1;

template <class Number>
void WriteMean(JsonWriter& json, std::string_view name, const RunningStat<Number>& stat) {
  json.Key(name);
  json.BeginObject();
  json.Field("Count", stat.Count);
  json.Field("Mean", stat.Mean);
  json.Field("Sdev", stat.Sdev);
  json.Field("Max", stat.Max);
  json.Field("Min", stat.Min);
  json.Field("First", stat.First);
  json.EndObject();
}

template <class Stat>
void WriteStat(JsonWriter& json, std::string_view name, const Stat& stat) {
  const Percentiles percentiles = stat.ComputePercentiles();
  json.Key(name);
  json.BeginObject();
  json.Field("Count", stat.Stat.Count);
  json.Field("RejectedCount", stat.RejectedCount);
  json.Field("Mean", stat.Stat.Mean);
  json.Field("Sdev", stat.Stat.Sdev);
  json.Field("Max", stat.Stat.Max);
  json.Field("Min", stat.Stat.Min);
  json.Field("P68", percentiles.P68);
  json.Field("P95", percentiles.P95);
  json.Field("First", stat.Stat.First);
  json.EndObject();
}

// Satellites in view, and every satellite that was ever reported, as "GPS 05".
void WriteSatellites(JsonWriter& json, const SystemStatistics& statistics) {
  json.Key("GSV");
  json.BeginObject();
  WriteStat(json, "SatellitesInView", statistics.SatellitesInView);
  for (std::size_t g = 0; g < kSatelliteGroups.size(); ++g) {
    const SatelliteGroup& group = kSatelliteGroups[g];
    for (std::size_t i = 0; i < group.Entries; ++i) {
      const SNRStat& stat = statistics.Satellites[g][i];
      if (stat.Stat.Count == 0 && stat.RejectedCount == 0) continue;
      const auto prn = group.FirstPRN + static_cast<int>(i);
      WriteStat(json, std::string(group.Name) + " " + Format(prn, "00"), stat);
    }
  }
  json.EndObject();
}

}  // namespace

void TraceWriter::LineDone() {
  const SentenceType type = program_.engine.pipeline.HandedOn();
  json_.BeginObject();
  json_.Field("line", ++line_);
  json_.Field("type", ToText(type));
  if (type == SentenceType::VDM) {
    WriteAIS();
  } else {
    VisitSentence(type, [this](const auto& sentence) {
      json_.Field("record", (program_.engine.records.Messages[kSystem].*sentence.message).Record);
    });
  }
  json_.EndObject();
  json_.EndLine();
}

void TraceWriter::WriteAIS() {
  const AISReceiver& receiver = program_.engine.ais.Receiver(kSystem);
  json_.Field("vdm", program_.engine.records.Messages[kSystem].VDM.Record);
  json_.Field("id", receiver.AISMessageId);
  VisitMessage(receiver.Messages, receiver.AISMessageId,
               [this](const auto& record) { json_.Field("record", record); });
}

void WriteCounters(std::ostream& out, const Program& program, const BoxCounts& decoderBoxes) {
  const SystemStatistics& statistics = program.engine.statistics[kSystem];
  JsonWriter json(out);
  json.BeginObject();
  json.Field("lines", program.engine.records.SentenceCount);
  json.Field("checksum_errors", program.engine.records.ChecksumErrors[kSystem]);

  json.Key("faults");
  json.BeginObject();
  json.Key("decoder_boxes");
  json.BeginObject();
  for (const auto& [title, count] : decoderBoxes) json.Field(title, count);
  json.EndObject();
  json.Field("error_log", program.session.errorLog.Written());
  json.EndObject();

  json.Field("ais_targets", program.engine.targets.AISTargetCount(kSystem));

  json.Key("means");
  json.BeginObject();
  WriteMean(json, "LatitudeMean", statistics.LatitudeMean);
  WriteMean(json, "LongitudeMean", statistics.LongitudeMean);
  WriteMean(json, "HeightMean", statistics.HeightMean);
  WriteMean(json, "HeadingMean", statistics.HeadingMean);
  WriteMean(json, "PitchMean", statistics.PitchMean);
  WriteMean(json, "RollMean", statistics.RollMean);
  json.EndObject();

  json.Key("statistics");
  json.BeginObject();
  SentenceType open = SentenceType::None;
  statistics.Visit([&](SentenceType type, std::string_view name, const DeviationStat& stat) {
    if (type != open) {
      if (open != SentenceType::None) json.EndObject();
      json.Key(ToText(type));
      json.BeginObject();
      open = type;
    }
    WriteStat(json, name, stat);
  });
  json.EndObject();
  WriteSatellites(json, statistics);
  json.EndObject();

  json.EndObject();
  json.EndLine();
}

}  // namespace fathomline
