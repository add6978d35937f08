// [IF Cond], [ELSE], [CANCEL IF Cond].
#include "engine/control_statements.h"

#include "engine/run_state.h"
#include "engine/structure_search.h"
#include "macro/conditions.h"
#include "macro/macro_text.h"
#include "macro/statement_check.h"

namespace engine {

namespace {

const QString kFatal = QStringLiteral("FATAL ERROR ");
const QString kIfFrame = QStringLiteral(" for [IF Cond] statement");
const QString kCancelIfFrame = QStringLiteral(" for [CANCEL IF Cond] statement");
const QString kTrue = QStringLiteral("TRUE");
const QString kFalse = QStringLiteral("FALSE");
const QString kGoTo = QStringLiteral("GoTo 1");

} // namespace

// [IF Cond]: a false condition goes on behind the matching [ELSE] or [ENDIF].
QString DoIF(int line)
{
    macro::ActionLine &action = runState().action(line);
    if (!action.TextChecked) {
        QString copy = action.Text;
        QString message = macro::ReplaceLiterals(copy);
        if (message.isEmpty())
            message = macro::GoodIFCond(copy);
        if (!message.isEmpty())
            return kFatal + message + kIfFrame;
        action.TextChecked = true;
    }

    int ok = 0;
    QString condition = macro::GetCond(runState().action(line), line, ok);
    if (ok == 0)
        return kFatal + condition + kIfFrame;
    if (condition.isEmpty())
        return kFatal + QStringLiteral("Invalid condition") + kIfFrame;

    const QString result = macro::TestCond(condition);
    if (result == kTrue)
        return {};
    const int target = GetENDIForELSE(line);
    if (result != kFalse) {
        if (target == 0)
            return kFatal + result + QStringLiteral(" and no matching [ENDIF]") + kIfFrame;
        return kFatal + result + kIfFrame;
    }
    if (target == 0)
        return kFatal + QStringLiteral("No matching [ENDIF]") + kIfFrame;
    runState().NextLine = target + 1;
    return kGoTo;
}

// [ELSE] is reached only at the end of the true branch: it skips to its [ENDIF].
QString DoELSE(int line)
{
    const int target = GetENDIF(line);
    if (target == 0)
        return kFatal + QStringLiteral("No matching [ENDIF] for [ELSE] statement");
    runState().NextLine = target;
    return kGoTo;
}

// [CANCEL IF Cond]: a true condition ends the macro without a message.
QString DoCANCELIF(int line)
{
    int ok = 0;
    QString condition = macro::GetCond(runState().action(line), line, ok);
    if (ok == 0)
        return kFatal + condition + kCancelIfFrame;
    if (condition.isEmpty())
        return kFatal + QStringLiteral("Invalid condition") + kCancelIfFrame;
    const QString result = macro::TestCond(condition);
    if (result == kTrue)
        return QStringLiteral("<QUIT>");
    if (result != kFalse)
        return kFatal + result + kCancelIfFrame;
    return {};
}

} // namespace engine
