#pragma once
// The main window's Edit menu entries on txtSpeech (all but Find and Find Next, which
// stand with frmFind), the font size list's effect, and the line and column of status
// panel 2. The decisions are reader/edit_commands'; this object is the box they act on.
#include "reader/edit_commands.h"

#include <QFont>
#include <QObject>
#include <functional>

class QAction;
class QLabel;
class QMenu;
class QTextCursor;
class QTextEdit;
class QWidget;

namespace ui {

class EditMenu : public QObject, public reader::EditBox {
    Q_OBJECT
public:
    // panel2 is the status panel that shows "Ln n, Col m".
    EditMenu(QWidget *window, QTextEdit *txtSpeech, QLabel *panel2);
    ~EditMenu() override;

    // Word Wrap, Font.., Default Font, Align, Indent, Bullets (above Find).
    void addFormatEntries(QMenu *edit);
    // Insert XML header, Count Words, Insert Date & Time, Open Hyperlink (below Find Next).
    void addToolEntries(QMenu *edit);
    // Form_Load: the box's font becomes the default font.
    void rememberDefaultFont();
    // SetLineColumnNumbers: CaretLine and CaretColumn from the caret, shown in panel 2.
    void SetLineColumnNumbers();

    // The font dialog; tests replace it. Answers nothing when cancelled.
    std::function<std::optional<QFont>(const QFont &initial)> fontDialog;

    QAction *mnuFormatWrap = nullptr;
    QAction *mnuFormatFont = nullptr;
    QAction *mnuFormatDefFont = nullptr;
    QAction *mnuFormatLeft = nullptr;
    QAction *mnuFormatRight = nullptr;
    QAction *mnuFormatCenter = nullptr;
    QAction *mnuFormatIndentLeft = nullptr;
    QAction *mnuFormatIndentRight = nullptr;
    QAction *mnuFormatBullets = nullptr;
    QAction *mnuFormatAddXMLHdr = nullptr;
    QAction *mnuFormatCountWords = nullptr;
    QAction *mnuFormatDateTime = nullptr;
    QAction *mnuFormatHyperlink = nullptr;

    // reader::EditBox
    QString text() const override;
    QString selectedText() const override;
    int selStart() const override;
    int selLength() const override;
    void select(int start, int length) override;
    void replaceSelection(const QString &text) override;
    void setText(const QString &text) override;
    reader::CharFormat selectionFont() const override;
    void setSelectionFont(const reader::CharFormat &format, bool withColor) override;
    void setSelectionFontSize(double points) override;
    reader::ParagraphFormat selectionParagraph() const override;
    void setSelectionAlignment(reader::Alignment alignment) override;
    void setSelectionLeftIndent(int twips) override;
    void setSelectionRightIndent(int twips) override;
    void setSelectionBullet(bool bullet) override;
    void setRightMargin(int twips) override;
    void setBoxFontSize(double points) override;
    std::optional<reader::CharFormat> showFont(const reader::CharFormat &initial) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAction *entry(QMenu *menu, const QString &caption, const char *source, std::function<void()> body);
    // Runs body on every block the selection touches, in one undo step.
    void forEachSelectedBlock(const std::function<void(QTextCursor &)> &body);

    QWidget *m_window;
    QTextEdit *m_box;
    QLabel *m_panel2;
};

// The 1-based line of a position counting wrapped lines as lines (EM_LINEFROMCHAR), and
// the position where that line starts (EM_LINEINDEX).
int VisualLineOf(const QTextEdit *box, int position);
int VisualLineStart(const QTextEdit *box, int line);

} // namespace ui
