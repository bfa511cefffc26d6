// What a file holds, told by its content, since names say little: recordings come as .log, .txt,
// .nmea and much else.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fathomline {

enum class FileKind : std::uint8_t {
  Setup,      // a marker line of a setup file comes first
  Recording,  // a sentence comes first, among whatever else a receiver may send
  Empty,      // nothing but blanks and line ends
  Binary,     // no sentence, and bytes that are no text
  OtherText,
};

// Looks at the beginning of a file; 64 KiB tell it safely.
FileKind KindOfContent(std::string_view beginning);

// Reads no more than it must. What is no regular file, such as a pipe, is taken for a recording and
// left alone. Raises the system's fault.
FileKind KindOfFile(const std::string& path);

}  // namespace fathomline
