#pragma once
// A main window stand-in for the speech logic: plain fields for every control it touches.
#include "fakes/fake_services.h"
#include "reader/speech.h"
#include "shell/app_state.h"
#include "shell/delay.h"
#include "shell/settings.h"

#include <QStringList>
#include <gtest/gtest.h>

class FakeSpeechView : public reader::SpeechView {
public:
    QStringList rows;
    int index = -1;
    QString voiceTip, volumeTip, rateTip, pitchTip;
    int volumeValue = 0, rateValue = 0, pitchValue = 0;
    QString box;
    int selectionStart = 0, selectionLength = 0;
    QString caption;
    int formatResets = 0;
    QStringList statusTexts;  // every text given to panel 1 and the tray tip
    QString panel2;
    bool timer2 = false;
    QString pauseCmd = QStringLiteral("Pause"), pauseMnu = QStringLiteral("Pause");
    QString talkMnu = QStringLiteral("Talk");
    QString clipToggle = QStringLiteral("Clip Off");
    int saves = 0;

    void clearVoiceList() override { rows.clear(); index = -1; }
    void addVoiceRow(const QString &n) override { rows << n; }
    int voiceRowCount() const override { return rows.size(); }
    QString voiceRow(int r) const override { return rows.value(r); }
    int listIndex() const override { return index; }
    void setListIndex(int r) override { index = r < rows.size() ? r : -1; }
    void setVoiceTip(const QString &t) override { voiceTip = t; }
    void setVolumeSlider(int v) override { volumeValue = v; }
    void setVolumeTip(const QString &t) override { volumeTip = t; }
    void setRateSlider(int v) override { rateValue = v; }
    void setRateTip(const QString &t) override { rateTip = t; }
    void setPitchSlider(int v) override { pitchValue = v; }
    void setPitchTip(const QString &t) override { pitchTip = t; }
    QString text() const override { return box; }
    QString selectedText() const override { return box.mid(selectionStart, selectionLength); }
    int selStart() const override { return selectionStart; }
    void setText(const QString &t) override { box = t; selectionStart = selectionLength = 0; }
    void select(int s, int l) override { selectionStart = s; selectionLength = l; }
    int currentLine() const override { return int(box.left(selectionStart).count(QLatin1Char('\n'))) + 1; }
    int currentColumn() const override
    {
        return selectionStart - int(box.left(selectionStart).lastIndexOf(QLatin1Char('\n')));
    }
    void applyDefaultFormat() override { ++formatResets; selectionStart = selectionLength = 0; }
    void setCaption(const QString &c) override { caption = c; }
    void setStatusText(const QString &t) override { statusTexts << t; }
    void setPanel2(const QString &t) override { panel2 = t; }
    void setTimer2Enabled(bool on) override { timer2 = on; }
    QString cmdPauseCaption() const override { return pauseCmd; }
    QString mnuPauseCaption() const override { return pauseMnu; }
    void setPauseCaptions(const QString &c) override { pauseCmd = pauseMnu = c; }
    QString mnuTalkCaption() const override { return talkMnu; }
    bool mnuPauseVisible() const override { return true; }
    bool mnuStopVisible() const override { return true; }
    QString clipToggleCaption() const override { return clipToggle; }
    void saveFile() override { ++saves; }
};

class SpeechTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        shell::app().reset();
        shell::settings().reset();
        shell::settings().VoiceOpt = QStringLiteral("Voice B");
        shell::settings().VolumeOpt = QStringLiteral("80");
        shell::settings().RateOpt = QStringLiteral("-3");
        shell::settings().PitchOpt = QStringLiteral("0");
        reader::speechVars().reset();
        shell::SetDelaySleeper([this](int ms) { slept += ms; });
        reader::CreateSpeechObject(&view);
        fx.speech.calls.clear();
    }
    void TearDown() override
    {
        reader::ReleaseSpeechObject();
        shell::SetDelaySleeper(nullptr);
    }
    // The engine calls made by speaking, without the voice choice.
    QStringList speakCalls() const { return fx.speech.calls.filter(QStringLiteral("speak ")); }

    fakes::FakeServices fx;
    FakeSpeechView view;
    int slept = 0;
};
