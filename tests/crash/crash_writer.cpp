// Writes every data file of the program through its own save routine, over and over,
// alternating between two versions, until it is killed. With --once N it writes
// version N (0 or 1) of each file once and exits, so the test learns both versions.
#include "hotkeys/file_history.h"
#include "hotkeys/hotkeys_file.h"
#include "hotkeys/hotkeys_table.h"
#include "reader/exceptions.h"
#include "search/folder_history.h"
#include "shell/app_state.h"
#include "shell/file_util.h"
#include "shell/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QStringList>

namespace {

constexpr int kHistoryFolders = 220;

void writeVersion(const QString &folder, int version)
{
    const QString n = QString::number(version);
    shell::Settings &s = shell::settings();
    s = shell::Settings();
    s.FontSizeOpt = version ? QStringLiteral("14") : QStringLiteral("12");
    s.VoiceOpt = QStringLiteral("Voice ") + n;
    s.RateOpt = s.PitchOpt = QStringLiteral("0");
    s.VolumeOpt = QStringLiteral("100");
    s.Mp3QualityOpt = QStringLiteral("1");
    s.HotkeysEnabledOpt = n;
    s.HotkeysFileOpt = folder + QStringLiteral("Hotkeys.txt");
    shell::WriteFileOpts();

    hotkeys::HotkeyTable &t = hotkeys::table();
    t.reset();
    t.HotkeysFileName = s.HotkeysFileOpt;
    t.HotkeyCount = 2 + version * 40;
    for (int i = 1; i <= t.HotkeyCount; ++i) {
        hotkeys::Hotkey &h = t.at(i);
        h.Active = true;
        h.Keys = QStringLiteral("^%") + QChar(u'a' + i % 26);
        h.Description = QStringLiteral("Macro %1 v%2").arg(i).arg(n);
        h.Code = QStringLiteral("[VAR X=%1]\r\n[SENDKEYS \"text\"]\r\n").arg(i).repeated(20);
    }
    hotkeys::UpdateHotkeyWordsFile();

    hotkeys::WriteFileHistory({folder + QStringLiteral("a") + n + QStringLiteral(".txt"),
                               folder + QStringLiteral("b.txt")});

    reader::ExceptionsState &e = reader::exceptionsState();
    e.reset();
    for (int i = 0; i < 50 + version * 200; ++i)
        e.Exceptions << reader::ExceptionRec{QStringLiteral("word%1").arg(i), QStringLiteral("change") + n};
    reader::Save2ExceptionFile();

    // The folder history as the file finder saves it: read, folders added, written.
    search::FolderHistory history;
    history.PopulateHistory(folder);
    history.Clear();
    for (int i = 0; i < (version ? kHistoryFolders : 20); ++i)
        history.AddHistory(folder + QStringLiteral("f%1").arg(i));
    history.SaveHistory2File();

    // A document as the reader saves it; large, so that a kill can land mid-write.
    shell::WriteFileAtomically(folder + QStringLiteral("document.txt"),
                               QByteArray(version ? 400000 : 100000, version ? 'b' : 'a'));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2)
        return 2;
    QString folder = args.at(1);
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    shell::app().AppFolder = folder;
    // The folder history keeps only folders that exist.
    for (int i = 0; i < kHistoryFolders; ++i)
        QDir().mkpath(folder + QStringLiteral("f%1").arg(i));
    if (args.size() == 4 && args.at(2) == QLatin1String("--once")) {
        writeVersion(folder, args.at(3).toInt());
        return 0;
    }
    for (int version = 0;; version ^= 1)
        writeVersion(folder, version);
}
