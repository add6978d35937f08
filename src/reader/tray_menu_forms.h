#pragma once
// The two shortened forms of the tray menu and their way back to the normal form.
#include <QString>

namespace reader {

// Two rows: caption (Talk's entry) and "Monitor the clipboard.." (Pause's entry).
void ShortenPopUp(const QString &caption);
void RestorePopUp();
// Speech under way: Pause, Stop and Cancel only.
void ShortenPopUp2();
void RestorePopUp2();
// Puts the normal form back after the menu closed without a choice (a no-op when the
// menu is in its normal form).
void RestoreTrayMenu();
// Which form the tray menu is in: 0 normal, 1 ShortenPopUp, 2 ShortenPopUp2.
int TrayMenuForm();

} // namespace reader
