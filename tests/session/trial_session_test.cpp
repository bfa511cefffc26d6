#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <numbers>

#include "support/places.h"
#include "support/session.h"

namespace fathomline {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct TrialReport : ::testing::Test, Session {
  static constexpr double kLatitude = 58.9726;
  static constexpr double kLongitude = 5.7315;
  static constexpr const char* kNothingYet =
      "There is nothing yet that a trial report could tell of. Start the session first.";
  static constexpr const char* kNothingKept =
      "No samples are kept for a trial report. Tick Tools > Keep Samples for a Trial Report, and "
      "let the session run.";

  TrialReport() {
    Prepare([](Records& setup) {
      setup.Mode = kOffline;
      setup.CommSetups[1].Name = "Quay/09:@AZ[`az{";
      setup.CommSetups[1].OfflineFile = kSourceFolder + "/samples/moored.log";
      setup.SessionInfo = "Sea trial";
      setup.ChecksumTest[1] = true;
      ReferenceSetup& reference = setup.References[1];
      reference.ReferenceUsed = kTruePosition;
      reference.ReferenceLatitude = kLatitude * std::numbers::pi / 180.0;
      reference.ReferenceLongitude = kLongitude * std::numbers::pi / 180.0;
      reference.ReferenceHeight = 20.0F;
      reference.ReferenceHeading = 137.0F;
      reference.ReferencePitch = 0.5F;
      reference.ReferenceRoll = -0.25F;
    });
    EXPECT_TRUE(Start());
    // However slow the machine is.
    program->session.trial.SetPatience(std::chrono::hours(1));
  }

  void Replay() {
    mainWindow().tbOffline.Click("PLAY");
    RunToTheEnd();
  }
  void AskFor(const std::string& page, Answer open) {
    face.ExpectFile(page);
    const std::string figures = page.substr(0, page.rfind(".html")) + ".json";
    face.ExpectBox("Trial report written to " + page + "\r\nIts figures are in " + figures +
                       "\r\n\r\nOpen it now?",
                   open);
    mainWindow().mnuToolsTrialReport.Click();
  }
  void ExpectNothingKept() {
    face.ExpectBox(mainWindow().mnuToolsKeepSamples.Checked() ? kNothingYet : kNothingKept);
    mainWindow().mnuToolsTrialReport.Click();
  }
};

TEST_F(TrialReport, HoldsTheSessionAboutTheReferenceOfTheSetup) {
  ExpectNothingKept();
  Replay();
  const std::string page = folder / "quay.html";
  AskFor(page, Answer::Yes);
  EXPECT_THAT(face.Opened(), ElementsAre(page));
  EXPECT_TRUE(face.Files()[0].save);

  const auto figures = nlohmann::json::parse(ReadWholeFile(folder / "quay.json"));
  const auto& meta = figures["meta"];
  EXPECT_EQ(meta["note"], "Sea trial");
  EXPECT_EQ(meta["written_at"], "2026-01-02T03:04:05.000Z");
  EXPECT_EQ(meta["unchecked"], false);
  const auto& file = meta["files"][0];
  EXPECT_EQ(file["file"], kSourceFolder + "/samples/moored.log");
  EXPECT_EQ(file["bytes"], ReadWholeFile(kSourceFolder + "/samples/moored.log").size());
  ASSERT_EQ(figures["systems"].size(), 1U);
  const auto& system = figures["systems"][0];
  EXPECT_EQ(system["name"], "Quay_09__AZ__az_");
  EXPECT_EQ(file["system"], system["name"]);
  EXPECT_EQ(system["ledger"]["lines"], 3960);
  EXPECT_EQ(system["reference"]["kind"], "given");
  EXPECT_NEAR(system["reference"]["lat_deg"].get<double>(), kLatitude, 1e-9);
  EXPECT_NEAR(system["reference"]["lon_deg"].get<double>(), kLongitude, 1e-9);
  EXPECT_EQ(system["heading"][0]["reference_deg"], 137.0);
  EXPECT_EQ(system["pitch"][0]["reference_deg"], 0.5);
  EXPECT_EQ(system["roll"][0]["reference_deg"], -0.25);
  // Asked for above the sea, and never compared with heights above the ellipsoid.
  EXPECT_EQ(system["vertical"]["reference"]["why"], "other heights");
  const std::string html = ReadWholeFile(page);
  EXPECT_THAT(html, HasSubstr("a given position"));
  EXPECT_THAT(html, HasSubstr(file["sha256"].get<std::string>()));
}

// Letters tell apart those of the same name; one that has sent nothing is not in it.
TEST_F(TrialReport, HoldsEveryLiveSystemThatHasSentALine) {
  Prepare([](Records& setup) {
    for (int system = 1; system <= kSystems; ++system) {
      CommSetup& link = setup.CommSetups[system];
      link.Enabled = link.UseUDP = setup.ChecksumTest[system] = true;
      link.Name = system == 1 || system == 4 ? "Aft" : "Mast";
    }
    setup.MessagesToAnalyse[3][0] = "HDT";
    setup.ChecksumTest[4] = false;
  });
  ASSERT_TRUE(Start());
  for (const int system : {1, 3, 4}) {
    links.WinsockUDP(system).Arrive(Sentence("GPZDA,100000,02,01,2026,,") + "\r\n" +
                                    Sentence("HEHDT,10,T") + "\r\n" + Sentence("HEHDT,13,T") +
                                    "\r\n$HEHDT,16,T\r\n");
  }
  Deliver();
  AskFor(folder / "live", Answer::No);
  const auto figures = nlohmann::json::parse(ReadWholeFile(folder / "live.json"));
  EXPECT_TRUE(figures["meta"]["unchecked"] == true && figures["meta"]["files"].empty());
  std::string told;
  for (const auto& system : figures["systems"]) {
    const auto& heading = system["heading"].at(0);
    told += system["name"].dump() + heading["n"].dump() + " " + heading["reference_deg"].dump();
  }
  EXPECT_EQ(told, "\"A\"2 11.5\"Mast\"2 10\"D\"3 13")
      << "about the first of what is analysed, else about the mean";
}

TEST_F(TrialReport, BeginsAnewWithAReset) {
  Replay();
  Replay();
  AskFor(folder / "twice.html", Answer::No);
  EXPECT_THAT(face.Opened(), ElementsAre());
  const auto figures = nlohmann::json::parse(ReadWholeFile(folder / "twice.json"));
  EXPECT_EQ(figures["systems"][0]["ledger"]["lines"], 3960);
  program->session.control.ResetStatisticsAll();
  ExpectNothingKept();
  EXPECT_EQ(program->session.trial.Bytes(), 0U);
}

TEST_F(TrialReport, KeepsNothingWhereItsUserDoesNotWantIt) {
  EXPECT_TRUE(mainWindow().mnuToolsKeepSamples.Checked());
  Replay();
  mainWindow().mnuToolsKeepSamples.Click();
  ExpectNothingKept();
  mainWindow().UserClose();
  ASSERT_TRUE(Start());
  EXPECT_FALSE(mainWindow().mnuToolsKeepSamples.Checked());
  Replay();
  ExpectNothingKept();
  mainWindow().mnuToolsKeepSamples.Click();
  EXPECT_EQ(settings.Get("Settings", "KeepTrialSamples", ""), "1");
}

TEST_F(TrialReport, ReadsOnlyTheLinesOfARecordingThatCount) {
  for (int step = 0; step < 3; ++step) {
    mainWindow().tbOffline.Click("Step");
    face.Turn();
    face.Turn();
  }
  program->session.control.ResetStatisticsAll();
  mainWindow().tbOffline.Click("CONT");
  RunToTheEnd();
  EXPECT_EQ(program->session.trial.Bytes(), 0U);
  AskFor(folder / "rest.html", Answer::No);
  const auto figures = nlohmann::json::parse(ReadWholeFile(folder / "rest.json"));
  EXPECT_EQ(figures["systems"][0]["ledger"]["lines"], 3957);
}

TEST_F(TrialReport, ShowsHowFarALongReadingIsAndCanBeCancelled) {
  TrialSession& trial = program->session.trial;
  trial.SetPatience(std::chrono::milliseconds(-1));
  Replay();
  const auto ask = [&] {
    face.ExpectFile(folder / "long.html");
    mainWindow().mnuToolsTrialReport.Click();
    EXPECT_TRUE(trial.reading.Visible());
  };
  ask();
  trial.reading.cmdCancel.Click();
  EXPECT_FALSE(FileExists(folder / "long.html"));
  ask();
  face.Expect({"", Answer::No});
  program->desktop.RunUntil([&] { return !trial.reading.Visible(); });
  EXPECT_TRUE(FileExists(folder / "long.html"));
}

TEST_F(TrialReport, TellsThatARecordingIsNotAsItWas) {
  const std::string path =
      folder.Write("r.log", ReadWholeFile(records().CommSetups[1].OfflineFile));
  records().CommSetups[1].OfflineFile = path;
  Replay();
  folder.Write("r.log", "$GPGGA,\r\n");
  face.ExpectFile(folder / "short.html");
  face.ExpectBox(
      "Trial report not written. The recording is shorter than when it was replayed. Replay it "
      "again for its report.");
  mainWindow().mnuToolsTrialReport.Click();
  EXPECT_FALSE(FileExists(folder / "short.html"));
  Replay();
  AskFor(folder / "short.html", Answer::No);  // of one line
}

TEST_F(TrialReport, TellsWhatItCannotWrite) {
  Replay();
  face.ExpectFile(folder / "no/such.html");
  face.Expect({});
  mainWindow().mnuToolsTrialReport.Click();
  EXPECT_THAT(face.Boxes().back().text, StartsWith("Trial report not written."));
  face.ExpectFile(std::nullopt);
  mainWindow().mnuToolsTrialReport.Click();
}

}  // namespace
}  // namespace fathomline
