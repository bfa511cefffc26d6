// What was received over AIS: messages put together from VDM and VDO, counted by id, channel and
// kind of station (ITU-R M.1371), and the own positions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "trial/position_series.h"
#include "trial/trial_clock.h"
#include "trial/trial_figures.h"
#include "trial/trial_reader.h"

namespace fathomline::trial {

// Own positions as VDO told them.
struct OwnPositionSamples {
  std::vector<Epoch> epochs;
  std::vector<std::uint8_t> seconds;        // of the minute; from 60 there is none
  std::vector<double> latitude, longitude;  // degrees
};

class AisRecorder {
 public:
  // A VDM or VDO that is used, with the epoch it belongs to.
  void Take(const Sentence& sentence, Epoch epoch);

  // As if the recording ended here; without the own positions, which are compared below.
  Ais Figures() const;
  const OwnPositionSamples& OwnPositions() const { return ownPositions_; }
  std::size_t Bytes() const;

 private:
  // Messages of which a part is missing.
  struct Group {
    std::uint64_t name;
    int sequence;  // below zero where none was sent
    char channel;  // NUL where none was sent
    int total;
    Count begunAt;
    int fillBits;      // of the last part
    unsigned present;  // a bit for each part
    std::vector<std::string> parts;
  };

  void GiveUpOld();
  void TakeMessage(SentenceType type, char channel, const std::string& payload, int fillBits,
                   Epoch epoch);
  void TakeOwnPosition(unsigned id, const std::string& payload, Epoch epoch);

  Count sentences_ = 0;
  Count messages_ = 0;
  Count ownMessages_ = 0;
  Count incomplete_ = 0;
  Count tooShort_ = 0;
  std::vector<Group> groups_;  // the oldest first
  std::map<std::pair<unsigned, char>, Count> byId_;
  std::unordered_map<std::uint32_t, std::uint64_t> idsOfStation_;  // a bit for each id
  OwnPositionSamples ownPositions_;
};

// The own positions of the window against the stream, each at the second that it names, nearest to
// when it came. The stream may be missing.
OwnPosition OwnPositionOf(const AisRecorder& recorder, const PositionSeries* stream,
                          const TrialClock& clock, const Window& window);

}  // namespace fathomline::trial
