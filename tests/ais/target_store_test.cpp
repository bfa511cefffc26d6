#include "ais/target_store.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "ais/ais_messages.h"
#include "platform/fault.h"
#include "support/recording_dialogs.h"

namespace fathomline {
namespace {

const DateTime kStart = DateFromParts(2024, 6, 15);

class AISStoreTest : public testing::Test {
 protected:
  void Store(int id, double seconds = 0, int system = 1) {
    store.StoreAISTarget(system, static_cast<std::int16_t>(id), *messages,
                         kStart + DateTime{seconds / kSecondsPerDay});
  }
  void StoreReport(std::int32_t mmsi) {
    messages->Id1.MMSI = mmsi;
    Store(1);
  }
  const AISTarget& Current() { return store.Target(1, store.AISCurrentTarget(1)); }

  RecordingDialogs dialogs;
  std::unique_ptr<AISMessages> messages = std::make_unique<AISMessages>();
  AISStore store{dialogs};
};

TEST_F(AISStoreTest, Countries) {
  struct CountryRow {
    std::int32_t mmsi;
    std::string_view country;
  };
  for (const CountryRow& row : {CountryRow{258123456, "Norway"}, CountryRow{2573500, "Norway"},
                                CountryRow{216000001, "unknown"}, CountryRow{992576001, "unknown"},
                                CountryRow{999999999, "unknown"},
                                // Single precision takes the last one for 219,000,000.
                                CountryRow{218999980, "Germany"}, CountryRow{218999999, "Denmark"},
                                // 256.5 to the even number, 257.5 likewise.
                                CountryRow{2565000, "Malta"}, CountryRow{2575000, "Norway"},
                                CountryRow{9999999, "unknown"}, CountryRow{1, "unknown"}}) {
    EXPECT_EQ(CountryOf(row.mmsi), row.country) << row.mmsi;
  }
  EXPECT_THROW(CountryOf(1001000000), Fault);
}

TEST_F(AISStoreTest, IdsTwoAndThreeGoToTheStationOfIdOne) {
  messages->Id2.MMSI = 258000002;
  Store(2);
  EXPECT_TRUE(store.AISNoTarget(1));
  EXPECT_EQ(store.AISTargetCount(1), 0);

  messages->Id1.MMSI = 258000001;
  messages->Id1.SOG = 1;
  messages->Id2.SOG = 2;
  messages->Id2.Heading = 90;
  messages->Id2.NavStatusText = "Moored";
  Store(1);
  Store(2, 10);
  EXPECT_FALSE(store.AISNoTarget(1));
  EXPECT_EQ(store.AISTargetCount(1), 1);
  EXPECT_EQ(Current().MMSI, 258000001);
  EXPECT_EQ(Current().AISClass, "Class A Vessel");
  EXPECT_EQ(Current().Country, "Norway");
  EXPECT_EQ(Current().SOG, 2);
  EXPECT_EQ(Current().Heading, 90);
  EXPECT_EQ(Current().NavStatusText, "Moored");
  EXPECT_EQ(Current().MessageCount[1], 1);
  EXPECT_EQ(Current().MessageCount[2], 1);
  EXPECT_EQ(Current().PeriodSeconds, 10);
}

TEST_F(AISStoreTest, AnOpenGroupTouchesTheTimesAlone) {
  StoreReport(258000001);
  messages->Id1.SOG = 7;
  Store(-99, 3601);
  EXPECT_EQ(Current().FirstMessage, kStart);
  EXPECT_EQ(Current().PeriodSeconds, 3601);
  EXPECT_EQ(Current().SOG, 0);
  EXPECT_EQ(Current().MessageCount[1], 1);
}

TEST_F(AISStoreTest, OtherIdsNameNoTarget) {
  StoreReport(258000001);
  messages->Id24.MMSI = 258000001;
  messages->Id8.MMSI = 258000001;
  for (const int id : {8, 20, 24, 27, 63}) {
    Store(id, 60);
    EXPECT_TRUE(store.AISNoTarget(1)) << id;
  }
  EXPECT_EQ(Current().PeriodSeconds, 0);
  Store(0, 60);
  EXPECT_FALSE(store.AISNoTarget(1));
  EXPECT_EQ(Current().PeriodSeconds, 60);
}

TEST_F(AISStoreTest, ClassIsSetOnce) {
  messages->Id4.MMSI = messages->Id1.MMSI = 2573500;
  messages->Id4.Second = 33;
  messages->Id4.EPFSText = "Surveyed";
  Store(4);
  EXPECT_EQ(Current().AISClass, "Base Station");
  EXPECT_EQ(Current().Name, "Base Station");
  EXPECT_EQ(Current().Timestamp, 33);
  EXPECT_EQ(Current().EPFSText, "Surveyed");
  EXPECT_EQ(Current().CallSign, "n/a");
  EXPECT_EQ(Current().Destination, "n/a");
  Store(1);
  EXPECT_EQ(store.AISTargetCount(1), 1);
  EXPECT_EQ(Current().AISClass, "Base Station");
  EXPECT_EQ(Current().MessageCount[4], 1);
}

TEST_F(AISStoreTest, StaticData) {
  messages->Id5.MMSI = 258000005;
  messages->Id5.Name = "NORDLYS             ";
  messages->Id5.IMONumber = 9074729;
  messages->Id5.ShipTypeText = "Tanker";
  messages->Id5.CargoText = "Not specified";
  messages->Id5.DimensionA = 1;
  messages->Id5.DimensionB = 2;
  messages->Id5.DimensionC = 3;
  messages->Id5.DimensionD = 4;
  messages->Id5.Draught = 5.5F;
  messages->Id5.ETA = kStart;
  messages->Id5.Destination = "BODO";
  Store(5);
  EXPECT_EQ(Current().AISClass, "Class A Vessel");
  EXPECT_EQ(Current().Name, "NORDLYS             ");
  EXPECT_EQ(Current().IMONumber, 9074729);
  EXPECT_EQ(Current().ShipTypeText, "Tanker");
  EXPECT_EQ(Current().CargoText, "Not specified");
  EXPECT_EQ(Current().DimensionA, 1);
  EXPECT_EQ(Current().DimensionD, 4);
  EXPECT_EQ(Current().Draught, 5.5F);
  EXPECT_EQ(Current().ETA, kStart);
  EXPECT_EQ(Current().Destination, "BODO");
  EXPECT_EQ(Current().MessageCount[5], 1);
}

TEST_F(AISStoreTest, SearchAndRescue) {
  messages->Id9.MMSI = 111257001;
  messages->Id9.Altitude = 300;
  messages->Id9.Timestamp = 12;
  Store(9);
  EXPECT_EQ(Current().AISClass, "SAR Aircraft");
  EXPECT_EQ(Current().Name, "SAR Aircraft");
  EXPECT_EQ(Current().Altitude, 300);
  EXPECT_EQ(Current().Timestamp, 12);
  EXPECT_EQ(Current().EPFSText, "n/a");
  EXPECT_EQ(Current().MessageCount[9], 1);
}

// Id 18 takes accuracy and time stamp from the system's id 19 and overwrites the name.
TEST_F(AISStoreTest, ClassB) {
  messages->Id18.MMSI = 257000018;
  messages->Id18.PositionAccuracyText = "of id 18";
  messages->Id18.Timestamp = 18;
  messages->Id18.Heading = 45;
  Store(18);
  EXPECT_EQ(Current().AISClass, "Class B Vessel");
  EXPECT_EQ(Current().Name, "Class B vessel");
  EXPECT_EQ(Current().PositionAccuracyText, "");
  EXPECT_EQ(Current().Timestamp, 0);
  EXPECT_EQ(Current().Heading, 45);

  messages->Id19.MMSI = 257000018;
  messages->Id19.Name = "HAVSULA             ";
  messages->Id19.ShipTypeFullText = "Vessel-Sailing";
  messages->Id19.PositionAccuracyText = "of id 19";
  messages->Id19.Timestamp = 19;
  messages->Id19.EPFSText = "GPS";
  Store(19);
  EXPECT_EQ(Current().Name, "HAVSULA             ");
  EXPECT_EQ(Current().ShipTypeFullText, "Vessel-Sailing");
  EXPECT_EQ(Current().EPFSText, "GPS");
  Store(18);
  EXPECT_EQ(Current().Name, "Class B vessel");
  EXPECT_EQ(Current().PositionAccuracyText, "of id 19");
  EXPECT_EQ(Current().Timestamp, 19);
  EXPECT_EQ(Current().EPFSText, "n/a");
  EXPECT_EQ(Current().ShipTypeFullText, "n/a");
  EXPECT_EQ(Current().MessageCount, AISTarget{}.MessageCount);
}

TEST_F(AISStoreTest, TwentyBlanksAreNoName) {
  messages->Id19.MMSI = 257000019;
  messages->Id21.MMSI = 992570021;
  messages->Id19.Name = messages->Id21.Name = std::string(20, ' ');
  Store(19);
  EXPECT_EQ(Current().Name, "Class B vessel");
  Store(21);
  EXPECT_EQ(Current().AISClass, "Aids to Navigation");
  EXPECT_EQ(Current().Name, "Aid to Navigation");
  messages->Id21.Name = std::string(19, ' ');
  Store(21);
  EXPECT_EQ(Current().Name, std::string(19, ' '));
}

TEST_F(AISStoreTest, TheTableIsFullAt500) {
  // Numbers that crowd the same places of the index.
  const auto mmsi = [](int i) { return 200000000 + (i % 7) * 4096 + i; };
  for (int i = 1; i <= 500; ++i) StoreReport(mmsi(i));
  EXPECT_EQ(store.AISTargetCount(1), 500);
  EXPECT_TRUE(dialogs.boxes.empty());
  StoreReport(mmsi(3));
  EXPECT_EQ(store.AISCurrentTarget(1), 3);
  for (int i = 0; i < 2; ++i) {
    StoreReport(mmsi(501));
    ASSERT_EQ(dialogs.boxes.size(), 1U);
    EXPECT_EQ(dialogs.boxes[0].icon, BoxIcon::Information);
    EXPECT_TRUE(dialogs.boxes[0].canBeSilenced);
    EXPECT_EQ(dialogs.TakeTexts().front(),
              "Maximum limit AIS system 1, more than 500 targets stored. New targets ignored!");
  }
  EXPECT_EQ(store.AISTargetCount(1), 500);
  EXPECT_EQ(store.AISCurrentTarget(1), 3);
  EXPECT_FALSE(store.AISNoTarget(1));
  for (int i = 1; i <= 500; ++i) {
    StoreReport(mmsi(i));
    EXPECT_EQ(store.AISCurrentTarget(1), i);
    EXPECT_EQ(store.Target(1, i).MMSI, mmsi(i));
  }
  EXPECT_EQ(store.AISTargetCount(2), 0);
  EXPECT_THROW(store.Target(1, 501), Fault);
}

// The station is in the table by the time its country faults, and is found there later.
TEST_F(AISStoreTest, AnMMSIBeyondTheCountries) {
  EXPECT_THROW(StoreReport(1073741823), Fault);
  EXPECT_EQ(store.AISTargetCount(1), 1);
  EXPECT_EQ(store.AISCurrentTarget(1), 1);
  StoreReport(1073741823);
  EXPECT_EQ(store.AISTargetCount(1), 1);
  EXPECT_EQ(Current().AISClass, "");
  EXPECT_EQ(Current().MessageCount[1], 1);
}

TEST_F(AISStoreTest, APeriodBeyondItsFieldKeepsTheOld) {
  StoreReport(258000001);
  Store(1, 5);
  Store(1, 5e9);
  EXPECT_EQ(Current().PeriodSeconds, 5);
  Store(1, -20);
  EXPECT_EQ(Current().PeriodSeconds, -20);
}

}  // namespace
}  // namespace fathomline
