#include "help_reference.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

namespace help {

namespace {

const QString kEntryMark = QStringLiteral("== ");
const QString kGroupMark = QStringLiteral("## ");
const QString kExampleMark = QStringLiteral("Example:");

QString lineError(int line, const QString &what) { return QStringLiteral("line %1: %2").arg(line).arg(what); }

// Finishes the entry being read; "" or what is wrong with it.
QString finish(StatementEntry &entry, QStringList &paragraph, QStringList &example)
{
    if (!paragraph.isEmpty())
        entry.paragraphs << paragraph.join(QLatin1Char(' '));
    paragraph.clear();
    while (!example.isEmpty() && example.last().trimmed().isEmpty())
        example.removeLast();
    entry.example = example.join(QLatin1Char('\n'));
    example.clear();
    if (entry.paragraphs.isEmpty())
        return lineError(entry.line, entry.form + QStringLiteral(" has no description"));
    if (entry.example.isEmpty())
        return lineError(entry.line, entry.form + QStringLiteral(" has no example"));
    return {};
}

QString htmlEscaped(const QString &text) { return text.toHtmlEscaped(); }

// Description text for HTML: statement forms in square brackets are set as code.
QString htmlParagraph(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\[[^\\]\\s][^\\]]*\\]"));
    QString html;
    qsizetype at = 0;
    for (auto it = form.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        html += htmlEscaped(text.mid(at, m.capturedStart() - at));
        html += QStringLiteral("<code>") + htmlEscaped(m.captured()) + QStringLiteral("</code>");
        at = m.capturedEnd();
    }
    return html + htmlEscaped(text.mid(at));
}

} // namespace

QList<StatementEntry> ParseStatementReference(const QString &source, QString *error)
{
    QList<StatementEntry> entries;
    QString problem;
    QString group;
    StatementEntry current;
    bool inEntry = false;
    bool inExample = false;
    QStringList paragraph;
    QStringList example;
    const QStringList lines = source.split(QLatin1Char('\n'));
    auto close = [&] {
        if (!inEntry)
            return;
        const QString p = finish(current, paragraph, example);
        if (problem.isEmpty())
            problem = p;
        entries << current;
        inEntry = false;
    };
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines.at(i);
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const int number = i + 1;
        if (line.startsWith(kGroupMark)) {
            close();
            group = line.mid(kGroupMark.size()).trimmed();
            continue;
        }
        if (line.startsWith(kEntryMark)) {
            close();
            current = StatementEntry();
            current.group = group;
            current.form = line.mid(kEntryMark.size()).trimmed();
            current.line = number;
            inEntry = true;
            inExample = false;
            if (group.isEmpty() && problem.isEmpty())
                problem = lineError(number, QStringLiteral("an entry before the first group"));
            if ((!current.form.startsWith(QLatin1Char('[')) || !current.form.endsWith(QLatin1Char(']')))
                && problem.isEmpty())
                problem = lineError(number, QStringLiteral("the form must be written in square brackets"));
            continue;
        }
        if (!inEntry) {
            if (!line.trimmed().isEmpty() && !line.startsWith(QLatin1Char('#')) && problem.isEmpty())
                problem = lineError(number, QStringLiteral("text outside an entry"));
            continue;
        }
        if (inExample) {
            example << line;
            continue;
        }
        if (line.trimmed() == kExampleMark) {
            inExample = true;
            continue;
        }
        if (line.trimmed().isEmpty()) {
            if (!paragraph.isEmpty())
                current.paragraphs << paragraph.join(QLatin1Char(' '));
            paragraph.clear();
            continue;
        }
        paragraph << line.trimmed();
    }
    close();
    if (error)
        *error = problem;
    return entries;
}

QString StatementWord(const StatementEntry &entry)
{
    const QString &form = entry.form;
    const qsizetype blank = form.indexOf(QLatin1Char(' '));
    const qsizetype equals = form.indexOf(QLatin1Char('='));
    if (equals > 0 && (blank < 0 || equals < blank))
        return form.left(equals + 1);
    if (form.startsWith(QLatin1String("[CANCEL IF")))
        return QStringLiteral("[CANCEL IF");
    return blank < 0 ? form : form.left(blank);
}

QString StatementAnchor(const StatementEntry &entry)
{
    QString anchor = QStringLiteral("st-");
    for (const QChar c : StatementWord(entry))
        if (c.isLetter())
            anchor += c;
    return anchor;
}

QString StatementReferenceHtml(const QList<StatementEntry> &entries)
{
    QString html;
    // The index: each group with links to its statements.
    QString group;
    bool open = false;
    for (const StatementEntry &e : entries) {
        if (e.group != group || !open) {
            if (open)
                html += QStringLiteral("</p>\n");
            group = e.group;
            html += QStringLiteral("<p class=\"index\"><b>") + htmlEscaped(group) + QStringLiteral(":</b> ");
            open = true;
        } else {
            html += QStringLiteral(" &#183; ");
        }
        html += QStringLiteral("<a href=\"#%1\"><code>%2</code></a>").arg(StatementAnchor(e), htmlEscaped(e.form));
    }
    if (open)
        html += QStringLiteral("</p>\n");

    group.clear();
    for (const StatementEntry &e : entries) {
        if (e.group != group) {
            group = e.group;
            html += QStringLiteral("<h3>") + htmlEscaped(group) + QStringLiteral("</h3>\n");
        }
        html += QStringLiteral("<h4><a name=\"%1\"></a><code>%2</code></h4>\n").arg(StatementAnchor(e), htmlEscaped(e.form));
        for (const QString &p : e.paragraphs)
            html += QStringLiteral("<p>") + htmlParagraph(p) + QStringLiteral("</p>\n");
        html += QStringLiteral("<pre>") + htmlEscaped(e.example) + QStringLiteral("</pre>\n");
    }
    return html;
}

QString RtfEscaped(const QString &text)
{
    QString out;
    out.reserve(text.size() + text.size() / 8);
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == u'\\' || u == u'{' || u == u'}') {
            out += QLatin1Char('\\');
            out += c;
        } else if (u == u'\n') {
            out += QStringLiteral("\\par\n");
        } else if (u == u'\t') {
            out += QStringLiteral("\\tab ");
        } else if (u < 0x80) {
            out += c;
        } else {
            out += QStringLiteral("\\u%1?").arg(qint16(u));
        }
    }
    return out;
}

QString StatementReferenceRtf(const QList<StatementEntry> &entries)
{
    QString rtf;
    QString group;
    for (const StatementEntry &e : entries) {
        if (e.group != group) {
            group = e.group;
            rtf += QStringLiteral("\\pard\\sb240\\sa120{\\b\\fs26 == ") + RtfEscaped(group)
                + QStringLiteral(" ==}\\par\n");
        }
        rtf += QStringLiteral("\\pard\\sb200{\\b\\f1 ") + RtfEscaped(e.form) + QStringLiteral("}\\par\n");
        for (const QString &p : e.paragraphs)
            rtf += QStringLiteral("\\pard\\sa60 ") + RtfEscaped(p) + QStringLiteral("\\par\n");
        rtf += QStringLiteral("\\pard\\sa60{\\i Example:}\\par\n");
        for (const QString &line : e.example.split(QLatin1Char('\n')))
            rtf += QStringLiteral("\\pard{\\f1     ") + RtfEscaped(line) + QStringLiteral("}\\par\n");
    }
    return rtf;
}

QString RoffEscaped(const QString &text)
{
    QString out;
    out.reserve(text.size() + 8);
    bool lineStart = true;
    for (const QChar c : text) {
        if (lineStart && (c == QLatin1Char('.') || c == QLatin1Char('\'')))
            out += QStringLiteral("\\&");
        lineStart = c == QLatin1Char('\n');
        if (c == QLatin1Char('\\'))
            out += QStringLiteral("\\e");
        else if (c == QLatin1Char('-'))
            out += QStringLiteral("\\-");
        else
            out += c;
    }
    return out;
}

QString StatementReferenceRoff(const QList<StatementEntry> &entries)
{
    QString roff;
    QString group;
    for (const StatementEntry &e : entries) {
        if (e.group != group) {
            group = e.group;
            roff += QStringLiteral(".SS ") + RoffEscaped(group) + QLatin1Char('\n');
        }
        roff += QStringLiteral(".TP\n.B ") + RoffEscaped(e.form) + QLatin1Char('\n');
        for (qsizetype i = 0; i < e.paragraphs.size(); ++i) {
            if (i > 0)
                roff += QStringLiteral(".IP\n");
            roff += RoffEscaped(e.paragraphs.at(i)) + QLatin1Char('\n');
        }
        roff += QStringLiteral(".IP\n.nf\n") + RoffEscaped(e.example) + QStringLiteral("\n.fi\n");
    }
    return roff;
}

QString PageWithReference(const QString &page, const QList<StatementEntry> &entries)
{
    QString out = page;
    out.replace(kStatementReferenceMark, StatementReferenceHtml(entries));
    return out;
}

namespace {

// Inline text for roff: backslashes and dashes escaped, blanks collapsed.
QString roffInline(const QString &text)
{
    QString out;
    bool blank = false;
    for (const QChar c : text) {
        if (c.isSpace()) {
            blank = true;
            continue;
        }
        if (blank)
            out += QLatin1Char(' ');
        blank = false;
        if (c == QLatin1Char('\\'))
            out += QStringLiteral("\\e");
        else if (c == QLatin1Char('-'))
            out += QStringLiteral("\\-");
        else
            out += c;
    }
    if (blank)
        out += QLatin1Char(' ');
    return out;
}

// One filled line of roff: trimmed, and protected when it would start with a control
// character.
QString roffLine(QString text)
{
    text = text.trimmed();
    if (text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\'')))
        text.prepend(QStringLiteral("\\&"));
    return text;
}

class RoffWriter {
public:
    explicit RoffWriter(const QString &referenceRoff) : m_reference(referenceRoff) {}

    QString convert(const QString &html, QString *error)
    {
        QXmlStreamReader xml(html);
        QString problem;
        while (!xml.atEnd() && problem.isEmpty()) {
            switch (xml.readNext()) {
            case QXmlStreamReader::StartElement:
                problem = start(xml.name().toString().toLower(), xml.attributes());
                break;
            case QXmlStreamReader::EndElement:
                end(xml.name().toString().toLower());
                break;
            case QXmlStreamReader::Characters:
                if (m_skip == 0)
                    text(xml.text().toString());
                break;
            case QXmlStreamReader::Comment:
                if (QStringLiteral("<!--") + xml.text().toString() + QStringLiteral("-->") == kStatementReferenceMark) {
                    flush();
                    m_out += m_reference;
                }
                break;
            default:
                break;
            }
        }
        if (problem.isEmpty() && xml.hasError())
            problem = xml.errorString();
        if (!problem.isEmpty() && error)
            *error = QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(problem);
        else if (error)
            *error = QString();
        flush();
        return m_out;
    }

private:
    QString start(const QString &name, const QXmlStreamAttributes &attributes)
    {
        static const QSet<QString> inlineFonts{QStringLiteral("code"), QStringLiteral("kbd"), QStringLiteral("b"),
                                               QStringLiteral("strong")};
        if (m_skip > 0 || name == QLatin1String("head")) {
            ++m_skip;
            return {};
        }
        if (name == QLatin1String("html") || name == QLatin1String("body") || name == QLatin1String("div")
            || name == QLatin1String("span"))
            return {};
        if (inlineFonts.contains(name)) {
            m_line += QStringLiteral("\\fB");
            return {};
        }
        if (name == QLatin1String("i") || name == QLatin1String("em")) {
            m_line += QStringLiteral("\\fI");
            return {};
        }
        if (name == QLatin1String("a")) {
            m_href = attributes.value(QStringLiteral("href")).toString();
            return {};
        }
        if (name == QLatin1String("br")) {
            flushLine();
            m_out += QStringLiteral(".br\n");
            return {};
        }
        flush();
        if (name == QLatin1String("h1")) {
            m_heading = QStringLiteral(".SH ");
        } else if (name == QLatin1String("h2") || name == QLatin1String("h3")) {
            m_heading = QStringLiteral(".SS ");
        } else if (name == QLatin1String("h4")) {
            m_out += QStringLiteral(".PP\n");
            m_line += QStringLiteral("\\fB");
        } else if (name == QLatin1String("p")) {
            m_out += m_inItem ? QStringLiteral(".IP\n") : QStringLiteral(".PP\n");
        } else if (name == QLatin1String("ul") || name == QLatin1String("ol")) {
            if (m_inItem)
                m_out += QStringLiteral(".RS\n");
            m_lists.push_back(name == QLatin1String("ol") ? 1 : 0);
        } else if (name == QLatin1String("li")) {
            if (m_lists.isEmpty())
                return QStringLiteral("<li> outside a list");
            int &number = m_lists.last();
            m_out += number > 0 ? QStringLiteral(".IP %1. 4\n").arg(number++) : QStringLiteral(".IP \\(bu 2\n");
            m_inItem = true;
        } else if (name == QLatin1String("dl") || name == QLatin1String("table")) {
        } else if (name == QLatin1String("dt") || name == QLatin1String("tr")) {
            m_out += QStringLiteral(".TP\n");
            m_cell = 0;
            m_inItem = true;
            if (name == QLatin1String("dt"))
                m_line += QStringLiteral("\\fB");
        } else if (name == QLatin1String("dd")) {
        } else if (name == QLatin1String("th") || name == QLatin1String("td")) {
            if (m_cell == 0)
                m_line += QStringLiteral("\\fB");
            else if (m_cell > 1)
                m_line += QStringLiteral(" \\(em ");
        } else if (name == QLatin1String("pre")) {
            m_out += QStringLiteral(".PP\n.RS 4\n.nf\n");
            m_pre = true;
        } else {
            return QStringLiteral("element <%1> is not used in help pages").arg(name);
        }
        return {};
    }

    void end(const QString &name)
    {
        if (m_skip > 0) {
            --m_skip;
            return;
        }
        if (name == QLatin1String("code") || name == QLatin1String("kbd") || name == QLatin1String("b")
            || name == QLatin1String("strong") || name == QLatin1String("i") || name == QLatin1String("em")) {
            m_line += QStringLiteral("\\fR");
        } else if (name == QLatin1String("a")) {
            if (m_href.startsWith(QLatin1String("http")) || m_href.startsWith(QLatin1String("mailto:")))
                m_line += QStringLiteral(" <") + roffInline(m_href) + QStringLiteral(">");
            m_href.clear();
        } else if (name.size() == 2 && name.startsWith(QLatin1Char('h')) && name.at(1).isDigit()) {
            if (name == QLatin1String("h4"))
                m_line += QStringLiteral("\\fR");
            m_out += m_heading + roffLine(m_line) + QLatin1Char('\n');
            m_line.clear();
            m_heading.clear();
        } else if (name == QLatin1String("pre")) {
            QString body = m_preText;
            while (body.startsWith(QLatin1Char('\n')))
                body.remove(0, 1);
            while (body.endsWith(QLatin1Char('\n')))
                body.chop(1);
            for (const QString &line : body.split(QLatin1Char('\n'))) {
                QString escaped = line;
                escaped.replace(QLatin1Char('\\'), QStringLiteral("\\e")).replace(QLatin1Char('-'), QStringLiteral("\\-"));
                if (escaped.startsWith(QLatin1Char('.')) || escaped.startsWith(QLatin1Char('\'')))
                    escaped.prepend(QStringLiteral("\\&"));
                m_out += escaped + QLatin1Char('\n');
            }
            m_out += QStringLiteral(".fi\n.RE\n");
            m_pre = false;
            m_preText.clear();
        } else if (name == QLatin1String("ul") || name == QLatin1String("ol")) {
            flush();
            if (!m_lists.isEmpty())
                m_lists.removeLast();
            if (!m_lists.isEmpty())
                m_out += QStringLiteral(".RE\n");
            m_inItem = !m_lists.isEmpty();
        } else if (name == QLatin1String("th") || name == QLatin1String("td")) {
            if (m_cell == 0) {
                m_line += QStringLiteral("\\fR");
                flushLine();
            }
            ++m_cell;
        } else if (name == QLatin1String("dt")) {
            m_line += QStringLiteral("\\fR");
            flushLine();
        } else if (name == QLatin1String("tr") || name == QLatin1String("dd") || name == QLatin1String("li")
                   || name == QLatin1String("p")) {
            flush();
            if (name != QLatin1String("p"))
                m_inItem = !m_lists.isEmpty();
        }
    }

    void text(const QString &t)
    {
        if (m_pre)
            m_preText += t;
        else
            m_line += roffInline(m_heading == QLatin1String(".SH ") ? t.toUpper() : t);
    }

    void flushLine()
    {
        const QString line = roffLine(m_line);
        if (!line.isEmpty())
            m_out += line + QLatin1Char('\n');
        m_line.clear();
    }
    void flush()
    {
        if (m_heading.isEmpty())
            flushLine();
    }

    QString m_reference;
    QString m_out;
    QString m_line;
    QString m_heading;
    QString m_href;
    QString m_preText;
    QList<int> m_lists;  // 0 for a bulleted list, else the next item number
    int m_skip = 0;
    int m_cell = 0;
    bool m_pre = false;
    bool m_inItem = false;
};

} // namespace

QString HtmlPageToRoff(const QString &html, const QString &referenceRoff, QString *error)
{
    RoffWriter writer(referenceRoff);
    return writer.convert(html, error);
}

const QStringList &HelpPageTitles()
{
    static const QStringList titles{
        QStringLiteral("Reading the Clipboard"), QStringLiteral("Running Sonamark"), QStringLiteral("Sonamark Options"),
        QStringLiteral("The TTS Reader"),        QStringLiteral("The Spell Checker"), QStringLiteral("Read To MP3"),
        QStringLiteral("Clipboard Overview"),    QStringLiteral("The Multi-Clipboard"), QStringLiteral("Selecting Text"),
        QStringLiteral("Hotkeys Macros"),        QStringLiteral("Hotkeys Editor")};
    return titles;
}

QString HelpPageFileName(int page) { return QStringLiteral("%1.html").arg(page, 2, 10, QLatin1Char('0')); }

QString HelpPageHtml(int page, const QStringList &folders, bool *found)
{
    constexpr qint64 kMaxPageBytes = 8 * 1024 * 1024;
    const QString name = HelpPageFileName(page);
    for (const QString &folder : folders) {
        QFile file(QDir(folder).filePath(name));
        if (!file.exists())
            continue;
        if (file.open(QIODevice::ReadOnly) && file.size() <= kMaxPageBytes) {
            if (found)
                *found = true;
            return QString::fromUtf8(file.readAll());
        }
    }
    if (found)
        *found = false;
    QString html = QStringLiteral("<h1>Help page missing</h1>\n<p class=\"error\">The help file <code>%1</code> could "
                                  "not be found or read. Looked in:</p>\n<ul>\n")
                       .arg(name.toHtmlEscaped());
    for (const QString &folder : folders)
        html += QStringLiteral("<li><code>%1</code></li>\n").arg(QDir::toNativeSeparators(folder).toHtmlEscaped());
    html += QStringLiteral("</ul>\n<p>Reinstall Sonamark, or run it from its build folder, where the pages are "
                           "generated into <code>bin/help</code>.</p>\n");
    return html;
}

QString HelpStyleSheet()
{
    return QStringLiteral(
        "body { font-size: 11pt; }\n"
        "h1 { font-size: 18pt; color: #1f4e79; margin-bottom: 8px; }\n"
        "h2 { font-size: 14pt; color: #1f4e79; margin-top: 16px; }\n"
        "h3 { font-size: 12pt; color: #2e6da4; margin-top: 14px; }\n"
        "h4 { font-size: 11pt; margin-top: 12px; margin-bottom: 2px; }\n"
        "p, li, dd { margin-top: 3px; margin-bottom: 3px; }\n"
        "code, kbd { font-family: monospace; color: #7a2e0e; }\n"
        "pre { font-family: monospace; background-color: #f3f3ee; margin-left: 12px; }\n"
        "dt { font-weight: bold; margin-top: 6px; }\n"
        "th { background-color: #e4ecf4; text-align: left; }\n"
        "p.note { background-color: #fff7dc; }\n"
        "p.error { color: #a00000; font-weight: bold; }\n"
        "p.index { margin-top: 2px; margin-bottom: 2px; }\n");
}

} // namespace help
