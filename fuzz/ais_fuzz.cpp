// Anything that a receiver can deliver, into the AIS decoder and the target store.
//
// The input is a row of sentences. Each begins with a control byte and a length byte, then the
// payload; some control bits turn payload bytes into armoured characters or choose odd headers.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "ais/ais_decoder.h"
#include "ais/ais_messages.h"
#include "ais/target_store.h"
#include "base/clock.h"
#include "base/dialogs.h"
#include "base/fault.h"
#include "decoding/record_fields.h"

namespace {

using namespace fathomline;

class SilentDialogs : public Dialogs {
 public:
  Answer Ask(const MessageBox&) override { return Answer::Ok; }
  std::optional<std::string> ChooseFile(const FileQuestion&) override { return std::nullopt; }
  void Beep() override {}
};

// The bytes of the input, zeros behind its end.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  bool AtEnd() const { return at_ >= size_; }
  std::uint8_t Byte() { return AtEnd() ? std::uint8_t{0} : data_[at_++]; }
  std::int16_t Word() { return static_cast<std::int16_t>(Byte() << 8 | Byte()); }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t at_ = 0;
};

enum Control : unsigned {
  kSystemMask = 3,
  kLastOfGroup = 4,
  kArmoured = 8,
  kLong = 16,
  kOddHeader = 32,
  kIALA = 64,
  kOddFillBits = 128,
};

char Armoured(std::uint8_t byte) {
  const int value = byte & 63;
  return static_cast<char>(value < 40 ? value + 48 : value + 56);
}

VDMRecord NextSentence(Source& source, unsigned control) {
  VDMRecord sentence;
  sentence.TotalFragments = 2;
  sentence.FragmentNumber = (control & kLastOfGroup) != 0 ? 2 : 1;
  if ((control & kOddHeader) != 0) {
    sentence.TotalFragments = source.Word();
    sentence.FragmentNumber = source.Word();
  }
  sentence.FillBits = (control & kOddFillBits) != 0 ? source.Word() : std::int16_t{0};
  const std::size_t length = source.Byte();
  for (std::size_t i = 0; i < length && !source.AtEnd(); ++i) {
    const std::uint8_t byte = source.Byte();
    const char character = (control & kArmoured) != 0 ? Armoured(byte) : static_cast<char>(byte);
    sentence.Payload.append((control & kLong) != 0 ? 200 : 1, character);
  }
  return sentence;
}

// Whatever was decoded must be a message that can be walked: texts and numbers in their places.
class Walker {
 public:
  template <class Value>
  void operator()(std::string_view, const Value& value) {
    if constexpr (requires { Value::Layout(); }) {
      VisitFields(value, *this);
    } else if constexpr (std::is_same_v<Value, std::string>) {
      characters_ += value.size();
    }
  }
  std::size_t Characters() const { return characters_; }

 private:
  std::size_t characters_ = 0;
};

void Check(bool holds) {
  if (!holds) __builtin_trap();
}

void Feed(AISDecoder& decoder, AISStore& store, int system, const VDMRecord& sentence) {
  const AISReceiver& receiver = decoder.Receiver(system);
  try {
    decoder.ProcessVDM(system, sentence);
    const std::int16_t id = receiver.AISMessageId;
    Check(id == kOpenGroup || (id >= 0 && id <= 63));
    Check((id == kOpenGroup) == (sentence.TotalFragments != sentence.FragmentNumber));
    store.StoreAISTarget(system, id, receiver.Messages(), DateTime{45000.0});
  } catch (const Fault&) {
  }
  Check(receiver.AISAssembly.size() <= AISReceiver::kLongestAssembly);
  Check(store.AISTargetCount(system) <= AISStore::kMaximumTargets);
  Check(store.AISCurrentTarget(system) <= store.AISTargetCount(system));
  Walker walker;
  VisitMessage(receiver.Messages(), receiver.AISMessageId,
               [&](const auto& record) { VisitFields(record, walker); });
  // The longest payload and the most negative number of fill bits, with room for fixed texts.
  Check(walker.Characters() < 40000);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const FrozenClock clock(DateFromParts(2024, 6, 15));
  SilentDialogs dialogs;
  const auto decoder = std::make_unique<AISDecoder>(clock);
  AISStore store(dialogs);
  Source source(data, size);
  while (!source.AtEnd()) {
    const unsigned control = source.Byte();
    decoder->SetBinaryStandardIALA((control & kIALA) != 0);
    Feed(*decoder, store, static_cast<int>(control & kSystemMask) + 1,
         NextSentence(source, control));
  }
  return 0;
}
