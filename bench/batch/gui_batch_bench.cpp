// The window's batch conversion (frmMP3Files's logic) on the real engine and encoder,
// timed by bench/batch/batch_bench.sh: converts the documents named on the command line
// at the quality of 128 kbps, as the window would with no user acting meanwhile, with the
// program's helper process (the sonamark-cli named first) reading every other document.
// Usage: gui_batch_bench SONAMARK_CLI DOCUMENT...
#include "audio/batch_conversion.h"
#include "audio/process_batch_helper.h"
#include "platform/espeak/espeak_engine.h"
#include "platform/services.h"
#include "reader/exceptions.h"
#include "search/find_files.h"
#include "shell/app_state.h"
#include "shell/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>

namespace {

struct QuietView : audio::BatchView {
    int quality = -1, bitRate = -1;
    QString encode = QLatin1String(audio::kBatchEncodeCaption);
    void setCaption(const QString &) override {}
    void fillFiles(const QStringList &) override {}
    void setFilesText(const QString &) override {}
    void fillQualities(const QStringList &) override {}
    void fillBitRates(const QStringList &) override {}
    int qualityIndex() const override { return quality; }
    void setQualityIndex(int row) override { quality = row; }
    int bitRateIndex() const override { return bitRate; }
    void setBitRateIndex(int row) override { bitRate = row; }
    QString encodeCaption() const override { return encode; }
    void setEncodeCaption(const QString &c) override { encode = c; }
    void setProgress(int) override {}
    void doEvents() override { QCoreApplication::processEvents(); }
    void unload() override {}
    void showFileFinder() override {}
    int voiceRow() override { return -1; }
};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    platform::espeak::EspeakEngine engine;
    if (!engine.ok())
        return 1;
    const QStringList args = app.arguments();
    if (args.size() < 3) {
        std::fprintf(stderr, "usage: gui_batch_bench SONAMARK_CLI DOCUMENT...\n");
        return 2;
    }
    audio::ProcessBatchHelper helper(args.at(1));
    platform::Services services;
    services.speech = &engine;
    services.batchHelper = &helper;
    platform::install(services);
    shell::app().AppFolder = QDir::tempPath() + QLatin1Char('/');
    shell::settings().PitchOpt = QStringLiteral("0");
    shell::settings().Mp3QualityOpt = QStringLiteral("3");
    reader::exceptionsState().ExceptionsOn = false;
    search::findFilesState().select(args.mid(2), {});
    QuietView view;
    audio::BatchConversion batch(view);
    batch.Form_Load();
    view.setBitRateIndex(audio::Mp3Qualities()[3].bitRateRow);
    batch.cmdEncode_Click();
    platform::install({});
    return 0;
}
