#include "faces/qt/layout_builder.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableView>
#include <algorithm>

#include "faces/qt/chart_grid.h"
#include "faces/qt/chart_view.h"
#include "faces/qt/choices_views.h"
#include "faces/qt/control_row.h"
#include "faces/qt/conversions.h"
#include "faces/qt/simple_views.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

constexpr int kMargin = 8;
constexpr int kSpacing = 6;
constexpr int kColumnSpacing = 12;

// Something that can be put into a layout: a widget, a layout, or room.
struct Piece {
  QWidget* widget = nullptr;
  QLayout* layout = nullptr;

  bool Empty() const { return widget == nullptr && layout == nullptr; }
};

bool StretchesWith(const QLayout& layout, Qt::Orientation direction) {
  return (layout.expandingDirections() & direction) != 0;
}

class Builder {
 public:
  explicit Builder(ViewContext& context) : context_(context) {}

  BuiltContent Build() {
    auto* const body = new QWidget;
    auto* const column = new QVBoxLayout(body);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kSpacing);
    const Layout& layout = context_.window->Content();
    if (EndsInButtons(layout)) {
      const auto& rows = layout.Children();
      Put(*column, MakePiece(Layout::Column({rows.begin(), rows.end() - 1})));
      content_.foot = MakeFoot(rows.back());
    } else {
      Put(*column, MakePiece(layout));
    }
    for (Control* control : context_.window->Controls()) {
      if (Placed(*control) || control->Kind() == ControlKind::Frame ||
          control->Kind() == ControlKind::MenuItem) {
        continue;
      }
      ControlView& view = ViewOf(*control);
      const bool bar =
          control->Kind() == ControlKind::ToolBar || control->Kind() == ControlKind::StatusBar;
      if (!bar) column->addWidget(view.Widget());
    }
    if (!StretchesWith(*column, Qt::Vertical)) column->addStretch();
    content_.body = body;
    return std::move(content_);
  }

 private:
  // The buttons of a dialog stay in sight where the rest has to scroll.
  bool EndsInButtons(const Layout& layout) const {
    if (context_.window->Style() != WindowStyle::Dialog) return false;
    if (layout.ShownKind() != Layout::Kind::Column || layout.Children().size() < 2) return false;
    const Layout& last = layout.Children().back();
    return last.ShownKind() == Layout::Kind::Row && !last.Children().empty() &&
           last.Children().back().ShownKind() == Layout::Kind::Item &&
           last.Children().back().Shown()->Kind() == ControlKind::Button;
  }

  QWidget* MakeFoot(const Layout& buttons) {
    auto* const foot = new QWidget;
    QLayout* const line = MakePiece(buttons).layout;
    line->setContentsMargins(kMargin, 0, kMargin, kMargin);
    foot->setLayout(line);
    return foot;
  }

  bool Placed(const Control& control) const {
    return std::any_of(content_.views.begin(), content_.views.end(),
                       [&](const auto& view) { return &view->Plain() == &control; });
  }

  ControlView& ViewOf(Control& control) {
    content_.views.push_back(MakeControlView(context_, control));
    return *content_.views.back();
  }

  // A table is no wider than its columns; a list or a form, which lack heads on one side, is as
  // wide as there is room.
  static bool TakesWidth(const QTableView& table) {
    return table.verticalHeader()->isHidden() || table.horizontalHeader()->isHidden();
  }

  static Qt::Alignment AlignmentOf(const QWidget& widget) {
    const auto* const table = qobject_cast<const QTableView*>(&widget);
    return table != nullptr && !TakesWidth(*table) ? Qt::AlignLeft : Qt::Alignment();
  }

  // Whether such a table, or a label that takes all room, stands in it. Before they have a parent,
  // widgets do not say so themselves.
  static bool TakesWidth(QLayoutItem& item) {
    if (QLayout* const layout = item.layout()) {
      for (int i = 0; i < layout->count(); ++i) {
        if (TakesWidth(*layout->itemAt(i))) return true;
      }
    }
    const auto* const label = qobject_cast<const QLabel*>(item.widget());
    if (label != nullptr) return label->sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
    const auto* const table = qobject_cast<const QTableView*>(item.widget());
    return table != nullptr && TakesWidth(*table);
  }

  static void Put(QBoxLayout& box, const Piece& piece) {
    if (piece.widget != nullptr) box.addWidget(piece.widget, 0, AlignmentOf(*piece.widget));
    if (piece.layout != nullptr) box.addLayout(piece.layout);
  }

  Piece MakePiece(const Layout& layout) {
    switch (layout.ShownKind()) {
      case Layout::Kind::Item:
        return MakeItem(*layout.Shown());
      case Layout::Kind::Words:
        return MakeWords(layout);
      case Layout::Kind::Row:
        return MakeLine(layout, QBoxLayout::LeftToRight);
      case Layout::Kind::Column:
        return MakeLine(layout, QBoxLayout::TopToBottom);
      case Layout::Kind::Form:
        return MakeForm(layout);
      case Layout::Kind::Table:
        return MakeTable(layout);
      case Layout::Kind::Charts:
        return MakeCharts(layout);
      case Layout::Kind::Box:
        return MakeBox(layout);
      case Layout::Kind::Pages:
        return MakePages(layout);
      case Layout::Kind::Nothing:
      case Layout::Kind::Space:
        break;
    }
    return {};
  }

  Piece MakeItem(Control& control) {
    if (Placed(control)) return {};
    ControlView& view = ViewOf(control);
    if (words_ != nullptr) {
      QString name = words_->text().remove(QLatin1Char('&')).trimmed();
      while (name.endsWith(QLatin1Char(':'))) name = name.chopped(1).trimmed();
      if (view.TakesFocus()) words_->setBuddy(view.Widget());
      const bool speaks = control.Kind() == ControlKind::Label;
      if (!name.isEmpty() && !speaks) view.Widget()->setAccessibleName(name);
      view.AddCompanion(words_);
      words_->setToolTip(ToQt(control.ToolTip()));
      words_ = nullptr;
    }
    return {view.Widget(), nullptr};
  }

  Piece MakeWords(const Layout& layout) {
    words_ = new QLabel(ToQt(layout.Text()).trimmed());
    words_->setTextFormat(Qt::PlainText);
    return {words_, nullptr};
  }

  // A row of combo boxes and what belongs to them stays one line however narrow the window is.
  static bool Flows(const Layout& row) {
    bool combo = false;
    std::size_t left = row.Children().size();
    for (const Layout& child : row.Children()) {
      const bool last = --left == 0;
      if (child.ShownKind() == Layout::Kind::Space && last) break;
      if (child.ShownKind() == Layout::Kind::Words) continue;
      if (child.ShownKind() != Layout::Kind::Item) return false;
      const ControlKind kind = child.Shown()->Kind();
      combo = combo || kind == ControlKind::Choices;
      if (kind != ControlKind::Choices && kind != ControlKind::Label &&
          kind != ControlKind::Button && kind != ControlKind::CheckBox) {
        return false;
      }
    }
    return combo && row.Children().size() > 2;
  }

  Piece MakeControlRow(const Layout& layout) {
    auto* const row = new ControlRow(kSpacing);
    std::vector<QWidget*> group;
    const auto& children = layout.Children();
    for (std::size_t i = 0; i < children.size(); ++i) {
      const Piece piece = MakePiece(children[i]);
      if (piece.widget == nullptr) continue;
      group.push_back(piece.widget);
      if (i + 1 < children.size() && Names(children[i], children[i + 1])) continue;
      row->AddGroup(std::move(group));
      group.clear();
    }
    return {row, nullptr};
  }

  // Words stay with what they name, and so does a label in front of a combo box.
  static bool Names(const Layout& words, const Layout& next) {
    if (words.ShownKind() == Layout::Kind::Words) return true;
    return words.ShownKind() == Layout::Kind::Item && next.ShownKind() == Layout::Kind::Item &&
           words.Shown()->Kind() == ControlKind::Label &&
           next.Shown()->Kind() == ControlKind::Choices;
  }

  Piece MakeLine(const Layout& layout, QBoxLayout::Direction direction) {
    if (direction == QBoxLayout::LeftToRight && fields_ == 0 && Flows(layout))
      return MakeControlRow(layout);
    auto* const line = new QBoxLayout(direction);
    line->setSpacing(kSpacing);
    bool space = false;
    for (const Layout& child : layout.Children()) {
      if (child.ShownKind() == Layout::Kind::Space) {
        line->addStretch();
        space = true;
      } else {
        Put(*line, MakePiece(child));
      }
    }
    if (direction == QBoxLayout::LeftToRight) {
      for (int i = 0; i < line->count(); ++i) {
        if (TakesWidth(*line->itemAt(i))) line->setStretch(i, 1);
      }
    }
    // What does not grow stays together at the beginning.
    const bool across = direction == QBoxLayout::LeftToRight;
    if (across && !space && !StretchesWith(*line, Qt::Horizontal)) line->addStretch();
    return {nullptr, line};
  }

  Piece MakeForm(const Layout& layout) {
    auto* const form = new QFormLayout;
    form->setHorizontalSpacing(kColumnSpacing);
    form->setVerticalSpacing(kSpacing);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    const auto& children = layout.Children();
    for (std::size_t i = 0; i + 1 < children.size(); i += 2) {
      QWidget* const words = MakeWords(children[i]).widget;
      ++fields_;
      const Piece field = MakePiece(children[i + 1]);
      --fields_;
      words_ = nullptr;
      if (field.layout != nullptr) {
        form->addRow(words, field.layout);
      } else {
        form->addRow(words, field.widget);
      }
    }
    return {nullptr, form};
  }

  Piece MakeTable(const Layout& layout) {
    auto* const table = new QGridLayout;
    table->setHorizontalSpacing(kColumnSpacing);
    table->setVerticalSpacing(kSpacing);
    const int columns = std::max(layout.Columns(), 1);
    int at = 0;
    for (const Layout& child : layout.Children()) {
      const Piece piece = MakePiece(child);
      const int row = at / columns;
      const int column = at % columns;
      ++at;
      if (piece.widget != nullptr) table->addWidget(piece.widget, row, column);
      if (piece.layout != nullptr) table->addLayout(piece.layout, row, column);
    }
    words_ = nullptr;
    LetHeadsTell(layout, *table);
    if (!StretchesWith(*table, Qt::Horizontal)) table->setColumnStretch(columns, 1);
    return {nullptr, table};
  }

  // Words in the first line of a table say what the controls below them do.
  static void LetHeadsTell(const Layout& layout, QGridLayout& table) {
    const auto& cells = layout.Children();
    const auto columns = static_cast<std::size_t>(std::max(layout.Columns(), 1));
    for (std::size_t i = 0; i < columns && i + columns < cells.size(); ++i) {
      const Layout& below = cells[i + columns];
      if (cells[i].ShownKind() != Layout::Kind::Words) continue;
      if (below.ShownKind() != Layout::Kind::Item) continue;
      QLayoutItem* const head = table.itemAtPosition(0, static_cast<int>(i));
      head->widget()->setToolTip(ToQt(below.Shown()->ToolTip()));
    }
  }

  Piece MakeCharts(const Layout& layout) {
    auto* const grid = new ChartGrid(context_, layout.Columns(), ToQt(layout.Text()));
    for (const Layout& child : layout.Children()) {
      ControlView& view = ViewOf(*child.Shown());
      grid->Add(static_cast<ChartView&>(view));
    }
    content_.scrollsDownOnly = true;
    return {grid, nullptr};
  }

  Piece MakeBox(const Layout& layout) {
    auto view = std::make_unique<FrameView>(context_, static_cast<Frame&>(*layout.Shown()));
    QGroupBox& box = view->Box();
    content_.views.push_back(std::move(view));
    auto* const column = new QVBoxLayout(&box);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    for (const Layout& child : layout.Children()) Put(*column, MakePiece(child));
    // Keeps what does not grow at the top, without making the box grow itself.
    if (!StretchesWith(*column, Qt::Vertical)) column->setAlignment(Qt::AlignTop);
    return {&box, nullptr};
  }

  Piece MakePages(const Layout& layout) {
    auto view = std::make_unique<TabsView>(context_, static_cast<Choices&>(*layout.Shown()));
    TabsView& tabs = *view;
    content_.views.push_back(std::move(view));
    // The tabs themselves come with the entries.
    tabs.Write();
    int page = 0;
    for (const Layout& child : layout.Children()) {
      if (page >= tabs.Tabs().count()) break;
      auto* const column = new QVBoxLayout(tabs.Tabs().widget(page++));
      Put(*column, MakePiece(child));
      if (!StretchesWith(*column, Qt::Vertical)) column->addStretch();
    }
    return {&tabs.Tabs(), nullptr};
  }

  ViewContext& context_;
  BuiltContent content_;
  QLabel* words_ = nullptr;
  int fields_ = 0;  // forms around what is being made, whose rows stay in one line
};

}  // namespace

BuiltContent BuildContent(ViewContext& context) {
  return Builder(context).Build();
}

}  // namespace fathomline
