#include "reader/text_box.h"

namespace reader {

namespace {
TextBox *g_box = nullptr;
}

TextBox *textBox() { return g_box; }
void SetTextBox(TextBox *box) { g_box = box; }

} // namespace reader
