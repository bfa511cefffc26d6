#include "faces/qt/chart_ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string_view>

#include "faces/qt/conversions.h"
#include "faces/qt/series_plottable.h"

namespace fathomline {
namespace {

constexpr int kFewestTicks = 2;
// Beyond these a figure says more with an exponent.
constexpr double kLargestPlain = 1e9;
constexpr int kMostDecimals = 9;

// Seconds between two labels of a time axis; beyond the last one they double.
constexpr std::array kTimeSteps = {1.0,    2.0,    5.0,     10.0,    15.0,    30.0,
                                   60.0,   120.0,  300.0,   600.0,   900.0,   1800.0,
                                   3600.0, 7200.0, 10800.0, 21600.0, 43200.0, 86400.0};
constexpr int kLabelGap = 16;
constexpr std::string_view kDatePicture = "dd mmm";

// The nth of 1, 2, 5, 10, 20, 50 ..., also of a negative n.
double RoundStep(int n) {
  constexpr std::array kSteps = {1.0, 2.0, 5.0};
  const int within = ((n % 3) + 3) % 3;
  return kSteps[static_cast<std::size_t>(within)] * std::pow(10.0, (n - within) / 3);
}

int TicksIn(const QCPRange& range, double step) {
  return static_cast<int>(std::floor(range.upper / step) - std::ceil(range.lower / step)) + 1;
}

}  // namespace

void ValueTicker::Fit(int pixels, int apart) {
  pixels_ = std::max(pixels, 1);
  apart_ = std::max(apart, 1);
}

double ValueTicker::getTickStep(const QCPRange& range) {
  const double closest = range.size() * apart_ / pixels_;
  int n = static_cast<int>(std::floor(std::log10(closest))) * 3;
  while (RoundStep(n) < closest) ++n;
  constexpr int kTries = 4;
  for (int i = 0; i < kTries && TicksIn(range, RoundStep(n)) < kFewestTicks; ++i) --n;
  const double step = RoundStep(n);
  decimals_ = std::clamp(-static_cast<int>(std::floor(std::log10(step) + 1e-9)), 0, kMostDecimals);
  return step;
}

QString ValueTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
  if (std::abs(tick) >= kLargestPlain) return QString::number(tick, 'g', 6);
  const QString text = QString::number(tick, 'f', decimals_);
  const bool zero = std::all_of(text.begin(), text.end(), [](QChar character) {
    return character == u'-' || character == u'0' || character == u'.';
  });
  return zero && text.startsWith(u'-') ? text.mid(1) : text;
}

QStringList ValueTicker::Labels(const QCPRange& range) {
  QVector<double> ticks;
  QVector<QString> labels;
  if (range.size() > 0.0) generate(range, QLocale::c(), u'g', 6, ticks, nullptr, &labels);
  return labels;
}

void TimeTicker::Fit(const std::string& picture, int pixels, const QFontMetrics& metrics) {
  picture_ = picture;
  pixels_ = pixels;
  const auto width = [&](const std::string_view labelPicture) {
    return metrics.horizontalAdvance(ToQt(FormatDateTime({}, labelPicture))) + kLabelGap;
  };
  timeWidth_ = width(picture_);
  secondsWidth_ = width(WithSeconds());
  dateWidth_ = width(kDatePicture);
}

int TimeTicker::Overhang() const {
  return (std::max(secondsWidth_, dateWidth_) - kLabelGap) / 2 + 2;
}

std::string TimeTicker::WithSeconds() const {
  const bool missing =
      picture_.find("nn") != std::string::npos && picture_.find("ss") == std::string::npos;
  return missing ? picture_ + ":ss" : picture_;
}

double TimeTicker::getTickStep(const QCPRange& range) {
  days_ = range.size() > kSecondsPerDay;
  const auto step = [](std::size_t n) {
    return n < kTimeSteps.size()
               ? kTimeSteps[n]
               : kTimeSteps.back() * std::exp2(static_cast<double>(n + 1 - kTimeSteps.size()));
  };
  const auto width = [&](std::size_t n) {
    const int time = step(n) < 60.0 ? secondsWidth_ : timeWidth_;
    return days_ ? std::max(time, dateWidth_) : time;
  };
  std::size_t n = 0;
  while (range.size() / step(n) * width(n) > pixels_) ++n;
  // Two labels may have room where so many of them would not always have.
  while (n > 0 && TicksIn(range, step(n)) < kFewestTicks &&
         TicksIn(range, step(n - 1)) * width(n - 1) <= pixels_) {
    --n;
  }
  return step_ = step(n);
}

int TimeTicker::getSubTickCount(double) {
  return 0;
}

QString TimeTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
  const DateTime moment{BottomScale{true}.FromPlot(tick)};
  const auto text = [&](std::string_view picture) { return ToQt(FormatDateTime(moment, picture)); };
  if (step_ >= kSecondsPerDay) return text(kDatePicture) + QLatin1Char('\n') + text("yyyy");
  const QString time = text(step_ < 60.0 ? WithSeconds() : picture_);
  return days_ ? time + QLatin1Char('\n') + text(kDatePicture) : time;
}

}  // namespace fathomline
