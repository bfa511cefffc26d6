#include <QFile>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <cerrno>
#include <fcntl.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "faces/qt/conversions.h"
#include "faces/qt/queued_serial_link.h"
#include "faces/qt/serial_link.h"

namespace fathomline {
namespace {

constexpr auto kLookInterval = std::chrono::seconds(1);

QSerialPort::Parity ParityOf(char letter) {
  switch (letter) {
    case 'e':
      return QSerialPort::EvenParity;
    case 'o':
      return QSerialPort::OddParity;
    case 'm':
      return QSerialPort::MarkParity;
    case 's':
      return QSerialPort::SpaceParity;
    default:
      return QSerialPort::NoParity;
  }
}

class QtSerialLink : public QueuedSerialLink {
 public:
  explicit QtSerialLink(std::function<std::string()> device) : device_(std::move(device)) {
    port_.setReadBufferSize(kBufferSize);
  }

  bool PortOpen() const override { return port_.isOpen(); }

 private:
  // How often the driver has counted each kind of error.
  struct Errors {
    int breaks = 0;
    int framing = 0;
    int overrun = 0;
    int overflow = 0;
    int parity = 0;
  };

  void OpenDevice(const SerialSettings& settings) override {
    const std::string device = device_();
    port_.setBaudRate(settings.baud);
    port_.setParity(ParityOf(settings.parity));
    port_.setDataBits(static_cast<QSerialPort::DataBits>(settings.dataBits));
    port_.setStopBits(settings.twoStopBits ? QSerialPort::TwoStop : QSerialPort::OneStop);
    port_.setPortName(ToQt(device));
    if (!port_.open(QIODevice::ReadWrite)) {
      const std::string cause = FromQt(port_.errorString()) + " (" + device + ")";
      port_.clearError();
      fathomline::Raise(FaultNumber::DeviceError, cause);
    }
    port_.clearError();
    errors_ = DriverErrors();
    looked_ = std::chrono::steady_clock::now();
  }

  void CloseDevice() override {
    if (port_.isOpen()) port_.close();
    port_.clearError();
  }

  std::size_t Waiting() override { return static_cast<std::size_t>(port_.bytesAvailable()); }
  std::string Take() override { return port_.readAll().toStdString(); }

  std::optional<Errors> DriverErrors() {
    serial_icounter_struct counters{};
    if (::ioctl(static_cast<int>(port_.handle()), TIOCGICOUNT, &counters) != 0) return {};
    return Errors{counters.brk, counters.frame, counters.overrun, counters.buf_overrun,
                  counters.parity};
  }

  void LookForErrors() override {
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
      if ((*now).*row.count != (*errors_).*row.count) Raise(row.event);
    }
    errors_ = now;
  }

  std::optional<std::string> Lost() override {
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

  QSerialPort port_;
  std::function<std::string()> device_;
  std::optional<Errors> errors_;
  std::chrono::steady_clock::time_point looked_{};
};

}  // namespace

std::unique_ptr<SerialLink> MakeSerialLink(std::function<std::string()> device) {
  return std::make_unique<QtSerialLink>(std::move(device));
}

std::string DescribeSerialDevice(const std::string& device) {
  const QString target = QFile(ToQt(device)).symLinkTarget();
  const QSerialPortInfo known(target.isEmpty() ? ToQt(device) : target);
  return known.isNull() ? std::string() : FromQt(known.description());
}

void ProbeSerialDevice(SerialPortInfo& info) {
  const int file = ::open(info.device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (file >= 0) {
    info.present = ::isatty(file) == 1;
    ::close(file);
  } else if (errno == EBUSY || errno == EACCES || errno == EPERM) {
    info.present = info.busy = true;
  }
}

}  // namespace fathomline
