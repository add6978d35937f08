#include "reader/exceptions.h"

#include "shell/legacy_text.h"
#include "reader/text_box.h"
#include "shell/app_state.h"
#include "shell/file_util.h"
#include "shell/on_top_message.h"

#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>

Q_LOGGING_CATEGORY(lcExceptions, "sonamark.reader.exceptions", QtWarningMsg)

namespace reader {

namespace {

const char *const kReadError = "Error reading from Exceptions.txt file. Values not loaded.";
const char *const kWriteError = "Error writing to Exceptions.txt file. Values not saved.";

// Lower case character by character, so that positions in the copy match the original.
// Latin-1 text lowers the same way as a whole, which is many times faster.
QString lowered(const QString &text)
{
    if (QtPrivate::isLatin1(text))
        return text.toLower();
    QString out = text;
    for (QChar &c : out)
        c = c.toLower();
    return out;
}

// However the pairs of a list feed one another, a rewrite leaves the text at most this
// many times as long as it came in, plus some room for short texts.
constexpr qsizetype kMostGrowth = 16;
constexpr qsizetype kGrowthRoom = 4096;

qsizetype growthLimit(const QString &text) { return text.size() * kMostGrowth + kGrowthRoom; }

// Replaces whole-word occurrences of from by to, scanning as the exceptions do: the
// next search starts the length of from behind the hit, whatever was put there. Returns
// true when something was replaced.
//
// The scan only moves forward, so the text is rebuilt in one pass: the text as it stands
// is head (done, ending with the change put in last) followed by what is left of the
// source behind taken. Searches and the letter tests read lower-cased copies: textLower
// is lowered(text) as it comes in, kept so after the rewrite for the next pair.
//
// A hit that lies wholly inside the change put in just before is a change that holds its
// own word ("US" to "the US"): replacing it puts the same change in at the same distance
// again, and the scan as written would never end. Such a hit is left as it is and the
// scan goes on behind it, so the word is still replaced everywhere else. Every other
// replacement uses up at least one character of the source. The scan also stops before a
// replacement would take the text beyond limit characters.
bool rewrite(QString &text, QString &textLower, const QString &from, const QString &to, qsizetype limit)
{
    if (from.isEmpty())
        return false;
    const QString needle = lowered(from);
    const QString changeLower = lowered(to);
    const qsizetype width = from.size();
    const QString source = text;
    const QString sourceLower = textLower;
    QString head;
    QString headLower;
    head.reserve(source.size());
    headLower.reserve(source.size());
    qsizetype taken = 0;  // source characters that stand in head (replaced or copied)
    const auto length = [&] { return head.size() + source.size() - taken; };
    const auto lowerAt = [&](qsizetype i) {
        return i < head.size() ? headLower.at(i) : sourceLower.at(taken + i - head.size());
    };
    // Only "a" to "z" count as letters for the word boundary test; the end of the text
    // is no letter.
    const auto isLetter = [&](qsizetype i) {
        if (i < 0 || i >= length())
            return false;
        const QChar c = lowerAt(i);
        return c >= QLatin1Char('a') && c <= QLatin1Char('z');
    };
    bool replaced = false;
    qsizetype start = 0;  // 0-based search start (s - 1)
    // The loop runs while s (1-based) is below the length.
    while (start + 1 < length()) {
        qsizetype hit = -1;
        if (start < head.size()) {
            // A hit in the last change, else one that begins in it and runs on into the
            // source, comes before any hit in the source.
            hit = headLower.indexOf(needle, start);
            if (hit < 0) {
                const qsizetype from = qMax(start, head.size() - width + 1);
                QString window = headLower.sliced(from);
                window.append(QStringView(sourceLower).mid(taken, width - 1));
                const qsizetype at = window.indexOf(needle);
                if (at >= 0)
                    hit = from + at;
            }
        }
        if (hit < 0) {
            const qsizetype at = sourceLower.indexOf(needle, taken + qMax<qsizetype>(0, start - head.size()));
            if (at >= 0)
                hit = head.size() + at - taken;
        }
        if (hit < 0)
            break;
        const qsizetype behind = hit + width;
        const bool nextIsLetter = isLetter(behind);
        const bool restEmpty = behind >= length();
        bool replace;
        if (hit == 0)
            replace = !nextIsLetter;
        else if (isLetter(hit - 1))
            replace = false;
        else
            replace = restEmpty || !nextIsLetter;
        if (behind <= head.size())
            replace = false;  // inside the change put in just before: see above
        if (replace) {
            if (length() - width + to.size() > limit)
                break;
            if (hit < head.size()) {
                taken += behind - head.size();
                head.truncate(hit);
                headLower.truncate(hit);
            } else {
                const qsizetype copied = hit - head.size();
                head += QStringView(source).mid(taken, copied);
                headLower += QStringView(sourceLower).mid(taken, copied);
                taken += copied + width;
            }
            head += to;
            headLower += changeLower;
            replaced = true;
        }
        start = behind;
    }
    if (replaced) {
        text = head.append(QStringView(source).mid(taken));
        textLower = headLower.append(QStringView(sourceLower).mid(taken));
    }
    return replaced;
}

const QRegularExpression &quotedPair()
{
    // "word","change"; the first field ends at the first quote that a comma and a quote
    // follow, since quotes inside the fields are written as they are.
    static const QRegularExpression re(QStringLiteral(R"re(^"(.*?)"\s*,\s*"(.*)"$)re"));
    return re;
}

} // namespace

ExceptionsState &exceptionsState()
{
    static ExceptionsState state;
    return state;
}

QString ExceptionsFilePath() { return shell::app().AppFolder + QLatin1String(kExceptionsFileName); }

QList<ExceptionRec> ParseExceptions(const QString &text, bool *ok)
{
    QList<ExceptionRec> pairs;
    *ok = true;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &raw : lines) {
        const QString line = raw.trimmed();
        if (line.isEmpty())
            continue;
        ExceptionRec rec;
        if (line.startsWith(QLatin1Char('"'))) {
            const QRegularExpressionMatch m = quotedPair().match(line);
            if (!m.hasMatch()) {
                *ok = false;
                return pairs;
            }
            rec.Word = m.captured(1);
            rec.Change = m.captured(2);
        } else {
            // A hand-written line without quotes: the fields are cut at the comma.
            const qsizetype comma = line.indexOf(QLatin1Char(','));
            if (comma < 0) {
                *ok = false;
                return pairs;
            }
            rec.Word = line.left(comma).trimmed();
            rec.Change = line.mid(comma + 1).trimmed();
        }
        if (rec.Word.isEmpty() || rec.Change.isEmpty())
            continue;
        pairs << rec;
    }
    return pairs;
}

QString FormatExceptions(const QList<ExceptionRec> &pairs)
{
    QString out;
    for (const ExceptionRec &rec : pairs)
        out += QLatin1Char('"') + rec.Word + QStringLiteral("\",\"") + rec.Change + QStringLiteral("\"\r\n");
    return out;
}

void GetExceptions()
{
    ExceptionsState &state = exceptionsState();
    const QString path = ExceptionsFilePath();
    if (!QFile::exists(path))
        return;
    state.Exceptions.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcExceptions) << "cannot open" << path << file.errorString();
        shell::MsgBoxOT(QLatin1String(kReadError), 0, QStringLiteral("File Error"));
        return;
    }
    bool ok = true;
    state.Exceptions = ParseExceptions(shell::DecodeLegacyText(file.readAll()), &ok);
    if (!ok || file.error() != QFileDevice::NoError)
        shell::MsgBoxOT(QLatin1String(kReadError), 0, QStringLiteral("File Error"));
}

bool Save2ExceptionFile()
{
    const QString error = shell::WriteFileAtomically(
        ExceptionsFilePath(), shell::EncodeText(FormatExceptions(exceptionsState().Exceptions)));
    if (error.isEmpty())
        return true;
    qCWarning(lcExceptions) << "cannot write" << ExceptionsFilePath() << error;
    shell::MsgBoxOT(QLatin1String(kWriteError), 0, QStringLiteral("Save File"));
    return false;
}

void MakeExceptions(QString &text)
{
    ExceptionsState &state = exceptionsState();
    if (!state.ExceptionsOn || state.ExceptionCount() == 0)
        return;
    const qsizetype limit = growthLimit(text);
    QString textLower = lowered(text);
    for (const ExceptionRec &rec : std::as_const(state.Exceptions))
        if (rewrite(text, textLower, rec.Word, rec.Change, limit))
            state.ExceptionsMade = true;
}

void UnmakeText(QString &text)
{
    const qsizetype limit = growthLimit(text);
    QString textLower = lowered(text);
    for (const ExceptionRec &rec : std::as_const(exceptionsState().Exceptions))
        rewrite(text, textLower, rec.Change, rec.Word, limit);
}

void UnmakeExceptions()
{
    ExceptionsState &state = exceptionsState();
    TextBox *box = textBox();
    if (!box || !state.ExceptionsMade || state.ExceptionCount() == 0)
        return;
    const bool selection = !box->selectedText().isEmpty();
    QString text = selection ? box->selectedText() : box->text();
    if (text.trimmed().isEmpty())
        return;
    UnmakeText(text);
    if (selection)
        box->replaceSelection(text);
    else
        box->rewriteText(text);
    if (!shell::app().CurrentFile.isEmpty())
        shell::app().TextDirty = true;
    state.ExceptionsMade = false;
}

void mnuExceptionsApply_Click()
{
    TextBox *box = textBox();
    if (!box || box->text().trimmed().isEmpty())
        return;
    const QString selected = box->selectedText();
    if (!selected.trimmed().isEmpty()) {
        QString text = selected;
        MakeExceptions(text);
        const int start = box->selStart();
        box->replaceSelection(text);
        box->select(start, box->selStart() - start);
    } else {
        QString text = box->text();
        MakeExceptions(text);
        box->rewriteText(text);
    }
    if (!shell::app().CurrentFile.isEmpty())
        shell::app().TextDirty = true;
    box->processEvents();
}

void mnuExceptionsUndo_Click() { UnmakeExceptions(); }

void mnuExceptionsTog_Click()
{
    ExceptionsState &state = exceptionsState();
    state.ExceptionsOn = !state.ExceptionsOn;
}

} // namespace reader
