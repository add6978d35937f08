#include "spell/spell_check.h"

#include "platform/services.h"
#include "reader/clip_store.h"
#include "reader/clipboard_monitor.h"
#include "reader/text_box.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"
#include "spell/dictionary_choice.h"
#include "spell/spell_state.h"

#include <QLocale>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSpell, "sonamark.spell", QtWarningMsg)

namespace spell {

namespace {

SpellWindowOpener g_opener;

// The tray's picture for the reader's state when no spell window is open.
platform::TrayPicture ReaderPicture()
{
    if (reader::MacroIsRunning())
        return platform::TrayPicture::Macro;
    if (!reader::monitor().Monitoring)
        return platform::TrayPicture::Idle;
    return SpellClipMode() ? platform::TrayPicture::SpellMonitoring : platform::TrayPicture::Monitoring;
}

void SetTrayPicture(platform::TrayPicture picture)
{
    if (platform::TrayIcon *tray = platform::services().tray)
        tray->changeIcon(picture);
}

void Tell(const QString &message)
{
    if (!message.isEmpty())
        shell::MsgBoxOT(message, 0, message == kNoDictionaryText ? kNoDictionaryTitle : kSpellCheckTitle);
}

} // namespace

bool SpellCheckAvailable()
{
    platform::SpellChecker *checker = platform::services().spell;
    return checker && !checker->dictionaries().isEmpty();
}

QString UseChosenDictionary(QString *error)
{
    platform::SpellChecker *checker = platform::services().spell;
    const QStringList installed = checker ? checker->dictionaries() : QStringList();
    if (installed.isEmpty()) {
        if (error)
            *error = kNoDictionaryText;
        return {};
    }
    const QString language = ChooseDictionary(installed, shell::settings().VoiceOpt, QLocale::system().name());
    QString why;
    if (!checker->useDictionary(language, &why)) {
        if (error)
            *error = why;
        return {};
    }
    qCDebug(lcSpell) << "dictionary" << language << "for voice" << shell::settings().VoiceOpt;
    return language;
}

void SetSpellWindowOpener(SpellWindowOpener opener) { g_opener = std::move(opener); }

QString SpellCheck_OnTop(const QString &text, bool commitToReader)
{
    // The original's check for a running word processor and for its document beside the
    // program has nothing to stand for here: the dictionary is read by this process.
    if (!SpellCheckAvailable())
        return kNoDictionaryText;
    if (text.size() > kMaxWindowText)
        return QStringLiteral("The text is too long to spell check in the window (%1 characters; at most %2). "
                              "Use sonamark-cli spell for it.")
            .arg(text.size())
            .arg(kMaxWindowText);
    if (!g_opener)
        return QStringLiteral("The spell checker needs its window, and no display is available.");
    SpellState &s = spellState();
    s.SpellText = text;
    s.SpellCommit = commitToReader;
    s.SpellDone = false;
    SetTrayPicture(platform::TrayPicture::SpellMonitoring);
    struct RestoreTray {
        ~RestoreTray() { SetTrayPicture(ReaderPicture()); }
    } restore;
    g_opener();
    return {};
}

void mnuSpellCheck_Click()
{
    reader::TextBox *box = reader::textBox();
    if (!box)
        return;
    const QString text = box->selLength() > 0 ? box->selectedText() : box->text();
    if (text.trimmed().isEmpty())
        return;
    Tell(SpellCheck_OnTop(text, true));
}

void SpellCheckClip(const QString &text) { Tell(SpellCheck_OnTop(text, false)); }

void mnuPUSpellCheck_Click()
{
    reader::ClipView *view = reader::clipView();
    if (!view)
        return;
    view->setSpellClipMode(!view->spellClipMode());
    if (reader::monitor().Monitoring && !reader::MacroIsRunning())
        SetTrayPicture(ReaderPicture());
}

void SetSpellClipMode(bool on)
{
    if (SpellClipMode() != on)
        mnuPUSpellCheck_Click();
}

bool SpellClipMode()
{
    const reader::ClipView *view = reader::clipView();
    return view && view->spellClipMode();
}

} // namespace spell
