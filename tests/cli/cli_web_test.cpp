// sonamark-cli run fetches web pages for real: [WEBSOURCE] against a local server.
#include "engine/local_web_server.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(CliWebSource, RunFetchesThePageIntoTheFileTheVariableNames)
{
    LocalWebServer server;
    ASSERT_TRUE(server.running()) << "python3 web_server.py did not start";
    QTemporaryDir dir;
    const QString page = dir.filePath(QStringLiteral("page.html"));
    const QString hotkeys = dir.filePath(QStringLiteral("Hotkeys.txt"));
    // Double quotes inside a macro's code are stored as "à" in the Hotkeys file.
    const QString code = QStringLiteral("[Out=à%1à]\r\n[WEBSOURCE à%2à Out]").arg(page, server.url(QStringLiteral("/cp1252")));
    QFile f(hotkeys);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write((QStringLiteral("\"<Hotkeys Macros v1.2>\"\r\n#TRUE#,\"^%W\",\"Fetch\",\"") + code + QStringLiteral("\"\r\n")).toUtf8());
    f.close();

    QProcess cli;
    cli.start(QStringLiteral(SONAMARK_CLI_PATH),
              {QStringLiteral("run"), QStringLiteral("--hotkeys"), hotkeys, QStringLiteral("--macro"), QStringLiteral("Fetch")});
    ASSERT_TRUE(cli.waitForFinished(90000));
    EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardOutput().toStdString() << cli.readAllStandardError().toStdString();
    QFile written(page);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(written.readAll()), QStringLiteral("€ 10 – naïve"));
}
