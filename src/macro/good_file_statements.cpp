// Checkers of the file statements: [LOADFILE File] and its sisters, [OPEN n File],
// [READ n Rec], [WRITE n Rec], [CLOSE n], and the statements with a result variable
// ([PATHEXISTS File Ans], [SHORTPATH File SFile], [COPYFILE FileS FileD],
// [FINDFILES StartPath Selection], [DATEDIFF DateFrom DateTo Diff],
// [FINDSTRING String Substring CharNum]).
#include "macro/good_statements.h"

#include "macro/block_matching.h"
#include "macro/commands.h"
#include "macro/good_operands.h"
#include "macro/macro_text.h"
#include "macro/numbers.h"
#include "macro/variables.h"

namespace macro {

namespace {

using good::OperandRule;

constexpr int kMaxFileId = 9;  // file ids run 1 to 9

// How the operand after the file id of [OPEN], [READ] and [WRITE] may look.
struct UnitStatement {
    int number;
    const char *invalidId;     // n above 9, or "0"
    const char *quoteMessage;  // the last quote does not close the line (nullptr: any quote)
    const char *sameAsUnit;    // the operand repeats n
    bool literalAllowed;
};

// [OPEN n File], [READ n Rec], [WRITE n Rec]: two operands, a file id that may be a
// variable, the partner [OPEN]/[CLOSE] of that id, then the operand after it.
QString goodUnitStatement(const QString &macro, const QString &line, int pos, const UnitStatement &u)
{
    const QString form = CanonicalStatement(u.number);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    const QString &w = s.words;
    const int blank1 = InStr(w, QStringLiteral(" "));
    if (blank1 == 0)
        return good::InvalidFormat(form);
    const int blank2 = InStr(blank1 + 1, w, QStringLiteral(" "));
    if (blank2 == 0 || blank2 == blank1 + 1)
        return good::InvalidFormat(form);

    const QString id = Mid(w, blank1 + 1, blank2 - blank1 - 1);
    if (Val1(id) > kMaxFileId || id == QLatin1String("0"))
        return good::Framed(u.invalidId, form);
    if (Val1(id) == 0) {
        const QString message = AllLetters(id, QStringLiteral("ID "));
        if (!message.isEmpty())
            return message + good::For(form);
    }
    QString message = Matching_OPEN_CLOSE(macro, id, pos);
    if (!message.isEmpty())
        return message + good::For(form);

    if (s.written.contains(kQuote)) {
        if (!u.quoteMessage)
            return QStringLiteral("Invalid quote") + good::For(form);
        if (!good::LastQuoteClosesLine(s.written))
            return good::Framed(u.quoteMessage, form);
    }
    QString operand = Mid(w, blank2 + 1);
    if (operand.endsWith(QLatin1Char(']')))
        operand.chop(1);
    if (operand.trimmed().isEmpty())
        return good::InvalidFormat(form);
    if (operand == id)
        return good::Framed(u.sameAsUnit, form);
    if (u.literalAllowed && operand == kLiteralPlaceholder)
        return {};
    message = AllLetters(operand, QString());
    return message.isEmpty() ? QString() : message + good::For(form);
}


// The first operand of [PATHEXISTS], [SHORTPATH], [SETFOCUS] and [WEBSOURCE].
constexpr OperandRule kFirstVariable{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in 1st variable for",
                                     "Invalid format in 1st variable for"};

} // namespace

QString GoodFilename(int number, const QString &line)
{
    const QString form = CanonicalStatement(number);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    if (s.written.contains(kQuote) && !good::LastQuoteClosesLine(s.written))
        return QStringLiteral("Missing quote in filename") + good::For(form);
    return good::CheckOperands(good::OperandWords(s.words), form, {{OperandRule::NameOrLiteral}});
}

QString GoodOPEN(const QString &macro, const QString &line, int pos)
{
    return goodUnitStatement(macro, line, pos,
                             {CmdOPEN, "Invalid file ID (1-9) for", "Quote mismatch in right variable for",
                              "Unit and file variables must be different for", true});
}

QString GoodREAD(const QString &macro, const QString &line, int pos)
{
    return goodUnitStatement(macro, line, pos,
                             {CmdREAD, "Invalid file ID (1-9) for", nullptr,
                              "Unit and output variables must be different for", false});
}

QString GoodWRITE(const QString &macro, const QString &line, int pos)
{
    return goodUnitStatement(macro, line, pos,
                             {CmdWRITE, "Invalid file ID (1-9) for", "Quote mismatch in right variable for",
                              "Unit and output variables must be different for", true});
}

QString GoodCLOSE(const QString &macro, const QString &line, int pos)
{
    const QString form = CanonicalStatement(CmdCLOSE);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    const QStringList words = good::OperandWords(s.words);
    if (words.size() != 1 || words.at(0).isEmpty())
        return good::InvalidFormat(form);
    const QString id = words.at(0);
    const double n = Val1(id);
    if (n < 1 || n > kMaxFileId)
        return QStringLiteral("Invalid file number (1-9)") + good::For(form);
    const QString message = Matching_OPEN_CLOSE(macro, id, pos);
    return message.isEmpty() ? QString() : message + good::For(form);
}

QString GoodPATHEXISTS(const QString &line)
{
    return good::CheckByRules(line, CmdPATHEXISTS,
                        {kFirstVariable, {OperandRule::Name, "", "Invalid format for answer variable in"}});
}

QString GoodSHORTPATH(const QString &line)
{
    return good::CheckByRules(line, CmdSHORTPATH,
                        {kFirstVariable, {OperandRule::Name, "", "Invalid format for answer variable in"}});
}

QString GoodCOPYFILE(const QString &line)
{
    return good::CheckByRules(line, CmdCOPYFILE,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in 1st file for",
                          "Invalid format in 1st file for"},
                         {OperandRule::NameOrLiteral, "", "Invalid format for 2nd variable in",
                          "Quote mismatch in 2nd file for", "Invalid format in 2nd file for"}});
}

QString GoodFINDFILES(const QString &line)
{
    return good::CheckByRules(line, CmdFINDFILES,
                        {{OperandRule::NameOrAnyLiteral, "", nullptr, "Quote mismatch in StartPath for",
                          "Invalid format in StartPath for"},
                         {OperandRule::Name, "", "Invalid format for Selection variable in",
                          "No quotes allowed for Selection variable in"}});
}

QString GoodDATEDIFF(const QString &line)
{
    return good::CheckByRules(line, CmdDATEDIFF,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in DateFrom for",
                          "Invalid format in DateFrom for"},
                         {OperandRule::NameOrLiteral, "", "Invalid format for DateTo variable in",
                          "Quote mismatch in DateTo for", "Invalid format in DateTo for"},
                         {OperandRule::Name, "Diff "}});
}

QString GoodFINDSTRING(const QString &line)
{
    return good::CheckByRules(line, CmdFINDSTRING,
                        {{OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in 1st variable for",
                          "Invalid format in 1st variable for"},
                         {OperandRule::NameOrLiteral, "", nullptr, "Quote mismatch in 2nd variable for",
                          "Invalid format in 2nd variable for"},
                         {OperandRule::Name, "", nullptr, "Quote not allowed in CharNum variable for",
                          "Invalid format in CharNum variable for"}});
}

} // namespace macro
