// A pseudo-terminal that is read like a serial port.
#include "simulator/terminal_outlet.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>

#include "support/temporary_folder.h"
#include "tools/live_simulation.h"

namespace fathomline::simulator {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// Takes what is there without waiting.
void Take(const FileDescriptor& source, std::string& text) {
  std::array<char, 65536> bytes;
  for (ssize_t n = 0; (n = ::read(source.Get(), bytes.data(), bytes.size())) > 0;) {
    text.append(bytes.data(), static_cast<std::size_t>(n));
  }
}

using TerminalSimulation = LiveSimulation;

TEST_F(TerminalSimulation, ReadsLikeASerialPort) {
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
  server_->Step(std::chrono::milliseconds(1));
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

  const std::string file = folder.Write("file", "kept");
  const Outcome outcome = Simulate({"--pty-link", file});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("cannot link \"" + file + "\": File exists"));
}

}  // namespace
}  // namespace fathomline::simulator
