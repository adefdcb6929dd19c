#include "core/Routines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// Heights, weights and amounts are typed by people; at 15 significant digits their binary values
// read back as exactly what was typed.
constexpr int SignificantDigits = 15;

// A finite value as 0.digits x 10^point, with SignificantDigits digits.
struct DecimalDigits {
    bool negative;
    std::string digits;
    int point;
};

DecimalDigits DigitsOf(double value) {
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                       std::chars_format::scientific, SignificantDigits - 1);
    const std::string text(buffer, written.ptr); // "d.dddddddddddddde+XX"
    const auto exponent = text.find('e');
    return {std::signbit(value), text.substr(0, 1) + text.substr(2, exponent - 2),
            std::stoi(text.substr(exponent + 1)) + 1};
}

// The value rounded to `decimals` places, ties to the even digit, written with exactly that many places.
QString FixedText(double value, int decimals) {
    if (!std::isfinite(value)) {
        return QString::number(value);
    }
    DecimalDigits d = DigitsOf(value);
    const int kept = d.point + decimals;
    if (kept < SignificantDigits) {
        bool up = false;
        if (kept >= 0) {
            const char next = d.digits[kept];
            const bool exactHalf =
                next == '5' && d.digits.find_first_not_of('0', kept + 1) == std::string::npos;
            const bool lastOdd = kept > 0 && (d.digits[kept - 1] - '0') % 2 == 1;
            up = next > '5' || (next == '5' && (!exactHalf || lastOdd));
        }
        d.digits.resize(std::max(kept, 0));
        if (up) {
            int i = kept - 1;
            while (i >= 0 && d.digits[i] == '9') {
                d.digits[i--] = '0';
            }
            if (i >= 0) {
                ++d.digits[i];
            } else {
                d.digits.insert(0, 1, '1');
                ++d.point;
            }
        }
    }

    std::string whole = "0";
    std::string fraction = d.digits;
    if (d.point > 0) {
        whole = d.digits.substr(0, std::min<std::size_t>(d.point, d.digits.size()));
        whole.resize(d.point, '0');
        whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
        fraction = d.digits.size() > std::size_t(d.point) ? d.digits.substr(d.point) : std::string();
    } else {
        fraction.insert(0, std::size_t(-d.point), '0');
    }
    fraction.resize(std::max(decimals, 0), '0');

    std::string text = whole;
    if (!fraction.empty()) {
        text += '.' + fraction;
    }
    if (d.negative && text.find_first_not_of("0.") != std::string::npos) {
        text.insert(0, 1, '-');
    }
    return QString::fromStdString(text);
}

QString NumberWords(int number) {
    static const QStringList units{QString(),    u"One"_s,     u"Two"_s,       u"Three"_s,    u"Four"_s,
                                   u"Five"_s,    u"Six"_s,     u"Seven"_s,     u"Eight"_s,    u"Nine"_s,
                                   u"Ten"_s,     u"Eleven"_s,  u"Twelve"_s,    u"Thirteen"_s, u"Fourteen"_s,
                                   u"Fifteen"_s, u"Sixteen"_s, u"Seventeen"_s, u"Eighteen"_s, u"Nineteen"_s,
                                   u"Twenty"_s};
    static const QStringList tens{QString(),  QString(),  u"Twenty"_s,  u"Thirty"_s, u"Forty"_s,
                                  u"Fifty"_s, u"Sixty"_s, u"Seventy"_s, u"Eighty"_s, u"Ninety"_s};
    if (number <= 20) {
        return units.at(number);
    }
    QString words = tens.at(number / 10);
    if (number % 10 != 0) {
        words += u' ' + units.at(number % 10);
    }
    return words;
}

enum class Band { Below, Within, Above };

struct Limits {
    double lower;
    double upper;
};

// The expected value less and plus 10%.
Limits LimitsAround(double expected) {
    return {RoundHalfEven(expected * 0.9, 2), RoundHalfEven(expected * 1.1, 2)};
}

Band BandOf(double measure, const Limits& limits) {
    if (measure < limits.lower) {
        return Band::Below;
    }
    return measure > limits.upper ? Band::Above : Band::Within;
}

const QString NormalHeight = u"Normal Height."_s;
const QString NormalWeight = u"Normal Weight."_s;

QString HeightText(int years, int months, double height) {
    double expected = years * 6 + 77;
    if (years == 0) {
        expected = months < 11 ? 50 : 75;
    } else if (years == 1) {
        expected = months < 11 ? 75 : 83;
    }
    const Limits limits = LimitsAround(expected);
    switch (BandOf(height, limits)) {
    case Band::Below:
        return u"Less Height! Minimum Height Should be "_s + NumberText(limits.lower) + u" cms."_s;
    case Band::Above:
        return u"Over Height! Height Should be between "_s + NumberText(limits.lower) + u" cms And "_s +
               NumberText(limits.upper) + u" cms."_s;
    case Band::Within:
        break;
    }
    return NormalHeight;
}

QString WeightText(int years, int months, double weight) {
    double expected = (years * 7 - 5) / 2.0;
    if (years == 0) {
        expected = months < 3 ? 3.25 : (months + 9) / 2.0;
    } else if (years <= 6) {
        expected = years * 2 + 8;
    }
    const Limits limits = LimitsAround(RoundHalfEven(expected, 2));
    switch (BandOf(weight, limits)) {
    case Band::Below:
        return u"Under Weight! Minimum Weight Should be "_s + NumberText(limits.lower) + u" Kgs."_s;
    case Band::Above:
        return u"Over Weight! Maximum Weight Should be "_s + NumberText(limits.upper) + u" Kgs."_s;
    case Band::Within:
        break;
    }
    return NormalWeight;
}

} // namespace

double RoundHalfEven(double value, int decimals) {
    if (!std::isfinite(value)) {
        return value;
    }
    return FixedText(value, decimals).toDouble();
}

QString MeasureText(double value) {
    return value == 0 ? QString() : NumberText(value);
}

double MeasureOf(const QString& text) {
    return text.trimmed().toDouble();
}

QString NumberText(double value) {
    if (!std::isfinite(value)) {
        return QString::number(value);
    }
    QString text = FixedText(value, std::max(0, SignificantDigits - DigitsOf(value).point));
    if (text.contains(u'.')) {
        while (text.endsWith(u'0')) {
            text.chop(1);
        }
        if (text.endsWith(u'.')) {
            text.chop(1);
        }
    }
    return text;
}

QString TextBefore(const QString& text, const QString& separator) {
    const QString trimmed = text.trimmed();
    const qsizetype at = trimmed.indexOf(separator);
    return at < 0 ? trimmed : trimmed.left(at).trimmed();
}

double SizeInMB(qint64 bytes) {
    if (bytes <= 0) {
        return 0;
    }
    return RoundHalfEven(double(bytes) / 1024 / 1024, 1);
}

bool InList(const QString& value, const QStringList& list) {
    return list.contains(value, Qt::CaseInsensitive);
}

QString AddBackslash(QString path) {
    while (path.endsWith(u' ')) {
        path.chop(1);
    }
    if (!path.endsWith(u'\\') && !path.endsWith(u'/')) {
        path += u'/';
    }
    return path;
}

DateDiff DateDifference(const QDate& asOf, const QDate& birth) {
    if (!asOf.isValid() || !birth.isValid()) {
        return {0, 0, 0};
    }
    int years = asOf.year() - birth.year();
    if (birth.month() > asOf.month()) {
        --years;
    }
    QDate mark = asOf.addYears(-years);
    int months = (mark.year() - birth.year()) * 12 + mark.month() - birth.month();
    if (birth.day() > asOf.day()) {
        --months;
    }
    mark = mark.addMonths(-months);
    const int days = int(birth.daysTo(mark));
    return {std::max(years, 0), std::max(months, 0), std::max(days, 0)};
}

QString AgeText(const QDate& today, const QDate& birth) {
    const DateDiff age = DateDifference(today, birth);
    QString text;
    const auto addPart = [&text](int value, const QString& unit) {
        if (value < 1) {
            return;
        }
        if (!text.isEmpty()) {
            text += u", "_s;
        }
        text += QString::number(value) + unit;
    };
    addPart(age.years, u" Year(s)"_s);
    addPart(age.months, u" Month(s)"_s);
    addPart(age.days, u" Day(s)"_s);
    return text + u' ';
}

QDate BirthFromAge(const QDate& asOf, int years, int months, int days) {
    return asOf.addYears(-years).addMonths(-months).addDays(-days);
}

QString ChildGrowthText(int years, int months, double height, double weight) {
    if (years > 12) {
        return {};
    }
    const QString heightText = height > 0 ? HeightText(years, months, height) : QString();
    const QString weightText = weight > 0 ? WeightText(years, months, weight) : QString();
    if (heightText == NormalHeight && weightText == NormalWeight) {
        return u"Normal Child Growth."_s;
    }
    if (heightText.isEmpty() || weightText.isEmpty()) {
        return heightText + weightText;
    }
    return heightText + u' ' + weightText;
}

QString BodyMassText(double height, double weight) {
    if (height <= 0 || weight <= 0) {
        return {};
    }
    const double metres = height / 100;
    const double mass = RoundHalfEven(weight / (metres * metres), 1);
    const double target = RoundHalfEven(metres * metres * (mass < 18.5 ? 18.5 : 24.9), 1);
    const QString massPart = u" Body Mass ["_s + NumberText(mass) + u"]."_s;
    if (mass < 18.5) {
        return u"Under Weight!"_s + massPart + u" Minimum Weight Should be "_s + NumberText(target) +
               u" Kgs."_s;
    }
    if (mass < 25) {
        return u"Normal Weight."_s + massPart;
    }
    QString verdict = u"Very Severely Obese!"_s;
    if (mass < 30) {
        verdict = u"Over Weight!"_s;
    } else if (mass < 35) {
        verdict = u"Moderately Obese!"_s;
    } else if (mass < 40) {
        verdict = u"Severely Obese!"_s;
    }
    return verdict + massPart + u" Maximum Weight Should be "_s + NumberText(target) + u" Kgs."_s;
}

QString WeightAssessment(int years, int months, double height, double weight) {
    return years > 12 ? BodyMassText(height, weight) : ChildGrowthText(years, months, height, weight);
}

QString PregnancyStatusText(const QDate& lmp, const QDate& reference) {
    if (!lmp.isValid() || !reference.isValid() || lmp > reference) {
        return {};
    }
    // Completed months: the calendar difference, brought back while it passes the reference date
    // and forward while one more month still fits.
    int months = (reference.year() - lmp.year()) * 12 + reference.month() - lmp.month();
    while (lmp.addMonths(months) > reference) {
        --months;
    }
    while (lmp.addMonths(months + 1) <= reference) {
        ++months;
    }
    const int weeks = int(lmp.daysTo(reference) / 7);

    const int trimesterNo = months / 3 + 1;
    const QString trimester = (trimesterNo == 1   ? u"FIRST "_s
                               : trimesterNo == 2 ? u"SECOND "_s
                                                  : u"FINAL "_s) +
                              u"TRIMESTER. "_s;

    QString duration;
    if (weeks > 0) {
        duration = QString::number(weeks);
        if (lmp.addDays(qint64(weeks) * 7) < reference) {
            duration += u" (+) "_s;
        }
        duration += weeks < 2 ? u" WEEK "_s : u" WEEKS "_s;
        duration += u"PREGNANCY."_s;
    }
    return (trimester.trimmed() + u"  "_s + duration.trimmed()).trimmed();
}

QString AmountInWords(double amount) {
    // The amount as "0#.00", right-aligned in 16 places, is read in slices from the left.
    struct Slice {
        int start;
        int length;
        QString before;
        QString unit;
    };
    static const Slice slices[] = {{0, 2, {}, u"Lakh"_s},     {2, 2, {}, u"Thousand"_s},
                                   {4, 2, {}, u"Crore"_s},    {6, 2, {}, u"Lakh"_s},
                                   {8, 2, {}, u"Thousand"_s}, {10, 1, {}, u"Hundred"_s},
                                   {11, 2, {}, {}},           {14, 2, u"and Paise"_s, {}}};
    QString text = FixedText(amount, 2);
    const qsizetype point = text.indexOf(u'.');
    if (point >= 0 && point < 2) {
        text.prepend(QString(2 - point, u'0'));
    }
    text = text.rightJustified(16, u' ');

    QStringList words{u"Rupees"_s};
    for (const Slice& slice : slices) {
        const int value = text.mid(slice.start, slice.length).trimmed().toInt();
        if (value < 1) {
            continue;
        }
        if (!slice.before.isEmpty()) {
            words << slice.before;
        }
        words << NumberWords(value);
        if (!slice.unit.isEmpty()) {
            words << slice.unit;
        }
    }
    if (words.size() == 1) {
        return u"Rupees Zero Only"_s;
    }
    return words.join(u' ') + u" Only"_s;
}

} // namespace vantrel
