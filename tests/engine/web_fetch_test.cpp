// The Qt web fetch against a local HTTP server: the adapter by itself, and [WEBSOURCE]
// running on it in whole macros, with the one-second looks sped up.
#include "engine_fixture.h"

#include "engine/web_source.h"
#include "hotkeys/hook_state.h"
#include "hotkeys/input_hooks.h"
#include "local_web_server.h"
#include "platform/input_hooks.h"
#include "platform/qt/qt_web_fetch.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }
QT_END_NAMESPACE

namespace {

constexpr int kSpeedUp = 50;              // a second of Delay passes in 20 ms
constexpr int kResponseWaitMs = 10000;    // generous: the server is local
constexpr int kServerNoticeMs = 5000;

const QByteArray kUtf8Page = "<p>Gr\xc3\xbc\xc3\x9f" "e aus K\xc3\xb6ln \xe2\x80\x93 5 \xe2\x82\xac</p>";

// The fetch thread runs an event loop, which wants an application object.
class QtApplication : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (!QCoreApplication::instance())
            m_app = new QCoreApplication(m_argc, m_argv);
    }
    void TearDown() override
    {
        delete m_app;
        m_app = nullptr;
    }

private:
    int m_argc = 1;
    char m_name[16] = "web_fetch_test";
    char *m_argv[2] = {m_name, nullptr};
    QCoreApplication *m_app = nullptr;
};
[[maybe_unused]] ::testing::Environment *const g_app = ::testing::AddGlobalTestEnvironment(new QtApplication);

LocalWebServer *g_server = nullptr;

QString serverUrl(const char *path) { return g_server->url(QString::fromLatin1(path)); }

// Looks at the fetch until it delivers or ms have passed.
bool waitForResponse(platform::QtWebFetch &fetch, platform::WebResponse &response, int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms) {
        if (fetch.takeResponse(response))
            return true;
        QThread::msleep(10);
    }
    return false;
}

class QtWebFetchTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { g_server = new LocalWebServer; }
    static void TearDownTestSuite()
    {
        delete g_server;
        g_server = nullptr;
    }
    void SetUp() override
    {
        ASSERT_TRUE(g_server->running()) << "python3 web_server.py did not start";
        g_server->clearLog();
    }
    platform::QtWebFetch fetch;
};

// [WEBSOURCE] in whole macros on the real fetch; the other ports are fakes.
class WebSourceRunTest : public MacroRunTest {
protected:
    static void SetUpTestSuite() { g_server = new LocalWebServer; }
    static void TearDownTestSuite()
    {
        delete g_server;
        g_server = nullptr;
    }
    void SetUp() override
    {
        MacroRunTest::SetUp();
        ASSERT_TRUE(g_server->running()) << "python3 web_server.py did not start";
        g_server->clearLog();
        platform::services().web = &fetch;
        hotkeys::hookState().reset();
        ASSERT_TRUE(hotkeys::HookKeyboard());
        shell::SetDelaySleeper([this](int ms) {
            ++sleeps;
            if (onSleep)
                onSleep(sleeps);
            QThread::msleep(static_cast<unsigned long>(ms / kSpeedUp));
            clock += ms / 1000.0;
        });
        engine::SetMacroClock([this] { return clock; });
    }
    void TearDown() override
    {
        hotkeys::hookState().reset();
        MacroRunTest::TearDown();
    }
    QString fetchInto(const QString &url, const QStringList &before = {})
    {
        return run(before + QStringList{QStringLiteral("[WEBSOURCE \"%1\" Src]").arg(url), "[After=1]"});
    }
    platform::QtWebFetch fetch;
    int sleeps = 0;
    std::function<void(int)> onSleep;
    double clock = 36000;
};

} // namespace

TEST_F(QtWebFetchTest, ResponsesComeAsTheServerSentThem)
{
    struct Case {
        const char *path;
        int status;
        QByteArray contentType;
        QByteArray body;
    };
    QByteArray binary;
    for (int i = 0; i < 64; ++i)
        for (int b = 0; b < 256; ++b)
            binary += char(b);
    const Case cases[] = {
        {"/utf8", 200, "text/html; charset=utf-8", kUtf8Page},
        {"/binary", 200, "application/octet-stream", binary},
        {"/missing", 404, "text/html", "<h1>Not here</h1>"},  // an error page is still an answer
        {"/moved", 200, "text/html; charset=utf-8", kUtf8Page},  // two redirects followed
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.path);
        fetch.start(QUrl(serverUrl(c.path)));
        platform::WebResponse response;
        ASSERT_TRUE(waitForResponse(fetch, response, kResponseWaitMs));
        EXPECT_EQ(response.status, c.status);
        EXPECT_EQ(response.contentType, c.contentType);
        EXPECT_EQ(response.body, c.body);
        EXPECT_FALSE(fetch.takeResponse(response));  // delivered once
    }
}

TEST_F(QtWebFetchTest, CancelAndANewStartDropTheRequestUnderWay)
{
    fetch.start(QUrl(serverUrl("/hang")));
    ASSERT_TRUE(g_server->waitForLog("hang accepted", kServerNoticeMs));
    fetch.cancel();
    EXPECT_TRUE(g_server->waitForLog("hang closed", kServerNoticeMs));
    platform::WebResponse response;
    EXPECT_FALSE(fetch.takeResponse(response));

    g_server->clearLog();
    fetch.start(QUrl(serverUrl("/hang")));
    ASSERT_TRUE(g_server->waitForLog("hang accepted", kServerNoticeMs));
    fetch.start(QUrl(serverUrl("/plain")));
    ASSERT_TRUE(waitForResponse(fetch, response, kResponseWaitMs));
    EXPECT_EQ(response.body, "d\xc3\xa9j\xc3\xa0 vu");
    EXPECT_TRUE(g_server->waitForLog("hang closed", kServerNoticeMs));
}

TEST_F(WebSourceRunTest, TextPagesAreDecodedIntoTheVariable)
{
    struct Case {
        const char *path;
        QString text;
    };
    const Case cases[] = {
        {"/utf8", QString::fromUtf8(kUtf8Page)},
        {"/latin1", QStringLiteral("café crème “quoted”")},
        {"/cp1252", QStringLiteral("€ 10 – naïve")},
        {"/plain", QStringLiteral("déjà vu")},
        {"/missing", QStringLiteral("<h1>Not here</h1>")},
        {"/moved", QString::fromUtf8(kUtf8Page)},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.path);
        sleeps = 0;
        EXPECT_EQ(fetchInto(serverUrl(c.path)), QString());
        EXPECT_EQ(var("Src"), c.text);
        EXPECT_EQ(messages(), QStringList());
        EXPECT_EQ(var("After"), "1");
        EXPECT_LT(sleeps, 59);
    }
}

TEST_F(WebSourceRunTest, NoTextIsTimedOutAndTheRequestIsDropped)
{
    const QString refused = QStringLiteral("http://127.0.0.1:1/");
    struct Case {
        const char *name;
        QString url;
    };
    const Case cases[] = {
        {"binary content", serverUrl("/binary")},
        {"empty text", serverUrl("/empty")},
        {"never answered", serverUrl("/hang")},
        {"endless redirects", serverUrl("/loop")},
        {"connection refused", refused},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        sleeps = 0;
        EXPECT_EQ(fetchInto(c.url), QString());
        EXPECT_EQ(var("Src"), "Timed Out");
        EXPECT_EQ(messages(), QStringList());
        EXPECT_EQ(var("After"), "1");
        EXPECT_EQ(sleeps, 59);
        EXPECT_FALSE(hotkeys::hookState().WebFetchActive);
    }
    EXPECT_TRUE(g_server->waitForLog("hang closed", kServerNoticeMs));
}

TEST_F(WebSourceRunTest, EscCancelsTheRequest)
{
    onSleep = [this](int sleep) {
        if (sleep == 3) {
            ASSERT_TRUE(g_server->waitForLog("hang accepted", kServerNoticeMs));
            fakes.inputHooks.press(platform::vk::Escape);
        }
    };
    EXPECT_EQ(fetchInto(serverUrl("/hang")), QString());
    EXPECT_EQ(messages(), QStringList{"1) Line 1 User Abort"});
    EXPECT_EQ(var("Src"), "<unset>");
    EXPECT_EQ(var("After"), "1");
    EXPECT_EQ(sleeps, 3);
    EXPECT_TRUE(fakes.messages.shown.isEmpty());
    EXPECT_TRUE(g_server->waitForLog("hang closed", kServerNoticeMs));
}

TEST_F(WebSourceRunTest, PageIsWrittenToTheFileTheVariableNames)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("page.html");
    EXPECT_EQ(fetchInto(serverUrl("/latin1"), {QStringLiteral("[Src=\"%1\"]").arg(file)}), QString());
    EXPECT_EQ(var("Src"), file);
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(f.readAll()), QStringLiteral("café crème “quoted”"));
}
