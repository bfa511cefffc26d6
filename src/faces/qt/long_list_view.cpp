#include "faces/qt/long_list_view.h"

#include <QAbstractTableModel>
#include <QFontDatabase>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>

#include "faces/qt/conversions.h"

namespace fathomline {
namespace {

constexpr int kCellPadding = 14;
constexpr int kRowPadding = 2;
constexpr QSize kUsualSize{640, 320};
constexpr QSize kLeastSize{260, 90};

}  // namespace

class LongListModel : public QAbstractTableModel {
 public:
  explicit LongListModel(const LongList& list) : list_(&list) {}

  // Takes over the rows that there are by now. Returns how many have gone from the front.
  int Follow() {
    if (list_ == nullptr) return 0;
    const LongListSource& source = list_->Source();
    if (restarts_ != list_->Restarts() || source.Gone() < gone_) {
      beginResetModel();
      restarts_ = list_->Restarts();
      gone_ = source.Gone();
      rows_ = source.Rows();
      endResetModel();
      return 0;
    }
    const auto wanted = source.Gone() - gone_;
    const int left = static_cast<int>(std::min(wanted, static_cast<std::uint64_t>(rows_)));
    if (left > 0) {
      beginRemoveRows({}, 0, left - 1);
      rows_ -= left;
      gone_ = source.Gone();
      endRemoveRows();
    }
    gone_ = source.Gone();
    if (source.Rows() > rows_) {
      beginInsertRows({}, rows_, source.Rows() - 1);
      rows_ = source.Rows();
      endInsertRows();
    }
    return left;
  }

  // The plain list has gone; the model is empty from now on.
  void Forget() {
    beginResetModel();
    list_ = nullptr;
    rows_ = 0;
    endResetModel();
  }

  std::uint64_t Gone() const { return gone_; }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : rows_;
  }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() || list_ == nullptr ? 0 : static_cast<int>(list_->Columns().size());
  }

  QVariant data(const QModelIndex& index, int role) const override {
    if (list_ == nullptr || !index.isValid()) return {};
    // The source may have gone on since this was told.
    const std::uint64_t number = gone_ + static_cast<std::uint64_t>(index.row());
    const LongListSource& source = list_->Source();
    if (number < source.Gone()) return {};
    const auto row = static_cast<int>(number - source.Gone());
    if (row >= source.Rows()) return {};
    switch (role) {
      case Qt::DisplayRole:
        return ToQt(source.Cell(row, index.column()));
      case Qt::ToolTipRole:
        if (index.column() + 1 < columnCount()) return {};
        return ToQt(source.Cell(row, index.column()));
      case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
      default:
        return {};
    }
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (list_ == nullptr || orientation != Qt::Horizontal || section < 0 ||
        section >= columnCount()) {
      return {};
    }
    if (role == Qt::DisplayRole) {
      return ToQt(list_->Columns()[static_cast<std::size_t>(section)].head);
    }
    if (role == Qt::ToolTipRole) {
      return ToQt(list_->Columns()[static_cast<std::size_t>(section)].tip);
    }
    if (role == Qt::TextAlignmentRole) {
      return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    }
    return {};
  }

 private:
  const LongList* list_;
  int rows_ = 0;
  std::uint64_t gone_ = 0;
  std::uint64_t restarts_ = 0;
};

class LongListView::Table : public QTableView {
 public:
  explicit Table(LongListView& view) : view_(view) {}

  QSize sizeHint() const override { return kUsualSize; }
  QSize minimumSizeHint() const override { return kLeastSize; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Copy)) {
      view_.User([this] { view_.list_.Copy(); });
      return;
    }
    QTableView::keyPressEvent(event);
  }

  void selectionChanged(const QItemSelection& selected, const QItemSelection& before) override {
    QTableView::selectionChanged(selected, before);
    view_.TakeSelection();
  }

  void contextMenuEvent(QContextMenuEvent* event) override { view_.ShowMenu(event->globalPos()); }

 private:
  LongListView& view_;
};

LongListView::LongListView(ViewContext& context, LongList& list)
    : ControlView(context, list),
      list_(list),
      model_(new LongListModel(list)),
      table_(new Table(*this)) {
  model_->setParent(table_);
  model_->Follow();
  table_->setModel(model_);
  table_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setAlternatingRowColors(false);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->setTabKeyNavigation(false);
  table_->setCornerButtonEnabled(false);
  table_->verticalHeader()->setVisible(false);
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  const QFontMetrics metrics = table_->fontMetrics();
  table_->verticalHeader()->setMinimumSectionSize(metrics.height());
  table_->verticalHeader()->setDefaultSectionSize(metrics.height() + kRowPadding);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->horizontalHeader()->setStretchLastSection(true);
  int column = 0;
  for (const LongList::Column& design : list.Columns()) {
    const int room = metrics.horizontalAdvance(QString(design.characters, QLatin1Char('0')));
    table_->setColumnWidth(column++, room + kCellPadding);
  }
  SetWidget(table_);
}

void LongListView::Forget() {
  model_->Forget();
}

// Who looks at the end goes on looking at the end; who looks at other rows keeps them in view.
void LongListView::Update() {
  QScrollBar& bar = *table_->verticalScrollBar();
  const bool atEnd = bar.value() >= bar.maximum();
  const int value = bar.value();
  const int left = model_->Follow();
  if (atEnd) {
    table_->scrollToBottom();
  } else if (left > 0) {
    bar.setValue(std::max(value - left, 0));
  }
  table_->viewport()->update();
  if (marks_ == list_.Marks()) return;
  marks_ = list_.Marks();
  if (list_.Selection().empty()) return;
  const auto row = static_cast<int>(list_.Selection().front().first - model_->Gone());
  if (row < 0 || row >= model_->rowCount()) return;
  table_->selectRow(row);
  table_->scrollTo(model_->index(row, 0), QAbstractItemView::PositionAtCenter);
}

void LongListView::TakeSelection() {
  if (Writing() || Context().window == nullptr) return;
  std::vector<LongList::Range> selection;
  for (const QItemSelectionRange& range : table_->selectionModel()->selection()) {
    selection.push_back({model_->Gone() + static_cast<std::uint64_t>(range.top()),
                         model_->Gone() + static_cast<std::uint64_t>(range.bottom())});
  }
  std::sort(selection.begin(), selection.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  list_.UserSelect(std::move(selection));
}

void LongListView::ShowMenu(const QPoint& at) {
  auto* const menu = new QMenu(table_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(QStringLiteral("&Copy"), QKeySequence::Copy, table_,
                  [this] { User([this] { list_.Copy(); }); });
  menu->addAction(QStringLiteral("Select &all"), table_, [this] { table_->selectAll(); });
  menu->popup(at);
}

}  // namespace fathomline
