#include "faces/qt/bar_views.h"

#include <QActionGroup>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStatusBar>
#include <QToolBar>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"
#include "faces/qt/qt_face.h"
#include "faces/qt/tool_icons.h"
#include "toolkit/window.h"

namespace fathomline {

// A panel. Those at the right can be clicked where the program listens.
class StatusBarView::Panel : public QLabel {
 public:
  Panel(StatusBarView& view, int number) : view_(view), number_(number) {
    setTextFormat(Qt::PlainText);
    setContentsMargins(4, 0, 4, 0);
    const bool atRight = number > view.bar_.Panels() - view.bar_.PanelsAtRight();
    if (!view.bar_.onClickPanel || !atRight) return;
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
  }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    QLabel::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || !rect().contains(event->pos())) return;
    Press();
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (IsPress(*event)) {
      Press();
    } else {
      QLabel::keyPressEvent(event);
    }
  }

  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    PaintFocusRing(*this);
  }

 private:
  void Press() {
    view_.User([this] { view_.bar_.ClickPanel(number_); });
  }

  StatusBarView& view_;
  int number_;
};

StatusBarView::StatusBarView(ViewContext& context, StatusBar& bar)
    : ControlView(context, bar), bar_(bar), widget_(new QStatusBar) {
  widget_->setSizeGripEnabled(false);
  SetWidget(widget_);
}

void StatusBarView::Update() {
  while (static_cast<int>(panels_.size()) < bar_.Panels()) {
    const int number = static_cast<int>(panels_.size()) + 1;
    auto* const panel = new Panel(*this, number);
    panel->setObjectName(ToQt(bar_.Name()) + QStringLiteral("[%1]").arg(number));
    if (number > bar_.Panels() - bar_.PanelsAtRight()) {
      widget_->addPermanentWidget(panel);
    } else {
      widget_->addWidget(panel);
    }
    panels_.push_back(panel);
  }
  for (int i = 1; i <= static_cast<int>(panels_.size()); ++i) {
    QLabel& panel = *panels_[static_cast<std::size_t>(i - 1)];
    const bool shown = i <= bar_.Panels() && bar_.PanelVisible(i);
    panel.setVisible(shown);
    if (!shown) continue;
    const QString text = ToQt(bar_.PanelText(i)).trimmed();
    if (panel.text() != text) {
      panel.setText(text);
      panel.setAccessibleName(text);
    }
    if (panel.toolTip() != ToQt(bar_.PanelToolTip(i))) panel.setToolTip(ToQt(bar_.PanelToolTip(i)));
    QPalette palette;
    if (const auto colour = bar_.PanelColour(i)) {
      palette.setColor(QPalette::WindowText, PaintOf(*colour, ColourUse::Text));
    }
    if (panel.palette() != palette) panel.setPalette(palette);
    // Figures that run must not push their neighbours to and fro.
    panel.setMinimumWidth(std::max(panel.minimumWidth(), panel.sizeHint().width()));
  }
}

ToolBarView::ToolBarView(ViewContext& context, ToolBar& bar)
    : ControlView(context, bar), bar_(bar), widget_(new QToolBar) {
  widget_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  widget_->setIconSize({kToolIconSize, kToolIconSize});
  widget_->setMovable(false);
  widget_->setContextMenuPolicy(Qt::PreventContextMenu);
  for (int i = 1; i <= bar.Buttons(); ++i) {
    QAction* const action = widget_->addAction(QString());
    action->setObjectName(ToQt(bar.Name()) + QStringLiteral("[%1]").arg(i));
    actions_.push_back(action);
    QObject::connect(action, &QAction::triggered, widget_,
                     [this, i] { User([this, i] { bar_.Click(bar_.ButtonAt(i).key); }); });
    QWidget* const button = widget_->widgetForAction(action);
    button->setObjectName(action->objectName());
    button->setFocusPolicy(Qt::TabFocus);
  }
  SetWidget(widget_);
}

void ToolBarView::Update() {
  for (int i = 1; i <= bar_.Buttons(); ++i) {
    const ToolBar::Button& button = bar_.ButtonAt(i);
    QAction& action = *actions_[static_cast<std::size_t>(i - 1)];
    if (action.data().toString() != ToQt(button.key)) {
      action.setData(ToQt(button.key));
      action.setIcon(ToolIcon(button.key));
    }
    action.setText(ToQt(button.caption));
    action.setEnabled(button.enabled && bar_.Enabled());
  }
}

bool MenuView::Needed(const Window& window) {
  for (const Control* control : window.Controls()) {
    if (control->Kind() == ControlKind::MenuItem) return true;
  }
  return false;
}

MenuView::MenuView(ViewContext& context, QMenuBar& bar) : context_(context), bar_(bar) {
  for (Control* control : context.window->Controls()) {
    if (control->Kind() == ControlKind::MenuItem) Add(static_cast<MenuItem&>(*control));
  }
}

// The bar stands on, and would keep them with actions that lead nowhere.
MenuView::~MenuView() {
  for (const auto& menu : menus_) delete menu.data();
}

void MenuView::Add(MenuItem& item) {
  bool parent = false;
  for (const Control* control : context_.window->Controls()) {
    if (control->Kind() != ControlKind::MenuItem) continue;
    parent = parent || static_cast<const MenuItem*>(control)->Menu() == &item;
  }
  const MenuItem* const above = item.Menu();
  QAction* action = nullptr;
  if (!parent && above == nullptr) {
    // It acts at once: an empty menu would open instead.
    action = bar_.addAction(QString());
  } else if (parent) {
    auto* const menu = new QMenu(&bar_);
    menu->setObjectName(ToQt(item.Name()));
    menus_.insert(&item, menu);
    action = above == nullptr ? bar_.addMenu(menu) : menus_.value(above)->addMenu(menu);
  } else {
    action = menus_.value(above)->addAction(QString());
    action->setSeparator(item.Text() == "-");
    action->setShortcut(
        QKeySequence::fromString(ToQt(item.Shortcut()), QKeySequence::PortableText));
  }
  action->setObjectName(ToQt(item.Name()));
  if (item.IsOption()) {
    // A group of its own draws it as an option; which one is checked the program says.
    auto* const group = new QActionGroup(&bar_);
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    group->addAction(action);
    action->setCheckable(true);
  }
  QObject::connect(action, &QAction::triggered, &bar_, [this, &item] {
    if (context_.window == nullptr) return;
    const ActionOnStack guard(context_);
    item.Click();
    context_.face.DrawSoon();
  });
  entries_.push_back({&item, action, 0, false});
}

void MenuView::Sync() {
  for (Entry& entry : entries_) {
    const MenuItem& item = *entry.item;
    if (entry.drawn && entry.revision == item.Revision() &&
        entry.action->isChecked() == item.Checked()) {
      continue;
    }
    entry.drawn = true;
    entry.revision = item.Revision();
    if (!entry.action->isSeparator()) entry.action->setText(ToQt(item.Text()));
    entry.action->setVisible(item.Visible());
    entry.action->setEnabled(item.Enabled());
    entry.action->setCheckable(item.Checked() || entry.action->isCheckable());
    entry.action->setChecked(item.Checked());
  }
}

}  // namespace fathomline
