#include "hotkeys/hotkeys_file.h"

#include "hotkeys/field_io.h"
#include "hotkeys/hotkeys_table.h"
#include "shell/legacy_text.h"
#include "macro/macro_text.h"
#include "shell/file_util.h"
#include "shell/failure_report.h"

#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcHotkeys, "sonamark.hotkeys", QtWarningMsg)

namespace hotkeys {

namespace {

const char *const kNoFileDefined = "No Hotkeys file has been defined";
const char *const kFileMissing = "This Hotkeys file does not exist";
const char *const kNotHotkeysFile = "This is not a Hotkeys file";
const char *const kReadError = "Error reading Hotkeys file";
const char *const kOpenError = "Hotkeys file does not exist";
// 500 macros fit in far less; a larger file (or an endless device) is not read whole.
constexpr qint64 kMaxFileBytes = 64 * 1024 * 1024;
constexpr qint64 kReadStepBytes = 1024 * 1024;

// The editor keeps double quotes out of keys and names, but a hand-edited file can bring
// one in (in a field without quotes around it). Written as it stands it would end the
// field early and shift every record behind it, so it is written as an apostrophe.
QString unquoted(const QString &field)
{
    QString out = field;
    out.replace(QLatin1Char('"'), QLatin1Char('\''));
    return out;
}

QString failRead(HotkeyTable &t, const char *message)
{
    t.HotkeyCount = 0;
    t.HotkeysFileName.clear();
    return QLatin1String(message);
}

} // namespace

QString GetHotKeys()
{
    shell::Routine routine("(Module) modHotkeys::Function GetHotKeys");
    HotkeyTable &t = table();
    if (t.HotkeysFileName.trimmed().isEmpty()) {
        t.HotkeyCount = 0;
        return QLatin1String(kNoFileDefined);
    }
    if (!shell::FileExists(t.HotkeysFileName))
        return failRead(t, kFileMissing);

    QFile file(t.HotkeysFileName);
    if (!file.open(QIODevice::ReadOnly))
        return failRead(t, kOpenError);
    // Read in steps, so that neither a huge file nor an endless device is taken whole.
    QByteArray bytes;
    if (!file.isSequential() && file.size() <= kMaxFileBytes) {
        bytes = file.readAll();
    } else {
        while (bytes.size() <= kMaxFileBytes) {
            const QByteArray step = file.read(kReadStepBytes);
            if (step.isEmpty())
                break;
            bytes += step;
        }
    }
    if (file.error() != QFileDevice::NoError)
        return failRead(t, kReadError);
    if (bytes.size() > kMaxFileBytes) {
        qCWarning(lcHotkeys) << t.HotkeysFileName << "is larger than" << kMaxFileBytes << "bytes";
        return failRead(t, kReadError);
    }
    file.close();

    FieldReader reader(shell::DecodeLegacyText(bytes));
    QString header;
    if (!reader.readString(header))
        return failRead(t, kReadError);
    if (header != kHotkeysHeader)
        return QLatin1String(kNotHotkeysFile);

    int n = 1;
    while (!reader.atEnd() && n < kMaxHotkeys + 1) {
        Hotkey &h = t.Hotkeys[n - 1];
        if (!reader.readBoolean(h.Active) || !reader.readString(h.Keys)
            || !reader.readString(h.Description) || !reader.readString(h.Code)) {
            qCWarning(lcHotkeys) << "read error in record" << n << "of" << t.HotkeysFileName;
            return failRead(t, kReadError);
        }
        if (h.Keys.isEmpty())
            break;  // an empty key combination ends the file
        macro::RestoreQuotes(h.Code);
        ++n;
    }
    t.HotkeyCount = n - 1;
    return {};
}

QByteArray FormatHotkeysFile()
{
    const HotkeyTable &t = table();
    QString text = WriteStringField(kHotkeysHeader) + macro::kCrLf;
    for (int i = 0; i < t.HotkeyCount; ++i) {
        const Hotkey &h = t.Hotkeys[i];
        QString code = h.Code;
        macro::ReplaceQuotes(code);
        text += WriteBooleanField(h.Active) + QLatin1Char(',') + WriteStringField(unquoted(h.Keys))
                + QLatin1Char(',') + WriteStringField(unquoted(h.Description)) + QLatin1Char(',')
                + WriteStringField(code) + macro::kCrLf;
    }
    return shell::EncodeText(text);
}

bool UpdateHotkeyWordsFile()
{
    HotkeyTable &t = table();
    if (t.HotkeysFileName.isEmpty())
        return false;
    const QString error = shell::WriteFileAtomically(t.HotkeysFileName, FormatHotkeysFile());
    if (!error.isEmpty()) {
        qCWarning(lcHotkeys) << "cannot write" << t.HotkeysFileName << error;
        return false;
    }
    t.HotkeysDirty = false;
    return true;
}

} // namespace hotkeys
