#include "shell/app_state.h"

namespace shell {

AppState &app()
{
    static AppState state;
    return state;
}

} // namespace shell
