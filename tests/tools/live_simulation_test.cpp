// Live simulations, with real sockets.
#include "tools/live_simulation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/numbers.h"
#include "support/temporary_folder.h"

namespace fathomline::simulator {
namespace {

using std::chrono::milliseconds;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// A receive buffer of 0 is the system's own.
Socket Open(int kind, int port, bool connect, int receiveBuffer = 0) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  Socket socket(AF_INET, kind, 0);
  if (receiveBuffer > 0) socket.Set(SOL_SOCKET, SO_RCVBUF, receiveBuffer);
  const auto act = connect ? &::connect : &::bind;
  act(socket.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address);
  if (connect) {
    std::vector<pollfd> connecting{{socket.Get(), POLLOUT, 0}};
    WaitFor(connecting, milliseconds(1000));
    EXPECT_EQ(connecting.front().revents, POLLOUT);
  }
  return socket;
}

// Takes what is there without waiting.
void Take(const Socket& source, std::string& text) {
  std::array<char, 65536> bytes;
  for (std::optional<std::size_t> n; (n = source.Receive(bytes.data(), bytes.size())) > 0U;) {
    text.append(bytes.data(), *n);
  }
}

TEST_F(LiveSimulation, EveryClientHearsEverythingFromWhenItCame) {
  const int port = StartTcp(400.0, kUnlimitedSpeed);
  const std::string all = Sent(400.0);
  std::string first;
  std::string second;
  const Socket early = Open(SOCK_STREAM, port, true);
  EXPECT_TRUE(StepUntil([&] {
    Take(early, first);
    return first.size() > 100'000;
  }));
  const Socket late = Open(SOCK_STREAM, port, true);
  { const Socket leaving = Open(SOCK_STREAM, port, true); }
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
  const Socket idle = Open(SOCK_STREAM, port, true, 4096);
  const Socket keen = Open(SOCK_STREAM, port, true);
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

TEST_F(LiveSimulation, SignalsEndIt) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const int port = StartTcp(600.0, 1.0);
    const Socket client = Open(SOCK_STREAM, port, true);
    EXPECT_TRUE(server_->Step(milliseconds(1)));
    std::raise(signal);
    EXPECT_FALSE(server_->Step(milliseconds(1)));
    server_.reset();
  }
}

TEST(LiveCommand, SendsOneDatagramPerLineAndKeepsACopy) {
  const Socket receiver = Open(SOCK_DGRAM, 0, false);
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
  for (std::optional<std::size_t> n;
       (n = receiver.Receive(datagram.data(), datagram.size())) > 0U;) {
    const std::string line(datagram.data(), *n);
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
  const std::vector<std::pair<std::vector<std::string_view>, std::string>> cases{
      {{"--tcp", taken}, "cannot listen on 127.0.0.1:" + taken + ": "},
      {{"--tcp", "192.0.2.1:0"}, "cannot listen on 192.0.2.1:0: "},
      {{"--tcp", "65536"}, "\"65536\" is no address like"},
      {{"--udp", ":10110"}, "\":10110\" is no address like"},
      {{"--udp", "host"}, "\"host\" is no address like"},
      {{"--pty", "--speed", "0"}, "--speed: \"0\" is not between 0.001 and"},
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
