#include "core/KeyFilters.h"
#include "tests/support/Fakes.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// A screen made for the tests: a name box that refuses to be left blank, a tick box, a combo, two tabs,
// a button array and a grid over a staging table.
class Sample : public Screen {
public:
    explicit Sample(Process& process) : Screen(process, u"Sample"_s) {
        auto& name = add<TextBox>(u"Txt_Name"_s);
        name.keyFilter = KeyName;
        name.setMaxLength(10);
        name.onValidate = [this, &name] {
            if (!name.text().trimmed().isEmpty())
                return true;
            prompter().stop(u"Name Should Not be Blank."_s);
            return false;
        };
        add<TextBox>(u"Txt_Other"_s);
        auto& strip = add<TabStrip>(u"SSTab1"_s);
        strip.guard = [this](int page) { return page == 0 || allowSecondTab; };
        add<TextBox>(u"Txt_OnTab"_s).placeOnTab(u"SSTab1"_s, 1);
        for (int i = 0; i < 4; ++i)
            add<Button>(u"CmdCtlButton"_s, i).onClick = [this, i] { clicks.append(i); };
        auto& quiet = add<Button>(u"Cmd_Undo"_s);
        quiet.setCausesValidation(false);
        quiet.onClick = [this] { clicks.append(99); };
    }
    bool allowSecondTab = false;
    QList<int> clicks;
};

TextBox& box(Screen& s, const QString& name) {
    return *qobject_cast<TextBox*>(s.control(name));
}

TEST(ScreenFramework, KeysPassThroughTheFilterAndTheMaximumLength) {
    test::TestWorld world;
    Sample s(world.process);
    s.type(box(s, u"Txt_Name"_s), u"ab'c  d|efghijkl"_s);
    EXPECT_EQ(box(s, u"Txt_Name"_s).text(), u"ABC DEFGHI"_s);
    EXPECT_EQ(world.prompter.beeps, 1); // the second blank beeps, the apostrophe and bar are silent
}

TEST(ScreenFramework, ALeaveRuleThatRefusesKeepsTheFocusAndStopsTheTyping) {
    test::TestWorld world;
    Sample s(world.process);
    ASSERT_TRUE(s.moveFocus(&box(s, u"Txt_Name"_s)));
    EXPECT_FALSE(s.type(box(s, u"Txt_Other"_s), u"x"_s));
    EXPECT_EQ(s.focus(), s.control(u"Txt_Name"_s));
    EXPECT_EQ(box(s, u"Txt_Other"_s).text(), QString());
    EXPECT_EQ(world.prompter.messages, QStringList{u"stop: Name Should Not be Blank."_s});
    // A button that does not cause validation takes its click without the rule running.
    EXPECT_TRUE(s.click(*s.control(u"Cmd_Undo"_s)));
    EXPECT_EQ(s.clicks, QList<int>{99});
    EXPECT_FALSE(s.click(*s.control(u"CmdCtlButton"_s, 2)));
    EXPECT_EQ(world.prompter.messages.size(), 2);
}

TEST(ScreenFramework, EnterActsAsTabAndSkipsWhatCanNotTakeTheFocus) {
    test::TestWorld world;
    Sample s(world.process);
    s.type(box(s, u"Txt_Name"_s), u"ok"_s);
    ASSERT_TRUE(s.pressKey(box(s, u"Txt_Name"_s), Key::Enter));
    EXPECT_EQ(s.focus(), s.control(u"Txt_Other"_s));
    s.control(u"SSTab1"_s)->setEnabled(false);
    s.control(u"Txt_OnTab"_s)->setVisible(false);
    s.pressKey(box(s, u"Txt_Other"_s), Key::Enter);
    EXPECT_EQ(s.focus(), s.control(u"CmdCtlButton"_s, 0));
}

TEST(ScreenFramework, MasksSetTheButtonsOfAnArrayInIndexOrder) {
    test::TestWorld world;
    Sample s(world.process);
    s.applyMask(u"CmdCtlButton"_s, u"1010"_s);
    EXPECT_EQ(s.mask(u"CmdCtlButton"_s), u"1010"_s);
    EXPECT_FALSE(s.control(u"CmdCtlButton"_s, 1)->enabled());
    EXPECT_FALSE(s.click(*s.control(u"CmdCtlButton"_s, 1)));
    EXPECT_TRUE(s.clicks.isEmpty());
}

TEST(ScreenFramework, FocusIntoAnotherTabChangesTheTabThroughItsGuard) {
    test::TestWorld world;
    Sample s(world.process);
    auto& strip = *qobject_cast<TabStrip*>(s.control(u"SSTab1"_s));
    EXPECT_FALSE(s.moveFocus(s.control(u"Txt_OnTab"_s)));
    EXPECT_EQ(strip.current(), 0);
    s.allowSecondTab = true;
    EXPECT_TRUE(s.moveFocus(s.control(u"Txt_OnTab"_s)));
    EXPECT_EQ(strip.current(), 1);
}

TEST(ScreenFramework, OptionsOfOneGroupExcludeEachOther) {
    test::TestWorld world;
    Sample s(world.process);
    auto& a = s.add<OptionButton>(u"Opt"_s, 0);
    auto& b = s.add<OptionButton>(u"Opt"_s, 1);
    auto& other = s.add<OptionButton>(u"OptOther"_s);
    other.group = u"second"_s;
    s.click(a);
    s.click(other);
    s.click(b);
    EXPECT_FALSE(a.value());
    EXPECT_TRUE(b.value());
    EXPECT_TRUE(other.value());
}

TEST(ScreenFramework, ACombosPickIsFoundByItsDisplayedColumnsWithoutCase) {
    test::TestWorld world;
    Sample s(world.process);
    auto& combo = s.add<ComboBox>(u"Cmb_Patient"_s);
    combo.setRows({{7, {u"RAVI KUMAR"_s, u"M"_s}}, {8, {u"RAVI KUMAR"_s, u"F"_s}}, {9, {u"SITA"_s, u"F"_s}}});
    int clicks = 0;
    combo.onClick = [&] { ++clicks; };
    EXPECT_TRUE(s.choose(combo, {u"ravi"_s, u"f"_s}));
    EXPECT_EQ(combo.currentCode().toInt(), 8);
    EXPECT_EQ(combo.text(), u"RAVI KUMAR"_s);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(s.choose(combo, {u"GITA"_s}));
}

// A grid over a staging table, with a drop-down of complaints, a column rule and a commit rule.
class GridTest : public ::testing::Test {
protected:
    void SetUp() override {
        QString error;
        ASSERT_TRUE(world.process.state.OpenDb.open(world.dbPath, &error)) << error.toStdString();
        db().execute(
            u"INSERT INTO TmpComplaint (ComplaintCode, Notes, ComplaintName) VALUES (1, '', 'FEVER')"_s);
        screen = std::make_unique<Sample>(world.process);
        auto& dd = screen->add<DropDown>(u"ComplaintDD"_s);
        dd.setRows({{1, {u"FEVER"_s}}, {2, {u"COUGH"_s}}, {3, {u"COLD"_s}}});
        grid = &screen->add<Grid>(u"GrdComplaint"_s);
        grid->addColumn({0, u"ComplaintName"_s, u"Complaint"_s, false, true, false, u"ComplaintDD"_s, 30});
        grid->addColumn({1, u"Notes"_s, u"Notes"_s, false, true, false, {}, 30});
        grid->onPick = [this](int, const ListRow& row) {
            grid->setValue(u"ComplaintCode"_s, row.code);
            grid->setValue(u"ComplaintName"_s, row.columns.first());
        };
        grid->onColumnLeave = [this](int column) {
            return column != 1 || grid->text(u"Notes"_s) != u"bad"_s;
        };
        grid->onCommit = [this] {
            const qint64 code = grid->value(u"ComplaintCode"_s).toLongLong();
            for (int r = 0; r < grid->rowCount(); ++r) {
                if (r != grid->currentRow() && grid->cell(r, u"ComplaintCode"_s).toLongLong() == code) {
                    prompter().stop(u"Duplicate Complaint."_s);
                    return false;
                }
            }
            return true;
        };
        grid->bind(db(), u"TmpComplaint"_s);
    }
    Database& db() { return world.process.state.OpenDb; }
    Prompter& prompter() { return world.prompter; }
    int stagedRows() { return db().scalar(u"SELECT COUNT(*) FROM TmpComplaint"_s).toInt(); }

    test::TestWorld world;
    std::unique_ptr<Sample> screen;
    Grid* grid = nullptr;
};

TEST_F(GridTest, APickedRowIsWrittenToTheStagingTableWhenTheRowIsLeft) {
    EXPECT_EQ(grid->rowCount(), 1);
    ASSERT_TRUE(grid->goToNewLine());
    ASSERT_TRUE(grid->pick(0, {u"COU"_s}));
    EXPECT_EQ(stagedRows(), 1) << "nothing is stored before the row is left";
    ASSERT_TRUE(grid->goToRow(0));
    EXPECT_EQ(stagedRows(), 2);
    EXPECT_EQ(db().scalar(u"SELECT ComplaintCode FROM TmpComplaint WHERE ComplaintName = 'COUGH'"_s).toInt(),
              2);
    EXPECT_EQ(grid->cellText(1, 0), u"COUGH"_s);
}

TEST_F(GridTest, ARefusedCommitKeepsTheRowAndStoresNothing) {
    grid->goToNewLine();
    grid->pick(0, {u"FEVER"_s});
    EXPECT_FALSE(grid->goToRow(0));
    EXPECT_TRUE(grid->onNewLine());
    EXPECT_EQ(stagedRows(), 1);
    EXPECT_EQ(world.prompter.messages, QStringList{u"stop: Duplicate Complaint."_s});
    // Leaving the grid for another control commits too, and is refused the same way.
    screen->setFocus(*grid);
    EXPECT_FALSE(screen->moveFocus(screen->control(u"Txt_Other"_s)));
    EXPECT_EQ(screen->focus(), grid);
}

TEST_F(GridTest, AColumnRuleReportsItsRefusalAndAnEditOfAStoredRowUpdatesIt) {
    EXPECT_FALSE(grid->editCell(1, u"bad"_s));
    EXPECT_TRUE(grid->editCell(1, u"since two days"_s));
    EXPECT_TRUE(grid->commit());
    EXPECT_EQ(db().scalar(u"SELECT Notes FROM TmpComplaint"_s).toString(), u"since two days"_s);
    EXPECT_EQ(stagedRows(), 1);
}

TEST_F(GridTest, DeletingTheCurrentRowRemovesItFromTheStagingTable) {
    grid->goToNewLine();
    grid->pick(0, {u"COLD"_s});
    grid->commit();
    ASSERT_EQ(stagedRows(), 2);
    grid->goToRow(0);
    EXPECT_TRUE(grid->deleteRow());
    EXPECT_EQ(stagedRows(), 1);
    EXPECT_EQ(grid->cellText(0, 0), u"COLD"_s);
    grid->locked = true;
    EXPECT_FALSE(grid->deleteRow());
}

} // namespace
} // namespace vantrel
