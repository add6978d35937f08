#include "ui/wizard_dialogs.h"

#include "platform/services.h"
#include "reader/help_menu.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"
#include "ui/frm_pic_date.h"
#include "ui/frm_pick_point.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputDialog>
#include <QScreen>

namespace ui {

namespace {

constexpr int kInputWidth = 420;  // pixels: room for a statement's operand

// The wizard's message types as the message box takes them.
int MessageType(int wizardType)
{
    switch (wizardType) {
    case 1: return 1;  // OK and Cancel: as Yes and No
    case 3: return 2;  // Yes, No and Cancel
    case 4: return 1;  // Yes and No
    default: return 0;
    }
}

} // namespace

QString QtFileFilter(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString caption = parts[i].trimmed();
        QString patterns = parts[i + 1].trimmed();
        // "*.*" is every file here, named or not.
        patterns.replace(QStringLiteral("*.*"), QStringLiteral("*"));
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        const int open = int(caption.indexOf(QLatin1Char('(')));
        const QString name = open < 0 ? caption : caption.left(open).trimmed();
        filters << name + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    if (filters.isEmpty() && !filter.trimmed().isEmpty())
        filters << filter.trimmed();
    return filters.join(QStringLiteral(";;"));
}

WizardDialogs::WizardDialogs(QWidget *parent, std::function<void()> showHelp)
    : m_parent(parent), m_showHelp(std::move(showHelp))
{
}

int WizardDialogs::message(const QString &text, int type, const QString &title)
{
    shell::MsgBoxOT(text, MessageType(type), title);
    const int answer = shell::app().MsgResult;
    if (type == 1)
        return answer == shell::MsgYes ? hotkeys::WizardOk : hotkeys::WizardCancel;
    return answer;
}

bool WizardDialogs::input(const QString &title, const QString &prompt, QString &reply, const QString &defaultText)
{
    QInputDialog box(m_parent, Qt::Dialog | Qt::WindowStaysOnTopHint);
    box.setObjectName(QStringLiteral("frmWizardInput"));
    box.setWindowTitle(title);
    box.setLabelText(prompt);
    box.setInputMode(QInputDialog::TextInput);
    box.setTextValue(defaultText);
    box.resize(qMax(box.sizeHint().width(), kInputWidth), box.sizeHint().height());
    if (box.exec() != QDialog::Accepted)
        return false;
    reply = box.textValue();
    return true;
}

bool WizardDialogs::file(const QString &title, const QString &filter, bool save, QString &path,
                         const QString &defaultExtension)
{
    if (m_folder.isEmpty())
        m_folder = shell::app().AppFolder.isEmpty() ? QDir::homePath() : shell::app().AppFolder;
    QFileDialog dialog(m_parent, title, m_folder, QtFileFilter(filter));
    dialog.setObjectName(QStringLiteral("frmWizardFile"));
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (save) {
        // The statement writes the file when the macro runs, not now.
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        QString suffix = defaultExtension;
        if (suffix.startsWith(QLatin1Char('.')))
            suffix.remove(0, 1);
        dialog.setDefaultSuffix(suffix);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    path = QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
    if (path.isEmpty())
        return false;
    m_folder = QFileInfo(path).absolutePath();
    return true;
}

bool WizardDialogs::folder(const QString &title, QString &path)
{
    if (m_folder.isEmpty())
        m_folder = shell::app().AppFolder.isEmpty() ? QDir::homePath() : shell::app().AppFolder;
    const QString chosen = QFileDialog::getExistingDirectory(m_parent, title, m_folder);
    if (chosen.isEmpty())
        return false;
    path = QDir::toNativeSeparators(chosen);
    m_folder = chosen;
    return true;
}

bool WizardDialogs::point(const QString &title, QPoint &at, bool &hooked)
{
    return frmPickPoint::Pick(m_parent, title, at, hooked);
}

bool WizardDialogs::windowClass(const QString &title, QString &className, bool &hooked)
{
    QPoint at;
    if (!point(title, at, hooked))
        return false;
    platform::WindowFinder *windows = platform::services().windows;
    className = windows ? windows->classAt(at.x(), at.y()) : QString();
    return true;
}

bool WizardDialogs::dateTime(bool future, QString &date, QString &time)
{
    return frmPicDate::Ask(m_parent, future, date, time);
}

QSize WizardDialogs::screen()
{
    // The size the statement checker measures mouse positions by, when there is one.
    if (const platform::MouseSender *mouse = platform::services().mouse) {
        const QSize size = mouse->screenSize();
        if (size.isValid() && !size.isEmpty())
            return size;
    }
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().size() : QSize();
}

void WizardDialogs::help(const QString &statement)
{
    // The statement's part of the reference, in the text window; the help viewer's page
    // when the reference cannot be shown.
    if (!statement.isEmpty()) {
        reader::HelpHotkeys(statement);
        return;
    }
    if (m_showHelp)
        m_showHelp();
}

} // namespace ui
