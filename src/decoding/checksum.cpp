#include "decoding/checksum.h"

namespace fathomline {

ChecksumText ComputeChecksum(std::string_view sentence) {
  const std::size_t star = sentence.find('*');
  const std::string_view summed =
      star == 0 || sentence.empty() ? std::string_view{} : sentence.substr(0, star).substr(1);
  if (summed.empty()) return {{'X', 'X'}};
  unsigned sum = 0;
  for (const char c : summed) sum ^= static_cast<unsigned char>(c);
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  return {{kDigits[sum >> 4], kDigits[sum & 0xF]}};
}

bool TestChecksum(std::string_view sentence) {
  if (sentence.size() < 6) return false;
  if (sentence.ends_with("\r\n")) sentence.remove_suffix(2);
  return sentence.substr(sentence.size() - 2) == std::string_view(ComputeChecksum(sentence));
}

}  // namespace fathomline
