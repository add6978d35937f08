#pragma once
// Reads the X11 CLIPBOARD selection on a connection and a thread of its own. A plain
// QClipboard read waits on the GUI thread for as long as the owning program takes to
// answer (seconds for an owner that hangs); here the caller chooses how long it waits,
// and a transfer that outlives the wait finishes (or gives up) in the background.
#include <QByteArray>
#include <memory>

namespace platform {

class SelectionReader {
public:
    enum class Status { Pending, Done, Failed };
    class Job;
    using JobPtr = std::shared_ptr<Job>;

    // nullptr when no X display can be opened.
    static std::unique_ptr<SelectionReader> open();
    ~SelectionReader();
    SelectionReader(const SelectionReader &) = delete;
    SelectionReader &operator=(const SelectionReader &) = delete;

    // Asks the owner for the selection in a target format ("UTF8_STRING", "image/png").
    JobPtr start(const QByteArray &target);
    // Waits up to waitMs for the job. On Done, data receives the bytes and ownerTime the
    // X time at which the owner took the selection (0 when it does not tell).
    static Status wait(const JobPtr &job, int waitMs, QByteArray *data, quint32 *ownerTime = nullptr);
    // Milliseconds since the job was started.
    static qint64 age(const JobPtr &job);
    // Leaves the clipboard without an owner, whoever owned it; with an owner's time, only
    // if that owner (or an older one) still holds it.
    void clearOwner(quint32 ownerTime = 0);

private:
    struct Impl;
    explicit SelectionReader(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> d;
};

} // namespace platform
