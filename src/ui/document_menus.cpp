#include "ui/document_menus.h"

#include "reader/documents.h"
#include "reader/exceptions.h"
#include "reader/exceptions_editor.h"
#include "shell/failure_report.h"
#include "ui/document_box.h"
#include "ui/frm_exceptions.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>

namespace ui {

namespace {

// Adds an entry whose handler runs under the UI guard with its routine's identity.
QAction *entry(QMenu *menu, const QString &caption, const char *source, std::function<void()> handler)
{
    QAction *action = menu->addAction(caption);
    QObject::connect(action, &QAction::triggered, menu,
                     [source, handler = std::move(handler)] { shell::Guarded(source, handler); });
    return action;
}

} // namespace

DocumentMenus::DocumentMenus(QWidget *window, QTextEdit *txtSpeech, std::function<int()> voiceRow)
    : QObject(window), m_window(window), m_box(new DocumentBox(window, txtSpeech)), m_voiceRow(std::move(voiceRow))
{
    connect(txtSpeech, &QTextEdit::textChanged, this, [] { reader::txtSpeech_Change(); });
    cmdPaste = new QPushButton(QStringLiteral("Paste"), window);
    cmdPaste->setObjectName(QStringLiteral("cmdPaste"));
    cmdPaste->setToolTip(QStringLiteral("Put the clipboard's text in the reader"));
    cmdClear = new QPushButton(QStringLiteral("Clear"), window);
    cmdClear->setObjectName(QStringLiteral("cmdClear"));
    connect(cmdPaste, &QPushButton::clicked, this,
            [] { shell::Guarded("(Form) frmSonamark::Sub cmdPaste_Click", reader::cmdPaste_Click); });
    connect(cmdClear, &QPushButton::clicked, this,
            [] { shell::Guarded("(Form) frmSonamark::Sub cmdClear_Click", reader::cmdClear_Click); });
}

DocumentMenus::~DocumentMenus() { delete m_box; }

void DocumentMenus::addOpenSave(QMenu *file)
{
    entry(file, QStringLiteral("Open"), "(Form) frmSonamark::Sub mnuFileLoad_Click", reader::mnuFileLoad_Click);
    entry(file, QStringLiteral("Save"), "(Form) frmSonamark::Sub mnuFileSave_Click", reader::mnuFileSave_Click);
    entry(file, QStringLiteral("Save As.."), "(Form) frmSonamark::Sub mnuFileSaveAs_Click",
          reader::mnuFileSaveAs_Click);
}

void DocumentMenus::addPrinting(QMenu *file)
{
    entry(file, QStringLiteral("Page Setup"), "(Form) frmSonamark::Sub mnuFilePageSetup_Click",
          reader::mnuFilePageSetup_Click);
    entry(file, QStringLiteral("Print"), "(Form) frmSonamark::Sub mnuFilePrint_Click", reader::mnuFilePrint_Click);
}

void DocumentMenus::addExceptionsMenu(QMenu *menu)
{
    entry(menu, QStringLiteral("Apply To Current Text"), "(Form) frmSonamark::Sub mnuExceptionsApply_Click",
          reader::mnuExceptionsApply_Click);
    entry(menu, QStringLiteral("Undo Exceptions"), "(Form) frmSonamark::Sub mnuExceptionsUndo_Click",
          reader::mnuExceptionsUndo_Click);
    entry(menu, QStringLiteral("Add New Exception"), "(Form) frmSonamark::Sub mnuExceptionsNew_Click",
          [this] { mnuExceptionsNew_Click(); });
    mnuExceptionsTog = entry(menu, QStringLiteral("Make Exceptions"), "(Form) frmSonamark::Sub mnuExceptionsTog_Click",
                             reader::mnuExceptionsTog_Click);
    mnuExceptionsTog->setCheckable(true);
    mnuExceptionsTog->setChecked(reader::exceptionsState().ExceptionsOn);
}

void DocumentMenus::mnuExceptionsNew_Click()
{
    const QString selection = m_box->selectedText();
    if (!reader::ConfirmNewException(selection))
        return;
    frmExceptions dialog(m_window, m_voiceRow ? m_voiceRow() : -1);
    if (!selection.isEmpty())
        dialog.presetWord(selection);
    dialog.exec();
}

} // namespace ui
