#pragma once
// Check-time split of a condition into its terms, for the statement checkers. The
// condition has its literals replaced by ALITERAL/AEMPTY (ReplaceLiterals).
#include <QList>
#include <QString>
#include <QStringList>

namespace macro {

inline constexpr int kMaxConnectors = 100;  // AND/OR connectors in one checked condition
inline constexpr int kMaxTerms = 100;       // terms the split can hold

// Splits the condition into count terms: connectors (1 AND, 0 OR), left sides,
// operators and right sides. With flag 1 a right side must be a number, a literal or a
// name (unless the whole condition is a sequence). "" or a message.
QString ParseParam(const QString &condition, QList<int> &connectors, QStringList &leftSides,
                   QStringList &operators, QStringList &rightSides, int &count, int flag);
// Number of " AND "/" OR " connectors, each recorded in connectors (1 AND, 0 OR);
// -1 when there are more than kMaxConnectors.
int GetNumANDORs(const QString &condition, QList<int> &connectors);
// Left side, operator and right side of term i (1-based).
QString GetLeadVar(const QString &condition, int i);
QString GetOperator(const QString &condition, int i);
QString GetTrailVar(const QString &condition, int i);

} // namespace macro
