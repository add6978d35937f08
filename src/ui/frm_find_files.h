#pragma once
// frmFindFiles: the modal file finder and picker, in its "Find Files" face (for the macro
// statement) or its "Select Text Files" face (SelectedCount -1 on entry). The search runs
// on a worker thread and streams its matches into lstFoundFiles.
#include "search/file_search.h"
#include "search/folder_history.h"

#include <QDialog>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QMenu;
class QPushButton;

namespace ui {

class frmFindFiles : public QDialog {
    Q_OBJECT
public:
    explicit frmFindFiles(QWidget *parent = nullptr);
    ~frmFindFiles() override;

    // dirList's Path (the folder listed), and the folder marked in it.
    QString dirPath() const { return m_dirPath; }
    QString markedFolder() const;
    void setDirPath(const QString &folder);
    // The most rows lstFoundFiles takes before the search stops with its message.
    void setFoundLimit(qsizetype limit) { m_foundLimit = limit; }
    bool searching() const { return m_searchFlag; }
    const search::FolderHistory &history() const { return m_history; }

    // Handlers, public so that tests can drive them as the user would.
    void cmdSearch_Click();
    void cmdSelect_Click();
    void cmdFile_Click();
    void cmdExit_Click();
    void filList_DblClick(QListWidgetItem *item);
    void lstFoundFiles_DblClick(QListWidgetItem *item);
    void mnuPUAdd_Click();
    void mnuPUDelete_Click();
    void mnuPUDefault_Click();
    void mnuPUSave_Click();
    void mnuPUClear_Click();
    void mnuPUSelect_Click();
    void mnuPUOpen_Click();

    QWidget *Picture1 = nullptr;  // drive, folder and file lists
    QWidget *Picture2 = nullptr;  // the search results
    QComboBox *drvList = nullptr;
    QListWidget *dirList = nullptr;
    QListWidget *filList = nullptr;
    QLineEdit *txtSearchSpec = nullptr;
    QListWidget *lstFoundFiles = nullptr;
    QLabel *lblfound = nullptr;
    QLabel *lblCount = nullptr;
    QPushButton *cmdSearch = nullptr;
    QPushButton *cmdSelect = nullptr;
    QPushButton *cmdFile = nullptr;
    QPushButton *cmdExit = nullptr;
    QPushButton *cmdHistory = nullptr;
    QComboBox *cmbHistory = nullptr;
    QComboBox *cmbHistoryFull = nullptr;
    QMenu *mnuPopUp = nullptr;
    QAction *mnuPUAdd = nullptr;
    QAction *mnuPUDelete = nullptr;
    QAction *mnuPUDefault = nullptr;
    QAction *mnuPUSave = nullptr;
    QAction *mnuPUClear = nullptr;
    QAction *mnuPUSelect = nullptr;
    QAction *mnuPUOpen = nullptr;

signals:
    // The search has ended and the buttons stand in the Results state.
    void searchEnded();

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Form_Load();
    bool Form_Unload();
    void ResetSearch();
    void takeFound();
    void searchFinished();
    void dirList_Change();
    void fillFileList();
    void showHistory();
    bool addHistory(const QString &folder);
    void markCmdSelect(bool single);
    void guard(const char *routine, const std::function<void()> &body);

    search::FileSearch m_search;
    search::FolderHistory m_history;
    QString m_dirPath;
    QString m_pattern;
    bool m_searchFlag = false;
    bool m_closing = false;
    qsizetype m_foundLimit;
    qint64 m_count = 0;
};

// Shows the finder modally for the state as it stands (the opener of search::FindFiles
// and of the "Select Text Files" callers).
void ShowFindFiles(QWidget *parent);

} // namespace ui
