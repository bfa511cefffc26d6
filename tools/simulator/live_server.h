// Sends a simulation to its outlets as time goes by.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "simulator/outlets.h"
#include "simulator/simulator.h"
#include "simulator/stop_signal.h"

namespace fathomline::simulator {

// As fast as those who listen read.
inline constexpr double kUnlimitedSpeed = 0.0;

// The simulation begins when the first peer is there, at once with an outlet for datagrams; from
// then on it goes by the clock, whoever comes and goes. One server at a time can take the process's
// signals.
class LiveServer {
 public:
  // Brings the lines of the next moment; false when there are no more.
  using Source = std::function<bool(Epoch&)>;

  // `speed` is simulated seconds a second. SIGINT and SIGTERM end the server as long as it lives.
  LiveServer(std::vector<std::unique_ptr<Outlet>> outlets, double speed, Source source);

  // Sends what is due and waits for what comes next, at most so long. False when the simulation is
  // over and read by all who listen, or a signal has ended it.
  bool Step(std::chrono::milliseconds longest);

 private:
  using Clock = std::chrono::steady_clock;

  bool AnyPeer() const;
  void SendDue();
  bool Held() const;
  bool Ended();
  std::chrono::milliseconds UntilDue() const;
  void Wait(std::chrono::milliseconds longest);

  std::vector<std::unique_ptr<Outlet>> outlets_;
  double speed_;
  Source source_;
  StopSignal stop_;
  std::vector<pollfd> watched_;
  Epoch epoch_;
  bool pending_ = false;
  bool started_ = false;
  Clock::time_point start_;
  Clock::time_point ended_;
  int drained_ = 0;
};

}  // namespace fathomline::simulator
