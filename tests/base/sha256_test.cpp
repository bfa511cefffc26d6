#include "base/sha256.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace fathomline {
namespace {

// Given in two parts, of which the first has so many bytes.
std::string DigestOf(std::string_view bytes, std::size_t first) {
  Sha256 digest;
  digest.Add(bytes.substr(0, first));
  digest.Add(bytes.substr(first));
  return digest.HexDigest();
}

// The examples of FIPS 180-4.
TEST(Sha256, GivesTheDigestsOfTheStandard) {
  EXPECT_EQ(DigestOf("", 0), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(DigestOf("abc", 1), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(DigestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 55),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(DigestOf(std::string(1000000, 'a'), 777),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, IsTheSameHoweverTheBytesCome) {
  const std::string bytes(200, 'a');
  for (std::size_t first = 0; first <= bytes.size(); ++first) {
    EXPECT_EQ(DigestOf(bytes, first),
              "c2a908d98f5df987ade41b5fce213067efbcc21ef2240212a41e54b5e7c28ae5");
  }
}

}  // namespace
}  // namespace fathomline
