// Views of status bars, tool bars and menus.
#pragma once

#include <QHash>
#include <QPointer>
#include <vector>

#include "faces/qt/control_view.h"
#include "toolkit/bars.h"

class QAction;
class QLabel;
class QMenu;
class QMenuBar;
class QStatusBar;
class QToolBar;

namespace fathomline {

class StatusBarView : public ControlView {
 public:
  StatusBarView(ViewContext& context, StatusBar& bar);

 protected:
  void Update() override;

 private:
  class Panel;

  StatusBar& bar_;
  QStatusBar* widget_;
  std::vector<QLabel*> panels_;
};

class ToolBarView : public ControlView {
 public:
  ToolBarView(ViewContext& context, ToolBar& bar);
  QToolBar& Bar() const { return *widget_; }

 protected:
  void Update() override;

 private:
  ToolBar& bar_;
  QToolBar* widget_;
  std::vector<QAction*> actions_;
};

// The menus of a window, from its menu items.
class MenuView {
 public:
  // Whether the window has any.
  static bool Needed(const Window& window);

  MenuView(ViewContext& context, QMenuBar& bar);
  ~MenuView();
  MenuView(const MenuView&) = delete;
  MenuView& operator=(const MenuView&) = delete;
  void Sync();

 private:
  struct Entry {
    MenuItem* item;
    QAction* action;
    std::uint64_t revision;
    bool drawn;
  };

  void Add(MenuItem& item);

  ViewContext& context_;
  QMenuBar& bar_;
  std::vector<Entry> entries_;
  QHash<const MenuItem*, QPointer<QMenu>> menus_;
};

}  // namespace fathomline
