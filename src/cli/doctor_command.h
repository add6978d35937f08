#pragma once
// sonamark-cli doctor: checks what the program needs on this machine and says, in plain
// words, what works and how to fix what does not.
#include "platform/system_probes.h"

#include <QStringList>
#include <QTextStream>

namespace cli {

inline constexpr const char *kDoctorCommand = "doctor";

// args without the command word. 0 everything needed works, 1 something is missing,
// 2 bad arguments. The report goes to out.
int RunDoctor(const QStringList &args, platform::SystemProbes &probes, QTextStream &out, QTextStream &err);

QString DoctorUsageText();

} // namespace cli
