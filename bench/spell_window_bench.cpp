// The spell window walking a long text on the real en_US dictionary: Ignore is pressed
// at every stop until the end, while a 1 ms timer records the longest gap between its
// ticks. Goal: no event-loop stall over 100 ms while the window walks.
//   spell_window_bench TEXT_FILE    (bench/spell/make_text.py --words 200000 makes one)
#include "platform/hunspell/hunspell_checker.h"
#include "platform/services.h"
#include "shell/legacy_text.h"
#include "shell/settings.h"
#include "spell/spell_state.h"
#include "ui/frm_spell_it.h"
#include "ui/guarded_application.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

namespace {

// Answers every message at once, as a user who has seen it before.
class QuietMessages : public platform::MessageWindow {
public:
    int showModal(const platform::MessageSpec &) override { return -1; }
    void showModeless(const platform::MessageSpec &) override {}
    void unload() override {}
    void showPopup(const QString &) override {}
    void hidePopup() override {}
};

} // namespace

int main(int argc, char **argv)
{
    ui::GuardedApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: spell_window_bench TEXT_FILE\n");
        return 2;
    }
    QFile in(QString::fromLocal8Bit(argv[1]));
    if (!in.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", argv[1]);
        return 2;
    }
    const QString text = shell::DecodeLegacyText(in.readAll());
    platform::HunspellChecker checker;
    QuietMessages messages;
    platform::Services services;
    services.spell = &checker;
    services.messages = &messages;
    platform::install(services);
    shell::settings().VoiceOpt = QStringLiteral("English (America)");
    spell::spellState().SpellText = text;
    spell::spellState().SpellCommit = true;

    ui::frmSpellIt window;
    QElapsedTimer sinceTick, total, loading;
    qint64 worstGap = 0;
    int stops = 0;
    bool walking = false;
    QTimer probe;
    probe.setInterval(1);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        if (walking)
            worstGap = qMax(worstGap, sinceTick.elapsed());
        sinceTick.restart();
        if (!window.isVisible() || window.logic().closing())
            return;
        if (!walking) {
            walking = true;  // on the screen: the first walk is about to start
            total.start();
        }
        if (!window.logic().walking() && window.cmdIgnore->isEnabled() && !window.logic().suggestionRows().isEmpty()) {
            ++stops;
            window.cmdIgnore->click();
        }
    });
    sinceTick.start();
    loading.start();
    probe.start();
    window.showModal();
    const qint64 walkMs = total.isValid() ? total.elapsed() : 0;
    std::printf("spell window: %lld words in %lld characters; %d stops; walk %.2f s (load and walk %.2f s); "
                "longest event-loop stall while walking %lld ms (goal < 100)\n",
                static_cast<long long>(text.split(QLatin1Char(' '), Qt::SkipEmptyParts).size()),
                static_cast<long long>(text.size()), stops, walkMs / 1000.0, loading.elapsed() / 1000.0,
                static_cast<long long>(worstGap));
    platform::install({});
    return worstGap < 100 ? 0 : 1;
}
