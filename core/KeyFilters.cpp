#include "core/KeyFilters.h"

#include <algorithm>

namespace vantrel {

namespace {

constexpr int Blank = ' ';
constexpr int Apostrophe = '\'';
constexpr int VerticalBar = '|';
constexpr int Comma = ',';
constexpr int Hyphen = '-';
constexpr int FullStop = '.';

bool IsControlKey(int key) {
    return key == 8 || key == 9 || key == 12 || key == 13 || key == 27;
}

bool IsDigit(int key) {
    return key >= '0' && key <= '9';
}

KeyResult Accept(int key) {
    return {key, false};
}

KeyResult Drop() {
    return {0, false};
}

KeyResult Refuse() {
    return {0, true};
}

qsizetype DigitCount(QStringView text) {
    return std::count_if(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

KeyResult KeyUpperCase(int key) {
    if (key == Apostrophe || key == VerticalBar) {
        return Drop();
    }
    return Accept(key >= 'a' && key <= 'z' ? key - 'a' + 'A' : key);
}

KeyResult KeyLowerCase(int key) {
    if (key == Apostrophe || key == VerticalBar) {
        return Drop();
    }
    return Accept(key >= 'A' && key <= 'Z' ? key - 'A' + 'a' : key);
}

KeyResult KeyTelephone(int key, const QString& text, bool allowSeparators) {
    if (IsControlKey(key) || key == Comma || (key >= '1' && key <= '9')) {
        return Accept(key);
    }
    if (key == '0') {
        return text.isEmpty() && !allowSeparators ? Refuse() : Accept(key);
    }
    if (key == FullStop) {
        return text.contains(u'.') ? Refuse() : Accept(key);
    }
    if (allowSeparators && (key == Blank || key == Hyphen)) {
        return Accept(key);
    }
    return Refuse();
}

KeyResult KeyAlphanumeric(int key) {
    if (IsControlKey(key) || IsDigit(key) || (key >= 'A' && key <= 'Z') || (key >= 'a' && key <= 'z') ||
        key == Blank || key == FullStop) {
        return Accept(key);
    }
    return Refuse();
}

KeyResult KeyMeasure(int key, const QString& text, int selStart) {
    return KeyDecimal(key, 3, 2, text, selStart);
}

KeyResult KeyDecimal(int key, int intDigits, int decDigits, const QString& text, int selStart) {
    if (IsControlKey(key)) {
        return Accept(key);
    }
    const qsizetype point = text.indexOf(u'.');
    if (key == FullStop) {
        return decDigits > 0 && point < 0 ? Accept(key) : Refuse();
    }
    if (!IsDigit(key)) {
        return Refuse();
    }
    if (key == '0' && selStart <= 0) {
        return Drop();
    }
    const QStringView typed(text);
    if (point >= 0 && selStart > point) {
        return DigitCount(typed.mid(point + 1)) < decDigits ? Accept(key) : Refuse();
    }
    return DigitCount(point < 0 ? typed : typed.left(point)) < intDigits ? Accept(key) : Refuse();
}

KeyResult KeySingleSpace(int key, const QString& text, int selStart) {
    if (key != Blank || text.isEmpty()) {
        return Accept(key);
    }
    const qsizetype before = std::clamp<qsizetype>(selStart, 1, text.size()) - 1;
    return text.at(before) == u' ' ? Refuse() : Accept(key);
}

KeyResult KeyName(int key, const QString& text, int selStart) {
    const KeyResult raised = KeyUpperCase(key);
    if (raised.key == 0) {
        return raised;
    }
    return KeySingleSpace(raised.key, text, selStart);
}

} // namespace vantrel
