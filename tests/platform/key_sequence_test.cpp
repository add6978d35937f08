// The keystroke notation parsed into key steps: one row per notation, the steps written
// as DescribeKeySequence writes them ("+Shift a -Shift", "{Left*3}", "U+0020" for a blank).
#include "platform/key_sequence.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>
#include <vector>

using namespace platform;

namespace {

struct Row {
    const char16_t *notation;
    const char16_t *steps;
};

void ExpectRows(const std::vector<Row> &rows)
{
    for (const Row &row : rows) {
        const QString notation = QString::fromUtf16(row.notation);
        EXPECT_EQ(DescribeKeySequence(ParseKeyNotation(notation)).toStdString(), QString::fromUtf16(row.steps).toStdString())
            << "notation: " << notation.toStdString();
    }
}

} // namespace

TEST(KeyNotation, PlainCharactersTypeThemselves)
{
    ExpectRows({
        {u"", u""},
        {u"abc", u"a b c"},
        {u"Hi you", u"H i U+0020 y o u"},
        {u"[x]=1;", u"[ x ] = 1 ;"},
        {u"\u00e9\u20ac\u00df\u03a9", u"\u00e9 \u20ac \u00df \u03a9"},
        {u"\u65e5\u672c", u"\u65e5 \u672c"},
        {u"\U0001F600", u"\U0001F600"},  // a surrogate pair is one character
        {u"a\tb", u"a {Tab} b"},
        {u"a\r\nb\nc\rd", u"a {Enter} b {Enter} c {Enter} d"},
    });
}

TEST(KeyNotation, ModifiersHoldForTheNextKeyOrGroup)
{
    ExpectRows({
        {u"+a", u"+Shift a -Shift"},
        {u"^c", u"+Control c -Control"},
        {u"%f", u"+Alt f -Alt"},
        {u"^+a", u"+Control +Shift a -Shift -Control"},
        {u"+abc", u"+Shift a -Shift b c"},
        {u"+(abc)d", u"+Shift a b c -Shift d"},
        {u"^(a+(b)c)", u"+Control a +Shift b -Shift c -Control"},
        // Already held by the group: not pressed again, not let go early.
        {u"+(a+b)c", u"+Shift a b -Shift c"},
        {u"^^x", u"+Control x -Control"},
        {u"(ab)", u"a b"},
        {u"+{TAB}", u"+Shift {Tab} -Shift"},
        {u"%{F4}", u"+Alt {F4} -Alt"},
        {u"+~", u"+Shift {Enter} -Shift"},
        {u"^{a 2}", u"+Control a a -Control"},
        {u"+({)}x)", u"+Shift ) x -Shift"},
    });
}

TEST(KeyNotation, BraceTokensNameKeysInAnyCase)
{
    ExpectRows({
        {u"~", u"{Enter}"},
        {u"a~b", u"a {Enter} b"},
        {u"{ENTER}{enter}{Enter}", u"{Enter} {Enter} {Enter}"},
        {u"{TAB}", u"{Tab}"},
        {u"{BS}{BKSP}{BACKSPACE}", u"{Backspace} {Backspace} {Backspace}"},
        {u"{DEL}{DELETE}{INS}{INSERT}", u"{Delete} {Delete} {Insert} {Insert}"},
        {u"{UP}{DOWN}{LEFT}{RIGHT}", u"{Up} {Down} {Left} {Right}"},
        {u"{HOME}{END}{PGUP}{PGDN}", u"{Home} {End} {PageUp} {PageDown}"},
        {u"{ESC}{CAPSLOCK}{NUMLOCK}{SCROLLLOCK}", u"{Escape} {CapsLock} {NumLock} {ScrollLock}"},
        {u"{BREAK}{HELP}{PRTSC}", u"{Break} {Help} {PrintScreen}"},
        {u"{F1}{f9}{F12}{F16}", u"{F1} {F9} {F12} {F16}"},
    });
}

TEST(KeyNotation, RepeatCounts)
{
    ExpectRows({
        {u"{LEFT 5}", u"{Left*5}"},
        {u"{left 2}x", u"{Left*2} x"},
        {u"{BS 1}", u"{Backspace}"},
        {u"{LEFT 0}x", u"x"},
        {u"{a 3}", u"a a a"},
        {u"{\u00e9 2}", u"\u00e9 \u00e9"},
        {u"{+ 2}{} 2}", u"+ + } }"},
        {u"{  2}", u"U+0020 U+0020"},
        {u"x{LEFT 99999999999}", u"x {Left*10000}"},
    });
}

TEST(KeyNotation, BracedSpecialsAreLiteral)
{
    ExpectRows({
        {u"{+}{%}{^}{~}", u"+ % ^ ~"},
        {u"{(}{)}{{}{}}", u"( ) { }"},
        {u"1{+}1{~}2", u"1 + 1 ~ 2"},
    });
}

// A key sender must not drop text or fail on it: what does not parse is typed as written.
TEST(KeyNotation, MalformedNotationIsTypedLiterally)
{
    ExpectRows({
        {u"{FOO}", u"{ F O O }"},
        {u"{F17}{F0}{F01}", u"{ F 1 7 } { F 0 } { F 0 1 }"},
        {u"{LEFT", u"{ L E F T"},
        {u"{}", u"{ }"},
        {u"{a{ENTER}", u"{ a {Enter}"},
        {u"{LEFT 3 }", u"{ L E F T U+0020 3 U+0020 }"},
        {u"a}b", u"a } b"},
        {u"a)b", u"a ) b"},
        {u"+(ab", u"+Shift ( -Shift a b"},
        {u"a+", u"a +"},
        {u"^%", u"^ %"},
        {u"(a+)", u"a +"},
    });
}

// Random notations of the troublesome characters: every modifier pressed is let go
// again, in reverse order, and none is pressed twice while held.
TEST(KeyNotation, ModifiersAreAlwaysBalanced)
{
    const QString alphabet = QStringLiteral("+^%~(){}aB1 \tLEFT3{}()++");
    QRandomGenerator random(20240607);
    for (int round = 0; round < 5000; ++round) {
        QString notation;
        const int length = random.bounded(1, 24);
        for (int i = 0; i < length; ++i)
            notation += alphabet.at(random.bounded(alphabet.size()));
        std::vector<Modifier> held;
        for (const KeyStep &step : ParseKeyNotation(notation)) {
            if (step.kind == KeyStep::Kind::Press) {
                EXPECT_EQ(std::count(held.begin(), held.end(), step.modifier), 0) << notation.toStdString();
                held.push_back(step.modifier);
            } else if (step.kind == KeyStep::Kind::Release) {
                ASSERT_FALSE(held.empty()) << notation.toStdString();
                EXPECT_EQ(held.back(), step.modifier) << notation.toStdString();
                held.pop_back();
            }
        }
        EXPECT_TRUE(held.empty()) << notation.toStdString();
    }
}
