// sonamark-help PAGE FIRSTRUN: shows the program's help pages. On a first run it offers
// to quit the program, answering "QuitMe" through the clipboard.
//
// The pages are the files help/NN.html among the shipped files (shell::SharedDataFolders:
// PREFIX/share/sonamark when installed, the program's own folder in the build tree,
// where the build generates them into bin/help).
#include "clipboard_hold.h"
#include "help_reference.h"
#include "shell/shipped_files.h"

#include <QApplication>
#include <QCheckBox>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>

namespace {

QStringList helpFolders()
{
    QStringList folders;
    for (const QString &shared : shell::SharedDataFolders())
        folders << shared + QStringLiteral("/help");
    return folders;
}

// Shows page (1-based) in the browser, scrolled to anchor when one is given.
void showPage(QTextBrowser *browser, int page, const QString &anchor = QString())
{
    const QStringList folders = helpFolders();
    bool found = false;
    const QString html = help::HelpPageHtml(page, folders, &found);
    if (!found)
        std::fprintf(stderr, "sonamark-help: %s not found in %s\n", qPrintable(help::HelpPageFileName(page)),
                     qPrintable(folders.join(QStringLiteral(", "))));
    browser->document()->setDefaultStyleSheet(help::HelpStyleSheet());
    browser->setSearchPaths(folders);
    browser->setHtml(html);
    if (!anchor.isEmpty())
        browser->scrollToAnchor(anchor);
}

// Page number of a link to another page ("11.html", "10.html#st-IF"), or 0.
int linkedPage(const QUrl &url)
{
    static const QRegularExpression pageFile(QStringLiteral("^(?:.*/)?(\\d\\d)\\.html$"));
    if (!url.scheme().isEmpty() && url.scheme() != QLatin1String("file"))
        return 0;
    const QRegularExpressionMatch m = pageFile.match(url.path());
    if (!m.hasMatch())
        return 0;
    const int page = m.captured(1).toInt();
    return page >= 1 && page <= help::HelpPageTitles().size() ? page : 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (RunAsClipboardHolder(argc, argv))
        return 0;
    QApplication app(argc, argv);
    const QStringList &titles = help::HelpPageTitles();
    const int pageCount = int(titles.size());
    const QStringList args = QApplication::arguments();
    int page = args.size() > 1 ? args.at(1).toInt() : 1;
    if (page < 1 || page > pageCount)
        page = 1;
    const bool firstRun = args.size() > 2 && args.at(2) == QLatin1String("1");

    QWidget window;
    window.setObjectName(QStringLiteral("frmHelp"));
    auto *list = new QListWidget;
    list->setObjectName(QStringLiteral("lstPages"));
    for (int i = 0; i < pageCount; ++i)
        list->addItem(QStringLiteral("%1) %2").arg(i + 1).arg(titles.at(i)));
    auto *browser = new QTextBrowser;
    browser->setObjectName(QStringLiteral("txtPage"));
    browser->setOpenLinks(false);
    QString pendingAnchor;
    QObject::connect(list, &QListWidget::currentRowChanged, browser, [&](int row) {
        if (row < 0)
            return;
        showPage(browser, row + 1, pendingAnchor);
        pendingAnchor.clear();
        window.setWindowTitle(QStringLiteral("Sonamark Help - %1) %2").arg(row + 1).arg(titles.at(row)));
    });
    QObject::connect(browser, &QTextBrowser::anchorClicked, browser, [&](const QUrl &url) {
        if (url.path().isEmpty() && url.hasFragment()) {
            browser->scrollToAnchor(url.fragment());
            return;
        }
        if (const int target = linkedPage(url)) {
            if (target - 1 == list->currentRow()) {
                browser->scrollToAnchor(url.fragment());
            } else {
                pendingAnchor = url.fragment();
                list->setCurrentRow(target - 1);
            }
            return;
        }
        QDesktopServices::openUrl(url);
    });
    list->setCurrentRow(page - 1);
    auto *splitter = new QSplitter;
    splitter->addWidget(list);
    splitter->addWidget(browser);
    splitter->setStretchFactor(1, 1);
    const int listWidth = list->sizeHintForColumn(0) + 2 * list->frameWidth() + 12;
    splitter->setSizes({listWidth, 900 - listWidth});

    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(splitter, 1);
    QCheckBox *quit = nullptr;
    if (firstRun) {
        auto *note = new QLabel(QStringLiteral("Welcome to Sonamark. These pages are always at hand under "
                                               "Help > Instructions."));
        note->setWordWrap(true);
        layout->addWidget(note);
        quit = new QCheckBox(QStringLiteral("&Quit Sonamark when this window closes"));
        layout->addWidget(quit);
    }
    auto *buttons = new QDialogButtonBox;
    QPushButton *close = buttons->addButton(QStringLiteral("&Close"), QDialogButtonBox::RejectRole);
    QObject::connect(close, &QPushButton::clicked, &window, &QWidget::close);
    layout->addWidget(buttons);
    window.resize(900, 640);
    window.show();
    const int rc = QApplication::exec();
    if (quit && quit->isChecked())
        HandOverClipboard(QStringLiteral("QuitMe"));
    return rc;
}
