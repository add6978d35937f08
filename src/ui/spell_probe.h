#pragma once

namespace ui {

// True when at least one Hunspell dictionary is installed on the system.
bool DictionaryInstalled();

} // namespace ui
