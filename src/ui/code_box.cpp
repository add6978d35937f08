#include "ui/code_box.h"

#include <QFontDatabase>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QTextBlock>

namespace ui {

namespace {

const QColor kErrorColour(255, 0, 0);  // pure red, the colour of an error line
constexpr int kMarginPadding = 6;       // pixels left and right of the numbers
constexpr int kTabStopChars = 4;

class NumberArea : public QWidget {
public:
    explicit NumberArea(CodeBox *box) : QWidget(box), m_box(box) { setObjectName(QStringLiteral("lineNumbers")); }
    QSize sizeHint() const override { return {m_box->numberAreaWidth(), 0}; }
protected:
    void paintEvent(QPaintEvent *event) override { m_box->paintNumberArea(event); }
private:
    CodeBox *m_box;
};

} // namespace

CodeBox::CodeBox(QWidget *parent) : QPlainTextEdit(parent)
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setFont(fixed);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabStopDistance(QFontMetricsF(fixed).horizontalAdvance(QLatin1Char(' ')) * kTabStopChars);
    setUndoRedoEnabled(true);
    m_numberArea = new NumberArea(this);
    connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { setViewportMargins(numberAreaWidth(), 0, 0, 0); });
    connect(this, &QPlainTextEdit::updateRequest, this, &CodeBox::updateNumberArea);
    setViewportMargins(numberAreaWidth(), 0, 0, 0);
}

QString CodeBox::code() const { return toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")); }

void CodeBox::setCode(const QString &code)
{
    QString shown = code;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (shown == toPlainText())
        return;
    // Through a cursor so that Undo can take a loaded or formatted text back.
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(shown);
    moveCursor(QTextCursor::Start);
}

void CodeBox::setErrorLines(const QList<int> &lines)
{
    m_errorLines = lines;
    applyErrorLines();
    m_numberArea->update();
}

void CodeBox::applyErrorLines()
{
    QList<QTextEdit::ExtraSelection> selections;
    for (const int line : m_errorLines) {
        const QTextBlock block = document()->findBlockByNumber(line - 1);
        if (!block.isValid())
            break;
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(block);
        selection.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        selection.format.setForeground(kErrorColour);
        selections << selection;
    }
    setExtraSelections(selections);
}

void CodeBox::pasteStatement(const QString &text, const IndentFn &indentAt)
{
    pasteStatements(QStringList{text}, indentAt);
}

void CodeBox::pasteStatements(const QStringList &lines, const IndentFn &indentAt)
{
    if (lines.isEmpty())
        return;
    QTextCursor cursor = textCursor();
    cursor.clearSelection();
    cursor.beginEditBlock();
    for (const QString &text : lines) {
        cursor.movePosition(QTextCursor::EndOfBlock);
        if (cursor.block().text().trimmed().isEmpty()) {
            cursor.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        } else {
            cursor.insertBlock();
        }
        const int caret = cursor.position() + cursor.blockNumber();  // each line end before it is CR LF
        const int indent = indentAt ? indentAt(code(), caret, text) : 0;
        cursor.insertText(QString(qMax(0, indent), QLatin1Char(' ')) + text);
    }
    cursor.endEditBlock();
    setTextCursor(cursor);
}

void CodeBox::pasteText(const QString &text) { insertPlainText(text); }

int CodeBox::caretLine() const { return textCursor().blockNumber() + 1; }

int CodeBox::caretColumn() const { return textCursor().positionInBlock() + 1; }

int CodeBox::numberAreaWidth() const
{
    int digits = 1;
    for (int max = qMax(1, blockCount()); max >= 10; max /= 10)
        ++digits;
    digits = qMax(digits, 3);
    return 2 * kMarginPadding + fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits;
}

void CodeBox::resizeEvent(QResizeEvent *event)
{
    QPlainTextEdit::resizeEvent(event);
    const QRect inner = contentsRect();
    m_numberArea->setGeometry(QRect(inner.left(), inner.top(), numberAreaWidth(), inner.height()));
}

void CodeBox::updateNumberArea(const QRect &rect, int dy)
{
    if (dy)
        m_numberArea->scroll(0, dy);
    else
        m_numberArea->update(0, rect.y(), m_numberArea->width(), rect.height());
}

void CodeBox::paintNumberArea(QPaintEvent *event)
{
    QPainter painter(m_numberArea);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    painter.setFont(font());
    QTextBlock block = firstVisibleBlock();
    int number = block.blockNumber() + 1;
    int top = qRound(blockBoundingGeometry(block).translated(contentOffset()).top());
    int bottom = top + qRound(blockBoundingRect(block).height());
    const int current = caretLine();
    while (block.isValid() && top <= event->rect().bottom()) {
        if (block.isVisible() && bottom >= event->rect().top()) {
            QColor colour = palette().color(number == current ? QPalette::Text : QPalette::PlaceholderText);
            if (m_errorLines.contains(number))
                colour = kErrorColour;
            painter.setPen(colour);
            painter.drawText(0, top, m_numberArea->width() - kMarginPadding, fontMetrics().height(), Qt::AlignRight,
                             QString::number(number));
        }
        block = block.next();
        top = bottom;
        bottom = top + qRound(blockBoundingRect(block).height());
        ++number;
    }
}

} // namespace ui
