#include "tests/store/DeliveredData.h"

#include <QDir>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTextDocument>

#include <utility>
#include <vector>

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
// every drug has its seven safety rows and a group, every brand a drug, a form with its strength, a
// dosage and a therapeutic group with one of its sub-groups.
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
    EXPECT_EQ(
        texts(*m_full,
              u"SELECT Name FROM GenericName A WHERE TRIM(COALESCE(Composition, '')) = '' OR "
              "TRIM(COALESCE(Dosage, '')) = '' OR EXISTS (SELECT 1 FROM GenericDsgFm B WHERE B.GenericCode "
              "= A.Code AND TRIM(COALESCE(B.Remark, '')) = '') OR NOT EXISTS (SELECT 1 FROM "
              "GenericSubGroup S JOIN SubGroup T ON T.Code = S.SubGroupCode JOIN GenericGroup G ON "
              "G.GenericCode = S.GenericCode AND G.GroupCode = T.GroupCode WHERE S.GenericCode = A.Code)"_s),
        QStringList{})
        << "brands without a composition, a dosage, a strength for each form, or a group and its sub-group";
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

// What a clinic finds on the first day: the size of each part of the knowledge base.
TEST_F(DeliveredDataTest, TheKnowledgeBaseIsBigEnoughForAnIndianOutpatientClinic) {
    struct Least {
        const char* what;
        const char* sql;
        int least;
    };
    const Least counts[] = {
        {"drugs", "SELECT COUNT(*) FROM PharmaName", 300},
        {"interacting pairs", "SELECT COUNT(*) / 2 FROM Interaction", 400},
        {"brands", "SELECT COUNT(*) FROM GenericName", 1000},
        {"brands of two drugs or more",
         "SELECT COUNT(*) FROM (SELECT GenericCode FROM GenericPharma GROUP BY GenericCode HAVING COUNT(*) > "
         "1)",
         150},
        {"manufacturers with brands", "SELECT COUNT(DISTINCT Company) FROM GenericName", 60},
        {"diseases", "SELECT COUNT(*) FROM Disease", 250},
        {"drugs not recommended in a disease", "SELECT COUNT(*) FROM DiseaseDrug", 200},
        {"investigations", "SELECT COUNT(*) FROM Investigation", 120},
        {"investigation profiles", "SELECT COUNT(DISTINCT ProfileCode) FROM InvtProfiles", 8},
        {"complaints", "SELECT COUNT(*) FROM Complaints", 150},
        {"procedures", "SELECT COUNT(*) FROM Surgery", 80},
        {"physical examinations", "SELECT COUNT(*) FROM Physical", 20},
        {"physical examinations shown on every sheet", "SELECT COUNT(*) FROM Physical WHERE EVisible", 10},
        {"cities", "SELECT COUNT(*) FROM City", 200},
        {"English hand-outs", "SELECT COUNT(*) FROM HandOut WHERE RTFLng = 'E'", 12},
        {"Hindi hand-outs", "SELECT COUNT(*) FROM HandOut WHERE RTFLng = 'H'", 12},
    };
    for (const Least& c : counts)
        EXPECT_GE(m_full->scalar(QString::fromLatin1(c.sql)).toInt(), c.least) << c.what;
    // Every state and union territory capital can be chosen in an address.
    const QStringList capitals =
        u"AGARTALA,AIZAWL,AMARAVATI,BENGALURU,BHOPAL,BHUBANESWAR,CHANDIGARH,CHENNAI,DAMAN,DEHRADUN,DISPUR,"
        "GANDHINAGAR,GANGTOK,HYDERABAD,IMPHAL,ITANAGAR,JAIPUR,JAMMU,KAVARATTI,KOHIMA,KOLKATA,LEH,LUCKNOW,"
        "MUMBAI,NEW DELHI,PANAJI,PATNA,PUDUCHERRY,RAIPUR,RANCHI,SHILLONG,SHIMLA,SRINAGAR,SRI VIJAYA PURAM,"
        "THIRUVANANTHAPURAM"_s.split(u',');
    for (const QString& capital : capitals)
        EXPECT_EQ(m_full->scalar(u"SELECT COUNT(*) FROM City WHERE Name = ?"_s, {capital}).toInt(), 1)
            << qPrintable(capital);
}

// Facts any pharmacologist knows, checked in the delivered base: the checks of the prescription screen
// fire on them.
TEST_F(DeliveredDataTest, TheKnowledgeBaseKnowsWhatEveryPharmacologistKnows) {
    // Safety: 1 pregnancy, 3 paediatrics, 5 renal, 7 pulmonary; status 1 safe, 2 unsafe.
    struct Safety {
        const char* drug;
        int field;
        std::vector<int> statuses; // any of these
    };
    const Safety safety[] = {
        {"ENALAPRIL", 1, {2}},           {"LOSARTAN", 1, {2}},          {"WARFARIN", 1, {2}},
        {"METHOTREXATE", 1, {2}},        {"ATORVASTATIN", 1, {2}},      {"MISOPROSTOL", 1, {2}},
        {"SODIUM VALPROATE", 1, {2, 4}}, {"DOXYCYCLINE", 1, {2}},       {"PARACETAMOL", 1, {1}},
        {"DOXYCYCLINE", 3, {2, 4, 5}},   {"CIPROFLOXACIN", 3, {2, 4}},  {"ASPIRIN", 3, {2, 4}},
        {"METFORMIN", 5, {2, 4}},        {"NITROFURANTOIN", 5, {2, 4}}, {"PROPRANOLOL", 7, {2}},
        {"MORPHINE", 7, {2, 4}},         {"ISOTRETINOIN", 1, {2}},      {"DIAZEPAM", 7, {2, 4}},
    };
    for (const Safety& s : safety) {
        const int status =
            m_full
                ->scalar(u"SELECT B.SafetyCode FROM PharmaName A JOIN DrugSafety B ON B.PharmaCode = "
                         "A.Code WHERE A.Name = ? AND B.SafeFieldCode = ?"_s,
                         {QString::fromLatin1(s.drug), s.field})
                .toInt();
        EXPECT_NE(std::find(s.statuses.cbegin(), s.statuses.cend(), status), s.statuses.cend())
            << s.drug << " in state " << s.field << " has status " << status;
    }
    // One row joins the two names: an interaction from either drug, a drug in its group, a brand of its drug.
    const auto expectJoined = [&](const QString& sql, const char* first, const char* second) {
        EXPECT_EQ(m_full->scalar(sql, {QString::fromLatin1(first), QString::fromLatin1(second)}).toInt(), 1)
            << first << " / " << second;
    };
    const QString interaction =
        u"SELECT COUNT(*) FROM Interaction I JOIN PharmaName A ON A.Code = I.PharmaCode JOIN "
        "PharmaName B ON B.Code = I.PharmaCodeInt WHERE A.Name = ? AND B.Name = ?"_s;
    const std::pair<const char*, const char*> pairs[] = {
        {"WARFARIN", "ASPIRIN"},
        {"WARFARIN", "FLUCONAZOLE"},
        {"SILDENAFIL", "GLYCERYL TRINITRATE"},
        {"SIMVASTATIN", "CLARITHROMYCIN"},
        {"CLOPIDOGREL", "OMEPRAZOLE"},
        {"SPIRONOLACTONE", "RAMIPRIL"},
        {"LITHIUM CARBONATE", "HYDROCHLOROTHIAZIDE"},
        {"METHOTREXATE", "TRIMETHOPRIM"},
        {"THEOPHYLLINE", "CIPROFLOXACIN"},
        {"TRAMADOL", "SERTRALINE"},
        {"DIGOXIN", "AMIODARONE"},
        {"RIFAMPICIN", "ETHINYLESTRADIOL"},
        {"ALPRAZOLAM", "MORPHINE"},
        {"CIPROFLOXACIN", "ALUMINIUM HYDROXIDE"},
        {"ENALAPRIL", "LOSARTAN"},
        {"ISOTRETINOIN", "DOXYCYCLINE"},
    };
    for (const auto& [a, b] : pairs) {
        expectJoined(interaction, a, b);
        expectJoined(interaction, b, a);
    }
    const std::pair<const char*, const char*> groups[] = {
        {"AMOXICILLIN", "PENICILLINS"},
        {"CEFIXIME", "CEPHALOSPORINS"},
        {"SULFAMETHOXAZOLE", "SULFONAMIDES"},
        {"AZITHROMYCIN", "MACROLIDES"},
        {"LEVOFLOXACIN", "FLUOROQUINOLONES"},
        {"DICLOFENAC", "NSAIDS"},
        {"ASPIRIN", "SALICYLATES"},
        {"ROSUVASTATIN", "STATINS"},
        {"RAMIPRIL", "ACE INHIBITORS"},
        {"TELMISARTAN", "ARBS"},
        {"METOPROLOL", "BETA BLOCKERS"},
        {"ALPRAZOLAM", "BENZODIAZEPINES"},
        {"TRAMADOL", "OPIOIDS"},
        {"GLIMEPIRIDE", "SULFONYLUREAS"},
    };
    for (const auto& [drug, group] : groups) {
        expectJoined(
            u"SELECT COUNT(*) FROM PharmaGroup P JOIN PharmaName A ON A.Code = P.PharmaCode JOIN DrugGroup G "
            "ON G.Code = P.DrugGroup WHERE A.Name = ? AND G.Name = ?"_s,
            drug, group);
    }
    const std::pair<const char*, const char*> brands[] = {
        {"CROCIN 650", "PARACETAMOL"}, {"DOLO 650", "PARACETAMOL"}, {"AUGMENTIN 625 DUO", "CLAVULANIC ACID"},
        {"GLYCOMET 500", "METFORMIN"}, {"TELMA 40", "TELMISARTAN"}, {"PAN 40", "PANTOPRAZOLE"},
        {"ECOSPRIN 75", "ASPIRIN"},    {"WARF 5", "WARFARIN"},      {"ECOSPRIN GOLD 10", "CLOPIDOGREL"},
    };
    for (const auto& [brand, drug] : brands) {
        expectJoined(
            u"SELECT COUNT(*) FROM GenericPharma P JOIN GenericName G ON G.Code = P.GenericCode JOIN "
            "PharmaName A ON A.Code = P.PharmaCode WHERE G.Name = ? AND A.Name = ?"_s,
            brand, drug);
    }
    // A drug not recommended in a disease.
    EXPECT_EQ(
        m_full
            ->scalar(u"SELECT COUNT(*) FROM DiseaseDrug X JOIN Disease D ON D.Code = X.DiseasesCode JOIN "
                     u"PharmaName A "
                     "ON A.Code = X.DrugCode WHERE D.Name = 'BRONCHIAL ASTHMA' AND A.Name = 'PROPRANOLOL'"_s)
            .toInt(),
        1);
}

// The high-priority pairs of the ONC list (Phansalkar et al. 2012), class by class: every pair whose two
// drugs are in the base interacts, from either drug.
TEST_F(DeliveredDataTest, EveryHighPriorityPairOfTheOncListInteracts) {
    using Names = std::vector<const char*>;
    const Names maoInhibitors{"TRANYLCYPROMINE", "PHENELZINE", "ISOCARBOXAZID", "PROCARBAZINE", "SELEGILINE"};
    const Names proteaseInhibitors{"RITONAVIR", "AMPRENAVIR", "DARUNAVIR",  "FOSAMPRENAVIR", "INDINAVIR",
                                   "LOPINAVIR", "NELFINAVIR", "SAQUINAVIR", "TIPRANAVIR",    "ATAZANAVIR"};
    const auto with = [](Names names, const Names& more) {
        names.insert(names.end(), more.cbegin(), more.cend());
        return names;
    };
    const std::pair<Names, Names> classes[] = {
        {{"DEXMETHYLPHENIDATE", "DEXTROAMPHETAMINE", "METHYLPHENIDATE", "LISDEXAMFETAMINE", "PSEUDOEPHEDRINE",
          "AMPHETAMINE", "PHENTERMINE", "ATOMOXETINE"},
         maoInhibitors},
        {{"ATAZANAVIR"}, {"OMEPRAZOLE", "LANSOPRAZOLE", "PANTOPRAZOLE", "RABEPRAZOLE", "ESOMEPRAZOLE"}},
        {{"FEBUXOSTAT"}, {"AZATHIOPRINE", "MERCAPTOPURINE"}},
        {{"FLUOXETINE", "PAROXETINE", "CITALOPRAM", "ESCITALOPRAM", "SERTRALINE", "FLUVOXAMINE", "DULOXETINE",
          "DESVENLAFAXINE", "VENLAFAXINE"},
         maoInhibitors},
        {{"IRINOTECAN"},
         with(proteaseInhibitors, {"CLARITHROMYCIN", "ERYTHROMYCIN", "AMIODARONE", "VERAPAMIL", "DILTIAZEM",
                                   "KETOCONAZOLE", "ITRACONAZOLE", "FLUCONAZOLE", "VORICONAZOLE"})},
        {{"PETHIDINE", "METHADONE", "TAPENTADOL", "FENTANYL", "TRAMADOL", "DEXTROMETHORPHAN"}, maoInhibitors},
        {{"AMITRIPTYLINE", "CLOMIPRAMINE", "DESIPRAMINE", "DOXEPIN", "IMIPRAMINE", "NORTRIPTYLINE"},
         maoInhibitors},
        {{"AMIODARONE"}, {"ESCITALOPRAM"}},
        {{"METHADONE"}, {"MOXIFLOXACIN"}},
        {{"RAMELTEON"}, {"FLUVOXAMINE", "AMIODARONE", "TICLOPIDINE", "CIPROFLOXACIN"}},
        {proteaseInhibitors, {"BOSENTAN", "RIFAPENTINE", "CARBAMAZEPINE", "RIFABUTIN", "RIFAMPICIN"}},
        {{"SIMVASTATIN", "LOVASTATIN"},
         with(proteaseInhibitors, {"CLARITHROMYCIN", "ERYTHROMYCIN", "AMIODARONE", "VERAPAMIL", "DILTIAZEM",
                                   "KETOCONAZOLE", "ITRACONAZOLE", "FLUCONAZOLE", "VORICONAZOLE"})},
        {{"ERGOTAMINE", "METHYLERGOMETRINE", "DIHYDROERGOTAMINE", "ERGOMETRINE"},
         with(proteaseInhibitors,
              {"CLARITHROMYCIN", "ERYTHROMYCIN", "KETOCONAZOLE", "ITRACONAZOLE", "VORICONAZOLE"})},
        {{"TIZANIDINE"},
         {"CIPROFLOXACIN", "FLUVOXAMINE", "MEXILETINE", "PROPAFENONE", "AMIODARONE", "TICLOPIDINE"}},
        {{"SUMATRIPTAN", "ZOLMITRIPTAN", "RIZATRIPTAN"},
         {"TRANYLCYPROMINE", "PHENELZINE", "ISOCARBOXAZID", "MOCLOBEMIDE", "METHYLENE BLUE"}},
    };
    const QString interacts =
        u"SELECT COUNT(*) FROM Interaction I JOIN PharmaName A ON A.Code = I.PharmaCode JOIN "
        "PharmaName B ON B.Code = I.PharmaCodeInt WHERE A.Name = ? AND B.Name = ?"_s;
    const auto inBase = [&](const char* drug) {
        return m_full
                   ->scalar(u"SELECT COUNT(*) FROM PharmaName WHERE Name = ?"_s, {QString::fromLatin1(drug)})
                   .toInt() == 1;
    };
    int checked = 0;
    for (const auto& [objects, precipitants] : classes) {
        for (const char* a : objects) {
            for (const char* b : precipitants) {
                if (!inBase(a) || !inBase(b))
                    continue;
                ++checked;
                for (const auto& [x, y] : {std::pair{a, b}, std::pair{b, a}})
                    EXPECT_EQ(
                        m_full->scalar(interacts, {QString::fromLatin1(x), QString::fromLatin1(y)}).toInt(),
                        1)
                        << x << " / " << y;
            }
        }
    }
    EXPECT_GE(checked, 80) << "the drugs of the list are missing from the base";
}

// The hand-outs and topics of the documents folder: every row names a file that is delivered, in its
// language, and every topic of the launcher has its row.
TEST_F(DeliveredDataTest, EveryHandOutAndTopicHasItsFile) {
    const QDir handouts(s_data + u"/documents/handouts"_s);
    const QDir topics(s_data + u"/documents/topics"_s);
    const QRegularExpression devanagari(u"[\u0900-\u097F]"_s);
    for (const QVariantList& row : m_full->rows(u"SELECT Name, FileName, RTFLng FROM HandOut"_s)) {
        const QString name = row.value(0).toString();
        const QString file = row.value(1).toString();
        ASSERT_TRUE(handouts.exists(file)) << qPrintable(name) << ": " << qPrintable(file);
        const QString text = QString::fromUtf8(vantrel::testing::readFile(handouts.filePath(file)));
        EXPECT_TRUE(Qt::mightBeRichText(text)) << qPrintable(file);
        EXPECT_EQ(text.contains(devanagari), row.value(2).toString() == u"H"_s) << qPrintable(file);
    }
    // The same subjects in both languages.
    EXPECT_EQ(m_full->scalar(u"SELECT COUNT(*) FROM HandOut WHERE RTFLng = 'E'"_s),
              m_full->scalar(u"SELECT COUNT(*) FROM HandOut WHERE RTFLng = 'H'"_s));
    EXPECT_EQ(texts(*m_full, u"SELECT MenuName FROM HotTopics ORDER BY MenuName"_s),
              texts(*m_full, u"SELECT MenuName FROM Level2 WHERE MainMenuNo = 10 ORDER BY MenuName"_s));
    for (const QString& file : texts(*m_full, u"SELECT RtfFile FROM HotTopics"_s))
        EXPECT_TRUE(topics.exists(file)) << qPrintable(file);
}
