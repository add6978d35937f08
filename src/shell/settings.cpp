#include "shell/settings.h"

#include "shell/app_state.h"
#include "shell/file_util.h"
#include "shell/legacy_text.h"
#include "shell/on_top_message.h"
#include "shell/failure_report.h"

#include <QFile>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSettings, "sonamark.settings", QtWarningMsg)

namespace shell {

namespace {

constexpr int kFieldCount = 8;
// Eight short fields; anything far larger is not an options file and is not read.
constexpr qint64 kMaxFileSize = 64 * 1024;
const char *const kReadError = "Error reading options file, using default values.";
const char *const kWriteError = "Error writing to options file, settings not saved.";

QString optionsPath() { return app().AppFolder + QLatin1String(kOptionsFileName); }

// One quoted field per line, as a sequential comma-and-quote writer produces it.
// Returns false when the line holds no field.
bool parseField(const QString &rawLine, QString &field)
{
    const QString line = rawLine.trimmed();
    if (line.isEmpty())
        return false;
    if (line.startsWith(QLatin1Char('"'))) {
        const qsizetype close = line.indexOf(QLatin1Char('"'), 1);
        field = close < 0 ? line.mid(1) : line.mid(1, close - 1);
    } else {
        const qsizetype comma = line.indexOf(QLatin1Char(','));
        field = (comma < 0 ? line : line.left(comma)).trimmed();
    }
    return true;
}

bool inRange(const QString &value, double low, double high)
{
    const double v = Val(value);
    return v >= low && v <= high;
}

void markDirty() { app().OptionsDirty = true; }

// Applies the validation rule of field i (0-based) to its value.
void validate(int i, Settings &s)
{
    switch (i) {
    case 0:
        // Deliberately weak: every number is >= 6 or <= 72, so no size is ever replaced.
        if (!(Val(s.FontSizeOpt) >= 6 || Val(s.FontSizeOpt) <= 72)) {
            s.FontSizeOpt = QStringLiteral("12");
            markDirty();
        }
        break;
    case 1:
        if (s.VoiceOpt.isEmpty())
            s.VoiceOpt = QStringLiteral("Mary");  // not a change worth saving
        break;
    case 2:
        if (!inRange(s.RateOpt, -10, 10)) {
            s.RateOpt = QStringLiteral("0");
            markDirty();
        }
        break;
    case 3:
        if (!inRange(s.VolumeOpt, 1, 100)) {
            s.VolumeOpt = QStringLiteral("100");
            markDirty();
        }
        break;
    case 4:
        if (!inRange(s.PitchOpt, -10, 10)) {
            s.PitchOpt = QStringLiteral("0");
            markDirty();
        }
        break;
    case 5:
        if (Val(s.Mp3QualityOpt) < -30) {
            s.Mp3QualityOpt = QStringLiteral("-13");
            markDirty();
        } else if (Val(s.Mp3QualityOpt) > 3) {
            s.Mp3QualityOpt = QStringLiteral("1");
            markDirty();
        }
        break;
    case 6:
        if (s.HotkeysEnabledOpt != QLatin1String("1") && s.HotkeysEnabledOpt != QLatin1String("0")) {
            s.HotkeysEnabledOpt = QStringLiteral("0");
            markDirty();
        }
        break;
    case 7:
        if (s.HotkeysFileOpt.isEmpty()) {
            s.HotkeysFileOpt = app().AppFolder + QStringLiteral("Hotkeys.txt");
            markDirty();
        } else if (!s.HotkeysFileOpt.startsWith(QLatin1Char('/'))) {
            s.HotkeysFileOpt = app().AppFolder + s.HotkeysFileOpt;
            markDirty();
        }
        break;
    }
}

QString *fieldAt(Settings &s, int i)
{
    QString *fields[kFieldCount] = {&s.FontSizeOpt, &s.VoiceOpt, &s.RateOpt, &s.VolumeOpt,
                                    &s.PitchOpt, &s.Mp3QualityOpt, &s.HotkeysEnabledOpt,
                                    &s.HotkeysFileOpt};
    return fields[i];
}

} // namespace

Settings &settings()
{
    static Settings s;
    return s;
}

double Val(const QString &text)
{
    // The longest prefix that reads as a number, after leading blanks.
    const QString t = text.trimmed();
    qsizetype i = 0;
    if (i < t.size() && (t[i] == QLatin1Char('-') || t[i] == QLatin1Char('+')))
        ++i;
    bool digits = false;
    while (i < t.size() && t[i].isDigit()) { ++i; digits = true; }
    if (i < t.size() && t[i] == QLatin1Char('.')) {
        ++i;
        while (i < t.size() && t[i].isDigit()) { ++i; digits = true; }
    }
    if (!digits)
        return 0;
    return t.left(i).toDouble();
}

namespace {
Settings defaultSettings()
{
    Settings s;
    s.FontSizeOpt = QStringLiteral("12");
    s.VoiceOpt = QStringLiteral("Mary");
    s.RateOpt = QStringLiteral("0");
    s.VolumeOpt = QStringLiteral("100");
    s.PitchOpt = QStringLiteral("0");
    s.Mp3QualityOpt = QStringLiteral("1");
    s.HotkeysEnabledOpt = QStringLiteral("0");
    s.HotkeysFileOpt = app().AppFolder + QStringLiteral("Hotkeys.txt");
    return s;
}
} // namespace

void SetDef()
{
    settings() = defaultSettings();
    WriteFileOpts();
}

void WriteFileOpts()
{
    Settings &s = settings();
    QByteArray data;
    for (int i = 0; i < kFieldCount; ++i)
        data += '"' + fieldAt(s, i)->toUtf8() + "\"\r\n";
    const QString error = WriteFileAtomically(optionsPath(), data);
    if (!error.isEmpty()) {
        qCWarning(lcSettings) << "writing" << optionsPath() << "failed:" << error;
        MsgBoxOT(QLatin1String(kWriteError), 0, QStringLiteral("File Error"));
        return;
    }
    app().OptionsDirty = false;
}

void GetOptions()
{
    shell::Routine routine("(Module) modMain::Sub GetOptions");
    const QString path = optionsPath();
    if (!FileExists(path)) {
        SetDef();
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileSize) {
        // The file is left as it is: the program runs on defaults and writes the file
        // again only when the user saves a change.
        qCWarning(lcSettings) << "cannot read" << path << file.errorString();
        MsgBoxOT(QLatin1String(kReadError), 0, QStringLiteral("File Error"));
        settings() = defaultSettings();
        return;
    }
    const QStringList lines = DecodeLegacyText(file.readAll()).split(QLatin1Char('\n'));
    file.close();

    // The first field, found as the field reader finds it: behind any empty lines.
    QString first;
    for (const QString &line : lines)
        if (parseField(line, first))
            break;
    if (first == QLatin1String("SETUP")) {
        QFile::remove(path);
        SetDef();
        return;
    }

    Settings &s = settings();
    int line = 0;
    for (int i = 0; i < kFieldCount; ++i) {
        QString value;
        // Skip lines that hold no field, as a field reader skips empty records.
        bool found = false;
        while (line < lines.size() && !(found = parseField(lines.at(line), value)))
            ++line;
        if (!found) {
            // A file too short: what was read stands, the rest keeps its defaults. The
            // file is not marked for saving, so nothing rewrites it behind the user's back.
            MsgBoxOT(QLatin1String(kReadError), 0, QStringLiteral("File Error"));
            Settings defaults = defaultSettings();
            for (int j = i; j < kFieldCount; ++j)
                *fieldAt(s, j) = *fieldAt(defaults, j);
            return;
        }
        ++line;
        *fieldAt(s, i) = value;
        validate(i, s);
    }
}

} // namespace shell
