#include "core/Launcher.h"

#include <QFile>
#include <QStringList>
#include <QTextStream>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vantrel {
namespace {

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

TEST(Launcher, CertificatesOpenTheirTemplatesOnlyUnderTheDocumentTemplates) {
    const LauncherTarget templ = LauncherThirdLevel(u"DOCUMENT TEMPLATES"_s, u"FITNESS CERTIFICATE"_s);
    EXPECT_EQ(templ.screen, u"FrmTemplate"_s);
    EXPECT_EQ(templ.mode, u"Fitness Certificate"_s);
    const LauncherTarget form = LauncherThirdLevel(u"CERTIFICATES / REPORTS"_s, u"FITNESS CERTIFICATE"_s);
    EXPECT_EQ(form.screen, u"FrmMedical"_s);
    EXPECT_EQ(form.mode, u"Fitness Certificate"_s);
    EXPECT_EQ(LauncherThirdLevel(u"CERTIFICATES / REPORTS"_s, u"HEALTH / FITNESS CERTIFICATE"_s).screen,
              u"FrmHealth"_s);
    EXPECT_EQ(LauncherThirdLevel(u"DOCUMENT TEMPLATES"_s, u"INVESTIGATION REPORTS"_s).screen,
              u"FrmInvTemplate"_s);
    EXPECT_EQ(LauncherThirdLevel(u"CERTIFICATES / REPORTS"_s, u"INVESTIGATION REPORTS"_s).screen,
              u"FrmInvPrint"_s);
    EXPECT_TRUE(LauncherThirdLevel(u"CERTIFICATES / REPORTS"_s, u"PAYMENT RECEIPTS"_s).screen.isEmpty());
}

TEST(Launcher, TheSameReportTextGroupsByTheReportAboveIt) {
    const struct {
        QString under, option, screen, mode;
    } cases[] = {
        {u"VANTREL REPORTS"_s, u"BRAND WISE GROUPING"_s, u"FrmPadPrint"_s, u"Brands [Trade Name]"_s},
        {u"NEXT CHECKUP REPORTS"_s, u"DATE WISE GROUPING"_s, u"FrmCheckUpPrint"_s, u"Date"_s},
        {u"PATIENT INVESTIGATION REPORTS"_s, u"PRESCRIPTION WISE GROUPING"_s, u"FrmInvestigationPrint"_s,
         u"Prescription"_s},
        {u"IMMUNIZATION REPORTS"_s, u"RESCHEDULED SCHEDULES"_s, u"FrmSchSummary"_s,
         u"Re-Scheduled Schedule(s)"_s},
        {u"VACCINE SUMMARY REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmSchVaccine"_s, u"Consolidated"_s},
        {u"SUMMARISED DAILY REPORTS"_s, u"PAYMENT BY CHEQUE/DRAFT"_s, u"FrmDailyPrint"_s,
         u"By Cheque / Draft"_s},
        {u"BRAND DETAILS REPORTS"_s, u"GROUP NAME WISE GROUPING"_s, u"FrmBrandPrint"_s, u"Group Wise"_s},
        {u"PATIENT MASTERS"_s, u"RELATIONSHIP MASTER"_s, u"Mst_Allergy"_s, u"R"_s},
        {u"ALLERGY MASTERS"_s, u"SUB-ALLERGIES MASTER"_s, u"Mst_Allergy"_s, u"S"_s},
    };
    for (const auto& c : cases) {
        const LauncherTarget t = LauncherThirdLevel(c.under, c.option);
        EXPECT_EQ(t.screen, c.screen) << c.option.toStdString();
        EXPECT_EQ(t.mode, c.mode) << c.option.toStdString();
    }
    EXPECT_TRUE(LauncherThirdLevel(u"VANTREL REPORTS"_s, u"COMPANY WISE GROUPING"_s).screen.isEmpty());
}

TEST(Launcher, TheFrontDeskHasItsOwnParametersCardsAndVisitsAndTheLookUpsAreViews) {
    EXPECT_EQ(LauncherSecondLevel(1, u"CONTROL PARAMETERS"_s).screen, u"ControlForm"_s);
    EXPECT_EQ(LauncherSecondLevel(2, u"CONTROL PARAMETERS"_s).screen, u"ControlOPD"_s);
    EXPECT_TRUE(LauncherSecondLevel(1, u"OPD CARDS"_s).screen.isEmpty());
    EXPECT_EQ(LauncherSecondLevel(2, u"OPD CARD QUERY"_s).screen, u"Find_OPD"_s);
    EXPECT_TRUE(LauncherSecondLevel(2, u"VISIT QUERY"_s).query);
    EXPECT_TRUE(LauncherSecondLevel(1, u"PRESCRIBER QUERY"_s).query);
    EXPECT_FALSE(LauncherSecondLevel(1, u"MASTERS QUERY"_s).query);
    EXPECT_EQ(LauncherSecondLevel(2, u"city master"_s).screen, u"Mst_City"_s);
}

} // namespace
} // namespace vantrel
