// The replay tool as its users call it, and what a whole recording gives.
#include "app/replay_tool.h"

#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#if !defined(_WIN32)
#include <unistd.h>
#endif

#include "base/files.h"
#include "support/places.h"
#include "support/sentences.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ReplayTool : public testing::Test {
 protected:
  int Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(),
                     {"--program-folder", folder / "program", "--now", "2026-01-02 03:04:05"});
    return RunBare(arguments);
  }
  int RunBare(const std::vector<std::string>& arguments) {
    out.str("");
    err.str("");
    return RunReplayTool(arguments, out, err);
  }
  std::string Lines() {
    return folder.Write("lines.log",
                        Sentence("GPGGA,120000,6000.0000,N,00500.0000,E,1,08,1.0,10.0,M,40.0,M,,") +
                            "\n# a comment\n" + Sentence("GPZDA,120000,02,01,2026,00,00") + "\n" +
                            "!AIVDM,1,1,,A,13u?etPv2;0n:dDPwUM1U1Cb069D,0*24\n" +
                            Sentence("GPGSV,1,1,02,05,40,083,46,31,17,308,") + "\n");
  }
  static std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

  TemporaryFolder folder;
  std::ostringstream out;
  std::ostringstream err;
};

#if !defined(_WIN32)
TEST_F(ReplayTool, TakesEveryLineOfAPipe) {
  const std::string lines = ReadWholeFile(Lines());
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ASSERT_EQ(::write(ends[1], lines.data(), lines.size()), static_cast<ssize_t>(lines.size()));
  ::close(ends[1]);
  EXPECT_EQ(Run({"/proc/self/fd/" + std::to_string(ends[0]), "--time"}), 0);
  ::close(ends[0]);
  EXPECT_THAT(out.str(), StartsWith("5 lines in "));
}
#endif

TEST_F(ReplayTool, SaysInOneLineWhatItCannotDo) {
  const std::string lines = Lines();
  const std::string setup = folder.Write("bad.ini", "\"REM Systems\"\r\n\"open");
  const std::vector<std::vector<std::string>> refused = {
      {},
      {"--unknown", lines},
      {lines, "second.log"},
      {lines, "--messages", "GGA,XYZ"},
      {lines, "--reference", "1,2,3"},
      {lines, "--reference-used", "3"},
      {lines, "--decimals", "many"},
      {lines, "--now", "yesterday"},
      {lines, "--outlier", "1e99"},
      {lines, "--outlier"},
      {lines, "--checksum=yes"},
      {folder / "missing.log"},
      {folder.Path()},
      {lines, "--setup", folder / "missing.ini"},
      {lines, "--trace", folder / "no/such/folder"},
      {lines, "--windows", lines + "/below a file"},
  };
  for (const std::vector<std::string>& arguments : refused) {
    std::vector<std::string> all = arguments;
    all.insert(all.end(), {"--program-folder", folder / "program"});
    EXPECT_EQ(RunBare(all), 2);
    EXPECT_THAT(err.str(), StartsWith("fathomline-replay: ")) << all[0];
    EXPECT_EQ(err.str().find('\n'), err.str().size() - 1) << all[0];
  }
  EXPECT_EQ(Run({lines, "--setup", setup}), 2);
  EXPECT_THAT(err.str(), HasSubstr("Error in Setup file"));
  EXPECT_EQ(RunBare({"--version"}), 0);
  EXPECT_THAT(out.str(), StartsWith("fathomline-replay "));
  EXPECT_EQ(RunBare({"--help"}), 0);
  EXPECT_THAT(out.str(), AllOf(HasSubstr("\n  --help" + std::string(26, ' ') + "show this\n"),
                               HasSubstr("--reference-used"), HasSubstr("--trace")));
}

TEST_F(ReplayTool, TracesEveryLine) {
  ASSERT_EQ(Run({Lines(), "--trace", folder / "trace.json"}), 0);
  const std::vector<std::string> lines = SplitLines(ReadWholeFile(folder / "trace.json"));
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0],
            R"({"line":1,"type":"GGA","record":{"Time":"12:00:00","Latitude":1.0471975511966667,)"
            R"("Longitude":0.08726646259972222,"Quality":1,"Satellites":8,"HDOP":1,"Altitude":10,)"
            R"("AltitudeUnit":"M","GeoidalSeparation":40,"GeoidalUnit":"M","DGPSAge":-9999,)"
            R"("DGPSStation":-9999}})");
  EXPECT_EQ(lines[1], R"({"line":2,"type":""})");
  EXPECT_THAT(lines[3], AllOf(HasSubstr(R"("vdm":{"TotalFragments":1,)"),
                              HasSubstr(R"("id":1,"record":{"MsgId":1,"Repeat":0,"MMSI":)"),
                              HasSubstr(R"("Received":46024.12783564)")));
  EXPECT_THAT(lines[4], HasSubstr(R"("PRN":[5,31,-9999,-9999],"Elevation":[40,17,-9999,-9999])"));
}

TEST_F(ReplayTool, CountsAndWritesWhatTheWindowsShow) {
  ASSERT_EQ(Run({Lines(), "--counters", folder / "counters.json", "--windows", folder / "windows",
                 "--report", "--name", "Bridge", "--reference", "1.0,0.1,5,0,0,0"}),
            0);
  const std::string counters = ReadWholeFile(folder / "counters.json");
  EXPECT_THAT(counters, StartsWith(R"({"lines":5,"checksum_errors":0,"faults":{"decoder_boxes":{})"
                                   R"(,"error_log":0},"ais_targets":1,"means":{"LatitudeMean":)"));
  EXPECT_THAT(counters, HasSubstr(R"("dHgt":{"Count":1,"RejectedCount":0,"Mean":5,"Sdev":0,"Max":5)"
                                  R"(,"Min":5,"P68":5,"P95":5,"First":5})"));
  EXPECT_THAT(counters, HasSubstr(R"("GPS 31":{"Count":0,"RejectedCount":1,)"));

  const std::string window = ReadWholeFile(folder / "windows/frmStatistics-1.txt");
  EXPECT_THAT(window, AllOf(HasSubstr("label\tlblRefHgt\t5.000\n"), HasSubstr("\nCurrent\t"),
                            HasSubstr("grid\tfgGSV_GPS\t10\t33\n")));
  const std::string path = folder / "program/Reports/20260102-0304-Prim-Bridge.txt";
  EXPECT_EQ(out.str(), path + "\n");
  EXPECT_TRUE(FileExists(path));
  EXPECT_THAT(err.str(), HasSubstr("Statistics summary printed to text file : " + path));
}

TEST_F(ReplayTool, TellsBoxesOnStandardErrorAndCountsThem) {
  const std::string bad =
      folder.Write("bad.log", Sentence("GPGGA,120000,,,,,99999,08,,,M,,M,,") + "\n" +
                                  Sentence("GPGGA,120001,,,,,99999,08,,,M,,M,,") + "\n");
  ASSERT_EQ(Run({bad, "--counters", folder / "counters.json"}), 0);
  EXPECT_THAT(err.str(), AllOf(HasSubstr("Error ExtractGGA: Error 6 : Overflow  GGA-message : $GP"),
                               HasSubstr("2 x Error ExtractGGA\n")));
  EXPECT_THAT(ReadWholeFile(folder / "counters.json"),
              HasSubstr(R"("decoder_boxes":{"Error ExtractGGA":2})"));
}

class Recordings : public ReplayTool {
 protected:
  void SetUp() override {
    if (kRecordings.empty()) GTEST_SKIP() << "FATHOMLINE_RECORDINGS is not set";
  }
};

TEST_F(Recordings, OfABoatsBusGiveTheCountsThatOthersFind) {
  ASSERT_EQ(Run({kRecordings + "/hakefjord.log", "--trace", folder / "trace.json", "--counters",
                 folder / "counters.json"}),
            0);
  std::map<std::string, int> types;
  std::map<std::string, int> ids;
  for (const std::string& line : SplitLines(ReadWholeFile(folder / "trace.json"))) {
    const auto field = [&](const std::string& key) {
      const std::size_t at = line.find(key);
      return at == std::string::npos
                 ? std::string()
                 : line.substr(at + key.size(),
                               line.find_first_of(",}\"", at + key.size()) - at - key.size());
    };
    ++types[field("\"type\":\"")];
    ++ids[field("\"id\":")];
  }
  EXPECT_EQ(types["GGA"], 2632);
  EXPECT_EQ(types["GSV"], 5264);
  EXPECT_EQ(types["VHW"], 7532);
  const std::vector<std::pair<const char*, int>> expected = {{"1", 2728}, {"3", 928},  {"4", 956},
                                                             {"5", 88},   {"8", 4284}, {"18", 5984},
                                                             {"20", 648}, {"24", 208}};
  for (const auto& [id, count] : expected) EXPECT_EQ(ids[id], count) << "AIS id " << id;
}

TEST_F(Recordings, GiveTheSameBytesAgainAndWithOtherLineEnds) {
  const auto results = [&](const std::string& recording) {
    EXPECT_EQ(Run({recording, "--windows", folder / "w", "--counters", folder / "c", "--report"}),
              0);
    std::string all =
        ReadWholeFile(folder / "c") + ReadWholeFile(out.str().substr(0, out.str().size() - 1));
    for (const auto& file : std::filesystem::directory_iterator(PathOf(folder / "w"))) {
      all += ReadWholeFile(PathText(file.path()));
    }
    return all;
  };
  for (const char* name : {"hakefjord.log", "bundg_zeus_9.log", "nmea-rtk.log"}) {
    const std::string bytes = ReadWholeFile(kRecordings + "/" + name);
    std::string crlf;
    for (const char c : bytes) crlf.append(c == '\n' ? "\r\n" : std::string(1, c));
    const std::string first = results(folder.Write("r.log", bytes));
    EXPECT_EQ(results(folder.Write("r.log", bytes)), first) << name;
    EXPECT_EQ(results(folder.Write("r.log", crlf)), first) << name;
  }
}

}  // namespace
}  // namespace fathomline
