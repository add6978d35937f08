// [VAR=Val], written [name=value]: a number or a string assignment, re-checked at each
// execution since its operands can come from variables.
#include "engine/control_statements.h"

#include "engine/run_state.h"
#include "macro/expressions.h"
#include "macro/macro_text.h"
#include "macro/statement_check.h"
#include "macro/variables.h"

#include <QFileInfo>

namespace engine {

namespace {

const QString kFatal = QStringLiteral("FATAL ERROR ");
const QString kVarFrame = QStringLiteral(" for [VAR=Val] statement");

bool is(const QString &upperName, const char *special) { return upperName == QLatin1String(special); }

QString assignNumber(const QString &name, const QString &upperName, const QString &rhs)
{
    if (is(upperName, "PATH"))
        return kFatal + QStringLiteral("Invalid use of PATH") + kVarFrame;
    if (is(upperName, "SONAMARKTEXT"))
        return kFatal + QStringLiteral("Invalid value for SONAMARKTEXT variable") + kVarFrame;
    double value = 0;
    if (!macro::AllLetters(rhs, QString()).isEmpty()) {
        QString message;
        value = macro::SolveEquation(rhs, message);
        if (!message.isEmpty())
            return kFatal + message + kVarFrame;
    } else {
        int type = macro::kTypeNumber;
        if (!macro::GetVarNumber(macro::UpperSameLength(rhs), value, type))
            return kFatal + QStringLiteral("Variable not set") + kVarFrame;
        if (type == macro::kTypeString)
            return kFatal + QStringLiteral("String variable not allowed") + kVarFrame;
    }
    if (is(upperName, "TIMEOUT") && value <= 0)
        return kFatal + QStringLiteral("Illegal TIMEOUT value") + kVarFrame;
    // TIMEOUT sets MacroTimeout (minutes x 60) inside SetVarVal.
    macro::SetVarVal(name, value);
    return {};
}

QString assignString(const QString &name, const QString &upperName, const QString &rhs)
{
    QString message;
    const QString value = macro::GetString(rhs, message);
    if (!message.isEmpty())
        return kFatal + message + kVarFrame;
    if (value.isEmpty())
        return kFatal + QStringLiteral("Invalid string variable") + kVarFrame;
    if (is(upperName, "PATH")) {
        if (value.trimmed().isEmpty())
            return kFatal + QStringLiteral("PATH missing") + kVarFrame;
        if (!QFileInfo(value).isDir())
            return kFatal + QStringLiteral("Invalid PATH") + kVarFrame;
    }
    if (is(upperName, "TIMEOUT"))
        return kFatal + QStringLiteral("Illegal TIMEOUT value") + kVarFrame;
    // SONAMARKTEXT goes to the reader's text box and PATH changes the current folder,
    // both inside SetVarVal.
    macro::SetVarVal(name, value);
    return {};
}

} // namespace

QString DoVAR(int line)
{
    const QString &text = runState().action(line).Text;
    QString rhs;
    int isString = 0;
    const QString name = macro::GetVarName(text, rhs, isString);
    if (name.trimmed().isEmpty())
        return name;
    if (rhs.trimmed().isEmpty())
        return kFatal + QStringLiteral("Invalid variable assignment") + kVarFrame;

    macro::ActionLine &action = runState().action(line);
    if (!action.TextChecked) {
        QString copy = text;
        QString message = macro::ReplaceLiterals(copy);
        if (!message.isEmpty())
            return kFatal + message + kVarFrame;
        message = macro::GoodVAR(copy);
        if (!message.isEmpty())
            return kFatal + message;
        action.TextChecked = true;
    }

    const QString upperName = macro::UpperSameLength(name);
    return isString == 1 ? assignString(name, upperName, rhs) : assignNumber(name, upperName, rhs);
}

} // namespace engine
