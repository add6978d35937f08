#include "platform/qt/qt_clipboard.h"

#include "platform/qt/gif_writer.h"

#include <QClipboard>
#include <QDateTime>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageReader>
#include <QImageWriter>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QWindow>
#include <QAbstractNativeEventFilter>

#include <xcb/xcb.h>

Q_LOGGING_CATEGORY(lcClipboard, "sonamark.clipboard", QtWarningMsg)

namespace platform {

namespace {
constexpr int kTextWaitMs = 100;     // longest wait of one read for another program's text
constexpr int kPictureWaitMs = 150;  // the same for a picture (larger, and read once a second)
constexpr int kTimeProbeMs = 50;     // longest wait for a fresh X time before a write
const QByteArray kTextTarget = QByteArrayLiteral("UTF8_STRING");
const QByteArray kPictureTarget = QByteArrayLiteral("image/png");

QClipboard *qtClipboard() { return QGuiApplication::clipboard(); }
} // namespace

// Notices the property change on the time probe window; Qt takes the event's time as
// it handles it.
class QtClipboard::PropertyNoticeFilter : public QAbstractNativeEventFilter {
public:
    explicit PropertyNoticeFilter(uint32_t window) : m_window(window) {}
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *) override
    {
        if (type != "xcb_generic_event_t")
            return false;
        auto *event = static_cast<xcb_generic_event_t *>(message);
        if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY
            && reinterpret_cast<xcb_property_notify_event_t *>(event)->window == m_window)
            seen = true;
        return false;
    }
    bool seen = false;

private:
    uint32_t m_window;
};

QtClipboard::QtClipboard()
{
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        m_reader = SelectionReader::open();
    m_connection = QObject::connect(qtClipboard(), &QClipboard::changed, [this](QClipboard::Mode mode) {
        if (mode == QClipboard::Clipboard)
            changed();
    });
}

QtClipboard::~QtClipboard()
{
    QObject::disconnect(m_connection);
    if (m_probeFilter && QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(m_probeFilter.get());
}

void QtClipboard::claim(const std::function<void()> &write)
{
    if (m_reader)
        refreshXTime();
    write();
}

// WORKAROUND: Qt claims the clipboard with the time of the last X event it handled, and
// the server refuses a claim older than the current owner's (Qt then still believes it
// owns the clipboard). When no input came in since another program copied, that is the
// case; a property change on a window of ours brings Qt a fresh time first.
void QtClipboard::refreshXTime()
{
    if (!m_timeProbe) {
        m_timeProbe = std::make_unique<QWindow>();
        m_timeProbe->create();
        m_probeFilter = std::make_unique<PropertyNoticeFilter>(uint32_t(m_timeProbe->winId()));
        QCoreApplication::instance()->installNativeEventFilter(m_probeFilter.get());
    }
    m_probeFilter->seen = false;
    m_timeProbe->setTitle(QString::number(++m_probes));
    QElapsedTimer waited;
    waited.start();
    while (!m_probeFilter->seen && waited.elapsed() < kTimeProbeMs)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 2);
}

void QtClipboard::changed()
{
    ++m_changes;
    m_textSlot.fresh = false;
    m_pictureSlot.fresh = false;
}

bool QtClipboard::fetch(Slot &slot, const QByteArray &target, int waitMs, QByteArray *bytes, bool *failed)
{
    *failed = false;
    if (slot.job && slot.jobAt != m_changes)
        slot.job.reset();  // started before the latest change: whatever it brings is stale
    if (!slot.job) {
        slot.job = m_reader->start(target);
        slot.jobAt = m_changes;
        ++m_transfers;
        qCDebug(lcClipboard) << "transfer" << target;
    }
    // A transfer that already used up its wait on an earlier read is not waited for again.
    const int left = int(qMax<qint64>(0, waitMs - SelectionReader::age(slot.job)));
    quint32 ownerTime = 0;
    const SelectionReader::Status status = SelectionReader::wait(slot.job, left, bytes, &ownerTime);
    if (status == SelectionReader::Status::Pending) {
        qCDebug(lcClipboard) << "owner is slow;" << target << "counts as absent for now";
        return false;
    }
    slot.job.reset();
    *failed = status == SelectionReader::Status::Failed;
    if (!*failed)
        m_foreignTime = ownerTime;
    return true;
}

QString QtClipboard::text()
{
    if (m_textSlot.fresh)
        return m_text;
    QClipboard *clipboard = qtClipboard();
    if (!m_reader || clipboard->ownsClipboard()) {
        m_text = clipboard->text();
    } else {
        QByteArray bytes;
        bool failed = false;
        if (!fetch(m_textSlot, kTextTarget, kTextWaitMs, &bytes, &failed))
            return QString();
        m_text = failed ? QString() : QString::fromUtf8(bytes);
    }
    m_textSlot.fresh = true;
    return m_text;
}

namespace {

QImage imageOf(const Picture &picture)
{
    if (const auto *own = dynamic_cast<const QtPicture *>(&picture))
        return own->image();
    QImage image(picture.width(), picture.height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, picture.pixel(x, y));
    return image;
}

// The image format that the end of a file name gives.
QByteArray formatOfName(const QString &path)
{
    const QString tail = path.right(4).toUpper();
    if (tail == QLatin1String(".BMP"))
        return "BMP";
    if (tail.endsWith(QLatin1String("JPG")) || tail == QLatin1String("JPEG"))
        return "JPEG";
    if (tail.endsWith(QLatin1String("GIF")))
        return "GIF";
    if (tail == QLatin1String("TIFF") || tail.endsWith(QLatin1String("TIF")))
        return "TIFF";
    return "PNG";
}

} // namespace

PicturePtr QtClipboard::picture()
{
    if (m_pictureSlot.fresh)
        return m_picture;
    QClipboard *clipboard = qtClipboard();
    QImage image;
    if (!m_reader || clipboard->ownsClipboard()) {
        image = clipboard->image();
    } else {
        QByteArray bytes;
        bool failed = false;
        if (!fetch(m_pictureSlot, kPictureTarget, kPictureWaitMs, &bytes, &failed))
            return nullptr;
        if (!failed)
            image.loadFromData(bytes, "PNG");
    }
    m_picture = image.isNull() ? nullptr : std::make_shared<QtPicture>(image);
    m_pictureSlot.fresh = true;
    return m_picture;
}

void QtClipboard::setText(const QString &text)
{
    claim([&] { qtClipboard()->setText(text); });
    m_foreignTime = 0;
    m_text = text;
    m_picture.reset();
    m_textSlot = Slot{true, m_changes};
    m_pictureSlot = Slot{true, m_changes};
}

void QtClipboard::setPicture(const PicturePtr &picture)
{
    if (!picture)
        return;
    const auto *own = dynamic_cast<const QtPicture *>(picture.get());
    QImage image;
    if (own) {
        image = own->image();
    } else {
        image = imageOf(*picture);
    }
    claim([&] { qtClipboard()->setImage(image); });
    m_foreignTime = 0;
    m_text.clear();
    m_picture = std::make_shared<QtPicture>(image);
    m_textSlot = Slot{true, m_changes};
    m_pictureSlot = Slot{true, m_changes};
}

bool QtClipboard::setPictureFromFile(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull())
        return false;
    setPicture(std::make_shared<QtPicture>(image));
    return true;
}

bool QtClipboard::savePictureToFile(const QString &path, QString *error)
{
    const PicturePtr current = picture();
    if (!current || current->isEmpty()) {
        *error = QStringLiteral("The clipboard holds no picture.");
        return false;
    }
    const QByteArray format = formatOfName(path);
    QImage image = imageOf(*current);
    if (format == "GIF")
        return WriteGif(image, path, error);
    if (format == "JPEG" || format == "BMP")
        image = image.convertToFormat(QImage::Format_RGB32);
    QSaveFile file(path);
    QImageWriter writer(&file, format);
    if (!file.open(QIODevice::WriteOnly) || !writer.write(image) || !file.commit()) {
        *error = writer.error() != QImageWriter::UnknownError ? writer.errorString() : file.errorString();
        return false;
    }
    return true;
}

void QtClipboard::clear()
{
    if (m_reader) {
        if (qtClipboard()->ownsClipboard()) {
            qtClipboard()->clear();
            m_reader->clearOwner();
        } else {
            // Stamped with the time the owner we last read from took the clipboard: a
            // copy made since then is news, and stays.
            m_reader->clearOwner(m_foreignTime);
        }
    } else {
        // Taking ownership with an empty text clears the clipboard whoever owned it.
        qtClipboard()->setText(QString());
        qtClipboard()->clear();
    }
    m_text.clear();
    m_picture.reset();
    m_textSlot = Slot{true, m_changes};
    m_pictureSlot = Slot{true, m_changes};
}

} // namespace platform
