// Any text as a coordinate: a parser gives an angle in its range and a normal form that it takes
// again without a word, for the same angle.
//
// The first byte chooses the parser, the type and the decimals.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/dialogs.h"
#include "decoding/coordinate_parser.h"
#include "decoding/coordinate_text.h"

namespace {

using namespace fathomline;

class CountingDialogs : public Dialogs {
 public:
  int boxes = 0;
  bool faulted = false;

  Answer Ask(const MessageBox& box) override {
    ++boxes;
    faulted = box.text.ends_with(" FORMAT ERROR. ");
    return Answer::Ok;
  }
  std::optional<std::string> ChooseFile(const FileQuestion&) override { return std::nullopt; }
  void Beep() override {}
};

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  constexpr std::string_view kTypes[] = {"LAT", "lon", "BRG", "other"};
  const unsigned choice = data[0];
  const std::string_view type = kTypes[choice & 3U];
  const bool isPosition = (choice & 3U) < 2;
  const bool isDMS = isPosition && (choice & 4U) != 0;
  const int decimals = static_cast<int>(choice >> 3 & 7U);
  const auto parse = [&](std::string& text, Dialogs& dialogs) {
    return isDMS ? ParseCoordinateDMS(text, type, dialogs)
                 : ParseCoordinateDM(text, type, decimals, dialogs);
  };

  const std::string typed(reinterpret_cast<const char*>(data) + 1, size - 1);
  std::string text = typed;
  CountingDialogs dialogs;
  const double value = parse(text, dialogs);
  if (dialogs.faulted) {
    Require(value == 0.0 && text == typed);
    return 0;
  }
  const double most = type == "LAT"   ? 90.0
                      : type == "lon" ? 180.0
                      : type == "BRG" ? 360.0
                                      : 32768.0;
  Require(std::abs(value) <= most);
  if (!isPosition) return 0;

  // Seconds that round to 60 in the normal form are told when they come back.
  const bool carried = text.find("60.0") != std::string::npos;
  CountingDialogs second;
  std::string normal = text;
  const double again = parse(normal, second);
  if (carried) return 0;
  const double unit = isDMS ? 1.0 / 3600.0 : 1.0 / 60.0;
  const double shown = isDMS ? 1e-4 : std::pow(10.0, decimals > 6 ? -6 : -decimals);
  Require(second.boxes == 0);
  Require(std::abs(again - value) <= unit * (shown + 1e-5));
  // What rounds to 0 loses its south or west.
  Require(normal == text || decimals > 4 || again == 0.0);

  FormatCoordinateCompact(value, type, "FILE", decimals);
  return 0;
}
