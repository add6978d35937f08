#include "search/file_search.h"

#include <QFile>
#include <QLoggingCategory>
#include <QMutexLocker>

Q_LOGGING_CATEGORY(lcFileSearch, "sonamark.search.files", QtWarningMsg)

namespace search {

FileSearch::FileSearch(QObject *parent) : QObject(parent) {}

FileSearch::~FileSearch() { stopThread(); }

void FileSearch::stopThread()
{
    if (!m_thread)
        return;
    if (m_cancel)
        m_cancel->store(true);
    m_thread->wait();
    delete m_thread;
    m_thread = nullptr;
}

void FileSearch::start(const QString &folder, const QString &pattern, qsizetype maxFiles)
{
    stopThread();
    {
        QMutexLocker lock(&m_mutex);
        m_pending.clear();
        m_result = WalkResult();
    }
    m_cancel = std::make_shared<std::atomic_bool>(false);
    const std::shared_ptr<std::atomic_bool> cancelFlag = m_cancel;
    const QByteArray root = RealFileName(folder);
    const FilePattern filePattern(pattern);
    qCDebug(lcFileSearch) << "search" << folder << pattern;
    m_thread = QThread::create([this, root, filePattern, cancelFlag, maxFiles] {
        const WalkResult result = WalkFolder(
            root, filePattern,
            [this](const QByteArray &path) {
                FoundFile file{ShownName(path), path};
                bool first;
                {
                    QMutexLocker lock(&m_mutex);
                    first = m_pending.isEmpty();
                    m_pending.append(std::move(file));
                }
                if (first)
                    emit found();
                return true;
            },
            cancelFlag.get(), maxFiles);
        {
            QMutexLocker lock(&m_mutex);
            m_result = result;
        }
        qCDebug(lcFileSearch) << "search ended:" << result.files << "files in" << result.folders << "folders,"
                              << result.unreadable << "unreadable";
        emit finished();
    });
    m_thread->start();
}

void FileSearch::cancel()
{
    if (m_cancel)
        m_cancel->store(true);
}

bool FileSearch::running() const { return m_thread && m_thread->isRunning(); }

void FileSearch::wait()
{
    if (m_thread)
        m_thread->wait();
}

QList<FoundFile> FileSearch::takeFound()
{
    QMutexLocker lock(&m_mutex);
    return std::exchange(m_pending, {});
}

WalkResult FileSearch::result() const
{
    QMutexLocker lock(&m_mutex);
    return m_result;
}

} // namespace search
