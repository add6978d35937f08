#include "platform/qt/selection_reader.h"

#include <QLoggingCategory>

#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>

Q_LOGGING_CATEGORY(lcSelection, "sonamark.clipboard.x11", QtWarningMsg)

namespace platform {

namespace {
using Clock = std::chrono::steady_clock;
constexpr auto kOwnerAnswerLimit = std::chrono::milliseconds(2000);  // then the owner is given up
constexpr auto kTimestampLimit = std::chrono::milliseconds(200);     // owners that keep no time are common
constexpr int kPropertySlots = 4;  // properties used in turn, so a late answer is told apart
constexpr uint32_t kMaxPropertyWords = 0x1fffffff;

struct FreeDeleter {
    void operator()(void *p) const { std::free(p); }
};
template <typename T>
using XcbReply = std::unique_ptr<T, FreeDeleter>;

xcb_atom_t internAtom(xcb_connection_t *c, const char *name)
{
    XcbReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : XCB_ATOM_NONE;
}
} // namespace

class SelectionReader::Job {
public:
    QByteArray target;
    Clock::time_point started = Clock::now();
    std::mutex mutex;
    std::condition_variable finished;
    Status status = Status::Pending;
    QByteArray data;

    quint32 ownerTime = 0;  // when the owner took the selection; 0 when it did not say

    void finish(Status s, QByteArray bytes = {}, quint32 time = 0)
    {
        {
            std::lock_guard lock(mutex);
            status = s;
            data = std::move(bytes);
            ownerTime = time;
        }
        finished.notify_all();
    }
};

struct SelectionReader::Impl {
    xcb_connection_t *c = nullptr;
    xcb_window_t window = 0;
    xcb_atom_t clipboard = 0, incr = 0, timestamp = 0, targets = 0;
    std::array<xcb_atom_t, kPropertySlots> properties{};
    int nextProperty = 0;
    int wakeRead = -1, wakeWrite = -1;  // wakes the worker's poll at shutdown

    std::mutex mutex;
    std::condition_variable queued;
    std::deque<JobPtr> jobs;
    bool stopping = false;
    std::thread worker;

    ~Impl()
    {
        {
            std::lock_guard lock(mutex);
            stopping = true;
        }
        queued.notify_all();
        if (wakeWrite >= 0)
            (void)!::write(wakeWrite, "x", 1);
        if (worker.joinable())
            worker.join();
        for (const JobPtr &job : jobs)
            job->finish(Status::Failed);
        if (c)
            xcb_disconnect(c);
        if (wakeRead >= 0)
            ::close(wakeRead);
        if (wakeWrite >= 0)
            ::close(wakeWrite);
    }

    bool stopRequested()
    {
        std::lock_guard lock(mutex);
        return stopping;
    }

    void run()
    {
        for (;;) {
            JobPtr job;
            {
                std::unique_lock lock(mutex);
                queued.wait(lock, [this] { return stopping || !jobs.empty(); });
                if (stopping)
                    return;
                job = jobs.front();
                jobs.pop_front();
            }
            transfer(*job);
        }
    }

    // Takes events until one satisfies accept or the deadline passes. Events that do
    // not match are dropped: this connection asks for nothing else.
    template <typename Accept>
    xcb_generic_event_t *nextEvent(Clock::time_point deadline, Accept accept)
    {
        for (;;) {
            while (xcb_generic_event_t *event = xcb_poll_for_event(c)) {
                if (accept(event))
                    return event;
                std::free(event);
            }
            if (xcb_connection_has_error(c) || stopRequested())
                return nullptr;
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
            if (left.count() <= 0)
                return nullptr;
            pollfd fds[2] = {{xcb_get_file_descriptor(c), POLLIN, 0}, {wakeRead, POLLIN, 0}};
            ::poll(fds, 2, int(left.count()) + 1);
        }
    }

    XcbReply<xcb_get_property_reply_t> takeProperty(xcb_atom_t property)
    {
        return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(
            c, xcb_get_property(c, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMaxPropertyWords),
            nullptr));
    }

    static QByteArray bytesOf(xcb_get_property_reply_t *reply)
    {
        return QByteArray(static_cast<const char *>(xcb_get_property_value(reply)),
                          xcb_get_property_value_length(reply));
    }

    // Asks the owner for the selection as target and collects the answer, in pieces if
    // it comes so. False when the owner refused, did not answer by the deadline, or
    // answered in another type.
    bool convert(xcb_atom_t target, Clock::time_point deadline, QByteArray *out)
    {
        const xcb_atom_t property = properties[size_t(nextProperty)];
        nextProperty = (nextProperty + 1) % kPropertySlots;
        xcb_delete_property(c, window, property);
        xcb_convert_selection(c, window, clipboard, target, property, XCB_CURRENT_TIME);
        xcb_flush(c);

        std::unique_ptr<xcb_generic_event_t, FreeDeleter> notify(nextEvent(deadline, [&](xcb_generic_event_t *e) {
            if ((e->response_type & 0x7f) != XCB_SELECTION_NOTIFY)
                return false;
            auto *n = reinterpret_cast<xcb_selection_notify_event_t *>(e);
            return n->requestor == window && n->target == target
                && (n->property == property || n->property == XCB_ATOM_NONE);
        }));
        if (!notify)
            return false;
        if (reinterpret_cast<xcb_selection_notify_event_t *>(notify.get())->property == XCB_ATOM_NONE)
            return false;  // no owner, or no such format
        XcbReply<xcb_get_property_reply_t> reply = takeProperty(property);
        if (!reply)
            return false;
        if (reply->type != incr) {
            // Some owners answer every request with the one thing they hold.
            const bool expected = reply->type == target || (target == timestamp && reply->type == XCB_ATOM_INTEGER)
                || (target == targets && reply->type == XCB_ATOM_ATOM);
            if (!expected)
                return false;
            *out = bytesOf(reply.get());
            return true;
        }
        // Large data comes in pieces: each deletion of the property asks for the next,
        // and an empty piece ends the transfer.
        xcb_flush(c);
        QByteArray data;
        for (;;) {
            std::unique_ptr<xcb_generic_event_t, FreeDeleter> piece(nextEvent(deadline, [&](xcb_generic_event_t *e) {
                if ((e->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
                    return false;
                auto *p = reinterpret_cast<xcb_property_notify_event_t *>(e);
                return p->window == window && p->atom == property && p->state == XCB_PROPERTY_NEW_VALUE;
            }));
            if (!piece)
                return false;
            XcbReply<xcb_get_property_reply_t> chunk = takeProperty(property);
            if (!chunk)
                return false;
            xcb_flush(c);
            if (xcb_get_property_value_length(chunk.get()) == 0)
                break;
            if (chunk->type != target)
                return false;
            data += bytesOf(chunk.get());
        }
        *out = data;
        return true;
    }

    void transfer(Job &job)
    {
        const Clock::time_point start = Clock::now();
        // The time the owner took the selection comes first: a clear stamped with it
        // empties the clipboard only if nobody copied since. It is asked for only when
        // the owner lists it (some owners answer any request with what they hold).
        const xcb_atom_t target = internAtom(c, job.target.constData());
        QByteArray list;
        bool listed = false, offersTime = false, offersTarget = false;
        if (convert(targets, start + kTimestampLimit, &list)) {
            listed = true;
            for (int i = 0; i + 4 <= list.size(); i += 4) {
                uint32_t atom;
                std::memcpy(&atom, list.constData() + i, 4);
                offersTime = offersTime || atom == timestamp;
                offersTarget = offersTarget || atom == target;
            }
        }
        if (listed && !offersTarget) {
            job.finish(Status::Failed);
            return;
        }
        QByteArray stamp;
        uint32_t ownerTime = 0;
        if (offersTime && convert(timestamp, start + kTimestampLimit, &stamp) && stamp.size() >= 4)
            std::memcpy(&ownerTime, stamp.constData(), 4);
        QByteArray data;
        if (!convert(target, start + kOwnerAnswerLimit, &data)) {
            qCDebug(lcSelection) << "no" << job.target << "from the owner";
            job.finish(Status::Failed);
            return;
        }
        job.finish(Status::Done, data, ownerTime);
    }
};

SelectionReader::SelectionReader(std::unique_ptr<Impl> impl) : d(std::move(impl)) {}

SelectionReader::~SelectionReader() = default;

std::unique_ptr<SelectionReader> SelectionReader::open()
{
    auto impl = std::make_unique<Impl>();
    impl->c = xcb_connect(nullptr, nullptr);
    if (!impl->c || xcb_connection_has_error(impl->c)) {
        qCWarning(lcSelection) << "no X display for clipboard reads";
        return nullptr;
    }
    xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(impl->c)).data;
    if (!screen)
        return nullptr;
    impl->window = xcb_generate_id(impl->c);
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(impl->c, XCB_COPY_FROM_PARENT, impl->window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    impl->clipboard = internAtom(impl->c, "CLIPBOARD");
    impl->incr = internAtom(impl->c, "INCR");
    impl->timestamp = internAtom(impl->c, "TIMESTAMP");
    impl->targets = internAtom(impl->c, "TARGETS");
    for (int i = 0; i < kPropertySlots; ++i)
        impl->properties[size_t(i)] = internAtom(impl->c, QByteArray("SONAMARK_SELECTION_" + QByteArray::number(i)).constData());
    int pipeFds[2];
    if (::pipe(pipeFds) != 0)
        return nullptr;
    impl->wakeRead = pipeFds[0];
    impl->wakeWrite = pipeFds[1];
    xcb_flush(impl->c);
    Impl *raw = impl.get();
    impl->worker = std::thread([raw] { raw->run(); });
    return std::unique_ptr<SelectionReader>(new SelectionReader(std::move(impl)));
}

void SelectionReader::clearOwner(quint32 ownerTime)
{
    // Any client may give a selection no owner; the owner is told it lost it. The server
    // ignores a request stamped before the current owner took the selection.
    xcb_set_selection_owner(d->c, XCB_NONE, d->clipboard, ownerTime ? ownerTime : XCB_CURRENT_TIME);
    xcb_flush(d->c);
}

SelectionReader::JobPtr SelectionReader::start(const QByteArray &target)
{
    auto job = std::make_shared<Job>();
    job->target = target;
    {
        std::lock_guard lock(d->mutex);
        d->jobs.push_back(job);
    }
    d->queued.notify_one();
    return job;
}

SelectionReader::Status SelectionReader::wait(const JobPtr &job, int waitMs, QByteArray *data, quint32 *ownerTime)
{
    std::unique_lock lock(job->mutex);
    job->finished.wait_for(lock, std::chrono::milliseconds(qMax(0, waitMs)),
                           [&] { return job->status != Status::Pending; });
    if (job->status == Status::Done && data)
        *data = job->data;
    if (ownerTime)
        *ownerTime = job->ownerTime;
    return job->status;
}

qint64 SelectionReader::age(const JobPtr &job)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - job->started).count();
}

} // namespace platform
