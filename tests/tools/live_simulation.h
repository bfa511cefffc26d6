// A simulation that serves real peers, step by step.
#pragma once

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "simulator/live_server.h"
#include "simulator/outlets.h"
#include "tools/simulated_session.h"

namespace fathomline::simulator {

inline constexpr std::string_view kRates = "GGA:20,HDT:20";

inline SimulationOptions Options(double duration) {
  const std::string seconds = PlainText(duration);
  return CommandOf(
             std::vector<std::string_view>{"--sentences", kRates, "--duration", seconds, "--crlf"})
      .options;
}

// All that a simulation sends.
inline std::string Sent(double duration) {
  return Recording(Options(duration));
}

class LiveSimulation : public testing::Test {
 protected:
  void Start(std::unique_ptr<Outlet> outlet, double duration, double speed) {
    simulator_ = std::make_unique<Simulator>(Options(duration));
    std::vector<std::unique_ptr<Outlet>> outlets;
    outlets.push_back(std::move(outlet));
    server_ = std::make_unique<LiveServer>(
        std::move(outlets), speed, [this](Epoch& epoch) { return simulator_->NextEpoch(epoch); });
  }

  // A TCP server on a port of its own, which is returned.
  int StartTcp(double duration, double speed) {
    auto outlet = std::make_unique<TcpOutlet>(Endpoint{std::string(kLoopback), "0"}, log_);
    const int port = outlet->Port();
    Start(std::move(outlet), duration, speed);
    return port;
  }

  // Serves until the condition holds. False where the simulation or the patience ends before.
  bool StepUntil(const std::function<bool()>& done) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!done()) {
      if (std::chrono::steady_clock::now() > limit || !server_->Step(std::chrono::milliseconds(5)))
        return false;
    }
    return true;
  }

  std::ostringstream log_;
  std::unique_ptr<Simulator> simulator_;
  std::unique_ptr<LiveServer> server_;
};

}  // namespace fathomline::simulator
