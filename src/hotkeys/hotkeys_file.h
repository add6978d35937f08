#pragma once
// The Hotkeys file: the one persistent form of the hotkeys table.
//
// Line 1 is the header "<Hotkeys Macros v1.2>" in double quotes; then one record per
// macro: Active (#TRUE#/#FALSE#), "Keys", "Description", "Code". Code may run over
// several lines; its double quotes are stored as U+00E0 since a field cannot hold one.
// Written as UTF-8 with CR LF; read as UTF-8 or, failing that, Windows-1252.
#include <QByteArray>
#include <QString>

namespace hotkeys {

inline const QString kHotkeysHeader = QStringLiteral("<Hotkeys Macros v1.2>");

// Reads HotkeysFileName into the table. "" on success, otherwise one of the messages
// "No Hotkeys file has been defined", "This Hotkeys file does not exist",
// "This is not a Hotkeys file", "Error reading Hotkeys file", "Hotkeys file does not exist".
QString GetHotKeys();
// Writes the table to HotkeysFileName (atomically) and clears HotkeysDirty.
// False with an empty file name or on any write error.
bool UpdateHotkeyWordsFile();

// The file's bytes for the current table.
QByteArray FormatHotkeysFile();

} // namespace hotkeys
