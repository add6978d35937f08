#pragma once
// A file search running on a worker thread, its matches streamed to the window's thread.
#include "search/file_walk.h"

#include <QList>
#include <QMutex>
#include <QObject>
#include <QThread>
#include <atomic>
#include <memory>

namespace search {

// One match: the path as shown, and as the file system holds it.
struct FoundFile {
    QString shown;
    QByteArray bytes;
};

class FileSearch : public QObject {
    Q_OBJECT
public:
    explicit FileSearch(QObject *parent = nullptr);
    // Cancels a search still running and waits for its thread.
    ~FileSearch() override;

    // Starts searching folder for pattern; a search still running is cancelled first.
    // maxFiles below 0: no limit.
    void start(const QString &folder, const QString &pattern, qsizetype maxFiles = -1);
    // Asks the search to stop; finished follows. Matches found so far stay available.
    void cancel();
    bool running() const;
    // Blocks until the search has ended (for tests and the command line).
    void wait();
    // The matches found since the last call, in the walk's order.
    QList<FoundFile> takeFound();
    // What the walk came to; meaningful after finished.
    WalkResult result() const;

signals:
    // New matches wait in takeFound(). Sent once for each batch that builds up while the
    // receiver is busy, so a slow list never queues one signal a file.
    void found();
    void finished();

private:
    void stopThread();

    mutable QMutex m_mutex;
    QList<FoundFile> m_pending;
    WalkResult m_result;
    std::shared_ptr<std::atomic_bool> m_cancel;
    QThread *m_thread = nullptr;
};

} // namespace search
