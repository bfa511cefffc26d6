#include "ais/target_store.h"

#include <gtest/gtest.h>
#include <memory>
#include <numeric>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "ais/ais_messages.h"
#include "base/fault.h"
#include "support/recording_dialogs.h"

namespace fathomline {
namespace {

const DateTime kStart = DateFromParts(2024, 6, 15);

// A value that tells its field and the id of its message.
template <class Value>
Value Made(std::string_view name, int id) {
  const int number = id * 1000 + std::accumulate(name.begin(), name.end(), 0) % 997;
  if constexpr (std::is_same_v<Value, std::string>) {
    return std::string(name) + std::to_string(id);
  } else if constexpr (std::is_arithmetic_v<Value>) {
    return static_cast<Value>(number);
  } else {
    return Value{static_cast<double>(number)};
  }
}

template <class Message>
void Fill(Message& message, int id) {
  const auto set = [&](const auto& row) {
    auto& value = message.*(row.member);
    value = Made<std::decay_t<decltype(value)>>(row.name, id);
  };
  std::apply([&](const auto&... row) { (set(row), ...); }, Message::Layout());
  message.MMSI = 258000000 + id;
}

// What a target holds beyond its first values, "Field@id" where a message filled it.
std::string Listing(const AISTarget& target) {
  using T = AISTarget;
  constexpr auto kFields = std::make_tuple(
      Kept{"AISClass", &T::AISClass}, Kept{"NavStatusText", &T::NavStatusText},
      Kept{"ROT", &T::ROT}, Kept{"SOG", &T::SOG},
      Kept{"PositionAccuracyText", &T::PositionAccuracyText}, Kept{"Longitude", &T::Longitude},
      Kept{"Latitude", &T::Latitude}, Kept{"COG", &T::COG}, Kept{"Heading", &T::Heading},
      Kept{"Timestamp", &T::Timestamp}, Kept{"Year", &T::Year}, Kept{"Month", &T::Month},
      Kept{"Day", &T::Day}, Kept{"Hour", &T::Hour}, Kept{"Minute", &T::Minute},
      Kept{"IMONumber", &T::IMONumber}, Kept{"CallSign", &T::CallSign}, Kept{"Name", &T::Name},
      Kept{"ShipTypeFullText", &T::ShipTypeFullText}, Kept{"ShipTypeText", &T::ShipTypeText},
      Kept{"CargoText", &T::CargoText}, Kept{"DimensionA", &T::DimensionA},
      Kept{"DimensionB", &T::DimensionB}, Kept{"DimensionC", &T::DimensionC},
      Kept{"DimensionD", &T::DimensionD}, Kept{"Altitude", &T::Altitude},
      Kept{"EPFSText", &T::EPFSText}, Kept{"ETA", &T::ETA}, Kept{"Draught", &T::Draught},
      Kept{"Destination", &T::Destination});
  std::string listing;
  const auto add = [&](const auto& row) {
    const auto& value = target.*(row.member);
    if (value == std::decay_t<decltype(value)>{}) return;
    int id = kAISMessageIds;
    while (id > 0 && value != Made<std::decay_t<decltype(value)>>(row.name, id)) --id;
    listing.append(listing.empty() ? "" : " ").append(row.name);
    if (id > 0) {
      listing += "@" + std::to_string(id);
    } else if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>) {
      listing += "=[" + value + "]";
    } else if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>) {
      listing += "=" + std::to_string(value);
    }
  };
  std::apply([&](const auto&... row) { (add(row), ...); }, kFields);
  for (std::size_t id = 0; id < target.MessageCount.size(); ++id) {
    const std::int32_t count = target.MessageCount[id];
    if (count > 0) listing += " " + std::to_string(count) + "x" + std::to_string(id);
  }
  return listing;
}

class AISStoreTest : public testing::Test {
 protected:
  void Store(int id, double seconds = 0) {
    store.StoreAISTarget(1, static_cast<std::int16_t>(id), *messages,
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
  const auto expect = [](std::string_view country, std::initializer_list<std::int32_t> mmsis) {
    for (const std::int32_t mmsi : mmsis) EXPECT_EQ(CountryOf(mmsi), country) << mmsi;
  };
  // Short numbers are read by their first digits, halves to the even number.
  expect("Norway", {258123456, 2573500, 2575000});
  expect("Malta", {2565000, 2475000});
  expect("unknown", {216000001, 992576001, 999999999, 9999999, 1});
  // Single precision takes the last one for 219,000,000.
  expect("Germany", {218999980});
  expect("Denmark", {218999999});
  EXPECT_THROW(CountryOf(1001000000), Fault);
}

// What the first message of each id makes of a station. Id 18 takes accuracy and time stamp from
// the system's id 19; ids 2 and 3 go to the station of id 1.
TEST_F(AISStoreTest, WhatEachIdTells) {
  AISMessages& m = *messages;
  Store(2);
  EXPECT_TRUE(store.AISNoTarget(1)) << "no id 1 yet";
  for (const int id : {1, 2, 3, 4, 5, 9, 18, 19, 21}) {
    VisitMessage(m, id, [&](auto& message) {
      if constexpr (
          requires { message.SOG; } || requires { message.EPFSText; }) {
        Fill(message, id);
      }
    });
  }
  m.Id8.MMSI = m.Id24.MMSI = m.Id27.MMSI = 258000001;
  const auto report = [](const std::string& id, const std::string& counts) {
    std::string text =
        "AISClass=[Class A Vessel] NavStatusText@ ROT@ SOG@ PositionAccuracyText@ "
        "Longitude@ Latitude@ COG@ Heading@ Timestamp@ ";
    for (std::size_t at = 0; (at = text.find('@', at)) != std::string::npos; ++at) {
      text.insert(at + 1, id);
    }
    return text + counts;
  };
  const std::vector<std::pair<int, std::string>> rows = {
      {1, report("1", "1x1")},
      {2, report("2", "1x1 1x2")},
      {3, report("3", "1x1 1x2 1x3")},
      {4,
       "AISClass=[Base Station] PositionAccuracyText@4 Longitude@4 Latitude@4 Timestamp=4604 "
       "Year@4 "
       "Month@4 Day@4 Hour@4 Minute@4 CallSign=[n/a] Name=[Base Station] ShipTypeFullText=[n/a] "
       "EPFSText@4 Destination=[n/a] 1x4"},
      {5,
       "AISClass=[Class A Vessel] IMONumber@5 CallSign@5 Name@5 ShipTypeText@5 CargoText@5 "
       "DimensionA@5 DimensionB@5 DimensionC@5 DimensionD@5 EPFSText@5 ETA@5 Draught@5 "
       "Destination@5 1x5"},
      {9,
       "AISClass=[SAR Aircraft] SOG@9 PositionAccuracyText@9 Longitude@9 Latitude@9 COG@9 "
       "Timestamp@9 CallSign=[n/a] Name=[SAR Aircraft] ShipTypeFullText=[n/a] Altitude@9 "
       "EPFSText=[n/a] Destination=[n/a] 1x9"},
      {18,
       "AISClass=[Class B Vessel] SOG@18 PositionAccuracyText@19 Longitude@18 Latitude@18 COG@18 "
       "Heading@18 Timestamp@19 CallSign=[n/a] Name=[Class B vessel] ShipTypeFullText=[n/a] "
       "EPFSText=[n/a] Destination=[n/a]"},
      {19,
       "AISClass=[Class B Vessel] SOG@19 PositionAccuracyText@19 Longitude@19 Latitude@19 COG@19 "
       "Heading@19 Timestamp@19 CallSign=[n/a] Name@19 ShipTypeFullText@19 DimensionA@19 "
       "DimensionB@19 DimensionC@19 DimensionD@19 EPFSText@19 Destination=[n/a]"},
      {21,
       "AISClass=[Aids to Navigation] PositionAccuracyText@21 Longitude@21 Latitude@21 "
       "Timestamp@21 CallSign=[n/a] Name@21 ShipTypeFullText=[n/a] DimensionA@21 DimensionB@21 "
       "DimensionC@21 DimensionD@21 EPFSText@21 Destination=[n/a]"}};
  for (const auto& [id, listing] : rows) {
    Store(id);
    EXPECT_FALSE(store.AISNoTarget(1));
    EXPECT_EQ(Listing(Current()), listing);
    EXPECT_EQ(Current().MMSI, 258000000 + (id < 4 ? 1 : id));
  }
  EXPECT_EQ(store.AISTargetCount(1), 7);

  // The latest id says what stays of a station known already: not its class.
  m.Id1.MMSI = m.Id19.MMSI = 258000004;
  Store(1);
  EXPECT_EQ(Current().AISClass, "Base Station");
  Store(19);
  EXPECT_EQ(Current().Name, "Name19");
  m.Id18.MMSI = 258000004;
  Store(18);
  EXPECT_EQ(Current().Name, "Class B vessel");

  for (const int id : {8, 20, 24, 27, 63}) {
    Store(id, 60);
    EXPECT_TRUE(store.AISNoTarget(1)) << id;
  }
  EXPECT_EQ(store.AISTargetCount(1), 7);
  EXPECT_EQ(store.AISTargetCount(2), 0);
}

// So does an id 0, of the station of the latest id 1.
TEST_F(AISStoreTest, AnOpenGroupTouchesTheTimesAlone) {
  StoreReport(258000001);
  messages->Id1.SOG = 7;
  for (const int id : {-99, 0}) {
    Store(id, 3601 + id);
    EXPECT_EQ(Current().PeriodSeconds, 3601 + id);
  }
  EXPECT_EQ(Current().FirstMessage, kStart);
  EXPECT_EQ(Listing(Current()), "AISClass=[Class A Vessel] 1x1");
}

TEST_F(AISStoreTest, TwentyBlanksAreNoName) {
  messages->Id19.MMSI = 257000019;
  messages->Id21.MMSI = 992570021;
  messages->Id19.Name = messages->Id21.Name = std::string(20, ' ');
  Store(19);
  EXPECT_EQ(Current().Name, "Class B vessel");
  Store(21);
  EXPECT_EQ(Current().Name, "Aid to Navigation");
  messages->Id21.Name = std::string(19, ' ');
  Store(21);
  EXPECT_EQ(Current().Name, std::string(19, ' '));
}

TEST_F(AISStoreTest, TheTableIsFullAt500) {
  // Numbers that crowd the same places of the index.
  const auto mmsi = [](int i) { return 200000000 + (i % 7) * 4096 + i; };
  for (int i = 1; i <= 500; ++i) StoreReport(mmsi(i));
  EXPECT_TRUE(dialogs.boxes.empty());
  StoreReport(mmsi(3));
  for (std::size_t i = 0; i < 2; ++i) {
    StoreReport(mmsi(501));
    ASSERT_EQ(dialogs.boxes.size(), i + 1);
    EXPECT_EQ(dialogs.boxes[i].icon, BoxIcon::Information);
    EXPECT_TRUE(dialogs.boxes[i].canBeSilenced);
  }
  EXPECT_EQ(store.AISTargetCount(1), 500);
  EXPECT_EQ(store.AISCurrentTarget(1), 3);
  EXPECT_FALSE(store.AISNoTarget(1));
  for (int i = 1; i <= 500; ++i) {
    StoreReport(mmsi(i));
    EXPECT_EQ(store.AISCurrentTarget(1), i);
    EXPECT_EQ(store.Target(1, i).MMSI, mmsi(i));
  }
  EXPECT_THROW(store.Target(1, 501), Fault);
}

// The station is in the table by the time its country faults, and is found there later.
TEST_F(AISStoreTest, AnMMSIBeyondTheCountries) {
  EXPECT_THROW(StoreReport(1073741823), Fault);
  StoreReport(1073741823);
  EXPECT_EQ(store.AISTargetCount(1), 1);
  EXPECT_EQ(store.AISCurrentTarget(1), 1);
  EXPECT_EQ(Listing(Current()), " 1x1");
}

TEST_F(AISStoreTest, APeriodBeyondItsFieldKeepsTheOld) {
  StoreReport(258000001);
  for (const auto& [seconds, period] : {std::pair{5.0, 5}, {5e9, 5}, {-20.0, -20}}) {
    Store(1, seconds);
    EXPECT_EQ(Current().PeriodSeconds, period);
  }
}

}  // namespace
}  // namespace fathomline
