#include "platform/espeak/tone_probe.h"

#include "platform/espeak/pcm_player.h"

#include <QAudioDevice>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMediaDevices>
#include <QThread>
#include <QtEndian>
#include <cmath>

namespace platform::espeak {

namespace {
constexpr double kToneHz = 440;
constexpr double kToneLevel = 0.2;      // of full scale
constexpr int kFadeMilliseconds = 20;   // no clicks at either end
constexpr int kWaitMilliseconds = 4000; // longest wait for the device to take the tone
constexpr int kPollMilliseconds = 10;
} // namespace

QByteArray TestTone(int sampleRate, int milliseconds)
{
    const int samples = sampleRate * milliseconds / 1000;
    const int fade = qMax(1, sampleRate * kFadeMilliseconds / 1000);
    QByteArray pcm(samples * 2, Qt::Uninitialized);
    auto *out = reinterpret_cast<uchar *>(pcm.data());
    for (int i = 0; i < samples; ++i) {
        const double envelope = qMin(1.0, qMin(double(i), double(samples - 1 - i)) / fade);
        const double value = std::sin(2 * M_PI * kToneHz * i / sampleRate) * kToneLevel * envelope;
        qToLittleEndian<qint16>(qint16(std::lround(value * 32767)), out + 2 * i);
    }
    return pcm;
}

AudioProbe PlayTestTone()
{
    AudioProbe result;
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    result.device = !device.isNull();
    result.deviceName = device.description();
    if (!result.device)
        return result;
    PcmPlayer player(kToneSampleRate);
    if (player.silent()) {
        result.problem = QStringLiteral("it does not take 16-bit mono sound at %1 Hz").arg(kToneSampleRate);
        return result;
    }
    const QByteArray tone = TestTone(kToneSampleRate, kToneMilliseconds);
    player.begin();
    player.append(tone);
    if (player.silent()) {
        result.problem = QStringLiteral("it could not be started");
        return result;
    }
    QElapsedTimer waited;
    waited.start();
    while (!player.drained() && waited.elapsed() < kWaitMilliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, kPollMilliseconds);
        QThread::msleep(kPollMilliseconds);
    }
    result.tonePlayed = player.handedOverBytes() >= tone.size();
    if (!result.tonePlayed)
        result.problem = QStringLiteral("the device took %1 of %2 bytes in %3 seconds")
                             .arg(player.handedOverBytes())
                             .arg(tone.size())
                             .arg(kWaitMilliseconds / 1000);
    player.stop();
    return result;
}

} // namespace platform::espeak
