#pragma once
#include "platform/clipboard.h"
#include "platform/qt/selection_reader.h"

#include <QImage>
#include <QMetaObject>
#include <functional>

class QWindow;

namespace platform {

// A picture held in a QImage.
class QtPicture : public Picture {
public:
    explicit QtPicture(QImage image) : m_image(std::move(image)) {}
    int width() const override { return m_image.width(); }
    int height() const override { return m_image.height(); }
    quint32 pixel(int x, int y) const override { return m_image.valid(x, y) ? m_image.pixel(x, y) : 0; }
    const QImage &image() const { return m_image; }

private:
    QImage m_image;
};

// The clipboard through QClipboard (the CLIPBOARD selection on X11).
//
// Reads are cheap when nothing changed: the X server's selection-change notices
// (XFixes, delivered as QClipboard::changed) mark what was read last as stale, and only
// a stale read transfers the selection. On X11 a transfer from another program goes
// through a SelectionReader and is waited for only briefly; an owner that has not
// answered by then gives "nothing" for this read, and its answer, if it comes, is kept
// for the next one.
class QtClipboard : public Clipboard {
public:
    QtClipboard();
    ~QtClipboard() override;

    QString text() override;
    void setText(const QString &text) override;
    // Empties the clipboard. When another program owns it, only what was read last is
    // taken away: a copy made after that read stays for the next one.
    void clear() override;
    PicturePtr picture() override;
    void setPicture(const PicturePtr &picture) override;
    bool setPictureFromFile(const QString &path) override;
    bool savePictureToFile(const QString &path, QString *error) override;

    // Transfers from other programs started so far (for diagnostics and benchmarks).
    int transfers() const { return m_transfers; }

private:
    // One kind of content as last read, and the transfer that will refresh it.
    struct Slot {
        bool fresh = false;
        quint64 readAt = 0;                 // change count the content belongs to
        SelectionReader::JobPtr job;        // transfer in flight, if any
        quint64 jobAt = 0;                  // change count when the job started
    };
    void changed();
    // Runs a write of Qt's clipboard, with a fresh X time on X11.
    void claim(const std::function<void()> &write);
    void refreshXTime();
    class PropertyNoticeFilter;
    // Runs or resumes the transfer of slot; true with bytes when it is finished and
    // still current.
    bool fetch(Slot &slot, const QByteArray &target, int waitMs, QByteArray *bytes, bool *failed);

    quint64 m_changes = 0;
    Slot m_textSlot, m_pictureSlot;
    QString m_text;
    PicturePtr m_picture;
    std::unique_ptr<SelectionReader> m_reader;
    QMetaObject::Connection m_connection;
    int m_transfers = 0;
    quint32 m_foreignTime = 0;  // when the owner last read from took the clipboard (X time)
    std::unique_ptr<QWindow> m_timeProbe;  // hidden window whose property changes carry the X time
    std::unique_ptr<PropertyNoticeFilter> m_probeFilter;
    int m_probes = 0;
};

} // namespace platform
