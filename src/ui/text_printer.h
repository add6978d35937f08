#pragma once
// Printing the text box: the whole document or its selection, on a printer or into a
// PDF file.
#include "reader/text_box.h"

class QPrinter;
class QTextEdit;

namespace ui {

// Prints the box's selection (selectionOnly and something selected) or its whole text on
// a printer that is already set up. A printer that cannot be started, or a PDF file that
// could not be written, is a failure with the reason.
reader::PrintOutcome PrintTextBox(const QTextEdit *box, bool selectionOnly, QPrinter &printer);

} // namespace ui
