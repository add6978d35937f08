#pragma once
// Operands of the statements that take a string and name a result variable, and the
// number operands of the mouse statements, read from a running macro's line.
#include <QList>
#include <QString>

namespace engine {

// The text between the first blank and the closing bracket, or "" when there is none.
QString OperandText(const QString &text);

// A string operand at the start of operand: a double-quoted literal, which runs to the
// last quote (its text, possibly empty), or a variable, one word (its value as text).
// False when it is missing, the quotes do not match, or the variable is unset. rest,
// when given, receives what follows it, trimmed.
bool StringOperand(const QString &operand, QString &value, QString *rest = nullptr);

// GetFName: the string operand behind the first blank: a double-quoted literal, which
// runs to the last quote of the line (its text, possibly empty), or a variable, one word
// (its value as text). False when the operand is missing, the quotes do not match, or
// the variable is unset. rest, when given, receives what follows the operand up to the
// closing bracket, trimmed (the second operand of a two-operand statement).
bool GetFName(int line, QString &value, QString *rest = nullptr);

// The operand forms of the two-operand statements: the first operand behind the first
// blank, a double-quoted string or a variable; the result name behind the last blank.
struct StringAndResult {
    QString text;
    QString resultName;
};
// "" and out filled, or the full message "<text> for <statementName> statement".
// varCaption: "File", "Class name", "URL", ...; emptyCaption: "file", "class name", "URL";
// resultCaption: the word of "Invalid format for <resultCaption>variable" and of
// AllLetters' caption ("answer ", "source "). missingResult, when given, replaces the
// message for a line without a result name.
QString GetStringAndResult(int line, const QString &statementName, const QString &varCaption,
                           const QString &emptyCaption, const QString &resultCaption, StringAndResult &out,
                           const QString &missingResult = {});

// One operand of a statement with several: a double-quoted literal, from a quote to the
// next quote, or a word.
struct OperandToken {
    QString text;  // the literal without its quotes, or the word
    bool literal = false;
};
// The operands of a statement line, between the first blank and the closing bracket.
// False when a quote has no partner.
bool SplitOperands(const QString &lineText, QList<OperandToken> &tokens);
// The text of a string operand: the literal's text or the variable's value. "" and value
// set, or the message part: "<varCaption> variable not assigned", "Number variable not
// allowed", or (with emptyCaption given) "Empty <emptyCaption> variable".
QString OperandValue(const OperandToken &token, const QString &varCaption, const QString &emptyCaption,
                     QString &value);

// One position operand: a number, or a number variable. "" and value set, or the message
// part naming the operand by caption ("X position", "Xmin position"), to which the
// caller adds " for <statement> statement". A value below 0 or beyond limit (when limit
// is above 0) is "Invalid <caption>".
QString GetPositionOperand(const QString &word, const QString &caption, float limit, float &value);

// GetMouseParams: x and y of [LEFTDOWN x y] and its sisters, checked against the
// screen's width (for both, as the checker does). "" or the full message.
QString GetMouseParams(int line, float &x, float &y);

} // namespace engine
