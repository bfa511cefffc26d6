// Any bytes as a reference file: it is listed, a position is stored, and all others stay as they
// were.
//
// The first bytes are the position: its numbers, the length of its name and the name.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "base/dialogs.h"
#include "base/files.h"
#include "base/text.h"
#include "setup/reference_positions.h"
#include "support/temporary_folder.h"

namespace {

using namespace fathomline;

class CountingDialogs : public Dialogs {
 public:
  std::size_t boxes = 0;

  Answer Ask(const MessageBox&) override {
    ++boxes;
    return Answer::Ok;
  }
  std::optional<std::string> ChooseFile(const FileQuestion&) override { return std::nullopt; }
  void Beep() override {}
};

void Require(bool holds) {
  if (!holds) std::abort();
}

// What the dialog lets through: any text of one line without a double quote.
std::string NameOf(std::string_view bytes) {
  std::string name = WithoutQuotes(FromWindows1252(bytes));
  for (char& c : name) {
    if (c == '\r' || c == '\n') c = ' ';
  }
  return name;
}

bool Same(const ReferencePosition& a, const ReferencePosition& b) {
  return a.name == b.name && a.latitude == b.latitude && a.longitude == b.longitude &&
         a.height == b.height;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  static const TemporaryFolder* const folder = new TemporaryFolder;
  std::string_view bytes(reinterpret_cast<const char*>(data) + 4, size - 4);
  const std::string_view name = bytes.substr(0, data[3] % 16U);
  bytes.remove_prefix(name.size());
  const ReferencePosition stored{NameOf(name), data[0] / 81.0, -data[1] / 81.0,
                                 static_cast<float>(data[2]) / 7.0F};
  const std::string path = folder->Write(kReferenceFileName, bytes);

  CountingDialogs unread;
  const std::vector<ReferencePosition> before = ReadReferencePositions(folder->Path(), unread);
  CountingDialogs replaced;
  StoreReferencePosition(folder->Path(), stored, replaced);
  const std::string content = ReadWholeFile(path);
  CountingDialogs again;
  StoreReferencePosition(folder->Path(), stored, again);
  Require(again.boxes == (replaced.boxes == 0 ? 1 : replaced.boxes));
  Require(ReadWholeFile(path) == content);
  if (unread.boxes != 0) return 0;

  CountingDialogs none;
  const std::vector<ReferencePosition> after = ReadReferencePositions(folder->Path(), none);
  Require(none.boxes == 0);
  Require(after.size() == before.size() + (replaced.boxes == 0 ? 1 : 0));
  std::size_t found = 0;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const bool changed = i == before.size() || before[i].name == stored.name;
    Require(Same(after[i], changed ? stored : before[i]));
    if (changed && i < before.size()) ++found;
  }
  Require(found == replaced.boxes);
  return 0;
}
