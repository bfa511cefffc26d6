#include "faces/qt/help_window.h"

#include <QImage>
#include <QLineEdit>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "faces/qt/look.h"

namespace fathomline {
namespace {

constexpr int kBlockRole = Qt::UserRole;
constexpr int kDeepestHeading = 3;
constexpr qreal kMargin = 16.0;
constexpr int kWidestPicture = 680;

// Shows wide pictures small enough to be read beside the headings.
class Guide : public QTextBrowser {
 protected:
  QVariant loadResource(int type, const QUrl& name) override {
    QVariant resource = QTextBrowser::loadResource(type, name);
    if (type != QTextDocument::ImageResource) return resource;
    const QImage picture = QImage::fromData(resource.toByteArray());
    if (picture.width() <= kWidestPicture) return picture;
    return picture.scaledToWidth(kWidestPicture, Qt::SmoothTransformation);
  }
};

}  // namespace

HelpWindow::HelpWindow() : text_(new Guide), headings_(new QTreeWidget), search_(new QLineEdit) {
  setObjectName(QStringLiteral("help"));
  setWindowTitle(QStringLiteral("Help"));
  setWindowIcon(ProgramIcon());
  setAttribute(Qt::WA_QuitOnClose, false);
  resize(1000, 720);

  search_->setObjectName(QStringLiteral("helpSearch"));
  search_->setAccessibleName(QStringLiteral("Search the guide"));
  search_->setPlaceholderText(QStringLiteral("Search, Enter for the next place"));
  search_->setClearButtonEnabled(true);
  headings_->setObjectName(QStringLiteral("helpHeadings"));
  headings_->setAccessibleName(QStringLiteral("Headings of the guide"));
  headings_->setHeaderHidden(true);
  text_->setObjectName(QStringLiteral("helpText"));
  text_->setAccessibleName(QStringLiteral("Guide"));
  text_->setOpenExternalLinks(true);
  text_->document()->setDocumentMargin(kMargin);

  auto* const left = new QWidget;
  auto* const column = new QVBoxLayout(left);
  column->setContentsMargins(6, 6, 0, 6);
  column->addWidget(search_);
  column->addWidget(headings_);
  auto* const splitter = new QSplitter;
  splitter->addWidget(left);
  splitter->addWidget(text_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({260, 740});
  auto* const frame = new QVBoxLayout(this);
  frame->setContentsMargins(0, 0, 0, 0);
  frame->addWidget(splitter);

  text_->setSource(QUrl(QStringLiteral("qrc:/guide/guide.md")), QTextDocument::MarkdownResource);
  ListHeadings();
  connect(headings_, &QTreeWidget::currentItemChanged, this,
          [this](const QTreeWidgetItem* heading, const QTreeWidgetItem*) {
            if (heading != nullptr) GoTo(*heading);
          });
  connect(search_, &QLineEdit::returnPressed, this, &HelpWindow::FindNext);
  connect(search_, &QLineEdit::textEdited, this, [this] {
    text_->moveCursor(QTextCursor::Start);
    FindNext();
  });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_,
          [this] { search_->setFocus(Qt::ShortcutFocusReason); });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

void HelpWindow::Open(HelpStart start) {
  show();
  raise();
  activateWindow();
  if (start == HelpStart::Search) {
    search_->setFocus(Qt::OtherFocusReason);
    search_->selectAll();
  } else {
    headings_->setFocus(Qt::OtherFocusReason);
  }
}

void HelpWindow::ListHeadings() {
  // The latest heading of each level; the title of the guide is level 1.
  QTreeWidgetItem* parents[kDeepestHeading + 1] = {};
  const QTextDocument& guide = *text_->document();
  for (QTextBlock block = guide.begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level < 1 || level > kDeepestHeading) continue;
    QTreeWidgetItem* parent = nullptr;
    for (int above = level - 1; above > 1 && parent == nullptr; --above) parent = parents[above];
    auto* const item =
        parent != nullptr ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(headings_);
    item->setText(0, block.text());
    item->setData(0, kBlockRole, block.blockNumber());
    parents[level] = item;
  }
  headings_->expandAll();
}

void HelpWindow::GoTo(const QTreeWidgetItem& heading) {
  const QTextBlock block =
      text_->document()->findBlockByNumber(heading.data(0, kBlockRole).toInt());
  QTextCursor cursor(block);
  text_->setTextCursor(cursor);
  // The heading at the top, not just somewhere in sight.
  QScrollBar& bar = *text_->verticalScrollBar();
  bar.setValue(bar.value() + text_->cursorRect(cursor).top());
}

void HelpWindow::FindNext() {
  const QString wanted = search_->text();
  bool found = wanted.isEmpty() || text_->find(wanted);
  if (!found) {
    text_->moveCursor(QTextCursor::Start);
    found = text_->find(wanted);
  }
  QPalette palette = search_->palette();
  palette.setColor(QPalette::Base, PaintOf(found ? look::kChartGround : kRed, ColourUse::Fill));
  search_->setPalette(palette);
}

}  // namespace fathomline
