#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QtGlobal>

// Small routines used from many screens: numbers as text, ages, the judgement of a child's growth
// and of an adult's body mass, the stage of a pregnancy and an amount of rupees in words.
// They hold no state; the caller passes today's date where one is needed.
namespace vantrel {

// Rounds to the nearest value with `decimals` places, a tie going to the even digit. The value is
// taken as the decimal a person typed (2.675 rounds to 2.68), not as its binary approximation.
double RoundHalfEven(double value, int decimals);

// A number as its shortest natural text: 45, 49.5, 3.25, never 45.00.
QString NumberText(double value);
// A measure in a box: blank for 0, else its shortest text; and the value a box's text stands for, 0 when
// blank.
QString MeasureText(double value);
double MeasureOf(const QString& text);

// The trimmed text before the first `separator`, or the whole trimmed text without one.
QString TextBefore(const QString& text, const QString& separator);

// Megabytes to one decimal; 0 for a size that is not positive.
double SizeInMB(qint64 bytes);

// Whether `value` is one of `list`, ignoring case.
bool InList(const QString& value, const QStringList& list);

// Ensures a folder path ends in a separator. Paths go through Qt, which takes "/" on every platform,
// so that is the separator appended.
QString AddBackslash(QString path);

struct DateDiff {
    int years;
    int months;
    int days;
};

// The age on `asOf` of someone born on `birth`, as the clinic's documents print it. The years
// ignore the day of the month, so someone born on 20 Jan 2000 is, on 10 Jan 2006, 6 years 0 months
// and 21 days old. A null birth date gives 0, 0, 0.
DateDiff DateDifference(const QDate& asOf, const QDate& birth);

// "6 Year(s), 2 Month(s), 3 Day(s) " with the parts below 1 left out, always ending in one blank.
QString AgeText(const QDate& today, const QDate& birth);

// The birth date of someone of the given age on `asOf`: less the years, then the months, then the days.
QDate BirthFromAge(const QDate& asOf, int years, int months, int days);

// A child's height (cm) and weight (kg) against the expected values for the age, up to 12 years.
// A measure of 0 is left out of the judgement.
QString ChildGrowthText(int years, int months, double height, double weight);

// An adult's body mass from height (cm) and weight (kg); empty unless both are above 0.
QString BodyMassText(double height, double weight);

// The growth text for a child below 13 years, the body mass text above 12.
QString WeightAssessment(int years, int months, double height, double weight);

// The trimester and weeks of a pregnancy on `reference`; empty when the last period is after it.
QString PregnancyStatusText(const QDate& lmp, const QDate& reference);

// An amount of rupees and paise in words, by lakhs and crores, as printed on receipts.
QString AmountInWords(double amount);

} // namespace vantrel
