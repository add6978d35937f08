// [IF Cond], [CANCEL IF Cond], [ELSE], [ENDIF], [LOOP Cond], [ENDLOOP]: the condition
// rules of statement_check.cpp plus the partner searches of block_matching.cpp.
#include "macro/good_statements.h"

#include "macro/block_matching.h"
#include "macro/commands.h"
#include "macro/good_operands.h"
#include "macro/statement_check.h"

namespace macro {

QString GoodIF(const QString &macro, int number, const QString &line, int pos)
{
    if (macro.isEmpty())
        return {};
    if (number == CmdENDIF)
        return Matching_IF(macro, pos);
    if (number == CmdELSE)
        return Matching_ELSE(macro, pos);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    const QString message = GoodIFCond(s.words);
    if (!message.isEmpty())
        return message;
    // [CANCEL IF ...] ends the macro on the spot and takes no [ENDIF].
    return number == CmdIF ? Matching_ENDIF(macro, pos) : QString();
}

QString GoodLOOP(const QString &macro, int number, const QString &line, int pos)
{
    if (macro.isEmpty())
        return {};
    if (number == CmdENDLOOP)
        return Matching_LOOP(macro, pos);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    const QString message = GoodLOOPCond(s.words);
    if (!message.isEmpty())
        return message;
    return Matching_ENDLOOP(macro, pos);
}

} // namespace macro
