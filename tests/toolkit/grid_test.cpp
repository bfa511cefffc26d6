#include "toolkit/grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

#include "support/scripted_face.h"
#include "toolkit/desktop.h"
#include "toolkit/window.h"

namespace fathomline {
namespace {

class GridTest : public testing::Test {
 protected:
  ScriptedFace face;
  Desktop desktop{face};
  Window window{desktop, {.name = "frmSample"}};
  Grid grid{window, "fgSample", 1, 15};
};

TEST_F(GridTest, RowsAndColumnsThatAreCutOffDoNotComeBack) {
  grid.SetRows(32767);
  grid.Set(32766, 13, "10:11:12");
  EXPECT_EQ(grid.Text(32766, 13), "10:11:12");
  EXPECT_EQ(grid.Text(16000, 0), "");
  grid.SetRows(10);
  grid.SetRows(32767);
  EXPECT_EQ(grid.Text(32766, 13), "");

  grid.Set(0, 14, "last");
  grid.SetColumns(20);
  grid.Set(0, 19, "new");
  EXPECT_EQ(grid.Text(0, 14), "last");
  grid.SetColumns(15);
  grid.SetColumns(20);
  EXPECT_EQ(grid.Text(0, 19), "");
}

TEST_F(GridTest, ShapeTellsOfSizesAndWidths) {
  const auto shape = grid.Shape();
  grid.SetColumnWidth(1, 0);
  grid.SetRows(1);
  EXPECT_EQ(grid.Shape(), shape);
  grid.SetColumnWidth(1, 3200);
  EXPECT_EQ(grid.ColumnWidth(1), 3200);
  grid.SetRows(2);
  EXPECT_EQ(grid.Shape(), shape + 2);
}

TEST_F(GridTest, CommaSeparatedValues) {
  grid.SetRows(2);
  grid.SetColumns(3);
  grid.Set(0, 0, "Name");
  grid.Set(1, 0, "BOW, \"STERN\"");
  grid.Set(1, 2, "two\nlines");
  std::ostringstream out;
  grid.WriteCsv(out);
  EXPECT_EQ(out.str(), "Name,,\n\"BOW, \"\"STERN\"\"\",,\"two\nlines\"\n");
}

TEST_F(GridTest, AMarkTellsTheDesktopEachTime) {
  grid.SetRows(3);
  window.Show();
  grid.MarkRow(2);
  const auto marks = grid.Marks();
  const auto revision = grid.Revision();
  grid.MarkRow(2);
  EXPECT_GT(grid.Marks(), marks) << "the user may have selected another row meanwhile";
  EXPECT_GT(grid.Revision(), revision);
  EXPECT_THROW(grid.MarkRow(3), Fault);
  EXPECT_THROW(grid.Set(3, 0, "x"), Fault);
  EXPECT_THROW(grid.Text(0, 15), Fault);
  window.Close();
  window.Show();
  EXPECT_EQ(grid.MarkedRow(), 0);
}

// Figures as numbers, texts as texts, what has no value last; a third click leaves the rows as they
// came.
TEST_F(GridTest, ASortableListStandsInOrderOfTheHeadThatIsClicked) {
  using testing::ElementsAre;
  Grid list{window, "fgList", 6, 2, {1, 0}};
  list.SetSortable();
  list.SetHoldsText(1);
  const char* const cells[][2] = {{"SOG", "Name"}, {" 10.5", "9 LIVES"}, {"n/a", ""},
                                  {"-2", "beta"},  {"9", "Alpha"},       {"", "10"}};
  for (int row = 0; row < 6; ++row) {
    for (int column = 0; column < 2; ++column) list.Set(row, column, cells[row][column]);
  }
  window.Show();
  EXPECT_THAT(list.RowsInOrder(), ElementsAre(1, 2, 3, 4, 5));
  list.ClickHead(0);
  EXPECT_THAT(list.RowsInOrder(), ElementsAre(3, 4, 1, 2, 5));
  list.ClickHead(0);
  EXPECT_THAT(list.RowsInOrder(), ElementsAre(1, 4, 3, 2, 5));
  list.ClickHead(1);
  EXPECT_THAT(list.RowsInOrder(), ElementsAre(5, 1, 4, 3, 2));
  list.ClickHead(1);
  std::ostringstream out;
  list.WriteCsv(out);
  EXPECT_EQ(out.str(), "SOG,Name\n-2,beta\n9,Alpha\n 10.5,9 LIVES\n,10\nn/a,\n");
  list.ClickHead(1);
  EXPECT_THAT(list.RowsInOrder(), ElementsAre(1, 2, 3, 4, 5));

  // By what the cells stand for rather than by what they say.
  list.sortKey = [](int row, int) { return row == 3 ? std::nullopt : std::optional(-row * 1.0); };
  list.ClickHead(0);
  EXPECT_THAT(list.RowsInOrder(), ElementsAre(5, 4, 2, 1, 3));
}

}  // namespace
}  // namespace fathomline
