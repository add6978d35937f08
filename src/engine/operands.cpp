#include "engine/operands.h"

#include "engine/run_state.h"
#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"
#include "platform/services.h"

namespace engine {

namespace {

const QString kBlank = QStringLiteral(" ");

QString frame(const QString &message, const QString &statementName)
{
    return message + QStringLiteral(" for ") + statementName + QStringLiteral(" statement");
}

} // namespace

QString OperandText(const QString &text)
{
    const int blank = macro::InStr(text, kBlank);
    if (blank == 0)
        return {};
    int end = macro::Len(text);
    if (text.endsWith(QLatin1Char(']')))
        --end;
    return macro::Mid(text, blank + 1, end - blank);
}

bool StringOperand(const QString &operand, QString &value, QString *rest)
{
    value.clear();
    if (rest)
        rest->clear();
    if (operand.trimmed().isEmpty())
        return false;
    QString after;
    if (operand.startsWith(macro::kQuote)) {
        const qsizetype close = operand.lastIndexOf(macro::kQuote);
        if (close < 1)
            return false;
        value = operand.mid(1, close - 1);
        after = operand.mid(close + 1);
    } else {
        const qsizetype blank = operand.indexOf(QLatin1Char(' '));
        QString name = blank < 0 ? operand : operand.left(blank);
        after = blank < 0 ? QString() : operand.mid(blank + 1);
        if (!macro::IsVarName(name))
            return false;
        int type = macro::kTypeString;
        value = macro::GetVarVal(name, type);
        if (name.isEmpty())
            return false;
    }
    if (rest)
        *rest = after.trimmed();
    return true;
}

bool GetFName(int line, QString &value, QString *rest)
{
    return StringOperand(OperandText(runState().action(line).Text), value, rest);
}

QString GetStringAndResult(int line, const QString &statementName, const QString &varCaption,
                           const QString &emptyCaption, const QString &resultCaption, StringAndResult &out,
                           const QString &missingResult)
{
    out = {};
    const QString text = runState().action(line).Text;
    const int blank = macro::InStr(text, kBlank);
    if (blank == 0)
        return frame(QStringLiteral("Invalid format"), statementName);
    const QString missing = missingResult.isEmpty()
        ? QStringLiteral("Invalid format for ") + resultCaption + QStringLiteral("variable")
        : missingResult;

    // Where the first operand ends: its closing quote, or the next blank.
    int firstEnd = 0;
    if (macro::CharAt(text, blank + 1) == macro::kQuote) {
        const int close = macro::InStrRev(text, QStringLiteral("\""));
        if (close <= blank + 1)
            return frame(QStringLiteral("Quote mismatch in variable"), statementName);
        out.text = macro::Mid(text, blank + 2, close - blank - 2);
        if (!out.text.isEmpty() && out.text.trimmed().isEmpty())
            return frame(QStringLiteral("Invalid format in variable"), statementName);
        firstEnd = close;
    } else {
        const int next = macro::InStr(blank + 1, text, kBlank);
        if (next == 0)
            return frame(missing, statementName);
        QString name = macro::Mid(text, blank + 1, next - blank - 1);
        if (name.isEmpty())
            return frame(QStringLiteral("Invalid format"), statementName);
        int type = macro::kTypeString;
        out.text = macro::GetVarVal(name, type);
        if (name.isEmpty())
            return frame(varCaption + QStringLiteral(" variable not assigned"), statementName);
        if (type == macro::kTypeNumber)
            return frame(QStringLiteral("Number variable not allowed"), statementName);
        firstEnd = next - 1;
    }
    if (out.text.isEmpty())
        return frame(QStringLiteral("Empty ") + emptyCaption + QStringLiteral(" variable"), statementName);

    // The result name: behind the last blank after the first operand, without the bracket.
    QString rest = macro::Mid(text, firstEnd + 1);
    if (rest.endsWith(QLatin1Char(']')))
        rest.chop(1);
    rest = rest.trimmed();
    if (rest.isEmpty())
        return frame(missing, statementName);
    const int lastBlank = macro::InStrRev(rest, kBlank);
    if (lastBlank > 0)
        return frame(QStringLiteral("Invalid format"), statementName);
    const QString letters = macro::AllLetters(rest, resultCaption);
    if (!letters.isEmpty())
        return frame(letters, statementName);
    out.resultName = rest;
    return {};
}

bool SplitOperands(const QString &lineText, QList<OperandToken> &tokens)
{
    tokens.clear();
    const QString operands = OperandText(lineText);
    qsizetype i = 0;
    const qsizetype n = operands.size();
    while (i < n) {
        if (operands.at(i) == QLatin1Char(' ')) {
            ++i;
            continue;
        }
        if (operands.at(i) == macro::kQuote) {
            const qsizetype close = operands.indexOf(macro::kQuote, i + 1);
            if (close < 0)
                return false;
            tokens.append({operands.mid(i + 1, close - i - 1), true});
            i = close + 1;
            continue;
        }
        qsizetype end = operands.indexOf(QLatin1Char(' '), i);
        if (end < 0)
            end = n;
        tokens.append({operands.mid(i, end - i), false});
        i = end;
    }
    return true;
}

QString OperandValue(const OperandToken &token, const QString &varCaption, const QString &emptyCaption,
                     QString &value)
{
    value.clear();
    if (token.literal) {
        value = token.text;
    } else {
        QString name = token.text;
        int type = macro::kTypeString;
        value = macro::GetVarVal(name, type);
        if (name.isEmpty() || !macro::IsVarName(token.text))
            return varCaption + QStringLiteral(" variable not assigned");
        if (type == macro::kTypeNumber)
            return QStringLiteral("Number variable not allowed");
    }
    if (value.isEmpty() && !emptyCaption.isEmpty())
        return QStringLiteral("Empty ") + emptyCaption + QStringLiteral(" variable");
    return {};
}

QString GetPositionOperand(const QString &word, const QString &caption, float limit, float &value)
{
    value = 0;
    if (word.isEmpty())
        return QStringLiteral("Invalid ") + caption;
    double number = macro::Val1(word);
    if (number == 0 && word != QLatin1String("0")) {
        if (!macro::IsVarName(word))
            return QStringLiteral("Invalid ") + caption;
        QString name = word;
        int type = macro::kTypeNumber;
        const QString text = macro::GetVarVal(name, type);
        if (name.isEmpty())
            return QStringLiteral("Value not set for ") + caption;
        if (type == macro::kTypeString)
            return QStringLiteral("String variable not allowed for ") + caption;
        number = macro::Val1(text);
    }
    if (number < 0 || (limit > 0 && number > limit))
        return QStringLiteral("Invalid ") + caption;
    value = float(number);
    return {};
}

QString GetMouseParams(int line, float &x, float &y)
{
    x = y = 0;
    const macro::ActionLine &action = runState().action(line);
    const QString statementName = macro::CanonicalStatement(action.Command).replace(
        QStringLiteral(" x y]"), QStringLiteral(" xp yp]"));
    QString operands = OperandText(action.Text).trimmed();
    const QStringList words = operands.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.size() != 2)
        return frame(QStringLiteral("Invalid format"), statementName);
    float limit = 0;
    if (const platform::MouseSender *mouse = platform::services().mouse)
        limit = float(mouse->screenSize().width());
    QString message = GetPositionOperand(words.at(0), QStringLiteral("X position"), limit, x);
    if (message.isEmpty())
        message = GetPositionOperand(words.at(1), QStringLiteral("Y position"), limit, y);
    return message.isEmpty() ? QString() : frame(message, statementName);
}

} // namespace engine
