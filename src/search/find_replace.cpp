#include "search/find_replace.h"

namespace search {

namespace {

FindState g_findState;

bool isWordChar(QChar c) { return c.isLetterOrNumber() || c == QLatin1Char('_'); }

bool wholeWordAt(const QString &text, qsizetype at, qsizetype length)
{
    if (at > 0 && isWordChar(text.at(at - 1)))
        return false;
    const qsizetype after = at + length;
    return after >= text.size() || !isWordChar(text.at(after));
}

} // namespace

FindState &findState() { return g_findState; }

int BoxFind(const QString &text, const QString &what, int start, std::optional<int> end, int options)
{
    if (what.isEmpty())
        return -1;
    const Qt::CaseSensitivity cs = options & kFindMatchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const bool wholeWord = options & kFindWholeWord;
    const qsizetype length = what.size();
    const qsizetype size = text.size();
    if (end && *end < start) {
        // Backwards: hits lying within [end, start].
        const qsizetype low = qMax(0, *end);
        qsizetype from = qMin<qsizetype>(start, size) - length;
        while (from >= low) {
            const qsizetype hit = text.lastIndexOf(what, from, cs);
            if (hit < low)
                return -1;
            if (!wholeWord || wholeWordAt(text, hit, length))
                return int(hit);
            from = hit - 1;
        }
        return -1;
    }
    const qsizetype limit = end ? qMin<qsizetype>(*end, size) : size;  // hits end at limit or before
    qsizetype from = qMax(0, start);
    while (from + length <= limit) {
        const qsizetype hit = text.indexOf(what, from, cs);
        if (hit < 0 || hit + length > limit)
            return -1;
        if (!wholeWord || wholeWordAt(text, hit, length))
            return int(hit);
        from = hit + 1;
    }
    return -1;
}

FindDirection DirectionOf(const QString &text)
{
    if (text == QLatin1String("All"))
        return FindDirection::All;
    if (text == QLatin1String("Down"))
        return FindDirection::Down;
    return FindDirection::Up;
}

int FindOptions(bool wholeWord, bool matchCase)
{
    return (wholeWord ? kFindWholeWord : 0) + (matchCase ? kFindMatchCase : 0);
}

int FindTextFrom(const FindTarget &box, const QString &findText, FindDirection direction, int options)
{
    const QString text = box.text();
    const int length = int(text.size());
    int mode = direction == FindDirection::All ? 0 : direction == FindDirection::Down ? 1 : 2;
    const int passes = mode == 0 ? 2 : 1;
    int end = mode == 2 ? 0 : length - 1;
    const int here = box.selStart();
    int position = here + 2;
    for (int pass = 1;; ++pass) {
        const int hit = mode == 2 ? BoxFind(text, findText, position - 2, end, options)
                                  : BoxFind(text, findText, position - 1, std::nullopt, options);
        if (hit > -1)
            return hit;
        if (passes == 2 && pass == 1) {
            mode = 1;
            position = 2;
            end = here;
            continue;
        }
        return -1;
    }
}

int GetTextPtr(const FindTarget &box, const QString &findText, int &start, int &end, int &mode, int options)
{
    const QString text = box.text();
    const int here = box.selStart();
    for (int attempt = 1;; ++attempt) {
        const int hit = mode == 2 ? BoxFind(text, findText, start, end, options)
                                  : BoxFind(text, findText, start, std::nullopt, options);
        if (hit > -1)
            return hit;
        if (attempt == 1) {
            mode = 1;
            start = 2;
            end = here;
            continue;
        }
        return -1;
    }
}

bool ReplaceSelected(FindTarget &box, const QString &findText, const QString &replacement)
{
    const QString selected = box.selText();
    if (selected.isEmpty() || selected.toLower() != findText.toLower())
        return false;
    box.setSelText(replacement);
    const int length = int(replacement.size());
    box.select(box.selStart() - length, length);
    return true;
}

int ReplaceAll(FindTarget &box, const QString &findText, const QString &replacement, FindDirection direction,
               int options)
{
    int mode = direction == FindDirection::All ? 0 : direction == FindDirection::Down ? 1 : 2;
    int end = mode == 2 ? 0 : int(box.text().size()) - 1;
    bool done = false;
    int count = 0;
    int pass = 1;
    const int first = box.selStart();
    while (!done && count <= kReplaceAllLimit) {
        int current = box.selStart();
        if (current >= first && pass == 2) {
            done = true;
        } else if (current >= first && pass == 1) {
            const int hit = GetTextPtr(box, findText, current, end, mode, options);
            if (hit > -1) {
                ++count;
                box.select(hit, int(findText.size()));
                box.setSelText(replacement);
            } else {
                done = true;
            }
        }
        if (current < first) {
            if (pass == 2)
                done = true;
            else
                pass = 2;
        }
    }
    return count;
}

QString ReplaceAllReport(int count)
{
    if (count == 0)
        return QStringLiteral("There were no replacements made.");
    if (count == 1)
        return QStringLiteral("There was 1 replacement made.");
    return QStringLiteral("There were %1 replacements made.").arg(count);
}

} // namespace search
