// Timers, tasks and message boxes, and how they get on with each other.
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "support/scripted_face.h"
#include "toolkit/desktop.h"
#include "toolkit/timer.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

using std::chrono::milliseconds;

class FunctionTask : public Task {
 public:
  explicit FunctionTask(std::function<bool()> slice) : slice_(std::move(slice)) {}
  bool RunSlice(std::chrono::steady_clock::time_point until) override {
    EXPECT_LE(until - std::chrono::steady_clock::now(), kLongestSlice);
    return slice_();
  }

 private:
  std::function<bool()> slice_;
};

class EventPumpTest : public testing::Test {
 protected:
  EventPumpTest() { window.Show(); }

  ScriptedFace face;
  Desktop desktop{face};
  Window window{desktop, {.name = "frmSample"}};
};

TEST_F(EventPumpTest, ATimerTicksWhileItIsEnabledAndItsWindowLoaded) {
  Timer timer(window, "Timer1", 100);
  int ticks = 0;
  timer.onTick = [&] { ++ticks; };
  face.Advance(milliseconds(500));
  EXPECT_EQ(ticks, 0);
  timer.SetEnabled(true);
  face.Advance(milliseconds(99));
  EXPECT_EQ(ticks, 0);
  face.Advance(milliseconds(1));
  EXPECT_EQ(ticks, 1);
  face.Advance(milliseconds(250));
  EXPECT_EQ(ticks, 3);
  timer.SetInterval(0);
  face.Advance(milliseconds(1000));
  EXPECT_EQ(ticks, 3);
  timer.SetInterval(10);
  window.Close();
  face.Advance(milliseconds(1000));
  EXPECT_EQ(ticks, 3);
  window.Show();
  EXPECT_EQ(timer.Interval(), 100) << "as it was built";
  EXPECT_FALSE(timer.Enabled());
}

TEST_F(EventPumpTest, ATickMayChangeItsIntervalAndIsNeverEnteredAgain) {
  Timer timer(window, "Timer1", 100, true);
  Timer other(window, "Timer2", 100, true);
  std::vector<std::string> ticks;
  timer.onTick = [&] {
    ticks.push_back("begin");
    timer.SetInterval(1000);
    desktop.Ask({.text = "?"});
    ticks.push_back("end");
  };
  other.onTick = [&] { ticks.push_back("other"); };
  face.Expect({.text = "?", .meanwhile = [&] { face.Advance(milliseconds(2500)); }});
  face.Advance(milliseconds(100));
  // Time has passed in the box: the late tick comes once, and not within the first one.
  ASSERT_GE(ticks.size(), 3U);
  EXPECT_EQ(ticks.front(), "begin");
  EXPECT_EQ(std::count(ticks.begin(), ticks.end(), "other"), 26);
  face.ExpectBox("?");
  face.Advance(milliseconds(0));
  EXPECT_EQ(std::count(ticks.begin(), ticks.end(), "begin"), 2);
  EXPECT_EQ(std::count(ticks.begin(), ticks.end(), "end"), 2);
}

TEST_F(EventPumpTest, ATaskIsNotEnteredWhileABoxStandsInItAndOthersGoOn) {
  int slices = 0;
  int others = 0;
  FunctionTask other([&] { return ++others < 100; });
  FunctionTask task([&] {
    ++slices;
    desktop.Ask({.text = "Error ExtractGGA"});
    return false;
  });
  desktop.Start(task);
  desktop.Start(other);
  face.Expect({.text = "Error ExtractGGA", .meanwhile = [&] {
                 for (int i = 0; i < 10; ++i) face.Turn();
               }});
  face.Turn();
  EXPECT_EQ(slices, 1);
  EXPECT_EQ(others, 11);
}

TEST_F(EventPumpTest, TasksMayComeAndGoWhileTheyRun) {
  int late = 0;
  auto doomed = std::make_unique<FunctionTask>([&] {
    ADD_FAILURE() << "stopped before its slice";
    return true;
  });
  FunctionTask added([&] { return ++late < 3; });
  FunctionTask first([&] {
    doomed.reset();
    desktop.Start(added);
    desktop.Stop(first);
    return true;
  });
  desktop.Start(first);
  desktop.Start(*doomed);
  face.Turn();
  EXPECT_EQ(late, 1);
  desktop.RunUntil([&] { return late == 3; });
  EXPECT_EQ(late, 3);
}

TEST_F(EventPumpTest, AFaultOfATaskIsReportedAndTheTaskGoesOn) {
  FunctionTask task([]() -> bool { Raise(FaultNumber::DeviceError); });
  desktop.Start(task);
  int faults = 0;
  desktop.onFault = [&](const Fault&, Window* where) { faults += where == nullptr ? 1 : 0; };
  face.Turn();
  face.Turn();
  EXPECT_EQ(faults, 2);
}

TEST_F(EventPumpTest, QuittingEndsEveryWait) {
  FunctionTask busy([] { return true; });
  desktop.Start(busy);
  face.WhileWaiting([&] {
    face.WhileWaiting([&] { desktop.Quit(); });
    desktop.RunUntil([] { return false; });
  });
  desktop.RunUntil([] { return false; });
  EXPECT_TRUE(desktop.Quitting());
}

TEST_F(EventPumpTest, AWaitPassesTheTimeToTheNextTimer) {
  Timer timer(window, "Timer1", 60000, true);
  bool done = false;
  timer.onTick = [&] { done = true; };
  desktop.RunUntil([&] { return done; });
  EXPECT_EQ(face.Now().time_since_epoch(), std::chrono::minutes(1));
  // Timers that never end the wait do not hold it for ever.
  EXPECT_THROW(desktop.RunUntil([] { return false; }), EndlessWait);
}

TEST_F(EventPumpTest, ASilencedBoxStaysAwayForItsTitleAndKind) {
  MessageBox box{
      .text = "field 3", .title = "Error ExtractRMC", .canBeSilenced = true, .kind = "decoder"};
  face.ExpectBox("field 3");
  desktop.Ask(box);
  face.Expect({.text = "field 3", .silence = true});
  desktop.Ask(box);
  box.text = "field 4";
  EXPECT_EQ(desktop.Ask(box), Answer::Ok);
  EXPECT_EQ(face.Boxes().size(), 2U);
  box.kind = "other";
  face.ExpectBox("field 4");
  desktop.Ask(box);
  box.kind = "decoder";
  box.canBeSilenced = false;
  face.ExpectBox("field 4");
  desktop.Ask(box);
  EXPECT_TRUE(face.Exhausted());
}

TEST_F(EventPumpTest, DialogsThatNobodyExpectsAreErrors) {
  EXPECT_THROW(desktop.Ask({.text = "?"}), UnscriptedDialog);
  face.ExpectBox("one thing");
  EXPECT_THROW(desktop.Ask({.text = "another"}), UnscriptedDialog);
  face.ExpectBox("sure?", Answer::Ok);
  EXPECT_THROW(desktop.Ask({.text = "sure?", .buttons = BoxButtons::YesNo}), UnscriptedDialog);
  EXPECT_THROW(desktop.ChooseFile({.title = "Open", .filter = ""}), UnscriptedDialog);
}

TEST(BatchFace, AnswersYesAndCancelsWhatItIsAskedToChoose) {
  std::vector<std::string> titles;
  BatchFace face([&](const MessageBox& box) { titles.push_back(box.title); });
  Desktop desktop(face);
  EXPECT_EQ(desktop.Ask({.text = "sure?", .buttons = BoxButtons::YesNo, .defaultNo = true}),
            Answer::Yes);
  EXPECT_EQ(desktop.Ask({.text = "done", .title = "Other"}), Answer::Ok);
  EXPECT_EQ(titles, (std::vector<std::string>{kProgramTitle, "Other"}));
  EXPECT_FALSE(desktop.ChooseFile({.title = "Open", .filter = ""}));
}

}  // namespace
}  // namespace fathomline
