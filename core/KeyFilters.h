#pragma once

#include <QString>

// What a text box accepts from the keyboard. Each filter takes the character code of the key just
// typed and gives back the key to insert, 0 to drop it, and whether to beep. Backspace (8), Tab (9),
// Form Feed (12), Enter (13) and Escape (27) always pass.
namespace vantrel {

struct KeyResult {
    int key;
    bool beep;

    bool operator==(const KeyResult&) const = default;
};

// a to z raised to capitals; apostrophe and vertical bar dropped silently.
KeyResult KeyUpperCase(int key);

// A to Z lowered, for e-mail addresses; apostrophe and vertical bar dropped silently.
KeyResult KeyLowerCase(int key);

// Digits, one full stop and the comma; a zero not as the first key of a box without separators;
// with `allowSeparators` also blank and hyphen. Everything else beeps.
KeyResult KeyTelephone(int key, const QString& text, bool allowSeparators);

// Letters, digits, blank and full stop, as passwords take them. Everything else beeps.
KeyResult KeyAlphanumeric(int key);

// A number of at most `intDigits` digits before and `decDigits` after one full stop, judged at
// the cursor `selStart`. A zero typed at the very start is dropped without a beep.
KeyResult KeyDecimal(int key, int intDigits, int decDigits, const QString& text, int selStart);
// A body measure (height, weight, temperature): KeyDecimal with three digits and two decimals.
KeyResult KeyMeasure(int key, const QString& text, int selStart);

// No blank next to a blank: the character before the cursor, or the first one at the start of the
// box, must not be a blank. An empty box takes anything.
KeyResult KeySingleSpace(int key, const QString& text, int selStart);

// The filter of the name boxes: KeyUpperCase, then KeySingleSpace.
KeyResult KeyName(int key, const QString& text, int selStart);

} // namespace vantrel
