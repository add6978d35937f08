#include "audio/process_batch_helper.h"

#include "audio/batch_conversion.h"
#include "audio/read_to_file_vars.h"

namespace audio {

namespace {

constexpr int kStopWaitMs = 5000;

} // namespace

ProcessBatchHelper::ProcessBatchHelper(QString program) : m_program(std::move(program)) {}

ProcessBatchHelper::~ProcessBatchHelper() { cancel(); }

bool ProcessBatchHelper::start(const platform::BatchHelperJob &job)
{
    cancel();
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::SeparateChannels);
    QObject::connect(m_process.get(), &QProcess::readyReadStandardOutput, m_process.get(), [this] { readOutput(); });
    QObject::connect(m_process.get(), &QProcess::finished, m_process.get(),
                     [this](int code, QProcess::ExitStatus status) { finished(code, status); });
    m_mp3Name = BatchMp3Name(job.document);
    m_percent = 0;
    m_error.clear();
    m_state = State::Speaking;
    m_process->start(m_program, {QStringLiteral("batch"), QStringLiteral("--worker"), QStringLiteral("--text-stdin"),
                                 QStringLiteral("--quality"), QString::number(job.qualityRow),
                                 QStringLiteral("--bitrate"), QString::number(job.bitRate),
                                 QStringLiteral("--voice"), QString::number(job.voice), QStringLiteral("--pitch"),
                                 job.pitch, QStringLiteral("--"), job.document});
    if (!m_process->waitForStarted()) {
        m_process.reset();
        m_state = State::Idle;
        return false;
    }
    m_process->write(job.text.toUtf8());
    m_process->closeWriteChannel();
    return true;
}

void ProcessBatchHelper::readOutput()
{
    while (m_process && m_process->canReadLine()) {
        const QByteArray line = m_process->readLine().trimmed();
        if (line == "spoken")
            m_state = State::Encoding;
        else if (line.startsWith("progress "))
            m_percent = line.mid(9).toInt();
    }
}

void ProcessBatchHelper::finished(int code, QProcess::ExitStatus status)
{
    readOutput();
    if (status == QProcess::NormalExit && code == 0) {
        m_state = State::Converted;
        m_percent = 100;
        return;
    }
    m_state = State::Failed;
    m_error = QString::fromUtf8(m_process->readAllStandardError()).trimmed().section(QLatin1Char('\n'), -1);
}

void ProcessBatchHelper::wait(int ms)
{
    if (m_process && m_process->state() != QProcess::NotRunning && !m_process->waitForReadyRead(ms))
        m_process->waitForFinished(0);
}

void ProcessBatchHelper::cancel()
{
    if (!m_process)
        return;
    const bool running = m_process->state() != QProcess::NotRunning;
    if (running) {
        m_process->disconnect();
        m_process->terminate();  // the worker removes its own files when it stops
        if (!m_process->waitForFinished(kStopWaitMs)) {
            m_process->kill();
            m_process->waitForFinished(kStopWaitMs);
        }
        KillFileIfExists(m_mp3Name);
    }
    m_process.reset();
    m_state = State::Idle;
    m_percent = 0;
}

} // namespace audio
