#pragma once
// The partner searches of the whole-macro check: does a statement's partner exist, and
// does it stand on the right side? They scan the tidied macro text by position,
// upper-cased, counting nesting as they go; quotes are not looked at, so a quoted
// "[IF " counts like any other. pos is the 1-based position where the statement's line
// begins. Each answers "" or a message that the calling checker frames.
#include <QString>

namespace macro {

QString Matching_IF(const QString &macro, int pos);      // for an [ENDIF]
QString Matching_ENDIF(const QString &macro, int pos);   // for an [IF ...]
QString Matching_ELSE(const QString &macro, int pos);    // for an [ELSE]
QString Matching_LOOP(const QString &macro, int pos);    // for an [ENDLOOP]
QString Matching_ENDLOOP(const QString &macro, int pos); // for a [LOOP ...]
// For [OPEN n File], [CLOSE n], [READ n Rec] and [WRITE n Rec]; id is n as written.
QString Matching_OPEN_CLOSE(const QString &macro, const QString &id, int pos);
// [QUITLOOP] must stand inside a loop: "" or its full fragment.
QString GoodQUITLOOP(const QString &macro, int pos);

} // namespace macro
