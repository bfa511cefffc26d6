// A session whose systems are fed sentence by sentence.
#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "session/program.h"
#include "support/scripted_face.h"

namespace fathomline {

// The points of a series: y, nothing for a null point.
inline std::vector<std::optional<float>> Values(const Series& series) {
  std::vector<std::optional<float>> values;
  for (int i = 0; i < series.Count(); ++i) {
    const Series::Point point = series.At(i);
    values.push_back(point.null ? std::nullopt : std::optional(point.y));
  }
  return values;
}

using Points = std::vector<std::optional<float>>;

class ChartSession : public testing::Test {
 protected:
  ChartSession() {
    records.SetDefaultSetup();
    for (int system = 1; system <= kSystems; ++system) {
      CommSetup& setup = records.CommSetups[system];
      setup.Enabled = system <= 2;
      setup.Name = system == 1 ? "Bridge" : "Aft";
      for (const AnalyseFlag& row : kAnalyseFlags) setup.*row.flag = setup.Enabled;
    }
    ReferenceSetup& reference = records.References[1];
    reference.ReferenceUsed = kTruePosition;
    records.ReloadWindows = true;
    charts.ResetTimeSeries();
    charts.ResetScatter();
  }
  ~ChartSession() override { EXPECT_TRUE(face.Exhausted()); }

  void Send(std::string_view sentence, int system = 1) {
    program.engine.pipeline.ProcessSentence(system, sentence);
  }
  // The time of the sentences that carry none, on 2 January 2020; hours from its midnight.
  void SetTime(int hour, int minute, int second) {
    records.MessageDate[1] = kDate;
    records.MessageTime[1] = kDate + TimeFromParts(hour, minute, second);
    records.LastSentenceTime[1] = records.MessageTime[1];
  }
  Series& SeriesOf(SentenceType type, int chart, int series) {
    return charts.TimeSeriesOf(1, type).TChart(chart).Series(series);
  }
  void SendDepth(float metres) { Send("$SDDBT,,f," + PlainText(metres) + ",M,,F*00"); }

  static constexpr DateTime kDate{43832.0};

  ScriptedFace face;
  FrozenClock clock{DateTime{43832.5}};
  SettingsStore settings;
  Program program{{face, clock, settings, [] {}}};
  Records& records = program.engine.records;
  ChartWindows& charts = program.windows.charts;
};

}  // namespace fathomline
