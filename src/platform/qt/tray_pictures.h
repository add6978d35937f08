#pragma once
#include "platform/tray_icon.h"

#include <QIcon>

namespace platform {

// The program's pictures: idle, monitoring for speech, monitoring for spell check, macro.
QIcon TrayPictureIcon(TrayPicture picture);
// The program's own icon (windows and the launcher).
QIcon ProgramIcon();

} // namespace platform
