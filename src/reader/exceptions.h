#pragma once
// Pronunciation exceptions: pairs of a word and the spelling that sounds right, loaded
// from "exceptions.txt" at start-up, applied to the text box before it is spoken and
// undone by the reverse rewrite.
#include <QByteArray>
#include <QList>
#include <QString>

namespace reader {

inline constexpr const char *kExceptionsFileName = "exceptions.txt";

struct ExceptionRec {
    QString Word;    // as it stands in the text
    QString Change;  // what is put in its place

    bool operator==(const ExceptionRec &) const = default;
};

struct ExceptionsState {
    QList<ExceptionRec> Exceptions;  // ExceptionCount is its size
    bool ExceptionsMade = false;     // the text in the box has been rewritten
    bool ExceptionsOn = true;        // mnuExceptionsTog ("Make Exceptions") is checked

    int ExceptionCount() const { return int(Exceptions.size()); }
    void reset() { *this = ExceptionsState(); }
};

ExceptionsState &exceptionsState();

// AppFolder + "exceptions.txt".
QString ExceptionsFilePath();

// The pairs of a file's text, one "word","change" line each; a line with an empty field
// is skipped. Reading stops at the first line that is not a pair: ok becomes false and
// the pairs before it are returned.
QList<ExceptionRec> ParseExceptions(const QString &text, bool *ok);
// The file's text for the pairs, in order.
QString FormatExceptions(const QList<ExceptionRec> &pairs);

// Loads the list at start-up. A missing file leaves it empty without a message.
void GetExceptions();
// Writes the whole list to the file (atomically). False after the message when it fails.
bool Save2ExceptionFile();

// Rewrites text in place with every pair, in order. Nothing unless the toggle is on and
// pairs exist. Sets ExceptionsMade when something was replaced.
void MakeExceptions(QString &text);
// The same scan with the roles of word and change swapped.
void UnmakeText(QString &text);

// The menu entries.
void mnuExceptionsApply_Click();
void mnuExceptionsUndo_Click();
void mnuExceptionsTog_Click();
// Puts the stored spelling back over the selection or the whole text of the box.
void UnmakeExceptions();

} // namespace reader
