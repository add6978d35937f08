#pragma once
// Port: the system clipboard, text and pictures.
#include <QString>
#include <QtGlobal>
#include <memory>

namespace platform {

// A picture as the logic sees it: a size and a pixel read. Implementations keep the
// pixels in their own image type.
class Picture {
public:
    virtual ~Picture() = default;
    virtual int width() const = 0;
    virtual int height() const = 0;
    // 0xAARRGGBB at (x, y); 0 outside the picture.
    virtual quint32 pixel(int x, int y) const = 0;
    bool isEmpty() const { return width() <= 0 || height() <= 0; }
};
using PicturePtr = std::shared_ptr<const Picture>;

class Clipboard {
public:
    virtual ~Clipboard() = default;
    // The clipboard's text, or "" when there is none (or the owner did not answer in time).
    virtual QString text() = 0;
    virtual void setText(const QString &text) = 0;
    // Empties the clipboard, whoever owns it.
    virtual void clear() = 0;
    // The clipboard's picture, or nullptr when it holds none (or the owner did not
    // answer in time).
    virtual PicturePtr picture() = 0;
    // Puts a picture on the clipboard (one taken by picture() earlier).
    virtual void setPicture(const PicturePtr &picture) = 0;

    // Puts the picture of an image file on the clipboard. False when the file could not
    // be read as a picture (or this clipboard holds no pictures).
    virtual bool setPictureFromFile(const QString &path)
    {
        Q_UNUSED(path);
        return false;
    }
    // Writes the clipboard's picture to path, in the format that the last characters of
    // the name give (".BMP", "JPG", "JPEG", "GIF", "TIFF"). False, with *error, when the
    // clipboard holds no picture or the file could not be written.
    virtual bool savePictureToFile(const QString &path, QString *error)
    {
        Q_UNUSED(path);
        *error = QStringLiteral("This clipboard holds no pictures.");
        return false;
    }
};

} // namespace platform
