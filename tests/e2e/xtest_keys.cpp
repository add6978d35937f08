// xtest_keys: presses and releases exact keys through XTest, where xdotool would add
// modifiers of its own (it presses Control_L for a Control_R chord).
// Usage: xtest_keys down KEYSYM | up KEYSYM | tap KEYSYM ...   (in order)
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

#include <cstdio>
#include <cstring>

int main(int argc, char **argv)
{
    Display *display = XOpenDisplay(nullptr);
    if (!display) {
        std::fprintf(stderr, "xtest_keys: no display\n");
        return 1;
    }
    for (int i = 1; i + 1 < argc; i += 2) {
        const KeySym sym = XStringToKeysym(argv[i + 1]);
        const KeyCode code = sym == NoSymbol ? 0 : XKeysymToKeycode(display, sym);
        if (code == 0) {
            std::fprintf(stderr, "xtest_keys: no key for %s\n", argv[i + 1]);
            return 1;
        }
        const bool tap = std::strcmp(argv[i], "tap") == 0;
        if (tap || std::strcmp(argv[i], "down") == 0)
            XTestFakeKeyEvent(display, code, True, CurrentTime);
        if (tap || std::strcmp(argv[i], "up") == 0)
            XTestFakeKeyEvent(display, code, False, CurrentTime);
        XSync(display, False);
    }
    XCloseDisplay(display);
    return 0;
}
