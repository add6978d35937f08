#include "platform/espeak/sapi_markup.h"

#include <QRegularExpression>
#include <QStringList>
#include <cmath>

namespace platform::espeak {

namespace {

constexpr int kPitchPercentPerStep = 5;   // SAPI pitch -10..10 -> -50%..+50%
constexpr double kRateFactorAtTen = 3.0;  // SAPI rate 10 is three times the normal speed

struct Element {
    QString sapiName;  // upper-case SAPI tag that opened it
    QString ssmlClose; // "" for a tag that writes nothing
};

class Builder {
public:
    explicit Builder(const QString &original) : m_original(original)
    {
        // Plain text is copied one for one; room for some mark-up besides.
        m_out.ssml.reserve(original.size() + 64);
        m_out.origin.reserve(original.size() + 64);
    }

    void emitText(QChar c, int from)
    {
        switch (c.unicode()) {
        case '&': put(u"&amp;", from); break;
        case '<': put(u"&lt;", from); break;
        case '>': put(u"&gt;", from); break;
        default:
            m_out.ssml += c;
            m_out.origin << from;
        }
    }
    void put(QStringView s, int from)
    {
        m_out.ssml += s;
        m_out.origin.insert(m_out.origin.size(), s.size(), from);
    }
    void open(const QString &sapi, const QString &openTag, const QString &closeTag, int from)
    {
        put(openTag, from);
        m_stack.push_back({sapi, closeTag});
    }
    // Closes the innermost element opened by this SAPI tag, and any opened inside it.
    void close(const QString &sapi, int from)
    {
        for (qsizetype i = m_stack.size() - 1; i >= 0; --i) {
            if (m_stack.at(i).sapiName != sapi)
                continue;
            while (m_stack.size() > i) {
                put(m_stack.last().ssmlClose, from);
                m_stack.removeLast();
            }
            return;
        }
    }
    SsmlText finish()
    {
        const int end = int(m_original.size());
        while (!m_stack.isEmpty()) {
            put(m_stack.last().ssmlClose, end);
            m_stack.removeLast();
        }
        put(QStringLiteral("</speak>"), end);
        m_out.originalSize = end;
        return m_out;
    }

private:
    const QString &m_original;
    SsmlText m_out;
    QList<Element> m_stack;
};

QString Attribute(const QString &body, const QString &name)
{
    static const QRegularExpression attr(QStringLiteral("([A-Za-z]+)\\s*=\\s*(\"([^\"]*)\"|'([^']*)'|(\\S+))"));
    for (auto it = attr.globalMatch(body); it.hasNext();) {
        const auto m = it.next();
        if (m.captured(1).compare(name, Qt::CaseInsensitive) == 0) {
            for (int g : {3, 4, 5})
                if (m.capturedStart(g) >= 0)
                    return m.captured(g);
        }
    }
    return {};
}

QString Signed(int v) { return (v >= 0 ? QStringLiteral("+") : QString()) + QString::number(v); }

QString RatePercent(int rate)
{
    const double factor = std::pow(kRateFactorAtTen, qBound(-10, rate, 10) / 10.0);
    return QString::number(qRound(factor * 100)) + QLatin1Char('%');
}

QString Escaped(QString value)
{
    value.replace(QLatin1Char('&'), QLatin1String("&amp;"));
    value.replace(QLatin1Char('"'), QLatin1String("&quot;"));
    value.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    return value;
}

// Writes the SSML for one tag; body is the text between "<" and ">".
void Translate(Builder &b, QString body, int from)
{
    body = body.trimmed();
    const bool closing = body.startsWith(QLatin1Char('/'));
    if (closing)
        body = body.mid(1);
    if (body.endsWith(QLatin1Char('/')))
        body.chop(1);
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    const QString name = body.section(blanks, 0, 0).toUpper();
    if (closing) {
        b.close(name, from);
        return;
    }
    auto number = [&](const char *attr) { return Attribute(body, QLatin1String(attr)).toInt(); };
    auto hasAttr = [&](const char *attr) { return !Attribute(body, QLatin1String(attr)).isEmpty(); };
    const QString prosody = QStringLiteral("</prosody>");
    if (name == QLatin1String("PITCH")) {
        const int p = hasAttr("MIDDLE") ? number("MIDDLE") : number("ABSMIDDLE");
        b.open(name, QStringLiteral("<prosody pitch=\"%1%\">").arg(Signed(qBound(-10, p, 10) * kPitchPercentPerStep)), prosody, from);
    } else if (name == QLatin1String("RATE")) {
        const int r = hasAttr("SPEED") ? number("SPEED") : number("ABSSPEED");
        b.open(name, QStringLiteral("<prosody rate=\"%1\">").arg(RatePercent(r)), prosody, from);
    } else if (name == QLatin1String("VOLUME")) {
        b.open(name, QStringLiteral("<prosody volume=\"%1%\">").arg(qBound(0, number("LEVEL"), 100)), prosody, from);
    } else if (name == QLatin1String("EMPH")) {
        b.open(name, QStringLiteral("<emphasis>"), QStringLiteral("</emphasis>"), from);
    } else if (name == QLatin1String("SPELL")) {
        b.open(name, QStringLiteral("<say-as interpret-as=\"characters\">"), QStringLiteral("</say-as>"), from);
    } else if (name == QLatin1String("VOICE")) {
        QString voice;
        for (const QString &part : Attribute(body, QStringLiteral("REQUIRED")).split(QLatin1Char(';')))
            if (part.trimmed().startsWith(QLatin1String("Name="), Qt::CaseInsensitive))
                voice = part.trimmed().mid(5);
        b.open(name, voice.isEmpty() ? QString() : QStringLiteral("<voice name=\"%1\">").arg(Escaped(voice)),
               voice.isEmpty() ? QString() : QStringLiteral("</voice>"), from);
    } else if (name == QLatin1String("SILENCE")) {
        b.put(QStringLiteral("<break time=\"%1ms\"/>").arg(qMax(0, number("MSEC"))), from);
        return;
    }
    // SAPI, the xml header and unknown tags write nothing. A self-closed PITCH, RATE...
    // stays open: it rules to the end of the element around it, or of the text.
}

const QStringList &KnownEntities()
{
    static const QStringList entities{QStringLiteral("&amp;"), QStringLiteral("&lt;"), QStringLiteral("&gt;"),
                                      QStringLiteral("&quot;"), QStringLiteral("&apos;")};
    return entities;
}

} // namespace

int SsmlText::originalPosition(int ssmlStart) const
{
    if (origin.isEmpty())
        return 0;
    return origin.at(qBound(0, ssmlStart, int(origin.size()) - 1));
}

int SsmlText::originalLength(int ssmlStart, int ssmlLength) const
{
    if (ssmlLength <= 0)
        return 0;
    // Mark-up at the end maps to the end itself, one behind the last character.
    const int start = originalPosition(ssmlStart);
    const int last = qMin(originalPosition(ssmlStart + ssmlLength - 1), originalSize - 1);
    return qMax(0, last - start + 1);
}

SsmlText SapiToSsml(const QString &text)
{
    Builder b(text);
    b.put(QStringLiteral("<speak>"), 0);
    const int n = int(text.size());
    for (int i = 0; i < n; ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('<')) {
            const int end = int(text.indexOf(QLatin1Char('>'), i + 1));
            if (end > i) {
                Translate(b, text.mid(i + 1, end - i - 1), i);
                i = end;
                continue;
            }
        } else if (c == QLatin1Char('&')) {
            const QString *entity = nullptr;
            for (const QString &e : KnownEntities())
                if (QStringView(text).mid(i).startsWith(e, Qt::CaseInsensitive))
                    entity = &e;
            if (entity) {
                b.put(*entity, i);
                i += int(entity->size()) - 1;
                continue;
            }
        }
        b.emitText(c, i);
    }
    return b.finish();
}

} // namespace platform::espeak
