#include "setup/reference_positions.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numbers>

#include "base/files.h"
#include "setup/reference_editor.h"
#include "support/expect_fault.h"
#include "support/recording_dialogs.h"
#include "support/temporary_folder.h"

namespace fathomline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct ReferencePositionsTest : testing::Test {
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const auto& position : ReadReferencePositions(folder.Path(), dialogs)) {
      names.push_back(position.name);
    }
    return names;
  }
  // Stores the position in a file of that content, and returns what the file holds then.
  std::string Stored(const ReferencePosition& position, std::string_view content) {
    if (!content.empty()) folder.Write(kReferenceFileName, content);
    StoreReferencePosition(folder.Path(), position, dialogs);
    EXPECT_FALSE(FileExists(folder / kReferenceBufferName));
    return ReadWholeFile(folder / "Reference Positions.txt");
  }

  TemporaryFolder folder;
  RecordingDialogs dialogs;
};

TEST_F(ReferencePositionsTest, BeginWithoutAFile) {
  EXPECT_THAT(Names(), ElementsAre());
  const std::string first = Stored({"Quay, north", 1.0, -0.25, 12.5F}, "");
  EXPECT_EQ(first, "\"Quay, north\",1,-0.25,12.5\r\n");
  EXPECT_EQ(Stored({"quay, north", 0.5, 0.1, -1.0F}, first),
            first + "\"quay, north\",0.5,0.1,-1\r\n");
  EXPECT_THAT(Names(), ElementsAre("Quay, north", "quay, north"));
  EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ReferencePositionsTest, EveryLineOfTheNameIsReplaced) {
  EXPECT_EQ(Stored({"Mast", 0.5, 0.25, 8.0F},
                   "\"A\",1,1,1\r\n\"Mast\",2,2,2\n\"mast\",3,3,3\r\n\"Mast\" , 4 , 4 , "
                   "4\r\n\"Z\",5e-1,5,5\r\n"),
            "\"A\",1,1,1\r\n\"Mast\",0.5,0.25,8\r\n\"mast\",3,3,3\r\n\"Mast\",0.5,0.25,8\r\n"
            "\"Z\",5e-1,5,5\r\n");
  const std::string told =
      "The reference target 'Mast' already exist. The position will be updated!";
  EXPECT_THAT(dialogs.TakeTexts(), ElementsAre(told, told));
}

TEST_F(ReferencePositionsTest, NamesAreComparedAsTheFileHasThem) {
  EXPECT_EQ(Stored({"K\u00E5re", 2.0, 2.0, 2.0F}, "\"K\xE5re\",1,1,1\r\n"),
            "\"K\xE5re\",2,2,2\r\n");
  EXPECT_EQ(Stored({"\u03A9", 4.0, 4.0, 4.0F}, "\"?\",3,3,3\r\n"), "\"?\",4,4,4\r\n");
}

TEST_F(ReferencePositionsTest, AShortLineEndsTheListAndIsTold) {
  folder.Write(kReferenceFileName, "\"A\" , 1 ,\t2,3\r\n\r\n\"B\",1,2\r\n\"C\",1,2,3\r\n");
  const auto positions = ReadReferencePositions(folder.Path(), dialogs);
  ASSERT_EQ(positions.size(), 1U);
  EXPECT_EQ(positions[0].longitude, 2.0);
  EXPECT_EQ(positions[0].height, 3.0F);
  EXPECT_THAT(dialogs.TakeTexts(),
              ElementsAre(HasSubstr("Input past end of file - Error in line 3")));
  // Storing loses nothing of it.
  EXPECT_EQ(Stored({"C", 7.0, 8.0, 9.0F}, ""),
            "\"A\" , 1 ,\t2,3\r\n\r\n\"B\",1,2\r\n\"C\",7,8,9\r\n");
}

class ReferenceEditorTest : public testing::Test {
 protected:
  ReferenceEditorTest() {
    records.CoordinateDecimals = 4;
    ReferenceSetup& reference = records.References[2];
    reference = {kTruePosition, "Mast", 1.0, -0.2, 12.3456F, 271.234F, 0.126F, -1.0F};
    editor.Load(2);
  }
  static double Radians(double degrees) { return degrees * std::numbers::pi / 180.0; }

  Records records;
  FrozenClock clock{DateTime{46024.127835648148}};  // 2 January 2026, 03:04:05
  Statistics statistics{records, clock};
  RecordingDialogs dialogs;
  ReferenceEditor editor{records, statistics, clock, dialogs};
};

// 1 radian is 57 degrees 17.7468 minutes, 0.2 radians 11 degrees 27.5494 minutes.
TEST_F(ReferenceEditorTest, ShowsTheReferenceAndKeepsItsExactValues) {
  const std::array<const char*, 7> texts = {
      "Mast", "57° 17.7468' N", "011° 27.5494' W", "12.346", "271.23", "0.13", "-1.00"};
  for (std::size_t i = 0; i < kReferenceFields.size(); ++i) {
    EXPECT_EQ(editor.Text(kReferenceFields[i]), texts[i]);
    editor.Leave(kReferenceFields[i], texts[i]);
  }
  EXPECT_FALSE(editor.ReferenceChanged());
  EXPECT_EQ(editor.Values().ReferenceHeading, 271.234F);
  records.CoordinateFormatIsDMS = true;
  records.CoordinateDecimals = 2;
  editor.Load(2);
  EXPECT_EQ(editor.Text(ReferenceField::Latitude), "57° 17' 44.81\" N");
}

TEST_F(ReferenceEditorTest, TypedCoordinatesComeBackNormalised) {
  editor.Leave(ReferenceField::Latitude, "-59 30,5");
  EXPECT_EQ(editor.Text(ReferenceField::Latitude), "59° 30.5000' S");
  EXPECT_NEAR(editor.Values().ReferenceLatitude, Radians(-(59.0 + 30.5 / 60.0)), 1e-12);
  records.CoordinateFormatIsDMS = true;
  records.CoordinateDecimals = 1;
  EXPECT_TRUE(editor.FollowFormat(ReferenceField::Longitude));
  editor.Leave(ReferenceField::Longitude, "10 20 30,5 W");
  EXPECT_EQ(editor.Text(ReferenceField::Longitude), "010° 20' 30.5\" W");
  EXPECT_NEAR(editor.Values().ReferenceLongitude, Radians(-(10.0 + 20.0 / 60.0 + 30.5 / 3600.0)),
              1e-12);
}

TEST_F(ReferenceEditorTest, WhichFieldsChangeTheReference) {
  struct Row {
    ReferenceField field;
    const char* typed;
    bool changes;
  };
  for (const Row& row : {Row{ReferenceField::Name, "Mast 2", true},
                         {ReferenceField::Latitude, "57 17.7469 N", true},
                         {ReferenceField::Longitude, "11 27.5494 E", true},
                         {ReferenceField::Height, "12,3", true},
                         {ReferenceField::Heading, "271,24", true},
                         {ReferenceField::Heading, "271,234", false},
                         {ReferenceField::Pitch, "2,5", false},
                         {ReferenceField::Roll, "3", false}}) {
    editor.Load(2);
    editor.Leave(row.field, row.typed);
    EXPECT_EQ(editor.ReferenceChanged(), row.changes) << row.typed;
  }
  EXPECT_EQ(editor.Values().ReferenceRoll, 3.0F);
  ExpectFault(FaultNumber::Overflow, [this] { editor.Leave(ReferenceField::Roll, "1e39"); });
  EXPECT_EQ(editor.Values().ReferenceRoll, 3.0F);
  EXPECT_EQ(editor.Text(ReferenceField::Roll), "3.00");
}

TEST_F(ReferenceEditorTest, CopiesTheAverageAndThePrimary) {
  SystemStatistics& figures = statistics[2];
  EXPECT_FALSE(editor.CopyAverage());
  EXPECT_EQ(editor.Text(ReferenceField::Name), "Mast");
  figures.LatitudeMean.Count = figures.HeightMean.Count = 1;
  figures.LatitudeMean.Mean = 1.0;
  figures.LongitudeMean.Mean = 0.2;
  figures.HeightMean.Mean = 7.0625F;
  figures.HeadingMean.Mean = 5.5F;
  editor.CopyAverage();
  EXPECT_EQ(editor.Text(ReferenceField::Name), "Avg 03:04:05 02 Jan 2026");
  EXPECT_EQ(editor.Text(ReferenceField::Longitude), "011° 27.5494' E");
  EXPECT_EQ(editor.Text(ReferenceField::Height), "7.063");
  EXPECT_EQ(editor.Text(ReferenceField::Heading), "271.23") << "no heading has come yet";
  figures.HeadingMean.Count = 1;
  EXPECT_TRUE(editor.CopyAverage());
  EXPECT_EQ(editor.Text(ReferenceField::Heading), "005.50");
  EXPECT_EQ(editor.Values().ReferenceRoll, -1.0F);
  EXPECT_TRUE(editor.ReferenceChanged());

  records.References[1] = {kFirstSample, "Primary", 0.5, 0.25, 1.0F, 2.0F, 3.0F, 4.0F};
  editor.CopyPrimary();
  EXPECT_EQ(editor.Values().ReferenceName, "Primary");
  EXPECT_EQ(editor.Values().ReferenceLatitude, 0.5);
  EXPECT_EQ(editor.Values().ReferenceLongitude, 0.25);
  EXPECT_EQ(editor.Values().ReferenceHeight, 1.0F);
  EXPECT_EQ(editor.Values().ReferenceHeading, 2.0F);
  EXPECT_EQ(editor.Values().ReferencePitch, 0.126F);
  EXPECT_EQ(editor.Values().ReferenceUsed, kTruePosition);
}

}  // namespace
}  // namespace fathomline
