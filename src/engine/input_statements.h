#pragma once
// Statements that act on other programs and on the user: typing, the mouse, click zones,
// the key log, window focus, starting programs, and questions.
#include <QString>

namespace engine {

inline constexpr double kClickZonePollSeconds = 0.5;  // DoCLICKZONE looks this often
inline constexpr int kMouseWalkSteps = 300;           // a short drag walks in 1/300 steps
inline constexpr double kMouseWalkBelow = 10.0;       // in absolute units
inline constexpr double kQuestionTimeoutLimit = 3600.0;

QString DoSENDKEYS(int line);
// [LEFTDOWN x y], [LEFTUP x y], [RIGHTDOWN x y], [RIGHTUP x y].
QString DoMOUSE(int line);
// Remembers a press, or sends press and release for an up that has its press.
void SendMouseEvent(int command, float x, float y);
// Move to (x1, y1), press, walk towards (x2, y2) when that is close, release.
void MouseDNUP(int right, float x1, float y1, float x2, float y2);
QString DoCLICKZONE(int line);
// Reads the operands into the click-zone fields; xVar and yVar get the optional names
// that take the click's position. "" or the message (without "FATAL ERROR ").
QString SetCLICKZONEParms(int line, QString &xVar, QString &yVar);
QString DoKEYLOG(int line);
QString DoSETFOCUS(int line);
QString DoCOMMAND(int line);
QString DoUSERINPUT(int line);
QString DoYESNOCANCEL(int line);

} // namespace engine
