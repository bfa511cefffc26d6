// Live simulations, with real sockets and pseudo-terminals.
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/numbers.h"
#include "simulator/live_server.h"
#include "simulator/outlets.h"
#include "support/temporary_folder.h"
#include "tools/simulated_session.h"

namespace fathomline::simulator {
namespace {

using std::chrono::milliseconds;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Clock = std::chrono::steady_clock;

constexpr std::string_view kRates = "GGA:20,HDT:20";

SimulationOptions Options(double duration) {
  const std::string seconds = PlainText(duration);
  return ParseSimulateCommand(
             std::vector<std::string_view>{"--sentences", kRates, "--duration", seconds, "--crlf"})
      .options;
}

// All that a simulation sends.
std::string Sent(double duration) {
  return Recording(Options(duration));
}

// A receive buffer of 0 is the system's own.
FileDescriptor Socket(int kind, int port, bool connect, int receiveBuffer = 0) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  FileDescriptor socket(::socket(AF_INET, kind | SOCK_CLOEXEC, 0));
  if (receiveBuffer > 0) {
    ::setsockopt(socket.Get(), SOL_SOCKET, SO_RCVBUF, &receiveBuffer, sizeof receiveBuffer);
  }
  const auto act = connect ? &::connect : &::bind;
  EXPECT_EQ(act(socket.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ::fcntl(socket.Get(), F_SETFL, O_NONBLOCK);
  return socket;
}

// Takes what is there without waiting.
void Take(const FileDescriptor& source, std::string& text) {
  std::array<char, 65536> bytes;
  for (ssize_t n = 0; (n = ::read(source.Get(), bytes.data(), bytes.size())) > 0;) {
    text.append(bytes.data(), static_cast<std::size_t>(n));
  }
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
    const auto limit = Clock::now() + std::chrono::seconds(20);
    while (!done()) {
      if (Clock::now() > limit || !server_->Step(milliseconds(5))) return false;
    }
    return true;
  }

  std::ostringstream log_;
  std::unique_ptr<Simulator> simulator_;
  std::unique_ptr<LiveServer> server_;
};

TEST_F(LiveSimulation, EveryClientHearsEverythingFromWhenItCame) {
  const int port = StartTcp(400.0, kUnlimitedSpeed);
  const std::string all = Sent(400.0);
  std::string first;
  std::string second;
  const FileDescriptor early = Socket(SOCK_STREAM, port, true);
  EXPECT_TRUE(StepUntil([&] {
    Take(early, first);
    return first.size() > 100'000;
  }));
  const FileDescriptor late = Socket(SOCK_STREAM, port, true);
  { const FileDescriptor leaving = Socket(SOCK_STREAM, port, true); }
  StepUntil([&] {
    Take(early, first);
    Take(late, second);
    return false;
  });
  server_.reset();
  Take(early, first);
  Take(late, second);
  EXPECT_TRUE(first == all);
  EXPECT_GT(second.size(), 1'000U);
  EXPECT_LT(second.size(), all.size());
  EXPECT_THAT(second, StartsWith("$GN"));
  EXPECT_TRUE(all.ends_with(second));
  EXPECT_THAT(log_.str(), HasSubstr("has left"));
}

TEST_F(LiveSimulation, WhoReadsTooSlowlyIsDroppedAndHoldsUpNobody) {
  // At a set speed the clock alone says when the next line goes.
  const int port = StartTcp(800.0, 20'000.0);
  const FileDescriptor idle = Socket(SOCK_STREAM, port, true, 4096);
  const FileDescriptor keen = Socket(SOCK_STREAM, port, true);
  std::string heard;
  StepUntil([&] {
    Take(keen, heard);
    return false;
  });
  server_.reset();
  Take(keen, heard);
  EXPECT_TRUE(heard == Sent(800.0));
  EXPECT_THAT(log_.str(), HasSubstr("reads too slowly and was dropped"));
  std::string cut;
  Take(idle, cut);
  EXPECT_LT(cut.size(), heard.size());
}

TEST_F(LiveSimulation, ATerminalReadsLikeASerialPort) {
  const TemporaryFolder folder;
  const std::string link = folder / "gps";
  std::filesystem::create_symlink("/nowhere", link);
  auto outlet = std::make_unique<TerminalOutlet>(link, log_);
  TerminalOutlet& terminal = *outlet;
  EXPECT_THAT(terminal.Where(), HasSubstr(terminal.Path()));
  Start(std::move(outlet), 150.0, kUnlimitedSpeed);
  const auto open = [&link] {
    return FileDescriptor(::open(link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK));
  };
  EXPECT_FALSE(terminal.HasPeer());
  std::string text;
  {
    const FileDescriptor reader = open();
    ASSERT_TRUE(reader.Valid());
    EXPECT_TRUE(StepUntil([&] {
      Take(reader, text);
      return text.size() > 20'000;
    }));
    EXPECT_EQ(text, Sent(150.0).substr(0, text.size()));
  }
  // What the first reader left is not there for the second.
  EXPECT_TRUE(StepUntil([&] { return !terminal.HasPeer(); }));
  server_->Step(milliseconds(1));
  text.clear();
  const FileDescriptor reader = open();
  StepUntil([&] {
    Take(reader, text);
    return false;
  });
  EXPECT_THAT(text, StartsWith("$"));
  EXPECT_TRUE(Sent(150.0).ends_with(text));
  server_.reset();
  EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST_F(LiveSimulation, SignalsEndIt) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const int port = StartTcp(600.0, 1.0);
    const FileDescriptor client = Socket(SOCK_STREAM, port, true);
    EXPECT_TRUE(server_->Step(milliseconds(1)));
    std::raise(signal);
    EXPECT_FALSE(server_->Step(milliseconds(1)));
    server_.reset();
  }
}

TEST(LiveCommand, SendsOneDatagramPerLineAndKeepsACopy) {
  const FileDescriptor receiver = Socket(SOCK_DGRAM, 0, false);
  sockaddr_in address{};
  socklen_t length = sizeof address;
  ::getsockname(receiver.Get(), reinterpret_cast<sockaddr*>(&address), &length);
  const std::string port = std::to_string(ntohs(address.sin_port));
  const TemporaryFolder folder;
  const std::string copy = folder / "copy.log";
  const Outcome outcome = Simulate({"--udp", port, "--speed", "max", "--output", copy,
                                    "--sentences", kRates, "--duration", "2"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "udp 127.0.0.1:" + port + "\n");
  std::string text;
  std::array<char, 2048> datagram;
  for (ssize_t n = 0; (n = ::read(receiver.Get(), datagram.data(), datagram.size())) > 0;) {
    const std::string line(datagram.data(), static_cast<std::size_t>(n));
    EXPECT_THAT(line, EndsWith("\r\n"));
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
    text += line;
  }
  EXPECT_EQ(text, Sent(2.0));
  EXPECT_EQ(ReadWholeFile(copy), text);
}

TEST(LiveCommand, WhatCannotBeServedEndsWithOneLine) {
  std::ostringstream log;
  const TcpOutlet holder({std::string(kLoopback), "0"}, log);
  const std::string taken = std::to_string(holder.Port());
  const TemporaryFolder folder;
  const std::string file = folder.Write("file", "kept");
  const std::vector<std::pair<std::vector<std::string_view>, std::string>> cases{
      {{"--tcp", taken}, "cannot listen on 127.0.0.1:" + taken + ": Address already in use"},
      {{"--tcp", "192.0.2.1:0"}, "cannot listen on 192.0.2.1:0: Cannot assign requested address"},
      {{"--tcp", "65536"}, "\"65536\" is no address like"},
      {{"--udp", ":10110"}, "\":10110\" is no address like"},
      {{"--udp", "host"}, "\"host\" is no address like"},
      {{"--pty-link", file}, "cannot link \"" + file + "\": File exists"},
      {{"--pty", "--speed", "0"}, "\"0\" is no valid value for --speed"},
  };
  for (const auto& [arguments, part] : cases) {
    const Outcome outcome = Simulate(arguments);
    EXPECT_EQ(outcome.status, 2) << part;
    EXPECT_THAT(outcome.err, HasSubstr(part));
    EXPECT_EQ(outcome.out, "");
  }
  const Endpoint endpoint = ParseEndpoint("[::1]:10110");
  EXPECT_EQ(endpoint.host + " " + endpoint.port, "::1 10110");
}

}  // namespace
}  // namespace fathomline::simulator
