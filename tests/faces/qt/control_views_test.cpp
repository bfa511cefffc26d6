// The contract of every kind of control: what the program sets is shown and runs no handler; what
// the user does reaches the control, and its handler once.
#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

#include "faces/qt/conversions.h"
#include "faces/qt/grid_model.h"
#include "faces/qt/look.h"
#include "faces/qt/qt_fixture.h"
#include "toolkit/bars.h"
#include "toolkit/choices.h"
#include "toolkit/grid.h"
#include "toolkit/picture.h"

namespace fathomline {
namespace {

class ControlViews : public QtFixture {
 public:
  PlainWindow window{desktop};
  int handled = 0;
  std::function<void()> count = [this] { ++handled; };

  void Show() { ShowDrawn(window); }
};

TEST_F(ControlViews, LabelsShowTheirTextAndAreNamedByTheWordsBeforeThem) {
  Label label{window, "lblText", "one"};
  label.onClick = count;
  Label swatch{window, "lblColour", {}, Label::Look::Swatch};
  Label path{window, "lblPath", "/" + std::string(300, 'x'), Label::Look::Path};
  TextBox box{window, "txtLimit"};
  window.SetContent(
      Layout::Column({label, swatch, path, Layout::Row({Layout::Words("&Limit :"), box})}));
  Show();
  EXPECT_EQ(Find<QLabel>(label)->text(), "one");
  EXPECT_EQ(Find<QLabel>(label)->objectName(), "lblText");
  EXPECT_LT(face.WidgetOf(path)->width(), 600);
  EXPECT_TRUE(face.WidgetOf(path)->toolTip().contains(Find<QLabel>(path)->text()));
  label.SetText("<b>two</b> & more");
  swatch.SetColour(kGreen);
  face.Draw();
  EXPECT_EQ(Find<QLabel>(label)->text(), "<b>two</b> & more");
  EXPECT_EQ(Find<QLabel>(label)->textFormat(), Qt::PlainText);
  EXPECT_EQ(Find<QLabel>(swatch)->palette().color(QPalette::Window), PaintOf(kGreen));
  EXPECT_EQ(Find<QLineEdit>(box)->accessibleName(), "Limit");
  QTest::mouseClick(face.WidgetOf(label), Qt::LeftButton);
  EXPECT_EQ(handled, 1);
}

TEST_F(ControlViews, ALineOfReceivedTextChangesNothingAroundIt) {
  Label line{window, "lblLine", "", Label::Look::Line};
  Button below{window, "cmdBelow", "Below"};
  window.SetContent(Layout::Column({Layout::Row({Layout::Words("Received :"), line}), below}));
  Show();
  const auto places = [&] {
    return std::vector<QRect>{{{}, face.HostOf(window)->size()},
                              face.WidgetOf(line)->geometry(),
                              face.WidgetOf(below)->geometry()};
  };
  const auto before = places();
  EXPECT_GT(face.WidgetOf(line)->width(), face.HostOf(window)->width() / 2);
  line.SetText("<b>" + std::string(300, 'x') + "\r\n\r\n" + std::string(300, 'y'));
  face.Draw();
  face.Turn();
  EXPECT_EQ(places(), before);
  const QString tip = face.WidgetOf(line)->toolTip();
  EXPECT_TRUE(tip.contains("&lt;b&gt;xxx") && tip.contains(QString(300, 'y')));
}

TEST_F(ControlViews, ATextToBeTypedOverIsSelected) {
  TextBox box{window, "txtOne", "one"};
  Choices combo{window, "cmbOne", ChoicesKind::EditableCombo, {"two"}};
  combo.ShowText("two");
  Show();
  EXPECT_EQ(Find<QLineEdit>(box)->selectedText(), "");
  box.SelectText();
  combo.SelectText();
  face.Draw();
  EXPECT_EQ(Find<QLineEdit>(box)->selectedText(), "one");
  EXPECT_EQ(Find<QComboBox>(combo)->lineEdit()->selectedText(), "two");
}

TEST_F(ControlViews, AFrameHidesAndDisablesWhatLivesInIt) {
  Frame frame{window, "frameOne", "One & only"};
  Button button{frame, "cmdGo", "Go"};
  window.SetContent(Layout::Box(frame, button));
  Show();
  EXPECT_EQ(Find<QGroupBox>(frame)->title(), "One && only");
  frame.SetEnabled(false);
  face.Draw();
  EXPECT_FALSE(face.WidgetOf(button)->isEnabled());
  frame.SetVisible(false);
  face.Draw();
  EXPECT_FALSE(face.WidgetOf(button)->isVisible());
}

TEST_F(ControlViews, ButtonsRunTheirHandlerOnce) {
  Button button{window, "cmdGo", "&Go"};
  button.onClick = count;
  Show();
  button.SetText("&Stay");
  face.Draw();
  EXPECT_EQ(Find<QPushButton>(button)->text(), "&Stay");
  EXPECT_EQ(handled, 0);
  QTest::mouseClick(face.WidgetOf(button), Qt::LeftButton);
  EXPECT_EQ(handled, 1);
  button.SetEnabled(false);
  face.Draw();
  QTest::mouseClick(face.WidgetOf(button), Qt::LeftButton);
  EXPECT_EQ(handled, 1);
}

TEST_F(ControlViews, TextBoxesTellOfTypingOnly) {
  TextBox line{window, "txtLine", "first"};
  TextBox area{window, "txtArea", "a\nb", TextBox::Lines::Many};
  line.onChange = count;
  area.onChange = count;
  Show();
  line.SetText("second");
  area.Append("\nc");
  face.Draw();
  EXPECT_EQ(Find<QLineEdit>(line)->text(), "second");
  EXPECT_EQ(Find<QPlainTextEdit>(area)->toPlainText(), "a\nb\nc");
  EXPECT_EQ(handled, 0);
  QTest::mouseClick(face.WidgetOf(line), Qt::LeftButton);
  Find<QLineEdit>(line)->selectAll();
  QTest::keyClick(face.WidgetOf(line), 'x');
  EXPECT_EQ(line.Text(), "x");
  EXPECT_EQ(handled, 1);
  area.SetReadOnly(true);
  face.Draw();
  EXPECT_TRUE(Find<QPlainTextEdit>(area)->isReadOnly());
}

TEST_F(ControlViews, ACheckBoxShowsWhatItsHandlerMadeOfIt) {
  CheckBox box{window, "chkOne", "One"};
  Show();
  box.SetChecked(true);
  face.Draw();
  EXPECT_TRUE(Find<QCheckBox>(box)->isChecked());
  box.onClick = [&] {
    ++handled;
    box.SetChecked(true);
  };
  Find<QCheckBox>(box)->click();
  EXPECT_EQ(handled, 1);
  EXPECT_TRUE(Find<QCheckBox>(box)->isChecked());
}

TEST_F(ControlViews, EveryKindOfChoicesShowsAndTakesAChoice) {
  Choices combo{window, "cmbOne", ChoicesKind::Combo, {"a", "b", "c"}};
  Choices list{window, "lstOne", ChoicesKind::List, {"a", "b", "c"}};
  Choices options{window, "optOne", ChoicesKind::Options, {"a", "b", "c"}};
  Choices tabs{window, "tabOne", ChoicesKind::Tabs, {"a", "b", "c"}};
  Label page{window, "lblPage", "page"};
  window.SetContent(
      Layout::Column({combo, list, options, Layout::Pages(tabs, {page, Layout(), Layout()})}));
  Show();
  const std::initializer_list<Choices*> all{&combo, &list, &options, &tabs};
  for (Choices* const choices : all) {
    choices->onChoose = count;
    choices->ShowChoice(1);
  }
  face.Draw();
  EXPECT_EQ(Find<QComboBox>(combo)->currentIndex(), 1);
  EXPECT_EQ(Find<QListWidget>(list)->currentRow(), 1);
  EXPECT_TRUE(face.WidgetOf(options)->findChild<QRadioButton*>("optOne[1]")->isChecked());
  EXPECT_EQ(Find<QTabWidget>(tabs)->currentIndex(), 1);
  EXPECT_EQ(handled, 0);

  QTest::keyClick(face.WidgetOf(combo), Qt::Key_Down);
  EXPECT_EQ(handled, 1);
  auto* const rows = Find<QListWidget>(list);
  QTest::mouseClick(rows->viewport(), Qt::LeftButton, {},
                    rows->visualItemRect(rows->item(2)).center());
  EXPECT_EQ(handled, 2);
  face.WidgetOf(options)->findChild<QRadioButton*>("optOne[2]")->click();
  EXPECT_EQ(handled, 3);
  auto* const bar = Find<QTabWidget>(tabs)->tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(2).center());
  EXPECT_EQ(handled, 4);
  for (const Choices* const choices : all) EXPECT_EQ(choices->Choice(), 2) << choices->Name();
}

TEST_F(ControlViews, AnEditableComboTakesAnyText) {
  Choices combo{window, "cmbLimit", ChoicesKind::EditableCombo, {"10", "20"}};
  combo.onType = count;
  Show();
  combo.ShowText("15");
  face.Draw();
  auto* const edit = Find<QComboBox>(combo)->lineEdit();
  EXPECT_EQ(edit->text(), "15");
  QTest::keyClick(edit, '0');
  EXPECT_EQ(combo.Text(), "150");
  EXPECT_EQ(handled, 1);
  combo.Clear();
  combo.Add("30");
  face.Draw();
  EXPECT_EQ(Find<QComboBox>(combo)->count(), 1);
}

TEST_F(ControlViews, BarsShowTheirPanelsAndButtons) {
  ToolBar tools{window, "tbOne", {{"PLAY", "PLAY"}, {"STOP", "STOP", false}}};
  StatusBar status{window, "sbOne", {"one", "two"}};
  ProgressBar progress{window, "prgOne"};
  std::string pressed;
  tools.onClick = [&](const std::string& key) { pressed += key + ";"; };
  Show();
  tools.SetKey(1, "CONT");
  tools.SetCaption(1, "Go on");
  status.SetPanelText(2, "three");
  status.SetPanelVisible(1, false);
  progress.SetShare(420);
  face.Draw();
  EXPECT_EQ(Find<QProgressBar>(progress)->value(), 420);
  auto* const panel = face.WidgetOf(status)->findChild<QLabel*>("sbOne[2]");
  EXPECT_EQ(panel->text(), "three");
  EXPECT_FALSE(face.WidgetOf(status)->findChild<QLabel*>("sbOne[1]")->isVisible());
  auto* const button = face.WidgetOf(tools)->findChild<QToolButton*>("tbOne[1]");
  EXPECT_EQ(button->text(), "Go on");
  QTest::mouseClick(button, Qt::LeftButton);
  QTest::mouseClick(face.WidgetOf(tools)->findChild<QToolButton*>("tbOne[2]"), Qt::LeftButton);
  EXPECT_EQ(pressed, "CONT;");
}

TEST_F(ControlViews, MenusFollowTheirItems) {
  MenuItem file{window, "mnuFile", "&File"};
  MenuItem open{file, "mnuOpen", "&Open"};
  MenuItem check{file, "mnuCheck", "&Check"};
  MenuItem act{window, "mnuAct", "&Act"};
  open.onClick = count;
  act.onClick = count;
  Show();
  auto* const bar = face.HostOf(window)->findChild<QMenuBar*>();
  ASSERT_NE(bar, nullptr);
  QMenu* const menu = bar->actions().front()->menu();
  check.SetChecked(true);
  open.SetText("&Open again");
  face.Draw();
  EXPECT_EQ(menu->actions()[0]->text(), "&Open again");
  EXPECT_TRUE(menu->actions()[1]->isChecked());
  menu->actions()[0]->trigger();
  EXPECT_EQ(handled, 1);
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(bar->actions()[1]).center());
  EXPECT_EQ(handled, 2) << "a word of the bar without a menu acts at once";
}

TEST_F(ControlViews, AListOfFewRowsLeavesTheRoomToOthers) {
  PlainWindow lists{desktop, {.name = "frmLists", .place = {0, 0, 9000, 9000}}};
  Grid few(lists, "fgFew", 5, 2, {1, 0});
  Grid list(lists, "fgList", 5, 2, {1, 0});
  few.SetFewRows();
  lists.SetContent(Layout::Column({few, list}));
  ShowDrawn(lists);
  EXPECT_LT(face.WidgetOf(few)->height(), 200);
  EXPECT_GT(face.WidgetOf(list)->height(), 300);
}

TEST_F(ControlViews, AGridShowsItsCellsBesideItsHeads) {
  Grid grid{window, "fgOne", 4, 3};
  grid.Set(0, 0, "PRN");
  grid.Set(0, 1, "North");
  grid.Set(1, 0, "Mean");
  grid.Set(1, 1, "-12.50");
  grid.Set(2, 1, ">10");
  grid.Set(1, 2, "2 FAST");
  grid.SetHoldsText(2);
  int row = -1;
  grid.onClickRow = [&](int clicked, int, int) { row = clicked; };
  Show();
  auto* const table = Find<QTableView>(grid);
  const QAbstractItemModel& model = *table->model();
  EXPECT_EQ(model.rowCount(), 3);
  EXPECT_EQ(model.columnCount(), 2);
  EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), "North");
  EXPECT_EQ(model.headerData(0, Qt::Vertical).toString(), "Mean");
  EXPECT_EQ(model.index(0, 0).data().toString(), "-12.50");
  const auto side = [&](int column) {
    return model.index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>() &
           Qt::AlignHorizontal_Mask;
  };
  EXPECT_EQ(side(0), Qt::AlignRight);
  EXPECT_EQ(side(1), Qt::AlignLeft);
  QTest::mouseClick(table->viewport(), Qt::LeftButton, {},
                    table->visualRect(model.index(1, 1)).center());
  EXPECT_EQ(row, 2);
}

TEST_F(ControlViews, SelectedCellsGoToTheClipboardWithOrWithoutTheirHeads) {
  Grid grid{window, "fgOne", 3, 3};
  grid.Set(0, 1, "N");
  grid.Set(0, 2, "E");
  grid.Set(1, 0, "Mean");
  grid.Set(1, 1, "1");
  grid.Set(1, 2, "2");
  grid.Set(2, 1, "3");
  grid.Set(2, 2, "4");
  Show();
  auto* const table = Find<QTableView>(grid);
  const auto copied = [] { return FromQt(QApplication::clipboard()->text()); };
  table->selectAll();
  QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(copied(), "1\t2\n3\t4");
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, {5, 5}, table->mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(table->viewport(), &asked);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  menu->actions()[1]->trigger();
  EXPECT_EQ(copied(), "\tN\tE\nMean\t1\t2\n\t3\t4");
  menu->actions()[0]->trigger();
  EXPECT_EQ(copied(), "1\t2\n3\t4");
  menu->close();
}

TEST_F(ControlViews, AListSelectsRowsFillsItsWindowAndKeepsItsSelection) {
  Grid grid{window, "fgTargets", 3, 2, {1, 0}};
  grid.Set(0, 1, "Name");
  grid.Set(2, 0, "7");
  grid.Set(2, 1, "SKUA");
  grid.SetColumnWidth(1, 3000);
  window.SetContent(Layout::Column({grid}));
  Show();
  auto* const table = Find<QTableView>(grid);
  EXPECT_EQ(table->horizontalHeader()->length(), table->viewport()->width());
  EXPECT_GT(table->columnWidth(1), 3000 / kTwipsPerPixel);
  table->setCurrentIndex(table->model()->index(1, 0));
  QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "7\tSKUA");
  grid.SetRows(60);
  grid.Set(1, 0, "new");
  face.Draw();
  EXPECT_EQ(table->model()->rowCount(), 59);
  EXPECT_EQ(table->currentIndex().row(), 1);
}

TEST(GridModels, SatisfyTheRulesOfItemModels) {
  QtFace face;
  Desktop desktop(face);
  PlainWindow window(desktop);
  Grid grid(window, "fgOne", 3, 3);
  GridModel model(grid);
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  grid.SetRows(10);
  model.Follow();
  EXPECT_EQ(model.rowCount(), 9);
  grid.Set(9, 2, "x");
  model.Follow();
  EXPECT_EQ(model.index(8, 1).data().toString(), "x");
  grid.SetRows(2);
  model.Follow();
  grid.SetColumns(6);
  EXPECT_TRUE(model.Follow());
  EXPECT_EQ(model.columnCount(), 5);
  grid.SetRows(0);
  model.Follow();
  EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(ControlViews, APictureDrawsItsShapesInItsOwnScale) {
  Picture picture{window, "picOne", {-1.0, 1.0, 1.0, -1.0}};
  picture.SetPen({.width = 30, .colour = kRed});
  picture.Dot(0.5, 0.5);
  Show();
  const QImage image = face.WidgetOf(picture)->grab().toImage();
  const int side = std::min(image.width(), image.height());
  const QPoint middle(image.width() / 2, image.height() / 2);
  EXPECT_EQ(image.pixelColor(middle + QPoint(side / 4, -side / 4)), PaintOf(kRed));
  EXPECT_NE(image.pixelColor(middle - QPoint(side / 4, -side / 4)), PaintOf(kRed));
}

}  // namespace
}  // namespace fathomline
