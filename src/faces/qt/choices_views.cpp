#include "faces/qt/choices_views.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "faces/qt/conversions.h"

namespace fathomline {
namespace {

constexpr int kLeastContentsLength = 8;
constexpr int kLeastTypedLength = 15;
constexpr int kMostVisibleEntries = 20;
constexpr int kListRows = 8;
constexpr int kListWidth = 72;
constexpr int kListMargin = 8;

QStringList Entries(const Choices& choices) {
  QStringList entries;
  for (int i = 0; i < choices.Count(); ++i) entries.append(ToQt(choices.EntryText(i)));
  return entries;
}

int SelectedRow(const QListWidget& list) {
  const QModelIndexList rows = list.selectionModel()->selectedRows();
  return rows.isEmpty() ? Choices::kNone : rows.front().row();
}

}  // namespace

ComboView::ComboView(ViewContext& context, Choices& choices)
    : ControlView(context, choices), choices_(choices), combo_(new QComboBox) {
  const bool typed = choices.ShownAs() == ChoicesKind::EditableCombo;
  combo_->setEditable(typed);
  combo_->setInsertPolicy(QComboBox::NoInsert);
  combo_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  combo_->setMinimumContentsLength(typed ? kLeastTypedLength : kLeastContentsLength);
  combo_->setMaxVisibleItems(kMostVisibleEntries);
  // A wheel that scrolls the window must not change what it happens to pass over.
  combo_->setFocusPolicy(Qt::StrongFocus);
  SetWidget(combo_);
  QObject::connect(combo_, &QComboBox::activated, combo_, [this](int index) {
    User([this, index] {
      if (index >= 0 && index < choices_.Count()) choices_.UserChoose(index);
    });
  });
  if (QLineEdit* const edit = combo_->lineEdit()) {
    combo_->setCompleter(nullptr);
    edit->setObjectName(QStringLiteral("text"));
    QObject::connect(edit, &QLineEdit::textEdited, combo_, [this](const QString& text) {
      User([&] { choices_.UserText(FromQt(text)); });
    });
  }
}

void ComboView::Update() {
  const QSignalBlocker quiet(combo_);
  const QStringList entries = Entries(choices_);
  bool same = combo_->count() == entries.size();
  for (int i = 0; same && i < combo_->count(); ++i) same = combo_->itemText(i) == entries[i];
  if (!same) {
    combo_->clear();
    combo_->addItems(entries);
    combo_->updateGeometry();
  }
  if (combo_->currentIndex() != choices_.Choice()) combo_->setCurrentIndex(choices_.Choice());
  if (QLineEdit* const edit = combo_->lineEdit()) {
    const QString text = ToQt(choices_.Text());
    if (edit->text() != text) edit->setText(text);
    if (SelectionDue()) edit->selectAll();
  }
}

namespace {

// As wide as its entries, however few or many stand beside it.
class EntryList : public QListWidget {
 public:
  QSize sizeHint() const override {
    const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int width = sizeHintForColumn(0) + bar + 4 * frameWidth() + kListMargin;
    return {std::max(width, kListWidth), QListWidget::sizeHint().height()};
  }
};

}  // namespace

ListView::ListView(ViewContext& context, Choices& choices)
    : ControlView(context, choices), choices_(choices), list_(new EntryList) {
  const int row = list_->fontMetrics().height() + 2;
  list_->setMinimumSize(kListWidth, row * kListRows / 2);
  SetWidget(list_);
  // Not the current row, which a list that gets the focus has without anybody having chosen it.
  QObject::connect(list_, &QListWidget::itemSelectionChanged, list_, [this] {
    User([this] {
      const int index = SelectedRow(*list_);
      if (index >= 0 && index < choices_.Count()) choices_.UserChoose(index);
    });
  });
}

void ListView::Update() {
  const QStringList entries = Entries(choices_);
  bool same = list_->count() == entries.size();
  for (int i = 0; same && i < list_->count(); ++i) same = list_->item(i)->text() == entries[i];
  if (!same) {
    list_->clear();
    list_->addItems(entries);
    list_->updateGeometry();
  }
  if (SelectedRow(*list_) != choices_.Choice()) list_->setCurrentRow(choices_.Choice());
}

OptionsView::OptionsView(ViewContext& context, Choices& choices)
    : ControlView(context, choices),
      choices_(choices),
      box_(new QWidget),
      group_(new QButtonGroup(box_)) {
  auto* const layout = new QVBoxLayout(box_);
  layout->setContentsMargins(0, 0, 0, 0);
  MakeButtons();
  SetWidget(box_);
}

void OptionsView::MakeButtons() {
  for (int i = static_cast<int>(group_->buttons().size()); i < choices_.Count(); ++i) {
    auto* const option = new QRadioButton;
    option->setObjectName(ToQt(choices_.Name()) + QStringLiteral("[%1]").arg(i));
    box_->layout()->addWidget(option);
    group_->addButton(option, i);
    QObject::connect(option, &QRadioButton::clicked, option, [this, i] {
      User([this, i] {
        if (i < choices_.Count()) choices_.UserChoose(i);
      });
    });
  }
}

void OptionsView::Update() {
  MakeButtons();
  // An exclusive group always has one that is chosen once there was one.
  group_->setExclusive(false);
  for (QAbstractButton* const option : group_->buttons()) {
    const int id = group_->id(option);
    option->setVisible(id < choices_.Count());
    if (id >= choices_.Count()) continue;
    option->setText(ToQt(choices_.EntryText(id)));
    option->setAccessibleName(option->text().remove(QLatin1Char('&')));
    option->setChecked(id == choices_.Choice());
  }
  group_->setExclusive(true);
}

TabsView::TabsView(ViewContext& context, Choices& choices)
    : ControlView(context, choices), choices_(choices), tabs_(new QTabWidget) {
  tabs_->setUsesScrollButtons(false);
  SetWidget(tabs_);
  tabs_->setAccessibleName(QStringLiteral("Pages"));
  QObject::connect(tabs_, &QTabWidget::currentChanged, tabs_, [this](int index) {
    User([this, index] {
      if (index >= 0 && index < choices_.Count()) choices_.UserChoose(index);
    });
  });
}

void TabsView::Update() {
  while (tabs_->count() < choices_.Count()) tabs_->addTab(new QWidget, QString());
  for (int i = 0; i < choices_.Count(); ++i) tabs_->setTabText(i, ToQt(choices_.EntryText(i)));
  for (int i = 0; i < tabs_->count(); ++i) tabs_->setTabVisible(i, i < choices_.Count());
  if (choices_.Choice() != Choices::kNone) tabs_->setCurrentIndex(choices_.Choice());
}

std::unique_ptr<ControlView> MakeChoicesView(ViewContext& context, Choices& choices) {
  switch (choices.ShownAs()) {
    case ChoicesKind::List:
      return std::make_unique<ListView>(context, choices);
    case ChoicesKind::Options:
      return std::make_unique<OptionsView>(context, choices);
    case ChoicesKind::Tabs:
      return std::make_unique<TabsView>(context, choices);
    case ChoicesKind::Combo:
    case ChoicesKind::EditableCombo:
      break;
  }
  return std::make_unique<ComboView>(context, choices);
}

}  // namespace fathomline
