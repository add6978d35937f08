#include "engine/runner_links.h"

#include "engine/clipboard_command.h"
#include "engine/run_state.h"
#include "engine/run_timer.h"
#include "hotkeys/input_hooks.h"
#include "reader/clipboard_monitor.h"

namespace engine {

namespace {

bool Running() { return runState().MacroRunning; }

} // namespace

void ConnectRunner()
{
    hotkeys::SetMacroRunner({Running, RequestAbort, ProcessHotkey});
    reader::SetMacroRunner({Running, PollClipboardCommand});
}

} // namespace engine
