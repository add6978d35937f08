#include "platform/qt/gif_writer.h"

#include <QSaveFile>
#include <gif_lib.h>
#include <vector>

namespace platform {

namespace {

QString gifError(int code)
{
    const char *text = GifErrorString(code);
    return text ? QString::fromLatin1(text) : QStringLiteral("GIF error %1").arg(code);
}

int writeToFile(GifFileType *gif, const GifByteType *bytes, int length)
{
    auto *file = static_cast<QSaveFile *>(gif->UserData);
    return int(file->write(reinterpret_cast<const char *>(bytes), length));
}

} // namespace

bool WriteGif(const QImage &image, const QString &path, QString *error)
{
    if (image.isNull()) {
        *error = QStringLiteral("There is no picture to write.");
        return false;
    }
    const QImage indexed = image.convertToFormat(QImage::Format_Indexed8, Qt::DiffuseDither);
    QList<QRgb> colours = indexed.colorTable();
    // A GIF palette has a power-of-two size.
    int size = 2;
    while (size < colours.size())
        size *= 2;
    std::vector<GifColorType> palette(size_t(size), GifColorType{0, 0, 0});
    for (qsizetype i = 0; i < colours.size(); ++i)
        palette[size_t(i)] = GifColorType{GifByteType(qRed(colours[i])), GifByteType(qGreen(colours[i])),
                                          GifByteType(qBlue(colours[i]))};

    // Through a save file: the picture replaces an old one only once it is whole.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    int code = 0;
    GifFileType *gif = EGifOpen(&file, writeToFile, &code);
    if (!gif) {
        *error = gifError(code);
        return false;
    }
    ColorMapObject *map = GifMakeMapObject(size, palette.data());
    bool ok = map && EGifPutScreenDesc(gif, indexed.width(), indexed.height(), 8, 0, map) == GIF_OK
              && EGifPutImageDesc(gif, 0, 0, indexed.width(), indexed.height(), false, nullptr) == GIF_OK;
    for (int y = 0; ok && y < indexed.height(); ++y)
        ok = EGifPutLine(gif, const_cast<GifByteType *>(indexed.constScanLine(y)), indexed.width()) == GIF_OK;
    if (!ok)
        *error = gifError(gif->Error);
    GifFreeMapObject(map);
    if (EGifCloseFile(gif, &code) != GIF_OK && ok) {
        *error = gifError(code);
        ok = false;
    }
    if (ok && !file.commit()) {
        *error = file.errorString();
        ok = false;
    }
    return ok;
}

} // namespace platform
