#pragma once
// PcmQueue: 16-bit samples handed from the thread that speaks to the thread that encodes,
// so that a text is encoded while it is still being spoken. The encoder takes whole
// chunks; what is left at the end that does not fill one is not given out, as a wave
// file read a chunk at a time leaves it. The queue holds at most a few seconds of
// speech: a speaker faster than the encoder waits, so memory stays small for any length.
#include <QtGlobal>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace audio {

class PcmQueue {
public:
    // Samples held at most before push waits (about 12 seconds at 44.1 kHz).
    static constexpr size_t kCapacity = size_t(1) << 19;

    // Producer side. Waits while the queue is full; after an abort the samples are dropped.
    void push(const qint16 *samples, size_t count);
    // No more samples will come.
    void close();
    // The speaking failed or was cancelled, or the encoder stopped: the other side stops
    // at once.
    void abort();

    // Consumer side: fills out with count samples, waiting for them. False when the
    // queue was closed with fewer left, or aborted.
    bool take(qint16 *out, size_t count);
    bool aborted() const;
    // Samples pushed so far.
    qint64 pushed() const;

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_ready;
    std::condition_variable m_room;
    std::deque<qint16> m_samples;
    qint64 m_pushed = 0;
    bool m_closed = false;
    bool m_aborted = false;
};

} // namespace audio
