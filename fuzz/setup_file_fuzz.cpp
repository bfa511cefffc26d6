// Any bytes as a setup file: they read or fault, and what was read is written and read again
// without a change.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/fault.h"
#include "setup/setup_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace fathomline;
  Records records;
  try {
    ReadSetup({reinterpret_cast<const char*>(data), size}, records);
  } catch (const Fault&) {
    return 0;
  }
  const std::string written = WriteSetup(records);
  Records again;
  ReadSetup(written, again);
  if (WriteSetup(again) != written) std::abort();
  return 0;
}
