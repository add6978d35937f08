#include "macro/variables.h"

namespace macro {

QString AllLetters(const QString &text, const QString &caption)
{
    if (text.contains(QLatin1String("ALITERAL")))
        return QStringLiteral("Strings not allowed in ") + caption + QStringLiteral("variable name");
    if (text.contains(QLatin1String("AEMPTY")))
        return QStringLiteral("Empty string in ") + caption + QStringLiteral("variable name");
    for (const QChar c : text)
        if (c < QLatin1Char('A') || c > QLatin1Char('z'))
            return QStringLiteral("Only letters allowed in ") + caption + QStringLiteral("variable name");
    return {};
}

} // namespace macro
