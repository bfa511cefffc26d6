// The rules of windows and controls that every window of the program relies on.
#include "toolkit/window.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "support/scripted_face.h"
#include "toolkit/bars.h"
#include "toolkit/chart.h"
#include "toolkit/choices.h"
#include "toolkit/controls.h"
#include "toolkit/desktop.h"
#include "toolkit/grid.h"
#include "toolkit/picture.h"

namespace fathomline {
namespace {

class SampleWindow : public Window {
 public:
  explicit SampleWindow(Desktop& desktop)
      : Window(desktop, {.name = "frmSample",
                         .index = 2,
                         .caption = "Sample",
                         .place = {100, 200, 3000, 6000}}) {
    cmbMode.ShowChoice(1);
    tchMain.AddSeries({.title = "first"});
    cmdOk.onClick = [this] { events.push_back("ok"); };
    cmdCancel.onClick = [this] { events.push_back("cancel"); };
    cmbMode.onChoose = [this] { events.push_back("mode " + cmbMode.Text()); };
    chkOn.onClick = [this] { events.push_back(chkOn.Checked() ? "on" : "off"); };
    txtName.onChange = [this] { events.push_back("name " + txtName.Text()); };
    txtName.onLeave = [this] {
      events.push_back("leave");
      return !txtName.Text().empty();
    };
    tbMain.onClick = [this](const std::string& key) { events.push_back("tool " + key); };
    mnuNew.onClick = [this] { events.push_back("menu"); };
  }

  void Load() override {
    events.push_back("load");
    if (failLoad) Raise(FaultNumber::TypeMismatch);
  }
  bool QueryUnload(CloseReason reason) override {
    events.push_back(reason == CloseReason::User ? "asked by user" : "asked");
    return !onQuery || onQuery();
  }
  void Unload() override { events.push_back("unload"); }
  void Resize() override { events.push_back("resize"); }
  void Refresh() override {
    if (due) lblInfo.SetText("refreshed");
  }

  std::vector<std::string> TakeEvents() { return std::exchange(events, {}); }

  std::vector<std::string> events;
  std::function<bool()> onQuery;
  bool failLoad = false;
  bool due = false;

  Frame frameOuter{*this, "frameOuter", "Outer"};
  Frame frameInner{frameOuter, "frameInner", "Inner"};
  Label lblInfo{frameInner, "lblInfo", "n/a"};
  ControlArray<Label> lblSv{*this, "lblSv", 1, 3, "*"};
  TextBox txtName{*this, "txtName", "SYSTEM 1"};
  CheckBox chkOn{*this, "chkOn", "On"};
  Choices cmbMode{*this, "cmbMode", ChoicesKind::Combo, {"Automatic", "Manual"}};
  Grid fgMain{frameOuter, "fgMain", 2, 2};
  Chart tchMain{*this, "tchMain"};
  Picture picMain{*this, "picMain", {-90, 90, 90, -90}};
  StatusBar sbMain{*this, "sbMain", {"one", "two"}};
  ToolBar tbMain{*this, "tbMain", {{"START", "START"}, {"STOP", "STOP", false}}};
  MenuItem mnuFile{*this, "mnuFile", "&File"};
  MenuItem mnuNew{mnuFile, "mnuNew", "&New"};
  Button cmdOk{*this, "cmdOk", "OK", Button::Role::Default};
  Button cmdCancel{*this, "cmdCancel", "Cancel", Button::Role::Cancel};
};

class WindowTest : public testing::Test {
 protected:
  using Events = std::vector<std::string>;

  std::string Written() {
    std::ostringstream out;
    window.Write(out);
    return out.str();
  }
  void ShowIt() {
    window.Show();
    window.TakeEvents();
  }

  ScriptedFace face;
  Desktop desktop{face};
  SampleWindow window{desktop};
};

TEST_F(WindowTest, EveryLoadBeginsFromTheStateTheWindowWasBuiltWith) {
  window.Show();
  EXPECT_EQ(window.TakeEvents(), (Events{"load", "resize"}));
  const std::string built = Written();
  window.lblInfo.SetText("changed");
  window.lblInfo.SetColour(kRed);
  window.lblInfo.SetTag("7");
  window.frameInner.SetVisible(false);
  window.cmdOk.SetEnabled(false);
  window.chkOn.SetChecked(true);
  window.cmbMode.Clear();
  window.cmbMode.Add("Other", 5);
  window.cmbMode.ShowChoice(0);
  window.fgMain.SetRows(9);
  window.tchMain.Series(0).Add(1.0, 2.0F);
  window.tchMain.Series(0).SetTitle("other");
  window.tchMain.AddSeries({.title = "second"});
  window.tchMain.AddMarker({});
  window.tchMain.Bottom().SetAutomatic(false);
  window.tchMain.Bottom().SetMaximum(77.0);
  window.picMain.Line(0, 0, 1, 1);
  window.sbMain.SetPanels({"x", "y", "z"});
  window.tbMain.SetKey(1, "CONT");
  window.mnuNew.SetChecked(true);
  window.SetCaption("Sample - Name");
  window.SetPlace({1, 2, 3, 4});
  window.SetState(WindowState::Maximised);

  ASSERT_TRUE(window.Close());
  EXPECT_FALSE(window.Loaded());
  window.Show();
  EXPECT_EQ(window.TakeEvents(), (Events{"asked", "unload", "load", "resize"}));
  EXPECT_EQ(Written(), built);
  EXPECT_FALSE(window.lblInfo.ShownColour());
  EXPECT_EQ(window.lblInfo.Tag(), "");
  EXPECT_TRUE(window.cmdOk.Enabled());
  EXPECT_FALSE(window.chkOn.Checked());
  EXPECT_EQ(window.cmbMode.Text(), "Manual");
  EXPECT_EQ(window.tchMain.ToolCount(), 0);
  EXPECT_TRUE(window.tchMain.Bottom().Automatic());
  EXPECT_EQ(window.tchMain.Bottom().Maximum(), 1.0);
  EXPECT_TRUE(window.picMain.Persistent().empty());
  EXPECT_EQ(window.sbMain.Panels(), 2);
  EXPECT_EQ(window.tbMain.ButtonAt(1).key, "START");
  EXPECT_FALSE(window.mnuNew.Checked());
  EXPECT_EQ(window.Caption(), "Sample");
  EXPECT_EQ(window.Place(), (WindowPlace{100, 200, 3000, 6000}));
  EXPECT_EQ(window.State(), WindowState::Normal);
}

TEST_F(WindowTest, ShowingALoadedWindowOnlyBringsItForward) {
  SampleWindow other(desktop);
  window.Show();
  other.Show();
  EXPECT_LT(window.FrontOrder(), other.FrontOrder());
  window.Hide();
  window.lblInfo.SetText("kept");
  window.TakeEvents();
  window.Show();
  EXPECT_EQ(window.TakeEvents(), Events{});
  EXPECT_EQ(window.lblInfo.Text(), "kept");
  EXPECT_GT(window.FrontOrder(), other.FrontOrder());
}

TEST_F(WindowTest, AFaultWhileLoadingLeavesTheWindowUnloaded) {
  window.failLoad = true;
  EXPECT_THROW(window.Show(), Fault);
  EXPECT_FALSE(window.Loaded());
}

TEST_F(WindowTest, TheProgramSetsSilentlyAndTheUserRunsHandlers) {
  ShowIt();
  window.cmbMode.ShowChoice(0);
  window.chkOn.SetChecked(true);
  window.txtName.SetText("quiet");
  EXPECT_EQ(window.TakeEvents(), Events{});
  window.cmbMode.Choose(0);  // the same entry again: the handler runs all the same
  window.cmbMode.UserChoose(1);
  window.chkOn.Click();
  window.txtName.UserText("typed");
  window.txtName.UserText("typed");
  window.tbMain.Click("START");
  window.tbMain.Click("STOP");
  window.mnuNew.Click();
  EXPECT_EQ(window.TakeEvents(),
            (Events{"mode Automatic", "mode Manual", "off", "name typed", "tool START", "menu"}));
}

TEST_F(WindowTest, TheRevisionGrowsWithRealChangesOnly) {
  ShowIt();
  const auto before = window.lblInfo.Revision();
  window.lblInfo.SetText("n/a");
  window.lblInfo.SetVisible(true);
  EXPECT_EQ(window.lblInfo.Revision(), before);
  window.lblInfo.SetText("12");
  EXPECT_GT(window.lblInfo.Revision(), before);
  const auto grid = window.fgMain.Revision();
  window.fgMain.Set(1, 1, "");
  EXPECT_EQ(window.fgMain.Revision(), grid);
  window.fgMain.Set(1, 1, "a");
  EXPECT_GT(window.fgMain.Revision(), grid);
}

TEST_F(WindowTest, AFieldMayRefuseToBeLeftButNotForTheCancelButton) {
  ShowIt();
  window.txtName.UserText("");
  window.TakeEvents();
  window.cmdOk.Click();
  window.cmbMode.UserChoose(0);
  EXPECT_EQ(window.TakeEvents(), (Events{"leave", "leave"}));
  EXPECT_EQ(window.cmbMode.Text(), "Manual");
  EXPECT_EQ(window.Focus(), &window.txtName);
  window.cmdCancel.Click();
  EXPECT_EQ(window.TakeEvents(), Events{"cancel"});

  window.txtName.UserText("good");
  window.TakeEvents();
  window.cmdOk.Click();
  EXPECT_EQ(window.TakeEvents(), (Events{"leave", "ok"}));
}

TEST_F(WindowTest, WhatIsHiddenOrDisabledTakesNoInput) {
  window.cmdOk.Click();  // not loaded yet
  ShowIt();
  window.cmdOk.SetEnabled(false);
  window.cmdOk.Click();
  window.mnuFile.SetEnabled(false);
  window.mnuNew.Click();
  window.frameOuter.SetEnabled(false);
  EXPECT_FALSE(window.fgMain.Usable());
  EXPECT_TRUE(window.fgMain.Shown());
  // A check on leaving may take the target away.
  window.txtName.UserText("x");
  window.txtName.onLeave = [this] {
    window.chkOn.SetEnabled(false);
    return true;
  };
  window.TakeEvents();
  window.chkOn.Click();
  EXPECT_EQ(window.TakeEvents(), Events{});
}

TEST_F(WindowTest, AFaultInAnActionGoesToTheHandlerOfTheDesktop) {
  ShowIt();
  window.cmdOk.onClick = [this] {
    EXPECT_EQ(window.Depth(), 1);
    Raise(FaultNumber::Overflow);
  };
  face.ExpectBox("Overflow");
  window.cmdOk.Click();
  EXPECT_EQ(window.Depth(), 0);

  std::string seen;
  desktop.onFault = [&](const Fault& fault, Window* where) {
    seen = fault.Description() + " in " + where->FullName();
    Raise(FaultNumber::DiskFull);
  };
  face.ExpectBox("Disk full");
  window.cmdOk.Click();
  EXPECT_EQ(seen, "Overflow in frmSample-2");
  EXPECT_TRUE(face.Exhausted());
}

TEST_F(WindowTest, AWindowMayCloseItselfInItsOwnHandlerAndBeReopenedThere) {
  ShowIt();
  window.cmdOk.onClick = [this] {
    window.lblInfo.SetText("before");
    window.Close();
    EXPECT_FALSE(window.Loaded());
    window.Show();
    EXPECT_EQ(window.lblInfo.Text(), "n/a");
  };
  window.cmdOk.Click();
  EXPECT_TRUE(window.Visible());
  EXPECT_EQ(window.TakeEvents(), (Events{"asked", "unload", "load", "resize"}));
}

TEST_F(WindowTest, ARefusedCloseLeavesTheWindowAndMayHideIt) {
  ShowIt();
  window.onQuery = [this] {
    window.Hide();
    return false;
  };
  window.UserClose();
  EXPECT_TRUE(window.Loaded());
  EXPECT_FALSE(window.Visible());
  EXPECT_EQ(window.TakeEvents(), Events{"asked by user"});
}

TEST_F(WindowTest, AWindowClosedOrReopenedDuringItsQuestionIsNotClosedByTheAnswer) {
  ShowIt();
  bool reopen = false;
  int depth = 0;
  window.onQuery = [&] {
    if (++depth > 1) return true;
    window.UserClose();  // pressed again: not asked again
    window.Close();
    if (reopen) window.Show();
    return true;
  };
  window.UserClose();
  EXPECT_FALSE(window.Loaded());
  EXPECT_EQ(window.TakeEvents(), (Events{"asked by user", "asked", "unload"}));

  window.Show();
  reopen = true;
  depth = 0;
  window.TakeEvents();
  window.UserClose();
  EXPECT_TRUE(window.Visible());
  EXPECT_EQ(window.TakeEvents(), (Events{"asked by user", "asked", "unload", "load", "resize"}));
}

TEST_F(WindowTest, TheUserResizesAndTheProgramMoves) {
  ShowIt();
  const auto moved = window.PlaceRevision();
  window.UserPlace({5, 5, 3000, 6000});
  EXPECT_EQ(window.TakeEvents(), Events{});
  window.UserPlace({5, 5, 4000, 6000});
  EXPECT_EQ(window.TakeEvents(), Events{"resize"});
  EXPECT_EQ(window.PlaceRevision(), moved);
  window.SetPlace({5, 5, 10000, 3000});
  EXPECT_GT(window.PlaceRevision(), moved);
  EXPECT_EQ(window.TakeEvents(), Events{});
}

TEST_F(WindowTest, AModalWindowHoldsItsCallerUntilItIsClosed) {
  face.WhileWaiting([this] {
    EXPECT_EQ(desktop.Modal(), &window);
    window.cmdCancel.Click();
  });
  face.WhileWaiting([this] { window.Close(); });
  desktop.ShowModal(window);
  EXPECT_EQ(desktop.Modal(), nullptr);
  EXPECT_EQ(window.TakeEvents(), (Events{"load", "resize", "cancel", "asked", "unload"}));
  EXPECT_THROW(desktop.ShowModal(window), EndlessWait);
}

TEST_F(WindowTest, WritesWhatItShows) {
  ShowIt();
  window.due = true;
  window.lblSv(2).SetVisible(false);
  window.lblSv(3).SetText("a\tb\r\nc");
  window.fgMain.Set(0, 1, "dRad");
  window.fgMain.Set(1, 0, "MEAN");
  auto& first = window.tchMain.Series(0);
  first.Add(43000.1, 0.1F);
  first.AddNull(43000.25);
  first.Add(43001.0, -3.0F, kRed);
  window.tchMain.AddSeries({.title = "Stn ID", .kind = SeriesKind::Gantt}).AddGantt(1.0, 2.5, 7.0F);
  EXPECT_EQ(Written(),
            "label\tlblInfo\trefreshed\n"
            "label\tlblSv(1)\t*\n"
            "label\tlblSv(3)\ta b  c\n"
            "grid\tfgMain\t2\t2\n"
            "\tdRad\n"
            "MEAN\t\n"
            "series\ttchMain\t0\tfirst\t3\n"
            "43000.1\t0.1\n"
            "43000.25\t\n"
            "43001\t-3\t255\n"
            "series\ttchMain\t1\tStn ID\t1\n"
            "1/2.5\t7\n");

  window.frameOuter.SetVisible(false);
  window.tchMain.SetVisible(false);
  const std::string shown = "label\tlblSv(1)\t*\nlabel\tlblSv(3)\ta b  c\n";
  EXPECT_EQ(Written(), shown);

  window.txtName.SetToolTip("For the\ncaption");
  window.tchMain.Left().SetTitle("m");
  window.tchMain.Right().SetTitle("deg");
  window.tchMain.SetNote("Bars");
  window.picMain.Text(0, 0, "North");
  std::ostringstream words;
  window.Write(words, Window::Texts::WithWords);
  EXPECT_EQ(words.str(),
            "words\tcaption\tSample\n"
            "words\tframeOuter\tOuter\n"
            "words\tframeInner\tInner\n"
            "words\tlblInfo\trefreshed\n"
            "words\tlblSv(1)\t*\n"
            "words\tlblSv(2)\t*\n"
            "words\tlblSv(3)\ta b  c\n"
            "words\ttxtName\tSYSTEM 1\n"
            "words\ttxtName tip\tFor the caption\n"
            "words\tchkOn\tOn\n"
            "words\tcmbMode\tAutomatic\tManual\n"
            "words\ttchMain axes\tm\t\tdeg\n"
            "words\ttchMain note\tBars\n"
            "words\tpicMain\tNorth\n"
            "words\tsbMain\tone\ttwo\n"
            "words\ttbMain\tSTART\tSTOP\n"
            "words\tmnuFile\t&File\n"
            "words\tmnuNew\t&New\n"
            "words\tcmdOk\tOK\n"
            "words\tcmdCancel\tCancel\n" +
                shown);
}

TEST_F(WindowTest, ArrangesVisibleChildrenAndKeepsFixedSizes) {
  Window fixed(desktop, {.name = "frmFixed", .place = {9, 9, 500, 400}, .resizable = false});
  Window third(desktop, {.name = "frmThird"});
  Window dialog(desktop,
                {.name = "frmDialog", .place = {7, 7, 7, 7}, .style = WindowStyle::Dialog});
  Window hidden(desktop, {.name = "frmHidden", .place = {8, 8, 8, 8}});
  for (Window* each : {static_cast<Window*>(&window), &fixed, &third, &dialog}) each->Show();
  desktop.SetChildArea({9000, 6000});
  desktop.Arrange(Arrangement::TileHorizontally);
  EXPECT_EQ(window.Place(), (WindowPlace{0, 0, 9000, 2000}));
  EXPECT_EQ(fixed.Place(), (WindowPlace{0, 2000, 500, 400}));
  EXPECT_EQ(third.Place(), (WindowPlace{0, 4000, 9000, 2000}));
  fixed.SetState(WindowState::Minimised);
  desktop.Arrange(Arrangement::TileVertically);
  EXPECT_EQ(window.Place(), (WindowPlace{0, 0, 4500, 6000}));
  EXPECT_EQ(third.Place(), (WindowPlace{4500, 0, 4500, 6000}));
  EXPECT_EQ(fixed.State(), WindowState::Minimised);
  desktop.Arrange(Arrangement::Cascade);
  EXPECT_LT(window.Place().left, third.Place().left);
  EXPECT_EQ(dialog.Place(), (WindowPlace{7, 7, 7, 7}));
  EXPECT_EQ(hidden.Place(), (WindowPlace{8, 8, 8, 8}));
}

}  // namespace
}  // namespace fathomline
