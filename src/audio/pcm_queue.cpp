#include "audio/pcm_queue.h"

#include <algorithm>

namespace audio {

void PcmQueue::push(const qint16 *samples, size_t count)
{
    {
        std::unique_lock lock(m_mutex);
        m_room.wait(lock, [&] { return m_aborted || m_samples.size() < kCapacity; });
        if (m_aborted)
            return;
        m_samples.insert(m_samples.end(), samples, samples + count);
        m_pushed += qint64(count);
    }
    m_ready.notify_one();
}

void PcmQueue::close()
{
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_ready.notify_all();
}

void PcmQueue::abort()
{
    {
        const std::lock_guard lock(m_mutex);
        m_aborted = true;
    }
    m_ready.notify_all();
    m_room.notify_all();
}

bool PcmQueue::take(qint16 *out, size_t count)
{
    std::unique_lock lock(m_mutex);
    m_ready.wait(lock, [&] { return m_aborted || m_closed || m_samples.size() >= count; });
    if (m_aborted || m_samples.size() < count)
        return false;
    std::copy_n(m_samples.begin(), count, out);
    m_samples.erase(m_samples.begin(), m_samples.begin() + qsizetype(count));
    lock.unlock();
    m_room.notify_one();
    return true;
}

bool PcmQueue::aborted() const
{
    const std::lock_guard lock(m_mutex);
    return m_aborted;
}

qint64 PcmQueue::pushed() const
{
    const std::lock_guard lock(m_mutex);
    return m_pushed;
}

} // namespace audio
