#include "core/KeyFilters.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::StringLiterals;

namespace vantrel {

void PrintTo(const KeyResult& result, std::ostream* out) {
    *out << "{key " << result.key << (result.beep ? ", beep}" : ", silent}");
}

namespace {

constexpr KeyResult Dropped{0, false};
constexpr KeyResult Beeped{0, true};

KeyResult Passed(int key) {
    return {key, false};
}

TEST(KeyFilters, UpperAndLowerCase) {
    const struct {
        int key, upper, lower;
    } cases[] = {{'a', 'A', 'a'}, {'z', 'Z', 'z'}, {'A', 'A', 'a'}, {'Z', 'Z', 'z'}, {'`', '`', '`'},
                 {'{', '{', '{'}, {'@', '@', '@'}, {'[', '[', '['}, {8, 8, 8},       {27, 27, 27}};
    for (const auto& c : cases) {
        EXPECT_EQ(KeyUpperCase(c.key), Passed(c.upper)) << c.key;
        EXPECT_EQ(KeyLowerCase(c.key), Passed(c.lower)) << c.key;
    }
    EXPECT_EQ(KeyUpperCase('\''), Dropped);
    EXPECT_EQ(KeyLowerCase('|'), Dropped);
}

TEST(KeyFilters, Telephone) {
    const struct {
        int key;
        QString text;
        bool separators;
        KeyResult expected;
    } cases[] = {
        {'0', u""_s, false, Beeped},        {'0', u""_s, true, Passed('0')},
        {'0', u"9"_s, false, Passed('0')},  {'7', u""_s, false, Passed('7')},
        {'.', u"98"_s, false, Passed('.')}, {'.', u"9.8"_s, true, Beeped},
        {',', u"98"_s, false, Passed(',')}, {' ', u"98"_s, false, Beeped},
        {' ', u"98"_s, true, Passed(' ')},  {'-', u"98"_s, false, Beeped},
        {'-', u"98"_s, true, Passed('-')},  {'+', u""_s, true, Beeped},
        {'a', u""_s, true, Beeped},         {'\'', u""_s, true, Beeped},
        {8, u""_s, false, Passed(8)},       {13, u""_s, false, Passed(13)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(KeyTelephone(c.key, c.text, c.separators), c.expected)
            << char(c.key) << " after '" << c.text.toStdString() << "'";
    }
}

TEST(KeyFilters, Alphanumeric) {
    for (const int key : std::initializer_list<int>{'a', 'z', 'A', 'Z', '0', '9', ' ', '.', 8, 27}) {
        EXPECT_EQ(KeyAlphanumeric(key), Passed(key)) << key;
    }
    for (const int key : std::initializer_list<int>{'\'', '|', '-', '@', '_', '`', '{'}) {
        EXPECT_EQ(KeyAlphanumeric(key), Beeped) << key;
    }
}

TEST(KeyFilters, Decimal) {
    const struct {
        int key, intDigits, decDigits;
        QString text;
        int selStart;
        KeyResult expected;
    } cases[] = {
        {'3', 3, 0, u"12"_s, 2, Passed('3')},
        {'4', 3, 0, u"123"_s, 3, Beeped},
        {'.', 3, 0, u"12"_s, 2, Beeped},
        {'.', 3, 2, u"12"_s, 2, Passed('.')},
        {'.', 3, 2, u"1.2"_s, 3, Beeped},
        {'5', 3, 2, u"123.4"_s, 5, Passed('5')},
        {'6', 3, 2, u"123.45"_s, 6, Beeped},
        {'9', 3, 2, u"123.4"_s, 3, Beeped},      // before the full stop: whole part full
        {'9', 3, 2, u"123.4"_s, 4, Passed('9')}, // after it: one place left
        {'9', 3, 2, u"12.45"_s, 1, Passed('9')},
        {'0', 3, 2, u""_s, 0, Dropped},
        {'0', 3, 2, u"5"_s, 0, Dropped},
        {'0', 3, 2, u"5"_s, 1, Passed('0')},
        {'0', 3, 2, u"123"_s, 3, Beeped},
        {'-', 3, 2, u""_s, 0, Beeped},
        {8, 3, 2, u"123.45"_s, 6, Passed(8)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(KeyDecimal(c.key, c.intDigits, c.decDigits, c.text, c.selStart), c.expected)
            << char(c.key) << " at " << c.selStart << " in '" << c.text.toStdString() << "'";
    }
}

TEST(KeyFilters, SingleSpaceAndName) {
    const struct {
        int key;
        QString text;
        int selStart;
        KeyResult expected;
    } cases[] = {
        {' ', u""_s, 0, Passed(' ')},   {' ', u"AB"_s, 2, Passed(' ')},  {' ', u"AB "_s, 3, Beeped},
        {' ', u"A B"_s, 2, Beeped},     {' ', u"A B"_s, 1, Passed(' ')}, {' ', u" AB"_s, 0, Beeped},
        {' ', u"AB"_s, 0, Passed(' ')}, {'x', u"A "_s, 2, Passed('x')},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(KeySingleSpace(c.key, c.text, c.selStart), c.expected)
            << c.selStart << " in '" << c.text.toStdString() << "'";
    }
    EXPECT_EQ(KeyName('a', u"RAM "_s, 4), Passed('A'));
    EXPECT_EQ(KeyName(' ', u"RAM "_s, 4), Beeped);
    EXPECT_EQ(KeyName('\'', u"RAM"_s, 3), Dropped);
}

} // namespace
} // namespace vantrel
