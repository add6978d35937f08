#include "audio/speech_file_stream.h"

#include "audio/speech_formats.h"

#include <QFile>
#include <QLoggingCategory>
#include <sndfile.h>
#include <soxr.h>

Q_LOGGING_CATEGORY(lcSpeechFile, "sonamark.audio.file", QtWarningMsg)

namespace audio {

namespace {

constexpr size_t kResampleSlack = 64;  // output samples beyond the rate ratio's share

int SndfileSubtype(SpeechEncoding encoding)
{
    switch (encoding) {
    case SpeechEncoding::Pcm8: return SF_FORMAT_PCM_U8;
    case SpeechEncoding::Pcm16: return SF_FORMAT_PCM_16;
    case SpeechEncoding::ALaw: return SF_FORMAT_ALAW;
    case SpeechEncoding::ULaw: return SF_FORMAT_ULAW;
    case SpeechEncoding::Gsm610: return SF_FORMAT_GSM610;
    case SpeechEncoding::TrueSpeech: break;
    }
    return 0;
}

} // namespace

QString NoCodecMessage(const QString &formatText)
{
    return QStringLiteral("The sound format \"%1\" cannot be written on this system: "
                          "choose another sound quality.").arg(formatText);
}

SpeechFileStream::~SpeechFileStream() { Close(); }

bool SpeechFileStream::Open(const QString &fileName, int formatConstant)
{
    Close();
    m_error.clear();
    m_failed = false;
    m_received = 0;
    m_sourceRate = 0;
    const std::optional<int> row = SpeechFormatRow(formatConstant);
    if (!row) {
        m_error = QStringLiteral("Unknown sound format %1.").arg(formatConstant);
        return false;
    }
    const SpeechFormat &format = SpeechFormats()[*row];
    const int subtype = SndfileSubtype(format.encoding);
    if (!subtype) {
        m_error = NoCodecMessage(QString::fromLatin1(format.text));
        return false;
    }
    SF_INFO info{};
    info.samplerate = format.sampleRate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | subtype;
    m_file = sf_open(QFile::encodeName(fileName).constData(), SFM_WRITE, &info);
    if (!m_file) {
        m_error = QStringLiteral("Cannot write the file %1: %2").arg(fileName, QString::fromUtf8(sf_strerror(nullptr)));
        return false;
    }
    m_fileName = fileName;
    m_fileRate = format.sampleRate;
    return true;
}

bool SpeechFileStream::write(const qint16 *samples, qsizetype count, int sampleRate)
{
    if (!m_file || m_failed || count <= 0)
        return !m_failed && m_file;
    m_received += count;
    const bool newRate = sampleRate != m_sourceRate;
    m_sourceRate = sampleRate;
    if (sampleRate == m_fileRate)
        return writeOut(samples, size_t(count));
    if (!m_resampler || newRate) {
        soxr_delete(m_resampler);
        soxr_error_t error = nullptr;
        // No dither: 16-bit samples in and out gain nothing from it, and without its
        // random noise the same text always makes the same file.
        soxr_io_spec_t io = soxr_io_spec(SOXR_INT16_I, SOXR_INT16_I);
        io.flags |= SOXR_NO_DITHER;
        const soxr_quality_spec_t quality = soxr_quality_spec(SOXR_HQ, 0);
        m_resampler = soxr_create(sampleRate, m_fileRate, 1, &error, &io, &quality, nullptr);
        if (error) {
            m_resampler = nullptr;
            fail(QStringLiteral("Cannot convert the speech to %1 Hz: %2").arg(m_fileRate).arg(QString::fromUtf8(error)));
            return false;
        }
    }
    const size_t room = size_t(double(count) * m_fileRate / sampleRate) + kResampleSlack;
    if (m_resampled.size() < room)
        m_resampled.resize(room);
    size_t taken = 0;
    while (taken < size_t(count)) {
        size_t used = 0, made = 0;
        if (soxr_process(m_resampler, samples + taken, size_t(count) - taken, &used, m_resampled.data(),
                         m_resampled.size(), &made)) {
            fail(QStringLiteral("Cannot convert the speech to %1 Hz.").arg(m_fileRate));
            return false;
        }
        if (!writeOut(m_resampled.data(), made))
            return false;
        taken += used;
        if (!used && !made)
            break;
    }
    return true;
}

bool SpeechFileStream::Close()
{
    if (!m_file)
        return !m_failed;
    if (m_resampler) {
        if (!m_failed && !m_resampled.empty()) {
            // The resampler's tail: whatever it still holds of the last input.
            size_t made = 0;
            do {
                made = 0;
                if (soxr_process(m_resampler, nullptr, 0, nullptr, m_resampled.data(), m_resampled.size(), &made))
                    break;
            } while (made > 0 && writeOut(m_resampled.data(), made));
        }
        soxr_delete(m_resampler);
        m_resampler = nullptr;
    }
    if (sf_close(m_file) != 0 && !m_failed)
        fail(QStringLiteral("Cannot finish the file %1.").arg(m_fileName));
    m_file = nullptr;
    return !m_failed;
}

double SpeechFileStream::receivedSeconds() const
{
    return m_sourceRate > 0 ? double(m_received) / m_sourceRate : 0.0;
}

bool SpeechFileStream::writeOut(const qint16 *samples, size_t count)
{
    if (count == 0)
        return true;
    if (sf_write_short(m_file, samples, sf_count_t(count)) != sf_count_t(count)) {
        fail(QStringLiteral("Cannot write the file %1: %2").arg(m_fileName, QString::fromUtf8(sf_strerror(m_file))));
        return false;
    }
    if (tap)
        tap(samples, count);
    return true;
}

void SpeechFileStream::fail(const QString &reason)
{
    if (!m_failed)
        qCWarning(lcSpeechFile) << reason;
    m_failed = true;
    m_error = reason;
}

} // namespace audio
