#include "reader/exceptions_editor.h"

#include "platform/services.h"
#include "reader/exceptions.h"
#include "reader/speech.h"
#include "shell/app_state.h"
#include "shell/on_top_message.h"

#include <algorithm>
#include <numeric>

namespace reader {

namespace {

const char *const kRemoveTitle = "Remove Exception";

// Positions of the pairs in the order of the sorted word list.
QList<int> sortedOrder(const QList<ExceptionRec> &pairs)
{
    QList<int> order(pairs.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&pairs](int a, int b) {
        return pairs.at(a).Word.compare(pairs.at(b).Word, Qt::CaseInsensitive) < 0;
    });
    return order;
}

// The stored pair whose trimmed word matches, without regard to case; -1 when none.
int findWord(const QString &word)
{
    const QString wanted = word.toLower();
    const QList<ExceptionRec> &pairs = exceptionsState().Exceptions;
    for (int i = 0; i < pairs.size(); ++i)
        if (pairs.at(i).Word.trimmed().toLower() == wanted)
            return i;
    return -1;
}

// Stores the pairs in the order of the lists.
void storeSorted()
{
    QList<ExceptionRec> &pairs = exceptionsState().Exceptions;
    QList<ExceptionRec> sorted;
    for (int i : sortedOrder(pairs))
        sorted << pairs.at(i);
    pairs = sorted;
}

int rowOf(int pairIndex)
{
    return int(sortedOrder(exceptionsState().Exceptions).indexOf(pairIndex));
}

} // namespace

ExceptionLists BuildExceptionLists()
{
    const QList<ExceptionRec> &pairs = exceptionsState().Exceptions;
    ExceptionLists lists;
    for (int i : sortedOrder(pairs)) {
        lists.words << pairs.at(i).Word;
        lists.changes << pairs.at(i).Change;
    }
    return lists;
}

int ApplyException(const QString &word, const QString &change)
{
    if (word.trimmed().isEmpty() || change.trimmed().isEmpty()) {
        shell::MsgBoxOT(QStringLiteral("Type a word to change and the word to change it to."), 0,
                        QStringLiteral("Word Exceptions"));
        return -1;
    }
    QList<ExceptionRec> &pairs = exceptionsState().Exceptions;
    int index = findWord(word);
    if (index >= 0) {
        pairs[index].Change = change;
    } else {
        pairs << ExceptionRec{word, change};
        index = int(pairs.size()) - 1;
        const ExceptionRec added = pairs.at(index);
        storeSorted();
        index = int(pairs.indexOf(added));
    }
    const int row = rowOf(index);
    Save2ExceptionFile();
    return row;
}

bool DeleteException(int row)
{
    QList<ExceptionRec> &pairs = exceptionsState().Exceptions;
    if (pairs.isEmpty())
        return false;
    if (row < 0 || row >= pairs.size()) {
        shell::MsgBoxOT(QStringLiteral("Select a word to remove from the 'Word To Change' list."), 0,
                        QLatin1String(kRemoveTitle));
        return false;
    }
    shell::MsgBoxOT(QStringLiteral("Are you sure you want to remove this word?"), 1, QLatin1String(kRemoveTitle));
    if (shell::app().MsgResult != shell::MsgYes)
        return false;
    const QList<int> order = sortedOrder(pairs);
    QList<ExceptionRec> kept;
    for (int r = 0; r < order.size(); ++r)
        if (r != row)
            kept << pairs.at(order.at(r));
    pairs = kept;
    Save2ExceptionFile();
    return true;
}

bool ConfirmNewException(const QString &selection)
{
    if (selection.isEmpty())
        return true;
    const QString wanted = selection.toLower();
    for (const ExceptionRec &rec : std::as_const(exceptionsState().Exceptions)) {
        if (rec.Word.trimmed().toLower() != wanted)
            continue;
        shell::MsgBoxOT(QStringLiteral("Word \"") + selection
                            + QStringLiteral("\" is already in the exceptions list. Edit this word anyway?"),
                        1, QStringLiteral("Already Exists"));
        return shell::app().MsgResult != shell::MsgNo;
    }
    return true;
}

void SpeakTrial(const QString &text, int listIndex)
{
    platform::SpeechEngine *engine = platform::services().speech;
    if (text.isEmpty() || !engine)
        return;
    SpeechVars &vars = speechVars();
    if (listIndex >= 0 && listIndex < vars.VoiceCount)
        engine->setVoice(vars.VoiceIndex.at(listIndex));
    vars.HighlightOn = false;
    engine->speak(QString(), platform::kSpeakPurgeBeforeSpeak);
    engine->speak(text, platform::kSpeakAsyncXml);
}

} // namespace reader
