#include "core/Startup.h"
#include "masters/Checks.h"
#include "tests/support/Fakes.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class ChecksTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(state(), world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
    }
    ProcessState& state() { return world.process.state; }
    void sql(const QString& statement) {
        ASSERT_GE(state().OpenDb.execute(statement), 0) << state().OpenDb.lastError().toStdString();
    }
    // The statement the last check left behind runs on the schema.
    void expectStatementRuns(const QString& key) {
        const Statement& s = state().ScratchSql;
        ASSERT_FALSE(s.sql.isEmpty()) << key.toStdString();
        QSqlQuery q(state().OpenDb.handle());
        ASSERT_TRUE(q.prepare(s.sql)) << key.toStdString() << ": " << q.lastError().text().toStdString();
        for (const QVariant& p : s.params)
            q.addBindValue(p);
        EXPECT_TRUE(q.exec()) << key.toStdString() << ": " << q.lastError().text().toStdString();
    }
    test::TestWorld world;
};

TEST_F(ChecksTest, EveryKeyBuildsAStatementOverTheSchema) {
    const QStringList inUse = {u"ALLERGY"_s,    u"ALLERGYTYPE"_s, u"BRAND"_s,       u"CITY"_s,
                               u"COMPANY"_s,    u"COMPLAINT"_s,   u"CONTRA"_s,      u"DEPARTMENT"_s,
                               u"DISEASE"_s,    u"DOCTOR"_s,      u"DOSAGEFORM"_s,  u"DOSE"_s,
                               u"DRUGGROUP"_s,  u"DSGREMARK"_s,   u"EMPLOYER"_s,    u"GROUP"_s,
                               u"INDICATION"_s, u"INTERACTION"_s, u"INVCATEGORY"_s, u"INVESTIGATION"_s,
                               u"OCCUPATION"_s, u"PATIENT"_s,     u"PERSONAL"_s,    u"PHARMA"_s,
                               u"PHYSICAL"_s,   u"PROFILE"_s,     u"RELATION"_s,    u"SERIES"_s,
                               u"SIDE"_s,       u"SPECIAL"_s,     u"SPONSOR"_s,     u"SUBALLERGY"_s,
                               u"SUBGROUP"_s,   u"SURGERY"_s,     u"SYMBOLS"_s,     u"VACCINE"_s};
    for (const QString& key : inUse) {
        state().ScratchSql = {};
        EXPECT_FALSE(IsCodeInUse(state(), 1, key)) << key.toStdString();
        expectStatementRuns(key);
    }
    const QStringList names = {
        u"ALLERGY"_s,       u"ALLERGYTYPE"_s, u"BRAND"_s,      u"CITY"_s,        u"COMMENT"_s,
        u"COMPANY"_s,       u"COMPLAINT"_s,   u"CONTRA"_s,     u"DEPARTMENT"_s,  u"DISEASE"_s,
        u"DOCTOR"_s,        u"DOSAGEFORM"_s,  u"DOSE"_s,       u"DRUGGROUP"_s,   u"DSGREMARK"_s,
        u"EMPLOYER"_s,      u"GROUP"_s,       u"INDICATION"_s, u"INTERACTION"_s, u"INVCATEGORY"_s,
        u"INVESTIGATION"_s, u"OCCUPATION"_s,  u"PATIENT"_s,    u"PERSONAL"_s,    u"PHARMA"_s,
        u"PHYSICAL"_s,      u"PROFILE"_s,     u"READYMADE"_s,  u"RELATION"_s,    u"REMARK"_s,
        u"SERIES"_s,        u"SIDE"_s,        u"SPECIAL"_s,    u"SPONSOR"_s,     u"SUBALLERGY"_s,
        u"SUBGROUP"_s,      u"SURGERY"_s,     u"SYMBOLS"_s,    u"VACCINE"_s};
    for (const QString& key : names) {
        for (int mode : {1, 2}) {
            state().ScratchSql = {};
            EXPECT_FALSE(IsDuplicateName(state(), 1, u"NOBODY"_s, key, mode, 3)) << key.toStdString();
            expectStatementRuns(key);
        }
    }
}

TEST_F(ChecksTest, AnUnknownKeyIsFreeAndWithoutDuplicateWhateverTheData) {
    sql(u"INSERT INTO City (Code, Name) VALUES (4, 'AGRA')"_s);
    sql(u"INSERT INTO Patient (Name, City) VALUES ('RAM', 4)"_s);
    EXPECT_FALSE(IsCodeInUse(state(), 4, u"TOWN"_s));
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"AGRA"_s, u"TOWN"_s, 1));
    EXPECT_TRUE(IsCodeInUse(state(), 4, u"city"_s)) << "keys are compared in capitals";
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"AGRA"_s, u"City"_s, 1));
}

TEST_F(ChecksTest, ACityIsInUseThroughAnyOfItsReferences) {
    sql(u"UPDATE Control SET City = 0, City1 = 0, City2 = 0"_s);
    EXPECT_FALSE(IsCodeInUse(state(), 9, u"CITY"_s));
    sql(u"UPDATE Control SET City2 = 9"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 9, u"CITY"_s)) << "the clinic's optional address";
    sql(u"UPDATE Control SET City2 = 0"_s);
    sql(u"INSERT INTO Prescriber (Name, City) VALUES ('DR X', '9')"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 9, u"CITY"_s)) << "a prescriber's city, held as text";
    EXPECT_FALSE(IsCodeInUse(state(), 19, u"CITY"_s));
}

TEST_F(ChecksTest, ABrandIsInUseOnAPrescriptionOrAReadyMadeOne) {
    EXPECT_FALSE(IsCodeInUse(state(), 5, u"BRAND"_s));
    sql(u"INSERT INTO ReadyDet (Code, GenericCode) VALUES (1, 5)"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 5, u"BRAND"_s));
    sql(u"DELETE FROM ReadyDet"_s);
    sql(u"INSERT INTO PresDet (Code, GenericCode) VALUES (1, 5)"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 5, u"BRAND"_s));
    EXPECT_FALSE(IsCodeInUse(state(), 6, u"BRAND"_s));
}

TEST_F(ChecksTest, AllergiesAreInUseOnlyUnderTheirOwnLetter) {
    sql(u"INSERT INTO PatientAllergy (PatientCode, AllergyType, AllergyCode) VALUES (1, 'D', 12)"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 12, u"PHARMA"_s));
    EXPECT_FALSE(IsCodeInUse(state(), 12, u"DRUGGROUP"_s));
    EXPECT_FALSE(IsCodeInUse(state(), 12, u"ALLERGY"_s));
    EXPECT_FALSE(IsCodeInUse(state(), 12, u"SUBALLERGY"_s));
    sql(u"INSERT INTO VisitAllergy (VisitNo, AllergyType, AllergyCode) VALUES ('1', 'G', 13)"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 13, u"DRUGGROUP"_s));
    EXPECT_FALSE(IsCodeInUse(state(), 13, u"PHARMA"_s));
}

TEST_F(ChecksTest, TheDocumentedGapsStayOpen) {
    sql(u"INSERT INTO PresHead (Code, PatientCode, RefBy) VALUES (1, 7, 'DR X')"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 7, u"PATIENT"_s));
    EXPECT_FALSE(IsCodeInUse(state(), 7, u"OCCUPATION"_s));
    sql(u"INSERT INTO RefBy (PrescriberCode, RefBy) VALUES (3, 'DR Y')"_s);
    EXPECT_TRUE(IsCodeInUse(state(), 3, u"DOCTOR"_s));
    sql(u"INSERT INTO Patient (Name, Company) VALUES ('RAM', 8)"_s);
    EXPECT_FALSE(IsCodeInUse(state(), 8, u"COMPANY"_s)) << "manufacturers are looked for on brands only";
    EXPECT_TRUE(IsCodeInUse(state(), 8, u"EMPLOYER"_s));
}

TEST_F(ChecksTest, DuplicatesIgnoreCaseAndTrailingBlanksButNotTheRowItself) {
    sql(u"INSERT INTO Manufacturer (Code, Name) VALUES (1, 'Cipla  '), (2, 'LUPIN')"_s);
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"CIPLA"_s, u"COMPANY"_s, 1));
    EXPECT_TRUE(IsDuplicateName(state(), 2, u"CIPLA"_s, u"COMPANY"_s, 2));
    EXPECT_FALSE(IsDuplicateName(state(), 1, u"CIPLA"_s, u"COMPANY"_s, 2)) << "the row's own name";
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"CIPLA LTD"_s, u"COMPANY"_s, 1));
}

TEST_F(ChecksTest, RemarksAreDuplicatesWithinTheirKindAndSubGroupsWithinTheirGroup) {
    sql(u"INSERT INTO Remarks (Name, RType) VALUES ('FEVER AFTER DOSE', 'S')"_s);
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"FEVER AFTER DOSE"_s, u"COMMENT"_s, 1));
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"FEVER AFTER DOSE"_s, u"REMARK"_s, 1));
    sql(u"INSERT INTO SubGroup (Code, Name, GroupCode) VALUES (4, 'ORAL', 1)"_s);
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"oral"_s, u"SUBGROUP"_s, 1, 1));
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"ORAL"_s, u"SUBGROUP"_s, 1, 2));
    EXPECT_FALSE(IsDuplicateName(state(), 4, u"ORAL"_s, u"SUBGROUP"_s, 2, 1));
}

} // namespace
} // namespace vantrel
