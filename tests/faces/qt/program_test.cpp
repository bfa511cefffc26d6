// The whole program on the desktop with a recording, and the dialogs of the toolkit within it.
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <gmock/gmock.h>

#include "faces/qt/program_fixture.h"

namespace fathomline {
namespace {

class ProgramOnTheDesktop : public ProgramFixture {
 public:
  void SetUp() override { StartWithSample(); }
};

TEST_F(ProgramOnTheDesktop, ReplaysARecordingFromPlayToItsEnd) {
  program().windows.OpenView(ViewKind::Statistics, 1);
  face().Draw();
  Press("PLAY");
  EXPECT_TRUE(program().engine.records.OfflineRunning);
  PumpUntil([&] { return !program().engine.records.OfflineRunning; });
  Draw();
  Grid& grid = program().windows.statistics[1]->GridOf(SentenceType::GGA);
  const auto* const table = Find<QTableView>(grid);
  EXPECT_NE(grid.Text(1, 1), "");
  EXPECT_EQ(table->model()->index(0, 0).data().toString().toStdString(), grid.Text(1, 1));
}

TEST_F(ProgramOnTheDesktop, AWindowBroughtForwardShowsWhatItsLabelsSay) {
  program().windows.OpenAnalysed(1);
  program().windows.OpenView(ViewKind::Skyplot, 1);
  program().windows.OpenView(ViewKind::NMEA, 1);
  face().Draw();
  program().windows.main.tbOffline.Click("PLAY");
  PumpUntil([&] { return !program().engine.records.OfflineRunning; });
  program().windows.OpenView(ViewKind::Skyplot, 1);
  Draw();
  for (Window* const window : program().desktop.Windows()) {
    if (window->Name() != "frmSkyplot" || !window->Visible()) continue;
    for (const Control* const control : window->Controls()) {
      const auto* const label = dynamic_cast<QLabel*>(face().WidgetOf(*control));
      if (label == nullptr || label->visibleRegion().isEmpty()) continue;
      EXPECT_EQ(label->text().toStdString(), control->Text()) << control->Name();
    }
  }
}

class ToolkitDialogs : public ProgramOnTheDesktop {
 public:
  void SetUp() override {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    ProgramOnTheDesktop::SetUp();
  }

  // Does something that opens such a dialog, looks at it once and lets it go; then presses OK in
  // the boxes that follow. Returns their texts.
  template <class Dialog>
  std::vector<std::string> With(const MenuItem& item, const std::function<void(Dialog&)>& use) {
    int seen = 0;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
      auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr || seen > 0) return;
      ++seen;
      use(*dialog);
    });
    user.start(1);
    auto boxes = Answering(QMessageBox::Ok, [&] { Choose(item); });
    EXPECT_EQ(seen, 1);
    return boxes;
  }

  // Types a name and presses the button that accepts it.
  static void Enter(QFileDialog& dialog, const QString& name) {
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
    static_cast<QDialog&>(dialog).accept();
  }
};

TEST_F(ToolkitDialogs, ASetupIsSavedUnderANameAndOpenedAgain) {
  const auto expectQuestion = [&](const QFileDialog& dialog, const char* title) {
    EXPECT_EQ(FromQt(dialog.windowTitle()), title);
    EXPECT_EQ(dialog.nameFilters(), QStringList("Fathomline setup files (*.ini)"));
    EXPECT_EQ(dialog.defaultSuffix(), "ini");
    EXPECT_EQ(FromQt(dialog.directory().path()) + "/", folder.Path());
  };
  records().CommSetups[1].Name = "Saved";
  const MenuItem& saveAs = program().windows.main.mnuFileSaveAs;
  const MenuItem& open = program().windows.main.mnuFileOpen;
  EXPECT_THAT(With<QFileDialog>(saveAs,
                                [&](QFileDialog& dialog) {
                                  expectQuestion(dialog, "Save Setup As");
                                  EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
                                  Enter(dialog, "other");
                                }),
              testing::ElementsAre("Setup saved as " + (folder / "other.ini")));
  records().CommSetups[1].Name = "Changed";
  With<QFileDialog>(open, [&](QFileDialog& dialog) {
    expectQuestion(dialog, "Open Setup File");
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    dialog.reject();
  });
  EXPECT_EQ(records().CommSetups[1].Name, "Changed");
  With<QFileDialog>(open, [](QFileDialog& dialog) { Enter(dialog, "other.ini"); });
  EXPECT_EQ(records().CommSetups[1].Name, "Saved");
}

TEST_F(ToolkitDialogs, PageSetUpStandsWhileTimeGoesOn) {
  With<QDialog>(program().windows.main.mnuFilePageSetup, [this](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "pageSetup");
    EXPECT_EQ(dialog.parentWidget(), Main());
    EXPECT_TRUE(dialog.isModal());
    dialog.accept();
  });
}

}  // namespace
}  // namespace fathomline
