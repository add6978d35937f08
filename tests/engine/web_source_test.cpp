// [WEBSOURCE URL Src] on the fake fetch: operand messages, addresses, how a response
// becomes text, where the text goes, the 59-second limit and aborts.
#include "engine_fixture.h"

#include "engine/web_source.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "platform/input_hooks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace engine;

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

const QString kNoMessages;  // messages() of a run that reported nothing

platform::WebResponse response(const char *contentType, const QByteArray &body, int status = 200)
{
    return platform::WebResponse{status, QByteArray(contentType), body};
}

QString statementMessage(const char *text) { return QString::fromUtf8(text) + " for [WEBSOURCE URL Src] statement"; }

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<no file>");
}

class WebSourceTest : public MacroRunTest {
protected:
    void SetUp() override
    {
        MacroRunTest::SetUp();
        hotkeys::hookState().reset();
        ASSERT_TRUE(hotkeys::HookKeyboard());
        // Each Delay step moves the macro clock by the time it would have slept.
        shell::SetDelaySleeper([this](int ms) {
            sleeps << ms;
            clock += ms / 1000.0;
            if (clock >= kSecondsPerDay)
                clock -= kSecondsPerDay;
        });
        SetMacroClock([this] { return clock; });
    }
    void TearDown() override
    {
        hotkeys::hookState().reset();
        MacroRunTest::TearDown();
    }
    QList<int> sleeps;
    double clock = 36000;  // 10:00:00
};

} // namespace

TEST_F(WebSourceTest, OperandMessagesAreRecordedAndTheMacroGoesOn)
{
    struct Case {
        QStringList before;
        QString statement;
        QString message;
    };
    const Case cases[] = {
        {{}, R"([WEBSOURCE "http://example.com"])", statementMessage("Missing right variable")},
        {{R"([U="http://example.com"])"}, "[WEBSOURCE U]", statementMessage("Missing right variable")},
        {{}, "[WEBSOURCE U Src]", statementMessage("URL variable not assigned")},
        {{"[N=5]"}, "[WEBSOURCE N Src]", statementMessage("Number variable not allowed")},
        {{}, R"([WEBSOURCE "http://example.com Src])", statementMessage("Quote mismatch in variable")},
        {{}, R"([WEBSOURCE "  " Src])", statementMessage("Invalid format in variable")},
        {{}, R"([WEBSOURCE "" Src])", statementMessage("Empty URL variable")},
        // An information box empties its answer variable: the one way to an empty string.
        {{R"([YESNOCANCEL "Ready" E])"}, "[WEBSOURCE E Src]", statementMessage("Empty URL variable")},
        {{}, R"([WEBSOURCE "http://example.com" Src2])",
         statementMessage("Only letters allowed in source variable name")},
        {{}, R"([WEBSOURCE "http://example.com" A B])", statementMessage("Invalid format")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.statement.toStdString());
        fakes.web.started.clear();
        const QStringList lines = c.before + QStringList{c.statement, "[After=1]"};
        EXPECT_EQ(run(lines), QString());
        EXPECT_EQ(messages(), QStringList{QStringLiteral("1) Line %1 ").arg(lines.size() - 1) + c.message});
        EXPECT_EQ(var("After"), "1");
        EXPECT_TRUE(fakes.web.started.isEmpty());
    }
}

TEST_F(WebSourceTest, OnlyHttpAndHttpsAddressesAreFetched)
{
    struct Case {
        const char *operand;
        const char *url;  // "" when the address is refused
    };
    const Case cases[] = {
        {"http://example.com/a?b=1", "http://example.com/a?b=1"},
        {"HTTPS://Example.com/", "https://example.com/"},
        {"example.com/page", "http://example.com/page"},
        {"127.0.0.1:8080/x", "http://127.0.0.1:8080/x"},
        {"  http://example.com  ", "http://example.com"},
        {"ftp://example.com/file", ""},
        {"file:///etc/passwd", ""},
        {"/etc/passwd", ""},
        {"mailto:someone@example.com", ""},
        {"javascript:alert(1)", ""},
        {"http://", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.operand);
        EXPECT_EQ(WebSourceUrl(QString::fromUtf8(c.operand)), QUrl(QString::fromUtf8(c.url)));
    }

    // A refused address is said in the variable at once, without a fetch or a message.
    EXPECT_EQ(run({R"([WEBSOURCE "ftp://example.com/file" Src])", "[After=1]"}), QString());
    EXPECT_EQ(var("Src"), "Invalid URL");
    EXPECT_EQ(messages(), QStringList());
    EXPECT_TRUE(fakes.web.started.isEmpty());
    EXPECT_TRUE(sleeps.isEmpty());

    // Without a fetch port the statement says so instead of waiting for nothing.
    platform::services().web = nullptr;
    run({R"([WEBSOURCE "http://example.com" Src])"});
    EXPECT_EQ(messages(), QStringList{"1) Line 1 No web access for [WEBSOURCE URL Src] statement"});
}

TEST_F(WebSourceTest, OnlyTextContentTypesGiveTextDecodedByTheirCharset)
{
    struct Case {
        const char *contentType;
        QByteArray body;
        QString text;
    };
    const Case cases[] = {
        {"text/html; charset=utf-8", "Gr\xc3\xbc\xc3\x9f" "e \xe2\x82\xac", QStringLiteral("Grüße €")},
        {"TEXT/PLAIN", "abc", "abc"},
        {"text/plain", "d\xc3\xa9j\xc3\xa0", QStringLiteral("déjà")},  // no charset: UTF-8
        {"text/plain", "caf\xe9", QStringLiteral("café")},  // not UTF-8 at all: Windows-1252
        // Latin-1 labels are read as Windows-1252, as browsers read them.
        {"text/plain; charset=ISO-8859-1", "caf\xe9 \x93q\x94", QStringLiteral("café “q”")},
        {"text/plain;charset=\"Windows-1252\"", "\x80 \x96", QStringLiteral("€ –")},
        {"text/plain; charset=koi8-r", "\xc1", QStringLiteral("а")},
        {"text/plain; charset=no-such-charset", "\xc3\xa9", QStringLiteral("é")},
        {"application/octet-stream", "abc", ""},
        {"application/xhtml+xml", "<p/>", ""},
        {"image/png", "\x89PNG", ""},
        {"", "abc", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.contentType);
        EXPECT_EQ(WebResponseText(response(c.contentType, c.body)), c.text);
    }
}

TEST_F(WebSourceTest, PageGoesIntoTheVariableOnceItHasCome)
{
    fakes.web.response = response("text/html; charset=utf-8", "<p>Gr\xc3\xbc\xc3\x9f" "e</p>");
    fakes.web.deliverAtLook = 3;
    QList<bool> activeAtLooks;
    fakes.web.onLook = [&](int) { activeAtLooks << hotkeys::hookState().WebFetchActive; };

    EXPECT_EQ(run({R"([U="http://example.com/page"])", "[WEBSOURCE U Src]"}), QString());
    EXPECT_EQ(var("Src"), QStringLiteral("<p>Grüße</p>"));
    EXPECT_EQ(messages(), QStringList());
    EXPECT_EQ(fakes.web.started, QList<QUrl>{QUrl("http://example.com/page")});
    EXPECT_EQ(sleeps, (QList<int>{1000, 1000, 1000}));  // one-second looks
    EXPECT_EQ(activeAtLooks, (QList<bool>{true, true, true}));
    EXPECT_FALSE(hotkeys::hookState().WebFetchActive);

    // A 404 page is a complete response like any other.
    fakes.web.response = response("text/html", "<h1>Not here</h1>", 404);
    fakes.web.deliverAtLook = 1;
    EXPECT_EQ(run({R"([WEBSOURCE "http://example.com/none" Src])"}), QString());
    EXPECT_EQ(var("Src"), "<h1>Not here</h1>");
}

TEST_F(WebSourceTest, PresentValueOfTheVariableDecidesWhereThePageGoes)
{
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkdir("folder"));
    const QString page = QStringLiteral("<p>Grüße €</p>\r\nline 2");
    fakes.web.response = response("text/html; charset=utf-8", page.toUtf8());
    const QString file = dir.filePath("page.html");
    const QString old = dir.filePath("old.html");

    struct Case {
        const char *name;
        QString before;     // assignment run before the statement, "" for none
        QString variable;   // the variable's value afterwards
        QString writtenTo;  // the file that must hold the page, "" for none
    };
    const Case cases[] = {
        {"unset", "", page, ""},
        {"empty", R"([YESNOCANCEL "Ready" Src])", page, ""},
        {"plain text", R"([Src="hello"])", page, ""},
        {"a number", "[Src=5]", page, ""},
        {"relative path", R"([Src="page.html"])", page, ""},
        {"file in a missing folder", QStringLiteral(R"([Src="%1"])").arg(dir.filePath("none/page.html")), page, ""},
        {"new file in an existing folder", QStringLiteral(R"([Src="%1"])").arg(file), file, file},
        {"existing file", QStringLiteral(R"([Src="%1"])").arg(old), old, old},
        {"a folder, which cannot be written", QStringLiteral(R"([Src="%1"])").arg(dir.filePath("folder")),
         "File Error", ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        QFile::remove(file);
        QFile oldFile(old);
        ASSERT_TRUE(oldFile.open(QIODevice::WriteOnly));
        oldFile.write("an older page, longer than the new one ...............................");
        oldFile.close();

        QStringList lines;
        if (!c.before.isEmpty())
            lines << c.before;
        lines << R"([WEBSOURCE "http://example.com" Src])";
        EXPECT_EQ(run(lines), QString());
        EXPECT_EQ(messages(), QStringList());
        EXPECT_EQ(var("Src"), c.variable);
        if (!c.writtenTo.isEmpty()) {
            EXPECT_EQ(readFile(c.writtenTo), page.toUtf8());
        }
        if (c.writtenTo != file) {
            EXPECT_FALSE(QFile::exists(file));
        }
    }
    EXPECT_FALSE(QFile::exists(dir.filePath("none")));
}

TEST_F(WebSourceTest, NoTextWithin59SecondsIsTimedOutWithoutAMessage)
{
    struct Case {
        const char *name;
        std::optional<platform::WebResponse> answer;
        int atLook;
        double startClock;
        QString variable;
        int looks;
    };
    const Case cases[] = {
        {"never answered", std::nullopt, 1, 36000, "Timed Out", 59},
        {"not text", response("application/octet-stream", "\x01\x02"), 2, 36000, "Timed Out", 59},
        {"text without a body", response("text/html", ""), 2, 36000, "Timed Out", 59},
        {"never answered, across midnight", std::nullopt, 1, 86380, "Timed Out", 59},
        {"text at the last look", response("text/plain", "late"), 59, 36000, "late", 59},
        {"text at the look before", response("text/plain", "late"), 58, 36000, "late", 58},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        sleeps.clear();
        clock = c.startClock;
        fakes.web.response = c.answer;
        fakes.web.deliverAtLook = c.atLook;
        fakes.web.cancels = 0;
        EXPECT_EQ(run({R"([WEBSOURCE "http://example.com" Src])", "[After=1]"}), QString());
        EXPECT_EQ(var("Src"), c.variable);
        EXPECT_EQ(messages(), QStringList());
        EXPECT_EQ(var("After"), "1");
        EXPECT_EQ(sleeps.size(), c.looks);
        EXPECT_FALSE(hotkeys::hookState().WebFetchActive);
        if (c.variable == QLatin1String("Timed Out")) {
            EXPECT_GE(fakes.web.cancels, 1);  // the request does not run on after the statement
        }
    }
}

TEST_F(WebSourceTest, AbortEndsTheFetchWithUserAbortAndNoQuestion)
{
    struct Case {
        const char *name;
        bool byEsc;  // else the latch alone, as the Stop button and the tray click set it
    };
    for (const Case c : {Case{"Esc", true}, Case{"Stop", false}}) {
        SCOPED_TRACE(c.name);
        sleeps.clear();
        fakes.web.response = response("text/plain", "too late");
        fakes.web.deliverAtLook = 5;
        fakes.web.cancels = 0;
        int cancelsRightAfterEsc = -1;
        fakes.web.onLook = [&](int look) {
            if (look != 3)
                return;
            if (c.byEsc) {
                fakes.inputHooks.press(platform::vk::Escape);
                cancelsRightAfterEsc = fakes.web.cancels;
            } else {
                RequestAbort();
            }
        };
        EXPECT_EQ(run({R"([WEBSOURCE "http://example.com" Src])", "[After=1]"}), QString());
        EXPECT_EQ(messages(), QStringList{"1) Line 1 User Abort"});
        EXPECT_EQ(var("Src"), "<unset>");
        EXPECT_EQ(var("After"), "1");
        EXPECT_EQ(sleeps.size(), 3);
        EXPECT_TRUE(fakes.messages.shown.isEmpty());  // the latch was taken: no abort question
        EXPECT_FALSE(runState().AbortRequested);
        EXPECT_FALSE(hotkeys::hookState().WebFetchActive);
        EXPECT_GE(fakes.web.cancels, 1);
        if (c.byEsc) {
            EXPECT_EQ(cancelsRightAfterEsc, 1);  // Esc itself cancels the request
        }
        fakes.web.onLook = nullptr;
    }
}
