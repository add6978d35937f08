// One macro line through the checker: keystroke lines by their first key name,
// statement lines by their code and the checker of that code.
#include "macro/good_statements.h"

#include "macro/block_matching.h"
#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/nonprint.h"
#include "macro/statement_check.h"
#include "macro/variables.h"

namespace macro {

namespace {

// An unknown key name is reported with the line number the key-name search ends on,
// one past the table, and not with the line's own number.
constexpr int kUnknownKeyLine = NumNonPrint + 1;

// What a checker of the table is given.
struct Statement {
    const QString &macro;
    int number;
    const QString &line;   // as written
    const QString &words;  // upper-cased, each literal as ALITERAL/AEMPTY
    int pos;
};
using Checker = QString (*)(const Statement &);

QString byIF(const Statement &s) { return GoodIF(s.macro, s.number, s.line, s.pos); }
QString byLOOP(const Statement &s) { return GoodLOOP(s.macro, s.number, s.line, s.pos); }
QString byFilename(const Statement &s) { return GoodFilename(s.number, s.line); }
QString byOPEN(const Statement &s) { return GoodOPEN(s.macro, s.line, s.pos); }
QString byCLOSE(const Statement &s) { return GoodCLOSE(s.macro, s.line, s.pos); }
QString byREAD(const Statement &s) { return GoodREAD(s.macro, s.line, s.pos); }
QString byWRITE(const Statement &s) { return GoodWRITE(s.macro, s.line, s.pos); }
QString byVAR(const Statement &s) { return GoodVAR(s.words); }
QString byString(const Statement &s) { return GoodString(s.line); }
QString byWAIT(const Statement &s) { return GoodWAIT(s.line); }
QString byONOFF(const Statement &s) { return GoodONOFF(s.number, s.line); }
QString byNOPARAMS(const Statement &s) { return GoodNOPARAMS(s.number, s.line); }
QString byGETCLIP(const Statement &s) { return GoodGETCLIP(s.line); }
QString bySETCLIP(const Statement &s) { return GoodSETCLIP(s.line); }
QString byGETMULTICLIP(const Statement &s) { return GoodGETMULTICLIP(s.line); }
QString bySETMULTICLIP(const Statement &s) { return GoodSETMULTICLIP(s.line); }
QString byCOMMAND(const Statement &s) { return GoodCOMMAND(s.line); }
QString byUSERINPUT(const Statement &s) { return GoodUSERINPUT(s.line); }
QString byYESNOCANCEL(const Statement &s) { return GoodYESNOCANCEL(s.line); }
QString byMACRO(const Statement &s) { return GoodMACRO(s.line); }
QString byMOUSE(const Statement &s) { return GoodMOUSE(s.macro, s.number, s.line, s.pos); }
QString byCLICKZONE(const Statement &s) { return GoodCLICKZONE(s.line); }
QString byKEYLOG(const Statement &s) { return GoodKEYLOG(s.line); }
QString byPATHEXISTS(const Statement &s) { return GoodPATHEXISTS(s.line); }
QString byCOPYFILE(const Statement &s) { return GoodCOPYFILE(s.line); }
QString byFINDSTRING(const Statement &s) { return GoodFINDSTRING(s.line); }
QString bySHORTPATH(const Statement &s) { return GoodSHORTPATH(s.line); }
QString byQUITLOOP(const Statement &s) { return GoodQUITLOOP(s.macro, s.pos); }
QString byDATEDIFF(const Statement &s) { return GoodDATEDIFF(s.line); }
QString byFINDFILES(const Statement &s) { return GoodFINDFILES(s.line); }
QString bySETFOCUS(const Statement &s) { return GoodSETFOCUS(s.line); }
QString byWEBSOURCE(const Statement &s) { return GoodWEBSOURCE(s.line); }

// ORDER COMMANDS: the checker of each statement code, row i for code i+1, in the order
// of the table in macro/commands.cpp (and of engine::DoAction in engine/dispatch.cpp).
constexpr Checker kCheckers[kCommandCount] = {
    byLOOP,          // 1 [LOOP Cond]
    byIF,            // 2 [IF Cond]
    byFilename,      // 3 [LOADFILE File]
    byFilename,      // 4 [SAVEFILE File]
    byOPEN,          // 5 [OPEN n File]
    byCLOSE,         // 6 [CLOSE n]
    byREAD,          // 7 [READ n Rec]
    byWRITE,         // 8 [WRITE n Rec]
    byVAR,           // 9 [VAR=Val]
    byString,        // 10 [SENDKEYS String]
    byWAIT,          // 11 [WAIT Sec]
    byONOFF,         // 12 [CLIP ON/OFF]
    byONOFF,         // 13 [SPELLCHECKMODE ON/OFF]
    byNOPARAMS,      // 14 [SPELLCHECK]
    byIF,            // 15 [CANCEL IF Cond]
    byFilename,      // 16 [MAKEMP3 File]
    byNOPARAMS,      // 17 [PRINTSELECTED]
    byFilename,      // 18 [PRINT File]
    byFilename,      // 19 [LOADCLIP File]
    byFilename,      // 20 [SAVECLIP File]
    byGETCLIP,       // 21 [GETCLIP Var]
    bySETCLIP,       // 22 [SETCLIP String]
    byGETMULTICLIP,  // 23 [GETMULTICLIP n Var]
    bySETMULTICLIP,  // 24 [SETMULTICLIP n String]
    byCOMMAND,       // 25 [COMMAND String]
    byUSERINPUT,     // 26 [USERINPUT Title Var]
    byYESNOCANCEL,   // 27 [YESNOCANCEL Question Ans]
    byNOPARAMS,      // 28 [LISTHOTKEYS]
    byMACRO,         // 29 [HOTKEY n]
    byMOUSE,         // 30 [LEFTDOWN x y]
    byMOUSE,         // 31 [LEFTUP x y]
    byMOUSE,         // 32 [RIGHTDOWN x y]
    byMOUSE,         // 33 [RIGHTUP x y]
    byLOOP,          // 34 [ENDLOOP]
    byIF,            // 35 [ELSE]
    byIF,            // 36 [ENDIF]
    byCLICKZONE,     // 37 [CLICKZONE Xmn Ymn Xmx Ymx Trap]
    byKEYLOG,        // 38 [KEYLOG Var]
    byPATHEXISTS,    // 39 [PATHEXISTS File Ans]
    byCOPYFILE,      // 40 [COPYFILE FileS FileD]
    byFilename,      // 41 [KILLFILE File]
    byFINDSTRING,    // 42 [FINDSTRING String Substring CharNum]
    bySHORTPATH,     // 43 [SHORTPATH File SFile]
    byQUITLOOP,      // 44 [QUITLOOP]
    byDATEDIFF,      // 45 [DATEDIFF DateFrom DateTo Diff]
    byFINDFILES,     // 46 [FINDFILES StartPath Selection]
    bySETFOCUS,      // 47 [SETFOCUS Classname Ans]
    byWEBSOURCE,     // 48 [WEBSOURCE URL Src]
};

// The start of every message about line lineNo, made only for a line that has one.
QString prefix(int lineNo) { return QStringLiteral("ERROR line ") + QString::number(lineNo); }

// A keystroke line: the braces must pair up, and the first brace token must name a key
// ("{LEFT 5}" is looked up as "{LEFT}"). Only that first token is checked.
QString goodKeystrokes(const QString &line, int lineNo)
{
    int depth = 0;
    for (const QChar c : line) {
        if (c == QLatin1Char('{'))
            ++depth;
        else if (c == QLatin1Char('}'))
            --depth;
    }
    if (depth != 0)
        return prefix(lineNo) + QStringLiteral(" Mismatched braces {}");
    const int open = InStr(line, QStringLiteral("{"));
    if (open == 0)
        return {};
    const int close = InStr(open + 1, line, QStringLiteral("}"));
    QString token = (close == 0 ? Mid(line, open) : Mid(line, open, close - open + 1)).toUpper();
    const int blank = InStr(token, QStringLiteral(" "));
    if (blank > 0)
        token = Left(token, blank - 1) + QLatin1Char('}');
    for (const QString &name : NonPrint())
        if (token.contains(name))
            return {};
    return QStringLiteral("ERROR line ") + QString::number(kUnknownKeyLine)
        + QStringLiteral(" Unrecognized non-printable character.");
}

// The code of a statement line that no table row names: 9 for "[name=value]", or 0
// with the message in message.
int assignmentCode(const QString &line, int lineNo, QString &message)
{
    const int equals = InStr(line, QStringLiteral("="));
    if (equals == 0 || BetweenQuotes(line, equals)) {
        message = prefix(lineNo) + QStringLiteral(" Command not found.");
        return 0;
    }
    QString words = UpperSameLength(line);
    ReplaceLiterals(words);
    if (words.startsWith(QLatin1String("[ALITERAL=")) || words.startsWith(QLatin1String("[AEMPTY="))) {
        message = prefix(lineNo) + QStringLiteral(" No literals allowed in LHS variable for [VAR=Val] statement.");
        return 0;
    }
    const int wordsEquals = InStr(words, QStringLiteral("="));
    const QString left = Mid(words, 2, wordsEquals - 2).trimmed();
    const QString letters = AllLetters(left, QStringLiteral("LHS "));
    if (!letters.isEmpty()) {
        message = prefix(lineNo) + QLatin1Char(' ') + letters + QStringLiteral(" for [VAR=Val] statement.");
        return 0;
    }
    return CmdVAR;
}

// GoodCommandFormat with the line upper-cased already.
QString commandFormat(const QString &macro, int number, const QString &line, QString words, int pos)
{
    const QString missingQuote = ReplaceLiterals(words);
    if (!missingQuote.isEmpty())
        return missingQuote;
    if (number < 1 || number > kCommandCount)
        return QStringLiteral("Invalid format for  statement");  // no table row to name
    return kCheckers[number - 1](Statement{macro, number, line, words, pos});
}

} // namespace

QString GoodActionLine(const QString &macro, const QString &line, int pos, int lineNo)
{
    if (CharAt(line, 1) != QLatin1Char('['))
        return goodKeystrokes(line, lineNo);
    if (InStr(2, line, QStringLiteral("]")) == 0)
        return prefix(lineNo) + QStringLiteral(" Command line missing closing bracket.");
    if (!line.endsWith(QLatin1Char(']')))
        return prefix(lineNo) + QStringLiteral(" Extra characters after the closing bracket.");

    const QString words = UpperSameLength(line);
    int number = FirstCommandIn(words);
    if (number == 0) {
        QString message;
        number = assignmentCode(line, lineNo, message);
        if (number == 0)
            return message;
    }
    const QString fragment = commandFormat(macro, number, line, words, pos);
    return fragment.isEmpty() ? QString() : prefix(lineNo) + QLatin1Char(' ') + fragment;
}

QString GoodCommandFormat(const QString &macro, int number, const QString &line, int pos)
{
    return commandFormat(macro, number, line, UpperSameLength(line), pos);
}

} // namespace macro
