// X11WindowFinder on the test desktop's window manager: windows of our own, each with
// its WM_CLASS, made active by class or instance name.
#include "platform/x11/x11_window_finder.h"
#include "x11_desktop.h"

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QThread>

// After gtest and Qt: X.h defines None.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

using namespace x11test;
using platform::x11::ClassNameMatches;
using platform::x11::X11WindowFinder;

namespace {

// A plain top-level window with a title and a WM_CLASS, mapped until destroyed.
class ProbeWindow {
public:
    ProbeWindow(const char *title, const char *instance, const char *windowClass, int x)
    {
        Display *display = TestDisplay();
        m_window = XCreateSimpleWindow(display, DefaultRootWindow(display), x, 100, 200, 150, 0, 0, 0xffffff);
        XStoreName(display, m_window, title);
        XClassHint hint{const_cast<char *>(instance), const_cast<char *>(windowClass)};
        XSetClassHint(display, m_window, &hint);
        XWMHints hints{};
        hints.flags = InputHint;
        hints.input = True;
        XSetWMHints(display, m_window, &hints);
        XMapWindow(display, m_window);
        XSync(display, False);
        m_managed = WaitForManagedWindow(QString::fromLatin1(title)) == m_window;
    }
    ~ProbeWindow()
    {
        XDestroyWindow(TestDisplay(), m_window);
        XSync(TestDisplay(), False);
    }
    unsigned long id() const { return m_window; }
    bool managed() const { return m_managed; }

private:
    Window m_window = 0;
    bool m_managed = false;
};

} // namespace

TEST(X11WindowFinder, ClassNamesMatchInstanceOrClassInAnyCase)
{
    struct Row {
        const char *wanted, *instance, *windowClass;
        bool match;
    };
    const Row rows[] = {
        {"notepad", "notepad", "Notepad", true},   {"NOTEPAD", "gedit", "Notepad", true},
        {"Gedit", "gedit", "Gedit", true},         {"note", "notepad", "Notepad", false},
        {"", "", "", false},                       {"xterm", "", "", false},
        {"\xc3\xa9" "diteur", "\xc3\x89" "DITEUR", "x", true},
    };
    for (const Row &row : rows)
        EXPECT_EQ(ClassNameMatches(QString::fromUtf8(row.wanted), QString::fromUtf8(row.instance),
                                   QString::fromUtf8(row.windowClass)),
                  row.match)
            << row.wanted << " / " << row.instance << " / " << row.windowClass;
}

TEST(X11WindowFinder, ActivatesTheTopmostWindowOfAClass)
{
    ASSERT_NE(TestDisplay(), nullptr) << "needs an X display: run under scripts/with-desktop.sh";
    ProbeWindow one("Sonamark probe one", "probeOne", "SonamarkProbe", 100);
    ProbeWindow two("Sonamark probe two", "probeTwo", "SonamarkProbe", 400);
    ProbeWindow other("Sonamark probe other", "probeOther", "SonamarkOther", 700);
    ASSERT_TRUE(one.managed() && two.managed() && other.managed());
    X11WindowFinder finder;

    EXPECT_TRUE(finder.activateWindowOfClass(QStringLiteral("SONAMARKOTHER")));
    EXPECT_EQ(ActiveWindow(), other.id());
    EXPECT_TRUE(finder.activateWindowOfClass(QStringLiteral("probeone")));
    EXPECT_EQ(ActiveWindow(), one.id());
    // Both have the class: the one on top wins, and that changes as they are raised.
    EXPECT_TRUE(finder.activateWindowOfClass(QStringLiteral("sonamarkprobe")));
    EXPECT_EQ(ActiveWindow(), one.id());
    EXPECT_TRUE(finder.activateWindowOfClass(QStringLiteral("PROBETWO")));
    EXPECT_TRUE(finder.activateWindowOfClass(QStringLiteral("SonamarkProbe")));
    EXPECT_EQ(ActiveWindow(), two.id());

    EXPECT_FALSE(finder.activateWindowOfClass(QStringLiteral("NoSuchClassAnywhere")));
    EXPECT_FALSE(finder.activateWindowOfClass(QString()));
    EXPECT_EQ(ActiveWindow(), two.id());
}
