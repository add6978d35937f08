#include "macro/commands.h"

#include "macro/macro_text.h"
#include "macro/variables.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>

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

// For each letter A-Z, the rows whose statement starts with it, in table order.
using LetterRows = std::array<QVarLengthArray<int, 8>, 26>;

const LetterRows &rowsByLetter()
{
    static const LetterRows rows = [] {
        LetterRows byLetter;
        for (int i = 0; i < kCommandCount; ++i)
            byLetter[kRows[i].match[1] - 'A'] << i;
        return byLetter;
    }();
    return rows;
}

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

int FirstCommandIn(QStringView text)
{
    // Every row starts with "[" and a letter, so only the places of "[" are looked at,
    // and at each only the rows of the letter that follows it.
    const auto upper = [](char16_t c) { return c >= u'a' && c <= u'z' ? char16_t(c - 32) : c; };
    const char16_t *chars = text.utf16();
    const qsizetype n = text.size();
    const auto rowAt = [&](qsizetype at, const char *row) {
        for (qsizetype k = 0; row[k]; ++k)
            if (at + k >= n || upper(chars[at + k]) != char16_t(row[k]))
                return false;
        return true;
    };
    const auto &byLetter = rowsByLetter();
    int best = kCommandCount;
    for (qsizetype at = text.indexOf(QLatin1Char('[')); at >= 0 && at + 1 < n;
         at = text.indexOf(QLatin1Char('['), at + 1)) {
        const char16_t lead = upper(chars[at + 1]);
        if (lead < u'A' || lead > u'Z')
            continue;
        for (const int i : byLetter[size_t(lead - u'A')]) {
            if (i >= best)
                break;
            if (rowAt(at, kRows[i].match)) {
                best = i;
                break;
            }
        }
    }
    return best < kCommandCount ? best + 1 : 0;
}

int WhichCommand(QStringView view)
{
    // A line of ASCII is looked at as it stands; any other is upper-cased first, as a
    // ligature such as "ﬁ" becomes two letters.
    const bool ascii = std::all_of(view.cbegin(), view.cend(), [](QChar c) { return c.unicode() < 0x80; });
    if (const int code = ascii ? FirstCommandIn(view) : FirstCommandIn(view.toString().toUpper()))
        return code;
    if (!view.contains(QLatin1Char('=')))
        return 0;
    const QString line = view.toString();
    const int p = InStr(line, QStringLiteral("="));
    if (p < 3)
        return 0;
    if (BetweenQuotes(line, p))
        return 0;
    const QString name = Mid(line, 2, p - 2).trimmed();
    return AllLetters(name, QString()).isEmpty() ? CmdVAR : 0;
}

} // namespace macro
