// The links of the systems as whoever watches the sources sees them.
#pragma once

#include <cstdint>
#include <string>

namespace fathomline {

enum class SourceKind : std::uint8_t { None, Tcp, Udp, Serial, File };

enum class LinkStage : std::uint8_t {
  Closed,   // nobody has asked for it
  Opening,  // on its way
  Open,     // of a file: it is being replayed
  Lost,     // it could not be opened, or has gone, and nothing is done about it
  Waiting,  // the same, and it will be tried again
};

struct LinkCondition {
  SourceKind kind = SourceKind::None;
  LinkStage stage = LinkStage::Closed;
  std::string address;   // "10.0.0.1:8040", "port 10110", "COM5 (/dev/ttyUSB0) 4800,N,8,1", a path
  std::string cause;     // why it is lost
  int tries = 0;         // since it was lost
  double nextTry = 0.0;  // seconds until then, while it waits
  double openFor = 0.0;  // seconds
};

class LinkDesk {
 public:
  virtual ~LinkDesk() = default;
  virtual LinkCondition Look(int system) = 0;
  // Closes the link of an enabled system and opens it again, at once. Nothing else is touched, and
  // no box tells of a failure.
  virtual void Reconnect(int system) = 0;
  // Whether lost links are opened again without being asked.
  virtual bool Keeping() const = 0;
  virtual void SetKeeping(bool keeping) = 0;
};

}  // namespace fathomline
