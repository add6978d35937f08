#include "macro/tidyup.h"

#include "macro/commands.h"
#include "macro/macro_text.h"

namespace macro {

namespace {

constexpr QChar kCR = QLatin1Char('\r');
constexpr QChar kLF = QLatin1Char('\n');
constexpr QChar kBlank = QLatin1Char(' ');

// The steps of RemoveBlankLinesActionText; false when it left early on a text that is
// a bare line end.
bool removeBlankLines(QString &text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c != kCR && c != kLF) {
            out += c;
            continue;
        }
        // Only CR LF ends a line (as for the parser): a line feed alone is part of its
        // line unless it stands at the start of one.
        if (out.endsWith(kCrLf))
            continue;
        if (c == kCR && i + 1 < text.size() && text.at(i + 1) == kLF) {
            out += kCrLf;
            ++i;
        } else {
            out += c;
        }
    }
    text = out;
    // The ends last, as dropping a line feed can leave a line end there.
    while (text.startsWith(kCrLf)) {
        if (text.size() < 3)
            return false;
        text.remove(0, 2);
    }
    while (text.endsWith(kCrLf)) {
        if (text.size() < 3)
            return false;
        text.chop(2);
    }
    return true;
}

bool onlyBlanks(const QString &text, qsizetype from, qsizetype to)
{
    for (qsizetype i = from; i < to; ++i)
        if (text.at(i) != kBlank)
            return false;
    return true;
}

bool startsWithWord(const QString &text, qsizetype at, QLatin1String word)
{
    return text.size() - at >= word.size()
           && QStringView(text).mid(at, word.size()).compare(word, Qt::CaseInsensitive) == 0;
}

// A CR alone ends a line as CR LF does (TidyupCode writes both as CR LF); made CR LF
// first, so that the blank lines it makes go with the others and tidied text stays as it
// is when tidied again.
void pairLoneCRs(QString &text)
{
    qsizetype at = text.indexOf(kCR);
    while (at >= 0 && at + 1 < text.size() && text.at(at + 1) == kLF)
        at = text.indexOf(kCR, at + 2);
    if (at < 0)
        return;
    QString out;
    out.reserve(text.size() + text.size() / 8);
    for (qsizetype i = 0; i < text.size(); ++i) {
        out += text.at(i);
        if (text.at(i) == kCR && (i + 1 >= text.size() || text.at(i + 1) != kLF))
            out += kLF;
    }
    text = out;
}

} // namespace

void RemoveBlankLinesActionText(QString &text) { removeBlankLines(text); }

void TidyupCode(QString &text)
{
    pairLoneCRs(text);
    if (!removeBlankLines(text))
        return;
    const QString wrapped = kCrLf + text + kCrLf;
    const qsizetype n = wrapped.size();

    QString out;
    out.reserve(n);
    bool inQuote = false;
    bool rawLine = false;  // keystroke or comment line: copied as it stands
    bool earlyEnd = false;
    qsizetype i = 0;
    while (i < n) {
        const QChar c = wrapped.at(i);
        if (c == QLatin1Char('"'))
            inQuote = !inQuote;
        if (c == kCR) {
            inQuote = false;
            rawLine = false;
            out += kCrLf;
            ++i;
            if (i < n && wrapped.at(i) == kLF)
                ++i;
            if (i >= n)
                break;
            const qsizetype e = wrapped.indexOf(kCR, i);
            if (e < 0) {
                earlyEnd = true;
                break;
            }
            qsizetype bracket = -1;
            qsizetype hash = -1;
            for (qsizetype k = i; k < e && bracket < 0 && hash < 0; ++k) {
                if (wrapped.at(k) == QLatin1Char('['))
                    bracket = k;
                else if (wrapped.at(k) == QLatin1Char('#'))
                    hash = k;
            }
            if (bracket < 0 && hash < 0) {
                rawLine = true;
            } else if (hash >= 0) {
                if (onlyBlanks(wrapped, i, hash))
                    i = hash;
                rawLine = true;
            } else if (onlyBlanks(wrapped, i, bracket)) {
                i = bracket;
            } else {
                rawLine = true;
            }
            continue;
        }
        if (c != kBlank || inQuote || rawLine) {
            out += c;
        } else {
            const QChar next = i + 1 < n ? wrapped.at(i + 1) : QChar();
            if (next != kBlank && next != QLatin1Char(']') && !out.endsWith(QLatin1Char('[')))
                out += c;
        }
        ++i;
    }
    if (out.startsWith(kCrLf))
        out.remove(0, 2);
    if (earlyEnd && out.endsWith(kCrLf))
        out.chop(2);
    text = out;
    RemoveCondSpaces(text);
}

void RemoveCondSpaces(QString &text)
{
    static const QLatin1String kCondWords[] = {
        QLatin1String("[IF "), QLatin1String("[CANCEL IF "), QLatin1String("[LOOP ")};
    QString out;
    out.reserve(text.size());
    qsizetype start = 0;
    while (start < text.size()) {
        const qsizetype e = text.indexOf(kCR, start);
        if (e < 0 || text.at(start) != QLatin1Char('[')) {
            const qsizetype end = e < 0 ? text.size() : e;
            out += QStringView(text).mid(start, end - start);
            if (e < 0)
                break;
            start = e;
        } else {
            QString line = text.mid(start, e - start);
            bool done = false;
            for (const QLatin1String word : kCondWords) {
                if (startsWithWord(line, 0, word)) {
                    QString condition = line.mid(word.size());
                    RemoveSpaces2(condition);
                    line = line.left(word.size()) + condition;
                    done = true;
                    break;
                }
            }
            if (!done && WhichCommand(line) == CmdVAR)
                RemoveSpaces2(line);
            out += line;
            start = e;
        }
        // Copy the line end.
        out += kCR;
        ++start;
        if (start < text.size() && text.at(start) == kLF) {
            out += kLF;
            ++start;
        }
    }
    text = out;
}

} // namespace macro
