// A recording dropped on the main window, as a file manager does it.
#include <QMdiArea>
#include <QMimeData>
#include <QUrl>
#include <gmock/gmock.h>

#include "faces/qt/program_fixture.h"

namespace fathomline {
namespace {

using DroppedFiles = ProgramFixture;

TEST_F(DroppedFiles, ARecordingIsOfferedAndWhatIsNoFileIsNotTaken) {
  Start();
  const auto drop = [this](const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    QWidget* const target = Main();
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
    EXPECT_TRUE(event.isAccepted());
    return true;
  };
  frmOpenRecording& dialog = program().session.recordings.dialog;
  ASSERT_TRUE(Main()->acceptDrops());
  EXPECT_FALSE(drop({QUrl(QStringLiteral("https://example.org/a.log"))}));
  EXPECT_FALSE(drop({}));
  EXPECT_TRUE(drop({QUrl::fromLocalFile(ToQt(kSourceFolder + "/samples/voyage.log"))}));
  PumpUntil([&] { return dialog.Visible() && !dialog.prgRead.Visible(); });
  PumpUntil([&] { return Seen(dialog); });
  EXPECT_EQ(dialog.txtName.Text(), "voyage");
  QTest::keyClick(Find<QPushButton>(dialog.cmdOk), Qt::Key_Return);
  PumpUntil([&] { return !records().OfflineRunning && records().SentenceCount > 0; });
  PumpUntil([&] { return Seen(*program().windows.statistics[1]); });
  EXPECT_THAT(FromQt(Main()->windowTitle()), testing::EndsWith("(not saved)"));
}

}  // namespace
}  // namespace fathomline
