#include "core/Startup.h"
#include "prescription/NewBrand.h"
#include "tests/support/Fakes.h"

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

class NewBrandTest : public ::testing::Test {
protected:
    void SetUp() override {
        w.sql(u"INSERT INTO SafetyStatus (Code, Name) VALUES (1, 'Safe'), (2, 'Un-Safe')"_s);
        w.sql(u"INSERT INTO DosageForm (Code, Name) VALUES (1, 'TABLET'), (2, 'SYRUP')"_s);
        SetPaths(w.process.state, w.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(w.process, &error)) << error.toStdString();
    }
    Database& db() { return w.process.state.OpenDb; }
    int count(const QString& sql) { return db().scalar(sql).toInt(); }
    NewBrand brand(const QString& name) {
        NewBrand b;
        b.name = name;
        b.composition = u"SEE LIT."_s;
        b.dosage = u"1 TAB SOS"_s;
        b.company = EnsureSentinel(db(), u"Manufacturer"_s, u"TO BE UPDATED LATER"_s);
        b.forms = {1, 2};
        b.prescribedForm = 1;
        b.drug = EnsureNoneDrug(db());
        b.group = EnsureSentinel(db(), u"GroupName"_s, u"NONE"_s);
        b.subGroup = EnsureSentinel(db(), u"SubGroup"_s, u"NONE"_s, u"GroupCode"_s, b.group);
        return b;
    }
    test::TestWorld w;
};

TEST_F(NewBrandTest, TheDrugNoneIsMadeOnceSafeInEveryStateWithItsLinks) {
    const qint64 drug = EnsureNoneDrug(db());
    ASSERT_GT(drug, 0);
    EXPECT_EQ(EnsureNoneDrug(db()), drug);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM PharmaName"_s), 1);
    EXPECT_EQ(count(u"SELECT COUNT(DISTINCT SafeFieldCode) FROM DrugSafety WHERE SafetyCode = 1"_s), 7);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM DrugSafety"_s), 7);
    for (const QString& link :
         {u"PharmaContra"_s, u"PharmaIndication"_s, u"PharmaSide"_s, u"PharmaSpecial"_s})
        EXPECT_EQ(count(u"SELECT COUNT(*) FROM %1 WHERE PharmaCode = %2"_s.arg(link).arg(drug)), 1)
            << link.toStdString();
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM Indication WHERE Name = 'NONE'"_s), 1);
}

TEST_F(NewBrandTest, WithoutTheSafeStatusNoDrugIsMade) {
    ASSERT_GE(db().execute(u"DELETE FROM SafetyStatus WHERE Code = 1"_s), 0);
    EXPECT_EQ(EnsureNoneDrug(db()), 0);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM PharmaName"_s), 0);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM DrugSafety"_s), 0);
}

TEST_F(NewBrandTest, SentinelsAreFoundByTrimmedCapitalisedNameAndNeverDoubled) {
    ASSERT_GE(db().execute(u"INSERT INTO Manufacturer (Code, Name) VALUES (7, ' to be updated later ')"_s),
              0);
    EXPECT_EQ(EnsureSentinel(db(), u"Manufacturer"_s, u"TO BE UPDATED LATER"_s), 7);
    const qint64 group = EnsureSentinel(db(), u"GroupName"_s, u"NONE"_s);
    const qint64 sub = EnsureSentinel(db(), u"SubGroup"_s, u"NONE"_s, u"GroupCode"_s, group);
    EXPECT_EQ(EnsureSentinel(db(), u"SubGroup"_s, u"NONE"_s, u"GroupCode"_s, group), sub);
    EXPECT_EQ(count(u"SELECT GroupCode FROM SubGroup"_s), group);
}

TEST_F(NewBrandTest, ABrandIsAddedWholeOrNotAtAll) {
    const qint64 code = AddNewBrand(db(), brand(u" dolo 650 "_s));
    ASSERT_GT(code, 0);
    EXPECT_EQ(db().scalar(u"SELECT Name FROM GenericName WHERE Code = ?"_s, {code}).toString(),
              u"DOLO 650"_s);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM GenericDsgFm WHERE GenericCode = %1"_s.arg(code)), 2);
    // A name already known adds nothing and gives the brand that has it.
    EXPECT_EQ(AddNewBrand(db(), brand(u"DOLO 650"_s)), code);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM GenericName"_s), 1);

    ASSERT_GE(db().execute(u"CREATE TRIGGER Refuse BEFORE INSERT ON GenericSubGroup "
                           "BEGIN SELECT RAISE(ABORT, 'full'); END"_s),
              0);
    EXPECT_EQ(AddNewBrand(db(), brand(u"T-98"_s)), 0);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM GenericName"_s), 1);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM GenericDsgFm"_s), 2);
    EXPECT_EQ(count(u"SELECT COUNT(*) FROM GenericPharma"_s), 1);
}

} // namespace
} // namespace vantrel
