#include "faces/qt/simple_views.h"

#include <QCheckBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

#include "faces/qt/conversions.h"
#include "faces/qt/look.h"

namespace fathomline {
namespace {

constexpr int kSwatchWidth = 28;
constexpr int kSwatchHeight = 16;
constexpr int kLeastLineWidth = 90;
constexpr int kUsualPathWidth = 480;
// What a label shows at most; a text may be as long as a received line.
constexpr qsizetype kLongestLabel = 400;
constexpr qsizetype kLongestToolTip = 4000;

// The colour of the text of a widget, or the usual one.
void SetTextColour(QWidget& widget, const std::optional<Colour>& colour) {
  QPalette palette;
  if (colour) {
    palette.setColor(QPalette::WindowText, PaintOf(*colour, ColourUse::Text));
    palette.setColor(QPalette::Text, PaintOf(*colour, ColourUse::Text));
    palette.setColor(QPalette::ButtonText, PaintOf(*colour, ColourUse::Text));
  }
  if (widget.palette() != palette) widget.setPalette(palette);
}

}  // namespace

FrameView::FrameView(ViewContext& context, Frame& frame)
    : ControlView(context, frame), frame_(frame), box_(new QGroupBox) {
  SetWidget(box_);
}

void FrameView::Update() {
  box_->setTitle(WithoutMnemonics(frame_.Text()));
  box_->setAccessibleName(frame_.Text().empty() ? SpokenName() : ToQt(frame_.Text()));
  SetTextColour(*box_, frame_.ShownColour());
}

namespace {

// Tells of clicks where the program listens to them.
class ClickableLabel : public QLabel {
 public:
  explicit ClickableLabel(LabelView& view) : view_(view) { setCursor(Qt::PointingHandCursor); }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    QLabel::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && rect().contains(event->pos())) view_.Press();
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (IsPress(*event)) {
      view_.Press();
    } else {
      QLabel::keyPressEvent(event);
    }
  }

  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    PaintFocusRing(*this);
  }

 private:
  LabelView& view_;
};

// One line, shortened to the room that it has.
class CutLabel : public QLabel {
 public:
  explicit CutLabel(Label::Look look) : look_(look) {
    if (look == Label::Look::Line) setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  QSize sizeHint() const override {
    const int width = look_ == Label::Look::Line
                          ? kLeastLineWidth
                          : std::min(QLabel::sizeHint().width(), kUsualPathWidth);
    return {width, Height()};
  }
  QSize minimumSizeHint() const override {
    return {std::min(sizeHint().width(), kLeastLineWidth), Height()};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRect room = contentsRect();
    const auto mode = look_ == Label::Look::Line ? Qt::ElideRight : Qt::ElideMiddle;
    style()->drawItemText(&painter, room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          palette(), isEnabled(),
                          fontMetrics().elidedText(text(), mode, room.width()), foregroundRole());
  }

 private:
  int Height() const {
    const QMargins margins = contentsMargins();
    return fontMetrics().height() + margins.top() + margins.bottom();
  }

  Label::Look look_;
};

QLabel* MakeLabel(LabelView& view, const Label& label) {
  if (label.onClick) return new ClickableLabel(view);
  const Label::Look look = label.ShownLook();
  if (look == Label::Look::Path || look == Label::Look::Line) return new CutLabel(look);
  return new QLabel;
}

}  // namespace

LabelView::LabelView(ViewContext& context, Label& label)
    : ControlView(context, label), label_(label), text_(MakeLabel(*this, label)) {
  text_->setTextFormat(Qt::PlainText);
  if (label.ShownLook() == Label::Look::Swatch) {
    text_->setFixedSize(kSwatchWidth, kSwatchHeight);
  } else if (!label.onClick) {
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text_->setFocusPolicy(Qt::NoFocus);
  }
  SetWidget(text_);
  if (label.ShownLook() == Label::Look::Swatch) text_->setAccessibleName(SpokenName());
}

void LabelView::Update() {
  if (label_.ShownLook() == Label::Look::Swatch) {
    // White is the paper: there is nothing to show a colour of.
    const Colour colour = label_.ShownColour().value_or(kWhite);
    text_->setAutoFillBackground(colour != kWhite);
    QPalette palette;
    if (colour != kWhite) palette.setColor(QPalette::Window, PaintOf(colour));
    text_->setPalette(palette);
    return;
  }
  if (label_.onClick) text_->setFocusPolicy(label_.TabStop() ? Qt::TabFocus : Qt::NoFocus);
  QString text = ToQt(label_.Text());
  const bool line = label_.ShownLook() == Label::Look::Line;
  if (line || label_.ShownLook() == Label::Look::Path) {
    text_->setToolTip(ToolTipOf(text.left(kLongestToolTip)));
  }
  if (text.size() > kLongestLabel) text = text.left(kLongestLabel) + QChar(0x2026);
  if (text_->text() != text) text_->setText(text);
  SetTextColour(*text_, label_.ShownColour());
}

ButtonView::ButtonView(ViewContext& context, Button& button)
    : ControlView(context, button), button_(button), push_(new QPushButton) {
  push_->setAutoDefault(true);
  push_->setDefault(button.ButtonRole() == Button::Role::Default);
  SetWidget(push_);
  QObject::connect(push_, &QPushButton::clicked, push_,
                   [this] { User([this] { button_.Click(); }); });
}

void ButtonView::Update() {
  push_->setText(ToQt(button_.Text()));
  push_->setAccessibleName(button_.Text().empty() ? SpokenName()
                                                  : ToQt(button_.Text()).remove(QLatin1Char('&')));
  SetTextColour(*push_, button_.ShownColour());
}

TextLineView::TextLineView(ViewContext& context, TextBox& box)
    : ControlView(context, box), box_(box), edit_(new QLineEdit) {
  edit_->setMinimumWidth(kLeastLineWidth);
  SetWidget(edit_);
  QObject::connect(edit_, &QLineEdit::textEdited, edit_,
                   [this](const QString& text) { User([&] { box_.UserText(FromQt(text)); }); });
}

void TextLineView::Update() {
  const QString text = ToQt(box_.Text());
  if (edit_->text() != text) {
    const int cursor = edit_->cursorPosition();
    edit_->setText(text);
    if (edit_->hasFocus()) edit_->setCursorPosition(cursor);
  }
  edit_->setReadOnly(box_.ReadOnly());
  if (SelectionDue()) edit_->selectAll();
  SetTextColour(*edit_, box_.ShownColour());
}

TextAreaView::TextAreaView(ViewContext& context, TextBox& box)
    : ControlView(context, box), box_(box), edit_(new QPlainTextEdit) {
  edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
  edit_->setUndoRedoEnabled(!box.ReadOnly());
  edit_->setTabChangesFocus(true);
  edit_->setMinimumSize(kLeastLineWidth * 2, box.Height() / kTwipsPerPixel / 2);
  // Raw sentences read best where every character is equally wide.
  edit_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  SetWidget(edit_);
  QObject::connect(edit_, &QPlainTextEdit::textChanged, edit_, [this] {
    if (Writing() || !edit_->hasFocus()) return;
    User([this] { box_.UserText(FromQt(edit_->toPlainText())); });
  });
}

void TextAreaView::Update() {
  edit_->setReadOnly(box_.ReadOnly());
  SetTextColour(*edit_, box_.ShownColour());
  if (edit_->isVisible()) box_.SetHeight(edit_->height() * kTwipsPerPixel);
  QString text = ToQt(box_.Text());
  text.remove(QLatin1Char('\r'));
  const QString present = edit_->toPlainText();
  if (present == text) return;
  const bool appended = !present.isEmpty() && text.startsWith(present);
  if (appended) {
    QTextCursor end(edit_->document());
    end.movePosition(QTextCursor::End);
    end.insertText(text.mid(present.size()));
  } else {
    const int line = edit_->verticalScrollBar()->value();
    edit_->setPlainText(text);
    if (!edit_->isReadOnly()) edit_->verticalScrollBar()->setValue(line);
  }
  if (edit_->isReadOnly())
    edit_->verticalScrollBar()->setValue(edit_->verticalScrollBar()->maximum());
}

CheckBoxView::CheckBoxView(ViewContext& context, CheckBox& box)
    : ControlView(context, box), box_(box), check_(new QCheckBox) {
  SetWidget(check_);
  QObject::connect(check_, &QCheckBox::clicked, check_, [this] { User([this] { box_.Click(); }); });
}

void CheckBoxView::Update() {
  check_->setText(ToQt(box_.Text()));
  check_->setAccessibleName(box_.Text().empty() ? SpokenName()
                                                : ToQt(box_.Text()).remove(QLatin1Char('&')));
  check_->setChecked(box_.Checked());
  SetTextColour(*check_, box_.ShownColour());
}

ProgressView::ProgressView(ViewContext& context, ProgressBar& progress)
    : ControlView(context, progress), progress_(progress), bar_(new QProgressBar) {
  bar_->setRange(0, 1000);
  bar_->setFormat(QStringLiteral("%p %"));
  SetWidget(bar_);
}

void ProgressView::Update() {
  bar_->setValue(progress_.Share());
}

}  // namespace fathomline
