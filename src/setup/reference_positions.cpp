#include "setup/reference_positions.h"

#include "base/fault.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/text.h"
#include "setup/setup_values.h"

namespace fathomline {
namespace {

std::string ReferenceFile(const std::string& programFolder) {
  return programFolder + std::string(kReferenceFileName);
}

ReferencePosition ReadLine(std::string_view line) {
  ReferencePosition position;
  SetupReader reader(line);
  reader.Value(position.name);
  reader.Value(position.latitude);
  reader.Value(position.longitude);
  reader.Value(position.height);
  return position;
}

std::string LineOf(ReferencePosition position) {
  SetupWriter writer;
  writer.Line(position.name, position.latitude, position.longitude, position.height);
  return writer.Bytes();
}

// Whether the line begins with that name. One that has no name at all is somebody else's.
bool HasName(std::string_view line, const std::string& bytesOfName) {
  bool same = false;
  ResumeNext([&] {
    std::string name;
    SetupReader(line).Value(name);
    same = ToWindows1252(name) == bytesOfName;
  });
  return same;
}

}  // namespace

std::vector<ReferencePosition> ReadReferencePositions(const std::string& programFolder,
                                                      Dialogs& dialogs) {
  std::vector<ReferencePosition> positions;
  const std::string path = ReferenceFile(programFolder);
  if (!FileExists(path)) return positions;
  std::int32_t number = 0;
  ResumeNext(
      [&] {
        LineReader reader(path);
        while (!reader.AtEnd()) {
          ++number;
          const std::string_view line = reader.Next();
          if (!Trim(line).empty()) positions.push_back(ReadLine(line));
        }
      },
      [&](const Fault& fault) {
        dialogs.Ask({.text = fault.Description() + " - Error in line " + PlainText(number) +
                             " of " + path + ". The positions from there on are not listed.",
                     .icon = BoxIcon::Exclamation});
      });
  return positions;
}

void StoreReferencePosition(const std::string& programFolder, const ReferencePosition& position,
                            Dialogs& dialogs) {
  const std::string path = ReferenceFile(programFolder);
  const std::string newLine = LineOf(position);
  const std::string bytesOfName = ToWindows1252(position.name);
  std::string content;
  bool found = false;
  if (FileExists(path)) {
    LineReader reader(path);
    while (!reader.AtEnd()) {
      const std::string line(reader.Next());
      if (!HasName(line, bytesOfName)) {
        content += line + "\r\n";
        continue;
      }
      dialogs.Say("The reference target '" + position.name +
                  "' already exist. The position will be updated!");
      content += newLine;
      found = true;
    }
  }
  if (!found) content += newLine;

  ReplaceFile(path, content, programFolder + std::string(kReferenceBufferName));
}

}  // namespace fathomline
