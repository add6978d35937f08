#include "macro/commands.h"

#include "macro/macro_text.h"
#include "macro/variables.h"

#include <QVarLengthArray>

namespace macro {

namespace {

// ORDER COMMANDS: table string and canonical form, one row per statement code.
struct Row {
    const char *match;
    const char *canonical;
};

constexpr Row kRows[kCommandCount] = {
    {"[LOOP ", "[LOOP Cond]"},
    {"[IF ", "[IF Cond]"},
    {"[LOADFILE ", "[LOADFILE File]"},
    {"[SAVEFILE ", "[SAVEFILE File]"},
    {"[OPEN ", "[OPEN n File]"},
    {"[CLOSE ", "[CLOSE n]"},
    {"[READ ", "[READ n Rec]"},
    {"[WRITE ", "[WRITE n Rec]"},
    {"[VAR=", "[VAR=Val]"},
    {"[SENDKEYS ", "[SENDKEYS String]"},
    {"[WAIT ", "[WAIT Sec]"},
    {"[CLIP ", "[CLIP ON/OFF]"},
    {"[SPELLCHECKMODE ", "[SPELLCHECKMODE ON/OFF]"},
    {"[SPELLCHECK]", "[SPELLCHECK]"},
    {"[CANCEL IF ", "[CANCEL IF Cond]"},
    {"[MAKEMP3 ", "[MAKEMP3 File]"},
    {"[PRINTSELECTED]", "[PRINTSELECTED]"},
    {"[PRINT ", "[PRINT File]"},
    {"[LOADCLIP ", "[LOADCLIP File]"},
    {"[SAVECLIP ", "[SAVECLIP File]"},
    {"[GETCLIP ", "[GETCLIP Var]"},
    {"[SETCLIP ", "[SETCLIP String]"},
    {"[GETMULTICLIP ", "[GETMULTICLIP n Var]"},
    {"[SETMULTICLIP ", "[SETMULTICLIP n String]"},
    {"[COMMAND ", "[COMMAND String]"},
    {"[USERINPUT ", "[USERINPUT Title Var]"},
    {"[YESNOCANCEL ", "[YESNOCANCEL Question Ans]"},
    {"[LISTHOTKEYS]", "[LISTHOTKEYS]"},
    {"[HOTKEY ", "[HOTKEY n]"},
    {"[LEFTDOWN ", "[LEFTDOWN x y]"},
    {"[LEFTUP ", "[LEFTUP x y]"},
    {"[RIGHTDOWN ", "[RIGHTDOWN x y]"},
    {"[RIGHTUP ", "[RIGHTUP x y]"},
    {"[ENDLOOP]", "[ENDLOOP]"},
    {"[ELSE]", "[ELSE]"},
    {"[ENDIF]", "[ENDIF]"},
    {"[CLICKZONE ", "[CLICKZONE Xmn Ymn Xmx Ymx Trap]"},
    {"[KEYLOG ", "[KEYLOG Var]"},
    {"[PATHEXISTS ", "[PATHEXISTS File Ans]"},
    {"[COPYFILE ", "[COPYFILE FileS FileD]"},
    {"[KILLFILE ", "[KILLFILE File]"},
    {"[FINDSTRING ", "[FINDSTRING String Substring CharNum]"},
    {"[SHORTPATH ", "[SHORTPATH File SFile]"},
    {"[QUITLOOP]", "[QUITLOOP]"},
    {"[DATEDIFF ", "[DATEDIFF DateFrom DateTo Diff]"},
    {"[FINDFILES ", "[FINDFILES StartPath Selection]"},
    {"[SETFOCUS ", "[SETFOCUS Classname Ans]"},
    {"[WEBSOURCE ", "[WEBSOURCE URL Src]"},
};

QStringList &table()
{
    static QStringList rows = [] {
        QStringList list;
        for (const Row &row : kRows)
            list << QLatin1String(row.match);
        return list;
    }();
    return rows;
}

} // namespace

void SetCommands() { table(); }

const QStringList &Commands() { return table(); }

QString CanonicalStatement(int code)
{
    if (code < 1 || code > kCommandCount)
        return {};
    return QLatin1String(kRows[code - 1].canonical);
}

int WhichCommand(const QString &line)
{
    const QString up = line.toUpper();
    // The first row, in table order, found anywhere in the line. Every row starts with
    // "[", so only the places of "[" are compared.
    QVarLengthArray<qsizetype, 4> brackets;
    for (qsizetype at = up.indexOf(QLatin1Char('[')); at >= 0; at = up.indexOf(QLatin1Char('['), at + 1))
        brackets << at;
    if (!brackets.isEmpty()) {
        const QStringView view(up);
        for (int i = 0; i < kCommandCount; ++i) {
            const QLatin1String row(kRows[i].match);
            for (const qsizetype at : brackets)
                if (at + 1 < view.size() && view.at(at + 1) == QLatin1Char(row.at(1))
                    && view.sliced(at).startsWith(row))
                    return i + 1;
        }
    }
    const int p = InStr(line, QStringLiteral("="));
    if (p < 3)
        return 0;
    if (BetweenQuotes(line, p))
        return 0;
    const QString name = Mid(line, 2, p - 2).trimmed();
    return AllLetters(name, QString()).isEmpty() ? CmdVAR : 0;
}

} // namespace macro
