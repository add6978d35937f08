#include "hotkeys/wizard_steps.h"

#include "macro/commands.h"
#include "macro/good_statements.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/statement_check.h"
#include "macro/variables.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace hotkeys::wizard {

namespace {

const QChar kQuote = QLatin1Char('"');

} // namespace

QString helpWord(int command) { return macro::Commands().at(command - 1); }

std::function<bool(QString &)> Typed(WizardAsker &ask, const QString &title, const QString &prompt)
{
    return [&ask, title, prompt](QString &operand) { return AskLiteral(ask, title, prompt, operand); };
}

std::function<bool(QString &)> Named(WizardAsker &ask, const QString &title, const QString &prompt,
                                     const QString &defaultText)
{
    return [&ask, title, prompt, defaultText](QString &operand) {
        return AskName(ask, title, prompt, operand, defaultText);
    };
}

bool ShowsHelp(WizardAsker &ask, const WizardContext &context, const QString &statement)
{
    if (!context.help)
        return false;
    ask.help(statement);
    return true;
}

QString TryAgain(const QString &message)
{
    return message.endsWith(QLatin1Char('.')) ? message + QStringLiteral(" Try again.")
                                              : message + QStringLiteral(". Try again.");
}

int AskChoice(WizardAsker &ask, const QString &text, const QString &title)
{
    const int answer = ask.message(text, kYesNoCancel, title);
    return answer == WizardYes || answer == WizardNo ? answer : int(WizardCancel);
}

bool AskValue(WizardAsker &ask, const QString &title, const QString &prompt, const Validator &valid,
              QString &answer, const QString &defaultText)
{
    QString start = defaultText;
    for (;;) {
        QString reply;
        if (!ask.input(title, prompt, reply, start))
            return false;
        reply = reply.trimmed();
        if (reply.isEmpty())
            return false;
        const QString refusal = valid ? valid(reply) : QString();
        if (refusal.isEmpty()) {
            answer = reply;
            return true;
        }
        ask.message(TryAgain(refusal), kOk, title);
        start = reply;
    }
}

bool AskName(WizardAsker &ask, const QString &title, const QString &prompt, QString &name,
             const QString &defaultText, const QString &caption)
{
    return AskValue(
        ask, title, prompt, [&caption](const QString &reply) { return macro::AllLetters(reply, caption); }, name,
        defaultText);
}

bool AskLiteral(WizardAsker &ask, const QString &title, const QString &prompt, QString &literal,
                const QString &defaultText)
{
    QString start = defaultText;
    for (;;) {
        QString reply;
        if (!ask.input(title, prompt, reply, start))
            return false;
        if (reply.trimmed().isEmpty())
            return false;
        if (!reply.contains(kQuote)) {
            literal = Quoted(reply);
            return true;
        }
        ask.message(TryAgain(QStringLiteral("A string can not hold a double quote")), kOk, title);
        start = reply;
    }
}

bool AskFile(WizardAsker &ask, const QString &title, const QString &filter, bool save, QString &literal,
             const QString &appendExtension, const QStringList &accepted)
{
    QString path;
    if (!ask.file(title, filter, save, path, appendExtension) || path.trimmed().isEmpty())
        return false;
    if (!appendExtension.isEmpty()) {
        const QString suffix = QFileInfo(path).suffix();
        bool known = false;
        for (const QString &ext : accepted)
            known = known || (QLatin1Char('.') + suffix).compare(ext, Qt::CaseInsensitive) == 0;
        if (suffix.isEmpty() || (!accepted.isEmpty() && !known))
            path += appendExtension;
    }
    literal = Quoted(path);
    return true;
}

bool AskFolder(WizardAsker &ask, const QString &title, QString &literal)
{
    QString path;
    if (!ask.folder(title, path) || path.trimmed().isEmpty())
        return false;
    literal = Quoted(path);
    return true;
}

bool AskStringOrVariable(WizardAsker &ask, const QString &what, const QString &title,
                         const std::function<bool(QString &)> &asString,
                         const std::function<bool(QString &)> &asVariable, QString &operand)
{
    const QString question = QStringLiteral("Is the ") + what + QStringLiteral(" a string (Yes) or a variable (No)?");
    switch (AskChoice(ask, question, title)) {
    case WizardYes:
        return asString(operand);
    case WizardNo:
        return asVariable(operand);
    default:
        return false;
    }
}

bool IsPlainNumber(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^[0-9]*\\.?[0-9]+$"));
    return number.match(text).hasMatch();
}

Validator NumberOrName(double low, double high, const QString &outOfRange, const QString &caption,
                       const QString &invalid)
{
    return [=](const QString &answer) -> QString {
        if (IsPlainNumber(answer)) {
            const double value = macro::Val1(answer);
            return value < low || value > high ? outOfRange : QString();
        }
        const QString letters = macro::AllLetters(answer, caption);
        if (letters.isEmpty())
            return {};
        return invalid.isEmpty() ? letters : invalid;
    };
}

Validator NumberOnly(double low, double high, const QString &outOfRange)
{
    return [=](const QString &answer) -> QString {
        if (!IsPlainNumber(answer))
            return outOfRange;
        const double value = macro::Val1(answer);
        return value < low || value > high ? outOfRange : QString();
    };
}

QString CheckStatement(int number, const QString &line)
{
    if (number == macro::CmdIF || number == macro::CmdCANCELIF || number == macro::CmdLOOP) {
        QString words = line.toUpper();
        const QString missing = macro::ReplaceLiterals(words);
        if (!missing.isEmpty())
            return missing;
        return number == macro::CmdLOOP ? macro::GoodLOOPCond(words) : macro::GoodIFCond(words);
    }
    return macro::GoodCommandFormat(line, number, line, 1);
}

bool CheckedOrAccepted(WizardAsker &ask, int number, const QString &line, const QString &title)
{
    const QString fault = CheckStatement(number, line);
    if (fault.isEmpty())
        return true;
    return ask.message(fault + QStringLiteral(". Continue?"), kYesNo, title) == WizardYes;
}

QStringList FileStatementWizard(WizardAsker &ask, const WizardContext &context, const FileStatement &form)
{
    if (ShowsHelp(ask, context, macro::Commands().at(form.number - 1)))
        return {};
    QString file;
    const bool given = AskStringOrVariable(
        ask, QStringLiteral("file"), QLatin1Char('[') + form.word + QStringLiteral(" Filename]"),
        [&](QString &operand) {
            return AskFile(ask, form.dialogTitle, form.filter, form.save, operand, form.appendExtension, form.accepted);
        },
        [&](QString &operand) {
            return AskName(ask, form.word, QStringLiteral("Enter a variable that will hold the filename"), operand);
        },
        file);
    if (!given)
        return {};
    return {Statement(form.word, {file})};
}

QString Statement(const QString &word, const QStringList &operands)
{
    QString line = QLatin1Char('[') + word;
    for (const QString &operand : operands)
        line += QLatin1Char(' ') + operand;
    return line + QLatin1Char(']');
}

QString Quoted(const QString &text) { return kQuote + text + kQuote; }

} // namespace hotkeys::wizard
