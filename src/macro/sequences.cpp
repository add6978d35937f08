#include "macro/sequences.h"

#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/variables.h"

#include <QLoggingCategory>
#include <limits>

namespace macro {

namespace {

Q_LOGGING_CATEGORY(lcSeq, "sonamark.macro.seq", QtWarningMsg)

// Range ends are converted to 32-bit integers; beyond these the conversion faults.
constexpr double kLowestRangeEnd = std::numeric_limits<qint32>::min() - 0.5;
constexpr double kHighestRangeEnd = std::numeric_limits<qint32>::max() + 0.5;

SequenceStore g_store;

bool isDigitChar(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The values of a sequence as the parse meets them. Checking a sequence only counts
// them: a range such as "1-99999" need not be spelled out to be found valid.
class Values
{
public:
    explicit Values(QList<double> *kept) : m_kept(kept) {}

    // Adds the values from..to, counting first; false past the limit.
    bool addRange(double from, double to)
    {
        const double more = to >= from ? to - from + 1 : 0;
        if (m_count + more > kMaxSequenceValues)
            return false;
        m_count += static_cast<qsizetype>(more);
        if (m_kept) {
            m_kept->reserve(m_kept->size() + static_cast<qsizetype>(more));
            for (double v = from; v <= to; ++v)
                m_kept->append(v);
        }
        return true;
    }
    bool add(double value)
    {
        if (m_count + 1 > kMaxSequenceValues)
            return false;
        ++m_count;
        if (m_kept)
            m_kept->append(value);
        return true;
    }
    void clear()
    {
        m_count = 0;
        if (m_kept)
            m_kept->clear();
    }
    bool isEmpty() const { return m_count == 0; }

private:
    QList<double> *m_kept;
    qsizetype m_count = 0;
};

struct RangeFault {};

double rangeEnd(const QString &text)
{
    const double v = RoundEven(Val1(text));
    if (!(v > kLowestRangeEnd && v < kHighestRangeEnd))
        throw RangeFault{};
    return v;
}

// The parse shared by Token and Token2. A malformed item ends it with values emptied
// and no message.
QString parse(const QString &list, Values values)
{
    double min = 0, max = 0;
    QString msg = GetMinMaxVal(list, min, max);
    if (!msg.isEmpty())
        return msg;
    if (min < -kMaxSequenceMagnitude)
        return QStringLiteral("Invalid min value in sequence");
    if (max > kMaxSequenceMagnitude)
        return QStringLiteral("Invalid max value in sequence");
    if (list.trimmed().isEmpty())
        return QStringLiteral("Invalid format in sequence");

    QString s = list;
    s.remove(QLatin1Char(' '));
    for (const QChar c : std::as_const(s))
        if (!isDigitChar(c) && c != QLatin1Char('-') && c != QLatin1Char(',') && c != QLatin1Char('.'))
            return {};
    if (IsSeqDelimiter(CharAt(s, 1)) || IsSeqDelimiter(CharAt(s, Len(s))))
        return {};

    const QString tooMany = QStringLiteral("Max number of values exceeded in sequence");
    try {
        int p = 0;  // the last separator
        for (;;) {
            const int c = InStr(p + 1, s, QStringLiteral(","));
            const int h = InStr(p + 1, s, QStringLiteral("-"));
            if (h > 0 && (h < c || c == 0)) {
                if (c > 0 && (c - h < 2 || h - p < 2)) {
                    values.clear();
                    return {};
                }
                const double from = rangeEnd(Mid(s, p + 1, h - p - 1));
                const double to = rangeEnd(c > 0 ? Mid(s, h + 1, c - h - 1) : Mid(s, h + 1));
                if (!values.addRange(from, to)) {
                    values.clear();
                    return tooMany;
                }
                if (c == 0)
                    break;
                p = c;
            } else if (c > 0) {
                if (c - p < 2) {
                    values.clear();
                    return {};
                }
                if (!values.add(Val1(Mid(s, p + 1, c - p - 1)))) {
                    values.clear();
                    return tooMany;
                }
                p = c;
            } else {
                if (!values.add(Val1(Mid(s, p + 1)))) {
                    values.clear();
                    return tooMany;
                }
                break;
            }
        }
    } catch (const RangeFault &) {
        values.clear();
        return QStringLiteral("Error determining range in sequence");
    }
    if (values.isEmpty())
        return QStringLiteral("No values in sequence");
    return {};
}

} // namespace

SequenceStore &sequenceStore() { return g_store; }

void ResetSequences() { g_store.reset(); }

bool IsSequence(const QString &condition)
{
    const QString t = UpperSameLength(condition.trimmed());
    if (t.contains(QLatin1Char('(')) || t.contains(QLatin1Char(')')) || t.contains(QLatin1String(" AND "))
        || t.contains(QLatin1String(" OR ")) || t.contains(QLatin1Char('>')) || t.contains(QLatin1Char('<')))
        return false;
    const int equals = InStr(t, QStringLiteral("="));
    if (equals <= 1)
        return false;
    if (!AllLetters(Left(t, equals - 1).trimmed(), QString()).isEmpty())
        return false;
    for (int i = equals + 1; i <= Len(t); ++i) {
        const QChar c = CharAt(t, i);
        if (!IsNumber(QString(c)) && c != QLatin1Char(',') && c != QLatin1Char('-') && c != QLatin1Char('.'))
            return false;
    }
    return true;
}

QString GetMinMaxVal(const QString &list, double &min, double &max)
{
    min = max = 0;
    QString t = list.trimmed();
    if (t.isEmpty())
        return QStringLiteral("Invalid sequence format");
    if (!t.startsWith(QLatin1Char(',')))
        t.prepend(QLatin1Char(','));
    if (!t.endsWith(QLatin1Char(',')))
        t.append(QLatin1Char(','));

    bool first = true;
    int lastDelimiter = 1;
    for (int i = 2; i <= Len(t); ++i) {
        const QChar c = CharAt(t, i);
        if (!IsSeqDelimiter(c))
            continue;
        // A delimiter right behind another ends no word (",," and ",-").
        if (!IsSeqDelimiter(CharAt(t, i - 1))) {
            const QString word = Mid(t, lastDelimiter + 1, i - lastDelimiter - 1);
            if (!IsNumber(word))
                return QStringLiteral("Invalid number in sequence");
            const double v = Val1(word);
            if (first || v < min)
                min = v;
            if (first || v > max)
                max = v;
            first = false;
        }
        lastDelimiter = i;
    }
    return {};
}

QString Token(const QString &list, int slot)
{
    QList<double> values;
    const QString msg = parse(list, Values(&values));
    SequenceSlot &s = g_store.slot(slot);
    s.LoopSeqCount = 0;
    if (!msg.isEmpty()) {
        qCDebug(lcSeq) << list << "->" << msg;
        return msg;
    }
    s.LoopSeqValues = values;
    s.LoopSeqCount = static_cast<int>(values.size());
    return {};
}

QString Token2(const QString &list)
{
    return parse(list, Values(nullptr));
}

bool LoopSequence(int line, int &slot)
{
    const int inUse = g_store.LoopSlotCount;
    for (int n = 1; n <= inUse && n <= g_store.upperBound(); ++n) {
        if (g_store.slot(n).LoopSeqLine == line) {
            slot = n;
            return true;
        }
    }
    slot = inUse + 1;
    return false;
}

void SetNextLOOPIndex(int &slot)
{
    int &inUse = g_store.LoopSlotCount;
    if (inUse > 0) {
        for (int n = 1; n <= g_store.upperBound() - 1; ++n) {
            if (g_store.slot(n).LoopSeqCount == 0) {
                slot = n;
                return;
            }
        }
    }
    ++inUse;
    slot = inUse;
    g_store.entries.resize(inUse);
}

void ResetLoopSequence(int slot)
{
    int &inUse = g_store.LoopSlotCount;
    if (inUse > 0)
        --inUse;
    if (slot >= 1 && slot <= g_store.upperBound())
        g_store.slot(slot).LoopSeqCount = 0;
}

} // namespace macro
