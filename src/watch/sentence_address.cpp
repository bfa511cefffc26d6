#include "watch/sentence_address.h"

#include "decoding/checksum.h"

namespace fathomline {

std::string SentenceAddress::Text() const {
  std::string text;
  for (std::uint64_t rest = packed_; rest != 0; rest >>= 8) {
    text += static_cast<char>(rest & 0xFF);
  }
  return text;
}

std::string SentenceAddress::Talker() const {
  const std::string text = Text();
  return text.substr(0, text.starts_with('P') ? 1 : 2);
}

std::string SentenceAddress::Sentence() const {
  return Text().substr(Talker().size());
}

std::string_view SentenceOf(std::string_view line) {
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
  if (line.starts_with('\\')) {
    const std::size_t end = line.find('\\', 1);
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
  }
  return line.starts_with('$') || line.starts_with('!') ? line : std::string_view();
}

ChecksumVerdict JudgeChecksum(std::string_view sentence) {
  if (sentence.size() < 3 || sentence[sentence.size() - 3] != '*') return ChecksumVerdict::None;
  return TestChecksum(sentence) ? ChecksumVerdict::Right : ChecksumVerdict::Wrong;
}

}  // namespace fathomline
