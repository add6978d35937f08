#include "hotkeys/hook_state.h"

namespace hotkeys {

HookState &hookState()
{
    static HookState state;
    return state;
}

} // namespace hotkeys
