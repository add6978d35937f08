#pragma once
// Helpers of the audio tests: RIFF files built byte by byte, external tools run to the end.
#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <ostream>

// Readable QStrings in test failures.
inline void PrintTo(const QString &s, std::ostream *os) { *os << '"' << s.toStdString() << '"'; }

namespace audiotest {

inline void Put32(QByteArray &b, uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        b.append(char((v >> (8 * i)) & 0xFF));
}

// One chunk: id, stated size (the real contents' size unless told), contents and the pad
// byte of an odd size.
inline QByteArray Chunk(const char *id, const QByteArray &contents, int64_t statedSize = -1)
{
    QByteArray b(id, 4);
    Put32(b, uint32_t(statedSize < 0 ? contents.size() : statedSize));
    b += contents;
    if (contents.size() % 2)
        b.append('\0');
    return b;
}

// A 16-byte PCM format chunk's contents.
inline QByteArray PcmFormat(int channels = 1, int rate = 44100, int bits = 16)
{
    QByteArray f;
    const int block = channels * bits / 8;
    f.append(char(1)).append(char(0)).append(char(channels)).append(char(0));
    Put32(f, uint32_t(rate));
    Put32(f, uint32_t(rate * block));
    f.append(char(block)).append(char(0)).append(char(bits)).append(char(0));
    return f;
}

inline QByteArray Riff(const QByteArray &chunks, const char *form = "WAVE", int64_t statedSize = -1)
{
    QByteArray b("RIFF");
    Put32(b, uint32_t(statedSize < 0 ? chunks.size() + 4 : statedSize));
    b += QByteArray(form, 4);
    return b + chunks;
}

// Bytes 0, 1, 2, ... of a given length.
inline QByteArray Ramp(int length)
{
    QByteArray b(length, '\0');
    for (int i = 0; i < length; ++i)
        b[i] = char(i * 7 + 3);
    return b;
}

inline bool WriteFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

inline QByteArray ReadFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Runs a program to its end; its standard output, or nothing when it failed.
inline std::optional<QByteArray> RunTool(const QString &program, const QStringList &args, int *exitCode = nullptr)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(120000)) {
        p.kill();
        p.waitForFinished();
        return std::nullopt;
    }
    if (exitCode)
        *exitCode = p.exitCode();
    if (p.exitStatus() != QProcess::NormalExit || (!exitCode && p.exitCode() != 0))
        return std::nullopt;
    return p.readAllStandardOutput();
}

// What ffprobe says of a file's first audio stream and its container, as key=value
// pairs (codec_name, sample_rate, channels, bits_per_sample, bit_rate, duration).
inline QMap<QString, QString> FfProbe(const QString &file)
{
    QMap<QString, QString> values;
    const auto out = RunTool("ffprobe", {"-v", "error", "-select_streams", "a:0", "-show_entries",
                                         "stream=codec_name,sample_rate,channels,bits_per_sample,bit_rate,duration",
                                         "-of", "default=nw=1", file});
    if (!out)
        return values;
    for (const QByteArray &line : out->split('\n')) {
        const QString l = QString::fromUtf8(line);
        if (l.contains(QLatin1Char('=')))
            values.insert(l.section(QLatin1Char('='), 0, 0), l.section(QLatin1Char('='), 1));
    }
    return values;
}

} // namespace audiotest
