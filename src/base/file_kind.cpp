#include "base/file_kind.h"

#include <algorithm>
#include <filesystem>

#include "base/files.h"
#include "base/system.h"
#include "base/text.h"

namespace fathomline {
namespace {

constexpr std::size_t kEnough = std::size_t{64} * 1024;
constexpr std::string_view kBlanks = " \t\r\n\f";
// Text of other character sets may have a control character here and there.
constexpr std::size_t kTextToControl = 20;

bool IsUpper(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// "$GPGGA,", "!AIVDM," or a proprietary "$PFEC,", wherever it stands in the line: times and tag
// blocks may stand in front.
bool HasSentence(std::string_view line) {
  constexpr std::size_t kShortest = 4;
  constexpr std::size_t kLongest = 10;
  for (std::size_t at = line.find_first_of("$!"); at != line.npos;
       at = line.find_first_of("$!", at + 1)) {
    const std::string_view rest = line.substr(at + 1);
    const auto end = static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), IsUpper) -
                                              rest.begin());
    if (end >= kShortest && end <= kLongest && end < rest.size() && rest[end] == ',') return true;
  }
  return false;
}

bool HasMarker(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  return line.starts_with("\"REM ") || line.starts_with("REM ");
}

bool IsControl(char c) {
  const auto code = static_cast<unsigned char>(c);
  return (code < 0x20 && kBlanks.find(c) == kBlanks.npos) || code == 0x7F;
}

}  // namespace

FileKind KindOfContent(std::string_view beginning) {
  if (beginning.starts_with(kByteOrderMark)) beginning.remove_prefix(kByteOrderMark.size());
  if (beginning.find_first_not_of(kBlanks) == beginning.npos) return FileKind::Empty;
  for (std::string_view rest = beginning; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    if (HasMarker(line)) return FileKind::Setup;
    if (HasSentence(line)) return FileKind::Recording;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  const bool zeros = beginning.find('\0') != beginning.npos;
  const auto controls =
      static_cast<std::size_t>(std::count_if(beginning.begin(), beginning.end(), IsControl));
  return zeros || controls > beginning.size() / kTextToControl ? FileKind::Binary
                                                               : FileKind::OtherText;
}

FileKind KindOfFile(const std::string& path) {
  ExpectReadable(path);
  if (!std::filesystem::is_regular_file(PathOf(path))) return FileKind::Recording;
  return KindOfContent(ReadBeginning(path, kEnough));
}

}  // namespace fathomline
