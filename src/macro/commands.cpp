#include "macro/commands.h"

#include "macro/macro_text.h"
#include "macro/variables.h"

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
    if (up.contains(QLatin1Char('['))) {  // every row starts with "["
        const QStringList &rows = table();
        for (int i = 0; i < kCommandCount; ++i)
            if (up.contains(rows.at(i)))
                return i + 1;
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
