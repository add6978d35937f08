#pragma once
// frmSpellIt ("Spell Check"): the spell window. It shows the word walk of
// spell::SpellIt and forwards its buttons, list and "Change To" box to it.
#include "spell/spell_it.h"
#include "spell/spell_view.h"

#include <QDialog>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTimer;

namespace ui {

class frmSpellIt : public QDialog, public spell::SpellView {
    Q_OBJECT
public:
    explicit frmSpellIt(QWidget *parent = nullptr);
    ~frmSpellIt() override;

    // Form_Load, then the window modally until it unloads.
    void showModal();
    spell::SpellIt &logic() { return m_logic; }
    bool unloaded() const { return m_unloaded; }

    QPlainTextEdit *rtfSpell = nullptr;  // the working copy; the user does not edit it
    QLineEdit *txtSpell = nullptr;       // "Change To"
    QListWidget *lstCorrect = nullptr;   // "Suggestions"
    QLabel *lblFind = nullptr;           // "Not In Dictionary"
    QLabel *lblDictionary = nullptr;     // the dictionary in use
    QPushButton *cmdChange = nullptr;
    QPushButton *cmdIgnore = nullptr;
    QPushButton *cmdCancel = nullptr;
    QPushButton *cmdStart = nullptr;
    QTimer *Timer1 = nullptr;

    // SpellView.
    void showText(const QString &text) override;
    void replaceText(qsizetype start, qsizetype length, const QString &with) override;
    void showSelection(qsizetype selStart, qsizetype selLength) override;
    void setFound(const QString &word) override;
    void clearSuggestions() override;
    void addSuggestion(const QString &row) override;
    void setSuggestionsEnabled(bool enabled) override;
    void selectSuggestion(int row) override;
    void setChangeTo(const QString &text) override;
    void selectChangeTo() override;
    void setChangeEnabled(bool enabled) override;
    void setIgnoreEnabled(bool enabled) override;
    void setStartEnabled(bool enabled) override;
    void setDictionary(const QString &name) override;
    void setBusy(bool busy) override;
    void startTimer1() override;
    void processEvents() override;
    void unload() override;

protected:
    // Esc and the window's close box cancel.
    void reject() override;

private:
    enum Control { Change, Ignore, Start, List, ControlCount };
    void want(Control control, bool enabled);
    void applyEnabled();
    // rtfSpell shows line ends as one character; the walk's text may hold CR LF.
    qsizetype shownPosition(qsizetype position) const;
    void indexLineEnds(const QString &text);

    spell::SpellIt m_logic;
    std::vector<qsizetype> m_crlf;  // positions of the CR of each CR LF in the walk's text
    bool m_wanted[ControlCount] = {false, false, true, false};
    bool m_busy = false;
    bool m_unloaded = false;
};

// Installs the window as the spell checker's window opener (spell::SetSpellWindowOpener).
void InstallSpellWindow();

} // namespace ui
