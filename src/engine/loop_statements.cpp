// [LOOP Cond], [ENDLOOP], [QUITLOOP]. A condition loop tests its condition on each
// pass; a sequence loop ([LOOP I=1,2,5]) owns a slot of the sequence store, keyed by
// its line, that holds its values and the position reached.
#include "engine/control_statements.h"

#include "engine/run_state.h"
#include "engine/structure_search.h"
#include "macro/conditions.h"
#include "macro/macro_text.h"
#include "macro/sequences.h"
#include "macro/statement_check.h"
#include "macro/variables.h"

namespace engine {

namespace {

const QString kFatal = QStringLiteral("FATAL ERROR ");
const QString kLoopFrame = QStringLiteral(" for [LOOP Cond] statement");
const QString kGoTo = QStringLiteral("GoTo 1");
constexpr int kMinSequenceLine = 10;  // "[LOOP I=1]" is the shortest sequence line
constexpr int kConditionStart = 7;    // first character behind "[LOOP "

// Goes on behind the [ENDLOOP] of the loop at line.
QString leaveLoop(int line)
{
    const int target = GetENDLOOP(line) + 1;
    if (target == 1)
        return kFatal + QStringLiteral("Missing [ENDLOOP]") + kLoopFrame;
    runState().NextLine = target;
    return kGoTo;
}

// A later pass of the running sequence in slot: the loop variable takes the next value,
// or the sequence is finished and the loop is left.
QString nextSequenceValue(int line, int slot)
{
    macro::SequenceSlot &s = macro::sequenceStore().slot(slot);
    ++s.LoopSeqPos;
    if (s.LoopSeqPos > s.LoopSeqCount) {
        macro::ResetLoopSequence(slot);
        return leaveLoop(line);
    }
    s.LoopSeqLine = line;
    const QString &text = runState().action(line).Text;
    if (macro::Len(text) < kMinSequenceLine)
        return kFatal + QStringLiteral("Illegal format") + kLoopFrame;
    QString condition = macro::Mid(text, kConditionStart, macro::Len(text) - kConditionStart);
    macro::RemoveSpaces(condition);
    const int equals = macro::InStr(condition, QStringLiteral("="));
    if (equals == 0)
        return kFatal + QStringLiteral("Missing = operator in sequence") + kLoopFrame;
    const QString name = macro::Left(condition, equals - 1);
    const QString message = macro::AllLetters(name, QString());
    if (!message.isEmpty())
        return kFatal + message + kLoopFrame;
    macro::SetVarVal(name, s.LoopSeqValues.at(s.LoopSeqPos - 1));
    return {};
}

} // namespace

QString DoLOOP(int line)
{
    int slot = 0;
    if (macro::LoopSequence(line, slot))
        return nextSequenceValue(line, slot);

    macro::ActionLine &action = runState().action(line);
    if (!action.TextChecked) {
        QString copy = action.Text;
        QString message = macro::ReplaceLiterals(copy);
        if (!message.isEmpty())
            return kFatal + message + kLoopFrame;
        message = macro::GoodLOOPCond(copy);
        if (!message.isEmpty())
            return message;
        action.TextChecked = true;
    }

    int ok = 0;
    QString condition = macro::GetCond(runState().action(line), line, ok);
    if (ok == 0)
        return condition;
    // A sequence has been set up by GetCond: its first value is in the variable.
    if (macro::LoopSequence(line, slot))
        return {};
    if (condition.isEmpty())
        return kFatal + QStringLiteral("Invalid condition") + kLoopFrame;

    const QString result = macro::TestCond(condition);
    if (result == QLatin1String("FALSE"))
        return leaveLoop(line);
    if (result != QLatin1String("TRUE"))
        return kFatal + result + kLoopFrame;
    return {};
}

// [ENDLOOP] goes back to its [LOOP], which decides whether another pass follows.
QString DoENDLOOP(int line)
{
    const int target = GetLOOP(line);
    if (target == 0)
        return kFatal + QStringLiteral("No matching LOOP for [ENDLOOP] statement");
    runState().NextLine = target;
    return kGoTo;
}

// [QUITLOOP] leaves the innermost sequence loop and frees its slot. In a condition
// loop it is a fatal error.
QString DoQUITLOOP(int line)
{
    const int loop = GetLOOP(line);
    if (loop == 0)
        return kFatal + QStringLiteral("No matching LOOP for [QUITLOOP] statement");
    int slot = 0;
    if (!macro::LoopSequence(loop, slot))
        return kFatal + QStringLiteral("LOOP sequence not valid for [QUITLOOP] statement");
    const int end = GetENDLOOP(line);
    if (end == 0)
        return kFatal + QStringLiteral("No matching ENDLOOP for [QUITLOOP] statement");
    macro::ResetLoopSequence(slot);
    runState().NextLine = end + 1;
    return kGoTo;
}

} // namespace engine
