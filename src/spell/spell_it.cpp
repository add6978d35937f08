#include "spell/spell_it.h"

#include "platform/services.h"
#include "reader/clip_store.h"
#include "reader/text_box.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/failure_report.h"
#include "shell/on_top_message.h"
#include "spell/dictionary_choice.h"
#include "spell/spell_check.h"
#include "spell/spell_state.h"
#include "spell/word_lookup.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <stdexcept>

Q_LOGGING_CATEGORY(lcSpellWalk, "sonamark.spell.walk", QtWarningMsg)

namespace spell {

namespace {

constexpr double kSettleSeconds = 0.2;  // Form_Load's pause before the first walk
constexpr qint64 kYieldIntervalMs = 20;  // the walk lets events run this often
const QString kAppTitle = QStringLiteral("Sonamark");

// 1-based position of the first blank at or behind the 1-based position from; 0: none.
qsizetype BlankFrom(const QString &text, qsizetype from)
{
    const qsizetype i = text.indexOf(QLatin1Char(' '), from - 1);
    return i < 0 ? 0 : i + 1;
}

// The first line feed at or behind a position, remembered: the walk asks at every word
// and the answer only changes when the walk passes it. A line end here is "\n" alone or
// the end of CR LF.
class LineFeeds {
public:
    explicit LineFeeds(const QString &text) : m_text(text) {}
    bool anyFrom(qsizetype from)
    {
        // The answer for an earlier position still holds when no line feed lies between.
        if (m_askedFrom > 0 && from >= m_askedFrom && (m_found == 0 || m_found >= from))
            return m_found != 0;
        const qsizetype i = m_text.indexOf(QLatin1Char('\n'), from - 1);
        m_found = i < 0 ? 0 : i + 1;
        m_askedFrom = from;
        return m_found != 0;
    }

private:
    const QString &m_text;
    qsizetype m_askedFrom = 0;  // the position last asked about; 0: none yet
    qsizetype m_found = 0;      // 1-based position of the line feed found then; 0: none
};

// A letter of any alphabet, where the upper-cased character is tested against "A" to "Z".
bool IsLetter(QChar c) { return c.toUpper().isLetter(); }

platform::SpellChecker &Checker()
{
    platform::SpellChecker *checker = platform::services().spell;
    if (!checker)
        throw std::runtime_error("no spell checker");
    return *checker;
}

} // namespace

SpellIt::SpellIt(SpellView &view) : m_view(view), m_yieldIntervalMs(kYieldIntervalMs) {}

void SpellIt::Form_Load()
{
    shell::AppState &app = shell::app();
    SpellState &s = spellState();
    ++app.ChildFormDepth;
    s.SpellDone = false;
    s.SpellCancelled = false;
    m_noDictionary = false;
    m_closing = false;
    // A word processor's running instance could be disturbed by the original's checker;
    // nothing here is shared with another program, so there is nothing to ask.
    QString error;
    const QString language = UseChosenDictionary(&error);
    if (language.isEmpty()) {
        m_closing = true;
        shell::MsgBoxOT(error, 0, kAppTitle);
        s.SpellCancelled = true;
        m_noDictionary = true;
        m_view.unload();
        return;
    }
    m_view.setDictionary(DictionaryDisplayName(language));
    s.SpellChanged = false;
    resetWordList();
    txtSpell_Change(m_changeTo);
    m_view.setStartEnabled(true);
    restartText();
    shell::Delay(kSettleSeconds);
    m_view.startTimer1();
}

void SpellIt::Form_Unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    shell::AppState &app = shell::app();
    if (app.ChildFormDepth > 0)
        --app.ChildFormDepth;
    // The dictionary stays loaded in the checker for the next run.
    m_closing = true;
    spellState().SpellDone = true;
}

void SpellIt::Timer1_Timer() { CheckWords(); }

void SpellIt::restartText()
{
    m_text.clear();
    m_view.showText(m_text);
    m_view.processEvents();
    m_position = 0;
    m_view.setFound(QString());
    loadText();
}

void SpellIt::loadText()
{
    // SelText = SpellText on an empty box: the caret ends behind the text.
    m_text = spellState().SpellText;
    m_view.showText(m_text);
    select(m_text.size(), 0);
}

void SpellIt::resetWordList()
{
    m_wordList = kCommonWords;
    m_wordList << QString();
    m_seen.clear();
    for (const QString &w : kCommonWords)
        ++m_seen[w];
}

void SpellIt::select(qsizetype start, qsizetype length)
{
    m_selStart = qBound<qsizetype>(0, start, m_text.size());
    m_selLength = qBound<qsizetype>(0, length, m_text.size() - m_selStart);
    m_view.showSelection(m_selStart, m_selLength);
}

void SpellIt::CheckWords()
{
    shell::Routine routine("(Form) frmSpellit::Sub CheckWords");
    if (m_closing || m_text.isEmpty() || m_walking)
        return;
    m_walking = true;
    struct Leave {
        SpellIt *self;
        ~Leave()
        {
            self->m_walking = false;
            self->m_view.setBusy(false);
        }
    } leave{this};
    m_view.setBusy(true);

    const QString &t = m_text;
    LineFeeds lineFeeds(t);
    if (m_position == 0)
        m_position = 1;
    bool finished = false;
    bool stopped = false;
    qsizetype start = 0, next = 0;
    QString word;
    if (BlankFrom(t, m_position) == 0 && !lineFeeds.anyFrom(m_position)) {
        finished = true;
    } else {
        QElapsedTimer clock;
        clock.start();
        while (BlankFrom(t, m_position) > 0 || lineFeeds.anyFrom(m_position)) {
            // The blank in front of a word belongs to it from the second word on.
            if (m_position == 1)
                start = t.at(0) != QLatin1Char(' ') ? 1 : BlankFrom(t, 1) + 1;
            else
                start = BlankFrom(t, m_position);
            if (start == 0) {
                finished = true;  // only line ends are left
                break;
            }
            // Words are cut at blanks only; a line end inside one is looked up with it.
            next = BlankFrom(t, start + 1);
            if (next == 0) {
                next = t.size() + 1;
                finished = true;
            }
            word = t.mid(start - 1, next - start);
            FixWord(start, word);
            if (!word.trimmed().isEmpty()) {
                const int result = GetSuggestions(word);
                if (result >= 1 && !m_rows.isEmpty()) {
                    stopped = true;
                    break;
                }
                if (result < -1)
                    return;
            }
            if (finished)
                break;
            // On from the blank that ends this word: it leads the next one.
            m_position = next;
            word.clear();
            if (clock.elapsed() >= m_yieldIntervalMs) {
                m_view.processEvents();
                clock.restart();
                if (m_closing)
                    return;
            }
        }
    }
    if (!stopped) {
        finish(finished);
        return;
    }
    m_view.setFound(word);
    // The first word carries no blank, so its selection starts at start itself (at 0,
    // unless the text begins with blanks); later words drop their leading blank.
    if (m_position == 1)
        select(start - 1, word.size() + m_hotKey.size());
    else
        select(start, word.size() + m_hotKey.size() - 1);
    m_position = next - 1;
}

void SpellIt::finish(bool finished)
{
    SpellState &s = spellState();
    if (!finished && !s.SpellChanged)
        return;  // the window stays open for the user to cancel
    m_view.setBusy(false);
    if (!s.SpellCommit) {
        if (platform::Clipboard *clipboard = platform::services().clipboard) {
            clipboard->clear();
            clipboard->setText(m_text);
        }
        reader::Add2Clips(m_text);
        shell::MsgBoxOT(QStringLiteral("Spell check completed. Changes have been copied to the clipboard."), 0,
                        kSpellCheckTitle);
    } else {
        shell::MsgBoxOT(QStringLiteral("Spell check completed. Commit the changes?"), 1, kSpellCheckTitle);
        if (shell::app().MsgResult == shell::MsgYes)
            commitToReader();
        else
            s.SpellCancelled = true;
    }
    m_view.unload();
    m_view.processEvents();
}

void SpellIt::commitToReader()
{
    reader::TextBox *box = reader::textBox();
    if (!box)
        return;
    shell::AppState &app = shell::app();
    if (box->selLength() == 0) {
        box->rewriteText(m_text);
        if (!app.CurrentFile.isEmpty())
            app.TextDirty = true;
        return;
    }
    const int begin = box->selStart();
    box->replaceSelection(m_text);
    const int end = box->selStart();
    box->select(begin, end - begin);
}

void SpellIt::FixWord(qsizetype &start, QString &word)
{
    if (word.isEmpty())
        return;
    m_hotKey.clear();
    const qsizetype amp = word.indexOf(QLatin1Char('&'));
    if (amp >= 0)
        m_hotKey = word.mid(amp + 1, 1);
    while (!word.isEmpty() && !IsLetter(word.back()))
        word.chop(1);
    if (word.isEmpty())
        return;
    // Tests the last character, as the loop above: it never runs after it, and the word
    // keeps its leading blank. The selection arithmetic of CheckWords relies on that.
    while (!word.isEmpty() && !IsLetter(word.back())) {
        word.remove(0, 1);
        ++start;
    }
    if (word.isEmpty())
        return;
    if (m_seen.contains(word)) {
        word.clear();
        return;
    }
    m_wordList.back() = word;
    m_wordList << QString();
    ++m_seen[word];
}

int SpellIt::GetSuggestions(QString &word)
{
    clearRows();
    setChangeTo(QString());
    int result = 0;
    try {
        if (word.contains(QLatin1String("atv")))
            spellState().SpellAtv = true;
        RemoveHotKey(word);
        platform::SpellChecker &checker = Checker();
        // The suggestions and, when there are none, whether the word is right: one
        // look-up answers both questions.
        const StepLookup lookup = LookUpStep(checker, word);
        const QStringList &suggestions = lookup.suggestions;
        if (word.contains(QLatin1String("~-")))
            return 0;
        result = int(suggestions.size());
        if (result < 1) {
            if (!lookup.allKnown) {
                result = 1;
                addRow(kNoSuggestion);
                setChangeTo(word.startsWith(QLatin1Char(' ')) ? word.mid(1) : word);
                m_view.selectChangeTo();
                m_rowsEnabled = false;
                m_view.setSuggestionsEnabled(false);
            } else {
                result = -1;
            }
        } else {
            for (const QString &row : suggestions)
                addRow(AddHotKey(row));
            m_rowsEnabled = true;
            m_view.setSuggestionsEnabled(true);
        }
        if (!m_rows.isEmpty() && m_rowsEnabled) {
            m_view.selectSuggestion(0);
            lstCorrect_Click(0);
        }
    } catch (const std::exception &e) {
        qCWarning(lcSpellWalk) << "look-up failed:" << e.what();
        result = -1;
    }
    return result;
}

QString SpellIt::AddHotKey(const QString &text) const
{
    if (m_hotKey.isEmpty())
        return text;
    const qsizetype at = text.indexOf(m_hotKey);
    if (at < 0)
        return text;
    QString out = text;
    out.insert(at, QLatin1Char('&'));
    return out;
}

void SpellIt::RemoveHotKey(QString &word) const
{
    if (m_hotKey.isEmpty())
        return;
    const qsizetype amp = word.indexOf(QLatin1Char('&'));
    if (amp >= 0)
        word.remove(amp, 1);
}

void SpellIt::cmdChange_Click()
{
    if (m_walking || m_closing)
        return;
    const QString old = selText();
    for (qsizetype i = 0; i + 1 < m_wordList.size(); ++i) {
        if (m_wordList.at(i) == old && !old.isEmpty()) {
            if (--m_seen[old] <= 0)
                m_seen.remove(old);
            m_wordList[i].clear();
            break;
        }
    }
    const QString with = m_changeTo;
    const qsizetype at = m_selStart;
    m_text.replace(at, m_selLength, with);
    m_view.replaceText(at, m_selLength, with);
    // The search position follows the change in length, so that a shorter word does not
    // carry the walk past the next one.
    if (m_position > at)
        m_position = qMax<qsizetype>(1, m_position + with.size() - old.size());
    select(at + with.size(), 0);
    spellState().SpellChanged = true;
    CheckWords();
}

void SpellIt::cmdIgnore_Click()
{
    if (m_walking || m_closing)
        return;
    CheckWords();
}

void SpellIt::cmdStart_Click()
{
    if (m_walking || m_closing)
        return;
    m_view.setStartEnabled(false);
    restartText();
    CheckWords();
}

void SpellIt::cmdCancel_Click()
{
    spellState().SpellCancelled = true;
    m_view.unload();
}

void SpellIt::lstCorrect_Click(int row)
{
    if (row < 0 || row >= m_rows.size() || m_rows.at(row) == kNoSuggestion)
        return;
    setChangeTo(m_rows.at(row));
}

void SpellIt::txtSpell_Change(const QString &text)
{
    m_changeTo = text;
    m_view.setChangeEnabled(!text.isEmpty());
    m_view.setIgnoreEnabled(!text.isEmpty());
}

void SpellIt::setChangeTo(const QString &text)
{
    m_view.setChangeTo(text);
    txtSpell_Change(text);
}

void SpellIt::addRow(const QString &row)
{
    m_rows << row;
    m_view.addSuggestion(row);
}

void SpellIt::clearRows()
{
    m_rows.clear();
    m_view.clearSuggestions();
}

} // namespace spell
