#pragma once
// The logic of frmExceptions, the dialog that edits the pronunciation exceptions: its two
// lists (cmbWords sorted, cmbChanges row by row beside it), Apply, Delete, the check of
// "Add New Exception" and trying a spelling out by ear.
#include <QString>
#include <QStringList>

namespace reader {

// The two lists of the dialog: row i of each belongs together.
struct ExceptionLists {
    QStringList words;    // cmbWords, sorted without regard to case
    QStringList changes;  // cmbChanges
};

// The lists for the exceptions as they stand.
ExceptionLists BuildExceptionLists();

// cmdApply_Click: stores the pair (a word already in the list, compared without regard
// to case and blanks around it, takes the new change; a new word is added and the list is
// stored sorted by word) and saves the file. Returns the pair's row in the rebuilt lists,
// or -1 when nothing was stored (a field was empty).
int ApplyException(const QString &word, const QString &change);

// cmdDelete_Click: row is the selected row of cmbWords (-1 none). Asks before removing;
// true when the pair was removed and the file saved.
bool DeleteException(int row);

// mnuExceptionsNew_Click's check of the selected text: false when the word is already in
// the list and the user does not want to edit it.
bool ConfirmNewException(const QString &selection);

// cmdSpeakWord_Click and cmdSpeakChange_Click: speaks text in the voice of the reader's
// row listIndex, without moving the reader's highlight.
void SpeakTrial(const QString &text, int listIndex);

inline constexpr const char *kExceptionsTitle = "Sonamark - Word Exceptions";

} // namespace reader
