#pragma once
// Find and replace in the reader's text box: the box's Find, the start points, wrapping
// and the limits of frmFind, and FindText, which the main window's Find Next shares.
#include <QString>
#include <optional>

namespace search {

// Find option bits; they add up (0, 2, 4 or 6).
inline constexpr int kFindWholeWord = 2;
inline constexpr int kFindMatchCase = 4;
// Replace All goes on while its count is at most this: 1001 replacements at the most.
inline constexpr int kReplaceAllLimit = 1000;

inline constexpr const char *kStringNotFound = "String not found";

// The search texts that outlive the dialog.
struct FindState {
    QString FindText;      // the last search text, shared with the Edit menu
    bool FindOpen = false; // frmFind has been loaded
    void reset() { *this = FindState(); }
};
FindState &findState();

// The text box as find and replace use it: 0-based positions in text().
class FindTarget {
public:
    virtual ~FindTarget() = default;
    virtual QString text() const = 0;
    virtual int selStart() const = 0;
    virtual int selLength() const = 0;
    virtual QString selText() const = 0;
    // SelStart = start with SelLength = length.
    virtual void select(int start, int length) = 0;
    // SelText = text: the selection is replaced and the caret stands behind the new text.
    virtual void setSelText(const QString &text) = 0;
};

// The box's Find(what, start, end, options): the 0-based position of a hit or -1.
// Without end, from start forwards to the text's end. With end below start, backwards:
// the last hit that starts at end or later and ends at start or before. Otherwise a hit
// between start and end. Whole word: no letter, digit or "_" touches the hit.
int BoxFind(const QString &text, const QString &what, int start, std::optional<int> end, int options);

enum class FindDirection { All, Down, Up };
// cmbDirection's text: "All", "Down", anything else searches up.
FindDirection DirectionOf(const QString &text);
// The options of the two check boxes.
int FindOptions(bool wholeWord, bool matchCase);

// frmFind.FindText from step 3 on, for FindText (already set): a forward search starts
// one character behind the selection's start, "All" wraps once to character 1, "Up"
// searches from the selection's start back to 0. The hit or -1.
int FindTextFrom(const FindTarget &box, const QString &findText, FindDirection direction, int options);

// GetTextPtr(start, end, mode, options): the Replace All search from start itself,
// wrapping once to character 2 in every mode. Modes: 0 all, 1 down, 2 up.
int GetTextPtr(const FindTarget &box, const QString &findText, int &start, int &end, int &mode, int options);

// cmdReplace_Click step 4: when the selection is findText (letters in either case), it
// becomes replacement and stands selected. True when it replaced; an empty selection is
// never replaced, so that Replace with nothing selected only moves on.
bool ReplaceSelected(FindTarget &box, const QString &findText, const QString &replacement);

// cmdReplaceAll_Click steps 4 to 6: the count of replacements made.
int ReplaceAll(FindTarget &box, const QString &findText, const QString &replacement, FindDirection direction,
               int options);
// The report of Replace All for a count.
QString ReplaceAllReport(int count);

} // namespace search
