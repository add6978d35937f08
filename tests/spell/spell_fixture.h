#pragma once
// The word walk without a window: a spell view of plain fields, the real Hunspell
// dictionaries behind a counter of look-ups, a text box in memory and the fake services.
#include "fakes/fake_services.h"
#include "platform/hunspell/hunspell_checker.h"
#include "reader/clip_store.h"
#include "reader/memory_text_box.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/settings.h"
#include "spell/spell_it.h"
#include "spell/spell_state.h"

#include <QHash>
#include <functional>
#include <gtest/gtest.h>

// Counts what the logic asks the dictionary, word by word.
class CountingChecker : public platform::SpellChecker {
public:
    explicit CountingChecker(platform::SpellChecker &inner) : m_inner(inner) {}
    QHash<QString, int> checks, suggests;
    QStringList dictionaries() const override { return m_inner.dictionaries(); }
    bool useDictionary(const QString &l, QString *e) override { return m_inner.useDictionary(l, e); }
    QString dictionary() const override { return m_inner.dictionary(); }
    bool isCorrect(const QString &w) override
    {
        ++checks[w];
        return m_inner.isCorrect(w);
    }
    QStringList suggestions(const QString &w) override
    {
        ++suggests[w];
        return m_inner.suggestions(w);
    }
    int lookups() const
    {
        int n = 0;
        for (int c : checks)
            n += c;
        return n;
    }

private:
    platform::SpellChecker &m_inner;
};

class FakeSpellView : public spell::SpellView {
public:
    QString shown;             // rtfSpell
    qsizetype selStart = 0, selLength = 0;
    QString found;             // lblFind
    QStringList rows;          // lstCorrect
    bool rowsEnabled = false;
    int selectedRow = -1;
    QString changeTo;          // txtSpell
    bool changeEnabled = false, ignoreEnabled = false, startEnabled = false;
    QString dictionary;
    bool busy = false;
    int timerStarts = 0, eventPumps = 0, unloads = 0;
    std::function<void()> onProcessEvents;  // runs inside each DoEvents
    spell::SpellIt *logic = nullptr;        // told of the unload, as the window does

    void showText(const QString &t) override { shown = t; }
    void replaceText(qsizetype s, qsizetype l, const QString &w) override { shown.replace(s, l, w); }
    void showSelection(qsizetype s, qsizetype l) override { selStart = s; selLength = l; }
    void setFound(const QString &w) override { found = w; }
    void clearSuggestions() override { rows.clear(); selectedRow = -1; }
    void addSuggestion(const QString &r) override { rows << r; }
    void setSuggestionsEnabled(bool on) override { rowsEnabled = on; }
    void selectSuggestion(int r) override { selectedRow = r; }
    void setChangeTo(const QString &t) override { changeTo = t; }
    void selectChangeTo() override {}
    void setChangeEnabled(bool on) override { changeEnabled = on; }
    void setIgnoreEnabled(bool on) override { ignoreEnabled = on; }
    void setStartEnabled(bool on) override { startEnabled = on; }
    void setDictionary(const QString &n) override { dictionary = n; }
    void setBusy(bool on) override { busy = on; }
    void startTimer1() override { ++timerStarts; }
    void processEvents() override
    {
        ++eventPumps;
        if (onProcessEvents)
            onProcessEvents();
    }
    void unload() override
    {
        ++unloads;
        if (logic)
            logic->Form_Unload();
    }
    QString selected() const { return shown.mid(selStart, selLength); }
};

class SpellTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!hunspell.dictionaries().contains(QStringLiteral("en_US")))
            GTEST_SKIP() << "hunspell-en-us is not installed";
        platform::services().spell = &checker;
        shell::SetDelaySleeper([](int) {});
        shell::app().reset();
        shell::settings().VoiceOpt = QStringLiteral("English (America)");
        spell::spellState().reset();
        reader::clipStore().reset();
        reader::SetTextBox(&box);
        view.logic = &logic;
    }
    void TearDown() override
    {
        reader::SetTextBox(nullptr);
        shell::SetDelaySleeper(nullptr);
        shell::settings().VoiceOpt.clear();
    }

    // Opens the window on text as its Form_Load and Timer1 do; the walk stops at the
    // first unknown word or reaches the end.
    void open(const QString &text, bool commit = true)
    {
        spell::spellState().SpellText = text;
        spell::spellState().SpellCommit = commit;
        logic.Form_Load();
        logic.Timer1_Timer();
    }
    // Presses Ignore at every stop; the selected words in order.
    QStringList ignoreAll()
    {
        QStringList stops;
        for (int guard = 0; guard < 1000 && !logic.closing(); ++guard) {
            stops << view.selected();
            logic.cmdIgnore_Click();
        }
        return stops;
    }
    void changeTo(const QString &text)
    {
        view.changeTo = text;
        logic.txtSpell_Change(text);
        logic.cmdChange_Click();
    }

    fakes::FakeServices fakes;
    platform::HunspellChecker hunspell;
    CountingChecker checker{hunspell};
    reader::MemoryTextBox box;
    FakeSpellView view;
    spell::SpellIt logic{view};
};
