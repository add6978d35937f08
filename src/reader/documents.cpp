#include "reader/documents.h"

#include "shell/legacy_text.h"
#include "platform/services.h"
#include "reader/count_words.h"
#include "reader/exceptions.h"
#include "reader/rtf_reader.h"
#include "reader/rtf_writer.h"
#include "reader/speech.h"
#include "reader/text_box.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/failure_report.h"
#include "shell/file_util.h"
#include "shell/on_top_message.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>

Q_LOGGING_CATEGORY(lcDocuments, "sonamark.reader.documents", QtWarningMsg)

namespace reader {

namespace {

const char *const kOpenFilter = "Text & XML Files (*.txt;*.rtf;*.xml;*.doc)|*.txt;*.rtf;*.xml;*.doc";
const char *const kSaveFilter = "Text & XML Files (*.txt;*.rtf;*.xml)|*.txt;*.rtf;*.xml";
const char *const kWordMissing = "Cannot load DOC file, MS Word not installed.";
const char *const kSaveChanges = "Save changes to current file?";
// Ends the message of a damaged rich text file that was loaded as far as it goes.
const char *const kPartialHint = " What could be read is in the text box; save it under another name to keep it.";
// The text form of the boolean true, which CurrentFile takes while Open asks for a file.
const char *const kTrueText = "True";

QString boxText()
{
    TextBox *box = textBox();
    return box ? box->text() : QString();
}

void setCaption(const QString &currentFile)
{
    if (TextBox *box = textBox())
        box->setCaption(DocumentCaption(currentFile));
}

// The state before a new document comes in: no file, not dirty, plain caption.
void forgetFile()
{
    shell::AppState &app = shell::app();
    app.CurrentFile.clear();
    app.TextDirty = false;
    setCaption(QString());
    Reset_txtSpeech();
}

bool askYes(const QString &text, const QString &title)
{
    shell::MsgBoxOT(text, 1, title);
    return shell::app().MsgResult == shell::MsgYes;
}

// Reads a .txt, .xml or .rtf file into the box. False with *error when nothing could be
// loaded; *partial is set when a damaged rich text file was loaded as far as it goes.
bool loadTextFile(const QString &path, QString *error, bool *partial)
{
    *partial = false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        *error = file.errorString();
        return false;
    }
    TextBox *box = textBox();
    if (IsRichTextFile(path)) {
        QString rtfError;
        const RichDocument document = ReadRtf(bytes, &rtfError);
        if (rtfError == QLatin1String(kRtfNotRtfMessage)) {
            *error = rtfError;
            return false;
        }
        box->loadRichDocument(document);
        if (!rtfError.isEmpty()) {
            *error = rtfError;
            *partial = true;
        }
        return true;
    }
    if (LooksBinary(bytes)) {
        *error = QStringLiteral("The file does not hold text.");
        return false;
    }
    box->loadPlainText(PlainTextOfFile(bytes));
    return true;
}

// Loads path into the box after the state has been cleared, and sets CurrentFile.
// Returns "" or the reason it failed; a damaged rich text file is loaded as far as it
// goes but not made the current file, so that a save cannot overwrite the original.
QString loadDocument(const QString &path)
{
    QString error;
    if (IsWordFile(path)) {
        if (!LoadWordDoc(path, &error))
            return error;
        exceptionsState().ExceptionsMade = false;
        shell::app().CurrentFile = WordTextSibling(path);
        return {};
    }
    bool partial = false;
    if (!loadTextFile(path, &error, &partial))
        return error;
    // The new text holds no rewrites to undo.
    exceptionsState().ExceptionsMade = false;
    if (partial)
        return error + QLatin1String(kPartialHint);
    shell::app().CurrentFile = path;
    return {};
}

bool wordReaderInstalled()
{
    platform::WordFiles *word = platform::services().wordFiles;
    return word && word->installed();
}

// Writes the box to path as its name says (rich or plain). Returns "" or the error.
QString writeDocument(const QString &path)
{
    return WriteReaderDocument(path, IsRichTextFile(path));
}

// Failures of the file system and the printer go to the failure report under the
// routine's name; the description says what could not be done and why.
constexpr int kFileAccessError = 75;  // "Path/File access error"
constexpr int kPrinterError = 482;

void showSaveFailure(const char *routine, const QString &path, const QString &error)
{
    qCWarning(lcDocuments) << "cannot save" << path << error;
    shell::ErrorHandler(QLatin1String(routine),
                        QStringLiteral("The file could not be saved to ") + path + QStringLiteral(": ") + error,
                        kFileAccessError);
}

void print(const char *routine, bool selectionOnly)
{
    const PrintOutcome outcome = textBox()->printText(selectionOnly);
    if (outcome.kind == PrintOutcome::Failed)
        shell::ErrorHandler(QLatin1String(routine), QStringLiteral("The text could not be printed: ") + outcome.error,
                            kPrinterError);
}

} // namespace

QString DocumentCaption(const QString &currentFile)
{
    if (currentFile.isEmpty())
        return QLatin1String(kNoFileCaption);
    return QStringLiteral("Sonamark - ") + shell::CondensedPath(currentFile, kCaptionPathWidth);
}

bool IsRichTextFile(const QString &path) { return path.right(3).toUpper() == QLatin1String("RTF"); }

bool IsWordFile(const QString &path) { return path.right(4).toLower() == QLatin1String(".doc"); }

QString WordTextSibling(const QString &path) { return path.left(path.size() - 3) + QStringLiteral("txt"); }

QString QtFileFilter(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString caption = parts.at(i);
        // The caption may name the patterns itself; the dialog adds them.
        caption.remove(QRegularExpression(QStringLiteral(R"(\s*\([^)]*\)\s*$)")));
        out << caption + QStringLiteral(" (") + parts.at(i + 1).split(QLatin1Char(';')).join(QLatin1Char(' '))
                   + QLatin1Char(')');
    }
    return out.join(QStringLiteral(";;"));
}

QString WriteReaderDocument(const QString &path, bool rich)
{
    TextBox *box = textBox();
    if (!box)
        return QStringLiteral("There is no text box.");
    const QByteArray bytes = rich ? WriteRtf(box->richDocument()) + "\r\n" : PlainFileBytes(box->text());
    return shell::WriteFileAtomically(path, bytes);
}

bool LooksBinary(const QByteArray &bytes) { return bytes.contains('\0'); }

QString PlainTextOfFile(const QByteArray &bytes)
{
    QString text = shell::DecodeLegacyText(bytes);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text;
}

QByteArray PlainFileBytes(const QString &text)
{
    QString out = text + QLatin1Char('\n');
    out.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
    return shell::EncodeText(out);
}

void mnuFileLoad_Click()
{
    shell::AppState &app = shell::app();
    TextBox *box = textBox();
    if (!box)
        return;
    if (!app.CurrentFile.isEmpty() && app.TextDirty) {
        if (askYes(QLatin1String(kSaveChanges), QStringLiteral("Save")))
            mnuFileSave_Click();
        app.CurrentFile = QLatin1String(kTrueText);
    }
    const std::optional<QString> chosen = box->showOpen(QStringLiteral("Open a Text File"), QLatin1String(kOpenFilter));
    if (!chosen)
        return;
    const QString path = *chosen;
    if (path.trimmed().isEmpty() || !QFileInfo::exists(path))
        return;
    if (IsWordFile(path) && !wordReaderInstalled()) {
        shell::MsgBoxOT(QLatin1String(kWordMissing), 0, QStringLiteral("MS Word Missing"));
        return;
    }
    forgetFile();
    const QString error = loadDocument(path);
    app.TextDirty = false;
    setCaption(app.CurrentFile);
    if (error.endsWith(QLatin1String(kPartialHint))) {
        // Not a failure: the user is told what became of the file.
        shell::MsgBoxOT(QStringLiteral("The file ") + path + QStringLiteral(" is damaged.\r\n") + error, 0,
                        QStringLiteral("Open File"));
    } else if (!error.isEmpty()) {
        qCWarning(lcDocuments) << "cannot open" << path << error;
        shell::ErrorHandler(QStringLiteral("(Form) frmSonamark::Sub mnuFileLoad_Click"),
                            QStringLiteral("The file ") + path + QStringLiteral(" could not be opened: ") + error,
                            kFileAccessError);
    }
}

bool LoadWordDoc(const QString &path, QString *error)
{
    if (path.trimmed().isEmpty() || !QFileInfo::exists(path) || !IsWordFile(path)) {
        *error = QStringLiteral("The file is not a Word document.");
        return false;
    }
    platform::WordFiles *word = platform::services().wordFiles;
    if (!word || !word->installed()) {
        *error = QLatin1String(kWordMissing);
        return false;
    }
    QString text;
    if (!word->readText(path, &text, error))
        return false;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    while (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    if (!text.isEmpty())
        textBox()->loadPlainText(text);
    return true;
}

void mnuFileSave_Click()
{
    shell::AppState &app = shell::app();
    if (!textBox())
        return;
    if (boxText().trimmed().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No text to save."), 0, QStringLiteral("No Text"));
        return;
    }
    if (app.CurrentFile.isEmpty()) {
        mnuFileSaveAs_Click();
        return;
    }
    if (!app.TextDirty)
        return;
    const QString error = writeDocument(app.CurrentFile);
    if (!error.isEmpty()) {
        showSaveFailure("(Form) frmSonamark::Sub mnuFileSave_Click", app.CurrentFile, error);
        return;
    }
    app.TextDirty = false;
}

void mnuFileSaveAs_Click()
{
    shell::AppState &app = shell::app();
    TextBox *box = textBox();
    if (!box)
        return;
    if (boxText().trimmed().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No text to save."), 0, QStringLiteral("No Text"));
        return;
    }
    const std::optional<QString> chosen = box->showSave(QStringLiteral("Save File"), QLatin1String(kSaveFilter));
    if (!chosen || chosen->isEmpty())
        return;
    const QString path = *chosen;
    if (QFileInfo::exists(path)
        && !askYes(QStringLiteral("This file already exists. Overwrite this file?"), QStringLiteral("Save File")))
        return;
    const QString error = writeDocument(path);
    if (!error.isEmpty()) {
        showSaveFailure("(Form) frmSonamark::Sub mnuFileSaveAs_Click", path, error);
        return;
    }
    shell::MsgBoxOT(QStringLiteral("File has been saved to ") + path, 0, QStringLiteral("File Saved"));
    app.CurrentFile = path;
    app.TextDirty = false;
    setCaption(path);
}

void mnuFilePageSetup_Click()
{
    if (TextBox *box = textBox())
        box->showPageSetup();
}

void mnuFilePrint_Click()
{
    TextBox *box = textBox();
    if (!box)
        return;
    if (box->text().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No text to print."), 0, QStringLiteral("Print"));
        return;
    }
    const QString title = QStringLiteral("Print Text");
    if (box->selLength() > 0) {
        shell::MsgBoxOT(QStringLiteral("Print selected text?"), 2, title);
        const int answer = shell::app().MsgResult;
        if (answer == shell::MsgYes) {
            print("(Form) frmSonamark::Sub mnuFilePrint_Click", true);
            return;
        }
        if (answer != shell::MsgNo)
            return;
    }
    if (askYes(QStringLiteral("Print all the text?"), title))
        print("(Form) frmSonamark::Sub mnuFilePrint_Click", false);
}

void PrintFile()
{
    TextBox *box = textBox();
    if (!box)
        return;
    const QString text = box->text();
    if (text.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No text in file to print."), 0, QStringLiteral("Print"));
        return;
    }
    if (askYes(QStringLiteral("Print all %1 words of text?").arg(CountWords(text)), QStringLiteral("Print Text")))
        print("(Module) modHotkeys::Sub PrintFile", false);
}

void cmdClear_Click()
{
    TextBox *box = textBox();
    if (!box)
        return;
    box->loadPlainText(QString());
    if (!shell::app().CurrentFile.isEmpty())
        shell::app().TextDirty = true;
    speechVars().ProgressPct = 0;
}

void cmdPaste_Click()
{
    platform::Clipboard *clipboard = platform::services().clipboard;
    TextBox *box = textBox();
    if (!clipboard || !box)
        return;
    const QString text = clipboard->text();
    if (text.isEmpty())
        return;
    if (shell::app().TextDirty && askYes(QLatin1String(kSaveChanges), QStringLiteral("Save")))
        mnuFileSave_Click();
    box->loadPlainText(text);
    Reset_txtSpeech();
}

void txtSpeech_Change()
{
    shell::AppState &app = shell::app();
    if (!app.CurrentFile.isEmpty())
        app.TextDirty = true;
}

QString LoadFile2Reader(const QString &name)
{
    shell::AppState &app = shell::app();
    const QString failed = QStringLiteral("Error loading file ") + name;
    if (!textBox() || name.trimmed().isEmpty() || !QFileInfo(name).isFile())
        return failed;
    if (IsWordFile(name) && !wordReaderInstalled())
        return QLatin1String(kWordMissing);
    // Unsaved changes of the current file are saved first, as File Save does.
    if (app.TextDirty && !app.CurrentFile.isEmpty())
        mnuFileSave_Click();
    forgetFile();
    const QString error = loadDocument(name);
    app.TextDirty = false;
    setCaption(app.CurrentFile);
    if (!error.isEmpty()) {
        qCWarning(lcDocuments) << "cannot load" << name << error;
        return failed;
    }
    return {};
}

} // namespace reader
