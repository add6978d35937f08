#include "spell/spell_state.h"

namespace spell {

SpellState &spellState()
{
    static SpellState state;
    return state;
}

} // namespace spell
