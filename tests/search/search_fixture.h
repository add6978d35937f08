#pragma once
// Real folder trees in a private temporary folder, and a private data folder.
#include "fakes/fake_services.h"
#include "shell/app_state.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

class SearchTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(tree.isValid());
        ASSERT_TRUE(data.isValid());
        shell::app().reset();
        shell::app().AppFolder = data.path() + QStringLiteral("/");
        root = QFile::encodeName(tree.path());
    }

    // Creates a file (and its folders) below the tree, named by raw bytes.
    QByteArray makeFile(const QByteArray &relative, const QByteArray &content = "x")
    {
        const QByteArray full = root + '/' + relative;
        const qsizetype slash = full.lastIndexOf('/');
        makeFolder(full.left(slash));
        const int fd = ::open(full.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        EXPECT_GE(fd, 0) << full.constData();
        if (fd >= 0) {
            EXPECT_EQ(::write(fd, content.constData(), size_t(content.size())), content.size());
            ::close(fd);
        }
        return full;
    }
    static void makeFolder(const QByteArray &path)
    {
        for (qsizetype i = 1; i <= path.size(); ++i)
            if (i == path.size() || path.at(i) == '/')
                ::mkdir(path.left(i).constData(), 0755);
    }
    QString treePath(const QString &relative = QString()) const
    {
        return relative.isEmpty() ? tree.path() : tree.path() + QLatin1Char('/') + relative;
    }

    fakes::FakeServices fx;
    QTemporaryDir tree;
    QTemporaryDir data;
    QByteArray root;
};

// Queued signals of the worker thread need an application object.
inline void EnsureCoreApplication()
{
    static int argc = 1;
    static char name[] = "search_tests";
    static char *argv[] = {name, nullptr};
    if (!QCoreApplication::instance())
        new QCoreApplication(argc, argv);
}
