// The code tables against code_tables.txt, which lists all texts of each.
#include "ais/code_tables.h"

#include <gtest/gtest.h>
#include <iomanip>
#include <map>
#include <span>
#include <sstream>
#include <string>

#include "ais/area_notice_table.h"
#include "ais/mid_table.h"
#include "ais/ship_type_tables.h"
#include "base/fault.h"
#include "base/files.h"
#include "support/places.h"

namespace fathomline {
namespace {

TEST(CodeTables, HaveTheirTextsAndGaps) {
#define TABLE(name) {#name, name}
  std::map<std::string, std::span<const std::string_view>> tables = {
      TABLE(NavStatusTable),      TABLE(PositionAccuracyTable),
      TABLE(AltitudeSensorTable), TABLE(ClassBUnitTable),
      TABLE(ClassBDisplayTable),  TABLE(ClassBDSCTable),
      TABLE(ClassBBandTable),     TABLE(ClassBMsg22Table),
      TABLE(StationModeTable),    TABLE(CommStateTable),
      TABLE(PositionStatusTable), TABLE(LongRangeTable),
      TABLE(CargoTable),          TABLE(EPFSTable),
      TABLE(AtoNTypeTable),       TABLE(AtoNPageTable),
      TABLE(RaconTable),          TABLE(LightTable),
      TABLE(HealthTable),         TABLE(MessageNameTable),
      TABLE(AlarmTable),          TABLE(VesselSystemTable),
      TABLE(IceClassTable),       TABLE(MIDTable),
      TABLE(AreaNoticeTable),     TABLE(ShipTypeTable),
      TABLE(ShipTypeGroupTable)};
#undef TABLE
  std::map<std::string, std::map<std::size_t, std::string>> listed;
  std::istringstream in(ReadWholeFile(kSourceFolder + "/tests/ais/code_tables.txt"));
  std::string table;
  for (std::string line; std::getline(in, line);) {
    if (line[0] == '#') continue;
    if (line[0] != ' ') {
      table = line;
      continue;
    }
    std::istringstream entry(line);
    std::size_t code = 0;
    std::string text;
    entry >> code >> std::quoted(text);
    listed[table][code] = text;
  }
  EXPECT_EQ(listed.size(), tables.size());
  for (auto& [name, texts] : tables) {
    for (std::size_t code = 0; code < texts.size(); ++code) {
      EXPECT_EQ(texts[code], listed[name][code]) << name << " " << code;
    }
  }
  EXPECT_THROW(TextOf(MIDTable, 1001), Fault);
}

}  // namespace
}  // namespace fathomline
