#pragma once
// Number texts of the macro language. With Val1 (numbers.h) this is the language's one
// number module: every value that is written back into an expression, shown by STR()
// or stored as text goes through one of these formats.
#include "macro/numbers.h"

#include <QString>

namespace macro {

// The pattern of every intermediate result: fifteen optional digit places each side.
inline constexpr const char *kResultPattern = "###############.###############";
// The pattern of TIMER and TIMEOUT when they are substituted into a number expression.
inline constexpr const char *kSecondsPattern = "########.###";

// A number by a pattern of "#" (optional digit), "0" (required digit) and one ".".
// Digits are rounded at the last decimal place; "#" places drop leading and trailing
// zeros, and the point stays even with no decimals: 3 by "#.#" is "3.", 0.5 is ".5",
// 0 by "#.#" is ".", and 0 by "###" is "". More integer digits than places are kept.
QString FormatNumber(double value, const char *pattern);

// The result text of an intermediate value: "0" for exactly 0, otherwise the value by
// kResultPattern (".5", "3.", "-2.25"). A value too small for fifteen decimals is ".".
// Throws std::overflow_error for a value that is not finite (the arithmetic overflowed).
QString ResultText(double value);
// Room for any result text: 1e308 written out in full, decimals, sign and point.
inline constexpr qsizetype kResultTextRoom = 432;
// ResultText written into out (kResultTextRoom characters); returns its length. An
// expression is rewritten in place with it, without building a string.
qsizetype WriteResultText(double value, char16_t *out);
// Val1(ResultText(value)), the value as it reads back from its result text; 0 for 0.
double ResultValue(double value);

// The value by kSecondsPattern, as TIMER and TIMEOUT are substituted ("45296.5").
QString SecondsText(double value);

// The general format: the shortest text that reads back as the same double ("3",
// "0.5", "-2.25", "1E+20"). STR() and number variables read as text use it.
QString GeneralFormat(double value);
// The same for a single-precision value (TIMER), shortest as a float.
QString GeneralFormat(float value);

// The language's number test: Val1(word) is not 0, or the word is exactly "0". So
// "0.0", "00" and ".0" are not numbers, and "." is not one either.
bool IsNumber(const QString &word);

// Rounds to the nearest integer, ties to even (the platform's integer conversion).
double RoundEven(double value);

} // namespace macro
