#include "macro/tidyup.h"

#include "macro/commands.h"
#include "macro/macro_text.h"

#include <algorithm>
#include <iterator>

namespace macro {

namespace {

constexpr QChar kCR = QLatin1Char('\r');
constexpr QChar kLF = QLatin1Char('\n');
constexpr QChar kBlank = QLatin1Char(' ');

// Output written character by character into room made beforehand, with no check or
// growth per character: every check, format and parse of a macro tidies it first.
class Writer
{
public:
    explicit Writer(qsizetype room) : out_(room, Qt::Uninitialized), begin_(out_.data()), at_(begin_) {}
    void put(QChar c) { *at_++ = c; }
    void putLineEnd()
    {
        put(kCR);
        put(kLF);
    }
    bool endsWith(QChar c) const { return at_ > begin_ && at_[-1] == c; }
    bool endsWithLineEnd() const { return at_ - begin_ >= 2 && at_[-2] == kCR && at_[-1] == kLF; }
    QString take()
    {
        out_.truncate(at_ - begin_);
        return std::move(out_);
    }

private:
    QString out_;
    QChar *begin_;
    QChar *at_;
};

// The steps of RemoveBlankLinesActionText; false when it left early on a text that is
// a bare line end.
bool removeBlankLines(QString &text)
{
    const QChar *in = text.constData();
    const qsizetype n = text.size();
    Writer out(n);
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = in[i];
        if (c != kCR && c != kLF) {
            out.put(c);
            continue;
        }
        // Only CR LF ends a line (as for the parser): a line feed alone is part of its
        // line unless it stands at the start of one.
        if (out.endsWithLineEnd())
            continue;
        if (c == kCR && i + 1 < n && in[i + 1] == kLF) {
            out.putLineEnd();
            ++i;
        } else {
            out.put(c);
        }
    }
    text = out.take();
    // The ends last, as dropping a line feed can leave a line end there.
    qsizetype from = 0;
    qsizetype to = text.size();
    const auto lineEndAt = [&](qsizetype at) { return text.at(at) == kCR && text.at(at + 1) == kLF; };
    while (to - from >= 2 && lineEndAt(from)) {
        if (to - from < 3)
            return false;
        from += 2;
    }
    while (to - from >= 2 && lineEndAt(to - 2)) {
        if (to - from < 3)
            return false;
        to -= 2;
    }
    if (from > 0 || to < text.size())
        text = text.sliced(from, to - from);
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
    const QChar *in = text.constData();
    const qsizetype n = text.size();
    Writer out(2 * n);
    for (qsizetype i = 0; i < n; ++i) {
        out.put(in[i]);
        if (in[i] == kCR && (i + 1 >= n || in[i + 1] != kLF))
            out.put(kLF);
    }
    text = out.take();
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
    const QChar *w = wrapped.constData();

    Writer out(2 * n);  // a lone CR would become CR LF
    bool inQuote = false;
    bool rawLine = false;  // keystroke or comment line: copied as it stands
    bool earlyEnd = false;
    qsizetype i = 0;
    while (i < n) {
        const QChar c = w[i];
        if (c == QLatin1Char('"'))
            inQuote = !inQuote;
        if (c == kCR) {
            inQuote = false;
            rawLine = false;
            out.putLineEnd();
            ++i;
            if (i < n && w[i] == kLF)
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
                if (w[k] == QLatin1Char('['))
                    bracket = k;
                else if (w[k] == QLatin1Char('#'))
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
            out.put(c);
        } else {
            const QChar next = i + 1 < n ? w[i + 1] : QChar();
            if (next != kBlank && next != QLatin1Char(']') && !out.endsWith(QLatin1Char('[')))
                out.put(c);
        }
        ++i;
    }
    text = out.take();
    if (text.startsWith(kCrLf))
        text.remove(0, 2);
    if (earlyEnd && text.endsWith(kCrLf))
        text.chop(2);
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
            const QStringView line = QStringView(text).sliced(start, e - start);
            const QLatin1String *word = std::find_if(std::begin(kCondWords), std::end(kCondWords),
                                                     [&](QLatin1String w) { return startsWithWord(text, start, w); });
            if (word != std::end(kCondWords)) {
                QString condition = line.sliced(word->size()).toString();
                RemoveSpaces2(condition);
                out += line.first(word->size());
                out += condition;
            } else if (WhichCommand(line) == CmdVAR) {
                QString statement = line.toString();
                RemoveSpaces2(statement);
                out += statement;
            } else {
                out += line;
            }
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
