#include "reader/tray_menu_forms.h"

#include "reader/clip_store.h"

#include <initializer_list>

namespace reader {

namespace {

enum Form { kNormal = 0, kShortened = 1, kShortened2 = 2 };
int g_form = kNormal;

void SetVisible(std::initializer_list<TrayEntry> entries, bool visible)
{
    for (TrayEntry e : entries)
        clipView()->setTrayEntryVisible(e, visible);
}

// The store's rows show only once something is stored; the shortened forms hide them,
// and coming back they stand as the store says.
void ShowStoreRows()
{
    const ClipStoreState &s = clipStore();
    const bool any = s.ClipCount > 0 || s.PicCount > 0;
    ClipView *view = clipView();
    view->setTrayEntryVisible(TrayEntry::Separator2, any);
    view->setTrayEntryVisible(TrayEntry::ClipboardBar, any);
    view->setTrayEntryVisible(TrayEntry::ClipStored, s.ClipCount > 0);
}

} // namespace

void ShortenPopUp(const QString &caption)
{
    ClipView *view = clipView();
    if (!view)
        return;
    view->setTrayEntryEnabled(TrayEntry::Talk, true);
    view->setTrayEntryEnabled(TrayEntry::Pause, true);
    view->setTrayCaption(TrayEntry::Talk, caption);
    view->setTrayCaption(TrayEntry::Pause, QStringLiteral("Monitor the clipboard.."));
    SetVisible({TrayEntry::Stop, TrayEntry::SeparatorSC, TrayEntry::PUSpellCheck, TrayEntry::Separator1,
                TrayEntry::Options, TrayEntry::Separator2, TrayEntry::ClipboardBar, TrayEntry::ClipStored,
                TrayEntry::Separator3, TrayEntry::Cancel, TrayEntry::SeparatorEnd, TrayEntry::Close},
               false);
    g_form = kShortened;
}

void RestorePopUp()
{
    ClipView *view = clipView();
    if (!view)
        return;
    view->setTrayCaption(TrayEntry::Talk, QStringLiteral("Talk"));
    view->setTrayCaption(TrayEntry::Pause, QStringLiteral("Pause"));
    SetVisible({TrayEntry::Stop, TrayEntry::SeparatorSC, TrayEntry::PUSpellCheck, TrayEntry::Separator1,
                TrayEntry::Options, TrayEntry::Separator3, TrayEntry::Cancel, TrayEntry::SeparatorEnd,
                TrayEntry::Close},
               true);
    ShowStoreRows();
    const bool enabled = !view->spellClipMode();
    view->setTrayEntryEnabled(TrayEntry::Talk, enabled);
    view->setTrayEntryEnabled(TrayEntry::Pause, enabled);
    g_form = kNormal;
}

void ShortenPopUp2()
{
    ClipView *view = clipView();
    if (!view)
        return;
    view->setTrayEntryVisible(TrayEntry::Talk, false);
    view->setTrayEntryEnabled(TrayEntry::Pause, true);
    view->setTrayEntryEnabled(TrayEntry::Stop, true);
    SetVisible({TrayEntry::SeparatorSC, TrayEntry::PUSpellCheck, TrayEntry::Separator1, TrayEntry::Options,
                TrayEntry::Separator2, TrayEntry::ClipboardBar, TrayEntry::ClipStored, TrayEntry::SeparatorEnd,
                TrayEntry::Close},
               false);
    g_form = kShortened2;
}

void RestorePopUp2()
{
    ClipView *view = clipView();
    if (!view)
        return;
    SetVisible({TrayEntry::Talk, TrayEntry::SeparatorSC, TrayEntry::PUSpellCheck, TrayEntry::Separator1,
                TrayEntry::Options, TrayEntry::SeparatorEnd, TrayEntry::Close},
               true);
    ShowStoreRows();
    const bool enabled = !view->spellClipMode();
    view->setTrayEntryEnabled(TrayEntry::Pause, enabled);
    view->setTrayEntryEnabled(TrayEntry::Stop, enabled);
    g_form = kNormal;
}

void RestoreTrayMenu()
{
    if (g_form == kShortened)
        RestorePopUp();
    else if (g_form == kShortened2)
        RestorePopUp2();
}

int TrayMenuForm() { return g_form; }

} // namespace reader
