// The program is killed while it writes. What a user has been shown must be there afterwards, and
// no file may be torn.
//
// FATHOMLINE_KILLS in the environment says how often each is tried.
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "base/clock.h"
#include "base/files.h"
#include "base/numbers.h"
#include "records/records.h"
#include "setup/reference_positions.h"
#include "setup/setup_file.h"
#include "sources/raw_log.h"
#include "support/recording_dialogs.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

int Kills() {
  const char* const wanted = std::getenv("FATHOMLINE_KILLS");
  return wanted == nullptr ? 8 : std::atoi(wanted);
}

// Runs the work in a process of its own, round after round, and kills it after a random moment.
// Returns how many rounds it had told as done.
template <typename Work>
int RoundsUntilKilled(Work work, std::mt19937& random) {
  int told[2];
  if (pipe(told) != 0) return -1;
  const pid_t child = fork();
  if (child == 0) {
    close(told[0]);
    try {
      work([&, rounds = 0]() mutable {
        ++rounds;
        if (write(told[1], &rounds, sizeof rounds) != sizeof rounds) _exit(1);
      });
    } catch (...) {
    }
    _exit(1);
  }
  close(told[1]);
  // The first round tells that it is at work; the random time runs from there.
  int rounds = 0;
  EXPECT_EQ(read(told[0], &rounds, sizeof rounds), static_cast<ssize_t>(sizeof rounds));
  usleep(std::uniform_int_distribution<useconds_t>(0, 5000)(random));
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status)) << "it ended by itself";
  while (read(told[0], &rounds, sizeof rounds) == static_cast<ssize_t>(sizeof rounds)) {
  }
  close(told[0]);
  return rounds;
}

std::string Line(int number) {
  return "$GPGGA," + PlainText(number) + ",5902.02347,N,00517.99421,E,4,27,0.5,18.27,M,44.2,M,,*55";
}

TEST(SuddenEnd, ARawLogHoldsEveryLineThatWasTold) {
  std::mt19937 random(1);
  for (int i = 0; i < Kills(); ++i) {
    const TemporaryFolder folder;
    const FrozenClock clock{DateTime{43764.60446759259}};
    Records records;
    records.ProgramFolder = folder.Path();
    records.CommSetups[1].Enabled = true;
    records.CommSetups[1].Name = "DGPS";
    const int rounds = RoundsUntilKilled(
        [&](auto tell) {
          FileTable files;
          RecordingDialogs dialogs;
          RawLog log{records, files, clock, dialogs};
          log.StartStopLogging();
          for (int line = 1;; ++line) {
            log.LogRawData(1, Line(line));
            tell();
          }
        },
        random);
    const std::string logged = ReadWholeFile(folder / "log/20191026-1430-Prim-DGPS.log");
    std::string expected;
    for (int line = 1; line <= rounds; ++line) expected += Line(line) + "\r\n";
    ASSERT_EQ(logged.substr(0, expected.size()), expected);
    // One line more may have been written and not told, or the part of it that came before the
    // kill: a write ends early where it crosses from one page of the file to the next.
    const std::string rest = logged.substr(expected.size());
    ASSERT_TRUE((Line(rounds + 1) + "\r\n").starts_with(rest)) << rest;
  }
}

TEST(SuddenEnd, ASetupFileIsTheOldOneOrTheNew) {
  std::mt19937 random(2);
  for (int i = 0; i < Kills(); ++i) {
    const TemporaryFolder folder;
    const std::string path = folder / std::string(kSetupFileName);
    Records records;
    records.SetDefaultSetup();
    const auto save = [&](int round) {
      records.CommSetups[1].Name = "Round " + PlainText(round);
      records.SessionInfo.assign(static_cast<std::size_t>(round % 7) * 5000, 'x');
      WriteSetupFile(path, records);
    };
    const int rounds = RoundsUntilKilled(
        [&](auto tell) {
          for (int round = 1;; ++round) {
            save(round);
            tell();
          }
        },
        random);
    const std::string found = ReadWholeFile(path);
    save(rounds);
    const std::string told = ReadWholeFile(path);
    save(rounds + 1);
    ASSERT_TRUE(found == told || found == ReadWholeFile(path)) << found.substr(0, 200);
  }
}

TEST(SuddenEnd, AStoredReferenceStays) {
  std::mt19937 random(3);
  for (int i = 0; i < Kills(); ++i) {
    const TemporaryFolder folder;
    const int rounds = RoundsUntilKilled(
        [&](auto tell) {
          RecordingDialogs dialogs;
          for (int round = 1;; ++round) {
            StoreReferencePosition(folder.Path(), {.name = "Quay " + PlainText(round)}, dialogs);
            tell();
          }
        },
        random);
    RecordingDialogs dialogs;
    const auto stored = ReadReferencePositions(folder.Path(), dialogs);
    const auto count = static_cast<int>(stored.size());
    ASSERT_TRUE(count == rounds || count == rounds + 1) << count << " of " << rounds;
    for (int round = 1; round <= count; ++round) {
      ASSERT_EQ(stored[static_cast<std::size_t>(round - 1)].name, "Quay " + PlainText(round));
    }
  }
}

}  // namespace
}  // namespace fathomline
