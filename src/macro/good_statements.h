#pragma once
// The statement checker: is one macro line well formed? It judges the shape of a line
// and what can be known without running it, and never reads a variable.
//
// GoodActionLine gives the full message ("ERROR line 7 ...") or "". The per-statement
// checkers below give a fragment ("Invalid format for [WAIT Sec] statement") or "".
// Each takes the line as written (any case, quotes as they stand; a line whose literals
// are already ALITERAL/AEMPTY does too, except for GoodMACRO, which needs the literal's
// text). macro is the whole tidied macro text and pos the 1-based position where the
// line begins in it: the checkers that look for a partner statement (IF/ENDIF, LOOP,
// OPEN/CLOSE, DOWN/UP) search it. The conditions and [VAR=Val] rules themselves are in
// macro/statement_check.h, the partner searches in macro/block_matching.h.
#include <QList>
#include <QString>
#include <functional>

namespace macro {

// --- the line and the dispatch -------------------------------------------------------

// lineNo is the line's number in the macro, for the message.
QString GoodActionLine(const QString &macro, const QString &line, int pos, int lineNo);
// The checker of statement code number (1..48, macro/commands.h) on the line.
QString GoodCommandFormat(const QString &macro, int number, const QString &line, int pos);

// --- what the checker needs from above ---------------------------------------------------

// One macro of the hotkeys table, as [HOTKEY "name"] may name it.
struct HotkeyName {
    QString keys;         // the key combination
    QString description;  // the macro's name
};
// The hotkeys table in order (macro n is element n-1). The hotkeys layer installs it;
// with none installed the table reads as empty, so every [HOTKEY ...] is reported.
using HotkeyLookup = std::function<QList<HotkeyName>()>;
void SetHotkeyLookup(HotkeyLookup lookup);

// The screen's width in pixels, the limit of every mouse and click-zone position (for
// Y as well as X). With no source installed, or one that answers 0 or less, the width
// is kDefaultScreenWidth.
inline constexpr int kDefaultScreenWidth = 1920;
using ScreenWidthSource = std::function<int()>;
void SetScreenWidthSource(ScreenWidthSource source);
int CheckScreenWidth();

// --- control statements (good_control_statements.cpp) ---------------------------------

// [IF Cond], [CANCEL IF Cond], [ELSE], [ENDIF] by number; "" for an empty macro.
QString GoodIF(const QString &macro, int number, const QString &line, int pos);
// [LOOP Cond], [ENDLOOP] by number; "" for an empty macro.
QString GoodLOOP(const QString &macro, int number, const QString &line, int pos);

// --- file statements (good_file_statements.cpp) ------------------------------------------

// [LOADFILE File], [SAVEFILE File], [MAKEMP3 File], [PRINT File], [LOADCLIP File],
// [SAVECLIP File], [KILLFILE File], told apart by number.
QString GoodFilename(int number, const QString &line);
QString GoodOPEN(const QString &macro, const QString &line, int pos);
QString GoodREAD(const QString &macro, const QString &line, int pos);
QString GoodWRITE(const QString &macro, const QString &line, int pos);
QString GoodCLOSE(const QString &macro, const QString &line, int pos);
QString GoodPATHEXISTS(const QString &line);
QString GoodSHORTPATH(const QString &line);
QString GoodCOPYFILE(const QString &line);
QString GoodFINDFILES(const QString &line);
QString GoodDATEDIFF(const QString &line);
QString GoodFINDSTRING(const QString &line);

// --- input, clipboard and other statements (good_input_statements.cpp) -------------------

QString GoodString(const QString &line);  // [SENDKEYS String]
QString GoodWAIT(const QString &line);
// [CLIP ON/OFF], [SPELLCHECKMODE ON/OFF] by number.
QString GoodONOFF(int number, const QString &line);
// [SPELLCHECK], [PRINTSELECTED], [LISTHOTKEYS] by number.
QString GoodNOPARAMS(int number, const QString &line);
QString GoodGETCLIP(const QString &line);
QString GoodKEYLOG(const QString &line);
QString GoodSETCLIP(const QString &line);
QString GoodGETMULTICLIP(const QString &line);
QString GoodSETMULTICLIP(const QString &line);
QString GoodCOMMAND(const QString &line);
QString GoodUSERINPUT(const QString &line);
QString GoodYESNOCANCEL(const QString &line);
QString GoodSETFOCUS(const QString &line);
QString GoodWEBSOURCE(const QString &line);
// [HOTKEY n], against the table that SetHotkeyLookup installed.
QString GoodMACRO(const QString &line);

// --- mouse statements (good_mouse_statements.cpp) ------------------------------------------

// [LEFTDOWN x y], [LEFTUP x y], [RIGHTDOWN x y], [RIGHTUP x y] by number: the positions,
// then GoodMatchButton.
QString GoodMOUSE(const QString &macro, int number, const QString &line, int pos);
// The partner of a down (an up after it) or of an up (a down before it).
QString GoodMatchButton(const QString &macro, int number, int pos);
QString GoodCLICKZONE(const QString &line);

} // namespace macro
