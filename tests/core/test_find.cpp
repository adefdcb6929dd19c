#include "core/Startup.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class FindTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(state(), world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(world.process));
        state().AppTitle = u"Vantrel 3.0 - Dr. Asha Rao"_s;
        state().OpenDb.execute(u"DELETE FROM City"_s);
        state().OpenDb.execute(
            u"INSERT INTO City (Code, Name) VALUES (1, 'AGRA'), (2, 'Ajmer'), (3, 'BHOPAL')"_s);
        state().ScratchSql = {u"SELECT Code, Name FROM City ORDER BY Name"_s, {}};
    }
    ProcessState& state() { return world.process.state; }
    // Opens the locator with these steps on it and gives back the code it handed out.
    qint64 find(qint64 start, const std::function<void(Screen&)>& steps) {
        state().SelectedCode = start;
        world.host.modal[u"Find"_s].push_back(steps);
        world.process.openModal(u"Find"_s, [](Screen& f) {
            f.setCaption(u"Locate a Specified City"_s);
            f.control(u"Frame2"_s)->setCaption(u"List of All Avaliable Cities"_s);
        });
        return state().SelectedCode;
    }
    static ListBox& list(Screen& f) { return static_cast<ListBox&>(*f.control(u"DBG_Name"_s)); }
    static TextBox& search(Screen& f) { return static_cast<TextBox&>(*f.control(u"Txt_Search"_s)); }
    test::TestWorld world;
};

TEST_F(FindTest, StartsOnTheCallersRowAndHandsBackTheRowSelected) {
    const qint64 chosen = find(3, [](Screen& f) {
        EXPECT_EQ(f.caption(), u"Locate a Specified City"_s);
        EXPECT_EQ(list(f).current(), 2);
        EXPECT_EQ(f.control(u"Data1"_s)->caption(), u"Current Record is 3"_s);
        f.type(search(f), u"aj"_s);
        EXPECT_EQ(search(f).text(), u"AJ"_s);
        EXPECT_EQ(list(f).current(), 1) << "the typed prefix is compared without case";
        EXPECT_EQ(f.control(u"Data1"_s)->caption(), u"Current Record is 2"_s);
        f.type(search(f), u"x"_s);
        EXPECT_EQ(list(f).current(), 1) << "no match leaves the row";
        f.paste(search(f), u"  "_s);
        EXPECT_EQ(list(f).current(), 0) << "a blank search goes to the first row";
        f.click(*f.control(u"Cmd_Ok"_s));
    });
    EXPECT_EQ(chosen, 1);
}

TEST_F(FindTest, TheCallerNamesTheListAndEnterStopsInsideIt) {
    find(1, [](Screen& f) {
        EXPECT_EQ(f.control(u"Frame2"_s)->caption(), u"List of All Avaliable Cities"_s);
        EXPECT_EQ(f.focus(), &search(f));
        f.type(search(f), u"b  h"_s);
        EXPECT_EQ(search(f).text(), u"B H"_s) << "one blank between words";
        f.pressKey(search(f), Key::Enter);
        EXPECT_EQ(f.focus(), &list(f)) << "Enter leaves the search box for the list";
        f.selectRow(list(f), 2);
        f.pressKey(list(f), Key::Enter);
        EXPECT_EQ(f.focus(), &list(f));
        EXPECT_EQ(list(f).current(), 2);
        f.pressKey(list(f), Key::Tab);
        EXPECT_EQ(f.focus(), f.control(u"Cmd_Ok"_s));
    });
}

TEST_F(FindTest, CancelAndTheCloseBoxHandBackNothing) {
    EXPECT_EQ(find(2, [](Screen& f) { f.click(*f.control(u"Cmd_Undo"_s)); }), 0);
    EXPECT_EQ(find(2, [](Screen&) {}), 0);
}

TEST_F(FindTest, AnEmptyListClosesWithItsMessage) {
    state().ScratchSql = {u"SELECT Code, Name FROM City WHERE Code < 0"_s, {}};
    bool ran = false;
    EXPECT_EQ(find(2, [&ran](Screen&) { ran = true; }), 0);
    EXPECT_FALSE(ran);
    EXPECT_EQ(world.prompter.messages, QStringList({u"stop: No Record Found."_s}));
}

TEST_F(FindTest, AQueryOnlyShowsAndGivesTheMastersQueryTitleBack) {
    state().QueryMode = true;
    const qint64 chosen = find(3, [this](Screen& f) {
        EXPECT_EQ(world.host.title, u"Vantrel 3.0 - Dr. Asha Rao   [Locate a Specified City]"_s);
        EXPECT_EQ(list(f).current(), 0) << "a query starts on the first row";
        EXPECT_FALSE(f.click(*f.control(u"Cmd_Ok"_s)));
        EXPECT_FALSE(f.isClosed());
    });
    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(world.host.title, u"Vantrel 3.0 - Dr. Asha Rao   [Masters Query]"_s);
}

} // namespace
} // namespace vantrel
