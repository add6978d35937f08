#pragma once
// Documents in the reader's text box: open and save of .txt, .rtf, .xml and .doc,
// CurrentFile and TextDirty (in shell::app()), the window caption, the save prompts,
// page setup and printing. The box and its dialogs are reached through reader::textBox().
#include <QByteArray>
#include <QString>

namespace reader {

inline constexpr const char *kNoFileCaption = "Sonamark - Text-To-Speech Reader";
inline constexpr int kCaptionPathWidth = 60;

// The window caption for a file ("" for none).
QString DocumentCaption(const QString &currentFile);
// A name whose last three characters are "rtf" in any case holds rich text.
bool IsRichTextFile(const QString &path);
// A name whose last four characters are ".doc" in any case goes through the word reader.
bool IsWordFile(const QString &path);
// The name a loaded word-processor file is saved under: "txt" in place of its last three
// characters.
QString WordTextSibling(const QString &path);
// A dialog filter "Caption|*.a;*.b" in the form the file dialogs take: "Caption (*.a *.b)".
QString QtFileFilter(const QString &filter);
// True when bytes cannot be a text file (they hold NUL characters).
bool LooksBinary(const QByteArray &bytes);

// The text of a plain file as the box shows it: decoded, line breaks as "\n", without
// the one line break a save puts at the end.
QString PlainTextOfFile(const QByteArray &bytes);
// The bytes a save writes for the box's plain text: text, then one line break; every
// line break is CR LF, whatever the file had when it was read.
QByteArray PlainFileBytes(const QString &text);

// Writes the box's text to path, as rich text or as plain text, atomically. Returns ""
// or the reason it failed. The document's name and changed flag are left alone.
QString WriteReaderDocument(const QString &path, bool rich);

// The menu entries and buttons.
void mnuFileLoad_Click();
void mnuFileSave_Click();
void mnuFileSaveAs_Click();
void mnuFilePageSetup_Click();
void mnuFilePrint_Click();
void cmdClear_Click();
void cmdPaste_Click();
// The box's text changed: dirty when it holds a file.
void txtSpeech_Change();

// Puts the text of a word-processor file into the box. False, with *error, when it could
// not be read; the box is left as it was.
bool LoadWordDoc(const QString &path, QString *error);

// Prints the whole text after asking (the macro statements' way to print).
void PrintFile();

// Loads a file into the box for the macro statements, saving unsaved changes of the
// current file first. Returns "" on success, else the message (to which the statement
// adds its own " for [...] statement"): "Cannot load DOC file, MS Word not installed."
// or "Error loading file " and the name.
QString LoadFile2Reader(const QString &name);

} // namespace reader
