#include "macro/block_matching.h"

#include "macro/macro_text.h"

#include <QStringView>

namespace macro {

namespace {

const QString kIf = QStringLiteral("[IF ");
const QString kEndIf = QStringLiteral("[ENDIF]");
const QString kElse = QStringLiteral("[ELSE]");
const QString kLoop = QStringLiteral("[LOOP ");
const QString kEndLoop = QStringLiteral("[ENDLOOP]");
const QString kOpen = QStringLiteral("[OPEN ");
const QString kClose = QStringLiteral("[CLOSE ");

const QString kMissingIf = QStringLiteral("Missing matching [IF Cond] statement");
const QString kMissingEndIf = QStringLiteral("Missing matching [ENDIF] statement");
const QString kMissingLoop = QStringLiteral("Missing matching [LOOP Cond] statement");
const QString kMissingEndLoop = QStringLiteral("Missing matching [ENDLOOP] statement");

// The upper-cased macro. A check asks about one macro many times in a row, so the last
// one is kept (the text is shared, not copied, while it stays the same).
const QString &upper(const QString &macro)
{
    thread_local QString source;
    thread_local QString upperCased;
    if (!source.isSharedWith(macro) || source.size() != macro.size()) {
        source = macro;
        upperCased = macro.toUpper();
    }
    return upperCased;
}

bool startsAt(const QString &up, int pos, const QString &token)
{
    return pos >= 1 && QStringView(up).mid(pos - 1).startsWith(token);
}

int count(QStringView text, const QString &token)
{
    return text.isEmpty() ? 0 : int(text.count(token));
}

// Which of an opening and a closing token starts at pos: +1, -1 or 0.
int tokenAt(const QString &up, int pos, const QString &open, const QString &close)
{
    if (startsAt(up, pos, open))
        return 1;
    if (startsAt(up, pos, close))
        return -1;
    return 0;
}

// Forward from pos (the opening statement itself): true once a closing balances it.
bool closesForward(const QString &up, int pos, const QString &open, const QString &close)
{
    int depth = 0;
    for (qsizetype at = up.indexOf(QLatin1Char('['), pos - 1); at >= 0; at = up.indexOf(QLatin1Char('['), at + 1)) {
        const int t = tokenAt(up, int(at) + 1, open, close);
        depth += t;
        if (t == -1 && depth == 0)
            return true;
    }
    return false;
}

// Backward from pos (the closing statement itself): true once an opening balances it.
bool opensBackward(const QString &up, int pos, const QString &open, const QString &close)
{
    int depth = 0;
    for (qsizetype at = up.lastIndexOf(QLatin1Char('['), pos - 1); at >= 0;
         at = at > 0 ? up.lastIndexOf(QLatin1Char('['), at - 1) : -1) {
        const int t = tokenAt(up, int(at) + 1, open, close);
        depth -= t;
        if (t == 1 && depth == 0)
            return true;
    }
    return false;
}

// The [IF ...] that an [ELSE] at pos belongs to: the nearest one before it that is
// still open there. 0 when none.
int openIfBefore(const QString &up, int pos)
{
    int depth = 0;
    for (qsizetype at = pos >= 2 ? up.lastIndexOf(QLatin1Char('['), pos - 2) : -1; at >= 0;
         at = at > 0 ? up.lastIndexOf(QLatin1Char('['), at - 1) : -1) {
        const int p = int(at) + 1;
        const int t = tokenAt(up, p, kIf, kEndIf);
        if (t == -1)
            ++depth;
        else if (t == 1 && depth-- == 0)
            return p;
    }
    return 0;
}

} // namespace

QString Matching_ENDIF(const QString &macro, int pos)
{
    return closesForward(upper(macro), pos, kIf, kEndIf) ? QString() : kMissingEndIf;
}

QString Matching_IF(const QString &macro, int pos)
{
    return opensBackward(upper(macro), pos, kIf, kEndIf) ? QString() : kMissingIf;
}

QString Matching_ELSE(const QString &macro, int pos)
{
    const QString &up = upper(macro);
    const int partner = openIfBefore(up, pos);
    if (partner == 0)
        return kMissingIf;
    // From the partner on, to each [ENDIF] in turn: an [ELSE] beyond the [IF]s opened so
    // far has no [IF] of its own; the block is whole when the [IF]s and [ENDIF]s balance.
    int ifs = 0, endIfs = 0, elses = 0;
    for (qsizetype at = up.indexOf(QLatin1Char('['), partner - 1); at >= 0; at = up.indexOf(QLatin1Char('['), at + 1)) {
        const int p = int(at) + 1;
        if (startsAt(up, p, kIf)) {
            ++ifs;
        } else if (startsAt(up, p, kElse)) {
            if (++elses > ifs)
                return kMissingIf;
        } else if (startsAt(up, p, kEndIf) && p > pos) {
            ++endIfs;
            if (ifs == endIfs)
                return elses <= ifs ? QString() : kMissingEndIf;
        } else if (startsAt(up, p, kEndIf)) {
            ++endIfs;
        }
    }
    return kMissingEndIf;
}

QString Matching_LOOP(const QString &macro, int pos)
{
    return opensBackward(upper(macro), pos, kLoop, kEndLoop) ? QString() : kMissingLoop;
}

QString Matching_ENDLOOP(const QString &macro, int pos)
{
    return closesForward(upper(macro), pos, kLoop, kEndLoop) ? QString() : kMissingEndLoop;
}

QString Matching_OPEN_CLOSE(const QString &macro, const QString &id, int pos)
{
    const QString &up = upper(macro);
    const QString upId = id.toUpper();
    int open = pos;
    if (!startsAt(up, pos, kOpen)) {
        if (InStrRev(up, kOpen, pos) == 0)
            return QStringLiteral("Missing [OPEN n File] statement");
        open = InStrRev(up, kOpen + upId, pos);
        if (open == 0)
            return QStringLiteral("No matching [OPEN n File] file ID");
    }
    int close = pos;
    if (!startsAt(up, pos, kClose)) {
        if (InStr(open, up, kClose) == 0)
            return QStringLiteral("Missing [CLOSE n] statement");
        close = InStr(open, up, kClose + upId + QLatin1Char(']'));
        if (close == 0)
            return QStringLiteral("No matching [CLOSE n] file ID");
    }
    const QStringView between = close > open ? QStringView(up).mid(open - 1, close - open) : QStringView();
    const QString mixed = QStringLiteral("Can't mix READ/WRITE statements");
    const QString read = QStringLiteral("[READ ") + upId;
    const QString write = QStringLiteral("[WRITE ") + upId;
    if (startsAt(up, pos, read) && (between.isEmpty() || between.contains(QLatin1Char('\n') + write)))
        return mixed;
    if (startsAt(up, pos, write) && (between.isEmpty() || between.contains(QLatin1Char('\n') + read)))
        return mixed;
    return {};
}

QString GoodQUITLOOP(const QString &macro, int pos)
{
    const QString &up = upper(macro);
    const QStringView before = QStringView(up).left(qMax(0, pos - 1));
    const QStringView after = QStringView(up).mid(qMax(0, pos - 1));
    if (count(before, kLoop) > count(before, kEndLoop) && count(after, kEndLoop) > count(after, kLoop))
        return {};
    return QStringLiteral("No matching LOOP/ENDLOOP for [QUITLOOP] statement.");
}

} // namespace macro
