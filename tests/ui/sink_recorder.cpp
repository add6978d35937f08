#include "sink_recorder.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QThread>
#include <cstdlib>

namespace testaudio {

namespace {
const QString kSink = QStringLiteral("sonamark_null");
constexpr int kStartLimitMs = 5000;
constexpr int kSamplesPerWindow = kRecordRate * kWindowMs / 1000;
} // namespace

SinkRecorder::SinkRecorder() { m_path = m_dir.filePath(QStringLiteral("monitor.raw")); }

SinkRecorder::~SinkRecorder()
{
    if (m_parec.state() != QProcess::NotRunning) {
        m_parec.kill();
        m_parec.waitForFinished(2000);
    }
}

QString SinkRecorder::unavailableReason()
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), {QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("sinks")});
    if (!pactl.waitForFinished(5000) || pactl.exitCode() != 0)
        return QStringLiteral("no PulseAudio server (run under scripts/with-desktop.sh)");
    if (!QString::fromUtf8(pactl.readAllStandardOutput()).contains(kSink))
        return QStringLiteral("no null sink named ") + kSink;
    return {};
}

int SinkRecorder::sinkLatencyMs()
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), {QStringLiteral("list"), QStringLiteral("sinks")});
    if (!pactl.waitForFinished(5000))
        return -1;
    // "Name: sonamark_null" ... "Latency: 15035 usec, configured 15035 usec"
    const QString out = QString::fromUtf8(pactl.readAllStandardOutput());
    const qsizetype at = out.indexOf(QStringLiteral("Name: ") + kSink);
    const QRegularExpression latency(QStringLiteral("Latency: (\\d+) usec"));
    const QRegularExpressionMatch m = latency.match(out, at < 0 ? out.size() : at);
    return m.hasMatch() ? int(m.captured(1).toLongLong() / 1000) : -1;
}

bool SinkRecorder::start()
{
    m_parec.setStandardOutputFile(m_path);
    m_parec.start(QStringLiteral("parec"),
                  {QStringLiteral("-d"), kSink + QStringLiteral(".monitor"), QStringLiteral("--raw"),
                   QStringLiteral("--format=s16le"), QStringLiteral("--channels=1"),
                   QStringLiteral("--rate=%1").arg(kRecordRate), QStringLiteral("--latency-msec=10")});
    if (!m_parec.waitForStarted(kStartLimitMs))
        return false;
    QElapsedTimer clock;
    clock.start();
    while (mark() < kRecordRate / 10) {
        if (clock.elapsed() > kStartLimitMs)
            return false;
        QThread::msleep(10);
    }
    return true;
}

qint64 SinkRecorder::mark() const { return QFileInfo(m_path).size() / 2; }

void SinkRecorder::stop()
{
    m_parec.terminate();
    if (!m_parec.waitForFinished(3000)) {
        m_parec.kill();
        m_parec.waitForFinished(2000);
    }
    QFile file(m_path);
    m_peaks.clear();
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray raw = file.readAll();
    const auto *samples = reinterpret_cast<const qint16 *>(raw.constData());
    const qint64 count = raw.size() / 2;
    for (qint64 start = 0; start < count; start += kSamplesPerWindow) {
        int peak = 0;
        for (qint64 i = start; i < qMin(count, start + kSamplesPerWindow); ++i)
            peak = qMax(peak, std::abs(int(samples[i])));
        m_peaks.push_back(peak);
    }
}

int SinkRecorder::audibleWindows(qint64 fromSample, qint64 toSample) const
{
    int n = 0;
    for (qint64 w = windowOf(fromSample); w < qMin<qint64>(windowOf(toSample), m_peaks.size()); ++w)
        n += m_peaks.at(w) > kAudiblePeak;
    return n;
}

int SinkRecorder::lastSoundMs(qint64 fromSample, qint64 toSample) const
{
    const qint64 first = windowOf(fromSample);
    for (qint64 w = qMin<qint64>(windowOf(toSample), m_peaks.size()) - 1; w >= first; --w) {
        if (m_peaks.at(w) > kSilentPeak)
            return int((w + 1 - first) * kWindowMs);
    }
    return 0;
}

int SinkRecorder::firstSoundMs(qint64 fromSample, qint64 toSample) const
{
    const qint64 first = windowOf(fromSample);
    for (qint64 w = first; w < qMin<qint64>(windowOf(toSample), m_peaks.size()); ++w) {
        if (m_peaks.at(w) > kAudiblePeak)
            return int((w - first) * kWindowMs);
    }
    return -1;
}

} // namespace testaudio
