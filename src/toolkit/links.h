// Live sources: serial ports, TCP clients and UDP ports, as the program sees them.
//
// A link is polled: it raises its events from RunSlice only, so that a message box within an event
// holds up this link and nobody else. What arrives meanwhile waits in the buffers of driver and
// socket.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/fault.h"
#include "toolkit/task.h"

namespace fathomline {

class Link : public Task {
 public:
  // Raises what is due, as far as the time allows. Returns whether more waits.
  virtual bool Poll(std::chrono::steady_clock::time_point until) = 0;
  bool RunSlice(std::chrono::steady_clock::time_point until) final { return Poll(until); }
};

// The numbers of the events of a serial port.
enum class CommEvent : std::int16_t {
  None = 0,
  Received = 2,
  Break = 1001,
  Framing = 1004,
  Overrun = 1006,
  ReceiveOverflow = 1008,
  Parity = 1009,
};

class SerialLink : public Link {
 public:
  // Baud rate, first letter of the parity, data bits, stop bits: "4800,N,8,1". Takes effect when
  // the port is opened; Open raises InvalidCall for a text that does not read so.
  virtual void SetSettings(std::string_view settings) = 0;
  virtual bool PortOpen() const = 0;
  // Raises a fault with the description of the operating system where the port cannot be opened.
  virtual void Open() = 0;
  virtual void Close() = 0;

  // The latest event. Received comes once for every 32 bytes, or part of them, that have arrived.
  virtual fathomline::CommEvent CommEvent() const = 0;
  // Reads and empties the receive buffer.
  virtual std::string Input() = 0;

  std::function<void()> onComm;
  // The device has gone; the port has been closed.
  std::function<void(const std::string& cause)> onLost;
};

// By the numbers of the states of a socket.
enum class LinkState : std::int16_t {
  Closed = 0,
  Open = 1,
  Listening = 2,
  ConnectionPending = 3,
  ResolvingHost = 4,
  HostResolved = 5,
  Connecting = 6,
  Connected = 7,
  Closing = 8,
  Error = 9,
};

class TcpLink : public Link {
 public:
  virtual LinkState State() const = 0;
  virtual void Close() = 0;
  virtual void SetRemoteHost(std::string_view host) = 0;
  virtual void SetRemotePort(int port) = 0;
  virtual std::string RemoteHost() const = 0;
  // Begins to connect and returns. A failure comes as an error.
  virtual void Connect() = 0;
  // All data that wait.
  virtual std::string GetData() = 0;

  std::function<void()> onDataArrival;
  std::function<void(int number, const std::string& description)> onError;
};

class UdpLink : public Link {
 public:
  virtual LinkState State() const = 0;
  virtual void Close() = 0;
  // Raises a fault with the description of the operating system where the port is taken.
  virtual void Bind(int port) = 0;
  // All datagrams that wait, one behind the other.
  virtual std::string GetData() = 0;

  // Once per datagram.
  std::function<void()> onDataArrival;
};

// What is known of a serial port of the machine.
struct SerialPortInfo {
  bool present = false;
  bool busy = false;        // held by this program or refused by the operating system
  std::string device;       // "/dev/ttyUSB0"
  std::string description;  // of the hardware, where the system knows one
};

// All links of the program: serial ports 1 to 16, sockets by system 1 to 4. A number beyond raises
// OutOfRange.
class Links {
 public:
  virtual ~Links() = default;
  virtual SerialLink& MSComm1(int port) = 0;
  virtual TcpLink& Winsock1(int system) = 0;
  virtual UdpLink& WinsockUDP(int system) = 0;
  // Looks without opening a port that the program holds.
  virtual SerialPortInfo Probe(int port) = 0;
};

}  // namespace fathomline
