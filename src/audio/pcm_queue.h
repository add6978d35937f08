#pragma once
// PcmQueue: 16-bit samples handed from the thread that speaks to the thread that encodes,
// so that a text is encoded while it is still being spoken. The encoder takes whole
// chunks; what is left at the end that does not fill one is not given out, as a wave
// file read a chunk at a time leaves it.
#include <QtGlobal>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace audio {

class PcmQueue {
public:
    // Producer side.
    void push(const qint16 *samples, size_t count);
    // No more samples will come.
    void close();
    // The speaking failed or was cancelled: the consumer stops at once.
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
    std::deque<qint16> m_samples;
    qint64 m_pushed = 0;
    bool m_closed = false;
    bool m_aborted = false;
};

} // namespace audio
