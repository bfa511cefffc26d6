// The satellites that a receiver of today tells of: all constellations at once, each with all of
// its signals, and which of them are used.
//
// GSV of each talker comes in groups, one per signal from NMEA 0183 version 4.10 on; GSA per
// constellation, with a system id from that version on. A group replaces the one before it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "watch/signal_tables.h"

namespace fathomline {

class SatellitesInView {
 public:
  static constexpr std::size_t kMostSignals = 8;
  // Of the track of a satellite: some hours, since a sentence tells whole degrees. A longer one
  // loses every second point.
  static constexpr std::size_t kMostTrackPoints = 512;

  struct Position {
    std::int16_t elevation = 0;  // degrees
    std::int16_t azimuth = 0;    // degrees from true north

    bool operator==(const Position&) const = default;
  };
  struct Signal {
    std::uint8_t id = 0;
    std::optional<std::int16_t> cn0{};  // dB-Hz; none: not tracked
    std::uint16_t talker = 0;           // the two letters that told it
    std::uint32_t round = 0;            // of their group
  };
  struct Satellite {
    SatelliteId id;
    int sentAs = 0;  // the number in the sentence
    bool used = false;
    std::optional<Position> position{};
    std::vector<Position> track{};  // the oldest first, the present position last
    std::vector<Signal> signals{};  // by id

    // The strongest of its signals, if any is tracked.
    std::optional<std::int16_t> BestCn0() const;
  };
  // What the latest GSA says beside its satellites.
  struct Solution {
    char mode = ' ';  // of the choice between 2D and 3D: A automatic, M manual
    int fix = 0;      // 1 none, 2 2D, 3 3D; 0 not told
    std::optional<double> pdop, hdop, vdop;
  };

  // Takes a sentence ("$" first, no line end). Others than GSV and GSA only end a run of GSA; one
  // whose checksum is wrong is passed over, one without is taken.
  void Take(std::string_view sentence);
  void Reset();

  // By constellation and number.
  const std::vector<Satellite>& Satellites() const { return satellites_; }
  const Solution& LatestSolution() const { return solution_; }
  // How many satellites are said to be used, in view or not.
  int Used() const;
  // Grows with every sentence that was taken.
  std::uint64_t Revision() const { return revision_; }

 private:
  static constexpr std::size_t kMostFields = 24;
  // Streams of GSA sentences: one per constellation.
  static constexpr std::size_t kStreams = kGnssSystems;

  struct Fields {
    std::array<std::string_view, kMostFields> text;  // the address is the first
    std::size_t count = 0;

    std::string_view operator[](std::size_t i) const {
      return i < count ? text[i] : std::string_view();
    }
  };
  // The GSV of one talker for one signal.
  struct Group {
    std::uint16_t talker = 0;
    std::uint8_t signal = 0;
    int next = 0;             // the sentence that is to come; 0: one has been lost
    std::uint32_t round = 0;  // grows with each beginning
    std::uint64_t ended = 0;  // the count of all ends at its latest one
  };
  // One bit per satellite of each system.
  using Set = std::array<std::uint64_t, kGnssSystems>;
  struct Stream {
    Set used{};
    std::uint64_t told = 0;  // the count of all GSA at its latest one
  };

  static Fields Split(std::string_view sentence);
  void TakeGSV(const Fields& fields);
  void TakeGSA(const Fields& fields);
  void TakeSatellite(std::optional<GnssSystem> system, const Fields& fields, std::size_t at,
                     const Group& group);
  void EndGroup(Group& group);
  Group& GroupOf(std::string_view talker, std::uint8_t signal);
  void DropSignals(const Group& group, bool all);
  void DropStaleGroups();
  void DropStaleStreams();
  Satellite& Find(SatelliteId id);
  bool InView(SatelliteId id) const;
  GnssSystem GuessSystem(const Fields& fields);
  Set AllUsed() const;
  static bool Has(const Set& set, SatelliteId id) {
    return (set[static_cast<std::size_t>(id.system)] >> id.number & 1) != 0;
  }

  std::vector<Satellite> satellites_;
  std::vector<Group> groups_;
  std::array<Stream, kStreams> streams_{};
  Solution solution_;
  std::uint64_t revision_ = 0;
  std::uint64_t groupEnds_ = 0;
  std::uint64_t toldStreams_ = 0;
  // The run of GSA that goes on: which streams it has told (one bit each), the latest of them, and
  // whether there was no room for more satellites in that.
  std::uint32_t run_ = 0;
  std::size_t latest_ = kStreams;
  bool latestFull_ = false;
};

}  // namespace fathomline
