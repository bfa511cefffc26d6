// The guide, in a window of its own: its headings at the left, its text at the right.
#pragma once

#include <QWidget>

#include "base/dialogs.h"

class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace fathomline {

class HelpWindow : public QWidget {
 public:
  HelpWindow();

  // Shows it in front, ready to choose a heading or to search.
  void Open(HelpStart start);

 private:
  void ListHeadings();
  void GoTo(const QTreeWidgetItem& heading);
  // The next place behind the cursor, from the top again behind the last; the line turns red where
  // there is none.
  void FindNext();

  QTextBrowser* text_;
  QTreeWidget* headings_;
  QLineEdit* search_;
};

}  // namespace fathomline
