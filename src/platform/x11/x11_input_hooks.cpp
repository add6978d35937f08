#include "platform/x11/x11_input_hooks.h"

#include "platform/x11/key_grabs.h"
#include "platform/x11/virtual_keys.h"

#include <QLoggingCategory>
#include <QMetaObject>
#include <QPointer>
#include <QSet>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xproto.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <bitset>
#include <cstring>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

Q_LOGGING_CATEGORY(lcX11Hooks, "sonamark.x11.hooks", QtWarningMsg)

namespace platform::x11 {

namespace {

constexpr int kXiMajor = 2, kXiMinor = 2;
constexpr unsigned kButtonMasks = Button1Mask | Button2Mask | Button3Mask | Button4Mask | Button5Mask;

// Grab failures (another program holds the combination) are expected: they are counted,
// never fatal. Xlib's default handler would end the process. A refused key grab is kept
// by its request's serial, so that the hooks can tell which hotkey it was.
std::atomic<int> g_xErrors{0};
std::mutex g_refusedMutex;
std::vector<std::pair<Display *, unsigned long>> g_refusedGrabs;
int CountXError(Display *display, XErrorEvent *error)
{
    ++g_xErrors;
    qCDebug(lcX11Hooks) << "X error" << int(error->error_code) << "on request" << int(error->request_code);
    if (error->request_code == X_GrabKey && error->error_code == BadAccess) {
        std::lock_guard lock(g_refusedMutex);
        g_refusedGrabs.emplace_back(display, error->serial);
    }
    return 0;
}

// The grabs among requests (serial -> grab) that the server refused on display.
GrabSet TakeRefusedGrabs(Display *display, const std::map<unsigned long, std::pair<int, unsigned>> &requests)
{
    GrabSet refused;
    std::lock_guard lock(g_refusedMutex);
    for (auto it = g_refusedGrabs.begin(); it != g_refusedGrabs.end();) {
        if (it->first != display) {
            ++it;
            continue;
        }
        if (const auto request = requests.find(it->second); request != requests.end())
            refused.insert(request->second);
        it = g_refusedGrabs.erase(it);
    }
    return refused;
}

} // namespace

class X11InputHooks::Worker {
public:
    explicit Worker(X11InputHooks *owner) : m_owner(owner) {}
    ~Worker() { stop(); }

    bool start();
    void stop();
    bool running() const { return m_display != nullptr; }
    // Runs f on the X thread, in order.
    void post(std::function<void()> f);
    QString keyText(int virtualKey, bool shift);

    // X-thread state set through post().
    void setKeyPlan(const KeyPlan &plan);
    void setClickPlan(const ClickPlan &plan);
    void selectButtons(bool on);
    void addSettleWaiter(std::function<void()> done);

private:
    void run();
    void runCommands();
    void handle(XEvent &event);
    void handleRaw(XIRawEvent *raw, int type);
    void handleGrabbedKey(const XKeyEvent &event);
    void handleGrabbedButton(const XButtonEvent &event);
    void readKeymap();
    void readSyntheticDevices();
    void applyKeyGrabs();
    void applyButtonGrab();
    void selectRawEvents();
    void checkSettled();
    bool keyDown(const char keys[32], int virtualKey) const;
    bool trackedDown(int virtualKey) const;
    template <typename F>
    void toGui(F f);

    X11InputHooks *m_owner;
    Display *m_display = nullptr;
    Window m_root = 0;
    int m_xiOpcode = 0;
    int m_xkbEvent = 0;
    int m_wakeFd = -1;
    std::thread m_thread;
    std::atomic<bool> m_stopping{false};

    std::mutex m_commandsMutex;
    std::vector<std::function<void()>> m_commands;

    // Read by keyText() on the GUI thread too.
    mutable std::mutex m_keymapMutex;
    KeycodeTable m_virtualKeys{};
    std::array<std::array<unsigned long, 2>, 256> m_keysyms{};

    // X thread only.
    ModifierMasks m_masks;
    KeyPlan m_keyPlan;
    ClickPlan m_clickPlan;
    GrabSet m_grabbed;
    bool m_keyboardGrabbed = false;
    bool m_buttonsGrabbed = false;
    bool m_buttonsSelected = false;
    std::bitset<256> m_down;
    // Raw presses of each key not yet matched by a grabbed press. A grabbed press with
    // none is an auto-repeat, which the server makes without a raw event.
    std::array<int, 256> m_rawPending{};
    QSet<int> m_synthetic;
    std::vector<std::function<void()>> m_settleWaiters;
    bool m_settling = false;
};

template <typename F>
void X11InputHooks::Worker::toGui(F f)
{
    QPointer<X11InputHooks> owner(m_owner);
    QMetaObject::invokeMethod(
        m_owner,
        [owner, f = std::move(f)] {
            if (owner)
                f(owner.data());
        },
        Qt::QueuedConnection);
}

bool X11InputHooks::Worker::start()
{
    XInitThreads();
    Display *display = XOpenDisplay(nullptr);
    if (!display) {
        qCWarning(lcX11Hooks) << "no X display: no global hotkeys";
        return false;
    }
    int event = 0, error = 0, major = 0, minor = 0;
    if (!XTestQueryExtension(display, &event, &error, &major, &minor)) {
        qCWarning(lcX11Hooks) << "the X server has no XTest extension";
        XCloseDisplay(display);
        return false;
    }
    int xiOpcode = 0;
    int xiMajor = kXiMajor, xiMinor = kXiMinor;
    if (!XQueryExtension(display, "XInputExtension", &xiOpcode, &event, &error)
        || XIQueryVersion(display, &xiMajor, &xiMinor) != Success
        || xiMajor * 100 + xiMinor < kXiMajor * 100 + kXiMinor) {
        qCWarning(lcX11Hooks) << "the X server has no XInput 2.2";
        XCloseDisplay(display);
        return false;
    }
    int xkbOpcode = 0, xkbError = 0, xkbMajor = XkbMajorVersion, xkbMinor = XkbMinorVersion;
    if (XkbQueryExtension(display, &xkbOpcode, &m_xkbEvent, &xkbError, &xkbMajor, &xkbMinor))
        XkbSelectEvents(display, XkbUseCoreKbd, XkbNewKeyboardNotifyMask | XkbMapNotifyMask,
                        XkbNewKeyboardNotifyMask | XkbMapNotifyMask);
    else
        m_xkbEvent = -1;
    XSetErrorHandler(CountXError);
    m_display = display;
    m_root = DefaultRootWindow(display);
    m_xiOpcode = xiOpcode;
    m_wakeFd = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    readKeymap();
    readSyntheticDevices();
    selectRawEvents();
    XFlush(display);
    m_stopping = false;
    m_thread = std::thread([this] { run(); });
    return true;
}

void X11InputHooks::Worker::stop()
{
    if (!m_display)
        return;
    m_stopping = true;
    const uint64_t one = 1;
    [[maybe_unused]] ssize_t n = write(m_wakeFd, &one, sizeof one);
    if (m_thread.joinable())
        m_thread.join();
    XCloseDisplay(m_display);  // releases every grab of this connection
    m_display = nullptr;
    close(m_wakeFd);
    m_wakeFd = -1;
}

void X11InputHooks::Worker::post(std::function<void()> f)
{
    if (!m_display)
        return;
    {
        std::lock_guard<std::mutex> lock(m_commandsMutex);
        m_commands.push_back(std::move(f));
    }
    const uint64_t one = 1;
    [[maybe_unused]] ssize_t n = write(m_wakeFd, &one, sizeof one);
}

void X11InputHooks::Worker::run()
{
    while (!m_stopping) {
        runCommands();
        while (XPending(m_display) > 0) {
            XEvent event;
            XNextEvent(m_display, &event);
            handle(event);
        }
        pollfd fds[2] = {{ConnectionNumber(m_display), POLLIN, 0}, {m_wakeFd, POLLIN, 0}};
        if (poll(fds, 2, -1) < 0 && errno != EINTR)
            break;
        if (fds[1].revents & POLLIN) {
            uint64_t count = 0;
            [[maybe_unused]] ssize_t n = read(m_wakeFd, &count, sizeof count);
        }
        if (fds[0].revents & (POLLERR | POLLHUP)) {
            qCWarning(lcX11Hooks) << "the X connection of the hooks was lost";
            break;
        }
    }
    // Leave the server with nothing of ours grabbed.
    if (m_keyboardGrabbed)
        XUngrabKeyboard(m_display, CurrentTime);
    XUngrabKey(m_display, AnyKey, AnyModifier, m_root);
    XUngrabButton(m_display, AnyButton, AnyModifier, m_root);
    XSync(m_display, False);
}

void X11InputHooks::Worker::runCommands()
{
    std::vector<std::function<void()>> commands;
    {
        std::lock_guard<std::mutex> lock(m_commandsMutex);
        commands.swap(m_commands);
    }
    for (auto &command : commands)
        command();
    XFlush(m_display);
}

void X11InputHooks::Worker::handle(XEvent &event)
{
    if (event.type == KeyPress) {
        handleGrabbedKey(event.xkey);
        return;
    }
    if (event.type == ButtonPress) {
        handleGrabbedButton(event.xbutton);
        return;
    }
    if (event.type == MappingNotify || (m_xkbEvent >= 0 && event.type == m_xkbEvent)) {
        if (event.type == MappingNotify)
            XRefreshKeyboardMapping(&event.xmapping);
        readKeymap();
        applyKeyGrabs();
        return;
    }
    if (event.type != GenericEvent || event.xcookie.extension != m_xiOpcode)
        return;
    XGenericEventCookie *cookie = &event.xcookie;
    if (!XGetEventData(m_display, cookie))
        return;
    if (cookie->evtype == XI_HierarchyChanged)
        readSyntheticDevices();
    else
        handleRaw(static_cast<XIRawEvent *>(cookie->data), cookie->evtype);
    XFreeEventData(m_display, cookie);
}

void X11InputHooks::Worker::handleGrabbedKey(const XKeyEvent &event)
{
    char keys[32];
    XQueryKeymap(m_display, keys);
    const int virtualKey = m_virtualKeys[event.keycode & 0xff];
    const bool swallow = ConsumesKey(m_keyPlan, virtualKey, keyDown(keys, vk::LeftControl),
                                     keyDown(keys, vk::LeftAlt), keyDown(keys, vk::LeftShift));
    const int code = event.keycode & 0xff;
    if (m_rawPending[code] > 0) {
        --m_rawPending[code];
    } else if (virtualKey != 0) {
        // Auto-repeat: the logic sees it as one more press, so a held hotkey fires again.
        KeyEvent repeat;
        repeat.virtualKey = virtualKey;
        repeat.down = true;
        repeat.leftControl = keyDown(keys, vk::LeftControl);
        repeat.leftAlt = keyDown(keys, vk::LeftAlt);
        repeat.leftShift = keyDown(keys, vk::LeftShift);
        repeat.control = repeat.leftControl || keyDown(keys, vk::RightControl);
        toGui([repeat](X11InputHooks *owner) {
            if (owner->onKey)
                owner->onKey(repeat);
        });
    }
    XAllowEvents(m_display, swallow ? AsyncKeyboard : ReplayKeyboard, event.time);
    // The grab the press activated would take every key until this one is released;
    // ending it at once lets the releases (and other keys) go where they belong. A key
    // held down activates the passive grab again on each auto-repeat.
    if (swallow && !m_keyboardGrabbed)
        XUngrabKeyboard(m_display, event.time);
    XFlush(m_display);
}

void X11InputHooks::Worker::handleGrabbedButton(const XButtonEvent &event)
{
    const int message = event.button == Button1 ? mouse::LeftDown : event.button == Button3 ? mouse::RightDown : 0;
    const bool swallow = message != 0 && ConsumesClick(m_clickPlan, message, event.x_root, event.y_root);
    XAllowEvents(m_display, swallow ? AsyncPointer : ReplayPointer, event.time);
    if (swallow && m_clickPlan.pointCapture && !m_clickPlan.excluded.contains(event.x_root, event.y_root)) {
        // One point only; the logic sends a new plan as well.
        m_clickPlan.pointCapture = false;
        applyButtonGrab();
    }
    XFlush(m_display);
}

void X11InputHooks::Worker::handleRaw(XIRawEvent *raw, int type)
{
    const bool synthetic = m_synthetic.contains(raw->sourceid);
    if (type == XI_RawKeyPress || type == XI_RawKeyRelease) {
        const int code = raw->detail & 0xff;
        const bool down = type == XI_RawKeyPress;
        m_down[code] = down;
        m_rawPending[code] = down ? m_rawPending[code] + 1 : 0;
        KeyEvent event;
        event.virtualKey = m_virtualKeys[code];
        event.down = down;
        event.leftControl = trackedDown(vk::LeftControl);
        event.leftAlt = trackedDown(vk::LeftAlt);
        event.leftShift = trackedDown(vk::LeftShift);
        event.control = event.leftControl || trackedDown(vk::RightControl);
        event.synthetic = synthetic;
        if (event.virtualKey == 0)
            return;  // a key the notation has no name for
        toGui([event](X11InputHooks *owner) {
            if (owner->onKey)
                owner->onKey(event);
        });
        return;
    }
    if ((type != XI_RawButtonPress && type != XI_RawButtonRelease) || !m_buttonsSelected)
        return;
    const bool press = type == XI_RawButtonPress;
    int message = 0;
    if (raw->detail == 1)
        message = press ? mouse::LeftDown : mouse::LeftUp;
    else if (raw->detail == 3)
        message = press ? mouse::RightDown : mouse::RightUp;
    if (message != 0) {
        Window rootReturn = 0, child = 0;
        int x = 0, y = 0, winX = 0, winY = 0;
        unsigned mask = 0;
        XQueryPointer(m_display, m_root, &rootReturn, &child, &x, &y, &winX, &winY, &mask);
        const MouseEvent event{message, x, y, synthetic};
        toGui([event](X11InputHooks *owner) {
            if (owner->onMouse)
                owner->onMouse(event);
        });
    }
    if (!press)
        checkSettled();
}

bool X11InputHooks::Worker::keyDown(const char keys[32], int virtualKey) const
{
    for (int code = 8; code < 256; ++code)
        if (m_virtualKeys[code] == virtualKey && (keys[code / 8] & (1 << (code % 8))))
            return true;
    return false;
}

bool X11InputHooks::Worker::trackedDown(int virtualKey) const
{
    for (int code = 8; code < 256; ++code)
        if (m_down[code] && m_virtualKeys[code] == virtualKey)
            return true;
    return false;
}

void X11InputHooks::Worker::readKeymap()
{
    KeycodeTable keys{};
    std::array<std::array<unsigned long, 2>, 256> keysyms{};
    int minCode = 8, maxCode = 255;
    XDisplayKeycodes(m_display, &minCode, &maxCode);
    for (int code = minCode; code <= maxCode && code < 256; ++code) {
        for (unsigned level = 0; level < 2; ++level)
            keysyms[code][level] = XkbKeycodeToKeysym(m_display, KeyCode(code), 0, level);
        keys[code] = VirtualKeyOfKeysym(keysyms[code][0]);
        if (keys[code] == 0)
            keys[code] = VirtualKeyOfKeysym(keysyms[code][1]);
    }
    {
        std::lock_guard<std::mutex> lock(m_keymapMutex);
        m_virtualKeys = keys;
        m_keysyms = keysyms;
    }
    // Modifier masks: Shift, Lock and Control are fixed; Alt, Num Lock and Scroll Lock
    // are whichever ModN holds their keys.
    m_masks = ModifierMasks{ShiftMask, ControlMask, Mod1Mask, LockMask, 0, 0};
    if (XModifierKeymap *map = XGetModifierMapping(m_display)) {
        for (int mod = Mod1MapIndex; mod <= Mod5MapIndex; ++mod)
            for (int k = 0; k < map->max_keypermod; ++k) {
                const KeyCode code = map->modifiermap[mod * map->max_keypermod + k];
                if (code == 0)
                    continue;
                const KeySym sym = XkbKeycodeToKeysym(m_display, code, 0, 0);
                if (sym == XK_Num_Lock)
                    m_masks.numLock = 1u << mod;
                else if (sym == XK_Scroll_Lock)
                    m_masks.scrollLock = 1u << mod;
                else if (sym == XK_Alt_L)
                    m_masks.alt = 1u << mod;
            }
        XFreeModifiermap(map);
    }
}

void X11InputHooks::Worker::readSyntheticDevices()
{
    m_synthetic.clear();
    int count = 0;
    XIDeviceInfo *devices = XIQueryDevice(m_display, XIAllDevices, &count);
    for (int i = 0; i < count; ++i)
        if (std::strncmp(devices[i].name, kSyntheticDeviceName, std::strlen(kSyntheticDeviceName)) == 0)
            m_synthetic.insert(devices[i].deviceid);
    XIFreeDeviceInfo(devices);
}

void X11InputHooks::Worker::selectRawEvents()
{
    unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
    XISetMask(bits, XI_RawKeyPress);
    XISetMask(bits, XI_RawKeyRelease);
    if (m_buttonsSelected) {
        XISetMask(bits, XI_RawButtonPress);
        XISetMask(bits, XI_RawButtonRelease);
    }
    XIEventMask raw{XIAllMasterDevices, int(sizeof bits), bits};
    unsigned char hierarchyBits[XIMaskLen(XI_LASTEVENT)] = {};
    XISetMask(hierarchyBits, XI_HierarchyChanged);
    XIEventMask hierarchy{XIAllDevices, int(sizeof hierarchyBits), hierarchyBits};
    XIEventMask masks[] = {raw, hierarchy};
    XISelectEvents(m_display, m_root, masks, 2);
}

void X11InputHooks::Worker::setKeyPlan(const KeyPlan &plan)
{
    m_keyPlan = plan;
    applyKeyGrabs();
}

void X11InputHooks::Worker::setClickPlan(const ClickPlan &plan)
{
    m_clickPlan = plan;
    applyButtonGrab();
}

void X11InputHooks::Worker::applyKeyGrabs()
{
    const GrabSet wanted = GrabsForPlan(m_keyPlan, m_virtualKeys, m_masks);
    for (const auto &[code, mods] : m_grabbed)
        if (!wanted.count({code, mods}))
            XUngrabKey(m_display, code, mods, m_root);
    const int errorsBefore = g_xErrors;
    std::map<unsigned long, std::pair<int, unsigned>> requests;  // serial -> grab
    for (const auto &[code, mods] : wanted) {
        if (!m_grabbed.count({code, mods})) {
            requests[NextRequest(m_display)] = {code, mods};
            XGrabKey(m_display, code, mods, m_root, False, GrabModeAsync, GrabModeSync);
        }
    }
    m_grabbed = wanted;
    if (m_keyPlan.everyKey != m_keyboardGrabbed) {
        if (m_keyPlan.everyKey)
            XGrabKeyboard(m_display, m_root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
        else
            XUngrabKeyboard(m_display, CurrentTime);
        m_keyboardGrabbed = m_keyPlan.everyKey;
    }
    XSync(m_display, False);
    if (g_xErrors != errorsBefore)
        qCWarning(lcX11Hooks) << "some hotkeys are taken by another program:" << (g_xErrors - errorsBefore)
                              << "key grabs failed";
    const GrabSet refused = TakeRefusedGrabs(m_display, requests);
    for (const auto &grab : refused)
        m_grabbed.erase(grab);  // asked for again with the next plan
    const QList<KeyCombination> taken = TakenHotkeys(refused, m_keyPlan, m_virtualKeys, m_masks);
    if (!taken.isEmpty()) {
        toGui([taken](X11InputHooks *owner) {
            if (owner->onHotkeysTaken)
                owner->onHotkeysTaken(taken);
        });
    }
}

void X11InputHooks::Worker::applyButtonGrab()
{
    const bool wanted = m_clickPlan.pointCapture || m_clickPlan.trapZone;
    if (wanted == m_buttonsGrabbed)
        return;
    if (wanted)
        XGrabButton(m_display, AnyButton, AnyModifier, m_root, False, ButtonPressMask | ButtonReleaseMask,
                    GrabModeSync, GrabModeAsync, None, None);
    else
        XUngrabButton(m_display, AnyButton, AnyModifier, m_root);
    m_buttonsGrabbed = wanted;
    XFlush(m_display);
}

void X11InputHooks::Worker::selectButtons(bool on)
{
    m_buttonsSelected = on;
    selectRawEvents();
    if (!on)
        checkSettled();
}

void X11InputHooks::Worker::addSettleWaiter(std::function<void()> done)
{
    m_settleWaiters.push_back(std::move(done));
    checkSettled();
}

void X11InputHooks::Worker::checkSettled()
{
    if (m_settleWaiters.empty() || m_settling)
        return;
    if (m_buttonsSelected) {
        Window rootReturn = 0, child = 0;
        int x = 0, y = 0, winX = 0, winY = 0;
        unsigned mask = 0;
        XQueryPointer(m_display, m_root, &rootReturn, &child, &x, &y, &winX, &winY, &mask);
        if (mask & kButtonMasks)
            return;  // again on the next raw release
    }
    // Everything the server sent before now is handed on before the waiters run.
    m_settling = true;
    XSync(m_display, False);
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        handle(event);
    }
    m_settling = false;
    std::vector<std::function<void()>> waiters;
    waiters.swap(m_settleWaiters);
    toGui([waiters = std::move(waiters)](X11InputHooks *) {
        for (const auto &done : waiters)
            done();
    });
}

QString X11InputHooks::Worker::keyText(int virtualKey, bool shift)
{
    std::lock_guard<std::mutex> lock(m_keymapMutex);
    for (int code = 8; code < 256; ++code) {
        if (m_virtualKeys[code] != virtualKey)
            continue;
        unsigned long sym = m_keysyms[code][shift ? 1 : 0];
        if (sym == NoSymbol)
            sym = m_keysyms[code][0];
        const char32_t c = KeysymCharacter(sym);
        return c ? QString::fromUcs4(&c, 1) : QString();
    }
    return {};
}

X11InputHooks::X11InputHooks() : m_worker(std::make_unique<Worker>(this)) {}

X11InputHooks::~X11InputHooks() { m_worker->stop(); }

bool X11InputHooks::hookKeyboard()
{
    if (m_worker->running())
        return true;
    return m_worker->start();
}

void X11InputHooks::unhookKeyboard() { m_worker->stop(); }

bool X11InputHooks::hookMouse()
{
    if (!m_worker->running())
        return false;
    Worker *worker = m_worker.get();
    worker->post([worker] { worker->selectButtons(true); });
    return true;
}

void X11InputHooks::unhookMouse()
{
    Worker *worker = m_worker.get();
    worker->post([worker] { worker->selectButtons(false); });
}

void X11InputHooks::setKeyPlan(const KeyPlan &plan)
{
    Worker *worker = m_worker.get();
    worker->post([worker, plan] { worker->setKeyPlan(plan); });
}

void X11InputHooks::setClickPlan(const ClickPlan &plan)
{
    Worker *worker = m_worker.get();
    worker->post([worker, plan] { worker->setClickPlan(plan); });
}

QString X11InputHooks::keyText(int virtualKey, bool shift)
{
    if (!m_worker->running()) {
        // No keyboard map to ask: letters and digits, as on any layout.
        if (virtualKey >= 'A' && virtualKey <= 'Z')
            return QString(QLatin1Char(char(shift ? virtualKey : virtualKey + 32)));
        if (virtualKey >= '0' && virtualKey <= '9' && !shift)
            return QString(QLatin1Char(char(virtualKey)));
        return {};
    }
    return m_worker->keyText(virtualKey, shift);
}

void X11InputHooks::whenInputSettled(std::function<void()> done)
{
    if (!m_worker->running()) {
        QMetaObject::invokeMethod(this, std::move(done), Qt::QueuedConnection);
        return;
    }
    Worker *worker = m_worker.get();
    worker->post([worker, done = std::move(done)]() mutable { worker->addSettleWaiter(std::move(done)); });
}

} // namespace platform::x11
