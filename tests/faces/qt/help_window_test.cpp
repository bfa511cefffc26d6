// The guide in the program: all of it can be reached, and every picture is there.
#include "faces/qt/help_window.h"

#include <QFile>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "faces/qt/qt_fixture.h"

namespace fathomline {
namespace {

struct Help : QtFixture {
  Help() { EXPECT_TRUE(face.ShowHelp(HelpStart::Search)); }

  template <class Widget>
  static Widget& Part(const char* name) {
    for (QWidget* const top : QApplication::topLevelWidgets()) {
      if (auto* const found = top->findChild<Widget*>(QString::fromLatin1(name))) return *found;
    }
    throw std::runtime_error(name);
  }
};

TEST_F(Help, HeadingsLeadToTheirPlaces) {
  auto& text = Part<QTextBrowser>("helpText");
  auto& headings = Part<QTreeWidget>("helpHeadings");
  int count = 0;
  for (QTreeWidgetItemIterator it(&headings); *it != nullptr; ++it, ++count) {
    headings.setCurrentItem(*it);
    EXPECT_EQ(text.textCursor().block().text(), (*it)->text(0));
  }
  EXPECT_GT(count, 15);
}

TEST_F(Help, PicturesOfTheGuideAreInTheProgram) {
  QFile guide(QStringLiteral(":/guide/guide.md"));
  ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
  auto pictures = QRegularExpression(QStringLiteral(R"(!\[[^\]]+\]\(([^)]+)\))"))
                      .globalMatch(QString::fromUtf8(guide.readAll()));
  ASSERT_TRUE(pictures.hasNext());
  while (pictures.hasNext()) {
    const QString name = pictures.next().captured(1);
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/guide/") + name)) << name.toStdString();
  }
}

TEST_F(Help, SearchGoesFromPlaceToPlaceAndAround) {
  auto& text = Part<QTextBrowser>("helpText");
  auto& search = Part<QLineEdit>("helpSearch");
  QTest::keyClicks(&search, QStringLiteral("dialout"));
  const int first = text.textCursor().position();
  EXPECT_EQ(text.textCursor().selectedText(), QStringLiteral("dialout"));
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_GT(text.textCursor().position(), first);
  QTest::keyClick(&search, Qt::Key_Return);
  EXPECT_EQ(text.textCursor().position(), first);
  QTest::keyClicks(&search, QStringLiteral("-nowhere"));
  EXPECT_NE(search.palette().color(QPalette::Base), QColor(Qt::white));
}

}  // namespace
}  // namespace fathomline
