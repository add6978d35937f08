#pragma once
// The multi-clip store: the last five text clips and the last five pictures that passed
// through the clipboard, most recent first, and their rows in the "&Clipboard" menu and
// the tray menu. Memory only: nothing survives a restart.
#include "platform/clipboard.h"
#include "reader/clip_view.h"

#include <QString>
#include <array>

namespace reader {

inline constexpr int kMaxClips = 5;
inline constexpr int kWholeCaptionLimit = 20;   // longer clips are shown cut
inline constexpr int kCaptionEndLength = 10;    // characters kept each side of "..."

struct ClipStoreState {
    std::array<QString, kMaxClips> ClipStore;  // 0 is the newest
    int ClipCount = 0;
    std::array<int, kMaxClips> PicStore{};     // holder indexes, 0 the newest
    int PicCount = 0;
    std::array<platform::PicturePtr, kMaxClips> ClipPic;  // the picture holders
    platform::PicturePtr HKClipPic;            // the candidate picture

    void reset() { *this = ClipStoreState(); }
};

ClipStoreState &clipStore();

// The window the menus live in; nullptr detaches (tests, unload).
void SetClipView(ClipView *view);
ClipView *clipView();

// Caption of text clip row i: "1. \"short clip\"" or "1. \"first ten...last ten.\"".
QString ClipCaption(int row, const QString &clip);
// Caption of picture row i: "Pic 1 (64x48)".
QString PicCaption(int row, int width, int height);
// "1 Clip Stored", "2 Clips Stored"; "1 Pic Stored", "2 Pics Stored".
QString ClipCountCaption(int count);
QString PicCountCaption(int count);

bool IsInClipStore(const QString &text);
// Compares HKClipPic with the stored pictures: same size and the same pixels on a grid
// of about ten by ten samples.
bool IsInPicClipStore();
// Stores a new text clip on top (a repeat changes nothing) and updates both menus.
void Add2Clips(const QString &text);
// Timer5's work on a picture read from the clipboard: stores it on top unless it is
// already stored.
void AddPicClip(const platform::PicturePtr &picture);
// Rebuilds the text rows and the count rows from ClipStore and ClipCount after a macro
// changed a slot. Its captions are shorter: "1. " and at most 20 characters, then "...".
void RefreshClips();

// A text clip picked from the tray menu (mnuClipMRU_Click) or from the "&Clipboard"
// menu (mnuClipboardMRU_Click). monitoring: the monitor is on, so the clip is just left
// for it.
void mnuClipMRU_Click(int index, bool monitoring);
void mnuClipboardMRU_Click(int index);
void mnuClipPicMRU_Click(int index, bool monitoring);
void mnuClipboardPicMRU_Click(int index);
void mnuClipboardClearMultiClips_Click();
// Flips the check; monitoring decides whether Timer5 may run now.
void mnuClipboardEnablePics_Click(bool monitoring);

} // namespace reader
