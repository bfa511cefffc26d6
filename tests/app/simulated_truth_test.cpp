// The figures that the program gets from a simulated session against the truth the session was
// made from.
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

#include "analysis/geodesy.h"
#include "support/test_program.h"
#include "tools/simulated_session.h"

namespace fathomline {
namespace {

using namespace simulator;

constexpr double kDegrees = 180.0 / std::numbers::pi;

class SimulatedTruth : public testing::Test {
 protected:
  void Replay(std::string_view scenario, double seconds) {
    for (const AnalyseFlag& row : kAnalyseFlags) test.records.CommSetups[1].*row.flag = true;
    test.records.ChecksumTest[1] = true;
    Simulator simulator(OptionsOf(scenario, seconds));
    ReferenceSetup& reference = test.records.References[1];
    reference.ReferenceUsed = kTruePosition;
    const ReferenceTruth& place = simulator.Truth().reference;
    reference.ReferenceLatitude = place.position.latitude / kDegrees;
    reference.ReferenceLongitude = place.position.longitude / kDegrees;
    reference.ReferenceHeight = static_cast<float>(place.height);
    reference.ReferenceHeading = static_cast<float>(place.heading);
    ForEachEpoch(simulator, [&](const Epoch& epoch) {
      for (std::size_t i = 0; i < epoch.lines.Count(); ++i) {
        std::string_view line = epoch.lines.Line(i);
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
        test.program.engine.pipeline.ProcessSentence(1, line);
      }
    });
    truth = simulator.Truth();
  }

  // A running figure of the program against the same of the truth, both over every usable value.
  template <class Number>
  void ExpectAgrees(const RunningStat<Number>& stat, TruthFigure figure, double scale,
                    double tolerance, double offset = 0.0) {
    const RunningFigure& expected = truth[figure];
    SCOPED_TRACE(kTruthFigureNames[static_cast<std::size_t>(figure)]);
    ASSERT_GT(expected.Count(), 10);
    EXPECT_EQ(stat.Count, expected.Count());
    EXPECT_NEAR(stat.Mean * scale + offset, expected.Mean(), tolerance);
    EXPECT_NEAR(stat.Sdev * scale, expected.Sdev(), tolerance);
    EXPECT_NEAR(stat.Max * scale + offset, expected.Max(), tolerance);
    EXPECT_NEAR(stat.Min * scale + offset, expected.Min(), tolerance);
  }
  template <class Record, auto Member>
  const SingleStat& Stat() {
    return test.program.engine.statistics[1].Of<Record, Member>().Stat;
  }

  TestProgram test;
  SimulationTruth truth;
};

TEST_F(SimulatedTruth, OfAMooredReceiverIsFoundAgain) {
  Replay("moored", 3600);
  EXPECT_EQ(test.records.ChecksumErrors[1], 0);

  // North and east in metres: the north radius of the program is the true one times W squared.
  const double latitude = truth.reference.position.latitude / kDegrees;
  const double s = std::sin(latitude);
  const double w2 = 1.0 - kEccentricitySquared * s * s;
  ExpectAgrees(Stat<GGARecord, &Deviations::dN>(), TruthFigure::GGANorthError, 1.0 / w2, 2e-3);
  ExpectAgrees(Stat<GGARecord, &Deviations::dE>(), TruthFigure::GGAEastError, 1.0, 2e-3);
  ExpectAgrees(Stat<GGARecord, &Deviations::dHgt>(), TruthFigure::GGAHeightError, 1.0, 1e-4);
  ExpectAgrees(Stat<GNSRecord, &Deviations::dE>(), TruthFigure::GNSEastError, 1.0, 2e-3);
  ExpectAgrees(Stat<GLLRecord, &Deviations::dE>(), TruthFigure::GLLEastError, 1.0, 2e-3);
  ExpectAgrees(Stat<RMCRecord, &Deviations::dE>(), TruthFigure::RMCEastError, 1.0, 2e-3);
  ExpectAgrees(Stat<GGARecord, &GGARecord::Satellites>(), TruthFigure::GGASatellites, 1.0, 1e-5);
  ExpectAgrees(Stat<GGARecord, &GGARecord::DGPSAge>(), TruthFigure::GGAAge, 1.0, 1e-4);
  EXPECT_EQ((Stat<GGARecord, &Deviations::dRad>().Count), truth.usableFixes);

  ExpectAgrees(Stat<HDTRecord, &Deviations::deltaHdg>(), TruthFigure::HDTHeading, 1.0, 1e-3,
               truth.reference.heading);
  ExpectAgrees(test.program.engine.statistics[1].PitchMean, TruthFigure::ATTPitch, 1.0, 1e-4);
  ExpectAgrees(Stat<GSTRecord, &GSTRecord::SdLat>(), TruthFigure::GSTSdLatitude, 1.0, 1e-4);
  ExpectAgrees(Stat<GSARecord, &GSARecord::PDOP>(), TruthFigure::GSAPDOP, 1.0, 1e-4);
}

TEST_F(SimulatedTruth, OfAVoyageIsFoundAgain) {
  Replay("voyage", 1800);
  ExpectAgrees(Stat<RMCRecord, &RMCRecord::SOG>(), TruthFigure::RMCSOG, 1.0, 1e-4);
  ExpectAgrees(Stat<VTGRecord, &VTGRecord::COGTrue>(), TruthFigure::VTGCOG, 1.0, 1e-2);
  ExpectAgrees(Stat<ROTRecord, &ROTRecord::RateOfTurn>(), TruthFigure::ROTRate, 1.0, 1e-3);
  ExpectAgrees(Stat<VHWRecord, &VHWRecord::SpeedKnots>(), TruthFigure::VHWSpeed, 1.0, 1e-4);
  ExpectAgrees(Stat<DBTRecord, &DBTRecord::DepthMetres>(), TruthFigure::DBTDepth, 1.0, 1e-3);
  EXPECT_GT(test.program.engine.targets.AISTargetCount(1), 5);
  EXPECT_TRUE(test.face.Boxes().empty());
}

}  // namespace
}  // namespace fathomline
