#pragma once
// MsgBoxOT: the one message box of the program, always on top, with an optional
// count-down that answers by itself.
#include <QString>
#include <functional>

namespace shell {

enum MsgAnswer { MsgNone = 0, MsgYes = 1, MsgNo = -1, MsgCancel = -2, MsgOk = -3 };

constexpr int kMsgMaxChars = 2000;  // longest text shown

// Shows the message and leaves the answer in app().MsgResult. A text that trims to
// nothing shows no window and leaves MsgResult 0.
void MsgBoxOT(const QString &text, int type, const QString &title, double timeout = 0);

// Alignment of the text for the next message only (0 left, 1 right, 2 centre).
void SetMsgAlign(int align);

// Called by the message window when it is answered or closed.
void SetMsgResult(int result);
// The answer given when the window goes away unanswered: type 0 OK, 1 No, 2 Cancel.
int DefaultAnswer(int type);
// The text as the window shows it: cut to 2000 characters, ending in a line break.
QString ShownMessageText(const QString &text);

// Seconds since midnight of the clock used for the count-down deadline. Tests replace it.
using ClockFn = std::function<double()>;
void SetMessageClock(ClockFn clock);  // nullptr restores the real clock
double SecondsSinceMidnight();

// How many label rows text takes at width, given a function measuring printed width.
int GetNumLines(const QString &text, int width, const std::function<int(const QString &)> &measure);

// Layout chosen for a window width (in pixels) and a line count L (rows + 1):
// 0 no change, 1 wider, 2 taller, 3 wider/smaller font/taller, 4 narrower.
int ChooseMessageLayout(int windowWidth, int lines);
// The width that divides the two rules of ChooseMessageLayout.
constexpr int kMsgWideWindow = 267;   // 4000 twips at 15 twips a pixel
constexpr int kMsgWidthStep = 47;     // 705 twips

} // namespace shell
