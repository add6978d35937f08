#pragma once
// Macro variables: the name rule, the table of one macro run, and the special names
// that read and write parts of the application instead of the table.
//
// Special names (compared on the whole name, any case):
//   DATE          the current date as "yyyy-MM-dd" (ISO 8601, e.g. "2024-03-09"), string
//   TIME          the current time as "HH:mm:ss" (24-hour, e.g. "07:05:30"), string
//   TIMER         seconds since midnight, single precision, number
//   TIMEOUT       the run's time limit in minutes; assigning a value above 0 sets it
//   PATH          the current folder; assigning an existing folder changes to it
//   SONAMARKTEXT  the reader's text box (platform::ReaderText)
//   ASCII         an ordinary variable that reads as the character of its code
//   LEN MID VAL STR  reserved function names: never stored, never found
// DATE and TIME are fixed text forms, independent of the locale, so that the date
// statements can read them back with QDate::fromString(text, Qt::ISODate) and
// QTime::fromString(text, u"HH:mm:ss").
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>

namespace macro {

inline constexpr int kTypeNumber = 0;
inline constexpr int kTypeString = 1;
inline constexpr const char *kDateFormat = "yyyy-MM-dd";
inline constexpr const char *kTimeFormat = "HH:mm:ss";
inline constexpr double kDefaultMacroTimeout = 10800.0;  // seconds (three hours)

// "" when text is a variable name (every character from "A" to "z" by code; the
// empty text passes); otherwise the message, built with caption ("LHS ", ...).
QString AllLetters(QStringView text, const QString &caption);
// True when AllLetters(text, ...) is "", without building a message.
bool IsVarName(QStringView text);

// A value as stored: text or a double. A number may also be held as text, in the form
// its caller passed it.
struct Value {
    bool isDouble = false;
    double number = 0;
    QString text;

    static Value fromNumber(double v) { return {true, v, {}}; }
    static Value fromText(const QString &t) { return {false, 0, t}; }
    // The value as text: a double in the general format.
    QString toText() const;
    // The value as a number: a double as it is, a text through Val1.
    double toNumber() const;
};

struct MacroVar {
    QString VarName;   // the name as first written
    int VarType = kTypeNumber;
    Value VarValue;
};

// The variables of one macro run, 1-based in the language, index 0 here, and the run's
// time limit, which TIMEOUT reads and writes.
struct VariableTable {
    QList<MacroVar> MacroVars;
    QHash<QString, int> byUpperName;  // upper-cased name -> index into MacroVars
    double MacroTimeout = kDefaultMacroTimeout;  // seconds

    int VarCount() const { return static_cast<int>(MacroVars.size()); }
    void reset();
};

VariableTable &variableTable();
// Clears the table (VarCount 0) and sets the default time limit. Called at each run's
// start.
void ResetVariables();

// Stores or creates a variable; the special names act as tabled above. A string's
// double quotes are stored as the à marker.
void SetVarVal(const QString &name, int type, const Value &value);
void SetVarVal(const QString &name, double number);        // type 0
void SetVarVal(const QString &name, const QString &text);  // type 1

// The value as text, and its type in type. A name that is not found is reported by
// emptying name (the value is then empty too); an empty name changes nothing.
QString GetVarVal(QString &name, int &type);
// 1-based index of the variable, 0 when none; special names are not considered.
int GetVarIndex(const QString &name);
// True for LEN, VAL, MID, TIME, TIMER, DATE and STR, which may not be assigned.
bool LeftSpecial(const QString &name);

// A number variable's value without the text round trip; the same answer as
// Val1(GetVarVal(...)). False when the name is not found (name rules as GetVarVal).
bool GetVarNumber(const QString &upperName, double &number, int &type);

// --- the outside world the special names reach --------------------------------------

// Local date and time; tests replace the source (nullptr restores the real clock).
using DateTimeSource = std::function<QDateTime()>;
void SetDateTimeSource(DateTimeSource source);
QString CurrentDateText();
QString CurrentTimeText();
// Seconds since midnight as TIMER reads them (single precision).
float TimerSeconds();
// The run's time limit in minutes, as TIMEOUT reads it.
double TimeoutMinutes();
// The reader's text, "" when no reader is installed.
QString ReaderTextValue();

// Upper case character by character: the text keeps its length (positions found in
// the copy are positions in the original).
QString UpperSameLength(const QString &text);
// One character as UpperSameLength writes it: ASCII maps only a-z, other characters
// go through QChar.
inline QChar UpperChar(QChar c)
{
    const char16_t u = c.unicode();
    if (u < 0x80)
        return u >= u'a' && u <= u'z' ? QChar(char16_t(u - 0x20)) : c;
    return c.toUpper();
}
// name in upper case, for a look-up. When name is upper case already the result reads
// name's characters in place (QString::fromRawData) and must not outlive them.
QString UpperNameView(QStringView name);

} // namespace macro
