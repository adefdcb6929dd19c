#include "core/Startup.h"
#include "readymade/ReadyMade.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class ReadyMadeTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(world.process.state, world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
    }
    Database& db() { return world.process.state.OpenDb; }
    void sql(const QString& statement) {
        ASSERT_GE(db().execute(statement), 0) << db().lastError().toStdString();
    }
    QString saveAs(const std::function<void(Screen&)>& steps) {
        world.host.modal[u"FrmSaveAsRM"_s].push_back(steps);
        QString name;
        world.process.openModal(u"FrmSaveAsRM"_s, {}, [&name](Screen& s) {
            name = s.outputs.value(u"SaveReadyMade"_s).toString();
        });
        return name;
    }
    test::TestWorld world;
};

TEST_F(ReadyMadeTest, APrescriptionIsKeptWithItsStagedLinesAndAdvisedInvestigations) {
    sql(u"INSERT INTO PresHead (Code, Examination, Remark) VALUES (12, 'CHEST CLEAR', 'PLENTY OF FLUIDS')"_s);
    sql(u"INSERT INTO PresAdvised (PrescriptionCode, InvestigationCode) VALUES (12, 4), (12, 5), (13, 6)"_s);
    sql(u"INSERT INTO TmpDet (Code, DsgFmCode, SymbolCode, DsgRemarkCode, Dosage) VALUES (101, 2, 3, 4, "
        u"'1-0-1'), "
        "(102, 1, 0, 0, 'SOS')"_s);
    sql(u"INSERT INTO TmpComplaint (ComplaintCode, Notes) VALUES (7, '3 DAYS')"_s);
    sql(u"INSERT INTO TmpDisease (DiseaseCode, Notes) VALUES (8, '')"_s);
    sql(u"INSERT INTO Readymade (Code, Name) VALUES (4, 'OLDER ONE')"_s);

    EXPECT_EQ(SaveAsReadyMade(db(), 12, u"VIRAL FEVER"_s), 5);
    const auto head = db().first(u"SELECT * FROM Readymade WHERE Code = 5"_s);
    ASSERT_TRUE(head);
    EXPECT_EQ(head->text(u"Name"_s), u"VIRAL FEVER"_s);
    EXPECT_EQ(head->text(u"Examination"_s), u"CHEST CLEAR"_s);
    EXPECT_EQ(head->text(u"Remark"_s), u"PLENTY OF FLUIDS"_s);
    EXPECT_EQ(
        db().scalar(u"SELECT GROUP_CONCAT(GenericCode || ':' || DsgFmCode || ':' || SymbolCode || ':' || "
                    "DsgRemarkCode || ':' || Dosage) FROM (SELECT * FROM ReadyDet WHERE Code = 5 "
                    "ORDER BY GenericCode)"_s)
            .toString(),
        u"101:2:3:4:1-0-1,102:1:0:0:SOS"_s);
    EXPECT_EQ(
        db().scalar(u"SELECT ComplaintCode || Notes FROM ReadyComplaint WHERE ReadyCode = 5"_s).toString(),
        u"73 DAYS"_s);
    EXPECT_EQ(db().scalar(u"SELECT DiseaseCode FROM ReadyDisease WHERE ReadyCode = 5"_s).toInt(), 8);
    EXPECT_EQ(db().scalar(u"SELECT GROUP_CONCAT(InvestigationCode) FROM ReadyAdvised WHERE ReadyCode = 5"_s)
                  .toString(),
              u"4,5"_s);
}

TEST_F(ReadyMadeTest, NothingIsKeptOfAPrescriptionThatIsNotThere) {
    sql(u"INSERT INTO TmpDet (Code, DsgFmCode) VALUES (101, 2)"_s);
    EXPECT_EQ(SaveAsReadyMade(db(), 99, u"GHOST"_s), 0);
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM Readymade"_s).toInt(), 0);
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM ReadyDet"_s).toInt(), 0);
}

TEST_F(ReadyMadeTest, TheDialogWantsANewNameAndCancelKeepsNothing) {
    sql(u"INSERT INTO Readymade (Code, Name) VALUES (1, 'VIRAL FEVER')"_s);
    const QString name = saveAs([](Screen& s) {
        auto& box = static_cast<TextBox&>(*s.control(u"TxtName"_s));
        s.click(*s.control(u"Cmd_Save"_s));
        s.type(box, u"viral fever"_s);
        s.click(*s.control(u"Cmd_Save"_s));
        s.paste(box, u" DENGUE  "_s);
        s.click(*s.control(u"Cmd_Save"_s));
    });
    EXPECT_EQ(name, u"DENGUE"_s);
    EXPECT_EQ(world.prompter.messages,
              QStringList({u"stop: Name of Readymade Prescription Should Not be Left Blank."_s,
                           u"stop: Duplicate Prescription Name."_s}));
    EXPECT_EQ(saveAs([](Screen& s) { s.click(*s.control(u"Cmd_Cancel"_s)); }), QString());
    EXPECT_EQ(saveAs([](Screen&) {}), QString()) << "the close box keeps nothing either";
}

} // namespace
} // namespace vantrel
