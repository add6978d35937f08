#pragma once
// Shared pieces of the statement checkers (good_*.cpp): the two upper-cased forms of a
// statement line, its operand words, and the rule table that most operand lists are
// checked with. Internal to the checkers; callers use macro/good_statements.h.
#include <QString>
#include <QStringList>
#include <initializer_list>

namespace macro::good {

// One statement line as the checkers read it. Both texts are upper-cased character by
// character, so a position in one is the same character in the line as written.
struct StatementText {
    QString written;       // quotes as written: the tests on where a quote stands
    QString words;         // each quoted literal as ALITERAL or AEMPTY: the operand words
    QString missingQuote;  // "Missing quote" when a quote has no partner, else ""
};
StatementText Prepare(const QString &line);

// The operand words: the text between the first blank and the closing bracket, cut at
// each blank. An empty list when there is no blank; a doubled blank gives an empty word.
QStringList OperandWords(const QString &words);

bool IsPlaceholder(const QString &word);
bool HoldsPlaceholder(const QString &word);
// True when the line's last double quote stands directly before its closing "]".
bool LastQuoteClosesLine(const QString &written);

// " for [X ...] statement", the frame of most fragments; form is the statement's form.
QString For(const QString &form);
// text + " " + form + " statement", for texts that carry their own preposition
// ("Invalid format for answer variable in").
QString Framed(const char *text, const QString &form);
// "Invalid format for [X ...] statement": a wrong number of operands.
QString InvalidFormat(const QString &form);

// What one operand may be, and the texts a failure gives. A text that is nullptr falls
// back: missing to InvalidFormat, the others to AllLetters's message + For(form).
struct OperandRule {
    enum Class {
        Name,              // a variable name; a literal is never one
        NameOrLiteral,     // a name or a non-empty literal
        NameOrAnyLiteral,  // a name or any literal, "" included
    };
    Class kind = Name;
    const char *caption = "";       // AllLetters caption, with its trailing blank
    const char *missing = nullptr;  // the operand is absent or empty
    const char *quoted = nullptr;   // a literal where none belongs, or glued to other text
    const char *notName = nullptr;  // in place of AllLetters's message
};

// Checks words against the rules in order; a word beyond the last rule is a wrong
// number of operands. "" or the first message, framed.
QString CheckOperands(const QStringList &words, const QString &form, std::initializer_list<OperandRule> rules);
// A statement whose operands the rules say all about: the line's quotes, then its words.
QString CheckByRules(const QString &line, int number, std::initializer_list<OperandRule> rules);

} // namespace macro::good
