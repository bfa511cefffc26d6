#include "faces/qt/modal_dialogs.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QPushButton>

#include "faces/qt/conversions.h"

namespace fathomline {
namespace {

constexpr qsizetype kLongestBoxText = 1500;
constexpr int kLongestUnbroken = 60;

// Long sentences have no blanks at which a line could end: lets it end behind a comma.
QString Breakable(const QString& text) {
  QString broken;
  int run = 0;
  for (const QChar c : text.left(kLongestBoxText)) {
    broken += c;
    run = c.isSpace() ? 0 : run + 1;
    if (run > kLongestUnbroken && (c == QLatin1Char(',') || run > 2 * kLongestUnbroken)) {
      broken += QChar(0x200B);
      run = 0;
    }
  }
  if (text.size() > kLongestBoxText) broken += QChar(0x2026);
  return broken;
}

QMessageBox::Icon ToQt(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Critical:
      return QMessageBox::Critical;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
}

// "Description|*.ext|Description|*.ext" as the filters of a Qt file dialog.
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = fathomline::ToQt(filter).split(QLatin1Char('|'));
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString description = parts[i];
    description = description.section(QLatin1Char('('), 0, 0).trimmed();
    QString patterns = parts[i + 1];
    patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
    if (patterns == QLatin1String("*.*")) patterns = QStringLiteral("*");
    filters.append(QStringLiteral("%1 (%2)").arg(description, patterns));
  }
  return filters;
}

}  // namespace

Face::Reply ShowBox(const DialogStand& stand, const MessageBox& box) {
  QMessageBox shown(stand.parent);
  shown.setObjectName(QStringLiteral("messageBox"));
  shown.setWindowTitle(fathomline::ToQt(box.title));
  shown.setIcon(ToQt(box.icon));
  shown.setTextFormat(Qt::PlainText);
  shown.setText(Breakable(fathomline::ToQt(box.text)));
  shown.setTextInteractionFlags(Qt::TextSelectableByMouse);
  if (box.buttons == BoxButtons::YesNo) {
    shown.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    shown.setDefaultButton(box.defaultNo ? QMessageBox::No : QMessageBox::Yes);
    shown.setEscapeButton(QMessageBox::No);
  } else {
    shown.setStandardButtons(QMessageBox::Ok);
  }
  QCheckBox* silence = nullptr;
  if (box.canBeSilenced) {
    silence = new QCheckBox(QStringLiteral("Do not show this message again in this session"));
    silence->setObjectName(QStringLiteral("silence"));
    shown.setCheckBox(silence);
  }
  stand.run(shown);

  Face::Reply reply;
  reply.silence = silence != nullptr && silence->isChecked();
  if (box.buttons == BoxButtons::YesNo) {
    const QAbstractButton* const clicked = shown.clickedButton();
    const bool yes = clicked != nullptr && clicked == shown.button(QMessageBox::Yes);
    reply.answer = yes ? Answer::Yes : Answer::No;
  }
  return reply;
}

std::optional<std::string> ShowFileDialog(const DialogStand& stand, const FileQuestion& question) {
  QFileDialog dialog(stand.parent, fathomline::ToQt(question.title));
  dialog.setObjectName(QStringLiteral("fileDialog"));
  dialog.setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(question.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  const QStringList filters = NameFilters(question.filter);
  if (!filters.isEmpty()) dialog.setNameFilters(filters);
  if (!question.defaultExtension.empty()) {
    dialog.setDefaultSuffix(fathomline::ToQt(question.defaultExtension));
  }
  if (!question.folder.empty()) dialog.setDirectory(fathomline::ToQt(question.folder));
  // The ending follows the chosen kind of file.
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& kind) {
    const QString suffix = kind.section(QLatin1String("(*."), 1).section(QLatin1Char(')'), 0, 0);
    if (!suffix.isEmpty()) dialog.setDefaultSuffix(suffix);
  });
  const bool accepted = stand.run(dialog);
  const QStringList files = dialog.selectedFiles();
  if (!accepted || files.isEmpty()) return {};
  return FromQt(QDir::toNativeSeparators(files.front()));
}

void ShowPageSetupDialog(const DialogStand& stand, QPrinter& printer) {
  QPageSetupDialog dialog(&printer, stand.parent);
  dialog.setObjectName(QStringLiteral("pageSetup"));
  stand.run(dialog);
}

}  // namespace fathomline
