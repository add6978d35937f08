#include "ui/frm_find_files.h"

#include "platform/services.h"
#include "search/file_walk.h"
#include "search/find_files.h"
#include "shell/app_state.h"
#include "shell/condensed_path.h"
#include "shell/failure_report.h"
#include "shell/file_util.h"
#include "shell/on_top_message.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace ui {

namespace {

constexpr qsizetype kFoundListLimit = 500'000;  // rows lstFoundFiles takes before the search stops
constexpr int kBytesRole = Qt::UserRole;         // a row's name or path as the file system spells it
constexpr int kPathRole = Qt::UserRole + 1;      // dirList: the row's full folder
const char *const kTextFilesPattern = "*.txt;*.rtf;*.xml;*.doc";
const char *const kAllFilesPattern = "*.*";
const char *const kSelect = "Selec&t";
const char *const kSelectAll = "Selec&t All";
const char *const kSearch = "&Search";
const char *const kReset = "&Reset";
const char *const kExit = "E&xit";
const char *const kCancel = "Cancel";
const char *const kHistoryTitle = "History";

QPushButton *button(QWidget *parent, const char *name, const QString &caption)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(QLatin1String(name));
    b->setAutoDefault(false);
    return b;
}

QListWidget *list(QWidget *parent, const char *name, bool multiple)
{
    auto *l = new QListWidget(parent);
    l->setObjectName(QLatin1String(name));
    l->setSelectionMode(multiple ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection);
    l->setUniformItemSizes(true);
    return l;
}

bool askYes(const QString &text, const QString &title)
{
    shell::MsgBoxOT(text, 1, title);
    return shell::app().MsgResult == shell::MsgYes;
}

void changeDirectory(const QString &folder) { QDir::setCurrent(folder); }  // failures ignored

QString withoutTrailingSlash(QString folder)
{
    while (folder.size() > 1 && folder.endsWith(QLatin1Char('/')))
        folder.chop(1);
    return folder;
}

} // namespace

frmFindFiles::frmFindFiles(QWidget *parent) : QDialog(parent), m_foundLimit(kFoundListLimit)
{
    setObjectName(QStringLiteral("frmFindFiles"));
    setModal(true);
    ++shell::app().ChildFormDepth;

    Picture1 = new QWidget(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    drvList = new QComboBox(Picture1);
    drvList->setObjectName(QStringLiteral("drvList"));
    dirList = list(Picture1, "dirList", false);
    filList = list(Picture1, "filList", true);
    auto *browse = new QGridLayout(Picture1);
    browse->setContentsMargins(0, 0, 0, 0);
    browse->addWidget(drvList, 0, 0);
    browse->addWidget(dirList, 1, 0);
    browse->addWidget(filList, 0, 1, 2, 1);

    Picture2 = new QWidget(this);
    Picture2->setObjectName(QStringLiteral("Picture2"));
    lblfound = new QLabel(QStringLiteral("&Files Found:"), Picture2);
    lblfound->setObjectName(QStringLiteral("lblfound"));
    lblCount = new QLabel(QStringLiteral("0"), Picture2);
    lblCount->setObjectName(QStringLiteral("lblCount"));
    lstFoundFiles = list(Picture2, "lstFoundFiles", true);
    lblfound->setBuddy(lstFoundFiles);
    auto *results = new QGridLayout(Picture2);
    results->setContentsMargins(0, 0, 0, 0);
    results->addWidget(lblfound, 0, 0);
    results->addWidget(lblCount, 0, 1, Qt::AlignRight);
    results->addWidget(lstFoundFiles, 1, 0, 1, 2);
    Picture2->hide();

    txtSearchSpec = new QLineEdit(this);
    txtSearchSpec->setObjectName(QStringLiteral("txtSearchSpec"));
    auto *criteria = new QLabel(QStringLiteral("Search &Criteria :"), this);
    criteria->setBuddy(txtSearchSpec);

    cmdSearch = button(this, "cmdSearch", QLatin1String(kSearch));
    cmdSelect = button(this, "cmdSelect", QLatin1String(kSelectAll));
    cmdFile = button(this, "cmdFile", QStringLiteral("&Clear"));
    cmdExit = button(this, "cmdExit", QLatin1String(kExit));
    cmdHistory = button(this, "cmdHistory", QStringLiteral("History"));
    cmdHistory->setToolTip(QStringLiteral("Click for history options"));
    cmbHistory = new QComboBox(this);
    cmbHistory->setObjectName(QStringLiteral("cmbHistory"));
    cmbHistory->setEditable(true);
    cmbHistory->setInsertPolicy(QComboBox::NoInsert);
    cmbHistory->setMinimumContentsLength(50);
    cmbHistoryFull = new QComboBox(this);
    cmbHistoryFull->setObjectName(QStringLiteral("cmbHistoryFull"));
    cmbHistoryFull->hide();

    mnuPopUp = new QMenu(this);
    mnuPopUp->setObjectName(QStringLiteral("mnuPopUp"));
    mnuPUAdd = mnuPopUp->addAction(QStringLiteral("Add History"));
    mnuPUDelete = mnuPopUp->addAction(QStringLiteral("Delete History"));
    mnuPUDefault = mnuPopUp->addAction(QStringLiteral("Set To Current"));
    mnuPUSave = mnuPopUp->addAction(QStringLiteral("Save History"));
    mnuPUClear = mnuPopUp->addAction(QStringLiteral("Clear History"));
    mnuPUSelect = mnuPopUp->addAction(QStringLiteral("Select Folder"));
    mnuPUOpen = mnuPopUp->addAction(QStringLiteral("Open In Explorer"));

    auto *history = new QHBoxLayout;
    history->addWidget(cmdHistory);
    history->addWidget(cmbHistory, 1);
    auto *criteriaRow = new QHBoxLayout;
    criteriaRow->addWidget(criteria);
    criteriaRow->addWidget(txtSearchSpec, 1);
    auto *buttons = new QHBoxLayout;
    for (QPushButton *b : {cmdSearch, cmdSelect, cmdFile})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(cmdExit);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(history);
    layout->addWidget(Picture1, 1);
    layout->addWidget(Picture2, 1);
    layout->addLayout(criteriaRow);
    layout->addLayout(buttons);
    resize(640, 460);

    const auto on = [this](auto *sender, auto signal, const char *routine, auto body) {
        connect(sender, signal, this, [this, routine, body](auto &&...args) { guard(routine, [&] { body(args...); }); });
    };
    on(cmdSearch, &QPushButton::clicked, "(Form) frmFindFiles::Sub cmdSearch_Click", [this](bool) { cmdSearch_Click(); });
    on(cmdSelect, &QPushButton::clicked, "(Form) frmFindFiles::Sub cmdSelect_Click", [this](bool) { cmdSelect_Click(); });
    on(cmdFile, &QPushButton::clicked, "(Form) frmFindFiles::Sub cmdFile_Click", [this](bool) { cmdFile_Click(); });
    on(cmdExit, &QPushButton::clicked, "(Form) frmFindFiles::Sub cmdExit_Click", [this](bool) { cmdExit_Click(); });
    on(cmdHistory, &QPushButton::clicked, "(Form) frmFindFiles::Sub cmdHistory_Click",
       [this](bool) { mnuPopUp->popup(cmdHistory->mapToGlobal(QPoint(0, cmdHistory->height()))); });
    on(mnuPUAdd, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUAdd_Click", [this](bool) { mnuPUAdd_Click(); });
    on(mnuPUDelete, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUDelete_Click",
       [this](bool) { mnuPUDelete_Click(); });
    on(mnuPUDefault, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUDefault_Click",
       [this](bool) { mnuPUDefault_Click(); });
    on(mnuPUSave, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUSave_Click", [this](bool) { mnuPUSave_Click(); });
    on(mnuPUClear, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUClear_Click",
       [this](bool) { mnuPUClear_Click(); });
    on(mnuPUSelect, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUSelect_Click",
       [this](bool) { mnuPUSelect_Click(); });
    on(mnuPUOpen, &QAction::triggered, "(Form) frmFindFiles::Sub mnuPUOpen_Click", [this](bool) { mnuPUOpen_Click(); });
    on(filList, &QListWidget::itemDoubleClicked, "(Form) frmFindFiles::Sub filList_DblClick",
       [this](QListWidgetItem *item) { filList_DblClick(item); });
    on(lstFoundFiles, &QListWidget::itemDoubleClicked, "(Form) frmFindFiles::Sub lstFoundFiles_DblClick",
       [this](QListWidgetItem *item) { lstFoundFiles_DblClick(item); });
    on(filList, &QListWidget::itemClicked, "(Form) frmFindFiles::Sub filList_Click",
       [this](QListWidgetItem *) { markCmdSelect(true); });
    on(lstFoundFiles, &QListWidget::itemClicked, "(Form) frmFindFiles::Sub lstFoundFiles_Click",
       [this](QListWidgetItem *item) {
           markCmdSelect(true);
           cmdSelect->setToolTip(item ? item->text() : QString());
       });
    on(dirList, &QListWidget::itemDoubleClicked, "(Form) frmFindFiles::Sub dirList_DblClick",
       [this](QListWidgetItem *item) { setDirPath(item->data(kPathRole).toString()); });
    on(dirList, &QListWidget::itemActivated, "(Form) frmFindFiles::Sub dirList_KeyPress",
       [this](QListWidgetItem *item) { setDirPath(item->data(kPathRole).toString()); });
    on(drvList, &QComboBox::activated, "(Form) frmFindFiles::Sub DrvList_Change",
       [this](int row) { setDirPath(drvList->itemText(row)); });
    on(txtSearchSpec, &QLineEdit::textEdited, "(Form) frmFindFiles::Sub txtSearchSpec_Change",
       [this](const QString &text) {
           m_pattern = text;
           fillFileList();
       });
    on(cmbHistory, &QComboBox::activated, "(Form) frmFindFiles::Sub cmbHistory_Click", [this](int row) {
        m_history.setCurrent(row);
        cmbHistoryFull->setCurrentIndex(row);
        cmbHistory->setToolTip(m_history.toolTip());
    });
    connect(&m_search, &search::FileSearch::found, this, [this] { guard("(Form) frmFindFiles::Sub DirDriver", [this] { takeFound(); }); });
    connect(&m_search, &search::FileSearch::finished, this,
            [this] { guard("(Form) frmFindFiles::Sub cmdSearch_Click", [this] { searchFinished(); }); });
    dirList->installEventFilter(this);
    txtSearchSpec->installEventFilter(this);

    guard("(Form) frmFindFiles::Sub Form_Load", [this] { Form_Load(); });
}

frmFindFiles::~frmFindFiles()
{
    m_search.cancel();
    if (shell::app().ChildFormDepth > 0)
        --shell::app().ChildFormDepth;
}

void frmFindFiles::guard(const char *routine, const std::function<void()> &body) { shell::Guarded(routine, body); }

void frmFindFiles::Form_Load()
{
    search::FindFilesState &state = search::findFilesState();
    drvList->addItems(search::MountedDrives());
    if (state.SelectedCount == 0) {
        m_history.PopulateHistory(QDir::currentPath());
        showHistory();
    }
    if (!state.LastFolder.isEmpty()) {
        state.LastFolder = search::WithTrailingSlash(state.LastFolder);
        if (!shell::FolderExists(state.LastFolder))
            state.LastFolder = search::WithTrailingSlash(shell::app().AppFolder);
        addHistory(state.LastFolder);
        changeDirectory(state.LastFolder);
    }
    const bool textFiles = state.SelectedCount == -1;
    if (textFiles)
        state.SelectedCount = 0;
    setWindowTitle(textFiles ? QStringLiteral("Select Text Files") : QStringLiteral("Find Files"));
    m_pattern = QLatin1String(textFiles ? kTextFilesPattern : kAllFilesPattern);
    txtSearchSpec->setText(m_pattern);
    setDirPath(QDir::currentPath());
    m_history.HistoryAutoSave = true;
}

// The dirList rows: the folder's chain from the root, then its sub-folders.
void frmFindFiles::setDirPath(const QString &folder)
{
    const QString path = withoutTrailingSlash(folder.isEmpty() ? QStringLiteral("/") : folder);
    const search::FolderListing listing =
        search::ListFolder(search::RealFileName(path), search::FilePattern(QStringLiteral("-")));
    if (!listing.readable && !m_dirPath.isEmpty())
        return;  // a folder that cannot be listed is not entered
    m_dirPath = path;
    dirList->clear();
    QStringList chain;
    for (QString at = path; at != QLatin1String("/"); at = withoutTrailingSlash(QFileInfo(at).path()))
        chain.prepend(at);
    chain.prepend(QStringLiteral("/"));
    int depth = 0;
    QListWidgetItem *current = nullptr;
    for (const QString &link : chain) {
        const QString name = link == QLatin1String("/") ? link : QFileInfo(link).fileName();
        auto *item = new QListWidgetItem(QString(depth * 2, QLatin1Char(' ')) + name, dirList);
        item->setData(kPathRole, link);
        current = item;
        ++depth;
    }
    const QByteArray bytes = search::RealFileName(path);
    for (const QByteArray &sub : listing.subFolders) {
        const QByteArray full = search::JoinPath(bytes, sub);
        auto *item = new QListWidgetItem(QString(depth * 2, QLatin1Char(' ')) + QFile::decodeName(sub), dirList);
        item->setData(kPathRole, search::ShownName(full));
        item->setData(kBytesRole, full);
    }
    dirList->setCurrentItem(current);
    const int drive = drvList->findText(path.startsWith(QDir::homePath()) ? QDir::homePath() : QStringLiteral("/"));
    if (drive >= 0)
        drvList->setCurrentIndex(drive);
    dirList_Change();
}

QString frmFindFiles::markedFolder() const
{
    const QListWidgetItem *item = dirList->currentItem();
    return item ? item->data(kPathRole).toString() : m_dirPath;
}

void frmFindFiles::dirList_Change()
{
    if (cmdSelect->text() == QLatin1String(kSelect))
        cmdSelect->setText(QLatin1String(kSelectAll));
    fillFileList();
}

void frmFindFiles::fillFileList()
{
    filList->clear();
    const search::FolderListing listing =
        search::ListFolder(search::RealFileName(m_dirPath), search::FilePattern(m_pattern));
    for (const QByteArray &name : listing.files) {
        auto *item = new QListWidgetItem(QFile::decodeName(name), filList);
        item->setData(kBytesRole, name);
    }
}

void frmFindFiles::markCmdSelect(bool)
{
    if (cmdSelect->text() != QLatin1String(kSelect))
        cmdSelect->setText(QLatin1String(kSelect));
}

void frmFindFiles::showHistory()
{
    cmbHistory->clear();
    cmbHistoryFull->clear();
    cmbHistory->addItems(m_history.shownRows());
    cmbHistoryFull->addItems(m_history.rows());
    cmbHistory->setCurrentIndex(m_history.current());
    cmbHistoryFull->setCurrentIndex(m_history.current());
    cmbHistory->setToolTip(m_history.toolTip());
}

bool frmFindFiles::addHistory(const QString &folder)
{
    const bool added = m_history.AddHistory(folder);
    if (added)
        showHistory();
    return added;
}

void frmFindFiles::cmdSearch_Click()
{
    if (m_searchFlag)
        return;
    if (cmdSearch->text() == QLatin1String(kReset)) {
        ResetSearch();
        txtSearchSpec->setFocus();
        return;
    }
    if (markedFolder() != m_dirPath) {
        setDirPath(markedFolder());  // look before searching
        return;
    }
    QApplication::setOverrideCursor(Qt::BusyCursor);
    Picture2->show();
    Picture1->hide();
    cmdExit->setText(QLatin1String(kCancel));
    m_pattern = txtSearchSpec->text();
    m_count = 0;
    m_searchFlag = true;
    m_search.start(m_dirPath, m_pattern, m_foundLimit);
}

void frmFindFiles::takeFound()
{
    const QList<search::FoundFile> found = m_search.takeFound();
    if (found.isEmpty())
        return;
    lstFoundFiles->setUpdatesEnabled(false);
    for (const search::FoundFile &file : found) {
        auto *item = new QListWidgetItem(file.shown, lstFoundFiles);
        item->setData(kBytesRole, file.bytes);
    }
    lstFoundFiles->setUpdatesEnabled(true);
    m_count += found.size();
    lblCount->setText(QLatin1Char(' ') + QString::number(m_count));
}

void frmFindFiles::searchFinished()
{
    m_search.wait();
    takeFound();
    m_searchFlag = false;
    fillFileList();
    if (cmdSelect->text() == QLatin1String(kSelect))
        cmdSelect->setText(QLatin1String(kSelectAll));
    QApplication::restoreOverrideCursor();
    cmdSearch->setText(QLatin1String(kReset));
    cmdSearch->setFocus();
    cmdExit->setText(QLatin1String(kExit));
    if (m_search.result().limitReached)
        shell::MsgBoxOT(QStringLiteral("You've filled the list box. Abandoning search..."), 0,
                        QStringLiteral("Out of Memory"));
    emit searchEnded();
    if (m_closing)
        close();
}

void frmFindFiles::ResetSearch()
{
    lstFoundFiles->clear();
    lblCount->setText(QStringLiteral("0"));
    m_count = 0;
    Picture2->hide();
    cmdSearch->setText(QLatin1String(kSearch));
    cmdExit->setText(QLatin1String(kExit));
    Picture1->show();
    setDirPath(QDir::currentPath());
}

void frmFindFiles::cmdExit_Click()
{
    if (cmdExit->text() == QLatin1String(kExit)) {
        close();
        return;
    }
    m_searchFlag = false;
    m_search.cancel();
}

void frmFindFiles::cmdFile_Click()
{
    filList->clearSelection();
    lstFoundFiles->clearSelection();
}

void frmFindFiles::cmdSelect_Click()
{
    const bool results = cmdSearch->text() == QLatin1String(kReset);
    QListWidget *rows = results ? lstFoundFiles : filList;
    if (rows->count() == 0)
        return;
    QList<int> selected;
    for (int i = 0; i < rows->count(); ++i)
        if (rows->item(i)->isSelected())
            selected << i;
    if (!askYes(search::SelectQuestion(int(selected.size()), rows->count()), QStringLiteral("Select Files")))
        return;
    QStringList texts;
    QList<QByteArray> bytes;
    for (int i = 0; i < rows->count(); ++i) {
        texts << rows->item(i)->text();
        bytes << rows->item(i)->data(kBytesRole).toByteArray();
    }
    search::SelectRows(texts, bytes, selected, results ? QString() : search::WithTrailingSlash(m_dirPath));
    search::FindFilesState &state = search::findFilesState();
    if (state.SelectedCount > 0) {
        state.LastFolder = search::WithTrailingSlash(m_dirPath);
        changeDirectory(state.LastFolder);
        cmdExit_Click();
    }
}

void frmFindFiles::filList_DblClick(QListWidgetItem *item)
{
    if (!item)
        return;
    shell::MsgBoxOT(QStringLiteral("Select this file?"), 1, QStringLiteral("Select File"));
    if (shell::app().MsgResult == shell::MsgNo)
        return;
    const QString folder = search::WithTrailingSlash(m_dirPath);
    search::findFilesState().select({folder + item->text()},
                                    {search::RealFileName(folder) + item->data(kBytesRole).toByteArray()});
    search::findFilesState().LastFolder = folder;
    addHistory(folder);
    changeDirectory(folder);
    cmdExit_Click();
}

void frmFindFiles::lstFoundFiles_DblClick(QListWidgetItem *item)
{
    if (!item || m_searchFlag)
        return;
    search::FindFilesState &state = search::findFilesState();
    state.select({item->text()}, {item->data(kBytesRole).toByteArray()});
    const QString folder = item->text().left(item->text().lastIndexOf(QLatin1Char('/')) + 1);
    state.LastFolder = folder;
    changeDirectory(folder);
    state.LastFolder.clear();
    close();
}

void frmFindFiles::mnuPUAdd_Click()
{
    if (!dirList->currentItem() && dirList->count() > 0)
        dirList->setCurrentRow(0);
    if (addHistory(markedFolder()))
        m_history.HistoryAutoSave = false;
}

void frmFindFiles::mnuPUDelete_Click()
{
    const QString title = QLatin1String(kHistoryTitle);
    if (m_history.rows().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No folders to delete from the history list."), 0, title);
        return;
    }
    const QString text = cmbHistory->currentText();
    if (m_history.current() < 0 && text.isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("Select a folder to remove from the history list."), 0, title);
        return;
    }
    const int row = m_history.FindRow(text);
    if (row < 0) {
        shell::MsgBoxOT(QStringLiteral("Folder not found in history list."), 0, title);
        return;
    }
    if (!askYes(QStringLiteral("Remove this folder from the history list?"), QStringLiteral("Delete History")))
        return;
    m_history.RemoveRow(row);
    showHistory();
}

void frmFindFiles::mnuPUDefault_Click()
{
    const int row = m_history.FindRow(cmbHistory->currentText());
    const QString folder = row >= 0 ? m_history.rows().at(row) : cmbHistory->currentText();
    if (!folder.isEmpty() && shell::FolderExists(folder)) {
        changeDirectory(folder);
        setDirPath(folder);
    }
}

void frmFindFiles::mnuPUSave_Click()
{
    const bool saved = m_history.SaveHistory2File();
    const QString where = shell::CondensedPath(search::FolderHistory::FilePath(), 60);
    shell::MsgBoxOT((saved ? QStringLiteral("History saved to folder ") : QStringLiteral("The history was not saved to folder "))
                        + where,
                    0, QStringLiteral("Save History"));
}

void frmFindFiles::mnuPUClear_Click()
{
    shell::MsgBoxOT(QStringLiteral("Would you like to clear the history file too?"), 2, QStringLiteral("Clear History"));
    const int answer = shell::app().MsgResult;
    if (answer == shell::MsgCancel)
        return;
    m_history.Clear();
    showHistory();
    cmbHistory->setEditText(QString());
    if (answer == shell::MsgYes)
        m_history.ClearFile();
}

void frmFindFiles::mnuPUSelect_Click()
{
    const int row = m_history.current() >= 0 ? m_history.current() : m_history.FindRow(cmbHistory->currentText());
    if (row < 0)
        return;
    if (!askYes(QStringLiteral("Select this history folder and quit?"), QLatin1String(kHistoryTitle)))
        return;
    search::findFilesState().select({m_history.rows().at(row)}, {});
    cmdExit_Click();
}

void frmFindFiles::mnuPUOpen_Click()
{
    const QString title = QLatin1String(kHistoryTitle);
    if (m_history.rows().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("No folders in history."), 0, title);
        return;
    }
    const QString text = cmbHistory->currentText();
    const int row = m_history.FindRow(text);
    if (m_history.current() < 0 || text.isEmpty() || row < 0) {
        shell::MsgBoxOT(QStringLiteral("No folder has been selected."), 0, title);
        return;
    }
    const QString folder = m_history.rows().at(row);
    if (!shell::FolderExists(folder)) {
        shell::MsgBoxOT(QStringLiteral("Folder not found."), 0, title);
        return;
    }
    if (platform::Desktop *desktop = platform::services().desktop)
        desktop->openUrl(QUrl::fromLocalFile(folder).toString());
}

bool frmFindFiles::Form_Unload()
{
    if (!m_history.HistoryDirty)
        return true;
    if (m_history.HistoryAutoSave) {
        m_history.SaveHistory2File();
        return true;
    }
    shell::MsgBoxOT(QStringLiteral("The folder history has changed, would you like to save the changes?"), 2,
                    QStringLiteral("Save History"));
    const int answer = shell::app().MsgResult;
    if (answer == shell::MsgCancel)
        return false;
    if (answer == shell::MsgYes)
        mnuPUSave_Click();
    m_history.HistoryDirty = false;  // No loses the changes; Yes has saved them
    return true;
}

void frmFindFiles::closeEvent(QCloseEvent *event)
{
    if (m_searchFlag || m_search.running()) {
        // The search ends first; the window closes when it has.
        m_closing = true;
        m_searchFlag = false;
        m_search.cancel();
        event->ignore();
        return;
    }
    bool unload = true;
    guard("(Form) frmFindFiles::Sub Form_Unload", [&] { unload = Form_Unload(); });
    if (!unload) {
        m_closing = false;
        event->ignore();
        return;
    }
    event->accept();
    QDialog::done(QDialog::Accepted);
}

void frmFindFiles::reject() { close(); }

bool frmFindFiles::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == dirList && event->type() == QEvent::FocusOut) {
        guard("(Form) frmFindFiles::Sub DirList_LostFocus", [this] {
            if (markedFolder() != m_dirPath)
                setDirPath(markedFolder());
        });
    } else if (watched == txtSearchSpec && event->type() == QEvent::FocusIn) {
        QMetaObject::invokeMethod(txtSearchSpec, &QLineEdit::selectAll, Qt::QueuedConnection);
    }
    return QDialog::eventFilter(watched, event);
}

void ShowFindFiles(QWidget *parent)
{
    frmFindFiles window(parent);
    window.exec();
}

} // namespace ui
