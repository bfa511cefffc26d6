// The dialogs of the toolkit within the whole program.
#include <QFileDialog>
#include <QLineEdit>
#include <gmock/gmock.h>

#include "faces/qt/program_fixture.h"

namespace fathomline {
namespace {

class ToolkitDialogs : public ProgramFixture {
 public:
  void SetUp() override {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    StartWithSample();
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
