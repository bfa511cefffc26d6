#include "faces/qt/serial_link.h"

#include <QFile>
#include <linux/serial.h>
#include <sys/ioctl.h>

#include "faces/qt/conversions.h"

namespace fathomline {
namespace {

// A port tells of every so many bytes.
constexpr qint64 kBytesPerEvent = 32;
// While a message box holds the port, no more than this waits; the rest stays in the driver.
constexpr qint64 kBufferSize = 65536;
constexpr std::size_t kMostEvents = kBufferSize / kBytesPerEvent;
constexpr auto kLookInterval = std::chrono::seconds(1);

struct ParityLetter {
  char letter;
  QSerialPort::Parity parity;
};
constexpr ParityLetter kParities[] = {{'n', QSerialPort::NoParity},
                                      {'e', QSerialPort::EvenParity},
                                      {'o', QSerialPort::OddParity},
                                      {'m', QSerialPort::MarkParity},
                                      {'s', QSerialPort::SpaceParity}};

QSerialPort::Parity ParityOf(const QString& letter) {
  for (const ParityLetter& row : kParities) {
    if (letter.compare(QLatin1Char(row.letter), Qt::CaseInsensitive) == 0) return row.parity;
  }
  Raise(FaultNumber::InvalidCall);
}

}  // namespace

QtSerialLink::QtSerialLink(std::function<std::string()> device) : device_(std::move(device)) {
  port_.setReadBufferSize(kBufferSize);
}

void QtSerialLink::Configure() {
  const QStringList parts = ToQt(settings_).split(QLatin1Char(','));
  if (parts.size() != 4) Raise(FaultNumber::InvalidCall);
  bool baudRead = false;
  bool bitsRead = false;
  const int baud = parts[0].trimmed().toInt(&baudRead);
  const int bits = parts[2].trimmed().toInt(&bitsRead);
  const QString stop = parts[3].trimmed();
  if (!baudRead || baud <= 0 || !bitsRead || bits < 5 || bits > 8) Raise(FaultNumber::InvalidCall);
  if (stop != QLatin1String("1") && stop != QLatin1String("2")) Raise(FaultNumber::InvalidCall);
  port_.setBaudRate(baud);
  port_.setParity(ParityOf(parts[1].trimmed()));
  port_.setDataBits(static_cast<QSerialPort::DataBits>(bits));
  port_.setStopBits(stop == QLatin1String("2") ? QSerialPort::TwoStop : QSerialPort::OneStop);
}

void QtSerialLink::Open() {
  Close();
  const std::string device = device_();
  Configure();
  port_.setPortName(ToQt(device));
  if (!port_.open(QIODevice::ReadWrite)) {
    const std::string cause = FromQt(port_.errorString()) + " (" + device + ")";
    port_.clearError();
    Raise(FaultNumber::DeviceError, cause);
  }
  port_.clearError();
  errors_ = DriverErrors();
  looked_ = std::chrono::steady_clock::now();
}

void QtSerialLink::Close() {
  if (port_.isOpen()) port_.close();
  port_.clearError();
  events_.clear();
  counted_ = 0;
}

std::string QtSerialLink::Input() {
  CountBytes();
  counted_ = 0;
  return port_.readAll().toStdString();
}

void QtSerialLink::CountBytes() {
  const qint64 fresh = port_.bytesAvailable() - counted_;
  if (fresh <= 0) return;
  counted_ += fresh;
  const auto events = static_cast<std::size_t>((fresh + kBytesPerEvent - 1) / kBytesPerEvent);
  const std::size_t room = events_.size() < kMostEvents ? kMostEvents - events_.size() : 0;
  events_.insert(events_.end(), std::min(events, room), fathomline::CommEvent::Received);
}

std::optional<QtSerialLink::Errors> QtSerialLink::DriverErrors() const {
  serial_icounter_struct counters{};
  if (::ioctl(static_cast<int>(const_cast<QSerialPort&>(port_).handle()), TIOCGICOUNT, &counters) !=
      0) {
    return {};
  }
  return Errors{counters.brk, counters.frame, counters.overrun, counters.buf_overrun,
                counters.parity};
}

void QtSerialLink::CountErrors() {
  if (!errors_) return;
  const auto now = DriverErrors();
  if (!now) return;
  struct Row {
    int Errors::*count;
    fathomline::CommEvent event;
  };
  constexpr Row kRows[] = {{&Errors::breaks, fathomline::CommEvent::Break},
                           {&Errors::framing, fathomline::CommEvent::Framing},
                           {&Errors::overrun, fathomline::CommEvent::Overrun},
                           {&Errors::overflow, fathomline::CommEvent::ReceiveOverflow},
                           {&Errors::parity, fathomline::CommEvent::Parity}};
  for (const Row& row : kRows) {
    if ((*now).*row.count != (*errors_).*row.count) events_.push_back(row.event);
  }
  errors_ = now;
}

std::optional<std::string> QtSerialLink::Lost() {
  const auto device = [this] {
    return port_.portName().startsWith(QLatin1Char('/')) ? port_.portName() : ToQt(device_());
  };
  const auto gone = [&device] { return "The device has gone: " + FromQt(device()); };
  switch (port_.error()) {
    case QSerialPort::ReadError:
      return QFile::exists(device()) ? FromQt(port_.errorString()) : gone();
    // What the system says of a device that was pulled out depends on who noticed it first.
    case QSerialPort::ResourceError:
    case QSerialPort::DeviceNotFoundError:
      return gone();
    default:
      break;
  }
  const auto now = std::chrono::steady_clock::now();
  if (now - looked_ < kLookInterval) return {};
  looked_ = now;
  if (QFile::exists(device())) return {};
  return gone();
}

bool QtSerialLink::Poll(std::chrono::steady_clock::time_point until) {
  if (!port_.isOpen()) return false;
  CountErrors();
  CountBytes();
  // The handler may close the port, which empties the queue.
  while (!events_.empty() && std::chrono::steady_clock::now() < until) {
    event_ = events_.front();
    events_.pop_front();
    if (onComm) onComm();
    if (port_.isOpen()) CountBytes();
  }
  if (!events_.empty()) return true;
  if (!port_.isOpen()) return false;
  if (const auto cause = Lost()) {
    Close();
    if (onLost) onLost(*cause);
  }
  return false;
}

}  // namespace fathomline
