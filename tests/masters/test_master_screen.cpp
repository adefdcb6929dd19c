#include "core/Startup.h"
#include "masters/MasterScreen.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class MasterScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(world.process.state, world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(world.process));
        world.process.state.AppTitle = u"Vantrel 3.0 - Dr. Asha Rao"_s;
    }
    Database& db() { return world.process.state.OpenDb; }
    MasterScreen& open(const QString& name) {
        Screen* screen = world.process.open(name);
        EXPECT_NE(screen, nullptr) << name.toStdString();
        screen->activated();
        return static_cast<MasterScreen&>(*screen);
    }
    void click(Screen& screen, const QString& name) { screen.click(*screen.control(name)); }
    qint64 count(const QString& table) { return db().scalar(u"SELECT COUNT(*) FROM "_s + table).toLongLong(); }
    test::TestWorld world;
};

// Each master of codes and names, with the table it keeps, its label and its title: a new row saved and
// deleted again through the screen, with the messages built from the label.
struct Member {
    const char* screen;
    const char* table;
    const char* label;
    const char* title;
};
const Member kFamily[] = {
    {"Mst_Company", "Manufacturer", "Manufacturer", "   [Manufacturer Master]"},
    {"Mst_Indication", "Indication", "Indication", "   [Indication Master]"},
    {"Mst_SideEffect", "SideEffect", "Side Effect", "   [Side Effect Master]"},
    {"Mst_Contra", "ContraIndication", "Contra-Indication", "   [Contra Indication Master]"},
    {"Mst_Interaction", "InteractionType", "Interaction Detail", "   [Interaction Details (Type of Interactions)]"},
    {"Mst_DosageForm", "DosageForm", "Dosage Form", "   [Dosage Forms Master]"},
    {"Mst_Group", "GroupName", "Group", "   [Group Master]"},
    {"Mst_City", "City", "City", "   [City Master]"},
    {"Mst_Surgery", "Surgery", "Procedure", "   [Procedures Master]"},
    {"Mst_SpecialCare", "SpecialCare", "Precaution", "   [Special Precaution Master]"},
    {"Mst_Department", "Department", "Department", "   [Department Master]"},
    {"Mst_DsgRemarks", "DsgRemark", "Comment", "   [Brand Dosage Remarks Master]"},
    {"Mst_InvCategories", "InvCategory", "Category", "   [Investigation Categories Master]"},
    {"Mst_Symbols", "Symbols", "Symbol", "   [Dosage Symbols Master]"},
    {"Mst_Complaints", "Complaints", "Complaint", "   [Complaints Master]"},
    {"Mst_InvProfiles", "InvProfiles", "Profile", "   [Investigation Profiles Master]"},
    {"Mst_DrugGroup", "DrugGroup", "Drug Group", "   [Drug Group Master]"},
};

TEST_F(MasterScreenTest, EveryMemberOfTheFamilyKeepsItsOwnTableWithItsOwnWords) {
    for (const Member& m : kFamily) {
        SCOPED_TRACE(m.screen);
        const QString table = QString::fromLatin1(m.table);
        const QString label = QString::fromLatin1(m.label);
        db().execute(u"DELETE FROM "_s + table);
        world.prompter.messages.clear();
        MasterScreen& screen = open(QString::fromLatin1(m.screen));
        EXPECT_EQ(world.host.title, u"Vantrel 3.0 - Dr. Asha Rao"_s + QString::fromLatin1(m.title));
        EXPECT_EQ(screen.colourFamily, u"Master"_s);

        click(screen, u"Cmd_New"_s);
        screen.type(screen.nameBox(), u"first row"_s);
        click(screen, u"Cmd_Save"_s);
        EXPECT_EQ(count(table), 1);
        EXPECT_EQ(db().scalar(u"SELECT Name FROM "_s + table).toString(), u"FIRST ROW"_s);
        EXPECT_EQ(world.process.state.SelectedCode, screen.currentCode());

        world.prompter.answers.push_back(true);
        click(screen, u"Cmd_Delete"_s);
        EXPECT_EQ(count(table), 0);
        EXPECT_EQ(world.prompter.messages,
                  QStringList({u"info: "_s + label + u" Added."_s, u"ask: Delete Current "_s + label + u" ?"_s}));
        EXPECT_FALSE(screen.button(MasterButton::Delete).enabled());
        click(screen, u"Cmd_Quit"_s);
        EXPECT_EQ(world.process.find(QString::fromLatin1(m.screen)), nullptr);
    }
}

TEST_F(MasterScreenTest, AFailedSaveRollsBackAndStaysInEditing) {
    db().execute(u"DELETE FROM Manufacturer"_s);
    db().execute(u"CREATE TEMP TRIGGER refuse BEFORE INSERT ON main.Manufacturer "
                 "BEGIN SELECT RAISE(ABORT, 'disk is full'); END"_s);
    MasterScreen& screen = open(u"Mst_Company"_s);
    click(screen, u"Cmd_New"_s);
    screen.type(screen.nameBox(), u"CIPLA"_s);
    click(screen, u"Cmd_Save"_s);
    ASSERT_EQ(world.prompter.messages.size(), 1);
    EXPECT_TRUE(world.prompter.messages[0].startsWith(u"stop: Error While Saving "_s));
    EXPECT_TRUE(world.prompter.messages[0].contains(u"disk is full"_s));
    EXPECT_EQ(count(u"Manufacturer"_s), 0);
    EXPECT_EQ(screen.EditMode(), 1);
    EXPECT_TRUE(screen.button(MasterButton::Save).enabled());
    EXPECT_FALSE(screen.nameBox().locked());
}

TEST_F(MasterScreenTest, ANewRowIsShownAmongTheOthersInNameOrder) {
    db().execute(u"DELETE FROM City"_s);
    db().execute(u"INSERT INTO City (Name) VALUES ('AGRA'), ('PUNE')"_s);
    MasterScreen& screen = open(u"Mst_City"_s);
    EXPECT_EQ(screen.nameBox().text(), u"PUNE"_s);
    click(screen, u"Cmd_New"_s);
    screen.type(screen.nameBox(), u"BHOPAL"_s);
    click(screen, u"Cmd_Save"_s);
    EXPECT_EQ(screen.nameBox().text(), u"BHOPAL"_s);
    click(screen, u"Cmd_Next"_s);
    EXPECT_EQ(screen.nameBox().text(), u"PUNE"_s);
    click(screen, u"Cmd_Back"_s);
    click(screen, u"Cmd_Back"_s);
    EXPECT_EQ(screen.nameBox().text(), u"AGRA"_s);
    EXPECT_EQ(world.prompter.messages, QStringList({u"info: City Added."_s}));
}

} // namespace
} // namespace vantrel
