#include "hotkeys/input_hooks.h"

#include "hotkeys/hook_state.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/key_names.h"
#include "hotkeys/macro_recording.h"
#include "hotkeys/recording_text.h"
#include "platform/services.h"
#include "shell/app_state.h"
#include "shell/failure_report.h"
#include "shell/on_top_message.h"
#include "shell/settings.h"

#include <QLoggingCategory>
#include <QSet>
#include <QStringList>
#include <QTime>

Q_LOGGING_CATEGORY(lcHooks, "sonamark.hooks", QtWarningMsg)

namespace hotkeys {

namespace {

constexpr int kLastVirtualKey = 254;
constexpr int kLowerCaseOffset = 32;  // key number to its letter without Shift

MacroRunner g_runner;
std::function<void()> g_startRunTimer;
std::function<void()> g_cancelWebFetch;
std::function<double()> g_clock;

platform::InputHooks *hooks() { return platform::services().inputHooks; }

bool HotkeysOn() { return shell::settings().HotkeysEnabledOpt == QLatin1String("1"); }

bool MacroRunning() { return g_runner.running && g_runner.running(); }

bool IsLeftModifier(int key)
{
    return key == platform::vk::LeftControl || key == platform::vk::LeftAlt || key == platform::vk::LeftShift;
}

bool IsModifier(int key)
{
    return (key >= platform::vk::Shift && key <= platform::vk::Alt)
           || (key >= platform::vk::LeftShift && key <= platform::vk::RightAlt);
}

// The recording branch of IsHooked: the key goes into the text and on to the program.
bool RecordKey(int key)
{
    HookState &h = hookState();
    const double now = RecordingClock();
    if (now < h.RecordClock)
        h.RecordClock = now;
    if (IsModifier(key) || h.KeyEvent.synthetic)
        return false;
    h.AltDown = h.KeyEvent.isDown(platform::vk::LeftAlt);
    h.CtrlDown = h.KeyEvent.isDown(platform::vk::Control);
    h.ShiftDown = h.KeyEvent.isDown(platform::vk::LeftShift);
    const QString notation = LitString(KeyWithPrefixes(key, h.CtrlDown, h.AltDown, h.ShiftDown), h.ShiftDown);
    if (RecordingWindow *window = recordingWindow()) {
        QString recorded = window->text();
        AppendRecordedKey(recorded, notation);
        window->setText(recorded);
    }
    h.RecordClock = now;
    return false;
}

} // namespace

void SetMacroRunner(MacroRunner runner) { g_runner = std::move(runner); }
void SetRunTimerStarter(std::function<void()> start) { g_startRunTimer = std::move(start); }
void SetWebFetchCanceller(std::function<void()> cancel) { g_cancelWebFetch = std::move(cancel); }
void SetRecordingClock(std::function<double()> clock) { g_clock = std::move(clock); }

double RecordingClock()
{
    if (g_clock)
        return g_clock();
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

bool HookKeyboard()
{
    HookState &h = hookState();
    h.KeyboardHookExists = true;
    platform::InputHooks *port = hooks();
    h.KeyboardHooked = port && port->hookKeyboard();
    if (h.KeyboardHooked) {
        port->onKey = [](const platform::KeyEvent &event) {
            shell::Guarded("(Module) modKeyboardHook::Function KeyboardCallback",
                           [&] { KeyboardCallback(event); });
        };
        port->onMouse = [](const platform::MouseEvent &event) {
            shell::Guarded("(Module) modKeyboardHook::Function MouseCallback", [&] { MouseCallback(event); });
        };
        port->onHotkeysTaken = [](const QList<platform::KeyCombination> &taken) {
            shell::Guarded("(Module) modKeyboardHook::Sub HotkeysTaken", [&] { HotkeysTaken(taken); });
        };
        UpdateHookPlan();
    }
    qCDebug(lcHooks) << "keyboard hooked:" << h.KeyboardHooked;
    return h.KeyboardHooked;
}

void UnhookKeyboard()
{
    if (platform::InputHooks *port = hooks())
        port->unhookKeyboard();
}

bool HookMouse()
{
    platform::InputHooks *port = hooks();
    hookState().MouseHooked = port && hookState().KeyboardHooked && port->hookMouse();
    return hookState().MouseHooked;
}

void UnhookMouse()
{
    if (platform::InputHooks *port = hooks())
        port->unhookMouse();
    hookState().MouseHooked = false;
}

void HotkeysTaken(const QList<platform::KeyCombination> &taken)
{
    HookState &h = hookState();
    const HotkeyTable &t = table();
    QStringList named;
    for (const platform::KeyCombination &key : taken) {
        const QString notation =
            LitString(KeyWithPrefixes(key.virtualKey, key.control, key.alt, key.shift), key.shift).toUpper();
        if (notation.isEmpty() || h.TakenHotkeysTold.contains(notation))
            continue;
        for (int number = 1; number <= t.HotkeyCount; ++number) {
            const Hotkey &macro = t.at(number);
            if (macro.Active && macro.Keys.toUpper() == notation) {
                h.TakenHotkeysTold.insert(notation);
                named << macro.Keys + QStringLiteral("   ") + macro.Description;
            }
        }
    }
    if (named.isEmpty())
        return;
    qCWarning(lcHooks) << "hotkeys held by another program:" << named;
    shell::MsgBoxOT(QStringLiteral("Another program holds these hotkeys for itself:\r\n\r\n") + named.join(QStringLiteral("\r\n"))
                        + QStringLiteral("\r\n\r\nTheir macros still run, but the keys reach that program too. "
                                         "Give the macros other keys, or free the keys in that program."),
                    0, QStringLiteral("HotKeys"));
}

bool KeyboardCallback(const platform::KeyEvent &event)
{
    HookState &h = hookState();
    const bool running = MacroRunning();
    if (!(HotkeysOn() || h.MacroRecording || running || h.HotkeyCapture))
        return false;
    h.KeyEvent = event;
    if (!IsHooked(event.virtualKey))
        return false;
    qCDebug(lcHooks) << "swallowed key" << event.virtualKey << "pending macro" << shell::app().PendingHotkey;
    if (shell::app().PendingHotkey != 0 && g_startRunTimer)
        g_startRunTimer();
    return true;
}

bool IsHooked(int key)
{
    HookState &h = hookState();
    const bool running = MacroRunning();
    if (!h.KeyboardHookExists)
        return false;
    if (!h.KeyEvent.isDown(key))
        return false;  // a release is never swallowed
    if (h.MacroRecording)
        return RecordKey(key);
    if ((!HotkeysOn() || h.HotkeysPaused) && !running && !h.HotkeyCapture)
        return false;
    if (IsLeftModifier(key))
        return false;
    h.AltDown = h.KeyEvent.isDown(platform::vk::LeftAlt);
    h.CtrlDown = h.KeyEvent.isDown(platform::vk::LeftControl);
    h.ShiftDown = h.KeyEvent.isDown(platform::vk::LeftShift);
    if (h.HotkeyCapture) {
        h.CapturedKey = LitString(KeyWithPrefixes(key, h.CtrlDown, h.AltDown, h.ShiftDown), h.ShiftDown);
        return true;
    }
    if (running) {
        // The key number read as a letter: right for letters, by design for the rest.
        if (h.KeyLogActive)
            h.KeyLogText += QChar(h.ShiftDown ? key : key + kLowerCaseOffset);
        if (!h.AltDown && !h.CtrlDown && key == platform::vk::Escape) {
            if (g_runner.requestAbort)
                g_runner.requestAbort();
            if (h.WebFetchActive) {
                h.WebFetchActive = false;
                if (g_cancelWebFetch)
                    g_cancelWebFetch();
            }
            return true;
        }
    }
    const int index = GetHotkeyIndex(h.CtrlDown, h.AltDown, h.ShiftDown, key);
    if (index == 0 || !g_runner.processHotkey)
        return false;
    const QString message = g_runner.processHotkey(index);
    if (!message.isEmpty()) {
        shell::MsgBoxOT(message, 0, QStringLiteral("HotKeys"));
        return false;
    }
    return true;
}

bool MouseCallback(const platform::MouseEvent &event)
{
    using namespace platform::mouse;
    if (event.message != LeftDown && event.message != LeftUp && event.message != RightDown
        && event.message != RightUp)
        return false;
    hookState().MouseEvent = event;
    return IsMouseHooked(event.message, event.x, event.y);
}

bool IsMouseHooked(int message, int x, int y)
{
    HookState &h = hookState();
    if (h.MousePointCapture && h.ClickX == kNoClick) {
        if (!h.PointCaptureExcluded.contains(x, y)) {
            h.ClickX = float(x);
            h.ClickY = float(y);
            UpdateHookPlan();
            return true;
        }
    }
    if (h.ClickZoneWaiting) {
        h.ClickX = float(x);
        h.ClickY = float(y);
        if (x >= h.ClickZoneXmin && x <= h.ClickZoneXmax && y >= h.ClickZoneYmin && y <= h.ClickZoneYmax) {
            h.ClickZoneHit = true;
            if (h.ClickZoneTrap)
                return true;
        }
    }
    if (h.MacroRecording && !h.MouseEvent.synthetic) {
        const double now = RecordingClock();
        if (RecordingWindow *window = recordingWindow()) {
            QString recorded = window->text();
            AppendRecordedClick(recorded, message, x, y, qMax(0.0, now - h.RecordClock));
            window->setText(recorded);
        }
        h.RecordClock = now;
    }
    return false;
}

platform::KeyPlan CurrentKeyPlan()
{
    platform::KeyPlan plan;
    const HookState &h = hookState();
    const bool running = MacroRunning();
    if (!h.KeyboardHooked || h.MacroRecording || !(HotkeysOn() || running || h.HotkeyCapture))
        return plan;
    if (h.HotkeysPaused && !running && !h.HotkeyCapture)
        return plan;
    if (h.HotkeyCapture) {
        plan.everyKey = true;
        return plan;
    }
    plan.escape = running;
    QSet<QString> active;
    const HotkeyTable &t = table();
    for (int number = 1; number <= t.HotkeyCount; ++number)
        if (t.at(number).Active && !t.at(number).Keys.isEmpty())
            active.insert(t.at(number).Keys.toUpper());
    if (active.isEmpty())
        return plan;
    // Every key and left-modifier combination whose notation names an enabled macro,
    // found the way the hook will look it up.
    for (int key = 1; key <= kLastVirtualKey; ++key) {
        if (IsLeftModifier(key))
            continue;
        for (int mods = 0; mods < 8; ++mods) {
            const bool ctrl = mods & 1, alt = mods & 2, shift = mods & 4;
            const QString notation = LitString(KeyWithPrefixes(key, ctrl, alt, shift), shift).toUpper();
            if (!notation.isEmpty() && active.contains(notation))
                plan.hotkeys.append({key, ctrl, alt, shift});
        }
    }
    return plan;
}

platform::ClickPlan CurrentClickPlan()
{
    platform::ClickPlan plan;
    const HookState &h = hookState();
    plan.pointCapture = h.MousePointCapture && h.ClickX == kNoClick;
    plan.excluded = h.PointCaptureExcluded;
    plan.trapZone = h.ClickZoneWaiting && h.ClickZoneTrap;
    plan.zone = QRect(QPoint(int(h.ClickZoneXmin), int(h.ClickZoneYmin)),
                      QPoint(int(h.ClickZoneXmax), int(h.ClickZoneYmax)));
    return plan;
}

void UpdateHookPlan()
{
    platform::InputHooks *port = hooks();
    if (!port || !hookState().KeyboardHooked)
        return;
    port->setKeyPlan(CurrentKeyPlan());
    port->setClickPlan(CurrentClickPlan());
}

} // namespace hotkeys
