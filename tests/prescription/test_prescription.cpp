#include "core/Startup.h"
#include "prescription/BrandList.h"
#include "prescription/Safety.h"
#include "prescription/Staging.h"
#include "tests/support/Fakes.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// Stands in for the brand substitutes list: the brand chosen there is left in the shared brand codes.
class ChooserScreen : public Screen {
public:
    explicit ChooserScreen(Process& process) : Screen(process, u"Substitute"_s) {}
};

const bool chooserRegistered = [] {
    if (!ScreenRegistry::instance().has(u"Substitute"_s))
        ScreenRegistry::instance().add(u"Substitute"_s, [](Process& process) {
            return std::unique_ptr<Screen>(new ChooserScreen(process));
        });
    return true;
}();

class PrescriptionTest : public ::testing::Test {
protected:
    void SetUp() override {
        QFile world(QStringLiteral(VANTREL_SOURCE_DIR) + u"/tests/scenarios/prescription_world.sql"_s);
        ASSERT_TRUE(world.open(QIODevice::ReadOnly));
        QString statement;
        for (const QString& line : QString::fromUtf8(world.readAll()).split(u'\n')) {
            if (line.trimmed().startsWith(u"--"_s))
                continue;
            statement += line + u'\n';
            if (line.trimmed().endsWith(u';')) {
                w.sql(statement);
                statement.clear();
            }
        }
        w.sql(u"UPDATE Control SET AllowDelPad = 1, AllowUpdPad = 1, ChkSafety = 1"_s);
        SetPaths(w.process.state, w.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(w.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(w.process));
    }
    Database& db() { return w.process.state.OpenDb; }
    void run(const QString& statement) {
        ASSERT_GE(db().execute(statement), 0) << db().lastError().toStdString();
    }
    Screen& open() {
        Screen* screen = w.process.open(u"FrmPrescription"_s);
        EXPECT_TRUE(screen);
        return *screen;
    }
    void click(Screen& s, int button) { s.click(*s.control(u"CmdCtlButton"_s, button)); }
    // A new prescription for the first patient with one staged brand line.
    void startNew(Screen& s) {
        click(s, 4);
        s.choose(*qobject_cast<ComboBox*>(s.control(u"Cmb_Patient"_s)), {u"RAM KUMAR"_s});
        run(u"INSERT INTO TmpDet (Code, Name, DsgFmCode, DsgFmName, Dosage) VALUES (3, 'BRUFEN', 1, "
            u"'TABLET', "
            "'1 TAB BD')"_s);
    }
    test::TestWorld w;
};

TEST_F(PrescriptionTest, EveryCombinationOfFiltersIsAStatementTheEngineRuns) {
    for (int mask = 0; mask < 16; ++mask) {
        BrandFilters f;
        f.drug = mask & 1 ? 1 : 0;
        f.indication = mask & 2 ? 2 : 0;
        f.group = mask & 4 ? 1 : 0;
        f.company = mask & 8 ? 3 : 0;
        const Statement s = BrandListStatement(f);
        EXPECT_EQ(s.sql.count(u"GenericPharma E"_s), f.drug || f.indication ? 1 : 0) << mask;
        EXPECT_EQ(s.params.size(), (mask & 1) + ((mask >> 1) & 1) + ((mask >> 2) & 1) + ((mask >> 3) & 1));
        const Rows rows = db().select(s.sql, s.params);
        EXPECT_TRUE(db().lastError().isEmpty() || !rows.empty()) << db().lastError().toStdString();
    }
    // Paracetamol with pain: the brands holding it, each form once.
    BrandFilters both;
    both.drug = 1;
    both.indication = 2;
    QStringList names;
    const Statement s = BrandListStatement(both);
    for (const Row& row : db().select(s.sql, s.params))
        names << row.text(u"Name"_s) + u"/"_s + row.text(u"DsgFmName"_s);
    names.sort();
    EXPECT_EQ(names,
              (QStringList{u"CALPOL/SYRUP"_s, u"COMBIFLAM/TABLET"_s, u"CROCIN/SYRUP"_s, u"CROCIN/TABLET"_s}));
    // Pain alone reaches a brand through any of its drugs.
    BrandFilters pain;
    pain.indication = 2;
    const Statement p = BrandListStatement(pain);
    EXPECT_EQ(db().select(p.sql, p.params).size(), 6u);
}

TEST_F(PrescriptionTest, TheSearchTextNamesEachFilterOrItsAbsence) {
    EXPECT_EQ(BrandSearchText({u"PARACETAMOL"_s, {}, {}, {}}),
              u"Brand List will now Display List of Brands having 'Paracetamol' in Formulation, For All Drug "
              "Indications And Belonging to Any Group And Manufactured By Any Manufacturer."_s);
    EXPECT_EQ(BrandSearchText({{}, u"FEVER"_s, u"ANALGESICS"_s, u"SUN PHARMA"_s}),
              u"Brand List will now Display List of Brands with All Drugs And 'Fever' As Drug Indication And "
              "Belonging to 'Analgesics' Group And Manufactured By 'Sun Pharma'."_s);
    EXPECT_EQ(BrandSearchText({{}, {}, {}, u"GSK"_s}),
              u"Brand List will now Display List of Brands with All Drugs And For All Drug Indications And "
              "Belonging to Any Group And Manufactured By 'Gsk'."_s);
}

TEST_F(PrescriptionTest, HistoryIsStagedFromAPatientAVisitOrAPrescriptionWithItsWords) {
    run(u"INSERT INTO PatientAllergy (PatientCode, AllergyCode, AllergyType, AgeCode, Notes) VALUES "
        "(1, 1, 'A', 1, ''), (1, 1, 'D', 2, 'RASH'), (1, 2, 'G', 1, '')"_s);
    run(u"INSERT INTO VisitFamily (VisitNo, DiseasesCode, RelationCode, AgeCode) VALUES ('V1', 2, 1, 1)"_s);
    run(u"INSERT INTO PresPast (PrescriptionCode, PastCode, PastType, AgeCode) VALUES (4, 1, 'D', 2)"_s);

    ASSERT_TRUE(LoadPatientHistoryToStaging(db(), 1, u"P"_s));
    EXPECT_EQ(db().scalar(u"SELECT GROUP_CONCAT(Type || ':' || AllergyName || ':' || AgeName, ',') FROM "
                          "TmpPresAllergy"_s)
                  .toString(),
              u"Allergies:DUST:10 YEARS,Drug Names:PARACETAMOL:CHILDHOOD,Drug Groups:NSAIDS:10 YEARS"_s);
    ASSERT_TRUE(LoadPatientHistoryToStaging(db(), u"V1"_s, u"V"_s));
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM TmpPresAllergy"_s).toInt(), 0);
    EXPECT_EQ(db().scalar(u"SELECT DiseasesName || ':' || RelationName FROM TmpPresFamily"_s).toString(),
              u"ASTHMA:FATHER"_s);
    ASSERT_TRUE(LoadPatientHistoryToStaging(db(), 4, u"D"_s));
    EXPECT_EQ(db().scalar(u"SELECT Type || ':' || PastName FROM TmpPresPast"_s).toString(),
              u"Diseases:PEPTIC ULCER"_s);
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM TmpPresFamily"_s).toInt(), 0);
    ASSERT_TRUE(LoadPatientHistoryToStaging(db(), 0, u"P"_s));
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM TmpPresPast"_s).toInt(), 0);
}

TEST_F(PrescriptionTest, AFailedSaveWritesNothingAndLeavesTheDoctorInTheEdit) {
    Screen& s = open();
    startNew(s);
    run(u"CREATE TRIGGER Refuse BEFORE INSERT ON PresDet BEGIN SELECT RAISE(ABORT, 'disk full'); END"_s);
    w.prompter.messages.clear();
    click(s, 8);
    ASSERT_EQ(w.prompter.messages.size(), 1);
    // The engine's number of the error and its words.
    EXPECT_TRUE(QRegularExpression(u"^stop: Error While Saving Prescription\\. \\d+ - disk full"_s)
                    .match(w.prompter.messages.front())
                    .hasMatch())
        << w.prompter.messages.front().toStdString();
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM PresHead"_s).toInt(), 0);
    EXPECT_EQ(db().scalar(u"SELECT Last_No FROM Patient WHERE Code = 1"_s).toString(), QString());
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM TmpDet"_s).toInt(), 1);
    EXPECT_EQ(s.mask(u"CmdCtlButton"_s), u"000000001100"_s);

    run(u"DROP TRIGGER Refuse"_s);
    w.prompter.messages.clear();
    click(s, 8);
    EXPECT_EQ(w.prompter.messages, QStringList{u"info: Prescription Added."_s});
    EXPECT_EQ(db().scalar(u"SELECT GenericCode FROM PresDet WHERE Code = 1"_s).toInt(), 3);
}

TEST_F(PrescriptionTest, AFailedDeleteKeepsEveryRowOfThePrescription) {
    run(u"INSERT INTO PresHead (Code, PresDate, PatientCode) VALUES (5, '2026-01-10', 1)"_s);
    run(u"INSERT INTO PresDet (Code, GenericCode, DsgFmCode) VALUES (5, 3, 1)"_s);
    run(u"INSERT INTO PresComplaint (PrescriptionCode, ComplaintCode) VALUES (5, 1)"_s);
    Screen& s = open();
    run(u"CREATE TRIGGER Refuse BEFORE DELETE ON PresHead BEGIN SELECT RAISE(ABORT, 'locked'); END"_s);
    w.prompter.answers = {true};
    w.prompter.messages.clear();
    click(s, 6);
    ASSERT_EQ(w.prompter.messages.size(), 2);
    EXPECT_TRUE(
        QRegularExpression(u"^stop: Error while Deleting the Selected Prescription\\. \\d+ - locked"_s)
            .match(w.prompter.messages.at(1))
            .hasMatch())
        << w.prompter.messages.at(1).toStdString();
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM PresDet"_s).toInt(), 1);
    EXPECT_EQ(db().scalar(u"SELECT COUNT(*) FROM PresComplaint"_s).toInt(), 1);
    EXPECT_EQ(s.mask(u"CmdCtlButton"_s), u"111111110011"_s);
}

TEST_F(PrescriptionTest, AnEditKeepsObservationsOfExaminationsNoLongerListed) {
    run(u"INSERT INTO PresHead (Code, PresDate, PatientCode) VALUES (5, '2026-01-10', 1)"_s);
    run(u"INSERT INTO PresPhysical (PrescriptionCode, PhysicalCode, Observation) VALUES (5, 1, 'PALE'), "
        "(5, 2, 'NORMAL')"_s);
    Screen& s = open();
    click(s, 5);
    w.process.state.PhysicalList = {{1, u"PALLOR"_s, u"  NONE  "_s}, {3, u"ICTERUS"_s, QString()}};
    click(s, 8);
    EXPECT_EQ(db().scalar(u"SELECT GROUP_CONCAT(PhysicalCode || ':' || Observation, ',') FROM (SELECT * FROM "
                          "PresPhysical ORDER BY PhysicalCode)"_s)
                  .toString(),
              u"1:NONE,2:NORMAL,3:"_s);
}

TEST_F(PrescriptionTest, ASubstituteTakesTheLinesPlaceOnlyWhenItPassesTheChecks) {
    ASSERT_TRUE(chooserRegistered);
    Screen& s = open();
    click(s, 4);
    s.choose(*qobject_cast<ComboBox*>(s.control(u"Cmb_Patient"_s)), {u"SITA DEVI"_s});
    auto& grid = *qobject_cast<Grid*>(s.control(u"GrdBrand"_s));
    s.moveFocus(&grid);
    grid.goToNewLine();
    ASSERT_TRUE(grid.pick(1, {u"AUGMENTIN"_s}));
    ASSERT_TRUE(grid.commit());
    const auto substitute = [this](qint64 brand) {
        w.host.modal[u"Substitute"_s].push_back([brand](Screen& chooser) {
            chooser.state().CurrentBrandCode = brand;
            chooser.state().CurrentDsgFmCode = 1;
        });
    };

    // Moxclav has the same drugs; the line being changed is not its own substitute, so nothing is asked.
    w.prompter.messages.clear();
    substitute(5);
    s.click(*s.control(u"CmdBrand"_s, 2));
    EXPECT_EQ(w.prompter.messages, QStringList{});
    EXPECT_EQ(grid.text(u"Name"_s), u"MOXCLAV"_s);
    EXPECT_EQ(w.process.state.CurrentBrandCode, 5);
    ASSERT_TRUE(grid.commit());
    EXPECT_EQ(db().scalar(u"SELECT Code FROM TmpDet"_s).toInt(), 5);

    // In pregnancy Brufen is asked about, as a fresh query; a No keeps the line as it was.
    s.click(*s.control(u"ChkSafety"_s, 1));
    w.prompter.messages.clear();
    substitute(3);
    s.click(*s.control(u"CmdBrand"_s, 2));
    EXPECT_EQ(w.prompter.messages,
              QStringList{u"ask: BRUFEN is 'Un-Safe' in Pregnancy. Want to Continue ?"_s});
    EXPECT_EQ(grid.text(u"Name"_s), u"MOXCLAV"_s);
    EXPECT_EQ(w.process.state.CurrentBrandCode, 5);

    // A chooser that comes back with nothing keeps the line.
    w.prompter.messages.clear();
    substitute(0);
    s.click(*s.control(u"CmdBrand"_s, 2));
    EXPECT_EQ(w.prompter.messages, QStringList{});
    EXPECT_EQ(grid.text(u"Name"_s), u"MOXCLAV"_s);
}

TEST(SafetyClassTest, TheWorstDrugNamesTheClassAndTheCountsNameTheDrugs) {
    const auto verdict = [](const BrandSafety& rows) { return ClassifyBrandSafety(rows, 1); };
    // Three drugs: one unsafe, one not used, one safe.
    auto mixed = verdict({{1, 2, 1}, {1, 5, 1}, {1, 1, 1}, {2, 2, 3}});
    EXPECT_EQ(mixed.cls, SafetyClass::Unsafe);
    EXPECT_EQ(mixed.caption, u"Un-Safe"_s);
    EXPECT_EQ(mixed.text, u"Un-Safe in One Drug And Not Used in One Drug"_s);
    // A brand of one drug reads "All", the test for all coming first.
    EXPECT_EQ(verdict({{1, 2, 1}}).text, u"Un-Safe in All Drugs"_s);
    EXPECT_EQ(verdict({{1, 5, 2}, {1, 3, 1}}).text, u"Not Used in 2 Drugs"_s);
    auto unknown = verdict({{1, 6, 3}});
    EXPECT_EQ(unknown.cls, SafetyClass::Uncertain);
    EXPECT_EQ(unknown.text, u"Not Known in All Drugs"_s);
    EXPECT_EQ(verdict({{1, 4, 2}, {1, 1, 1}}).text, u"Carefull Approach in 2 Drugs"_s);
    EXPECT_EQ(verdict({{1, 1, 2}}).caption, u"Safe"_s);
    EXPECT_EQ(verdict({{1, 1, 2}}).text, QString());
    auto none = verdict({{2, 2, 1}});
    EXPECT_EQ(none.cls, SafetyClass::None);
    EXPECT_EQ(none.caption, u"Not Available"_s);
    for (const auto& v : {mixed, unknown, none, verdict({{1, 4, 1}}), verdict({{1, 1, 1}})})
        EXPECT_EQ(SafetyClassOfCaption(v.caption), v.cls);
    // Panel rows: Paediatrics, Elderly, Pregnancy, Lactation, Liver, Renal, Pulmonary.
    EXPECT_EQ((std::vector<int>{SafetyPanelRow(1), SafetyPanelRow(2), SafetyPanelRow(3), SafetyPanelRow(4),
                                SafetyPanelRow(5), SafetyPanelRow(6), SafetyPanelRow(7)}),
              (std::vector<int>{2, 3, 0, 1, 5, 4, 6}));
}

TEST_F(PrescriptionTest, TheSafetyViewerStepsThroughABrandsDrugs) {
    run(u"UPDATE DrugSafety SET Remark = 'AVOID IN' || char(10) || 'THIRD TRIMESTER' WHERE PharmaCode = 2 "
        "AND SafeFieldCode = 1"_s);
    w.host.modal[u"FrmBrandSafety"_s].push_back([](Screen& s) {
        EXPECT_EQ(s.caption(), u"Brand Safety Parameters"_s);
        EXPECT_EQ(s.control(u"CmdQuit"_s)->caption(), u"&Quit from Brand Safety Parameters"_s);
        EXPECT_EQ(s.control(u"LblBrandTitle"_s)->caption(), u" Safety Parameters of Brand [COMBIFLAM] "_s);
        EXPECT_FALSE(s.control(u"LblDrugSafe1"_s, 2)->visible());
        s.click(*s.control(u"LblDrug"_s));
        EXPECT_TRUE(s.control(u"LblDrugSafe1"_s, 2)->visible());
        EXPECT_FALSE(s.control(u"LblBrandSafe1"_s, 2)->visible());
        EXPECT_EQ(s.control(u"LblDrugTitle"_s)->caption(), u" Safety Parameters of Drug [IBUPROFEN] "_s);
        EXPECT_EQ(qobject_cast<TextBox*>(s.control(u"TxtDrugSafety"_s, 2))->text(),
                  u"AVOID IN THIRD TRIMESTER"_s);
        EXPECT_FALSE(s.control(u"CmdPrevDrug"_s)->enabled());
        EXPECT_TRUE(s.control(u"CmdNextDrug"_s)->enabled());
        s.click(*s.control(u"CmdNextDrug"_s));
        EXPECT_EQ(s.control(u"LblDrugTitle"_s)->caption(), u" Safety Parameters of Drug [PARACETAMOL] "_s);
        EXPECT_EQ(s.control(u"LblDrugSafe1"_s, 4)->caption(), u"Carefull"_s);
        EXPECT_TRUE(s.control(u"CmdPrevDrug"_s)->enabled());
        EXPECT_FALSE(s.control(u"CmdNextDrug"_s)->enabled());
        s.click(*s.control(u"LblBrand"_s));
        EXPECT_TRUE(s.control(u"LblBrandSafe1"_s, 2)->visible());
    });
    w.process.openModal(u"FrmBrandSafety"_s, [](Screen& s) {
        s.inputs.insert(u"ShowSafetyFor"_s, false);
        s.inputs.insert(u"SafeBrandCode"_s, 9);
    });
    ASSERT_EQ(w.host.shown.count(u"FrmBrandSafety"_s), 1);

    // One drug alone: not used in pregnancy reads in the colours of unsafe.
    w.host.modal[u"FrmBrandSafety"_s].push_back([](Screen& s) {
        EXPECT_EQ(s.caption(), u"Drug Safety Parameters"_s);
        EXPECT_EQ(s.control(u"CmdQuit"_s)->caption(), u"&Quit from Drug Safety Parameters"_s);
        EXPECT_EQ(s.control(u"LblDrugTitle"_s)->caption(), u" Drug Safety Parameters "_s);
        EXPECT_FALSE(s.control(u"LblBrandSafe1"_s, 2)->visible());
        EXPECT_FALSE(s.control(u"CmdNextDrug"_s)->visible());
        auto* pregnancy = qobject_cast<Label*>(s.control(u"LblDrugSafe1"_s, 2));
        EXPECT_EQ(pregnancy->caption(), u"Not Used"_s);
        EXPECT_EQ(pregnancy->tone(), Tone::Unsafe);
        EXPECT_EQ(qobject_cast<TextBox*>(s.control(u"TxtDrugSafety"_s, 2))->text(), u"TERATOGENIC"_s);
    });
    w.process.openModal(u"FrmBrandSafety"_s, [](Screen& s) {
        s.inputs.insert(u"ShowSafetyFor"_s, true);
        s.inputs.insert(u"SafeDrugCode"_s, 5);
    });
    EXPECT_EQ(w.host.shown.count(u"FrmBrandSafety"_s), 2);
}

} // namespace
} // namespace vantrel
