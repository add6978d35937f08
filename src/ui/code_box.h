#pragma once
// The macro code box of the Hotkeys editor: plain text in a fixed-pitch font, with
// undo and redo, line numbers in a margin, and error lines painted red.
#include <QList>
#include <QStringList>
#include <QPlainTextEdit>
#include <functional>

namespace ui {

class CodeBox : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit CodeBox(QWidget *parent = nullptr);

    // The text with CR LF line ends, as macros keep it.
    QString code() const;
    // Replaces the whole text; the change can be undone like any edit.
    void setCode(const QString &code);
    // Paints these 1-based lines red (text and number), all others normal.
    void setErrorLines(const QList<int> &lines);
    const QList<int> &errorLines() const { return m_errorLines; }
    // The blanks to put before pasted, a statement line inserted at caret (0-based, CR LF
    // counted as two) of code.
    using IndentFn = std::function<int(const QString &code, int caret, const QString &pasted)>;
    // Inserts a statement on a line of its own (the caret's line when it is blank, else
    // a new one below it), indented by indentAt, and leaves the caret behind it.
    void pasteStatement(const QString &text, const IndentFn &indentAt);
    // pasteStatement for each line in turn, each below the one before and indented for
    // its own place, as one step for Undo.
    void pasteStatements(const QStringList &lines, const IndentFn &indentAt);
    // Inserts text at the caret, in place of a selection.
    void pasteText(const QString &text);
    // 1-based line and column of the caret.
    int caretLine() const;
    int caretColumn() const;

    // The margin's width and painting, for the margin widget.
    int numberAreaWidth() const;
    void paintNumberArea(QPaintEvent *event);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void updateNumberArea(const QRect &rect, int dy);
    void applyErrorLines();

    QWidget *m_numberArea = nullptr;
    QList<int> m_errorLines;
};

} // namespace ui
