// What a recording costs at the very least: reads its lines, sums the checksum of each and finds
// its fields, and does nothing with them: bench-split RECORDING
//
// Beside this stands what the program does (docs/performance.md).
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "decoding/checksum.h"

int main(int argc, char** argv) {
  using namespace fathomline;
  if (argc != 2) {
    std::fputs("bench-split RECORDING\n", stderr);
    return 2;
  }
  const auto begin = std::chrono::steady_clock::now();
  LineReader reader(argv[1]);
  std::vector<std::string_view> fields;
  std::uint64_t lines = 0, found = 0, good = 0;
  while (!reader.AtEnd()) {
    std::string_view line = reader.Next();
    ++lines;
    if (TestChecksum(line)) ++good;
    fields.clear();
    for (std::size_t comma = line.find(','); comma != std::string_view::npos;
         comma = line.find(',')) {
      fields.push_back(line.substr(0, comma));
      line.remove_prefix(comma + 1);
    }
    fields.push_back(line);
    found += fields.size();
  }
  const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - begin;
  std::printf("%llu lines, %llu fields, %llu good checksums in %.3f s, %.0f lines/s\n",
              static_cast<unsigned long long>(lines), static_cast<unsigned long long>(found),
              static_cast<unsigned long long>(good), spent.count(),
              static_cast<double>(lines) / spent.count());
}
