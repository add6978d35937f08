#include "reader/edit_commands.h"

#include "platform/services.h"
#include "reader/count_words.h"
#include "reader/date_panel.h"
#include "reader/help_menu.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QLocale>
#include <cmath>

namespace reader {

namespace {

constexpr int kMsgOk = 0;
constexpr int kLnColLineFactor = 1000;

void Say(const QString &text, const QString &title) { shell::MsgBoxOT(text, kMsgOk, title); }

void MarkDirty()
{
    if (!shell::app().CurrentFile.isEmpty())
        shell::app().TextDirty = true;
}

// The commands that act on a selection refuse to run without one.
bool HasSelection(const EditBox &box, const QString &title)
{
    if (box.selLength() > 0)
        return true;
    Say(QLatin1String(kSelectToFormat), title);
    return false;
}

void Align(EditBox &box, Alignment alignment, const QString &title)
{
    if (!HasSelection(box, title))
        return;
    box.setSelectionAlignment(alignment);
    MarkDirty();
}

// The input box's answer in twips; nothing for an empty answer or Cancel.
std::optional<int> AskInches(const QString &title, const QString &prompt)
{
    platform::Prompts *prompts = platform::services().prompts;
    QString reply;
    if (!prompts || !prompts->inputBox(title, prompt, reply) || reply.isEmpty())
        return std::nullopt;
    return int(std::lround(shell::Val(reply) * kTwipsPerInch));
}

// 0-based index of the first of chars in text at or behind from, or -1.
qsizetype FirstOf(const QString &text, const QString &chars, qsizetype from)
{
    for (qsizetype i = from; i < text.size(); ++i)
        if (chars.contains(text.at(i)))
            return i;
    return -1;
}

} // namespace

EditState &editState()
{
    static EditState state;
    return state;
}

void mnuFormatWrap_Click(EditBox &box)
{
    EditState &state = editState();
    state.WordWrap = !state.WordWrap;
    box.setRightMargin(state.WordWrap ? 0 : kNoWrapRightMargin);
}

void mnuFormatFont_Click(EditBox &box)
{
    if (!HasSelection(box, QStringLiteral("Font..")))
        return;
    const std::optional<CharFormat> chosen = box.showFont(box.selectionFont());
    if (!chosen)
        return;
    box.setSelectionFont(*chosen, true);
    MarkDirty();
}

void mnuFormatDefFont_Click(EditBox &box)
{
    const CharFormat &font = editState().DefaultFont;
    if (box.selLength() > 0) {
        box.setSelectionFont(font, false);
    } else {
        const int start = box.selStart();
        box.select(0, int(box.text().size()));
        box.setSelectionFont(font, false);
        box.select(start, 0);
    }
    MarkDirty();
}

void mnuFormatLeft_Click(EditBox &box) { Align(box, Alignment::Left, QStringLiteral("Align Left")); }
void mnuFormatRight_Click(EditBox &box) { Align(box, Alignment::Right, QStringLiteral("Align Right")); }
void mnuFormatCenter_Click(EditBox &box) { Align(box, Alignment::Center, QStringLiteral("Align Center")); }

void mnuFormatIndentLeft_Click(EditBox &box)
{
    if (!HasSelection(box, QStringLiteral("Indent")))
        return;
    const std::optional<int> twips = AskInches(QStringLiteral("Left Indent"), QStringLiteral("Input left indent (inches)"));
    if (!twips)
        return;
    if (*twips > box.selectionParagraph().rightIndent) {
        Say(QStringLiteral("The left indent can not be more than the right indent"), QStringLiteral("Indent"));
        return;
    }
    box.setSelectionLeftIndent(*twips);
    MarkDirty();
}

void mnuFormatIndentRight_Click(EditBox &box)
{
    if (!HasSelection(box, QStringLiteral("Indent")))
        return;
    const std::optional<int> twips =
        AskInches(QStringLiteral("Right Indent"), QStringLiteral("Input Right indent (inches)"));
    if (!twips)
        return;
    if (*twips < box.selectionParagraph().leftIndent) {
        Say(QStringLiteral("The right indent can not be less than the left indent"), QStringLiteral("Indent"));
        return;
    }
    box.setSelectionRightIndent(*twips);
    MarkDirty();
}

void mnuFormatBullets_Click(EditBox &box)
{
    if (!HasSelection(box, QStringLiteral("Bullets")))
        return;
    box.setSelectionBullet(!box.selectionParagraph().bullet);
    MarkDirty();
}

QString WithXmlHeader(const QString &text)
{
    if (text.toLower().contains(QLatin1String("<xml version=")))
        return text;
    return QStringLiteral("<xml version=\"1.0\">\n<SAPI>\n") + text + QStringLiteral("\n</SAPI>\n</xml>");
}

void mnuFormatAddXMLHdr_Click(EditBox &box)
{
    const QString text = box.text();
    const QString wrapped = WithXmlHeader(text);
    if (wrapped == text)
        return;
    box.setText(wrapped);
    MarkDirty();
}

QString CountWordsMessage(int words, qsizetype characters, bool inSelection)
{
    const QString n = QLocale(QLocale::English).toString(qlonglong(characters));
    QString text;
    if (words == 0)
        text = QStringLiteral("There are no words to count among ") + n + QStringLiteral(" characters");
    else if (words == 1)
        text = QStringLiteral("There was 1 word, among ") + n + QStringLiteral(" characters counted");
    else
        text = QStringLiteral("There were ") + QString::number(words) + QStringLiteral(" words among ") + n
             + QStringLiteral(" characters counted");
    return text + (inSelection ? QStringLiteral(" in the selected text.") : QStringLiteral("."));
}

void mnuFormatCountWords_Click(const EditBox &box)
{
    const QString title = QStringLiteral("Count Words");
    if (box.text().isEmpty()) {
        Say(QStringLiteral("There are no words to count."), title);
        return;
    }
    const bool inSelection = box.selLength() > 0;
    const QString counted = inSelection ? box.selectedText() : box.text();
    Say(CountWordsMessage(CountWords(counted), counted.size(), inSelection), title);
}

QString DateTimeStamp(const QDateTime &now)
{
    QString timeFormat = QLocale::system().timeFormat(QLocale::LongFormat);
    timeFormat.remove(QLatin1Char('t'));  // the system's time, without its zone
    return FormatPanelDate(now.date()) + QLatin1Char(':') + QLocale::system().toString(now.time(), timeFormat.trimmed());
}

void mnuFormatDateTime_Click(EditBox &box, const QDateTime &now)
{
    box.replaceSelection(DateTimeStamp(now));
    MarkDirty();
}

QString HyperlinkIn(const QString &selection)
{
    qsizetype at = selection.indexOf(QLatin1String("http"));
    QString prefix;
    if (at < 0) {
        at = selection.indexOf(QLatin1String("www."));
        if (at < 0)
            return {};
        prefix = QStringLiteral("http://");
    }
    qsizetype end = selection.indexOf(QLatin1Char('>'), at);
    if (end < 0)
        end = FirstOf(selection, QStringLiteral(" ,\"'"), at);
    if (end < 0)
        end = selection.size();
    const QString url = selection.mid(at, end - at);
    return url.isEmpty() ? QString() : prefix + url;
}

QString Get_Email(const QString &text)
{
    const qsizetype at = text.indexOf(QLatin1Char('@'));
    if (at < 0)
        return {};
    qsizetype end = text.indexOf(QLatin1Char(','), at);
    if (end < 0)
        end = text.indexOf(QLatin1Char(' '), at);
    if (end < 0)
        end = text.indexOf(QLatin1Char('>'), at);
    if (end < 0)
        end = text.size();
    qsizetype start = at;
    while (start > 0 && !QStringLiteral(" :<").contains(text.at(start - 1)))
        --start;
    return text.mid(start, end - start);
}

QString MailtoUrl(const QString &address)
{
    return QStringLiteral("mailto:") + address + QStringLiteral("?subject= ") + QStringLiteral("&body=")
         + QStringLiteral("\r\n\r\n");
}

void LaunchOutlookExpress(const QString &address)
{
    if (platform::Desktop *desktop = platform::services().desktop)
        desktop->openUrl(MailtoUrl(address));
}

void mnuFormatHyperlink_Click(const EditBox &box)
{
    if (box.selLength() == 0) {
        Say(QStringLiteral("You must select the hyperlink text."), QStringLiteral("Hyperlink"));
        return;
    }
    const QString selection = box.selectedText();
    const bool web = selection.contains(QLatin1String("http")) || selection.contains(QLatin1String("www."));
    if (!web) {
        const QString address = selection.contains(QLatin1Char('@')) ? Get_Email(selection) : QString();
        if (address.isEmpty())
            Say(QLatin1String(kNoHyperlink), QStringLiteral("No Hyperlink"));
        else
            LaunchOutlookExpress(address);
        return;
    }
    const QString url = HyperlinkIn(selection);
    if (url.isEmpty()) {
        Say(QLatin1String(kNoHyperlink), QStringLiteral("No Hyperlink"));
        return;
    }
    LaunchSonamarkWebSite(url);
}

void cmbFontSize_Click(EditBox &box, const QString &sizeText, bool loading)
{
    const double points = shell::Val(sizeText);
    if (points <= 0)
        return;
    box.setBoxFontSize(points);
    shell::settings().FontSizeOpt = sizeText;
    if (!loading)
        shell::app().OptionsDirty = true;
    if (box.text().isEmpty())
        return;
    box.select(0, int(box.text().size()));
    box.setSelectionFontSize(points);
    box.select(int(box.text().size()), 0);
}

int GetLnCol()
{
    const EditState &state = editState();
    return state.CaretLine * kLnColLineFactor + state.CaretColumn;
}

} // namespace reader
