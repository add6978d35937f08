#include "platform/qt/tray_pictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace platform {

namespace {

constexpr int kIconSize = 64;

// A speech bubble with a mark inside; the colour tells the state at a glance.
QPixmap drawPicture(const QColor &bubble, const QColor &mark, TrayPicture picture)
{
    QPixmap pixmap(kIconSize, kIconSize);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath path;
    path.addRoundedRect(QRectF(4, 6, 56, 40), 12, 12);
    QPolygonF tail;
    tail << QPointF(16, 42) << QPointF(12, 60) << QPointF(30, 44);
    path.addPolygon(tail);
    path.setFillRule(Qt::WindingFill);
    p.setPen(QPen(QColor(30, 30, 30), 2.5));
    p.setBrush(bubble);
    p.drawPath(path.simplified());
    p.setPen(Qt::NoPen);
    p.setBrush(mark);
    switch (picture) {
    case TrayPicture::Idle:
        for (int i = 0; i < 3; ++i)
            p.drawEllipse(QPointF(18 + i * 14, 26), 4.5, 4.5);
        break;
    case TrayPicture::Monitoring:
    case TrayPicture::SpellMonitoring:
        // sound waves
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(mark, 4, Qt::SolidLine, Qt::RoundCap));
        for (int i = 0; i < 3; ++i)
            p.drawArc(QRectF(14 + i * 8 - i * 4, 14 - i * 4, 16 + i * 8, 24 + i * 8), -50 * 16, 100 * 16);
        break;
    case TrayPicture::Macro:
        p.setPen(QPen(mark, 5, Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(22, 16), QPointF(16, 26));
        p.drawLine(QPointF(16, 26), QPointF(22, 36));
        p.drawLine(QPointF(42, 16), QPointF(48, 26));
        p.drawLine(QPointF(48, 26), QPointF(42, 36));
        break;
    }
    return pixmap;
}

} // namespace

QIcon TrayPictureIcon(TrayPicture picture)
{
    switch (picture) {
    case TrayPicture::Monitoring:
        return QIcon(drawPicture(QColor(120, 200, 120), QColor(20, 90, 20), picture));
    case TrayPicture::SpellMonitoring:
        return QIcon(drawPicture(QColor(240, 200, 90), QColor(120, 70, 0), picture));
    case TrayPicture::Macro:
        return QIcon(drawPicture(QColor(230, 120, 110), QColor(110, 20, 20), picture));
    case TrayPicture::Idle:
        break;
    }
    return QIcon(drawPicture(QColor(150, 185, 235), QColor(25, 50, 110), TrayPicture::Idle));
}

QIcon ProgramIcon() { return TrayPictureIcon(TrayPicture::Idle); }

} // namespace platform
