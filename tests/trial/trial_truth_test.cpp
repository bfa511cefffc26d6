// The trial of simulated sessions against the truth they were made from, of real positions that
// were moved, and of whole recordings: what is written, and what is told of a wrong use.
#include <cmath>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/trial_command.h"
#include "base/files.h"
#include "base/format.h"
#include "base/numbers.h"
#include "support/places.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"
#include "tools/simulated_session.h"
#include "trial/limits.h"
#include "trial/recorder.h"
#include "trial/trial.h"
#include "trial/trial_json.h"

namespace fathomline::trial {
namespace {

using simulator::TruthFigure;

void Record(SystemRecorder& recorder, std::string_view bytes, std::size_t block = 1 << 20) {
  LineCutter cutter(recorder);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(block, bytes.size()))) {
    cutter.TakeBytes(bytes.substr(0, block));
  }
  cutter.End();
}

TrialFigures Figures(const SystemRecorder& recorder, const TrialOptions& options) {
  return WorkOut({{.name = "A", .recorder = &recorder, .stream = {}}}, options);
}

class TrialTruth : public testing::Test {
 protected:
  void Simulate(std::string_view scenario, double seconds) {
    simulator::Simulator simulator(simulator::OptionsOf(scenario, seconds));
    simulator::ForEachEpoch(
        simulator, [&](const simulator::Epoch& epoch) { Record(recorder, epoch.lines.Text()); });
    truth = simulator.Truth();
    TrialOptions options;
    options.reference = ReferenceKind::Given;
    options.given = {truth.reference.position.latitude, truth.reference.position.longitude,
                     std::nan("")};
    options.heading = truth.reference.heading;
    figures = Figures(recorder, options);
  }
  template <class Figures>
  void ExpectAgrees(const Figures& figure, TruthFigure of, double tolerance) {
    const simulator::RunningFigure& expected = truth[of];
    SCOPED_TRACE(simulator::kTruthFigureNames[static_cast<std::size_t>(of)]);
    EXPECT_EQ(figure.n, expected.Count());
    EXPECT_NEAR(*figure.mean, expected.Mean(), tolerance);
    EXPECT_NEAR(*figure.std, expected.Sdev(), tolerance);
  }

  SystemRecorder recorder;
  simulator::SimulationTruth truth;
  TrialFigures figures;
};

TEST_F(TrialTruth, OfAMooredReceiverIsFoundAgain) {
  Simulate("moored", 3600);
  const SystemFigures& system = figures.systems[0];
  EXPECT_EQ(system.stream, "GNGGA");
  EXPECT_EQ(system.ledger.classes.good, system.ledger.lines);
  const HorizontalErrors& errors = system.horizontal.reference;
  EXPECT_EQ(errors.n, truth.usableFixes);
  // Positions are sent to 0.2 mm, and the earth's curvature over some metres is far below that.
  EXPECT_NEAR(*errors.biasNorth, truth[TruthFigure::GGANorthError].Mean(), 2e-4);
  EXPECT_NEAR(*errors.biasEast, truth[TruthFigure::GGAEastError].Mean(), 2e-4);
  EXPECT_NEAR(*errors.stdNorth, truth[TruthFigure::GGANorthError].Sdev(), 2e-4);
  EXPECT_NEAR(*errors.stdEast, truth[TruthFigure::GGAEastError].Sdev(), 2e-4);
  // The vessel lies still, and so do its heights but for their errors.
  EXPECT_NEAR(*system.vertical.mean.std, truth[TruthFigure::GGAHeightError].Sdev(), 1e-3);
  ASSERT_EQ(system.heading.size(), 2U);
  EXPECT_NEAR(*system.heading[0].bias,
              truth[TruthFigure::HDTHeading].Mean() - truth.reference.heading, 1e-4);
  EXPECT_NEAR(*system.heading[0].std, truth[TruthFigure::HDTHeading].Sdev(), 1e-4);
  EXPECT_NEAR(*system.pitch[0].mean, truth[TruthFigure::ATTPitch].Mean(), 1e-4);
  EXPECT_NEAR(*system.pitch[0].std, truth[TruthFigure::ATTPitch].Sdev(), 1e-4);
  EXPECT_FALSE(system.moving);
}

TEST_F(TrialTruth, OfAVoyageIsFoundAgain) {
  Simulate("voyage", 1800);
  const SystemFigures& system = figures.systems[0];
  EXPECT_TRUE(system.moving);
  ExpectAgrees(system.series[0].names[0], TruthFigure::DBTDepth, 1e-4);
  ExpectAgrees(system.series[1].names[0], TruthFigure::ROTRate, 1e-4);
  ExpectAgrees(system.series[2].names[0], TruthFigure::RMCSOG, 1e-4);
  ExpectAgrees(system.series[3].names[0], TruthFigure::VHWSpeed, 1e-4);
  EXPECT_GT(system.ais.messages, 100);
  EXPECT_EQ(system.ais.incomplete, 0);
  EXPECT_EQ(system.satellites.groupsBroken, 0);
}

// The same lines with every place a tenth of a minute farther to the north.
std::string Moved(const std::string& recording) {
  std::string moved;
  for (const std::string& line : simulator::Split(recording, '\n')) {
    auto fields = simulator::Fields(line);
    const bool isPlace = fields[0].size() == 6 && fields[0].ends_with("GGA") && fields[2] != "";
    if (isPlace) {
      const double minutes = ReadNumber(fields[2].substr(2)) + 0.1;
      char text[32];
      std::snprintf(text, sizeof text, "%s", Format(minutes, "00.000000").c_str());
      fields[2] = fields[2].substr(0, 2) + text;
      std::string body = fields[0].substr(1);
      for (std::size_t i = 1; i < fields.size(); ++i) body += "," + fields[i];
      moved += fathomline::Sentence(body) + "\n";
    } else {
      moved += line + "\n";
    }
  }
  return moved;
}

TEST(Trial, MovedPositionsMoveTheBiasAndNothingElse) {
  const std::string recording = ReadWholeFile(kSourceFolder + "/samples/moored.log");
  SystemRecorder asSent;
  SystemRecorder moved;
  Record(asSent, recording);
  Record(moved, Moved(recording));
  TrialOptions options;
  options.reference = ReferenceKind::Given;
  options.given = {58.9726, 5.7315, 60.0};
  const SystemFigures before = Figures(asSent, options).systems[0];
  const SystemFigures after = Figures(moved, options).systems[0];
  // A tenth of a minute of the meridian here, by its radius of curvature.
  const double e2 = 0.00669437999014;
  const double sine = std::sin(58.9726 * std::numbers::pi / 180.0);
  const double radius = 6378137.0 * (1.0 - e2) / std::pow(1.0 - e2 * sine * sine, 1.5);
  const double metres = (radius + 60.0) * 0.1 / 60.0 * std::numbers::pi / 180.0;
  EXPECT_NEAR(*after.horizontal.reference.biasNorth - *before.horizontal.reference.biasNorth,
              metres, 2e-3);
  EXPECT_NEAR(*after.horizontal.reference.biasEast, *before.horizontal.reference.biasEast, 1e-3);
  EXPECT_NEAR(*after.horizontal.mean.r95, *before.horizontal.mean.r95, 1e-3);
  EXPECT_NEAR(*after.horizontal.reference.stdNorth, *before.horizontal.reference.stdNorth, 1e-3);
  EXPECT_NEAR(*after.horizontal.ellipse.semiMajor, *before.horizontal.ellipse.semiMajor, 1e-3);
  EXPECT_EQ(*after.vertical.reference.p95, *before.vertical.reference.p95);
  EXPECT_EQ(after.availability.share, before.availability.share);
  EXPECT_EQ(after.satellites.satellites.size(), before.satellites.satellites.size());
  // A pair of the two tells the same.
  const TrialFigures both = WorkOut({{.name = "A", .recorder = &asSent, .stream = {}},
                                     {.name = "B", .recorder = &moved, .stream = {}}},
                                    {});
  EXPECT_NEAR(*both.pairs[0].horizontal.r50, metres, 2e-3);
  EXPECT_NEAR(*both.pairs[0].horizontal.largest, metres, 2e-3);
  EXPECT_EQ(both.pairs[0].sameTime, before.horizontal.reference.n);
}

TEST(Trial, IsTheSameHoweverTheBytesCome) {
  const std::string recording = ReadWholeFile(kSourceFolder + "/samples/voyage.log");
  SystemRecorder whole;
  SystemRecorder inPieces;
  Record(whole, recording);
  Record(inPieces, recording + "\r\n$GPGGA", 7);
  Record(inPieces, ",1\n");
  inPieces.Clear();
  EXPECT_EQ(inPieces.Bytes(), 0U);
  Record(inPieces, recording.substr(0, recording.size() - 1), 13);
  EXPECT_EQ(JsonText(Figures(inPieces, {})), JsonText(Figures(whole, {})));
  // 10 sentences a second of ten minutes, at some 20 bytes for each column.
  EXPECT_LT(whole.Bytes(), 1'000'000U);
  // The JSON stands a value on a line, as the library would write it.
  const std::string nothing = JsonText(Figures(SystemRecorder(), {}));
  EXPECT_EQ(nothing, nlohmann::ordered_json::parse(nothing).dump(2) + "\n");
}

TEST(Trial, CountsTheBytesOfItsColumns) {
  // A power of two, so that vectors that double are full.
  constexpr int kMany = 1024;
  const std::pair<const char*, int> kinds[] = {
      {"GPGGA,100000,0000.000,N,01000.000,E,1,8,1.0,5,M,40,M,,", 37},
      {"GPGLL,0000.000,N,01000.000,E,100000,A", 21},
      {"GPGST,100000,,,,,1,1,1", 28},
      {"PFEC,GPatt,1,2,3", 36},
      {"GPGSV,1,1,01,05,10,100,40", sizeof(SatelliteSample)},
      {"AIVDO,1,1,,,100000@000E<if1e7P3P000:,1", 21}};
  for (const auto& [body, bytes] : kinds) {
    SystemRecorder recorder;
    recorder.TakeLine(fathomline::Sentence("GPZDA,100000,02,03,2026,,"));
    for (int i = 0; i < kMany; ++i) recorder.TakeLine(fathomline::Sentence(body));
    EXPECT_NEAR(static_cast<double>(recorder.Bytes()), kMany * bytes, kMany / 2) << body;
  }
}

TEST(Trial, CutsALineThatFindsNoEnd) {
  SystemRecorder recorder;
  LineCutter cutter(recorder);
  const auto lines = [&] { return Figures(recorder, {}).systems[0].ledger.lines; };
  cutter.TakeBytes(std::string(16 * 1024 * 1024, 'x'));
  EXPECT_EQ(lines(), 0);
  cutter.TakeBytes("x");
  EXPECT_EQ(lines(), 1);
  cutter.TakeBytes("\nx");
  cutter.End();
  cutter.End();
  EXPECT_EQ(lines(), 3);
}

struct Outcome {
  int status;
  std::string out, err;
};
Outcome Command(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  const int status = RunTrialCommand(arguments, out, err);
  return {status, out.str(), err.str()};
}

TEST(TrialCommand, TellsWhatItReadAndWhetherLimitsAreKept) {
  const TemporaryFolder folder;
  const std::string moored = kSourceFolder + "/samples/moored.log";
  const Outcome summary =
      Command({moored, "B=" + moored, "--limit", "availability.share>=0.98", "--limits",
               folder.Write("limits", "# none\n\n A:stream=1 # text\n")});
  EXPECT_EQ(summary.status, 1);
  EXPECT_NE(summary.out.find("3960 good"), std::string::npos);
  EXPECT_NE(summary.out.find("Pair A-B"), std::string::npos);
  EXPECT_NE(summary.out.find("kept: B: availability.share>=0.98, is 0.99"), std::string::npos);
  EXPECT_EQ(summary.err, "missed: A: A:stream=1, which is not there\n");

  const std::string json = folder / "json";
  EXPECT_EQ(Command({moored, "--quiet", "--json", json}).status, 0);
  const std::string first = ReadWholeFile(json);
  const Outcome again = Command({moored, "--json", json});
  EXPECT_EQ(again.out + again.err, "");
  EXPECT_EQ(ReadWholeFile(json), first);
  const auto document = nlohmann::json::parse(first);
  EXPECT_EQ(document["meta"]["written_at"], nullptr);
  EXPECT_EQ(document["meta"]["files"][0]["bytes"], 200005);
  EXPECT_EQ(document["meta"]["files"][0]["sha256"].get<std::string>().size(), 64U);
}

TEST(TrialCommand, RefusesAWrongUseInOneLine) {
  const std::string moored = kSourceFolder + "/samples/moored.log";
  const TemporaryFolder folder;
  const std::string limits = folder.Write("limits", "a<1\nb\n");
  std::vector<std::vector<std::string>> wrong = {
      {},
      {"--nothing", moored},
      {moored, moored, moored, moored, moored},
      {"A=" + moored, "A=" + moored},
      {"B=" + moored, moored},
      {folder / "missing"},
      {folder.Path()},
      {moored, "--reference", "C"},
      {moored, "--reference", "91,10"},
      {moored, "--reference", "1,2,3,4"},
      {moored, "--heading", "north"},
      {moored, "--stream", "GGA"},
      {moored, "--stream", "B:GPGGA"},
      {moored, "--to", "2026-02-31T10:00:00"},
      {moored, "--now", "10:00:00"},
      {moored, "--limit", "availability.share"},
      {moored, "--limit", "availability..share<1"},
      {moored, "--limit", "availability.share<x"},
      {moored, "--limit", "Z:availability.share<1"},
      {moored, "--limit", "A:pairs.A-B.horizontal.n<1"},
      {moored, "--limits", folder / "missing"},
      {moored, "--limits", limits},
      {moored, "--json", folder / "missing/json"},
      {moored, "--csv", "/dev/null/csv"},
  };
  for (const char* time : {"10:00", "10.00:00", "10:00.00", "10:00:0", "2026/01-02T10:00:00",
                           "2026-01/02", "T10:00:00", "+0.5T10:00:00", "+1000001T10:00:00"}) {
    wrong.push_back({moored, "--from", time});
  }
  EXPECT_NE(Command({moored, "--limits", limits}).err.find(" line 2: "), std::string::npos);
  for (const auto& arguments : wrong) {
    const Outcome run = Command(arguments);
    SCOPED_TRACE(run.err);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(run.err.starts_with("fathomline-trial: "));
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
  }
}

}  // namespace
}  // namespace fathomline::trial
