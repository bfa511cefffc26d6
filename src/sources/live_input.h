// Live sources: opens the links of the systems and turns what they receive into lines.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/fault_log.h"
#include "records/records.h"
#include "sources/line_sink.h"
#include "toolkit/desktop.h"
#include "toolkit/links.h"

namespace fathomline {

// Baud rate, first letter of the parity, data bits, stop bits: "4800,N,8,1".
std::string SerialSettingsText(const ComportSetup& row);

// Who follows what becomes of the links.
class LinkWatcher {
 public:
  virtual ~LinkWatcher() = default;
  // The link of a system could not be opened, or has gone. True: the watcher deals with it; no box
  // tells of it, and the system stays enabled.
  virtual bool LinkFailed(int system, const std::string& cause) = 0;
  // It has been opened or closed on purpose.
  virtual void LinkAsked(int system) = 0;
};

class LiveInput {
 public:
  LiveInput(Records& records, Links& links, Desktop& desktop, LineSink& sink, FaultLog& faults);
  ~LiveInput();
  LiveInput(const LiveInput&) = delete;
  LiveInput& operator=(const LiveInput&) = delete;

  // The watcher outlives the links, or is taken away before; none: failures are told in boxes.
  void Watch(LinkWatcher* watcher) { watcher_ = watcher; }

  // Opens the link of every enabled system: TCP, else UDP, else its serial port. A port that cannot
  // be opened is told in a box; its system is then disabled and has no port any more.
  void OpenPorts();
  // The same for one system, whether or not it is enabled.
  void OpenPort(int system);

  // Closes whatever link the system has and frees its serial port.
  void CloseLinks(int system);
  // Closes all sockets and the serial ports 1 to 10. Those above stay open.
  void CloseForOffline();

  // The state of the system's TCP link, for who shows it.
  LinkState TcpState(int system) { return links_.Winsock1(system).State(); }

  // What a serial port has received that was not yet taken as a line.
  std::string_view LineBuffer(int port) const;

 private:
  // A backlog of lines shrinks from its front; only when most of it has been taken is the rest
  // moved.
  class Backlog {
   public:
    std::string_view Text() const { return std::string_view(bytes_).substr(taken_); }
    void Append(std::string_view bytes);
    void Take(std::size_t count) { taken_ += count; }
    void Clear();

   private:
    std::string bytes_;
    std::size_t taken_ = 0;
  };

  bool Watched(int system, const std::string& cause);
  void OpenTcp(int system);
  void OpenUdp(int system);
  void OpenSerial(int system);
  void RefusePort(int system, const Fault& fault, std::string_view kind, std::int32_t port);
  void ReceiveSerial(int port);
  void AssembleLine(int port);
  void IgnoreWaitingLines(int system, Backlog& buffer);
  void LoseSerial(int port, const std::string& cause);
  void ReceiveText(int system, const std::string& text);
  void TcpError(int system, int number, const std::string& description);
  static std::size_t Index(int port);
  Backlog& Buffer(int port) { return lineBuffers_[Index(port)]; }

  Records& records_;
  Links& links_;
  Desktop& desktop_;
  LineSink& sink_;
  FaultLog& faults_;
  LinkWatcher* watcher_ = nullptr;
  std::array<Backlog, kSerialPorts> lineBuffers_;
};

}  // namespace fathomline
