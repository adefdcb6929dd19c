#include "core/Routines.h"

#include <gtest/gtest.h>

#include <ostream>
#include <tuple>

using namespace Qt::StringLiterals;

static void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace vantrel {
namespace {

QDate D(int year, int month, int day) {
    return QDate(year, month, day);
}

TEST(RoutineNumbers, RoundsTiesToEvenOnTheTypedDecimal) {
    const struct {
        double value;
        int decimals;
        double expected;
    } cases[] = {
        {2.675, 2, 2.68}, {2.665, 2, 2.66}, {1.005, 2, 1.0},  {0.125, 2, 0.12},
        {2.5, 0, 2.0},    {3.5, 0, 4.0},    {-2.5, 0, -2.0},  {99.95, 1, 100},
        {0.006, 2, 0.01}, {0.004, 2, 0.0},  {18.45, 1, 18.4}, {18.55, 1, 18.6},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(RoundHalfEven(c.value, c.decimals), c.expected) << c.value << " to " << c.decimals;
    }
}

TEST(RoutineNumbers, NumberTextIsUnpadded) {
    const struct {
        double value;
        QString expected;
    } cases[] = {
        {45, u"45"_s},     {49.5, u"49.5"_s},     {3.25, u"3.25"_s}, {-0.0, u"0"_s},
        {0.05, u"0.05"_s}, {0.1 + 0.2, u"0.3"_s}, {1200, u"1200"_s}, {-7.5, u"-7.5"_s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NumberText(c.value), c.expected) << c.value;
    }
}

TEST(RoutineText, TextBeforeSizeListAndPath) {
    EXPECT_EQ(TextBefore(u"  RAM KUMAR - 12 "_s, u"-"_s), u"RAM KUMAR"_s);
    EXPECT_EQ(TextBefore(u"  RAM KUMAR "_s, u"-"_s), u"RAM KUMAR"_s);

    EXPECT_EQ(SizeInMB(0), 0);
    EXPECT_EQ(SizeInMB(1310720), 1.2); // 1.25 MB
    EXPECT_EQ(SizeInMB(1835008), 1.8); // 1.75 MB
    EXPECT_EQ(SizeInMB(1153434), 1.1);

    EXPECT_TRUE(InList(u"female"_s, {u"MALE"_s, u"FEMALE"_s}));
    EXPECT_FALSE(InList(u"FEMAL"_s, {u"MALE"_s, u"FEMALE"_s}));

    EXPECT_EQ(AddBackslash(u"/opt/vantrel  "_s), u"/opt/vantrel/"_s);
    EXPECT_EQ(AddBackslash(u"C:\\Vantrel\\"_s), u"C:\\Vantrel\\"_s);
    EXPECT_EQ(AddBackslash(QString()), u"/"_s);
}

TEST(RoutineAges, DateDifferenceFollowsTheClinicsReading) {
    const struct {
        QDate asOf;
        QDate birth;
        int years, months, days;
    } cases[] = {
        {D(2006, 1, 10), D(2000, 1, 20), 6, 0, 21},  // day of month ignored for the years
        {D(2006, 3, 14), D(2000, 3, 15), 6, 0, 30},  // the same, a day before the birthday
        {D(2006, 1, 10), D(2000, 3, 15), 5, 9, 26},  // month borrow
        {D(2006, 3, 15), D(2000, 3, 15), 6, 0, 0},   // birthday
        {D(2006, 1, 5), D(2005, 12, 25), 0, 0, 11},  // across the year end
        {D(2006, 3, 5), D(2006, 1, 31), 0, 1, 5},    // from a month end
        {D(2001, 2, 28), D(2000, 2, 29), 1, 0, 28},  // born on a leap day
        {D(2004, 2, 29), D(2001, 3, 15), 2, 11, 13}, // 29 Feb 2002 falls back to 28 Feb
        {D(2004, 2, 29), D(2001, 1, 29), 3, 1, 0},   // days compared with the date asked for
        {D(2006, 1, 10), QDate(), 0, 0, 0},
    };
    for (const auto& c : cases) {
        const DateDiff age = DateDifference(c.asOf, c.birth);
        EXPECT_EQ(std::tuple(age.years, age.months, age.days), std::tuple(c.years, c.months, c.days))
            << c.birth.toString(Qt::ISODate).toStdString();
    }
}

TEST(RoutineAges, AgeTextAndBirthFromAge) {
    const QDate today = D(2006, 1, 10);
    EXPECT_EQ(AgeText(today, D(2006, 1, 5)), u"5 Day(s) "_s);
    EXPECT_EQ(AgeText(today, D(2005, 11, 10)), u"2 Month(s) "_s);
    EXPECT_EQ(AgeText(today, D(2000, 1, 20)), u"6 Year(s), 21 Day(s) "_s);
    EXPECT_EQ(AgeText(today, D(2000, 3, 15)), u"5 Year(s), 9 Month(s), 26 Day(s) "_s);
    EXPECT_EQ(AgeText(today, today), u" "_s);

    // Months before days, years before months.
    EXPECT_EQ(BirthFromAge(D(2006, 3, 1), 0, 1, 1), D(2006, 1, 31));
    EXPECT_EQ(BirthFromAge(D(2008, 2, 29), 1, 1, 0), D(2007, 1, 28));
    EXPECT_EQ(BirthFromAge(D(2006, 1, 10), 6, 0, 21), D(1999, 12, 20));
}

TEST(RoutineGrowth, ChildGrowthBands) {
    const struct {
        int years, months;
        double height, weight;
        QString expected;
    } cases[] = {
        {13, 0, 150, 40, QString()},
        {0, 10, 50, 0, u"Normal Height."_s},
        {0, 11, 50, 0, u"Less Height! Minimum Height Should be 67.5 cms."_s},
        {0, 5, 45, 0, u"Normal Height."_s},
        {0, 5, 55.1, 0, u"Over Height! Height Should be between 45 cms And 55 cms."_s},
        {1, 11, 74.7, 0, u"Normal Height."_s},
        {1, 11, 74.6, 0, u"Less Height! Minimum Height Should be 74.7 cms."_s},
        {0, 2, 0, 2.9, u"Under Weight! Minimum Weight Should be 2.92 Kgs."_s}, // 2.925 to even
        {0, 2, 0, 3.59, u"Over Weight! Maximum Weight Should be 3.58 Kgs."_s}, // 3.575 to even
        {0, 3, 0, 5.3, u"Under Weight! Minimum Weight Should be 5.4 Kgs."_s},
        {7, 0, 0, 24.3, u"Over Weight! Maximum Weight Should be 24.2 Kgs."_s},
        {12, 0, 149, 39.5, u"Normal Child Growth."_s},
        {12, 0, 163.9, 43.45, u"Normal Child Growth."_s},
        {2, 0, 100, 10,
         u"Over Height! Height Should be between 80.1 cms And 97.9 cms. "
         u"Under Weight! Minimum Weight Should be 10.8 Kgs."_s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ChildGrowthText(c.years, c.months, c.height, c.weight), c.expected)
            << c.years << "y " << c.months << "m " << c.height << " cm " << c.weight << " kg";
    }
}

TEST(RoutineBodyMass, BodyMassBandsAndTarget) {
    const struct {
        double height, weight;
        QString expected;
    } cases[] = {
        {0, 70, QString()},
        {100, 18.45, u"Under Weight! Body Mass [18.4]. Minimum Weight Should be 18.5 Kgs."_s},
        {200, 74, u"Normal Weight. Body Mass [18.5]."_s},
        {100, 24.95, u"Over Weight! Body Mass [25]. Maximum Weight Should be 24.9 Kgs."_s},
        {200, 100, u"Over Weight! Body Mass [25]. Maximum Weight Should be 99.6 Kgs."_s},
        {170, 80, u"Over Weight! Body Mass [27.7]. Maximum Weight Should be 72 Kgs."_s},
        {100, 30, u"Moderately Obese! Body Mass [30]. Maximum Weight Should be 24.9 Kgs."_s},
        {100, 35, u"Severely Obese! Body Mass [35]. Maximum Weight Should be 24.9 Kgs."_s},
        {100, 40, u"Very Severely Obese! Body Mass [40]. Maximum Weight Should be 24.9 Kgs."_s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(BodyMassText(c.height, c.weight), c.expected) << c.height << " cm " << c.weight << " kg";
    }
}

TEST(RoutineBodyMass, WeightAssessmentPicksByAge) {
    EXPECT_EQ(WeightAssessment(13, 0, 170, 0), QString());
    EXPECT_EQ(WeightAssessment(13, 0, 200, 74), u"Normal Weight. Body Mass [18.5]."_s);
    EXPECT_EQ(WeightAssessment(12, 11, 149, 0), u"Normal Height."_s);
}

TEST(RoutineAmountInWords, IndianSlices) {
    const struct {
        double amount;
        QString expected;
    } cases[] = {
        {123456.5, u"Rupees One Lakh Twenty Three Thousand Four Hundred Fifty Six and Paise Fifty Only"_s},
        {0, u"Rupees Zero Only"_s},
        {0.5, u"Rupees and Paise Fifty Only"_s},
        {0.015, u"Rupees and Paise Two Only"_s},
        {19, u"Rupees Nineteen Only"_s},
        {20, u"Rupees Twenty Only"_s},
        {21, u"Rupees Twenty One Only"_s},
        {100, u"Rupees One Hundred Only"_s},
        {100000, u"Rupees One Lakh Only"_s},
        {10000000, u"Rupees One Crore Only"_s},
        {1234567890.12, u"Rupees One Thousand Twenty Three Crore Forty Five Lakh Sixty Seven Thousand "
                        u"Eight Hundred Ninety and Paise Twelve Only"_s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(AmountInWords(c.amount), c.expected) << c.amount;
    }
}

TEST(RoutinePregnancy, TrimesterAndWeeks) {
    const QDate reference = D(2024, 4, 1);
    const struct {
        QDate lmp;
        QString expected;
    } cases[] = {
        {D(2024, 4, 2), QString()},
        {reference, u"FIRST TRIMESTER."_s},
        {D(2024, 3, 25), u"FIRST TRIMESTER.  1 WEEK PREGNANCY."_s},
        {D(2024, 3, 24), u"FIRST TRIMESTER.  1 (+)  WEEK PREGNANCY."_s},
        {D(2024, 3, 18), u"FIRST TRIMESTER.  2 WEEKS PREGNANCY."_s},
        {D(2024, 3, 17), u"FIRST TRIMESTER.  2 (+)  WEEKS PREGNANCY."_s},
        {D(2024, 1, 2), u"FIRST TRIMESTER.  12 (+)  WEEKS PREGNANCY."_s},
        {D(2024, 1, 1), u"SECOND TRIMESTER.  13 WEEKS PREGNANCY."_s},
        {D(2023, 10, 1), u"FINAL TRIMESTER.  26 (+)  WEEKS PREGNANCY."_s},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PregnancyStatusText(c.lmp, reference), c.expected)
            << c.lmp.toString(Qt::ISODate).toStdString();
    }
    // 30 Nov plus three months falls back to 29 Feb: three months are complete.
    EXPECT_EQ(PregnancyStatusText(D(2023, 11, 30), D(2024, 2, 29)),
              u"SECOND TRIMESTER.  13 WEEKS PREGNANCY."_s);
}

} // namespace
} // namespace vantrel
