#include "ais/code_tables.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "ais/area_notice_table.h"
#include "ais/mid_table.h"
#include "ais/ship_type_tables.h"
#include "base/fault.h"

namespace fathomline {
namespace {

template <class Table>
auto TextCount(const Table& table) {
  return std::count_if(table.begin(), table.end(), [](auto text) { return !text.empty(); });
}

TEST(CodeTables, HaveTheirTextsAndGaps) {
  EXPECT_EQ(ShipTypeTable[5], "");
  EXPECT_EQ(ShipTypeTable[56], " not used");
  EXPECT_EQ(ShipTypeTable[82], "Tanker - Carrying DG,HS or MP IMO hazard or pollutant category Y");
  EXPECT_EQ(ShipTypeGroupTable[19], "Reserved for future use");
  EXPECT_EQ(TextCount(ShipTypeTable), 91);
  EXPECT_EQ(TextCount(ShipTypeGroupTable), 100);
  EXPECT_EQ(AlarmTable[24], "AIS: External EPFS lost");
  EXPECT_EQ(VesselSystemTable[10], "LRIT");
  EXPECT_EQ(MIDTable[216], "");
  EXPECT_EQ(MIDTable[619], "C\u00F4te d'Ivoire");
  EXPECT_EQ(TextCount(NavStatusTable), 16);
  EXPECT_EQ(TextCount(AlarmTable), 18);
  EXPECT_EQ(TextCount(VesselSystemTable), 25);
  EXPECT_EQ(TextCount(MIDTable), 270);
  EXPECT_EQ(TextCount(AreaNoticeTable), 128);
  EXPECT_THROW(TextOf(MIDTable, 1001), Fault);
}

}  // namespace
}  // namespace fathomline
