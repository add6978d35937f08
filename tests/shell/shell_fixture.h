#pragma once
// A fresh shell for each test: fakes installed, state reset, a private data folder.
#include "fakes/fake_services.h"
#include "shell/app_state.h"
#include "shell/settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

class ShellTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        shell::app().reset();
        shell::settings().reset();
        shell::app().AppFolder = dir.path() + QStringLiteral("/");
    }
    QString path(const char *name) const { return shell::app().AppFolder + QLatin1String(name); }

    fakes::FakeServices fx;
    QTemporaryDir dir;
};
