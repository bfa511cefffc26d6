// The road of a line: checksum, each family of decoders, the gate, the statistics, and whole
// replays of a simulated voyage.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "decoding/checksum.h"
#include "decoding/sentence_decoders.h"
#include "faces/headless/headless_face.h"
#include "session/program.h"
#include "simulator/simulator.h"

namespace {

using namespace fathomline;

constexpr std::string_view kGGA =
    "$GPGGA,092212.00,5759.09700,N,01144.34344,E,2,08,1.2,3.5,M,39.4,M,2.5,0120*5E";
constexpr std::string_view kRMC =
    "$GPRMC,092211.00,A,5759.09700,N,01144.34344,E,5.257,28.27,200715,,,A*58";
constexpr std::string_view kGSV =
    "$GPGSV,2,1,08,02,40,083,46,06,17,308,41,12,07,344,39,14,22,228,45*73";
constexpr std::string_view kVTG = "$GPVTG,054.7,T,034.4,M,005.5,N,010.2,K*48";

// The whole program with everything analysed and no window open.
struct Bench {
  FrozenClock clock{DateFromParts(2026, 1, 2)};
  SettingsStore settings;
  BatchFace face{[](const MessageBox&) {}};
  Program program{{face, clock, settings, [] {}}};
  Records& records = program.engine.records;

  Bench() {
    program.UseProgramFolder(
        (std::filesystem::temp_directory_path() / "fathomline-bench").string());
    records.SetDefaultSetup();
    records.Mode = kOffline;
    records.ReloadWindows = true;
    records.CommSetups[1].Enabled = true;
    for (const AnalyseFlag& row : kAnalyseFlags) records.CommSetups[1].*row.flag = true;
  }
};

void Checksum(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(TestChecksum(kGGA));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Checksum);

template <class Record>
void DecodeLines(benchmark::State& state, std::string_view line,
                 void (*extract)(std::string_view&, Record&, Dialogs&)) {
  Bench bench;
  Record record;
  for (auto _ : state) {
    std::string_view sentence = line;
    extract(sentence, record, bench.program.desktop);
    benchmark::DoNotOptimize(record);
  }
  state.SetItemsProcessed(state.iterations());
}
void DecodeGGA(benchmark::State& state) {
  DecodeLines(state, kGGA, Extract<GGARecord>);
}
void DecodeRMC(benchmark::State& state) {
  DecodeLines(state, kRMC, Extract<RMCRecord>);
}
void DecodeGSV(benchmark::State& state) {
  DecodeLines(state, kGSV, Extract<GSVRecord>);
}
void DecodeVTG(benchmark::State& state) {
  DecodeLines(state, kVTG, Extract<VTGRecord>);
}
BENCHMARK(DecodeGGA);
BENCHMARK(DecodeRMC);
BENCHMARK(DecodeGSV);
BENCHMARK(DecodeVTG);

void Gate(benchmark::State& state, std::string_view line) {
  Bench bench;
  for (auto _ : state) bench.program.engine.pipeline.ProcessSentence(1, line);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(Gate, dropped, "$IIMTW,16.8,C*1C");
BENCHMARK_CAPTURE(Gate, GGA, kGGA);
BENCHMARK_CAPTURE(Gate, GSV, kGSV);
BENCHMARK_CAPTURE(Gate, VTG, kVTG);

void Deviation(benchmark::State& state) {
  const FrozenClock clock{DateFromParts(2026, 1, 2)};
  DeviationStat stat;
  float value = 0.0F;
  for (auto _ : state) {
    AccumulateDeviation(value, stat, {"12:00:00", clock});
    value = value > 9.0F ? 0.0F : value + 0.013F;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(Deviation);

void PercentilesOfADeviation(benchmark::State& state) {
  const FrozenClock clock{DateFromParts(2026, 1, 2)};
  DeviationStat stat;
  for (int i = 0; i < 1000; ++i) {
    AccumulateDeviation(static_cast<float>(i) * 0.01F, stat, {"12:00:00", clock});
  }
  for (auto _ : state) benchmark::DoNotOptimize(stat.ComputePercentiles());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PercentilesOfADeviation);

// A file of some 200,000 lines, made once.
const std::string& Voyage() {
  static const std::string path = [] {
    const std::string file =
        (std::filesystem::temp_directory_path() / "fathomline-bench.log").string();
    using namespace simulator;
    SimulationOptions options;
    options.scenario = FindScenario("voyage");
    options.duration = 8000;
    options.start = DateFromParts(2026, 1, 2);
    options.sentences = UsualSentences(*options.scenario, {});
    Simulator simulator(options);
    std::ofstream out(file, std::ios::binary);
    Epoch epoch;
    while (simulator.NextEpoch(epoch)) out << epoch.lines.Text();
    return file;
  }();
  return path;
}

void Replay(benchmark::State& state) {
  Bench bench;
  bench.records.CommSetups[1].OfflineFile = Voyage();
  if (state.range(0) != 0) bench.program.windows.OpenAnalysed(1);
  const std::int32_t before = bench.records.SentenceCount;
  for (auto _ : state) {
    bench.program.session.replay.Press("PLAY");
    bench.program.desktop.RunUntil([&] { return !bench.records.OfflineRunning; });
  }
  state.SetItemsProcessed(bench.records.SentenceCount - before);
}
BENCHMARK(Replay)->Arg(0)->Arg(1)->ArgName("windows")->Unit(benchmark::kMillisecond);

}  // namespace
