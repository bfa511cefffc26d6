#include "simulator/sentence_writer.h"

#include <array>
#include <cmath>

namespace fathomline::simulator {
namespace {

constexpr std::array<std::int64_t, 8> kPowersOfTen{1,      10,      100,       1'000,
                                                   10'000, 100'000, 1'000'000, 10'000'000};

std::int64_t PowerOfTen(int exponent) {
  return kPowersOfTen[static_cast<std::size_t>(exponent)];
}

std::int64_t Scaled(double value, int decimals) {
  return std::llround(value * static_cast<double>(PowerOfTen(decimals)));
}

constexpr std::int64_t kDay = 86400;

}  // namespace

UtcCalendar::UtcCalendar(DateTime start)
    : startSecond_(std::llround(start.days * static_cast<double>(kDay))) {}

UtcMoment UtcCalendar::At(SimulatedTime time) {
  const std::int64_t second = startSecond_ + time / kOneSecond;
  if (second / kDay != day_) {
    day_ = second / kDay;
    date_ = ToCalendar(DateTime{static_cast<double>(day_)});
  }
  const int ofDay = static_cast<int>(second % kDay);
  return {date_.year,
          date_.month,
          date_.day,
          ofDay / 3600,
          ofDay / 60 % 60,
          ofDay % 60,
          static_cast<int>(time % kOneSecond / (kOneSecond / 100))};
}

std::string_view LineBatch::Line(std::size_t index) const {
  const std::size_t from = index == 0 ? 0 : ends_[index - 1];
  std::string_view line = std::string_view(text_).substr(from, ends_[index] - from);
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  return line;
}

void LineBatch::Clear() {
  text_.clear();
  ends_.clear();
}

void SentenceWriter::Begin(std::string_view address) {
  start_ = batch_.text_.size();
  batch_.text_ += address;
}

void SentenceWriter::End() {
  std::string& text = batch_.text_;
  unsigned sum = 0;
  for (std::size_t i = start_ + 1; i < text.size(); ++i) sum ^= static_cast<unsigned char>(text[i]);
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text += '*';
  text += kDigits[sum >> 4];
  text += kDigits[sum & 15];
  if (crLf_) text += '\r';
  text += '\n';
  batch_.ends_.push_back(text.size());
}

SentenceWriter& SentenceWriter::Text(std::string_view field) {
  batch_.text_ += ',';
  batch_.text_ += field;
  return *this;
}

SentenceWriter& SentenceWriter::Empty(int fields) {
  batch_.text_.append(static_cast<std::size_t>(fields), ',');
  return *this;
}

void SentenceWriter::Digits(std::uint64_t value, int width) {
  std::array<char, 20> digits;
  std::size_t at = digits.size();
  for (; value != 0 || width > 0; value /= 10, --width) {
    digits[--at] = static_cast<char>('0' + value % 10);
  }
  batch_.text_.append(digits.data() + at, digits.size() - at);
}

double SentenceWriter::Number(double value, int decimals, int width) {
  const std::int64_t scaled = Scaled(value, decimals);
  const std::int64_t scale = PowerOfTen(decimals);
  const auto magnitude = static_cast<std::uint64_t>(scaled < 0 ? -scaled : scaled);
  batch_.text_ += ',';
  if (scaled < 0) batch_.text_ += '-';
  Digits(magnitude / static_cast<std::uint64_t>(scale), width);
  if (decimals > 0) {
    batch_.text_ += '.';
    Digits(magnitude % static_cast<std::uint64_t>(scale), decimals);
  }
  return static_cast<double>(scaled) / static_cast<double>(scale);
}

double SentenceWriter::Angle(double degrees, int decimals, int width) {
  const bool full = Scaled(degrees, decimals) >= 360 * PowerOfTen(decimals);
  return Number(full ? 0.0 : degrees, decimals, width);
}

double SentenceWriter::Coordinate(double degrees, int minuteDecimals, int degreeWidth,
                                  char positive, char negative) {
  const std::int64_t scale = PowerOfTen(minuteDecimals);
  const std::int64_t total = Scaled(std::fabs(degrees) * 60.0, minuteDecimals);
  const std::int64_t minutes = total % (60 * scale);
  batch_.text_ += ',';
  Digits(static_cast<std::uint64_t>(total / (60 * scale)), degreeWidth);
  Digits(static_cast<std::uint64_t>(minutes / scale), 2);
  batch_.text_ += '.';
  Digits(static_cast<std::uint64_t>(minutes % scale), minuteDecimals);
  Letter(degrees < 0.0 ? negative : positive);
  const double written = static_cast<double>(total) / static_cast<double>(60 * scale);
  return degrees < 0.0 ? -written : written;
}

double SentenceWriter::Latitude(double degrees, int minuteDecimals) {
  return Coordinate(degrees, minuteDecimals, 2, 'N', 'S');
}

double SentenceWriter::Longitude(double degrees, int minuteDecimals) {
  return Coordinate(degrees, minuteDecimals, 3, 'E', 'W');
}

void SentenceWriter::TimeOfDay(const UtcMoment& moment) {
  batch_.text_ += ',';
  Digits(static_cast<std::uint64_t>(moment.hour), 2);
  Digits(static_cast<std::uint64_t>(moment.minute), 2);
  Digits(static_cast<std::uint64_t>(moment.second), 2);
  batch_.text_ += '.';
  Digits(static_cast<std::uint64_t>(moment.hundredths), 2);
}

void SentenceWriter::ShortDate(const UtcMoment& moment) {
  batch_.text_ += ',';
  Digits(static_cast<std::uint64_t>(moment.day), 2);
  Digits(static_cast<std::uint64_t>(moment.month), 2);
  Digits(static_cast<std::uint64_t>(moment.year % 100), 2);
}

}  // namespace fathomline::simulator
