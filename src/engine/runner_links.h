#pragma once
// The global hooks and the clipboard monitor sit below the interpreter and reach it only
// through the runners installed here.

namespace engine {

// Installs the interpreter as the macro runner of the hooks (whether a macro runs, Esc's
// abort, a hotkey's macro) and of the clipboard monitor (whether a macro runs, the
// clipboard command). Called once at start-up, before the hooks and timers serve events.
void ConnectRunner();

} // namespace engine
