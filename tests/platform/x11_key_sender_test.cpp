// X11KeySender on the test desktop: keys typed into the key_recorder window arrive as
// written, and the keyboard map, Caps Lock and held modifiers are left as they were.
#include "platform/x11/x11_key_sender.h"
#include "x11_desktop.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

// After gtest and Qt: X.h defines None, Bool and the like.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/keysym.h>

using namespace x11test;
using platform::x11::X11KeySender;

namespace {

// The notation that types text as it stands.
QString Escaped(const QString &text)
{
    QString notation;
    for (QChar c : text)
        notation += QStringLiteral("+^%~(){}").contains(c) ? QStringLiteral("{%1}").arg(c) : QString(c);
    return notation;
}

QString LongText(int length)
{
    const QString pool = QStringLiteral(
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789     .,;:!?'\"-_/\\@#$&*=<>[]|`+^%~(){}"
        "\u00e9\u00fc\u20ac");
    QRandomGenerator random(7);
    QString text;
    for (int i = 0; i < length; ++i)
        text += pool.at(random.bounded(pool.size()));
    return text;
}

class X11KeySenderTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { s_recorder = new Recorder(); }
    static void TearDownTestSuite()
    {
        delete s_recorder;
        s_recorder = nullptr;
    }

    void SetUp() override
    {
        ASSERT_NE(TestDisplay(), nullptr) << "needs an X display: run under scripts/with-desktop.sh";
        ASSERT_TRUE(s_recorder->ready()) << "the key recorder window did not appear";
        ASSERT_TRUE(sender.available());
        ASSERT_TRUE(s_recorder->activate());
        ASSERT_TRUE(s_recorder->clear());
    }

    // Sends the notation and returns what the recorder received.
    Recorder::Contents send(const QString &notation)
    {
        sender.sendKeys(notation);
        const auto contents = s_recorder->sync();
        EXPECT_TRUE(contents.has_value()) << "the recorder did not answer";
        return contents.value_or(Recorder::Contents{});
    }

    static Recorder *s_recorder;
    X11KeySender sender;
};

Recorder *X11KeySenderTest::s_recorder = nullptr;

} // namespace

TEST_F(X11KeySenderTest, TextArrivesAsWritten)
{
    struct Row {
        const char16_t *notation;
        const char16_t *text;
        bool lends;  // needs characters that the map has no key for
    };
    const Row rows[] = {
        {u"hello world", u"hello world", false},
        {u"Hello, World! 123 @#$&*_=\"'<>?/|\\;:.,`[]", u"Hello, World! 123 @#$&*_=\"'<>?/|\\;:.,`[]", false},
        {u"+hello +(big) World", u"Hello BIG World", false},
        {u"a{+}b{%}c{^}d{~}e{(}f{)}g{{}h{}}", u"a+b%c^d~e(f)g{h}", false},
        {u"one~two{ENTER}three", u"one\ntwo\nthree", false},
        {u"a{TAB}b", u"a\tb", false},
        {u"abcdef{BS 2}{LEFT 3}X", u"aXbcd", false},
        {u"12345{HOME}{DEL}{END}{BKSP}", u"234", false},
        {u"{x 3}{LEFT}{DEL}", u"xx", false},
        {u"select me^(a)gone", u"gone", false},
        {u"^a{DEL}+(a^b)c", u"Ac", false},  // Ctrl+Shift+B does nothing in the box
        {u"{FOO}{LEFT", u"{FOO}{LEFT", false},
        {u"\u00e9\u00e8\u00e0\u00e7\u00fc\u20ac\u00df\u03a9\u65e5\u672c\U0001F600",
         u"\u00e9\u00e8\u00e0\u00e7\u00fc\u20ac\u00df\u03a9\u65e5\u672c\U0001F600", true},
        {u"x{\u00e9 3}y\u00e9+\u00e9", u"x\u00e9\u00e9\u00e9y\u00e9\u00e9", true},
    };
    for (const Row &row : rows) {
        ASSERT_TRUE(s_recorder->clear());
        const QString notation = QString::fromUtf16(row.notation);
        TakeMappingNotifies();
        EXPECT_EQ(send(notation).text.toStdString(), QString::fromUtf16(row.text).toStdString())
            << "notation: " << notation.toStdString();
        EXPECT_EQ(TakeMappingNotifies() > 0, row.lends) << "notation: " << notation.toStdString();
    }
}

TEST_F(X11KeySenderTest, NamedKeysArriveWithTheirModifiers)
{
    const Recorder::Contents got = send(QStringLiteral("{LEFT}{F5}^+{RIGHT}%{DOWN}{HELP}{F13}{PRTSC}{ESC}"));
    EXPECT_EQ(got.events.join(QLatin1Char(',')).toStdString(),
              "key Left,key F5,key Ctrl+Shift+Right,key Alt+Down,key Help,key F13,key Print,key Esc");
}

TEST_F(X11KeySenderTest, PressKeyPrintScreenIsAPressThatDoesNotStayDown)
{
    sender.pressKey(44);
    const auto got = s_recorder->sync();
    ASSERT_TRUE(got.has_value());
    EXPECT_EQ(got->events.join(QLatin1Char(',')).toStdString(), "key Print");
    EXPECT_FALSE(KeyIsDown("Print"));
}

TEST_F(X11KeySenderTest, ALongTextArrivesWholeAndTheMapIsAsBefore)
{
    const std::string mapBefore = KeymapDump();
    const QString text = LongText(2000);
    EXPECT_EQ(send(Escaped(text)).text.toStdString(), text.toStdString());
    EXPECT_EQ(KeymapDump(), mapBefore);
    EXPECT_TRUE(NoLentKeycodesNoted());
}

// More different characters than there are spare keycodes: they are lent in turns.
TEST_F(X11KeySenderTest, ManyCharactersOffTheMapArriveAndTheMapIsAsBefore)
{
    const std::string mapBefore = KeymapDump();
    QString text;
    for (char32_t c = 0x4e00; c < 0x4e00 + 120; ++c)
        text += QString::fromUcs4(&c, 1) + (c % 7 == 0 ? QStringLiteral(" a") : QString());
    EXPECT_EQ(send(text).text.toStdString(), text.toStdString());
    EXPECT_EQ(KeymapDump(), mapBefore);
    EXPECT_TRUE(NoLentKeycodesNoted());
}

// A ^%T hotkey whose macro types: the hotkey's modifiers are still held (here by an
// XTest client, as xdotool holds them) and must not turn "hello" into Ctrl+Alt+h.
TEST_F(X11KeySenderTest, ModifiersHeldByAnotherClientDoNotReachTheTyping)
{
    ASSERT_TRUE(Xdotool({QStringLiteral("keydown"), QStringLiteral("Control_L"), QStringLiteral("Alt_L")}));
    ASSERT_TRUE(KeyIsDown("Control_L"));
    sender.sendKeys(QStringLiteral("hello +world"));
    const bool controlHeld = KeyIsDown("Control_L"), altHeld = KeyIsDown("Alt_L");
    ASSERT_TRUE(Xdotool({QStringLiteral("keyup"), QStringLiteral("Control_L"), QStringLiteral("Alt_L")}));
    const auto got = s_recorder->sync();
    ASSERT_TRUE(got.has_value());
    EXPECT_EQ(got->text.toStdString(), "hello World");
    EXPECT_TRUE(got->events.isEmpty()) << got->events.join(QLatin1Char(',')).toStdString();
    EXPECT_TRUE(controlHeld) << "Control was not pressed again after the typing";
    EXPECT_TRUE(altHeld) << "Alt was not pressed again after the typing";
}

TEST_F(X11KeySenderTest, CapsLockStaysAsTheUserLeftIt)
{
    SetCapsLock(true);
    EXPECT_EQ(send(QStringLiteral("Hello \u00e9")).text.toStdString(), "Hello \u00e9");
    EXPECT_TRUE(CapsLockOn());
    // Toggled by the notation itself: the toggle holds.
    sender.sendKeys(QStringLiteral("{CAPSLOCK}"));
    EXPECT_FALSE(CapsLockOn());
    SetCapsLock(false);
}

TEST_F(X11KeySenderTest, StoppedPartWayLeavesTheMapAndModifiersAsBefore)
{
    const std::string mapBefore = KeymapDump();
    QString text;
    for (char32_t c = 0x4e00; c < 0x4e00 + 400; ++c)
        text += QString::fromUcs4(&c, 1);
    int asked = 0;
    sender.keepGoing = [&asked] { return ++asked < 2; };
    const Recorder::Contents got = send(QStringLiteral("+(") + text + QLatin1Char(')'));
    sender.keepGoing = nullptr;
    EXPECT_EQ(asked, 2);
    EXPECT_LT(got.text.size(), text.size());
    EXPECT_TRUE(text.startsWith(got.text)) << got.text.toStdString();
    EXPECT_EQ(KeymapDump(), mapBefore);
    EXPECT_TRUE(NoLentKeycodesNoted());
    for (const char *key : {"Shift_L", "Shift_R", "Control_L", "Alt_L", "ISO_Level3_Shift"})
        EXPECT_FALSE(KeyIsDown(key)) << key;
}

// On a map with AltGr: the characters it types are typed with it, not lent.
TEST_F(X11KeySenderTest, CharactersOnTheThirdLevelAreTypedWithAltGr)
{
    QProcess query;
    query.start(QStringLiteral("setxkbmap"), {QStringLiteral("-query")});
    ASSERT_TRUE(query.waitForFinished());
    QString layout = QStringLiteral("us");
    for (const QString &line : QString::fromUtf8(query.readAllStandardOutput()).split(QLatin1Char('\n')))
        if (line.startsWith(QLatin1String("layout:")))
            layout = line.mid(7).trimmed();
    ASSERT_EQ(QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("de")}), 0);
    const QString text = QStringLiteral("@\u20ac{}[]\\| \u00df\u00e4\u00d6 zy ZY \u00b5");
    TakeMappingNotifies();
    const std::string got = send(Escaped(text)).text.toStdString();
    const int mapChanges = TakeMappingNotifies();
    QProcess::execute(QStringLiteral("setxkbmap"), {layout});
    EXPECT_EQ(got, text.toStdString());
    EXPECT_EQ(mapChanges, 0);
}

TEST_F(X11KeySenderTest, LentKeycodesLeftByAKilledProgramAreGivenBack)
{
    const std::string mapBefore = KeymapDump();
    // Two spare keycodes lent as a killed sender would leave them; the second one has
    // since been given another keysym, so it is no longer ours to clear.
    Display *display = TestDisplay();
    int minKeycode = 0, maxKeycode = 0, per = 0;
    XDisplayKeycodes(display, &minKeycode, &maxKeycode);
    KeySym *syms = XGetKeyboardMapping(display, KeyCode(minKeycode), maxKeycode - minKeycode + 1, &per);
    std::vector<int> spare;
    for (int code = maxKeycode; code >= minKeycode && spare.size() < 2; --code) {
        bool empty = true;
        for (int i = 0; i < per; ++i)
            empty = empty && syms[(code - minKeycode) * per + i] == NoSymbol;
        if (empty)
            spare.push_back(code);
    }
    XFree(syms);
    ASSERT_EQ(spare.size(), 2u);
    KeySym lent[2] = {XK_eacute, XK_eacute}, other[2] = {XK_ssharp, XK_ssharp};
    XChangeKeyboardMapping(display, spare[0], 2, lent, 1);
    XChangeKeyboardMapping(display, spare[1], 2, other, 1);
    const long noted[4] = {spare[0], long(XK_eacute), spare[1], long(XK_Greek_OMEGA)};
    XChangeProperty(display, DefaultRootWindow(display), XInternAtom(display, "_SONAMARK_LENT_KEYCODES", False),
                    XA_INTEGER, 32, PropModeReplace, reinterpret_cast<const unsigned char *>(noted), 4);
    XSync(display, False);

    { X11KeySender next; }

    int width = 0;
    KeySym *first = XGetKeyboardMapping(display, KeyCode(spare[0]), 1, &width);
    KeySym *second = XGetKeyboardMapping(display, KeyCode(spare[1]), 1, &width);
    const KeySym firstAfter = first[0], secondAfter = second[0];
    XFree(first);
    XFree(second);
    KeySym empty[2] = {NoSymbol, NoSymbol};
    XChangeKeyboardMapping(display, spare[1], 2, empty, 1);
    XSync(display, False);
    EXPECT_EQ(firstAfter, KeySym(NoSymbol));
    EXPECT_EQ(secondAfter, KeySym(XK_ssharp));
    EXPECT_TRUE(NoLentKeycodesNoted());
    EXPECT_EQ(KeymapDump(), mapBefore);
}
