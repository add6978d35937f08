// [OPEN n File], [CLOSE n], [READ n Rec], [WRITE n Rec]: text files a line at a time.
#include "engine/file_statements.h"

#include "engine/open_files.h"
#include "engine/operands.h"
#include "engine/run_state.h"
#include "engine/structure_search.h"
#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"

#include <cmath>
#include <limits>

namespace engine {

namespace {

const QString kFatal = QStringLiteral("FATAL ERROR ");
const QString kOpenFrame = QStringLiteral(" for [OPEN n File] statement");
const QString kCloseFrame = QStringLiteral(" for [CLOSE n] statement");
const QString kReadFrame = QStringLiteral(" for [READ n Rec] statement");
const QString kWriteFrame = QStringLiteral(" for [WRITE n Rec] statement");
const QString kGoTo = QStringLiteral("GoTo 1");

// The operand words of a statement line: behind the first blank, up to the bracket.
QStringList operandWords(int line)
{
    return OperandText(runState().action(line).Text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// The whole number a value holds, or 0 for a fraction or a value beyond an int.
int wholeNumberOf(double value)
{
    const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return fits && value == std::trunc(value) ? int(value) : 0;
}

// The id word of a unit statement (its first operand), upper-cased for comparisons.
QString idWordOf(const QString &text)
{
    const QStringList words = OperandText(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return words.isEmpty() ? QString() : macro::UpperSameLength(words.first());
}

// The checks READ and WRITE share: some file open, a valid id, its entry in use.
QString checkUnit(int line, const QString &frame, int &id)
{
    if (runState().OpenFileCount == 0)
        return kFatal + QStringLiteral("No files open") + frame;
    const QStringList words = operandWords(line);
    id = words.isEmpty() ? 0 : FileIdOf(words.first());
    if (id < 1 || id > kMaxOpenFiles)
        return kFatal + QStringLiteral("Invalid file number") + frame;
    if (!IsFileOpen(id))
        return kFatal + QStringLiteral("File not open") + frame;
    return {};
}

} // namespace

int FileIdOf(const QString &word)
{
    const double number = macro::Val1(word);
    if (number != 0 || word == QLatin1String("0"))
        return wholeNumberOf(number);
    if (!macro::IsVarName(word))
        return 0;
    double value = 0;
    int type = macro::kTypeNumber;
    if (!macro::GetVarNumber(macro::UpperSameLength(word), value, type) || type != macro::kTypeNumber)
        return 0;
    return wholeNumberOf(value);
}

QString GetOpenParams(int line, int &id, QString &name, qint16 &mode)
{
    id = 0;
    name.clear();
    mode = -1;
    const QString operands = OperandText(runState().action(line).Text).trimmed();
    const qsizetype blank = operands.indexOf(QLatin1Char(' '));
    const QString idWord = blank < 0 ? operands : operands.left(blank);
    id = FileIdOf(idWord);
    if (blank < 0 || !StringOperand(operands.mid(blank + 1).trimmed(), name))
        name.clear();

    // The look-ahead: what this id does until its [CLOSE n].
    const QString key = macro::UpperSameLength(idWord);
    bool reads = false, writes = false, closed = false;
    MacroRunState &s = runState();
    for (int i = line + 1; i <= s.ActionCount() && !closed; ++i) {
        const macro::ActionLine &a = s.Actions[size_t(i - 1)];
        if (a.Command != macro::CmdCLOSE && a.Command != macro::CmdOPEN && a.Command != macro::CmdREAD
            && a.Command != macro::CmdWRITE)
            continue;
        if (idWordOf(a.Text) != key)
            continue;
        switch (a.Command) {
        case macro::CmdCLOSE: closed = true; break;
        case macro::CmdOPEN: return QStringLiteral("Duplicate [OPEN n File] statements");
        case macro::CmdREAD: reads = true; break;
        case macro::CmdWRITE: writes = true; break;
        }
    }
    if (!closed)
        return QStringLiteral("Missing [CLOSE n] statement");
    if (!reads && !writes)
        return QStringLiteral("Missing READ/WRITE statements");
    if (reads && writes)
        return QStringLiteral("Can't READ & WRITE to same file");
    mode = reads ? kModeInput : kModeOutput;
    return {};
}

QString DoOPEN(int line)
{
    if (runState().OpenFileCount >= kMaxOpenFiles)
        return kFatal + QStringLiteral("Too many open files") + kOpenFrame;
    int id = 0;
    QString name;
    qint16 mode = kModeInput;
    QString message = GetOpenParams(line, id, name, mode);
    if (message.isEmpty())
        message = SetOpenFile(id, name, mode);
    if (message == QLatin1String("Invalid file number"))
        return kFatal + message + kOpenFrame;
    return message.isEmpty() ? QString() : kFatal + message;
}

QString DoCLOSE(int line)
{
    if (runState().OpenFileCount == 0)
        return QStringLiteral("No files open") + kCloseFrame;
    const QStringList words = operandWords(line);
    const int id = words.size() == 1 ? FileIdOf(words.first()) : 0;
    if (id < 1 || id > kMaxOpenFiles)
        return QStringLiteral("Invalid file number") + kCloseFrame;
    if (CloseOpenFile(id))
        runState().OpenFileCount -= 1;
    return {};
}

QString DoREAD(int line)
{
    int id = 0;
    const QString message = checkUnit(line, kReadFrame, id);
    if (!message.isEmpty())
        return message;
    // GetREADVarName: the word behind the id.
    const QStringList words = operandWords(line);
    const QString name = words.size() == 2 ? words.at(1) : QString();
    const QString letters = macro::AllLetters(name, QString());
    if (name.isEmpty() || !letters.isEmpty())
        return kFatal + QStringLiteral("Invalid variable name") + kReadFrame;
    if (macro::GetVarIndex(name) == 0)
        macro::SetVarVal(name, QString());

    const QString text = GetLineInput(id);
    if (id < 0 && InsideLOOP(line)) {
        // The end of the file leaves the loop: a read loop needs no test of its own.
        const int target = GetENDLOOP(line) + 1;
        if (target == 1)
            return kFatal + QStringLiteral("reaching EOF for [LOOP Cond] statement");
        runState().NextLine = target;
        return kGoTo;
    }
    macro::SetVarVal(name, text);
    return {};
}

QString DoWRITE(int line)
{
    int id = 0;
    const QString message = checkUnit(line, kWriteFrame, id);
    if (!message.isEmpty())
        return message;
    const QString &text = runState().action(line).Text;
    const int last = macro::InStrRev(text, QStringLiteral("\""));
    QString out;
    if (last < 2) {
        // GetWRITEVarName: the word behind the id names the variable written.
        const QStringList words = operandWords(line);
        QString name = words.size() == 2 ? words.at(1) : QString();
        if (name.isEmpty() || !macro::IsVarName(name))
            return kFatal + QStringLiteral("Invalid variable name") + kWriteFrame;
        int type = macro::kTypeString;
        out = macro::GetVarVal(name, type);
        if (name.isEmpty())
            return kFatal + QStringLiteral("Variable not found") + kWriteFrame;
    } else {
        const int first = macro::InStr(text, QStringLiteral("\""));
        if (first == last)
            return kFatal + QStringLiteral("Missing quote in output string") + kWriteFrame;
        out = macro::Mid(text, first + 1, last - first - 1);
    }
    macro::RestoreQuotes(out);
    WriteRec(id, out);
    return {};
}

} // namespace engine
