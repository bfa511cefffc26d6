// Feeds bare payloads to a decoder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ais/ais_decoder.h"
#include "base/clock.h"

namespace fathomline {

class SentenceFeed {
 public:
  void TakePayload(std::string payload, std::int16_t fillBits = 0, std::int16_t total = 1,
                   std::int16_t number = 1, int system = 1) {
    VDMRecord record;
    record.TotalFragments = total;
    record.FragmentNumber = number;
    record.Payload = std::move(payload);
    record.FillBits = fillBits;
    decoder.ProcessVDM(system, record);
  }

  const AISMessages& Messages(int system = 1) const { return decoder.Receiver(system).Messages(); }
  std::int16_t MessageId(int system = 1) const { return decoder.Receiver(system).AISMessageId; }

  FrozenClock clock{DateFromParts(2024, 6, 15)};
  AISDecoder decoder{clock};
};

// A message put together bit by bit.
class MessageBits {
 public:
  explicit MessageBits(std::size_t count) : bits_(count) {}

  MessageBits& Put(int first, int last, std::int64_t value) {
    for (int i = last; i >= first; --i, value >>= 1) {
      bits_.at(static_cast<std::size_t>(i - 1)) = (value & 1) != 0;
    }
    return *this;
  }

  std::string Payload() const {
    std::string payload;
    for (std::size_t i = 0; i < bits_.size(); i += 6) {
      int value = 0;
      for (std::size_t j = i; j < i + 6; ++j) value = value * 2 + (j < bits_.size() && bits_[j]);
      payload += static_cast<char>(value < 40 ? value + 48 : value + 56);
    }
    return payload;
  }

 private:
  std::vector<bool> bits_;
};

}  // namespace fathomline
