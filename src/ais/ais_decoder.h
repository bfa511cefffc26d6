// AIS messages out of VDM and VDO sentences: joins the payloads of a group and decodes the whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "base/clock.h"
#include "base/per_system.h"
#include "decoding/sentence_records.h"

namespace fathomline {

class AISDecoder;
struct AISMessages;

// What `AISMessageId` is while a group of sentences is still open.
inline constexpr std::int16_t kOpenGroup = -99;

// The AIS state of one system.
struct AISReceiver {
  AISReceiver();
  ~AISReceiver();

  const AISMessages& Messages() const { return *messages_; }

  std::string AISAssembly;  // the payloads of the open group, at most kLongestAssembly characters
  std::int16_t AISMessageId = 0;
  // That of the latest message with application data: 6, 8, 25 or 26; 0 before the first. The data
  // stay in its record, whose MMSI may since be that of a message without such data.
  std::int16_t ApplicationMessageId = 0;
  std::int32_t ApplicationMMSI = 0;

  static constexpr std::size_t kLongestAssembly = 32767;

 private:
  friend class AISDecoder;
  // Held by pointer: reading the layouts of all messages takes a compiler longer than the rest of
  // most files, and few of those that know a receiver look into its messages.
  std::unique_ptr<AISMessages> messages_;
};

class AISDecoder {
 public:
  explicit AISDecoder(const Clock& clock) : clock_(clock) {}

  // Takes a sentence that has just been read. `system` is 1 to 4.
  //
  // Payloads are joined in order of arrival until a sentence says that it is the last of its
  // group; sequence id and channel are not compared. Raises Overflow where the joined payload
  // becomes too long, and what decoding raises; either leaves nothing joined.
  void ProcessVDM(int system, const VDMRecord& sentence);

  const AISReceiver& Receiver(int system) const { return receivers_[system]; }

  // The function identifiers of binary messages are those of the IALA proposal, not of IMO 236.
  bool BinaryStandardIALA() const { return binaryStandardIALA_; }
  void SetBinaryStandardIALA(bool iala) { binaryStandardIALA_ = iala; }

 private:
  const Clock& clock_;
  bool binaryStandardIALA_ = false;
  PerSystem<AISReceiver> receivers_;
};

}  // namespace fathomline
