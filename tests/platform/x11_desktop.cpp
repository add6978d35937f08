#include "x11_desktop.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <sstream>
#include <vector>

namespace x11test {

namespace {

constexpr int kPollMs = 20;

std::vector<Window> WindowProperty(Display *display, Window window, const char *name)
{
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char *data = nullptr;
    std::vector<Window> result;
    if (XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, 4096, False, XA_WINDOW, &type,
                           &format, &count, &after, &data)
            == Success
        && data) {
        if (format == 32) {
            const auto *items = reinterpret_cast<const unsigned long *>(data);
            result.assign(items, items + count);
        }
        XFree(data);
    }
    return result;
}

QString WindowTitle(Display *display, Window window)
{
    char *name = nullptr;
    if (!XFetchName(display, window, &name) || !name)
        return {};
    const QString title = QString::fromUtf8(name);
    XFree(name);
    return title;
}

int IgnoreErrors(Display *, XErrorEvent *) { return 0; }

} // namespace

Display *TestDisplay()
{
    static Display *display = [] {
        XSetErrorHandler(IgnoreErrors);  // windows of other programs come and go
        return XOpenDisplay(nullptr);
    }();
    return display;
}

Recorder::Recorder(const QString &title) : m_title(title)
{
    if (!TestDisplay() || !m_dir.isValid())
        return;
    m_output = m_dir.filePath(QStringLiteral("recorded.txt"));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    m_process.setProcessEnvironment(env);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(KEY_RECORDER_PATH), {m_output, QStringLiteral("--title"), title});
    if (!m_process.waitForStarted())
        return;
    m_window = WaitForManagedWindow(title);
    QDeadlineTimer deadline(kWindowTimeoutMs);
    while (!QFile::exists(m_output) && !deadline.hasExpired())
        QThread::msleep(kPollMs);
}

Recorder::~Recorder()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool Recorder::activate()
{
    if (!ready() || !Xdotool({QStringLiteral("windowactivate"), QStringLiteral("--sync"), QString::number(m_window)}))
        return false;
    QDeadlineTimer deadline(kWindowTimeoutMs);
    for (;;) {
        Window focus = 0;
        int revert = 0;
        XGetInputFocus(TestDisplay(), &focus, &revert);
        if (ActiveWindow() == m_window && focus == m_window)
            return true;
        if (deadline.hasExpired())
            return false;
        QThread::msleep(kPollMs);
    }
}

bool Recorder::clear()
{
    TapKey("F12");
    const auto contents = sync();
    return contents && contents->text.isEmpty() && contents->events.isEmpty();
}

std::optional<Recorder::Contents> Recorder::sync()
{
    if (!ready())
        return std::nullopt;
    TapKey("F11");
    const QByteArray wanted = "mark " + QByteArray::number(++m_mark) + '\n';
    QDeadlineTimer deadline(kDeliveryTimeoutMs);
    for (;;) {
        QFile file(m_output);
        if (file.open(QIODevice::ReadOnly)) {
            const QByteArray data = file.readAll();
            if (data.startsWith(wanted)) {
                Contents contents;
                contents.mark = m_mark;
                const qsizetype textAt = data.indexOf("--- text ---\n");
                const QList<QByteArray> lines = data.left(textAt).split('\n');
                for (qsizetype i = 1; i < lines.size(); ++i)
                    if (!lines[i].isEmpty())
                        contents.events << QString::fromUtf8(lines[i]);
                contents.text = QString::fromUtf8(data.mid(textAt + 13));
                return contents;
            }
        }
        if (deadline.hasExpired())
            return std::nullopt;
        QThread::msleep(kPollMs);
    }
}

unsigned long WaitForManagedWindow(const QString &title)
{
    Display *display = TestDisplay();
    QDeadlineTimer deadline(kWindowTimeoutMs);
    while (display && !deadline.hasExpired()) {
        for (Window w : WindowProperty(display, DefaultRootWindow(display), "_NET_CLIENT_LIST"))
            if (WindowTitle(display, w) == title)
                return w;
        QThread::msleep(kPollMs);
    }
    return 0;
}

unsigned long ActiveWindow()
{
    Display *display = TestDisplay();
    const std::vector<Window> active = WindowProperty(display, DefaultRootWindow(display), "_NET_ACTIVE_WINDOW");
    return active.empty() ? 0 : active.front();
}

void TapKey(const char *keysymName)
{
    Display *display = TestDisplay();
    const KeyCode code = XKeysymToKeycode(display, XStringToKeysym(keysymName));
    XTestFakeKeyEvent(display, code, True, CurrentTime);
    XTestFakeKeyEvent(display, code, False, CurrentTime);
    XSync(display, False);
}

bool KeyIsDown(const char *keysymName)
{
    Display *display = TestDisplay();
    const KeyCode code = XKeysymToKeycode(display, XStringToKeysym(keysymName));
    char keys[32] = {};
    XQueryKeymap(display, keys);
    return code != 0 && (keys[code / 8] & (1 << (code % 8)));
}

bool CapsLockOn()
{
    XkbStateRec state{};
    XkbGetState(TestDisplay(), XkbUseCoreKbd, &state);
    return state.locked_mods & LockMask;
}

void SetCapsLock(bool on)
{
    XkbLockModifiers(TestDisplay(), XkbUseCoreKbd, LockMask, on ? LockMask : 0);
    XSync(TestDisplay(), False);
}

std::string KeymapDump()
{
    Display *display = TestDisplay();
    int minKeycode = 0, maxKeycode = 0, per = 0;
    XDisplayKeycodes(display, &minKeycode, &maxKeycode);
    KeySym *syms = XGetKeyboardMapping(display, KeyCode(minKeycode), maxKeycode - minKeycode + 1, &per);
    std::ostringstream out;
    for (int code = minKeycode; code <= maxKeycode; ++code) {
        out << code << ':';
        for (int i = 0; i < per; ++i)
            out << ' ' << std::hex << syms[(code - minKeycode) * per + i] << std::dec;
        out << '\n';
    }
    XFree(syms);
    XModifierKeymap *modifiers = XGetModifierMapping(display);
    for (int i = 0; i < 8 * modifiers->max_keypermod; ++i)
        out << int(modifiers->modifiermap[i]) << (i % modifiers->max_keypermod == modifiers->max_keypermod - 1 ? '\n' : ' ');
    XFreeModifiermap(modifiers);
    return out.str();
}

bool NoLentKeycodesNoted()
{
    Display *display = TestDisplay();
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char *data = nullptr;
    XGetWindowProperty(display, DefaultRootWindow(display), XInternAtom(display, "_SONAMARK_LENT_KEYCODES", False), 0,
                       16, False, AnyPropertyType, &type, &format, &count, &after, &data);
    if (data)
        XFree(data);
    return type == 0;
}

int TakeMappingNotifies()
{
    Display *display = TestDisplay();
    XSync(display, False);
    int count = 0;
    while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == MappingNotify && event.xmapping.request == MappingKeyboard)
            ++count;
    }
    return count;
}

bool Xdotool(const QStringList &args) { return QProcess::execute(QStringLiteral("xdotool"), args) == 0; }

} // namespace x11test
