// The digest SHA-256 (FIPS 180-4), by which a file is told apart from every other.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fathomline {

class Sha256 {
 public:
  void Add(std::string_view bytes);
  // 64 lower-case hexadecimal digits of what was added so far.
  std::string HexDigest() const;

 private:
  static constexpr std::size_t kBlock = 64;
  void TakeBlock(const char* block);

  std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::array<char, kBlock> begun_{};
  std::uint64_t size_ = 0;
};

}  // namespace fathomline
