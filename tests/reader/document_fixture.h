#pragma once
// A text box stand-in for the exceptions and document commands, a temporary data folder,
// and a scripted word-processor reader.
#include "fakes/fake_services.h"
#include "speech_fixture.h"
#include "reader/exceptions.h"
#include "reader/speech.h"
#include "reader/text_box.h"
#include "shell/app_state.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>

class FakeTextBox : public reader::TextBox {
public:
    QString box;
    int selectionStart = 0, selectionLength = 0;
    QString caption;
    reader::RichDocument rich;   // what richDocument() gives; set by loadRichDocument
    bool richLoaded = false;
    int rewrites = 0;
    int events = 0;
    std::deque<std::optional<QString>> openAnswers, saveAnswers;
    QStringList dialogs;          // "open <title>|<filter>", "save <title>|<filter>", "setup", "print all"
    reader::PrintOutcome printResult{reader::PrintOutcome::Printed, {}};

    QString text() const override { return box; }
    QString selectedText() const override { return box.mid(selectionStart, selectionLength); }
    int selStart() const override { return selectionStart; }
    int selLength() const override { return selectionLength; }
    void select(int s, int l) override { selectionStart = s; selectionLength = l; }
    void replaceSelection(const QString &t) override
    {
        box.replace(selectionStart, selectionLength, t);
        selectionStart += int(t.size());
        selectionLength = 0;
    }
    void rewriteText(const QString &t) override { box = t; ++rewrites; selectionStart = selectionLength = 0; }
    void loadPlainText(const QString &t) override
    {
        box = t;
        richLoaded = false;
        selectionStart = selectionLength = 0;
    }
    reader::RichDocument richDocument() const override { return rich; }
    void loadRichDocument(const reader::RichDocument &d) override
    {
        rich = d;
        richLoaded = true;
        box = d.plainText();
    }
    void setCaption(const QString &c) override { caption = c; }
    void processEvents() override { ++events; }
    std::optional<QString> showOpen(const QString &title, const QString &filter) override
    {
        dialogs << QStringLiteral("open ") + title + QLatin1Char('|') + filter;
        return next(openAnswers);
    }
    std::optional<QString> showSave(const QString &title, const QString &filter) override
    {
        dialogs << QStringLiteral("save ") + title + QLatin1Char('|') + filter;
        return next(saveAnswers);
    }
    void showPageSetup() override { dialogs << QStringLiteral("setup"); }
    reader::PrintOutcome printText(bool selectionOnly) override
    {
        dialogs << (selectionOnly ? QStringLiteral("print selection") : QStringLiteral("print all"));
        return printResult;
    }

private:
    static std::optional<QString> next(std::deque<std::optional<QString>> &answers)
    {
        if (answers.empty())
            return std::nullopt;
        auto a = answers.front();
        answers.pop_front();
        return a;
    }
};

class FakeWordFiles : public platform::WordFiles {
public:
    bool present = true;
    QString text;
    QString error;  // non-empty: readText fails with it
    QStringList read;
    bool installed() const override { return present; }
    bool readText(const QString &path, QString *out, QString *why) override
    {
        read << path;
        if (!error.isEmpty()) {
            *why = error;
            return false;
        }
        *out = text;
        return true;
    }
};

class DocumentTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        shell::app().reset();
        shell::app().AppFolder = dir.path() + QLatin1Char('/');
        reader::exceptionsState().reset();
        reader::speechVars().reset();
        reader::SetTextBox(&box);
        platform::services().wordFiles = &word;
        // The speech side of the window, which Reset_txtSpeech refreshes.
        reader::CreateSpeechObject(&speechView);
    }
    void TearDown() override
    {
        reader::ReleaseSpeechObject();
        reader::SetTextBox(nullptr);
        platform::services().wordFiles = nullptr;
    }
    QString path(const QString &name) const { return dir.path() + QLatin1Char('/') + name; }
    void writeFile(const QString &name, const QByteArray &bytes) const
    {
        QFile f(path(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray readFile(const QString &name) const
    {
        QFile f(path(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    }
    // The texts of the messages shown, without the line break the window adds.
    QStringList messages() const
    {
        QStringList out;
        for (const auto &m : fx.messages.shown)
            out << m.title + QStringLiteral(": ") + m.text.chopped(2);
        return out;
    }

    fakes::FakeServices fx;
    FakeTextBox box;
    FakeSpeechView speechView;
    FakeWordFiles word;
    QTemporaryDir dir;
};
