#include "reader/clip_store.h"

#include "macro/number_format.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/on_top_message.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcClips, "sonamark.clips", QtWarningMsg)

namespace reader {

namespace {

constexpr double kCopiedNoticeSeconds = 2;
constexpr int kSampleDivisions = 10;  // about ten samples across and down a picture
const QString kClearTitle = QStringLiteral("Clear Clips");

ClipView *g_view = nullptr;

void ProcessEvents()
{
    if (g_view)
        g_view->processEvents();
}

platform::Clipboard *Clipboard() { return platform::services().clipboard; }

// The clipboard now holds what the user picked: a notice when the monitor is off,
// nothing when it is on (the monitor reads it).
void CopiedNotice(bool monitoring)
{
    if (monitoring)
        return;
    shell::app().PopupText = QStringLiteral("Copied To Clipboard");
    platform::MessageWindow *window = platform::services().messages;
    if (window)
        window->showPopup(shell::app().PopupText);
    ProcessEvents();
    shell::Delay(kCopiedNoticeSeconds);
    if (window)
        window->hidePopup();
}

void CopiedStatus(int index)
{
    if (g_view)
        g_view->setPanel1(QString::number(index + 1) + QStringLiteral(" was copied to the clipboard."));
}

bool PutClip(int index)
{
    const ClipStoreState &s = clipStore();
    if (index < 0 || index >= s.ClipCount)
        return false;
    Clipboard()->clear();
    Clipboard()->setText(s.ClipStore[size_t(index)]);
    return true;
}

bool PutPic(int index)
{
    const ClipStoreState &s = clipStore();
    if (index < 0 || index >= s.PicCount)
        return false;
    Clipboard()->clear();
    Clipboard()->setPicture(s.ClipPic[size_t(s.PicStore[size_t(index)])]);
    return true;
}

int SampleStep(int size) { return qMax(1, int(macro::RoundEven(double(size) / kSampleDivisions))); }

bool SamePixels(const platform::Picture &candidate, const platform::Picture &stored, int w, int h)
{
    const int stepX = SampleStep(w);
    const int stepY = SampleStep(h);
    for (int x = 0; x <= w; x += stepX)
        for (int y = 0; y <= h; y += stepY)
            if (candidate.pixel(x, y) != stored.pixel(x, y))
                return false;
    return true;
}

bool Usable(const platform::PicturePtr &p) { return p && !p->isEmpty(); }

// Hides every picture row and forgets the pictures.
void DropPictures()
{
    ClipStoreState &s = clipStore();
    s.PicCount = 0;
    s.PicStore.fill(0);
    for (platform::PicturePtr &holder : s.ClipPic)
        holder.reset();
    s.HKClipPic.reset();
    if (!g_view)
        return;
    for (int i = 0; i < kMaxClips; ++i)
        g_view->setPicRow(i, QString(), false);
    g_view->setPicCountRow(PicCountCaption(0), false);
}

void SetStoreBarsVisible(bool visible)
{
    g_view->setTrayEntryVisible(TrayEntry::Separator2, visible);
    g_view->setTrayEntryVisible(TrayEntry::ClipboardBar, visible);
}

} // namespace

ClipStoreState &clipStore()
{
    static ClipStoreState state;
    return state;
}

void SetClipView(ClipView *view) { g_view = view; }
ClipView *clipView() { return g_view; }

QString ClipCaption(int row, const QString &clip)
{
    const QString quote = QStringLiteral("\"");
    const QString shown = clip.size() <= kWholeCaptionLimit
        ? clip
        : clip.left(kCaptionEndLength) + QStringLiteral("...") + clip.right(kCaptionEndLength);
    return QString::number(row + 1) + QStringLiteral(". ") + quote + shown + quote;
}

QString PicCaption(int row, int width, int height)
{
    return QStringLiteral("Pic ") + QString::number(row + 1) + QStringLiteral(" (")
        + macro::FormatNumber(width, "#####") + QLatin1Char('x') + macro::FormatNumber(height, "#####")
        + QLatin1Char(')');
}

QString ClipCountCaption(int count)
{
    return count == 1 ? QStringLiteral("1 Clip Stored") : QString::number(count) + QStringLiteral(" Clips Stored");
}

QString PicCountCaption(int count)
{
    return count == 1 ? QStringLiteral("1 Pic Stored") : QString::number(count) + QStringLiteral(" Pics Stored");
}

bool IsInClipStore(const QString &text)
{
    const ClipStoreState &s = clipStore();
    for (int i = 0; i < s.ClipCount; ++i) {
        const QString &stored = s.ClipStore[size_t(i)];
        // The first two characters are a cheap filter before the whole compare.
        if (text.size() >= 2 && QStringView(text).left(2) != QStringView(stored).left(2))
            continue;
        if (text == stored)
            return true;
    }
    return false;
}

bool IsInPicClipStore()
{
    const ClipStoreState &s = clipStore();
    if (!Usable(s.HKClipPic))
        return false;
    const platform::Picture &candidate = *s.HKClipPic;
    const int w = candidate.width();
    const int h = candidate.height();
    bool sizeSeen = false;
    for (int i = 0; i < s.PicCount && !sizeSeen; ++i) {
        const platform::PicturePtr &stored = s.ClipPic[size_t(s.PicStore[size_t(i)])];
        sizeSeen = Usable(stored) && stored->width() == w && stored->height() == h;
    }
    if (!sizeSeen)
        return false;
    // As designed, the sample pass does not look at sizes again.
    for (int i = 0; i < s.PicCount; ++i) {
        const platform::PicturePtr &stored = s.ClipPic[size_t(s.PicStore[size_t(i)])];
        if (Usable(stored) && SamePixels(candidate, *stored, w, h))
            return true;
    }
    return false;
}

void Add2Clips(const QString &text)
{
    if (IsInClipStore(text))
        return;
    ClipStoreState &s = clipStore();
    if (s.ClipCount < kMaxClips)
        ++s.ClipCount;
    std::array<QString, kMaxClips> order;
    order[0] = text;
    for (int i = 1; i < s.ClipCount; ++i)
        order[size_t(i)] = s.ClipStore[size_t(i - 1)];
    s.ClipStore = order;
    qCDebug(lcClips) << "text clip stored;" << s.ClipCount << "in store";
    if (g_view) {
        SetStoreBarsVisible(true);
        g_view->setTrayEntryVisible(TrayEntry::ClipStored, true);
        g_view->setClipCountRow(ClipCountCaption(s.ClipCount), true);
        for (int i = 0; i < s.ClipCount; ++i)
            g_view->setClipRow(i, ClipCaption(i, s.ClipStore[size_t(i)]), true);
    }
    ProcessEvents();
}

void AddPicClip(const platform::PicturePtr &picture)
{
    if (!Usable(picture))
        return;
    ClipStoreState &s = clipStore();
    s.HKClipPic = picture;
    if (IsInPicClipStore())
        return;
    int holder;
    if (s.PicCount == kMaxClips) {
        holder = s.PicStore[kMaxClips - 1];  // the oldest is overwritten
    } else {
        ++s.PicCount;
        holder = s.PicCount - 1;
    }
    s.ClipPic[size_t(holder)] = s.HKClipPic;
    if (s.PicCount > 1) {
        const std::array<int, kMaxClips> old = s.PicStore;
        for (int i = 1; i < s.PicCount; ++i)
            s.PicStore[size_t(i)] = old[size_t(i - 1)];
    }
    s.PicStore[0] = holder;
    qCDebug(lcClips) << "picture clip stored;" << s.PicCount << "in store";
    if (g_view) {
        SetStoreBarsVisible(true);
        g_view->setPicCountRow(PicCountCaption(s.PicCount), true);
        for (int i = 0; i < s.PicCount; ++i) {
            const platform::PicturePtr &p = s.ClipPic[size_t(s.PicStore[size_t(i)])];
            g_view->setPicRow(i, PicCaption(i, p->width(), p->height()), true);
        }
    }
    ProcessEvents();
}

void RefreshClips()
{
    const ClipStoreState &s = clipStore();
    if (!g_view)
        return;
    for (int i = 0; i < kMaxClips; ++i) {
        if (i >= s.ClipCount) {
            g_view->setClipRow(i, QString(), false);
            continue;
        }
        const QString &clip = s.ClipStore[size_t(i)];
        const QString shown = clip.size() > kWholeCaptionLimit ? clip.left(kWholeCaptionLimit) + QStringLiteral("...")
                                                               : clip;
        g_view->setClipRow(i, QString::number(i + 1) + QStringLiteral(". ") + shown, true);
    }
    g_view->setClipCountRow(ClipCountCaption(s.ClipCount), s.ClipCount > 0);
}

void mnuClipMRU_Click(int index, bool monitoring)
{
    if (PutClip(index))
        CopiedNotice(monitoring);
}

void mnuClipboardMRU_Click(int index)
{
    if (PutClip(index))
        CopiedStatus(index);
}

void mnuClipPicMRU_Click(int index, bool monitoring)
{
    if (PutPic(index))
        CopiedNotice(monitoring);
}

void mnuClipboardPicMRU_Click(int index)
{
    if (PutPic(index))
        CopiedStatus(index);
}

void mnuClipboardClearMultiClips_Click()
{
    ClipStoreState &s = clipStore();
    const bool clips = s.ClipCount > 0;
    const bool pics = s.PicCount > 0;
    if (!clips && !pics) {
        shell::MsgBoxOT(QStringLiteral("There are no clips to clear."), 0, kClearTitle);
        return;
    }
    const QString question = !pics ? QStringLiteral("Are you sure you want to clear ALL text clips?")
        : clips                    ? QStringLiteral("Are you sure you want to clear ALL text & picture clips?")
                                   : QStringLiteral("Are you sure you want to clear ALL picture clips?");
    shell::MsgBoxOT(question, 1, kClearTitle);
    if (shell::app().MsgResult != 1)
        return;
    Clipboard()->clear();
    s.ClipStore.fill(QString());
    s.ClipCount = 0;
    if (g_view) {
        for (int i = 0; i < kMaxClips; ++i)
            g_view->setClipRow(i, QString(), false);
        g_view->setClipCountRow(ClipCountCaption(0), false);
        g_view->setTrayEntryVisible(TrayEntry::ClipStored, false);
        SetStoreBarsVisible(false);
    }
    DropPictures();
}

void mnuClipboardEnablePics_Click(bool monitoring)
{
    if (!g_view)
        return;
    const bool on = !g_view->picsEnabled();
    g_view->setPicsEnabled(on);
    if (on) {
        if (!monitoring)
            g_view->setTimer5Enabled(true);
        return;
    }
    g_view->setTimer5Enabled(false);
    DropPictures();
    if (clipStore().ClipCount == 0)
        SetStoreBarsVisible(false);
}

} // namespace reader
