#pragma once
// A Hotkeys file in a temporary folder, and sonamark-cli run in-process on it.
#include "cli/run_command.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

class CliFixture : public ::testing::Test {
protected:
    // Writes the Hotkeys file the test works on.
    void writeHotkeys(const QByteArray &content)
    {
        file = dir.filePath(QStringLiteral("Hotkeys.txt"));
        QFile f(file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
    }
    int run(const QStringList &args)
    {
        out.clear();
        err.clear();
        QTextStream o(&out);
        QTextStream e(&err);
        return cli::RunCli(args, o, e);
    }
    QTemporaryDir dir;
    QString file;
    QString out;
    QString err;
};
