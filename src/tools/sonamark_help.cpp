// sonamark-help PAGE FIRSTRUN: shows the program's help pages. On a first run it offers
// to quit the program, answering "QuitMe" through the clipboard.
#include "clipboard_hold.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <QWidget>

namespace {

const char *const kPages[] = {
    "Reading the Clipboard", "Running Sonamark", "Sonamark Options", "The TTS Reader",
    "The Spell Checker", "Read To MP3", "Clipboard Overview", "The Multi-Clipboard",
    "Selecting Text", "Hotkeys Macros", "Hotkeys Editor"};
constexpr int kPageCount = int(std::size(kPages));

// Help pages are files "NN.html" in the share folder; a missing page says so.
QString pageText(int page)
{
    const QStringList folders = {QCoreApplication::applicationDirPath() + QStringLiteral("/help"),
                                 QCoreApplication::applicationDirPath() + QStringLiteral("/../share/sonamark/help")};
    const QString name = QStringLiteral("%1.html").arg(page, 2, 10, QLatin1Char('0'));
    for (const QString &folder : folders) {
        QFile file(QDir(folder).filePath(name));
        if (file.open(QIODevice::ReadOnly))
            return QString::fromUtf8(file.readAll());
    }
    return QStringLiteral("<h2>%1</h2><p>This page has not been written yet.</p>")
        .arg(QString::fromLatin1(kPages[page - 1]).toHtmlEscaped());
}

} // namespace

int main(int argc, char **argv)
{
    if (RunAsClipboardHolder(argc, argv))
        return 0;
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    int page = args.size() > 1 ? args.at(1).toInt() : 1;
    if (page < 1 || page > kPageCount)
        page = 1;
    const bool firstRun = args.size() > 2 && args.at(2) == QLatin1String("1");

    QWidget window;
    window.setObjectName(QStringLiteral("frmHelp"));
    window.setWindowTitle(QStringLiteral("Sonamark Help"));
    auto *list = new QListWidget;
    for (int i = 0; i < kPageCount; ++i)
        list->addItem(QStringLiteral("%1) %2").arg(i + 1).arg(QLatin1String(kPages[i])));
    auto *browser = new QTextBrowser;
    browser->setOpenExternalLinks(true);
    QObject::connect(list, &QListWidget::currentRowChanged, browser,
                     [browser](int row) { browser->setHtml(pageText(row + 1)); });
    list->setCurrentRow(page - 1);
    auto *splitter = new QSplitter;
    splitter->addWidget(list);
    splitter->addWidget(browser);
    splitter->setStretchFactor(1, 1);

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
    window.resize(760, 520);
    window.show();
    const int rc = QApplication::exec();
    if (quit && quit->isChecked())
        HandOverClipboard(QStringLiteral("QuitMe"));
    return rc;
}
