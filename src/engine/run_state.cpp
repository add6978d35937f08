#include "engine/run_state.h"

#include <QCoreApplication>
#include <stdexcept>

namespace engine {

macro::ActionLine &MacroRunState::action(int line)
{
    if (line < 1 || line > Actions.size())
        throw std::out_of_range("macro line " + std::to_string(line) + " outside the action list");
    return Actions[line - 1];
}

MacroRunState &runState()
{
    static MacroRunState state;
    return state;
}

void RequestAbort() { runState().AbortRequested = true; }

void DoEvents()
{
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
}

} // namespace engine
