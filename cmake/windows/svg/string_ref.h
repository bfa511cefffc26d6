// The parts of strings of Qt 5, by the views that Qt 6 has instead.
#pragma once

#include <QString>
#include <QStringView>

class QStringRef : public QStringView {
 public:
  QStringRef() = default;
  QStringRef(QStringView view) : QStringView(view) {}
  QStringRef(const QString* string) : QStringView(*string) {}
  QStringRef(const QString* string, qsizetype from, qsizetype length)
      : QStringView(QStringView(*string).mid(from, length)) {}
  QStringRef(QStringView view, qsizetype from, qsizetype length)
      : QStringView(view.mid(from, length)) {}

  const QChar* unicode() const { return data(); }
};
