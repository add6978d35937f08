#pragma once
// The word walk of the spell window frmSpellIt: it goes through a working copy of
// SpellText word by word, stops at each word the dictionary does not know with its
// suggestions, and at the end puts the result into the reader's text box or onto the
// clipboard. The window forwards its events here and shows what SpellView is told.
#include "spell/spell_view.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace spell {

inline const QString kNoSuggestion = QStringLiteral("(No Suggestion)");
// The common words that are never looked up, in their order in the word list.
inline const QStringList kCommonWords = {
    QStringLiteral("a"),  QStringLiteral("in"),   QStringLiteral("the"), QStringLiteral("it"),
    QStringLiteral("with"), QStringLiteral("for"), QStringLiteral("is"),  QStringLiteral("i"),
    QStringLiteral("of"), QStringLiteral("to"),   QStringLiteral("get"), QStringLiteral("be"),
    QStringLiteral("not")};

class SpellIt {
public:
    explicit SpellIt(SpellView &view);

    void Form_Load();
    void Form_Unload();
    void Timer1_Timer();
    void CheckWords();
    // start: 1-based position of word in the text; both may change.
    void FixWord(qsizetype &start, QString &word);
    // 1 or more: the word is not known (its rows are in lstCorrect); -1 or 0: go on.
    int GetSuggestions(QString &word);
    QString AddHotKey(const QString &text) const;
    void RemoveHotKey(QString &word) const;

    void cmdChange_Click();  // also a double click on a row of lstCorrect
    void cmdIgnore_Click();
    void cmdStart_Click();
    void cmdCancel_Click();
    void lstCorrect_Click(int row);
    // The user typed in txtSpell.
    void txtSpell_Change(const QString &text);

    // What the window holds, for the window and for tests.
    const QString &text() const { return m_text; }  // rtfSpell.Text
    qsizetype selStart() const { return m_selStart; }
    qsizetype selLength() const { return m_selLength; }
    QString selText() const { return m_text.mid(m_selStart, m_selLength); }
    const QStringList &suggestionRows() const { return m_rows; }
    const QString &changeTo() const { return m_changeTo; }
    const QStringList &wordList() const { return m_wordList; }
    const QString &hotKeyCharacter() const { return m_hotKey; }
    qsizetype searchPosition() const { return m_position; }
    bool closing() const { return m_closing; }
    bool walking() const { return m_walking; }
    // How often a long walk lets events run (0: after every word).
    void setYieldIntervalMs(qint64 ms) { m_yieldIntervalMs = ms; }

private:
    void resetWordList();
    void setChangeTo(const QString &text);
    void addRow(const QString &row);
    void clearRows();
    void select(qsizetype start, qsizetype length);
    void loadText();  // rtfSpell takes SpellText
    // The walk from the top: rtfSpell emptied, then given SpellText, nothing found yet.
    void restartText();
    // Steps 10 to 13 of the walk: the end of the text.
    void finish(bool finished);
    void commitToReader();

    SpellView &m_view;
    QString m_text;           // rtfSpell's text
    qsizetype m_selStart = 0;  // rtfSpell's selection, 0-based
    qsizetype m_selLength = 0;
    qsizetype m_position = 0;  // search position, 1-based; 0: not begun
    QStringList m_wordList;    // the last entry is always the free one
    QHash<QString, int> m_seen;  // the words of m_wordList but its last entry, counted
    QString m_hotKey;          // hot-key character of the word at hand
    QStringList m_rows;        // lstCorrect
    bool m_rowsEnabled = false;
    QString m_changeTo;        // txtSpell
    bool m_closing = false;
    bool m_noDictionary = false;
    bool m_walking = false;    // CheckWords is under way (it lets events run)
    bool m_unloaded = false;
    qint64 m_yieldIntervalMs;
};

} // namespace spell
