// [GETCLIP Var], [SETCLIP String], [LOADCLIP File], [SAVECLIP File],
// [GETMULTICLIP n Var], [SETMULTICLIP n String]: the clipboard and the clip store.
#include "engine/reader_statements.h"

#include "engine/file_statements.h"
#include "engine/operands.h"
#include "engine/run_state.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "reader/borrowed_document.h"
#include "reader/clip_store.h"
#include "reader/documents.h"
#include "reader/text_box.h"
#include "shell/file_util.h"
#include "shell/legacy_text.h"

#include <QFileInfo>
#include <QLoggingCategory>

namespace engine {

namespace {

Q_LOGGING_CATEGORY(lcClipStatements, "sonamark.engine.clip", QtWarningMsg)

const QString kLoadClipFrame = QStringLiteral(" for [LOADCLIP File] statement");
const QString kSaveClipFrame = QStringLiteral(" for [SAVECLIP File] statement");
const QString kGetMultiClipFrame = QStringLiteral(" for [GETMULTICLIP n Var] statement");
const QString kSetMultiClipFrame = QStringLiteral(" for [SETMULTICLIP n String] statement");

QString noClipboard(const QString &statement)
{
    return QStringLiteral("There is no clipboard without a display for ") + statement + QStringLiteral(" statement");
}

// The last four characters of a name, upper-cased, name a picture.
bool isPictureName(const QString &name)
{
    const QString tail = name.right(4).toUpper();
    return tail == QLatin1String(".GIF") || tail == QLatin1String(".BMP") || tail == QLatin1String(".JPG")
           || tail == QLatin1String("JPEG") || tail == QLatin1String("TIFF");
}

// The operand words of the line, between the first blank and the bracket.
QStringList words(int line)
{
    return OperandText(runState().action(line).Text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// A clip number 1 to 5, written or in a number variable; 0 when it is neither.
int clipNumberOf(const QString &word)
{
    const int n = FileIdOf(word);
    return n >= 1 && n <= reader::kMaxClips ? n : 0;
}

} // namespace

QString DoGETCLIP(int line)
{
    const QStringList w = words(line);
    // SetGETCLIPVar: the variable named, made as a string when it is new.
    const QString name = w.size() == 1 ? w.first() : QString();
    if (name.isEmpty() || !macro::AllLetters(name, QString()).isEmpty())
        return QStringLiteral("Invalid variable name for [GETCLIP Var] statement");
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard)
        return noClipboard(QStringLiteral("[GETCLIP Var]"));
    macro::SetVarVal(name, clipboard->text());
    return {};
}

QString DoSETCLIP(int line)
{
    QString text;
    if (!GetFName(line, text))
        return QStringLiteral("Invalid string for [SETCLIP String] statement");
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard)
        return noClipboard(QStringLiteral("[SETCLIP String]"));
    clipboard->clear();
    if (!text.isEmpty()) {
        macro::RestoreQuotes(text);
        clipboard->setText(text);
    }
    DoEvents();
    return {};
}

QString DoLOADCLIP(int line)
{
    QString name;
    if (!GetFName(line, name) || name.trimmed().isEmpty())
        return QStringLiteral("Invalid filename") + kLoadClipFrame;
    if (!QFileInfo(name).isFile())
        return QStringLiteral("File not found") + kLoadClipFrame;
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard)
        return noClipboard(QStringLiteral("[LOADCLIP File]"));
    if (isPictureName(name)) {
        if (!clipboard->setPictureFromFile(name))
            return QStringLiteral("Error loading image file to clipboard") + kLoadClipFrame;
        return {};
    }
    // The document goes through the reader, as File Open reads it, and the user's own
    // document comes back afterwards.
    const reader::BorrowedDocument borrowed;
    const QString message = reader::LoadFile2Reader(name);
    if (!message.isEmpty())
        return message + kLoadClipFrame;
    clipboard->setText(reader::textBox()->text());
    return {};
}

QString DoSAVECLIP(int line)
{
    QString name;
    if (!GetFName(line, name) || name.trimmed().isEmpty())
        return QStringLiteral("Invalid filename") + kSaveClipFrame;
    if (!FolderOfPathExists(name) || QFileInfo(name).isDir())
        return QStringLiteral("Folder not found") + kSaveClipFrame;
    platform::Clipboard *clipboard = platform::services().clipboard;
    if (!clipboard)
        return noClipboard(QStringLiteral("[SAVECLIP File]"));
    if (isPictureName(name)) {
        // SaveClipboard2ImageFile
        QString error;
        if (!clipboard->savePictureToFile(name, &error)) {
            qCWarning(lcClipStatements) << "cannot save the picture to" << name << ":" << error;
            return QStringLiteral("Error saving clipboard image to file") + kSaveClipFrame;
        }
        return {};
    }
    const QString text = clipboard->text();
    if (text.isEmpty())
        return QStringLiteral("No text in the clipboard") + kSaveClipFrame;
    const QString error = shell::WriteFileAtomically(name, reader::PlainFileBytes(text));
    if (error.isEmpty())
        return {};
    qCWarning(lcClipStatements) << "cannot save the clipboard to" << name << ":" << error;
    return QStringLiteral("Error saving file ") + name + kSaveClipFrame;
}

QString DoGETMULTICLIP(int line)
{
    const QStringList w = words(line);
    const QString name = w.size() == 2 ? w.at(1) : QString();
    if (name.isEmpty() || !macro::AllLetters(name, QString()).isEmpty())
        return QStringLiteral("Invalid variable name for [SETCLIP String] statement");
    const int n = clipNumberOf(w.first());
    if (n == 0)
        return QStringLiteral("Invalid clip number (1-5)") + kGetMultiClipFrame;
    const reader::ClipStoreState &store = reader::clipStore();
    macro::SetVarVal(name, n <= store.ClipCount ? store.ClipStore[size_t(n - 1)] : QString());
    return {};
}

QString DoSETMULTICLIP(int line)
{
    // SetSETMULTICLIPVar: the slot, then a quoted literal or a variable.
    const QString operands = OperandText(runState().action(line).Text).trimmed();
    const qsizetype blank = operands.indexOf(QLatin1Char(' '));
    if (blank < 0)
        return QStringLiteral("Invalid format") + kSetMultiClipFrame;
    const int n = clipNumberOf(operands.left(blank));
    if (n == 0)
        return QStringLiteral("Invalid clip number (1-5)") + kSetMultiClipFrame;
    QString text;
    if (!StringOperand(operands.mid(blank + 1).trimmed(), text))
        return QStringLiteral("Variable not found") + kSetMultiClipFrame;
    macro::RestoreQuotes(text);
    reader::ClipStoreState &store = reader::clipStore();
    store.ClipStore[size_t(n - 1)] = text;
    store.ClipCount = qMax(store.ClipCount, n);
    reader::RefreshClips();
    return {};
}

} // namespace engine
