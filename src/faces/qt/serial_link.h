// A serial port by Qt SerialPort.
#pragma once

#include <QSerialPort>
#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <string>

#include "toolkit/links.h"

namespace fathomline {

class QtSerialLink : public SerialLink {
 public:
  // The device is asked for whenever the port is opened.
  explicit QtSerialLink(std::function<std::string()> device);

  void SetSettings(std::string_view settings) override { settings_ = settings; }
  bool PortOpen() const override { return port_.isOpen(); }
  void Open() override;
  void Close() override;
  fathomline::CommEvent CommEvent() const override { return event_; }
  std::string Input() override;
  bool Poll(std::chrono::steady_clock::time_point until) override;

 private:
  // How often the driver has counted each kind of error.
  struct Errors {
    int breaks = 0;
    int framing = 0;
    int overrun = 0;
    int overflow = 0;
    int parity = 0;
  };

  void Configure();
  void CountBytes();
  void CountErrors();
  std::optional<Errors> DriverErrors() const;
  // The cause where the device has gone.
  std::optional<std::string> Lost();

  QSerialPort port_;
  std::function<std::string()> device_;
  std::string settings_;
  std::deque<fathomline::CommEvent> events_;
  std::optional<Errors> errors_;
  qint64 counted_ = 0;
  std::chrono::steady_clock::time_point looked_{};
  fathomline::CommEvent event_ = fathomline::CommEvent::None;
};

}  // namespace fathomline
