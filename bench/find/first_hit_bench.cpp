// The file finder's window on a big tree: the time from Search to the first row in
// lstFoundFiles (goal < 100 ms), and to the end of the search. The tree is the one of
// bench/find/make_tree.py, named by SONAMARK_FIND_TREE (find_bench.sh sets it).
#include "search/find_files.h"
#include "shell/app_state.h"
#include "ui/frm_find_files.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>

namespace {

void BM_FirstHit(benchmark::State &state, bool toTheEnd)
{
    const QString tree = qEnvironmentVariable("SONAMARK_FIND_TREE");
    if (tree.isEmpty()) {
        state.SkipWithError("SONAMARK_FIND_TREE is not set (run bench/find/find_bench.sh)");
        return;
    }
    QTemporaryDir data;
    shell::app().reset();
    shell::app().AppFolder = data.path() + QLatin1Char('/');
    for (auto _ : state) {
        search::findFilesState().reset();
        search::findFilesState().LastFolder = tree;
        ui::frmFindFiles window;
        window.txtSearchSpec->setText(QStringLiteral("*.txt"));
        window.show();
        QEventLoop loop;
        if (toTheEnd)
            QObject::connect(&window, &ui::frmFindFiles::searchEnded, &loop, &QEventLoop::quit);
        else
            QObject::connect(window.lstFoundFiles->model(), &QAbstractItemModel::rowsInserted, &loop,
                             &QEventLoop::quit);
        QTimer::singleShot(60000, &loop, &QEventLoop::quit);
        QElapsedTimer clock;
        clock.start();
        window.cmdSearch->click();
        loop.exec();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        state.counters["rows"] = window.lstFoundFiles->count();
        window.cmdExit_Click();  // cancel what is left
        QEventLoop end;
        QObject::connect(&window, &ui::frmFindFiles::searchEnded, &end, &QEventLoop::quit);
        if (window.searching())
            end.exec();
    }
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::RegisterBenchmark("FindFiles/SearchToFirstRow", BM_FirstHit, false)
        ->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
    benchmark::RegisterBenchmark("FindFiles/SearchToTheEnd", BM_FirstHit, true)
        ->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
