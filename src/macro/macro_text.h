#pragma once
// Macro text: the string helpers every stage of the macro language works with.
// Positions are 1-based character positions throughout, as in the language's own
// arithmetic; the helpers at the top are the one place that converts to QString's
// 0-based indexes.
#include <QChar>
#include <QString>
#include <QVarLengthArray>

namespace macro {

// Marker characters reserved by the language (see ReplaceQuotes, RemoveSpaces, ...).
inline constexpr QChar kQuoteMarker = QChar(0xE0);      // à: a double quote inside a stored value
inline constexpr QChar kNotEqualMarker = QChar(0xE0);   // à: "<>" inside one comparison term
inline constexpr QChar kQuoteMarker2 = QChar(0xC0);     // À: second quote marker, read only
inline constexpr QChar kSpaceMarker = QChar(0xC8);      // È: a blank that survives RemoveSpaces
inline constexpr QChar kAmpersandMarker = QChar(0xE5);  // å: "&" inside a quoted literal
inline constexpr QChar kLessEqualMarker = QChar(0xE7);  // ç: "<=" or "=<"
inline constexpr QChar kGreaterEqualMarker = QChar(0xE8);  // è: ">=" or "=>"

inline const QString kLiteralPlaceholder = QStringLiteral("ALITERAL");
inline const QString kEmptyPlaceholder = QStringLiteral("AEMPTY");
inline const QString kCrLf = QStringLiteral("\r\n");
inline constexpr QChar kQuote = QLatin1Char('"');
// The frame every [VAR=Val] message ends with.
inline const QString kVarStatement = QStringLiteral(" for [VAR=Val] statement");

// --- 1-based position helpers ------------------------------------------------------

// The character at position pos, or a null QChar outside 1..length.
inline QChar CharAt(const QString &text, int pos)
{
    return pos >= 1 && pos <= text.size() ? text.at(pos - 1) : QChar();
}
inline QChar CharAt(QStringView text, int pos)
{
    return pos >= 1 && pos <= text.size() ? text.at(pos - 1) : QChar();
}
// Up to len characters from position start (len < 0: to the end).
QString Mid(const QString &text, int start, int len = -1);
QString Left(const QString &text, int len);
QString Right(const QString &text, int len);
// Position of search in text from start, 0 when absent or either string is empty.
int InStr(int start, const QString &text, const QString &search);
int InStr(const QString &text, const QString &search);
// Last position of search that ends at or before start (start < 1: the whole text).
int InStrRev(const QString &text, const QString &search, int start = -1);
// The same for one character.
inline int InStr(const QString &text, QChar search) { return static_cast<int>(text.indexOf(search)) + 1; }
inline int InStrRev(const QString &text, QChar search, int start)
{
    const qsizetype from = start < 1 || start > text.size() ? text.size() - 1 : start - 1;
    return static_cast<int>(text.lastIndexOf(search, from)) + 1;
}
inline int Len(const QString &text) { return static_cast<int>(text.size()); }
inline int Len(QStringView text) { return static_cast<int>(text.size()); }
// True when text holds c: a plain scan, cheaper than a search on the short texts here.
inline bool ContainsChar(QStringView text, QChar c)
{
    for (const QChar x : text)
        if (x == c)
            return true;
    return false;
}
// A QString that reads view's characters in place, for a call that only reads its
// argument; it must not outlive them.
inline QString Borrowed(QStringView view) { return QString::fromRawData(view.data(), view.size()); }

// A text with mark added in front where it is not there already, then at the end where
// it is not there already (an empty text becomes the one mark): the form the
// evaluators scan a sub-expression in. Short texts stay on the stack.
class FramedText
{
public:
    FramedText(QStringView text, QChar mark)
    {
        const bool front = text.isEmpty() || text.front() != mark;
        const bool back = !text.isEmpty() && text.back() != mark;
        chars_.reserve(text.size() + 2);
        if (front)
            chars_.append(mark);
        chars_.append(text.data(), text.size());
        if (back)
            chars_.append(mark);
    }
    QStringView view() const { return QStringView(chars_.constData(), chars_.size()); }

private:
    QVarLengthArray<QChar, 128> chars_;
};

// --- quotes and literals --------------------------------------------------------------

// True when the count of double quotes in positions 1 to position-1 is odd.
bool BetweenQuotes(const QString &text, int position);
// True when the text holds an even number of double quotes (zero included).
bool EvenQuotes(const QString &text);
void ReplaceQuotes(QString &text);
void RestoreQuotes(QString &text);
// Each quoted literal becomes ALITERAL (AEMPTY when empty). "" or "Missing quote".
QString ReplaceLiterals(QString &text);
// The text without its quoted literals and the "&" that join them; "" (and the
// argument emptied) when a literal is joined by anything other than "&".
QString RemoveAllLiterals(QString &text);
QString ReplaceAmpersandInQuotes(const QString &text);
QString RestoreAmpersand(const QString &text);
void UCaseOutsideQuotes(QString &text);

// --- blanks ---------------------------------------------------------------------------

void RemoveSpaces(QString &text);   // blanks outside quotes gone, upper case outside quotes
void RemoveSpaces2(QString &text);  // the same, case as typed
void MIDCommas4Spaces(QString &text);
void MIDSpaces4Commas(QString &text);

// --- small tests and searches ------------------------------------------------------------

QString ReplaceString(const QString &text, int first, int last, const QString &replacement);
inline bool IsOperator(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-') || c == QLatin1Char('*') || c == QLatin1Char('/');
}
bool InstrOperator(const QString &text);
bool IsCondOperator(QChar c);
bool IsSeqDelimiter(QChar c);
// InStr that answers a negative position for a hit between quotes; 0 when either
// string is empty or blank, or there is no hit.
int InStr1(int start, const QString &text, const QString &search);
int InStrRev1(const QString &text, const QString &search, int start = -1);
// True when the character just before first or just after last is a name character.
bool IsSubstring(const QString &text, int first, int last);
// One character for each two-character comparison operator of a term.
QString ReplaceCondOperators(const QString &term);
// Each carriage return plus line feed becomes "~".
void ReplacevbCrLf(QString &text);

} // namespace macro
