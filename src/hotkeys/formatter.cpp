#include "hotkeys/formatter.h"

#include "macro/macro_text.h"

namespace hotkeys {

namespace {

bool opensLevel(QStringView upper)
{
    return upper.startsWith(u"[LOOP") || upper.startsWith(u"[IF") || upper.startsWith(u"[ELSE");
}

bool startsUpper(QStringView text, const char16_t *word)
{
    return text.left(qsizetype(std::char_traits<char16_t>::length(word))).compare(QStringView(word),
                                                                                    Qt::CaseInsensitive) == 0;
}

} // namespace

void IndentActions(QString &text)
{
    const QString src = text + QLatin1Char('\n');
    const QString upper = src.toUpper();
    const int n = int(src.size());
    QString out;
    out.reserve(n + n / 4);
    int indent = 0;
    // The text is copied in runs: out holds src up to copied, plus the indents.
    qsizetype copied = 0;
    int i = 0;  // 0-based here; the word tests need 6 characters left (position + 5)
    // Indents the line after the line end at i by the level in force; a level below
    // nothing starts again at 0.
    const auto indentNextLine = [&] {
        out += QStringView(src).sliced(copied, i + 1 - copied);
        copied = i + 1;
        if (indent > 0)
            out.resize(out.size() + indent, QLatin1Char(' '));
        else
            indent = 0;
    };
    // Lines end at CR LF, as TidyupCode leaves them; a line feed alone belongs to its
    // line, as it does for the parser.
    const char16_t *chars = reinterpret_cast<const char16_t *>(src.utf16());
    while (i < n) {
        if (chars[i] != u'\n' || i == 0 || chars[i - 1] != u'\r') {
            if (chars[i] == u'[' && i + 5 < n && opensLevel(QStringView(upper).mid(i)))
                indent += kIndentStep;
            ++i;
            continue;
        }
        const QStringView next = QStringView(src).mid(i + 1);
        if (i + 6 < n && (startsUpper(next, u"[END") || startsUpper(next, u"[ELSE")))
            indent -= kIndentStep;
        if (next.startsWith(QLatin1Char('#'))) {
            // A comment is copied as it stands, up to its line feed (or the one added).
            indentNextLine();
            const qsizetype cr = src.indexOf(QLatin1String("\r\n"), i + 1);
            i = int(cr < 0 ? n - 1 : cr + 1);
            continue;
        }
        if (next.startsWith(QLatin1Char('[')))
            indentNextLine();
        ++i;
    }
    out += QStringView(src).sliced(copied);
    out.chop(1);  // the line feed added above
    text = out;
}

int GetActionIndent(const QString &text, int caret, const QString &pasted)
{
    if (text.isEmpty())
        return 0;
    const int lineStart = int(text.lastIndexOf(QLatin1Char('\n'), qMax(0, caret - 1))) + 1;  // 1-based LF
    if (lineStart < 3)
        return 0;
    const int previousStart = int(text.lastIndexOf(QLatin1Char('\n'), lineStart - 2)) + 1;
    if (previousStart < 6)
        return 0;
    const QStringView previous = QStringView(text).mid(previousStart, lineStart - 1 - previousStart);
    int blanks = 0;
    while (blanks < previous.size() && previous.at(blanks) == QLatin1Char(' '))
        ++blanks;
    const QStringView word = previous.mid(blanks);
    if (!word.startsWith(QLatin1Char('[')) && !word.startsWith(QLatin1Char('#')))
        return 0;
    const QString paste = pasted.trimmed().toUpper();
    int result = blanks;
    if (startsUpper(word, u"[IF") || startsUpper(word, u"[ELSE]"))
        result += paste == QLatin1String("[ELSE]") || paste == QLatin1String("[ENDIF]") ? -kIndentStep : kIndentStep;
    else if (startsUpper(word, u"[LOOP"))
        result += paste == QLatin1String("[ENDLOOP]") ? -kIndentStep : kIndentStep;
    return result < 0 ? blanks : result;
}

} // namespace hotkeys
