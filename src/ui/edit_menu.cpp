#include "ui/edit_menu.h"

#include "shell/failure_report.h"
#include "ui/document_box.h"
#include "ui/rich_text_bridge.h"

#include <QAction>
#include <QEvent>
#include <QFontDialog>
#include <QLabel>
#include <QMenu>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextLayout>
#include <QTextList>
#include <cmath>

namespace ui {

namespace {

qreal ToPixels(int twips) { return qreal(twips) / kTwipsPerPixel; }

QFont QtFont(const reader::CharFormat &format, const QFont &fallback)
{
    QFont font = fallback;
    if (!format.family.isEmpty())
        font.setFamilies({format.family});
    if (format.pointSize > 0)
        font.setPointSizeF(format.pointSize);
    font.setBold(format.bold);
    font.setItalic(format.italic);
    font.setUnderline(format.underline);
    font.setStrikeOut(format.strike);
    return font;
}

reader::CharFormat ModelFont(const QFont &font)
{
    reader::CharFormat format;
    format.family = font.family();
    format.pointSize = font.pointSizeF() > 0 ? font.pointSizeF() : 0;
    format.bold = font.bold();
    format.italic = font.italic();
    format.underline = font.underline();
    format.strike = font.strikeOut();
    return format;
}

// The pixels the list a block is in indents it by (0 outside a list).
qreal ListIndent(const QTextBlock &block)
{
    const QTextList *list = block.textList();
    return list ? list->format().indent() * block.document()->indentWidth() : 0;
}

} // namespace

EditMenu::EditMenu(QWidget *window, QTextEdit *txtSpeech, QLabel *panel2)
    : QObject(window), m_window(window), m_box(txtSpeech), m_panel2(panel2)
{
    fontDialog = [this](const QFont &initial) -> std::optional<QFont> {
        bool ok = false;
        const QFont chosen = QFontDialog::getFont(&ok, initial, m_window, QStringLiteral("Font"));
        return ok ? std::optional<QFont>(chosen) : std::nullopt;
    };
    m_box->installEventFilter(this);
    m_box->viewport()->installEventFilter(this);
}

EditMenu::~EditMenu() = default;

QAction *EditMenu::entry(QMenu *menu, const QString &caption, const char *source, std::function<void()> body)
{
    QAction *action = menu->addAction(caption);
    connect(action, &QAction::triggered, this, [source, body = std::move(body)] { shell::Guarded(source, body); });
    return action;
}

void EditMenu::addFormatEntries(QMenu *edit)
{
    mnuFormatWrap = entry(edit, QStringLiteral("Word Wrap"), "(Form) frmSonamark::Sub mnuFormatWrap_Click", [this] {
        reader::mnuFormatWrap_Click(*this);
        mnuFormatWrap->setChecked(reader::editState().WordWrap);
    });
    mnuFormatWrap->setCheckable(true);
    mnuFormatWrap->setChecked(reader::editState().WordWrap);
    mnuFormatFont = entry(edit, QStringLiteral("Font.."), "(Form) frmSonamark::Sub mnuFormatFont_Click",
                          [this] { reader::mnuFormatFont_Click(*this); });
    mnuFormatDefFont = entry(edit, QStringLiteral("Default Font"), "(Form) frmSonamark::Sub mnuFormatDefFont_Click",
                             [this] { reader::mnuFormatDefFont_Click(*this); });
    QMenu *align = edit->addMenu(QStringLiteral("Align"));
    mnuFormatLeft = entry(align, QStringLiteral("Left"), "(Form) frmSonamark::Sub mnuFormatLeft_Click",
                          [this] { reader::mnuFormatLeft_Click(*this); });
    mnuFormatCenter = entry(align, QStringLiteral("Center"), "(Form) frmSonamark::Sub mnuFormatCenter_Click",
                            [this] { reader::mnuFormatCenter_Click(*this); });
    mnuFormatRight = entry(align, QStringLiteral("Right"), "(Form) frmSonamark::Sub mnuFormatRight_Click",
                           [this] { reader::mnuFormatRight_Click(*this); });
    QMenu *indent = edit->addMenu(QStringLiteral("Indent"));
    mnuFormatIndentLeft = entry(indent, QStringLiteral("Left.."), "(Form) frmSonamark::Sub mnuFormatIndentLeft_Click",
                                [this] { reader::mnuFormatIndentLeft_Click(*this); });
    mnuFormatIndentRight = entry(indent, QStringLiteral("Right.."),
                                 "(Form) frmSonamark::Sub mnuFormatIndentRight_Click",
                                 [this] { reader::mnuFormatIndentRight_Click(*this); });
    mnuFormatBullets = entry(edit, QStringLiteral("Bullets"), "(Form) frmSonamark::Sub mnuFormatBullets_Click",
                             [this] { reader::mnuFormatBullets_Click(*this); });
}

void EditMenu::addToolEntries(QMenu *edit)
{
    mnuFormatAddXMLHdr = entry(edit, QStringLiteral("Insert XML header"),
                               "(Form) frmSonamark::Sub mnuFormatAddXMLHdr_Click",
                               [this] { reader::mnuFormatAddXMLHdr_Click(*this); });
    mnuFormatCountWords = entry(edit, QStringLiteral("Count Words"), "(Form) frmSonamark::Sub mnuFormatCountWords_Click",
                                [this] { reader::mnuFormatCountWords_Click(*this); });
    mnuFormatDateTime = entry(edit, QStringLiteral("Insert Date && Time"),
                              "(Form) frmSonamark::Sub mnuFormatDateTime_Click",
                              [this] { reader::mnuFormatDateTime_Click(*this, QDateTime::currentDateTime()); });
    mnuFormatHyperlink = entry(edit, QStringLiteral("Open Hyperlink"), "(Form) frmSonamark::Sub mnuFormatHyperlink_Click",
                               [this] { reader::mnuFormatHyperlink_Click(*this); });
}

void EditMenu::rememberDefaultFont() { reader::editState().DefaultFont = ModelFont(m_box->font()); }

QString EditMenu::text() const { return m_box->toPlainText(); }

QString EditMenu::selectedText() const
{
    QString text = m_box->textCursor().selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

int EditMenu::selStart() const { return m_box->textCursor().selectionStart(); }

int EditMenu::selLength() const
{
    const QTextCursor cursor = m_box->textCursor();
    return cursor.selectionEnd() - cursor.selectionStart();
}

void EditMenu::select(int start, int length) { SelectInBox(m_box, start, length); }

void EditMenu::replaceSelection(const QString &text)
{
    QTextCursor cursor = m_box->textCursor();
    cursor.insertText(text);
    m_box->setTextCursor(cursor);
}

void EditMenu::setText(const QString &text) { m_box->setPlainText(text); }

reader::CharFormat EditMenu::selectionFont() const
{
    QTextCursor cursor = m_box->textCursor();
    // The format of the first selected character (a cursor reports the one before it).
    cursor.setPosition(cursor.selectionStart());
    if (cursor.position() < m_box->document()->characterCount() - 1)
        cursor.movePosition(QTextCursor::NextCharacter);
    return CharFormatOf(cursor.charFormat(), m_box->document()->defaultFont());
}

void EditMenu::setSelectionFont(const reader::CharFormat &format, bool withColor)
{
    QTextCharFormat change = QtCharFormat(format);
    if (!withColor || !format.color)
        change.clearForeground();
    QTextCursor cursor = m_box->textCursor();
    cursor.mergeCharFormat(change);
}

void EditMenu::setSelectionFontSize(double points)
{
    QTextCharFormat change;
    change.setFontPointSize(points);
    QTextCursor cursor = m_box->textCursor();
    cursor.mergeCharFormat(change);
}

reader::ParagraphFormat EditMenu::selectionParagraph() const
{
    QTextCursor cursor = m_box->textCursor();
    cursor.setPosition(cursor.selectionStart());
    return ParagraphFormatOf(m_box->document(), cursor.block());
}

void EditMenu::forEachSelectedBlock(const std::function<void(QTextCursor &)> &body)
{
    const QTextCursor selection = m_box->textCursor();
    QTextDocument *document = m_box->document();
    const QTextBlock last = document->findBlock(selection.selectionEnd());
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (QTextBlock block = document->findBlock(selection.selectionStart()); block.isValid();
         block = block.next()) {
        cursor.setPosition(block.position());
        body(cursor);
        if (block == last)
            break;
    }
    cursor.endEditBlock();
}

void EditMenu::setSelectionAlignment(reader::Alignment alignment)
{
    Qt::Alignment qt = Qt::AlignLeft;
    if (alignment == reader::Alignment::Right)
        qt = Qt::AlignRight;
    else if (alignment == reader::Alignment::Center)
        qt = Qt::AlignHCenter;
    else if (alignment == reader::Alignment::Justify)
        qt = Qt::AlignJustify;
    forEachSelectedBlock([qt](QTextCursor &cursor) {
        QTextBlockFormat format;
        format.setAlignment(qt);
        cursor.mergeBlockFormat(format);
    });
}

void EditMenu::setSelectionLeftIndent(int twips)
{
    forEachSelectedBlock([twips](QTextCursor &cursor) {
        QTextBlockFormat format;
        // Inside a list the list's own indent is part of the paragraph's left indent.
        format.setLeftMargin(std::max<qreal>(0, ToPixels(twips) - ListIndent(cursor.block())));
        cursor.mergeBlockFormat(format);
    });
}

void EditMenu::setSelectionRightIndent(int twips)
{
    forEachSelectedBlock([twips](QTextCursor &cursor) {
        QTextBlockFormat format;
        format.setRightMargin(ToPixels(twips));
        cursor.mergeBlockFormat(format);
    });
}

void EditMenu::setSelectionBullet(bool bullet)
{
    QTextList *list = nullptr;
    forEachSelectedBlock([&](QTextCursor &cursor) {
        QTextBlock block = cursor.block();
        if (!bullet) {
            if (QTextList *own = block.textList()) {
                own->remove(block);
                QTextBlockFormat format = block.blockFormat();
                format.setIndent(0);
                format.setObjectIndex(-1);
                cursor.setBlockFormat(format);
            }
            return;
        }
        if (block.textList()) {
            list = block.textList();
            return;
        }
        if (list) {
            list->add(block);
        } else {
            QTextListFormat format;
            format.setStyle(QTextListFormat::ListDisc);
            format.setIndent(1);
            list = cursor.createList(format);
        }
    });
}

void EditMenu::setRightMargin(int twips)
{
    if (twips == 0) {
        m_box->setLineWrapMode(QTextEdit::WidgetWidth);
    } else {
        m_box->setLineWrapMode(QTextEdit::FixedPixelWidth);
        m_box->setLineWrapColumnOrWidth(int(std::lround(ToPixels(twips))));
    }
}

void EditMenu::setBoxFontSize(double points)
{
    QFont font = m_box->font();
    font.setPointSizeF(points);
    m_box->setFont(font);
}

std::optional<reader::CharFormat> EditMenu::showFont(const reader::CharFormat &initial)
{
    if (!fontDialog)
        return std::nullopt;
    const std::optional<QFont> chosen = fontDialog(QtFont(initial, m_box->font()));
    if (!chosen)
        return std::nullopt;
    reader::CharFormat format = ModelFont(*chosen);
    format.color = initial.color;  // the dialog has no colour of its own: the selection's stays
    return format;
}

int VisualLineOf(const QTextEdit *box, int position)
{
    int line = 0;
    const QTextDocument *document = box->document();
    const QTextBlock target = document->findBlock(position);
    for (QTextBlock block = document->begin(); block.isValid() && block != target; block = block.next())
        line += block.layout() && block.layout()->lineCount() > 0 ? block.layout()->lineCount() : 1;
    if (const QTextLayout *layout = target.layout(); layout && layout->lineCount() > 0) {
        const QTextLine inBlock = layout->lineForTextPosition(position - target.position());
        line += inBlock.isValid() ? inBlock.lineNumber() : layout->lineCount() - 1;
    }
    return line + 1;
}

int VisualLineStart(const QTextEdit *box, int line)
{
    int first = 1;
    const QTextDocument *document = box->document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const QTextLayout *layout = block.layout();
        const int count = layout && layout->lineCount() > 0 ? layout->lineCount() : 1;
        if (line < first + count) {
            if (!layout || layout->lineCount() == 0)
                return block.position();
            return block.position() + layout->lineAt(line - first).textStart();
        }
        first += count;
    }
    return document->characterCount() - 1;
}

void EditMenu::SetLineColumnNumbers()
{
    const int start = selStart();
    int line = VisualLineOf(m_box, start);
    const int column = start - VisualLineStart(m_box, line) + 1;
    // A caret behind the last word of a wrapped line stands on a blank that the next
    // line starts with: it counts to the line it ends.
    const QString all = text();
    if (start < all.size() && all.at(start) == QLatin1Char(' ') && column > 1 && start >= 1)
        line = VisualLineOf(m_box, start - 1);
    reader::EditState &state = reader::editState();
    state.CaretLine = line;
    state.CaretColumn = column;
    if (m_panel2)
        m_panel2->setText(QStringLiteral("Ln %1, Col %2").arg(line).arg(column));
}

bool EditMenu::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    // The box is asked for its viewport only on a click: while the box is being destroyed
    // its children still send events here, and it is no text box any more by then.
    if ((watched == m_box && (type == QEvent::FocusIn || type == QEvent::KeyRelease))
        || (type == QEvent::MouseButtonRelease && watched == m_box->viewport()))
        shell::Guarded("(Form) frmSonamark::Sub SetLineColumnNumbers", [this] { SetLineColumnNumbers(); });
    return QObject::eventFilter(watched, event);
}

} // namespace ui
