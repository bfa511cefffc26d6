#include "faces/qt/grid_view.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableView>
#include <QToolTip>
#include <algorithm>
#include <chrono>
#include <numeric>
#include <sstream>
#include <utility>

#include "faces/qt/conversions.h"
#include "faces/qt/grid_model.h"
#include "faces/qt/qt_face.h"

namespace fathomline {
namespace {

// A figure with sign and decimals, for columns of a table whose heads are shorter. The columns of a
// list differ in what they hold and are as wide as that.
constexpr int kUsualCharacters = 9;
constexpr int kCellPadding = 14;
constexpr int kRowPadding = 6;
// Grids of up to so many rows are seen whole, longer ones scroll.
constexpr int kWholeRows = 12;
constexpr int kLeastRows = 4;
constexpr int kLeastWidth = 260;
constexpr int kCutPadding = 6;

}  // namespace

class GridView::Table : public QTableView {
 public:
  explicit Table(GridView& view) : view_(view) {}

  QSize sizeHint() const override {
    const int rows = model()->rowCount();
    const int shown = rows <= kWholeRows ? rows : kWholeRows;
    return {FullWidth(), HeightOf(shown)};
  }

  QSize minimumSizeHint() const override {
    const int rows = model()->rowCount();
    return {std::min(kLeastWidth, FullWidth()), HeightOf(rows <= kWholeRows ? rows : kLeastRows)};
  }

  void keyboardSearch(const QString& search) override { SearchRows(search); }

  void PlaceCorner(QLabel& corner) const {
    corner.setGeometry(frameWidth(), frameWidth(), verticalHeader()->width(),
                       horizontalHeader()->height());
    corner.setVisible(!verticalHeader()->isHidden() && !horizontalHeader()->isHidden());
  }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid()) {
      view_.PressRow(index.row(), event->position().toPoint());
    }
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy)) {
      QApplication::clipboard()->setText(view_.SelectedText(false));
      return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && view_.grid_.onClickRow && currentIndex().isValid()) {
      view_.PressRow(currentIndex().row(), visualRect(currentIndex()).center());
      return;
    }
    QTableView::keyPressEvent(event);
  }

  void resizeEvent(QResizeEvent* event) override {
    QTableView::resizeEvent(event);
    PlaceCorner(*view_.corner_);
    view_.FillWidth();
    // With the scroll bar goes the room for it.
    const bool scrolls = width() < FullWidth();
    if (std::exchange(scrolls_, scrolls) != scrolls) updateGeometry();
  }

  void contextMenuEvent(QContextMenuEvent* event) override { view_.ShowMenu(event->globalPos()); }

  // A text that is cut is told whole.
  bool viewportEvent(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    const QString text = index.data().toString();
    const bool cut =
        fontMetrics().horizontalAdvance(text) + kCutPadding > visualRect(index).width();
    if (!index.isValid() || !cut) return QTableView::viewportEvent(event);
    QToolTip::showText(help->globalPos(), ToolTipOf(text), this);
    return true;
  }

 private:
  int FullWidth() const {
    const int heads = verticalHeader()->isHidden() ? 0 : verticalHeader()->width();
    const int columns = view_.FillsWidth() ? view_.allWidths_ : horizontalHeader()->length();
    const bool scrolls = model()->rowCount() > kWholeRows;
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    return heads + columns + 2 * frameWidth() + bar;
  }

  int HeightOf(int rows) const {
    const int heads = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->sizeHint().height();
    const int bar = scrolls_ ? horizontalScrollBar()->sizeHint().height() : 0;
    return heads + rows * verticalHeader()->defaultSectionSize() + 2 * frameWidth() + bar;
  }

  // Goes to the next row of which any cell begins with what has been typed.
  void SearchRows(const QString& search) {
    const auto now = std::chrono::steady_clock::now();
    typed_ = now - typedAt_ > std::chrono::milliseconds(QApplication::keyboardInputInterval() * 2)
                 ? search
                 : typed_ + search;
    typedAt_ = now;
    const int rows = model()->rowCount();
    const int columns = model()->columnCount();
    const int from = std::max(currentIndex().row(), 0) + (typed_.size() == 1 ? 1 : 0);
    for (int i = 0; i < rows; ++i) {
      const int row = (from + i) % rows;
      for (int column = 0; column < columns; ++column) {
        const QModelIndex index = model()->index(row, column);
        if (!index.data().toString().trimmed().startsWith(typed_, Qt::CaseInsensitive)) continue;
        setCurrentIndex(index);
        scrollTo(index);
        return;
      }
    }
  }

  GridView& view_;
  QString typed_;
  bool scrolls_ = false;
  std::chrono::steady_clock::time_point typedAt_{};
};

GridView::GridView(ViewContext& context, Grid& grid)
    : ControlView(context, grid), grid_(grid), table_(new Table(*this)) {
  model_ = new GridModel(grid);
  model_->setParent(table_);
  corner_ = new QLabel(table_);
  corner_->setIndent(kCellPadding / 3);
  table_->setModel(model_);
  table_->setAlternatingRowColors(true);
  table_->setCornerButtonEnabled(false);
  table_->setWordWrap(false);
  table_->setTabKeyNavigation(false);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table_->verticalHeader()->setVisible(model_->HasRowHeads());
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + kRowPadding);
  table_->horizontalHeader()->setVisible(model_->HasColumnHeads());
  // A list holds one thing in each row.
  if (!model_->HasRowHeads()) table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->verticalHeader()->setHighlightSections(false);
  if (grid.HeadsClickable()) {
    table_->horizontalHeader()->setSectionsClickable(true);
    QObject::connect(
        table_->horizontalHeader(), &QHeaderView::sectionClicked, table_,
        [this](int column) { User([&] { grid_.ClickHead(model_->GridColumn(column)); }); });
  }
  SetWidget(table_);
  Resize();
}

void GridView::Forget() {
  // Without its columns the table changes its size, and the grid is not to be asked any more.
  widths_.clear();
  model_->Forget();
}

void GridView::Update() {
  if (model_->Follow()) {
    widths_.clear();
    given_.clear();
  }
  Resize();
  table_->viewport()->update();
  const Grid::Order& order = grid_.ShownOrder();
  table_->horizontalHeader()->setSortIndicatorShown(order.column >= 0);
  if (order.column >= 0) {
    table_->horizontalHeader()->setSortIndicator(
        order.column - model_->GridColumn(0),
        order.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
  }
  if (marks_ == grid_.Marks()) return;
  marks_ = grid_.Marks();
  const int row = model_->RowOf(grid_.MarkedRow());
  if (row < 0) return;
  table_->selectRow(row);
  table_->scrollTo(model_->index(row, 0));
}

// Columns are made wide enough once and only ever grow, since a table that keeps adjusting itself
// cannot be read and costs much.
void GridView::Resize() {
  const QFontMetrics metrics = table_->fontMetrics();
  const int character = metrics.horizontalAdvance(QLatin1Char('0'));
  const int columns = model_->columnCount();
  const int least = model_->HasRowHeads() ? kUsualCharacters : 0;
  widths_.resize(static_cast<std::size_t>(columns), 0);
  bool changed = false;
  for (int column = 0; column < columns; ++column) {
    const int asked = grid_.ColumnWidth(model_->GridColumn(column)) / kTwipsPerPixel;
    const QString head = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const int needed = std::clamp(model_->Longest(column), least, kWidestCharacters);
    int& width = widths_[static_cast<std::size_t>(column)];
    const int wanted = std::max({asked, metrics.horizontalAdvance(head) + kCellPadding,
                                 needed * character + kCellPadding,
                                 table_->horizontalHeader()->minimumSectionSize(), width});
    if (wanted == width) continue;
    width = wanted;
    SetWidth(column, width);
    changed = true;
  }
  allWidths_ = std::accumulate(widths_.begin(), widths_.end(), 0);
  FillWidth();
  if (model_->HasRowHeads()) {
    const QString corner = model_->Cell(0, 0);
    const int wanted =
        std::max({std::min(model_->LongestRowHead(), kWidestCharacters) * character,
                  metrics.horizontalAdvance(corner), grid_.ColumnWidth(0) / kTwipsPerPixel}) +
        kCellPadding;
    if (wanted > headWidth_) {
      headWidth_ = wanted;
      table_->verticalHeader()->setFixedWidth(headWidth_);
      changed = true;
    }
    corner_->setText(corner);
    table_->PlaceCorner(*corner_);
  }
  // A list takes the room that there is, since its rows come as targets do.
  const bool whole = (model_->HasRowHeads() || grid_.FewRows()) && model_->rowCount() <= kWholeRows;
  const QSizePolicy policy(QSizePolicy::Expanding,
                           whole ? QSizePolicy::Fixed : QSizePolicy::Expanding);
  if (table_->sizePolicy() != policy) table_->setSizePolicy(policy);
  // How high the table is at least depends on its first rows only.
  const int shownRows = std::min(model_->rowCount(), kWholeRows + 1);
  if (std::exchange(shownRows_, shownRows) != shownRows) changed = true;
  if (changed) table_->updateGeometry();
}

bool GridView::FillsWidth() const {
  return !model_->HasRowHeads() || !model_->HasColumnHeads();
}

// The widest column of a list, the one that holds names, has what the others leave. Where all of
// them have no room, those that have grown beyond their design give way, if that lets all be seen.
void GridView::FillWidth() {
  if (!FillsWidth() || widths_.empty()) return;
  const QFontMetrics metrics = table_->fontMetrics();
  std::vector<int> shown = widths_;
  const auto designed = [&](int column) {
    const int asked = grid_.ColumnWidth(model_->GridColumn(column)) / kTwipsPerPixel;
    const QString head = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    const int least = std::max(asked, metrics.horizontalAdvance(head) + kCellPadding);
    const int width = widths_[static_cast<std::size_t>(column)];
    return asked > 0 ? std::min(least, width) : width;
  };
  int over = allWidths_ - table_->viewport()->width();
  while (over > 0) {
    std::size_t widest = 0;
    int most = 0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const int spare = shown[i] - designed(static_cast<int>(i));
      if (spare > most) most = spare, widest = i;
    }
    if (most == 0) break;
    const int given = std::min(most, over);
    shown[widest] -= given;
    over -= given;
  }
  if (over > 0) shown = widths_;
  if (over < 0) *std::max_element(shown.begin(), shown.end()) -= over;
  for (int column = 0; column < static_cast<int>(shown.size()); ++column) {
    SetWidth(column, shown[static_cast<std::size_t>(column)]);
  }
}

// A width that the user has given a column stays until there is another one to give it.
void GridView::SetWidth(int column, int width) {
  given_.resize(widths_.size(), 0);
  if (std::exchange(given_[static_cast<std::size_t>(column)], width) == width) return;
  table_->setColumnWidth(column, width);
}

void GridView::PressRow(int row, const QPoint& at) {
  User([&] {
    const int gridRow = model_->GridRow(row);
    if (gridRow >= grid_.Rows()) return;
    // A child window is no window to Qt, which would count from the corner of the main window.
    const QWidget* const host = Context().face.HostOf(*Context().window);
    const QPoint point = table_->viewport()->mapTo(host, at);
    grid_.ClickRow(gridRow, point.x() * kTwipsPerPixel, point.y() * kTwipsPerPixel);
  });
}

QString GridView::SelectedText(bool heads) const {
  QModelIndexList cells = table_->selectionModel()->selectedIndexes();
  std::sort(cells.begin(), cells.end());
  QList<int> columns;
  for (const QModelIndex& cell : cells) {
    if (!columns.contains(cell.column())) columns.append(cell.column());
  }
  std::sort(columns.begin(), columns.end());
  QStringList lines;
  const bool rowHeads = heads && model_->HasRowHeads();
  if (heads && model_->HasColumnHeads()) {
    QStringList line;
    if (rowHeads) line.append(model_->Cell(0, 0));
    for (const int column : columns) {
      line.append(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    }
    lines.append(line.join(QLatin1Char('\t')));
  }
  for (qsizetype i = 0; i < cells.size();) {
    const int row = cells[i].row();
    QStringList line;
    if (rowHeads) line.append(model_->headerData(row, Qt::Vertical, Qt::DisplayRole).toString());
    for (const int column : columns) {
      const bool selected =
          i < cells.size() && cells[i].row() == row && cells[i].column() == column;
      line.append(selected ? cells[i++].data().toString() : QString());
    }
    lines.append(line.join(QLatin1Char('\t')));
  }
  return lines.join(QLatin1Char('\n'));
}

void GridView::ShowMenu(const QPoint& at) {
  auto* const menu = new QMenu(table_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto copy = [this](bool heads) { QApplication::clipboard()->setText(SelectedText(heads)); };
  menu->addAction(QStringLiteral("&Copy"), QKeySequence::Copy, table_, [copy] { copy(false); });
  menu->addAction(QStringLiteral("Copy with &heads"), table_, [copy] { copy(true); });
  menu->addAction(QStringLiteral("Select &all"), table_, [this] { table_->selectAll(); });
  menu->addSeparator();
  if (grid_.HeadsClickable() && table_->currentIndex().isValid()) {
    const int column = table_->currentIndex().column();
    QString head = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    head.replace(QLatin1Char('&'), QLatin1String("&&"));
    menu->addAction(QStringLiteral("S&ort by %1").arg(head), table_,
                    [this, column] { User([&] { grid_.ClickHead(model_->GridColumn(column)); }); });
  }
  menu->addAction(QStringLiteral("&Save as CSV ..."), table_,
                  [this] { User([this] { SaveAsFile(); }); });
  menu->popup(at);
}

void GridView::SaveAsFile() {
  const auto path = Context().face.ChooseFile({.title = "Save table",
                                               .filter = "Comma-separated values|*.csv",
                                               .defaultExtension = "csv",
                                               .save = true});
  if (!path || Context().window == nullptr) return;
  std::ostringstream table;
  grid_.WriteCsv(table);
  Context().face.SaveFile(*path, table.str(), "The table could not be saved.");
}

}  // namespace fathomline
