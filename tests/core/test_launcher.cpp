#include "core/Launcher.h"
#include "core/Startup.h"
#include "tests/support/Fakes.h"

#include <QFile>
#include <QStringList>
#include <QTextStream>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

// What each second-level text opens, as the clinic's documentation lists it (the help is not a screen).
const QString kSecondLevel = uR"(CITY MASTER|Mst_City
SPONSOR / PAYOR|Mst_Sponsor
COMPANY / EMPLOYER|Mst_Employer
PHYSICAL EXAMINATIONS|Mst_Physical
VACCINATION MASTERS|FrmMst_Vaccination
PATIENT DETAILS|Mst_Patient
PRESCRIBER DETAILS|Mst_Doctor
SERIES MAINTENANCE|Mst_Series
IMMUNIZATION SCHEDULES|FrmSchedule
BRAND DETAILS|FrmGenericName
DISEASE DETAILS|Mst_Disease
MONOGRAPHS EDITOR|FrmMonoGraph
HANDOUTS EDITOR|FrmListHandOuts
DISEASE MAINTENANCE|FrmDiseaseLink
VANTREL|FrmPrescription
PAYMENT RECEIPT|FrmReceipt
IMMUNIZATION|FrmImmunization
PATIENT HISTORY|FrmHistory
SNAPSHOT VIEWER|FrmSnapCompare
DRUG MONOGRAPHS|FrmLib
CHILD GROWTH STATUS|FrmGrowth
HANDOUTS / DOCUMENTS|FrmHandOut
CORONARY RISK PREDICTION|FrmRisk
READYMADE PRESCRIPTIONS|FrmReadyMade
PRESCRIPTION(S) CHECK-LIST|FrmCheckList
IMMUNIZATION REMINDERS|FrmSchReminder
PRESCRIBER DETAILS REPORTS|FrmPrescriberPrint
PATIENT DETAILS REPORTS|FrmPatientPrint
DRUG DETAILS REPORTS|FrmPharmaPrint
MASTER REPORTS|FrmMastersList
DRUG QUERY|Find_Pharmaname
BRAND QUERY|Find_Genericname
PATIENT QUERY|Find_Patient
MASTERS QUERY|FrmMasterQry
PRESCRIBER QUERY|Find_Doctor
VANTREL QUERY|Find_Prescription
PATIENT INVESTIGATIONS QUERY|FrmInvQuery
SUBSTITUTE / INTERACTION QUERY|FrmInteraction
REPAIR DATABASE|FrmRepair
BACKUP DATABASE|FrmBackUp
RESTORE DATABASE|FrmReStore
COMPACT DATABASE|FrmCompact
APPOINTMENTS / TASK DIARY|FrmAppoint
MESSAGE SCHEDULER|Organisor
CONTROL PARAMETERS|ControlForm
PRESCRIPTION DISPOSAL|FrmDelete
PRESCRIPTION RENUMBERING|FrmReNumbering
KEY FEATURES|FrmFeature
CALENDAR|FrmCalendar
CALCULATOR|Calculator
ABOUT VANTREL 3.0|frmAbout)"_s;

// What each third-level text opens and the mode it hands over: "any" second level, any "other" than the
// document templates, or only the one named.
const QString kThirdLevel = uR"(any|CONTRA INDICATION MASTER|Mst_Contra|
any|INDICATION MASTER|Mst_Indication|
any|INTERACTION TYPES MASTER|Mst_Interaction|
any|SIDE EFFECT MASTER|Mst_SideEffect|
any|SPL. PRECAUTION MASTER|Mst_SpecialCare|
any|DRUG GROUP MASTER|Mst_DrugGroup|
any|DOSAGE FORM MASTER|Mst_DosageForm|
any|MANUFACTURER MASTER|Mst_Company|
any|GROUP MASTER|Mst_Group|
any|SUB GROUP MASTER|Mst_SubGroup|
any|OCCUPATIONS MASTER|Mst_Allergy|O
any|RELATIONSHIP MASTER|Mst_Allergy|R
any|PERSONAL DETAILS MASTER|Mst_Allergy|P
any|ALLERGY TYPES MASTER|Mst_Allergy|T
any|ALLERGIES MASTER|Mst_Allergy|A
any|SUB-ALLERGIES MASTER|Mst_Allergy|S
any|COMPLAINTS MASTER|Mst_Complaints|
any|DOSAGE REMARKS|Mst_DsgRemarks|
any|DOSAGE SYMBOLS|Mst_Symbols|
any|PROCEDURES MASTER|Mst_Surgery|
any|OPD DEPARTMENTS|Mst_Department|
any|INVESTIGATION CATEGORIES|Mst_InvCategories|
any|INVESTIGATION PROFILES|Mst_InvProfiles|
any|INVESTIGATIONS|Mst_Investigation|
any|PROFILE MAINTENANCE|FrmInvProfiles|
any|DRUGS MASTER|FrmPharmaName|
any|DRUGS GROUPING|FrmPharmaGroup|
DOCUMENT TEMPLATES|FITNESS CERTIFICATE|FrmTemplate|Fitness Certificate
other|FITNESS CERTIFICATE|FrmMedical|Fitness Certificate
DOCUMENT TEMPLATES|HEALTH / FITNESS CERTIFICATE|FrmTemplate|Health Certificate
other|HEALTH / FITNESS CERTIFICATE|FrmHealth|
DOCUMENT TEMPLATES|MEDICAL CERTIFICATE|FrmTemplate|Medical Certificate
other|MEDICAL CERTIFICATE|FrmMedical|Medical Certificate
DOCUMENT TEMPLATES|INVESTIGATION REPORTS|FrmInvTemplate|
other|INVESTIGATION REPORTS|FrmInvPrint|
DOCUMENT TEMPLATES|PAYMENT RECEIPTS|FrmTemplate|Receipt Series Templates
SUMMARISED DAILY REPORTS|CONSOLIDATED REPORT|FrmDailyPrint|Consolidated
SUMMARISED DAILY REPORTS|PAYMENT BY CASH|FrmDailyPrint|By Cash
SUMMARISED DAILY REPORTS|PAYMENT BY CHEQUE/DRAFT|FrmDailyPrint|By Cheque / Draft
SUMMARISED DAILY REPORTS|PAYMENT ON CREDIT|FrmDailyPrint|On Credit
IMMUNIZATION REPORTS|CONSOLIDATED REPORT|FrmSchSummary|Consolidated
IMMUNIZATION REPORTS|ACTIVE SCHEDULES|FrmSchSummary|Active Schedule(s)
IMMUNIZATION REPORTS|CLOSED SCHEDULES|FrmSchSummary|Closed Schedule(s)
IMMUNIZATION REPORTS|COMPLETED SCHEDULES|FrmSchSummary|Completed Schedule(s)
IMMUNIZATION REPORTS|RESCHEDULED SCHEDULES|FrmSchSummary|Re-Scheduled Schedule(s)
VACCINE SUMMARY REPORTS|CONSOLIDATED REPORT|FrmSchVaccine|Consolidated
VACCINE SUMMARY REPORTS|DUE VACCINES|FrmSchVaccine|Due Vaccine(s)
VACCINE SUMMARY REPORTS|SKIPPED VACCINES|FrmSchVaccine|Skipped Vaccine(s)
VACCINE SUMMARY REPORTS|VACCINATED VACCINES|FrmSchVaccine|Vaccinated Vaccine(s)
BRAND DETAILS REPORTS|CONSOLIDATED REPORT|FrmBrandPrint|Consolidated
BRAND DETAILS REPORTS|COMPANY WISE GROUPING|FrmBrandPrint|Company Wise
BRAND DETAILS REPORTS|GROUP NAME WISE GROUPING|FrmBrandPrint|Group Wise
VANTREL REPORTS|CONSOLIDATED REPORT|FrmPadPrint|Consolidated
VANTREL REPORTS|DATE WISE GROUPING|FrmPadPrint|Date
VANTREL REPORTS|PATIENT WISE GROUPING|FrmPadPrint|Patient
VANTREL REPORTS|BRAND WISE GROUPING|FrmPadPrint|Brands [Trade Name]
VANTREL REPORTS|DISEASES WISE GROUPING|FrmPadPrint|Disease
VANTREL REPORTS|PROCEDURE WISE GROUPING|FrmPadPrint|Procedure
NEXT CHECKUP REPORTS|CONSOLIDATED REPORT|FrmCheckUpPrint|Consolidated
NEXT CHECKUP REPORTS|DATE WISE GROUPING|FrmCheckUpPrint|Date
NEXT CHECKUP REPORTS|PATIENT WISE GROUPING|FrmCheckUpPrint|Patient
NEXT CHECKUP REPORTS|DISEASES WISE GROUPING|FrmCheckUpPrint|Disease
NEXT CHECKUP REPORTS|PROCEDURE WISE GROUPING|FrmCheckUpPrint|Procedure
PATIENT INVESTIGATION REPORTS|CONSOLIDATED REPORT|FrmInvestigationPrint|Consolidated
PATIENT INVESTIGATION REPORTS|DATE WISE GROUPING|FrmInvestigationPrint|Date
PATIENT INVESTIGATION REPORTS|PATIENT WISE GROUPING|FrmInvestigationPrint|Patient
PATIENT INVESTIGATION REPORTS|INVESTIGATION WISE GROUPING|FrmInvestigationPrint|Investigation
PATIENT INVESTIGATION REPORTS|PRESCRIPTION WISE GROUPING|FrmInvestigationPrint|Prescription)"_s;

std::vector<QStringList> TableRows(const QString& table) {
    std::vector<QStringList> rows;
    for (const QString& line : table.split(u'\n', Qt::SkipEmptyParts))
        rows.push_back(line.split(u'|'));
    return rows;
}

TEST(LauncherTable, EverySecondLevelTextOpensItsScreenInBothApplications) {
    const auto rows = TableRows(kSecondLevel);
    ASSERT_EQ(rows.size(), 51u);
    const QStringList frontDeskOwn = {u"CONTROL PARAMETERS"_s};
    for (const QStringList& row : rows) {
        const LauncherTarget main = LauncherSecondLevel(1, row[0]);
        EXPECT_EQ(main.screen, row[1]) << row[0].toStdString();
        EXPECT_TRUE(main.mode.isEmpty()) << row[0].toStdString();
        if (!frontDeskOwn.contains(row[0])) {
            EXPECT_EQ(LauncherSecondLevel(2, row[0]).screen, row[1]) << row[0].toStdString();
        }
    }
    EXPECT_EQ(LauncherSecondLevel(1, u"Patient Details "_s).screen, u"Mst_Patient"_s)
        << "the text is taken in capitals, without the blanks around it";
    for (const QString& text : {u"HELP CONTENTS"_s, u"HELP INDEX"_s, u"DENGUE"_s, u"CRYSTAL BALL"_s})
        EXPECT_TRUE(LauncherSecondLevel(1, text).screen.isEmpty()) << text.toStdString();
}

TEST(LauncherTable, EveryThirdLevelTextOpensItsScreenWithItsMode) {
    const auto rows = TableRows(kThirdLevel);
    ASSERT_EQ(rows.size(), 68u);
    const QString templates = u"DOCUMENT TEMPLATES"_s;
    QStringList withOther;
    for (const QStringList& row : rows) {
        if (row[0] == u"other"_s)
            withOther.append(row[1]);
    }
    for (const QStringList& row : rows) {
        const QString& under = row[0];
        QStringList parents;
        if (under == u"any"_s)
            parents = {u"PRESCRIPTION MASTERS"_s, u"DRUG MASTERS"_s, templates, u"VANTREL REPORTS"_s};
        else if (under == u"other"_s)
            parents = {u"CERTIFICATES / REPORTS"_s, u"PATIENT MASTERS"_s, u"VANTREL REPORTS"_s};
        else
            parents = {under};
        for (const QString& parent : parents) {
            const LauncherTarget t = LauncherThirdLevel(parent, row[1]);
            EXPECT_EQ(t.screen, row[2]) << parent.toStdString() << " / " << row[1].toStdString();
            EXPECT_EQ(t.mode, row[3]) << parent.toStdString() << " / " << row[1].toStdString();
        }
        // A text bound to one second level opens nothing under another, unless it has an entry for the
        // others.
        if (under != u"any"_s && under != u"other"_s && !withOther.contains(row[1])) {
            EXPECT_TRUE(LauncherThirdLevel(u"MASTER REPORTS"_s, row[1]).screen.isEmpty())
                << "under MASTER REPORTS: " << row[1].toStdString();
        }
    }
}

// The rows of a delivered table, by column name.
std::vector<std::map<QString, QString>> DeliveredRows(const QString& table) {
    QFile file(QStringLiteral(VANTREL_SOURCE_DIR) + u"/data/"_s + table + u".tsv"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << table.toStdString();
    QTextStream in(&file);
    QStringList header;
    std::vector<std::map<QString, QString>> rows;
    while (!in.atEnd()) {
        const QString line = in.readLine();
        if (line.startsWith(u'#') || line.isEmpty())
            continue;
        const QStringList fields = line.split(u'\t');
        if (header.isEmpty()) {
            header = fields;
            continue;
        }
        std::map<QString, QString> row;
        for (int i = 0; i < header.size(); ++i)
            row[header[i]] = fields.value(i);
        rows.push_back(row);
    }
    return rows;
}

// Options that open nothing of their own: headings of third-level lists, the help, the topics, the exit.
bool OpensNothingItself(const std::map<QString, QString>& row,
                        const std::vector<std::map<QString, QString>>& subs) {
    const QString main = row.at(u"MainMenuNo"_s);
    if (main == u"10"_s || row.at(u"MenuName"_s).startsWith(u"HELP "_s))
        return true;
    for (const auto& sub : subs) {
        if (sub.at(u"MainMenuNo"_s) == main && sub.at(u"MenuNo"_s) == row.at(u"MenuNo"_s))
            return true;
    }
    return false;
}
TEST(Launcher, EveryDeliveredOptionOfBothApplicationsOpensAScreen) {
    for (const auto& [runMode, level2, level3] :
         {std::tuple{1, u"Level2"_s, u"Level3"_s}, std::tuple{2, u"OPDLevel2"_s, u"OPDLevel3"_s}}) {
        const auto options = DeliveredRows(level2);
        const auto subs = DeliveredRows(level3);
        ASSERT_FALSE(options.empty());
        for (const auto& row : options) {
            if (OpensNothingItself(row, subs))
                continue;
            EXPECT_FALSE(LauncherSecondLevel(runMode, row.at(u"MenuName"_s)).screen.isEmpty())
                << level2.toStdString() << ": " << row.at(u"MenuName"_s).toStdString();
        }
        for (const auto& sub : subs) {
            QString parent;
            for (const auto& row : options) {
                if (row.at(u"MainMenuNo"_s) == sub.at(u"MainMenuNo"_s) &&
                    row.at(u"MenuNo"_s) == sub.at(u"MenuNo"_s))
                    parent = row.at(u"MenuName"_s);
            }
            EXPECT_FALSE(parent.isEmpty())
                << "a third-level option without its second level: " << sub.at(u"SubMenu"_s).toStdString();
            EXPECT_FALSE(LauncherThirdLevel(parent, sub.at(u"SubMenu"_s)).screen.isEmpty())
                << level3.toStdString() << ": " << parent.toStdString() << " / "
                << sub.at(u"SubMenu"_s).toStdString();
        }
    }
}

TEST(Launcher, TheFrontDeskHasItsOwnParametersCardsAndVisitsAndTheLookUpsAreViews) {
    EXPECT_EQ(LauncherSecondLevel(1, u"CONTROL PARAMETERS"_s).screen, u"ControlForm"_s);
    EXPECT_EQ(LauncherSecondLevel(2, u"CONTROL PARAMETERS"_s).screen, u"ControlOPD"_s);
    EXPECT_TRUE(LauncherSecondLevel(1, u"OPD CARDS"_s).screen.isEmpty());
    EXPECT_EQ(LauncherSecondLevel(2, u"OPD CARDS"_s).screen, u"FrmOPDCard"_s);
    EXPECT_EQ(LauncherSecondLevel(2, u"VISITS"_s).screen, u"FrmVisit"_s);
    EXPECT_EQ(LauncherSecondLevel(2, u"OPD CARD QUERY"_s).screen, u"Find_OPD"_s);
    EXPECT_EQ(LauncherSecondLevel(2, u"VISIT QUERY"_s).screen, u"Find_Visit"_s);
    EXPECT_TRUE(LauncherSecondLevel(1, u"VISITS"_s).screen.isEmpty());
    EXPECT_TRUE(LauncherSecondLevel(2, u"VISIT QUERY"_s).query);
    EXPECT_TRUE(LauncherSecondLevel(1, u"PRESCRIBER QUERY"_s).query);
    EXPECT_FALSE(LauncherSecondLevel(1, u"MASTERS QUERY"_s).query);
    EXPECT_EQ(LauncherSecondLevel(2, u"city master"_s).screen, u"Mst_City"_s);
}

// The launcher over a small set of options, in a program folder of its own.
class LauncherScreenTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetPaths(state(), world.folder);
        QString error;
        ASSERT_TRUE(OpenDatabase(world.process, &error)) << error.toStdString();
        ASSERT_TRUE(LoadControlParameters(world.process));
        state().AppTitle = u"Vantrel 3.0 - Dr. Asha Rao"_s;
        state().OpenDb.execute(
            u"INSERT INTO Level2 (MainMenuNo, MenuNo, MenuName, MenuDesc, ShowOption, DefaultUser) VALUES "
            "(2, 1, 'CITY MASTER', 'Cities', 1, 0), (8, 1, 'HELP CONTENTS', 'Contents', 1, 0), "
            "(8, 2, 'HELP INDEX', 'Index', 1, 0)"_s);
        state().OpenDb.execute(u"INSERT INTO City (Code, Name) VALUES (1, 'AGRA')"_s);
    }
    ProcessState& state() { return world.process.state; }
    Screen& launcher() { return *world.process.find(u"Slide"_s); }
    void click(const QString& name, int index) { launcher().click(*launcher().control(name, index)); }
    test::TestWorld world;
};

TEST_F(LauncherScreenTest, TheHelpOpensOnItsContentsOrItsIndex) {
    ASSERT_TRUE(world.process.open(u"Slide"_s));
    click(u"ImgMain"_s, 7);
    click(u"LblOption"_s, 0);
    click(u"LblOption"_s, 1);
    EXPECT_EQ(world.host.help, (QStringList{state().HelpFile + u" 1"_s, state().HelpFile + u" 2"_s}));
    EXPECT_TRUE(world.prompter.messages.isEmpty()) << world.prompter.messages.join(u'\n').toStdString();
}

TEST_F(LauncherScreenTest, YesAtTheExitThanksTheUserAndLeavesThroughTheExitRoutine) {
    ASSERT_TRUE(world.process.open(u"MainForm"_s));
    Screen& slide = launcher();
    click(u"ImgMain"_s, 8);
    EXPECT_EQ(slide.control(u"LblExit"_s)->caption(), u"Sure ! You want to Exit"_s);
    click(u"LblOption"_s, 0);
    EXPECT_EQ(slide.control(u"LblExit"_s)->caption(), u"Thank You For Using Vantrel 3.0"_s);
    EXPECT_TRUE(world.host.quitCalled);
    EXPECT_TRUE(world.process.openScreens().empty());
    EXPECT_EQ(world.host.launcherResets, 0) << "leaving the program redisplays nothing";
}

TEST_F(LauncherScreenTest, TheLauncherComesBackOnlyWhenTheLastScreenOverItCloses) {
    ASSERT_TRUE(world.process.open(u"Slide"_s));
    click(u"ImgMain"_s, 1);
    click(u"LblOption"_s, 0);
    Screen* city = world.process.find(u"Mst_City"_s);
    ASSERT_NE(city, nullptr);
    Screen* company = world.process.open(u"Mst_Company"_s);
    ASSERT_NE(company, nullptr);
    const QString companyTitle = world.host.title;
    ASSERT_NE(companyTitle, state().AppTitle);

    state().ScratchSql = {u"SELECT Code, Name FROM City ORDER BY Name"_s, {}};
    world.process.openModal(u"Find"_s);
    EXPECT_EQ(world.host.launcherResets, 0) << "a dialog closing gives nothing back to the launcher";

    world.process.requestClose(*company);
    EXPECT_EQ(world.host.launcherResets, 1);
    EXPECT_EQ(world.host.title, companyTitle) << "the city master is still open over the launcher";

    world.process.requestClose(*city);
    EXPECT_EQ(world.host.launcherResets, 2);
    EXPECT_EQ(world.host.title, state().AppTitle);
    EXPECT_EQ(launcher().focus(), launcher().control(u"LblOption"_s, 0));
    EXPECT_EQ(launcher().control(u"LblHeading"_s)->caption(), u"Masters"_s);
}

} // namespace
} // namespace vantrel
