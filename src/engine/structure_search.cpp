#include "engine/structure_search.h"

#include "engine/run_state.h"
#include "macro/commands.h"

namespace engine {

namespace {

// Scans from line + step in direction step (+1 or -1). The counter goes up on opener
// and down on closer; a target found with the counter at 0 is the answer. A line that is
// both a target and a closer counts down only when it is not taken.
int scan(int line, int step, int opener, int target1, int target2, int closer)
{
    const macro::ActionList &actions = runState().Actions;
    const int count = static_cast<int>(actions.size());
    int depth = 0;
    for (int i = line + step; i >= 1 && i <= count; i += step) {
        const int command = actions[i - 1].Command;
        if (command == opener) {
            ++depth;
        } else if (command == target1 || command == target2) {
            if (depth == 0)
                return i;
            if (command == closer)
                --depth;
        } else if (command == closer) {
            --depth;
        }
    }
    return 0;
}

} // namespace

int GetENDLOOP(int line)
{
    return scan(line, 1, macro::CmdLOOP, macro::CmdENDLOOP, macro::CmdENDLOOP, macro::CmdENDLOOP);
}

int GetLOOP(int line)
{
    return scan(line, -1, macro::CmdENDLOOP, macro::CmdLOOP, macro::CmdLOOP, macro::CmdLOOP);
}

int GetENDIF(int line)
{
    return scan(line, 1, macro::CmdIF, macro::CmdENDIF, macro::CmdENDIF, macro::CmdENDIF);
}

int GetENDIForELSE(int line)
{
    return scan(line, 1, macro::CmdIF, macro::CmdENDIF, macro::CmdELSE, macro::CmdENDIF);
}

bool InsideLOOP(int line)
{
    const macro::ActionList &actions = runState().Actions;
    const int count = static_cast<int>(actions.size());
    int loop = 0;
    for (int i = qMin(line, count); i >= 1; --i) {
        if (actions[i - 1].Command == macro::CmdLOOP) {
            loop = i;
            break;
        }
    }
    if (loop == 0)
        return false;
    for (int i = loop + 1; i <= count; ++i)
        if (actions[i - 1].Command == macro::CmdENDLOOP)
            return i >= line;
    return false;
}

} // namespace engine
