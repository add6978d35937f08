#include "cli/speech_commands.h"

#include "cli/batch_command.h"
#include "cli/to_file_command.h"
#include "platform/espeak/espeak_engine.h"
#include "reader/speech.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>

namespace cli {

namespace {

constexpr int kUsageError = 2;

QStringList ListedVoices(platform::SpeechEngine &engine, QList<int> *engineIndex)
{
    QStringList rows;
    const QStringList all = engine.voices();
    for (int n = 0; n < all.size(); ++n) {
        if (const auto name = reader::ListedVoiceName(all.at(n))) {
            rows << *name;
            if (engineIndex)
                *engineIndex << n;
        }
    }
    return rows;
}

int Speak(const QStringList &args, platform::espeak::EspeakEngine &engine, QTextStream &err)
{
    QString voice, text, pitch = QStringLiteral("0");
    int rate = 0, volume = 100;
    bool haveText = false;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        const bool hasValue = i + 1 < args.size();
        if (a == QLatin1String("--voice") && hasValue)
            voice = args.at(++i);
        else if (a == QLatin1String("--rate") && hasValue)
            rate = args.at(++i).toInt();
        else if (a == QLatin1String("--volume") && hasValue)
            volume = args.at(++i).toInt();
        else if (a == QLatin1String("--pitch") && hasValue)
            pitch = args.at(++i).trimmed();
        else if (!haveText) {
            haveText = true;
            if (a == QLatin1String("-")) {
                QFile in;
                in.open(stdin, QIODevice::ReadOnly);
                text = QString::fromUtf8(in.readAll());
            } else {
                text = a;
            }
        } else {
            err << "speak: unexpected argument " << a << "\n";
            return kUsageError;
        }
    }
    if (!haveText) {
        err << "usage: sonamark-cli speak [--voice V] [--rate R] [--volume N] [--pitch P] TEXT|-\n";
        return kUsageError;
    }
    QList<int> engineIndex;
    const QStringList rows = ListedVoices(engine, &engineIndex);
    if (!voice.isEmpty()) {
        const qsizetype row = rows.indexOf(voice);
        if (row < 0) {
            err << "speak: no voice named " << voice << "\n";
            return kUsageError;
        }
        engine.setVoice(engineIndex.at(row));
    }
    engine.setRate(rate);
    engine.setVolume(volume);
    if (text.isEmpty())
        return 0;
    if (pitch != QLatin1String("0") && !text.toLower().contains(QLatin1String("<xml version")))
        text = reader::PitchWrapped(text, pitch);
    QEventLoop loop;
    engine.onEndStream = [&loop] { loop.quit(); };
    engine.speak(text, platform::kSpeakAsyncXml);
    loop.exec();
    return 0;
}

} // namespace

bool IsSpeechCommand(const QStringList &args)
{
    return !args.isEmpty()
        && (args.first() == QLatin1String("voices") || args.first() == QLatin1String("speak")
            || args.first() == QLatin1String(kToFileCommand) || args.first() == QLatin1String(kBatchCommand));
}

int RunSpeechCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    const bool batchWorker = args.size() > 1 && args.at(1) == QLatin1String(kBatchWorkerFlag);
    if (args.first() == QLatin1String(kBatchCommand) && !batchWorker)
        return RunBatch(args.mid(1), out, err);  // the workers speak; the parent does not
    platform::espeak::EspeakEngine engine;
    if (!engine.ok()) {
        err << "The speech engine (espeak-ng) could not be started.\n";
        return 1;
    }
    if (args.first() == QLatin1String("voices")) {
        for (const QString &row : ListedVoices(engine, nullptr))
            out << row << "\n";
        return 0;
    }
    if (args.first() == QLatin1String(kToFileCommand))
        return RunToFile(args.mid(1), engine, out, err);
    if (batchWorker)
        return RunBatchWorker(args.mid(1), engine, out, err);
    return Speak(args.mid(1), engine, err);
}

} // namespace cli
