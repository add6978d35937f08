// Check Code and Format Code on a few thousand generated macros and on hostile input:
// the properties of fuzz/format_properties.h (formatting is stable, keeps the parse and
// keeps the check's messages) hold on every one, and the check's report stays well formed.
#include "format_properties.h"
#include "hotkeys/hotkeys_table.h"
#include "shell/legacy_text.h"

#include <QRegularExpression>
#include <QStringList>
#include <gtest/gtest.h>
#include <cstdint>
#include <random>

namespace {

constexpr std::uint32_t kSeed = 20240611;
constexpr int kMacroCount = 3000;
constexpr int kMostLines = 40;
constexpr int kLargestNumber = 1900;  // of the numbers in statements: on a 1920-pixel screen
constexpr int kFaultPercent = 30;    // of the statements of a faulty macro
constexpr int kMostReported = 5;     // failures printed before the test stops looking
constexpr int kLongLine = 100000;    // characters of the hostile long lines
constexpr int kLongCondition = 1000; // " AND "s of the hostile condition (bench/ has longer)
constexpr int kDeepNesting = 300;    // unclosed [IF] and [LOOP] pairs (bench/ has deeper)

// Statement forms; % is replaced by a condition, $ by a quoted string, # by a number.
// The good forms pass the check when their blocks are closed; the faulty ones do not.
const char *const kGoodStatements[] = {
    "[VAR=#]", "[X=X+#]", "[S=$ & S]", "[N = LEN(S) * #]", "[T=MID(S,1,#)]", "[T=MID(S, 1, #)]",
    "[T=MID(S 1 #)]", "[SENDKEYS $]",
    "[WAIT #]", "[CANCEL IF %]", "[GETCLIP V]", "[SETCLIP $]", "[USERINPUT $ V]",
    "[YESNOCANCEL $ A]", "[FINDSTRING S $ P]", "[DATEDIFF $ $ D]", "[CLIP ON]", "[SPELLCHECK]",
    "[LISTHOTKEYS]", "[LOADFILE \"a.txt\"]", "[PRINTSELECTED]", "[KEYLOG K]", "[COMMAND $]",
    "[WEBSOURCE $ W]", "[SETFOCUS $ F]", "[PATHEXISTS $ E]", "[COPYFILE $ $]",
    "[CLICKZONE 1 2 30 40 TRUE]", "[HOTKEY 1]", "[HOTKEY \"Second\"]",
    "[OPEN 1 \"a.txt\"]\r\n[READ 1 R]\r\n[CLOSE 1]", "[LEFTDOWN 10 20]\r\n[LEFTUP 30 40]",
};
const char *const kFaultyStatements[] = {
    "[WAIT 0.01]", "[QUITLOOP]", "[OPEN 1 $]", "[READ 1 R]", "[WRITE 1 R]", "[CLOSE 1]",
    "[LEFTDOWN # #]", "[LEFTUP # #]", "[RIGHTDOWN 5000 1]", "[CLICKZONE 1 2 # # 1]", "[HOTKEY 9]",
    "[HOTKEY \"none\"]", "[CLIP maybe]", "[NOSUCH THING]", "[", "[]", "[IF]", "[VAR=\"open]",
    "[SENDKEYS \"a\" \"b]", "[SENDKEYS \"[IF A=1]\"]", "[X=(1+2]", "[ELSE]", "[ENDIF]", "[ENDLOOP]",
};
const char *const kGoodConditions[] = {
    "A=1", "A <> B", "X>=3 AND Y<2", "LEN(S)>2 OR A=1", "MID(S,1,2)=\"a b\"", "MID(S , 2 ,3)=\"x\"", "S=\"x\"", "N<#",
    "\"a\"=\"b\" and  B = 2",
};
const char *const kFaultyConditions[] = {"TIMER>1", "(A=1", "A==", "", "A=\"open"};
const char *const kGoodStrings[] = {
    "\"hello\"", "\"two  blanks\"", "\"#not a comment\"", "\"C:\\files\\a.txt\"", "\"caf\u00e9 \u20ac\"",
};
const char *const kFaultyStrings[] = {"\"\"", "\"open", "\"a\"\"b\"", "\"[IF A=1]\"", "\"a]b\""};
const char *const kKeystrokes[] = {
    "Hello World", "  two leading blanks", "{ENTER}{TAB 2}^a", "typed \"quote", "a [WAIT 2] b",
    "x = 5", "abc # not a comment", "price [IF", "caf\u00e9 \u20ac\u2122", "trailing   ", "]",
    "text [ENDLOOP] inside",
};
const char *const kComments[] = {"# note", "#[IF A=1]", "# [ENDLOOP]", "#  spaced   out", "#"};
const char *const kBlanks[] = {"", "", " ", "  ", "     ", "\t"};
const char *const kLineEnds[] = {"\r\n", "\r\n", "\r\n", "\r\n", "\r\n\r\n", "\r", "\n", "\r\r\n"};

// A seeded maker of macros: statements of every kind with blanks and case mixed up,
// nested blocks (mostly closed), keystroke lines, comments and blank lines.
class MacroMaker {
public:
    explicit MacroMaker(std::uint32_t seed) : m_random(seed) {}

    QString macro()
    {
        m_open.clear();
        m_faulty = chance(50);
        QString text;
        const int count = 1 + below(kMostLines);
        for (int n = 0; n < count; ++n)
            text += line() + pick(kLineEnds);
        while (!m_open.isEmpty() && !(m_faulty && chance(20)))
            text += close() + QStringLiteral("\r\n");
        if (chance(50))
            text.chop(1);  // no line end, or half of one, after the last line
        return text;
    }

private:
    int below(int n) { return int(m_random() % unsigned(n)); }
    bool chance(int percent) { return below(100) < percent; }
    bool fault() { return m_faulty && chance(kFaultPercent); }
    template <std::size_t N> QString pick(const char *const (&list)[N])
    {
        return QString::fromUtf8(list[below(int(N))]);
    }

    QString line()
    {
        const int kind = below(100);
        if (kind < 12)
            return open();
        if (kind < 24 && !m_open.isEmpty())
            return close();
        if (kind < 60)
            return mixed(fill(fault() ? pick(kFaultyStatements) : pick(kGoodStatements)));
        if (kind < 80)
            return pick(kKeystrokes);
        if (kind < 92)
            return pick(kBlanks) + pick(kComments);
        return pick(kBlanks);  // an empty or blank line
    }

    QString open()
    {
        const bool loop = chance(40);
        m_open.push_back(loop);
        if (loop)
            return mixed(chance(50) ? fill(QStringLiteral("[LOOP %]")) : QStringLiteral("[LOOP I=1,3]"));
        return mixed(fill(QStringLiteral("[IF %]")));
    }

    QString close()
    {
        const bool loop = m_open.back();
        if (!loop && chance(25))
            return mixed(QStringLiteral("[ELSE]")) + QStringLiteral("\r\n") + mixed(fill(pick(kGoodStatements)));
        m_open.pop_back();
        if (loop && chance(20))
            return mixed(QStringLiteral("[QUITLOOP]\r\n[ENDLOOP]"));
        return mixed(loop ? QStringLiteral("[ENDLOOP]") : QStringLiteral("[ENDIF]"));
    }

    QString fill(const QString &form)
    {
        QString out;
        for (QChar c : form) {
            if (c == QLatin1Char('%'))
                out += fill(fault() ? pick(kFaultyConditions) : pick(kGoodConditions));
            else if (c == QLatin1Char('$'))
                out += fault() ? pick(kFaultyStrings) : pick(kGoodStrings);
            else if (c == QLatin1Char('#'))
                out += QString::number(1 + below(kLargestNumber));
            else
                out += c;
        }
        return out;
    }

    // Leading blanks, blanks after "[", before "]" and doubled, and random case.
    QString mixed(const QString &statement)
    {
        QString out = pick(kBlanks);
        for (QChar c : statement) {
            if (c == QLatin1Char(']') && chance(20))
                out += pick(kBlanks);
            out += chance(30) ? c.toLower() : c;
            if ((c == QLatin1Char('[') || c == QLatin1Char(' ') || c == QLatin1Char('=')) && chance(20))
                out += QString(1 + below(3), QLatin1Char(' '));
        }
        return out;
    }

    std::mt19937 m_random;
    QList<bool> m_open;  // the blocks open, innermost last: true for a [LOOP]
    bool m_faulty = false;  // this macro may hold faulty statements and unclosed blocks
};

// Two macros for [HOTKEY 1] and [HOTKEY "Second"] to find.
void fillTable()
{
    hotkeys::HotkeyTable &t = hotkeys::table();
    t.reset();
    t.Hotkeys[0] = hotkeys::Hotkey{true, QStringLiteral("^%a"), QStringLiteral("First"), QStringLiteral("a")};
    t.Hotkeys[1] = hotkeys::Hotkey{true, QStringLiteral("^%b"), QStringLiteral("Second"), QStringLiteral("b")};
    t.HotkeyCount = 2;
}

// The report is "" or numbered messages, one per error line, and the count at the end.
void expectWellFormed(const QString &macro)
{
    QString code = macro;
    const QString report = hotkeys::HotkeyStatus(code);
    const int errors = hotkeys::ErrorLineCount();
    if (report.isEmpty()) {
        EXPECT_EQ(errors, 0);
        return;
    }
    static const QRegularExpression numbered(QStringLiteral("(^|\\r\\n)\\d+\\) ERROR line \\d+ "));
    EXPECT_EQ(report.count(numbered), errors);
    EXPECT_TRUE(report.endsWith(errors == 1 ? QStringLiteral("There was 1 error found.")
                                            : QStringLiteral("There were %1 errors found.").arg(errors)))
        << props::Shown(report).toStdString();
}

} // namespace

TEST(FormatterProperties, HoldOnGeneratedMacros)
{
    fillTable();
    MacroMaker maker(kSeed);
    int failures = 0;
    int changed = 0;
    int withErrors = 0;
    for (int n = 0; n < kMacroCount && failures < kMostReported; ++n) {
        const QString macro = maker.macro();
        const QString broken = props::BrokenFormatProperty(macro);
        EXPECT_TRUE(broken.isEmpty()) << "macro " << n << "\n" << broken.toStdString();
        failures += broken.isEmpty() ? 0 : 1;
        changed += props::Formatted(macro) != macro ? 1 : 0;
        QString code = macro;
        withErrors += hotkeys::HotkeyStatus(code).isEmpty() ? 0 : 1;
    }
    // The corpus is worth something only if formatting has work to do and the check
    // finds both clean and faulty macros.
    EXPECT_GT(changed, kMacroCount / 2);
    EXPECT_GT(withErrors, kMacroCount / 10);
    EXPECT_LT(withErrors, kMacroCount - kMacroCount / 10);
}

TEST(FormatterProperties, HoldOnHostileInput)
{
    fillTable();
    const QString longRun(kLongLine, QLatin1Char('x'));
    QString controls;
    for (char16_t c = 0; c < 0x20; ++c)
        controls += QChar(c);
    controls += QChar(0x7F);
    QByteArray invalidUtf8;
    for (int b = 0x80; b <= 0xFF; ++b)
        invalidUtf8 += char(b);
    invalidUtf8 += "\r\n[SENDKEYS \"\xE9\xC0\"]\r\n\xC3(\r\n[IF A=\"\x80\x9F\"]\r\n[ENDIF]";
    const QString legacy = shell::DecodeLegacyText(invalidUtf8);
    ASSERT_EQ(legacy, shell::DecodeCp1252(invalidUtf8));  // read as Windows-1252

    QString deep;
    for (int n = 0; n < kDeepNesting; ++n)
        deep += QStringLiteral("[IF A=%1]\r\n[LOOP B<2]\r\n").arg(n);

    const QList<QString> rows = {
        longRun,
        QStringLiteral("[SENDKEYS \"") + longRun + QStringLiteral("\"]"),
        QStringLiteral("   [IF ") + QStringLiteral("A = 1 AND ").repeated(kLongCondition) + QStringLiteral("B=2]"),
        QStringLiteral("[X=") + QStringLiteral("(").repeated(kLongLine) + QStringLiteral("]"),
        QStringLiteral("[").repeated(kLongLine),
        QStringLiteral("]").repeated(kLongLine) + QStringLiteral("\r\n[ENDIF]"),
        QStringLiteral("\"").repeated(kLongLine - 1) + QStringLiteral("\r\n[SENDKEYS \"a]"),
        QStringLiteral("#") + longRun + QStringLiteral("\r\n    ") + longRun,
        QStringLiteral("[IF A=\"1]\r\n[ENDIF\r\n[LOOP]]\r\n[[ENDLOOP]\r\n\"]\r\n[VAR=\"\"\"]"),
        controls + QStringLiteral("\r\n[SENDKEYS \"") + controls + QStringLiteral("\"]\r\n[") + controls,
        QStringLiteral("\r\r\r\n\n\n[ELSE]\r\n\r [ENDIF]\r"),
        legacy,
        deep,
    };
    for (qsizetype n = 0; n < rows.size(); ++n) {
        SCOPED_TRACE(n);
        const QString broken = props::BrokenFormatProperty(rows.at(n));
        EXPECT_TRUE(broken.isEmpty()) << broken.toStdString();
        expectWellFormed(rows.at(n));
    }
}
