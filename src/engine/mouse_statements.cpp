// The mouse statements, [CLICKZONE] and [KEYLOG]: synthetic clicks, waiting for the
// user's click in a zone, and reading what the user types.
#include "engine/input_statements.h"

#include "engine/interpreter.h"
#include "engine/operands.h"
#include "engine/run_state.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "macro/commands.h"
#include "macro/macro_text.h"
#include "macro/variables.h"
#include "platform/services.h"
#include "shell/delay.h"

#include <cmath>

namespace engine {

namespace {

namespace flags = platform::mouse_event;

const QString kClickZone = QStringLiteral(" for [CLICKZONE Xmn Ymn Xmx Ymx Trap] statement");
const QString kKeyLog = QStringLiteral(" for [KEYLOG Var] statement");

// mouse_event: the absolute units are whole numbers, rounded as the call converts them.
void mouseEvent(int flag, double absX, double absY)
{
    if (platform::MouseSender *mouse = platform::services().mouse)
        mouse->mouseEvent(flag, int(std::lrint(absX)), int(std::lrint(absY)));
}

// The click-zone fields are cleared and the hooks told that no click is awaited.
void endClickZone()
{
    hotkeys::HookState &h = hotkeys::hookState();
    h.ClickZoneWaiting = false;
    h.ClickZoneHit = false;
    hotkeys::UnhookMouse();
    hotkeys::UpdateHookPlan();
}

} // namespace

QString DoMOUSE(int line)
{
    const QString &text = runState().action(line).Text;
    if (text.isEmpty())
        return QStringLiteral("Missing [MOUSE] event action command for line ") + QString::number(line);
    const int command = macro::WhichCommand(text);
    if (command == 0)
        return QStringLiteral("Invalid format in [MOUSE] event for line ") + QString::number(line);
    float x = 0, y = 0;
    const QString message = GetMouseParams(line, x, y);
    if (!message.isEmpty())
        return message;
    SendMouseEvent(command, x, y);
    DoEvents();
    return {};
}

void SendMouseEvent(int command, float x, float y)
{
    hotkeys::HookState &h = hotkeys::hookState();
    if (command == macro::CmdLEFTDOWN || command == macro::CmdRIGHTDOWN) {
        h.PendingDownX = x;
        h.PendingDownY = y;
        h.PendingDownKind = command;
        return;
    }
    const int wanted = command == macro::CmdLEFTUP ? macro::CmdLEFTDOWN : macro::CmdRIGHTDOWN;
    if (h.PendingDownKind == wanted && h.PendingDownX != 0 && h.PendingDownY != 0)
        MouseDNUP(command == macro::CmdRIGHTUP ? 1 : 0, h.PendingDownX, h.PendingDownY, x, y);
    h.PendingDownX = h.PendingDownY = 0;
    h.PendingDownKind = 0;
}

void MouseDNUP(int right, float x1, float y1, float x2, float y2)
{
    const platform::MouseSender *mouse = platform::services().mouse;
    if (!mouse)
        return;
    const QSize screen = mouse->screenSize();
    if (screen.width() <= 0 || screen.height() <= 0)
        return;
    const double scaleX = flags::kAbsoluteRange / screen.width();
    const double scaleY = flags::kAbsoluteRange / screen.height();
    const double ax1 = x1 * scaleX, ay1 = y1 * scaleY, ax2 = x2 * scaleX, ay2 = y2 * scaleY;
    mouseEvent(flags::Move, ax1, ay1);
    DoEvents();
    mouseEvent(right ? flags::RightDown : flags::LeftDown, ax1, ay1);
    DoEvents();
    // Only a short way is walked; a long one is released where it was pressed. That is
    // how the statement has always behaved, and recorded macros rely on it.
    double atX = ax1, atY = ay1;
    if (std::hypot(ax2 - ax1, ay2 - ay1) < kMouseWalkBelow) {
        for (int step = 1; step < kMouseWalkSteps; ++step) {
            atX = ax1 + (ax2 - ax1) * step / kMouseWalkSteps;
            atY = ay1 + (ay2 - ay1) * step / kMouseWalkSteps;
            mouseEvent(flags::Move, atX, atY);
            DoEvents();
        }
        DoEvents();
    }
    mouseEvent(right ? flags::RightUp : flags::LeftUp, atX, atY);
    DoEvents();
}

QString SetCLICKZONEParms(int line, QString &xVar, QString &yVar)
{
    xVar.clear();
    yVar.clear();
    hotkeys::HookState &s = hotkeys::hookState();
    QString text = runState().action(line).Text;
    if (text.endsWith(QLatin1String(" TRUE]"), Qt::CaseInsensitive))
        s.ClickZoneTrap = true;
    else if (text.endsWith(QLatin1String(" FALSE]"), Qt::CaseInsensitive))
        s.ClickZoneTrap = false;
    else
        return QStringLiteral("Invalid TRAP value (TRUE/FALSE)") + kClickZone;
    text.truncate(text.lastIndexOf(QLatin1Char(' ')));
    QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    words.removeFirst();  // "[CLICKZONE"

    static const char *const kCaptions[] = {"Xmin", "Ymin", "Xmax", "Ymax"};
    float *fields[] = {&s.ClickZoneXmin, &s.ClickZoneYmin, &s.ClickZoneXmax, &s.ClickZoneYmax};
    float limit = 0;
    if (const platform::MouseSender *mouse = platform::services().mouse)
        limit = float(mouse->screenSize().width());
    for (int i = 0; i < 4; ++i) {
        const QString caption = QLatin1String(kCaptions[i]) + QStringLiteral(" position");
        QString message = GetPositionOperand(words.value(i), caption, limit, *fields[i]);
        if (!message.isEmpty()) {
            // This one message has always spelled the name so.
            if (i == 3)
                message.replace(QStringLiteral("String variable not allowed for Ymax"),
                                QStringLiteral("String variable not allowed for YMax"));
            return message + kClickZone;
        }
    }
    if (s.ClickZoneXmax <= s.ClickZoneXmin)
        return QStringLiteral("Xmax must be > Xmin") + kClickZone;
    if (s.ClickZoneYmax <= s.ClickZoneYmin)
        return QStringLiteral("Ymax must be > Ymin") + kClickZone;
    if (words.size() >= 6) {
        xVar = words.at(4);
        yVar = words.at(5);
    }
    return {};
}

QString DoCLICKZONE(int line)
{
    hotkeys::HookMouse();
    if (!hotkeys::hookState().MouseHooked)
        return QStringLiteral("FATAL ERROR Mouse not hooked") + kClickZone;
    QString xVar, yVar;
    const QString message = SetCLICKZONEParms(line, xVar, yVar);
    if (!message.isEmpty()) {
        endClickZone();
        return QStringLiteral("FATAL ERROR ") + message;
    }
    const MacroRunState &s = runState();
    hotkeys::HookState &h = hotkeys::hookState();
    h.ClickZoneWaiting = true;
    h.ClickZoneHit = false;
    hotkeys::UpdateHookPlan();
    for (;;) {
        shell::Delay(kClickZonePollSeconds);
        // The hooks hand their events to this thread: they are served between the sleeps.
        DoEvents();
        if (s.AbortRequested) {
            endClickZone();
            return QStringLiteral("Macro aborted by user");
        }
        if (MACRO_Expired()) {
            endClickZone();
            return QStringLiteral("Macro timed out");
        }
        if (h.ClickZoneHit) {
            endClickZone();
            if (!xVar.isEmpty() && !yVar.isEmpty()) {
                macro::SetVarVal(xVar, double(h.ClickX));
                macro::SetVarVal(yVar, double(h.ClickY));
            }
            return {};
        }
    }
}

QString DoKEYLOG(int line)
{
    if (!hotkeys::hookState().KeyboardHooked)
        return QStringLiteral("FATAL ERROR Keyboard not hooked") + kKeyLog;
    const QString &text = runState().action(line).Text;
    if (macro::Len(text) < 10)
        return QStringLiteral("Invalid format") + kKeyLog;
    const QString operand = macro::Mid(text, 9, macro::Len(text) - 9).trimmed();
    if (operand.isEmpty())
        return QStringLiteral("Invalid format") + kKeyLog;
    if (!macro::IsVarName(operand))
        return QStringLiteral("Invalid variable format") + kKeyLog;
    hotkeys::HookState &s = hotkeys::hookState();
    const bool reset = operand.compare(QLatin1String("RESET"), Qt::CaseInsensitive) == 0;
    if (!s.KeyLogActive) {
        s.KeyLogText.clear();
        s.KeyLogActive = true;
    } else if (reset) {
        s.KeyLogText.clear();
    }
    if (!reset)
        macro::SetVarVal(operand, s.KeyLogText);
    return {};
}

} // namespace engine
