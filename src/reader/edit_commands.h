#pragma once
// The Edit menu of the main window on txtSpeech: word wrap, font, default font,
// alignment, indents, bullets, XML header, word count, date and time, and opening a web
// link or mail address found in the selection. Find and Find Next belong to the find
// dialog (search/find_replace.h). The window implements EditBox over its rich text box;
// tests use a plain stand-in.
#include "reader/rich_text.h"

#include <QDateTime>
#include <QString>
#include <optional>

namespace reader {

// The right margin that stops lines from wrapping (twips); 0 wraps at the box's edge.
inline constexpr int kNoWrapRightMargin = 65536;

inline constexpr const char *kSelectToFormat = "You must select (highlight) some text to format.";
inline constexpr const char *kNoHyperlink = "No hyperlink was found in the selected text.";

// txtSpeech as the Edit menu sees it. Positions are 0-based characters of text(), where
// paragraphs end in "\n". Indents and margins are twips.
class EditBox {
public:
    virtual ~EditBox() = default;
    virtual QString text() const = 0;
    virtual QString selectedText() const = 0;
    virtual int selStart() const = 0;
    virtual int selLength() const = 0;
    virtual void select(int start, int length) = 0;
    // SelText = text: the caret ends behind the new text.
    virtual void replaceSelection(const QString &text) = 0;
    // Text = text.
    virtual void setText(const QString &text) = 0;

    // The character format at the selection's start, as the font dialog starts from it.
    virtual CharFormat selectionFont() const = 0;
    // Applies every field of format to the selection; withColor false leaves the colour
    // of each character as it is.
    virtual void setSelectionFont(const CharFormat &format, bool withColor) = 0;
    // Only the size of every character of the selection.
    virtual void setSelectionFontSize(double points) = 0;
    // The paragraph format of the first paragraph the selection touches.
    virtual ParagraphFormat selectionParagraph() const = 0;
    // These change one field of every paragraph the selection touches.
    virtual void setSelectionAlignment(Alignment alignment) = 0;
    virtual void setSelectionLeftIndent(int twips) = 0;
    virtual void setSelectionRightIndent(int twips) = 0;
    virtual void setSelectionBullet(bool bullet) = 0;
    virtual void setRightMargin(int twips) = 0;
    // The font size of the box (new text takes it).
    virtual void setBoxFontSize(double points) = 0;

    // The font dialog (ShowFont), starting at initial; nothing when cancelled.
    virtual std::optional<CharFormat> showFont(const CharFormat &initial) = 0;
};

// What the Edit menu keeps between commands.
struct EditState {
    CharFormat DefaultFont;  // remembered in Form_Load
    bool WordWrap = true;    // the check of mnuFormatWrap
    int CaretLine = 0;       // status panel 2
    int CaretColumn = 0;
    void reset() { *this = EditState(); }
};
EditState &editState();

// mnuFormatWrap_Click: flips the check and sets the right margin to match.
void mnuFormatWrap_Click(EditBox &box);
void mnuFormatFont_Click(EditBox &box);
void mnuFormatDefFont_Click(EditBox &box);
void mnuFormatLeft_Click(EditBox &box);
void mnuFormatRight_Click(EditBox &box);
void mnuFormatCenter_Click(EditBox &box);
void mnuFormatIndentLeft_Click(EditBox &box);
void mnuFormatIndentRight_Click(EditBox &box);
void mnuFormatBullets_Click(EditBox &box);
void mnuFormatAddXMLHdr_Click(EditBox &box);
void mnuFormatCountWords_Click(const EditBox &box);
void mnuFormatDateTime_Click(EditBox &box, const QDateTime &now);
void mnuFormatHyperlink_Click(const EditBox &box);
// A row of cmbFontSize chosen (its text); loading says the window is in Form_Load.
void cmbFontSize_Click(EditBox &box, const QString &sizeText, bool loading);

// The text with the SAPI XML header around it ("<xml version=...").
QString WithXmlHeader(const QString &text);
// The report of Count Words.
QString CountWordsMessage(int words, qsizetype characters, bool inSelection);
// What Insert Date & Time puts in: "MMM d, yyyy" with English month names, ":", and the
// time in the system's long format.
QString DateTimeStamp(const QDateTime &now);
// The web address in a selection (with "http://" before a bare "www."), or "" when
// there is none; a selection without one may hold a mail address instead.
QString HyperlinkIn(const QString &selection);
// The mail address around the first "@" of text ("" when there is none).
QString Get_Email(const QString &text);
// The mailto: URL LaunchOutlookExpress opens for an address.
QString MailtoUrl(const QString &address);
// Opens a new message to the address in the user's mail program.
void LaunchOutlookExpress(const QString &address);
// GetLnCol: line*1000 plus column, for macros.
int GetLnCol();

} // namespace reader
