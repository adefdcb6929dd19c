#include "tests/store/DeliveredData.h"

#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using vantrel::testing::Connection;
using vantrel::testing::DeliveredDataTest;

namespace {

// A column of one table that points at the codes of another; `zeroMeansNone` when 0 stands for no row.
struct Link {
    const char* table;
    const char* column;
    const char* target;
    bool zeroMeansNone;
};

constexpr Link KnowledgeLinks[] = {
    {"GenericName", "Company", "Manufacturer", false},
    {"GenericPharma", "GenericCode", "GenericName", false},
    {"GenericPharma", "PharmaCode", "PharmaName", false},
    {"GenericDsgFm", "GenericCode", "GenericName", false},
    {"GenericDsgFm", "DsgFmCode", "DosageForm", false},
    {"GenericGroup", "GenericCode", "GenericName", false},
    {"GenericGroup", "GroupCode", "GroupName", false},
    {"GenericSubGroup", "GenericCode", "GenericName", false},
    {"GenericSubGroup", "SubGroupCode", "SubGroup", false},
    {"SubGroup", "GroupCode", "GroupName", false},
    {"Interaction", "PharmaCode", "PharmaName", false},
    {"Interaction", "PharmaCodeInt", "PharmaName", false},
    {"Interaction", "IntTypeCode", "InteractionType", false},
    {"DrugSafety", "PharmaCode", "PharmaName", false},
    {"DrugSafety", "SafeFieldCode", "SafetyPara", false},
    {"DrugSafety", "SafetyCode", "SafetyStatus", false},
    {"PharmaGroup", "PharmaCode", "PharmaName", false},
    {"PharmaGroup", "DrugGroup", "DrugGroup", false},
    {"PharmaIndication", "PharmaCode", "PharmaName", false},
    {"PharmaIndication", "IndicationCode", "Indication", false},
    {"PharmaContra", "PharmaCode", "PharmaName", false},
    {"PharmaContra", "ContraIndicationCode", "ContraIndication", false},
    {"PharmaSide", "PharmaCode", "PharmaName", false},
    {"PharmaSide", "SideEffectCode", "SideEffect", false},
    {"PharmaSpecial", "PharmaCode", "PharmaName", false},
    {"PharmaSpecial", "SpecialCode", "SpecialCare", false},
    {"Disease", "DiseaseCategory", "SafetyPara", true},
    {"DiseaseDrug", "DiseasesCode", "Disease", false},
    {"DiseaseDrug", "DrugCode", "PharmaName", false},
    {"InvDiseases", "DiseasesCode", "Disease", false},
    {"InvDiseases", "InvestigationCode", "Investigation", false},
    {"DiseaseInv", "DiseasesCode", "Disease", false},
    {"DiseaseInv", "InvestigationCode", "Investigation", false},
    {"DiseaseInv", "SafeFieldCode", "SafetyPara", false},
};

// The masters whose names the system keeps trimmed and in capitals, and unique.
constexpr const char* CapitalMasters[] = {
    "PharmaName", "GenericName", "Manufacturer", "DosageForm", "GroupName",       "SubGroup",
    "DrugGroup",  "Disease",     "Complaints",   "Surgery",    "Indication",      "ContraIndication",
    "SideEffect", "SpecialCare", "Symbols",      "DsgRemark",  "Allergies",       "AllergySub",
    "Personal",   "Occupation",  "City",         "Physical",   "InteractionType", "Investigation"};

} // namespace

// The knowledge base holds together: every link finds its row, every pair of drugs interacts both ways,
// every drug has its seven safety rows and a group, every brand a drug and a form.
TEST_F(DeliveredDataTest, TheKnowledgeBaseHoldsTogether) {
    for (const Link& link : KnowledgeLinks) {
        const QString sql =
            u"SELECT COUNT(*) FROM %1 A WHERE A.%2 IS NOT NULL %4 AND NOT EXISTS "
            "(SELECT 1 FROM %3 B WHERE B.Code = A.%2)"_s.arg(
                QString::fromLatin1(link.table), QString::fromLatin1(link.column),
                QString::fromLatin1(link.target),
                link.zeroMeansNone ? u"AND A.%1 <> 0"_s.arg(QString::fromLatin1(link.column)) : QString());
        EXPECT_EQ(m_full->rows(sql).front().value(0).toInt(), 0) << link.table << "." << link.column;
    }
    EXPECT_EQ(m_full
                  ->rows(u"SELECT COUNT(*) FROM Interaction A WHERE NOT EXISTS (SELECT 1 FROM Interaction B "
                         "WHERE B.PharmaCode = A.PharmaCodeInt AND B.PharmaCodeInt = A.PharmaCode)"_s)
                  .front()
                  .value(0)
                  .toInt(),
              0)
        << "an interaction stored one way only";
    EXPECT_EQ(texts(*m_full,
                    u"SELECT Name FROM PharmaName A WHERE (SELECT COUNT(DISTINCT SafeFieldCode) FROM "
                    "DrugSafety B WHERE B.PharmaCode = A.Code AND B.SafeFieldCode BETWEEN 1 AND 7) < 7"_s),
              QStringList{})
        << "drugs without their seven safety rows";
    EXPECT_EQ(texts(*m_full, u"SELECT Name FROM PharmaName A WHERE NOT EXISTS (SELECT 1 FROM PharmaGroup B "
                             "WHERE B.PharmaCode = A.Code)"_s),
              QStringList{})
        << "drugs without a group";
    EXPECT_EQ(texts(*m_full,
                    u"SELECT Name FROM GenericName A WHERE NOT EXISTS (SELECT 1 FROM GenericPharma B "
                    "WHERE B.GenericCode = A.Code) OR NOT EXISTS (SELECT 1 FROM GenericDsgFm C "
                    "WHERE C.GenericCode = A.Code)"_s),
              QStringList{})
        << "brands without a drug or a form";
}

TEST_F(DeliveredDataTest, MasterNamesAreTrimmedCapitalAndUnique) {
    for (const char* master : CapitalMasters) {
        const QString table = QString::fromLatin1(master);
        EXPECT_EQ(texts(*m_full, u"SELECT Name FROM %1 WHERE Name <> UPPER(TRIM(Name))"_s.arg(table)),
                  QStringList{})
            << master;
        EXPECT_EQ(texts(*m_full, u"SELECT UPPER(TRIM(Name)) FROM %1 GROUP BY UPPER(TRIM(Name)) "
                                 "HAVING COUNT(*) > 1"_s.arg(table)),
                  QStringList{})
            << master;
    }
}

namespace {

// One sheet of the published CHD point scores for one sex, as printed: points by band, lowest band first.
struct PublishedSheet {
    char type;
    char sex;
    std::vector<int> age;           // 30-34 ... 70-74
    std::vector<int> cholesterol;   // the LDL or total cholesterol bands
    std::vector<int> hdl;           // <35, 35-44, 45-49, 50-59, >=60
    std::vector<int> bloodPressure; // optimal, normal, high normal, stage I, stage II-IV
    int diabetes;
    int smoker;
    int lowestTotal;          // the first row of the risk table
    std::vector<double> risk; // from lowestTotal upwards; a fraction reads "more than"
};

const std::vector<PublishedSheet>& publishedSheets() {
    static const std::vector<PublishedSheet> sheets{
        {'L',
         'M',
         {-1, 0, 1, 2, 3, 4, 5, 6, 7},
         {-3, 0, 0, 1, 2},
         {2, 1, 0, 0, -1},
         {0, 0, 1, 2, 3},
         2,
         2,
         -3,
         {1, 2, 2, 3, 4, 4, 6, 7, 9, 11, 14, 18, 22, 27, 33, 40, 47, 55.5}},
        {'T',
         'M',
         {-1, 0, 1, 2, 3, 4, 5, 6, 7},
         {-3, 0, 1, 2, 3},
         {2, 1, 0, 0, -2},
         {0, 0, 1, 2, 3},
         2,
         2,
         -1,
         {2, 3, 3, 4, 5, 7, 8, 10, 13, 16, 20, 25, 31, 37, 45, 52.5}},
        {'L',
         'F',
         {-9, -4, 0, 3, 6, 7, 8, 8, 8},
         {-2, 0, 0, 2, 2},
         {5, 2, 1, 0, -2},
         {-3, 0, 0, 2, 3},
         4,
         2,
         -2,
         {1, 2, 2, 2, 3, 3, 4, 5, 6, 7, 8, 9, 11, 13, 15, 17, 20, 24, 27, 31.5}},
        {'T',
         'F',
         {-9, -4, 0, 3, 6, 7, 8, 8, 8},
         {-2, 0, 1, 1, 3},
         {5, 2, 1, 0, -3},
         {-3, 0, 0, 2, 3},
         4,
         2,
         -2,
         {1, 2, 2, 2, 3, 3, 4, 4, 5, 6, 7, 8, 10, 11, 13, 15, 18, 20, 24, 26.5}},
    };
    return sheets;
}

std::vector<int> points(const Connection& c, const QString& sql, const PublishedSheet& sheet) {
    std::vector<int> out;
    for (const QVariantList& row :
         c.rows(sql, {QString(QChar::fromLatin1(sheet.type)), QString(QChar::fromLatin1(sheet.sex))}))
        out.push_back(row.value(0).toInt());
    return out;
}

// Days of a dose time or tolerance, as the schedule screen compares them.
int days(int value, int unit) {
    switch (unit) {
    case 1:
        return value;
    case 2:
        return value * 7;
    case 3:
        return value * 30;
    case 4:
        return value * 365;
    default:
        return 0;
    }
}

} // namespace

// The eight risk tables hold the published point sheets of both sexes, on both the LDL and the total
// cholesterol sheet, band by band, and their bands join without gaps.
TEST_F(DeliveredDataTest, RiskTablesHoldThePublishedPointSheets) {
    for (const PublishedSheet& sheet : publishedSheets()) {
        SCOPED_TRACE((std::string{sheet.type, ' ', sheet.sex}));
        EXPECT_EQ(points(*m_full, u"SELECT Points FROM RiskAge WHERE Type = ? AND Sex = ? ORDER BY AgeFrom"_s,
                         sheet),
                  sheet.age);
        const QString cholesterol =
            sheet.type == 'L'
                ? u"SELECT Points FROM RiskLDL WHERE Type = ? AND Sex = ? ORDER BY LDLFrom1"_s
                : u"SELECT Points FROM RiskTotal WHERE Type = ? AND Sex = ? ORDER BY TotalFrom1"_s;
        EXPECT_EQ(points(*m_full, cholesterol, sheet), sheet.cholesterol);
        EXPECT_EQ(points(*m_full,
                         u"SELECT Points FROM RiskHDL WHERE Type = ? AND Sex = ? ORDER BY HDLFrom1"_s, sheet),
                  sheet.hdl);
        for (const QString& bp : {u"S"_s, u"D"_s}) {
            EXPECT_EQ(points(*m_full,
                             u"SELECT Points FROM RiskBP WHERE Type = ? AND Sex = ? AND BPType = '"_s + bp +
                                 u"' ORDER BY BPFrom"_s,
                             sheet),
                      sheet.bloodPressure)
                << qPrintable(bp);
        }
        const auto others = m_full->rows(
            u"SELECT SmokerNo, SmokerYes, DiabetesNo, DiabetesYes, LowText FROM RiskOthers WHERE Type = ? AND Sex = ?"_s,
            {QString(QChar::fromLatin1(sheet.type)), QString(QChar::fromLatin1(sheet.sex))});
        ASSERT_EQ(others.size(), 1u);
        EXPECT_EQ(others.front().value(0).toInt(), 0);
        EXPECT_EQ(others.front().value(1).toInt(), sheet.smoker);
        EXPECT_EQ(others.front().value(2).toInt(), 0);
        EXPECT_EQ(others.front().value(3).toInt(), sheet.diabetes);
        EXPECT_FALSE(others.front().value(4).toString().isEmpty());

        const auto risks =
            m_full->rows(u"SELECT Points, Risk FROM RiskFactor WHERE Type = ? AND Sex = ? ORDER BY Points"_s,
                         {QString(QChar::fromLatin1(sheet.type)), QString(QChar::fromLatin1(sheet.sex))});
        ASSERT_EQ(risks.size(), sheet.risk.size());
        for (std::size_t i = 0; i < risks.size(); ++i) {
            EXPECT_EQ(risks.at(i).value(0).toInt(), sheet.lowestTotal + static_cast<int>(i));
            EXPECT_DOUBLE_EQ(risks.at(i).value(1).toDouble(), sheet.risk.at(i))
                << "total " << sheet.lowestTotal + static_cast<int>(i);
        }
        EXPECT_EQ(
            m_full
                ->scalar(u"SELECT COUNT(*) FROM RiskLow WHERE Type = ? AND Sex = ?"_s,
                         {QString(QChar::fromLatin1(sheet.type)), QString(QChar::fromLatin1(sheet.sex))})
                .toInt(),
            9);
    }
    // Each band starts one above the end of the band before it, in mg/dl and in mm Hg.
    const QStringList gaps = texts(
        *m_full, u"SELECT 'RiskLDL ' || A.LDLFrom1 FROM RiskLDL A WHERE A.LDLFrom1 > 0 AND NOT EXISTS "
                 u"(SELECT 1 FROM RiskLDL B "
                 "WHERE B.Type = A.Type AND B.Sex = A.Sex AND B.LDLTo1 = A.LDLFrom1 - 1) "
                 "UNION ALL SELECT 'RiskTotal ' || A.TotalFrom1 FROM RiskTotal A WHERE A.TotalFrom1 > 0 AND "
                 "NOT EXISTS (SELECT 1 FROM "
                 "RiskTotal B WHERE B.Type = A.Type AND B.Sex = A.Sex AND B.TotalTo1 = A.TotalFrom1 - 1) "
                 "UNION ALL SELECT 'RiskHDL ' || A.HDLFrom1 FROM RiskHDL A WHERE A.HDLFrom1 > 0 AND NOT "
                 "EXISTS (SELECT 1 FROM "
                 "RiskHDL B WHERE B.Type = A.Type AND B.Sex = A.Sex AND B.HDLTo1 = A.HDLFrom1 - 1) "
                 "UNION ALL SELECT 'RiskBP ' || A.BPFrom FROM RiskBP A WHERE A.BPFrom > 0 AND NOT EXISTS "
                 "(SELECT 1 FROM RiskBP B "
                 "WHERE B.Type = A.Type AND B.Sex = A.Sex AND B.BPType = A.BPType AND B.BPTo = A.BPFrom - 1) "
                 "UNION ALL SELECT 'RiskAge ' || A.AgeFrom FROM RiskAge A WHERE A.AgeFrom > 30 AND NOT "
                 "EXISTS (SELECT 1 FROM "
                 "RiskAge B WHERE B.Type = A.Type AND B.Sex = A.Sex AND B.AgeTo = A.AgeFrom - 1)"_s);
    EXPECT_EQ(gaps, QStringList{});
}

// Every dose of every schedule has a time in a known unit; the doses of a vaccine are numbered from one
// up to the number the schedule asks for; and their windows keep apart, as the schedule screen demands.
TEST_F(DeliveredDataTest, VaccinationSchedulesAreComplete) {
    EXPECT_GE(m_full->count(u"Schedules"_s), 2);
    EXPECT_EQ(
        texts(*m_full,
              u"SELECT SchCode || '/' || VacCode || '/' || DoseCode FROM VacDose WHERE DoseTime IS NULL "
              "OR Unit NOT BETWEEN 1 AND 4 OR FUnit NOT BETWEEN 1 AND 4 OR DoseTime < 0 OR DoseTime > 365 "
              "OR Flexibility < 0 OR Flexibility > 365 OR (DoseTime = 0 AND DoseCode > 1)"_s),
        QStringList{})
        << "a dose without a time";
    EXPECT_EQ(texts(*m_full,
                    u"SELECT A.SchCode || '/' || A.VacCode FROM SchVaccine A WHERE A.NoofDose <> (SELECT "
                    "COUNT(*) FROM VacDose B WHERE B.SchCode = A.SchCode AND B.VacCode = A.VacCode) OR "
                    "A.NoofDose <> (SELECT MAX(DoseCode) FROM VacDose B WHERE B.SchCode = A.SchCode AND "
                    "B.VacCode = A.VacCode) OR NOT EXISTS (SELECT 1 FROM Vaccine V WHERE V.Code = A.VacCode) "
                    "OR NOT EXISTS (SELECT 1 FROM Schedules S WHERE S.Code = A.SchCode)"_s),
              QStringList{});
    EXPECT_EQ(
        texts(*m_full, u"SELECT DoseCode FROM VacDose WHERE DoseCode NOT IN (SELECT Code FROM DoseName)"_s),
        QStringList{});
    const auto doses =
        m_full->rows(u"SELECT SchCode, VacCode, DoseTime, Unit, Flexibility, FUnit FROM VacDose "
                     "ORDER BY SchCode, VacCode, DoseCode"_s);
    for (std::size_t i = 1; i < doses.size(); ++i) {
        const QVariantList& earlier = doses.at(i - 1);
        const QVariantList& dose = doses.at(i);
        if (earlier.value(0) != dose.value(0) || earlier.value(1) != dose.value(1))
            continue;
        const int te = days(earlier.value(2).toInt(), earlier.value(3).toInt());
        const int fe = days(earlier.value(4).toInt(), earlier.value(5).toInt());
        const int t = days(dose.value(2).toInt(), dose.value(3).toInt());
        const int f = days(dose.value(4).toInt(), dose.value(5).toInt());
        EXPECT_GT(t, te) << "schedule " << dose.value(0).toInt() << " vaccine " << dose.value(1).toInt();
        if (te >= 1) {
            EXPECT_LE(te + fe, t - f)
                << "schedule " << dose.value(0).toInt() << " vaccine " << dose.value(1).toInt();
        }
    }
    // The first measles-containing dose is not due before nine completed months.
    EXPECT_EQ(texts(*m_full,
                    u"SELECT S.Name FROM VacDose D JOIN Vaccine V ON V.Code = D.VacCode JOIN Schedules S ON "
                    "S.Code = D.SchCode WHERE V.ShortName IN ('MMR', 'MR') AND D.DoseCode = 1 AND NOT "
                    "(D.Unit = 3 AND D.DoseTime - D.Flexibility >= 9)"_s),
              QStringList{});
}

// The head circumference standard: both sexes by month to 36 months, the median inside its range, and the
// inches the centimetres divided by 2.54.
TEST_F(DeliveredDataTest, HeadCircumferenceCoversTheFirstThreeYears) {
    for (const QString& sex : {u"M"_s, u"F"_s}) {
        EXPECT_EQ(
            m_full
                ->scalar(
                    u"SELECT COUNT(DISTINCT age) FROM HeadCircum WHERE Sex = ? AND age BETWEEN 0 AND 36"_s,
                    {sex})
                .toInt(),
            37)
            << qPrintable(sex);
    }
    EXPECT_EQ(m_full->count(u"HeadCircum"_s), 74);
    EXPECT_EQ(
        texts(*m_full,
              u"SELECT Sex || age FROM HeadCircum WHERE NOT (Range1Cm < MedianCm AND MedianCm < Range2Cm) OR "
              "ABS(MedianInch - MedianCm / 2.54) > 0.006 OR ABS(Range1Inch - Range1Cm / 2.54) > 0.006 OR "
              "ABS(Range2Inch - Range2Cm / 2.54) > 0.006"_s),
        QStringList{});
    const auto birth =
        m_full->rows(u"SELECT MedianCm, Range1Cm, Range2Cm FROM HeadCircum WHERE Sex = 'M' AND age = 0"_s);
    ASSERT_EQ(birth.size(), 1u);
    EXPECT_DOUBLE_EQ(birth.front().value(0).toDouble(), 34.5);
    EXPECT_DOUBLE_EQ(birth.front().value(1).toDouble(), 31.9);
    EXPECT_DOUBLE_EQ(birth.front().value(2).toDouble(), 37.0);
}
