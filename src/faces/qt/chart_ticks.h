// Where the ticks of a chart stand and what they say.
#pragma once

#include <QStringList>
#include <qcustomplot.h>
#include <string>

#include "base/datetime.h"

namespace fathomline {

// Ticks at 1, 2 and 5 times powers of ten, as close as is asked and at least two.
class ValueTicker : public QCPAxisTicker {
 public:
  // To be called where the length of the axis, in pixels, has changed. The ticks stand no closer
  // than `apart` pixels.
  void Fit(int pixels, int apart);
  // What the ticks say; a range of no length has none.
  QStringList Labels(const QCPRange& range);

 protected:
  double getTickStep(const QCPRange& range) override;
  int getSubTickCount(double) override { return 0; }
  QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;

 private:
  int pixels_ = 1;
  int apart_ = 1;
  int decimals_ = 0;
};

// Ticks at whole units of time, no more than have room for their labels. These follow the picture
// of the axis, in UTC; seconds or the date stand with them where it takes these to tell them apart.
class TimeTicker : public QCPAxisTicker {
 public:
  // To be called where the picture or the width of the axis has changed.
  void Fit(const std::string& picture, int pixels, const QFontMetrics& metrics);
  // Of the labels of an axis that shows so much.
  static int Lines(const QCPRange& range) { return range.size() > kSecondsPerDay ? 2 : 1; }
  // What a label may stand out beyond the end of the axis.
  int Overhang() const;

 protected:
  double getTickStep(const QCPRange& range) override;
  int getSubTickCount(double tickStep) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;

 private:
  std::string WithSeconds() const;

  std::string picture_;
  int pixels_ = 1;
  int timeWidth_ = 1;
  int secondsWidth_ = 1;
  int dateWidth_ = 1;
  double step_ = 1.0;
  bool days_ = false;
};

}  // namespace fathomline
