#include "engine/run_hooks.h"

namespace engine {

namespace {
std::function<void(const QString &)> g_statusSink;
}

void ResetVariableTable() {}

bool NumberVariableValue(const QString &, double &) { return false; }

void ResetLoopSlots() {}

void CloseMacroFiles() {}

void ReleaseMacroMouseHook() {}

QString CheckWholeMacro(const QString &) { return {}; }

ReaderState SaveReaderState() { return {}; }

void SetStatusTextSink(std::function<void(const QString &)> sink) { g_statusSink = std::move(sink); }

void ShowStatusText(const QString &text)
{
    if (g_statusSink)
        g_statusSink(text);
}

} // namespace engine
