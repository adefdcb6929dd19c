#include "core/Startup.h"
#include "masters/Checks.h"
#include "tests/support/Fakes.h"

#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// Where each master's codes are kept by other tables: the key, the table and column, and for the lists that
// hold several kinds of code the type column with the letter of the kind.
struct Reference {
    const char* key;
    const char* table;
    const char* column;
    const char* typeColumn = nullptr;
    const char* type = nullptr;
};

const Reference kReferences[] = {
    {"ALLERGY", "PatientAllergy", "AllergyCode", "AllergyType", "A"},
    {"ALLERGY", "PresAllergy", "AllergyCode", "AllergyType", "A"},
    {"ALLERGY", "VisitAllergy", "AllergyCode", "AllergyType", "A"},
    {"ALLERGYTYPE", "Allergies", "AllergyType"},
    {"BRAND", "PresDet", "GenericCode"},
    {"BRAND", "ReadyDet", "GenericCode"},
    {"CITY", "Patient", "City"},
    {"CITY", "Prescriber", "City"},
    {"CITY", "Control", "City"},
    {"CITY", "Control", "City1"},
    {"CITY", "Control", "City2"},
    {"COMPANY", "GenericName", "Company"},
    {"COMPLAINT", "PresComplaint", "ComplaintCode"},
    {"COMPLAINT", "ReadyComplaint", "ComplaintCode"},
    {"COMPLAINT", "VisitComplaint", "ComplaintCode"},
    {"CONTRA", "PharmaContra", "ContraIndicationCode"},
    {"CONTRA", "VacContra", "ContraCode"},
    {"DEPARTMENT", "Control", "Department"},
    {"DEPARTMENT", "Prescriber", "Department"},
    {"DISEASE", "PresDisease", "DiseaseCode"},
    {"DISEASE", "ReadyDisease", "DiseaseCode"},
    {"DISEASE", "PatientFamily", "DiseasesCode"},
    {"DISEASE", "PatientPast", "PastCode", "PastType", "D"},
    {"DISEASE", "PresFamily", "DiseasesCode"},
    {"DISEASE", "PresPast", "PastCode", "PastType", "D"},
    {"DISEASE", "VisitFamily", "DiseasesCode"},
    {"DISEASE", "VisitPast", "PastCode", "PastType", "D"},
    {"DOCTOR", "OPDCard", "PrescriberCode"},
    {"DOCTOR", "RefBy", "PrescriberCode"},
    {"DOCTOR", "DailyTask", "PrescriberCode"},
    {"DOCTOR", "MonthlyTask", "PrescriberCode"},
    {"DOSAGEFORM", "GenericDsgFm", "DsgFmCode"},
    {"DOSAGEFORM", "PresDet", "DsgFmCode"},
    {"DOSAGEFORM", "ReadyDet", "DsgFmCode"},
    {"DOSE", "VacDose", "DoseCode"},
    {"DOSE", "ImmDetail", "DoseCode"},
    {"DRUGGROUP", "PharmaGroup", "DrugGroup"},
    {"DRUGGROUP", "PatientAllergy", "AllergyCode", "AllergyType", "G"},
    {"DRUGGROUP", "PresAllergy", "AllergyCode", "AllergyType", "G"},
    {"DRUGGROUP", "VisitAllergy", "AllergyCode", "AllergyType", "G"},
    {"DSGREMARK", "PresDet", "DsgRemarkCode"},
    {"DSGREMARK", "ReadyDet", "DsgRemarkCode"},
    {"EMPLOYER", "Patient", "Company"},
    {"EMPLOYER", "Control", "CompanyCode"},
    {"GROUP", "GenericGroup", "GroupCode"},
    {"GROUP", "SubGroup", "GroupCode"},
    {"INDICATION", "PharmaIndication", "IndicationCode"},
    {"INTERACTION", "Interaction", "IntTypeCode"},
    {"INVCATEGORY", "InvtCatg", "CategoryCode"},
    {"INVESTIGATION", "InvDiseases", "InvestigationCode"},
    {"INVESTIGATION", "PatientInvestigation", "InvestigationCode"},
    {"INVESTIGATION", "PrintInv", "InvCode"},
    {"INVESTIGATION", "InvTemplate", "InvCode"},
    {"INVESTIGATION", "PresAdvised", "InvestigationCode"},
    {"INVESTIGATION", "ReadyAdvised", "InvestigationCode"},
    {"INVESTIGATION", "InvtProfiles", "InvestigationCode"},
    {"OCCUPATION", "Patient", "Occupation"},
    {"PATIENT", "OPDCard", "PatientCode"},
    {"PATIENT", "PresHead", "PatientCode"},
    {"PATIENT", "PrintInv", "Patient"},
    {"PATIENT", "Receipt", "Patient"},
    {"PATIENT", "Immunization", "PatientCode"},
    {"PERSONAL", "PatientPersonal", "PersonalCode"},
    {"PERSONAL", "PresPersonal", "PersonalCode"},
    {"PERSONAL", "VisitPersonal", "PersonalCode"},
    {"PHARMA", "GenericPharma", "PharmaCode"},
    {"PHARMA", "DiseaseDrug", "DrugCode"},
    {"PHARMA", "PatientAllergy", "AllergyCode", "AllergyType", "D"},
    {"PHARMA", "PresAllergy", "AllergyCode", "AllergyType", "D"},
    {"PHARMA", "VisitAllergy", "AllergyCode", "AllergyType", "D"},
    {"PHYSICAL", "PatientPhysical", "PhysicalCode"},
    {"PHYSICAL", "PresPhysical", "PhysicalCode"},
    {"PHYSICAL", "VisitPhysical", "PhysicalCode"},
    {"PROFILE", "InvtProfiles", "ProfileCode"},
    {"RELATION", "Patient", "HofRelation"},
    {"RELATION", "PatientFamily", "RelationCode"},
    {"RELATION", "PresFamily", "RelationCode"},
    {"RELATION", "VisitFamily", "RelationCode"},
    {"SERIES", "Receipt", "SeriesCode"},
    {"SIDE", "PharmaSide", "SideEffectCode"},
    {"SPECIAL", "PharmaSpecial", "SpecialCode"},
    {"SPONSOR", "Patient", "Payer"},
    {"SUBALLERGY", "AllergyDet", "SubCode"},
    {"SUBALLERGY", "PatientAllergy", "AllergyCode", "AllergyType", "B"},
    {"SUBALLERGY", "PresAllergy", "AllergyCode", "AllergyType", "B"},
    {"SUBALLERGY", "VisitAllergy", "AllergyCode", "AllergyType", "B"},
    {"SUBGROUP", "GenericSubGroup", "SubGroupCode"},
    {"SURGERY", "PresSurgery", "SurgeryCode"},
    {"SURGERY", "PatientPast", "PastCode", "PastType", "P"},
    {"SURGERY", "PresPast", "PastCode", "PastType", "P"},
    {"SURGERY", "VisitPast", "PastCode", "PastType", "P"},
    {"SYMBOLS", "PresDet", "SymbolCode"},
    {"SYMBOLS", "ReadyDet", "SymbolCode"},
    {"VACCINE", "SchVaccine", "VacCode"},
    {"VACCINE", "VacDose", "VacCode"},
    {"VACCINE", "VacContra", "VacCode"},
    {"VACCINE", "ImmDetail", "VacCode"},
};

// Where each master keeps its names, with the column and value that narrow the rows of a shared table.
struct NameHolder {
    const char* key;
    const char* table;
    const char* column;
    const char* extraColumn = nullptr;
    const char* extraValue = nullptr;
};

const NameHolder kNameHolders[] = {
    {"ALLERGY", "Allergies", "Name"},
    {"ALLERGYTYPE", "AllergyTypes", "Name"},
    {"BRAND", "GenericName", "Name"},
    {"CITY", "City", "Name"},
    {"COMMENT", "Remarks", "Name", "RType", "S"},
    {"COMPANY", "Manufacturer", "Name"},
    {"COMPLAINT", "Complaints", "Name"},
    {"CONTRA", "ContraIndication", "Name"},
    {"DEPARTMENT", "Department", "Name"},
    {"DISEASE", "Disease", "Name"},
    {"DOCTOR", "Prescriber", "Name"},
    {"DOSAGEFORM", "DosageForm", "Name"},
    {"DOSE", "DoseName", "Name"},
    {"DRUGGROUP", "DrugGroup", "Name"},
    {"DSGREMARK", "DsgRemark", "Name"},
    {"EMPLOYER", "Company", "CompanyName"},
    {"GROUP", "GroupName", "Name"},
    {"INDICATION", "Indication", "Name"},
    {"INTERACTION", "InteractionType", "Name"},
    {"INVCATEGORY", "InvCategory", "Name"},
    {"INVESTIGATION", "Investigation", "Name"},
    {"OCCUPATION", "Occupation", "Name"},
    {"PATIENT", "Patient", "Name"},
    {"PERSONAL", "Personal", "Name"},
    {"PHARMA", "PharmaName", "Name"},
    {"PHYSICAL", "Physical", "Name"},
    {"PROFILE", "InvProfiles", "Name"},
    {"READYMADE", "Readymade", "Name"},
    {"RELATION", "Relation", "Relation"},
    {"REMARK", "Remarks", "Name", "RType", "P"},
    {"SERIES", "Series", "SeriesName"},
    {"SIDE", "SideEffect", "Name"},
    {"SPECIAL", "SpecialCare", "Name"},
    {"SPONSOR", "Payer", "PayerName"},
    {"SUBALLERGY", "AllergySub", "Name"},
    {"SUBGROUP", "SubGroup", "Name", "GroupCode", "3"},
    {"SURGERY", "Surgery", "Name"},
    {"SYMBOLS", "Symbols", "Name"},
    {"VACCINE", "Vaccine", "Name"},
};

class ChecksTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(state(), world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
    }
    ProcessState& state() { return world.process.state; }
    void sql(const QString& statement, const QVariantList& params = {}) {
        ASSERT_GE(state().OpenDb.execute(statement, params), 0) << state().OpenDb.lastError().toStdString();
    }
    // The statement the last check left behind runs on the schema: a wrong table or column fails here
    // rather than reading as "no row".
    void expectStatementRuns() {
        const Statement& s = state().ScratchSql;
        ASSERT_FALSE(s.sql.isEmpty());
        QSqlQuery q(state().OpenDb.handle());
        ASSERT_TRUE(q.prepare(s.sql)) << q.lastError().text().toStdString();
        for (const QVariant& p : s.params)
            q.addBindValue(p);
        EXPECT_TRUE(q.exec()) << q.lastError().text().toStdString();
    }
    test::TestWorld world;
};

TEST_F(ChecksTest, EachKeyFindsItsCodeInEveryTableThatKeepsIt) {
    sql(u"UPDATE Control SET City = NULL, City1 = NULL, City2 = NULL, Department = NULL, CompanyCode = NULL"_s);
    for (const Reference& r : kReferences) {
        const QString key = QString::fromLatin1(r.key);
        const QString table = QString::fromLatin1(r.table);
        const QString column = QString::fromLatin1(r.column);
        SCOPED_TRACE(key.toStdString() + " in " + r.table + "." + r.column);
        EXPECT_FALSE(IsCodeInUse(state(), 77, key));
        expectStatementRuns();
        if (table == u"Control"_s) {
            sql(u"UPDATE Control SET %1 = ?"_s.arg(column), {77});
        } else if (r.typeColumn) {
            const QString typeColumn = QString::fromLatin1(r.typeColumn);
            sql(u"INSERT INTO %1 (%2, %3) VALUES (?, 'Z')"_s.arg(table, column, typeColumn), {77});
            EXPECT_FALSE(IsCodeInUse(state(), 77, key)) << "the number of another kind of code";
            sql(u"UPDATE %1 SET %2 = ?"_s.arg(table, typeColumn), {QString::fromLatin1(r.type)});
        } else {
            sql(u"INSERT INTO %1 (%2) VALUES (?)"_s.arg(table, column), {77});
        }
        EXPECT_TRUE(IsCodeInUse(state(), 77, key));
        EXPECT_FALSE(IsCodeInUse(state(), 78, key));
        if (table == u"Control"_s)
            sql(u"UPDATE Control SET %1 = NULL"_s.arg(column));
        else
            sql(u"DELETE FROM %1"_s.arg(table));
    }
}

TEST_F(ChecksTest, EachKeyFindsANameInItsOwnTable) {
    for (const NameHolder& h : kNameHolders) {
        const QString key = QString::fromLatin1(h.key);
        const QString table = QString::fromLatin1(h.table);
        SCOPED_TRACE(key.toStdString() + " in " + h.table + "." + h.column);
        if (h.extraColumn)
            sql(u"INSERT INTO %1 (Code, %2, %3) VALUES (50, ?, ?)"_s.arg(table, QString::fromLatin1(h.column),
                                                                         QString::fromLatin1(h.extraColumn)),
                {u" Ram Prasad  "_s, QString::fromLatin1(h.extraValue)});
        else
            sql(u"INSERT INTO %1 (Code, %2) VALUES (50, ?)"_s.arg(table, QString::fromLatin1(h.column)),
                {u" Ram Prasad  "_s});
        EXPECT_FALSE(IsDuplicateName(state(), 50, u"RAM PRASAD"_s, key, 2, 3)) << "the row itself";
        expectStatementRuns();
        for (int mode : {1, 2}) {
            EXPECT_TRUE(IsDuplicateName(state(), 51, u"RAM PRASAD"_s, key, mode, 3)) << mode;
            EXPECT_FALSE(IsDuplicateName(state(), 51, u"RAM"_s, key, mode, 3)) << mode;
        }
        sql(u"DELETE FROM %1"_s.arg(table));
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
    sql(u"INSERT INTO Prescriber (Code, Name) VALUES (3, 'DR X')"_s);
    sql(u"INSERT INTO PresHead (Code, PatientCode, RefBy) VALUES (1, 7, 'DR X')"_s);
    EXPECT_FALSE(IsCodeInUse(state(), 3, u"DOCTOR"_s)) << "a doctor named on a prescription only";
    EXPECT_TRUE(IsCodeInUse(state(), 7, u"PATIENT"_s));
    sql(u"INSERT INTO Patient (Name, Company) VALUES ('RAM', 8)"_s);
    EXPECT_FALSE(IsCodeInUse(state(), 8, u"COMPANY"_s)) << "manufacturers are looked for on brands only";
    EXPECT_TRUE(IsCodeInUse(state(), 8, u"EMPLOYER"_s));
}

TEST_F(ChecksTest, DuplicatesIgnoreCaseAndTrailingBlanksButNotTheRowItself) {
    sql(u"INSERT INTO Manufacturer (Code, Name) VALUES (1, 'Cipla  '), (2, 'LUPIN'), (3, 'O''Neil Labs')"_s);
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"CIPLA"_s, u"COMPANY"_s, 1));
    EXPECT_TRUE(IsDuplicateName(state(), 2, u"CIPLA"_s, u"COMPANY"_s, 2));
    EXPECT_FALSE(IsDuplicateName(state(), 1, u"CIPLA"_s, u"COMPANY"_s, 2)) << "the row's own name";
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"CIPLA LTD"_s, u"COMPANY"_s, 1));
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"O'NEIL LABS"_s, u"COMPANY"_s, 1));
    EXPECT_FALSE(state().ScratchSql.sql.contains(u"NEIL"_s)) << "the name is a bound value";
    EXPECT_EQ(state().ScratchSql.params, QVariantList{u"O'NEIL LABS"_s});
}

TEST_F(ChecksTest, RemarksAreDuplicatesWithinTheirKindAndSubGroupsWithinTheirGroup) {
    sql(u"INSERT INTO Remarks (Name, RType) VALUES ('FEVER AFTER DOSE', 'S')"_s);
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"FEVER AFTER DOSE"_s, u"COMMENT"_s, 1));
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"FEVER AFTER DOSE"_s, u"REMARK"_s, 1));
    sql(u"INSERT INTO SubGroup (Code, Name, GroupCode) VALUES (4, 'ORAL', 1), (5, 'Oral', 2)"_s);
    EXPECT_TRUE(IsDuplicateName(state(), 0, u"ORAL"_s, u"SUBGROUP"_s, 1, 1));
    EXPECT_FALSE(IsDuplicateName(state(), 0, u"ORAL"_s, u"SUBGROUP"_s, 1, 3));
    EXPECT_FALSE(IsDuplicateName(state(), 5, u"ORAL"_s, u"SUBGROUP"_s, 2, 2)) << "the same name in group 1";
    EXPECT_TRUE(IsDuplicateName(state(), 5, u"ORAL"_s, u"SUBGROUP"_s, 2, 1)) << "moved into group 1";
}

} // namespace
} // namespace vantrel
