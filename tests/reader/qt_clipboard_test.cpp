// The Qt clipboard on the test desktop's X server, with xclip as the other program.
// Skipped without an X display.
#include "platform/qt/qt_clipboard.h"

#include <QColor>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <cstring>
#include <functional>

namespace {

bool OnX11() { return QGuiApplication::platformName() == QLatin1String("xcb"); }

void Pump(int ms)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(2);
    }
}

// Pumps events until done() holds or ms pass.
bool PumpUntil(const std::function<bool()> &done, int ms = 5000)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) {
        if (done())
            return true;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(5);
    }
    return done();
}

// xclip takes the clipboard with the given data and keeps it in the background.
void XclipCopy(const QByteArray &data, const QString &target = QString())
{
    QProcess xclip;
    QStringList args{QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")};
    if (!target.isEmpty())
        args << QStringLiteral("-t") << target;
    xclip.start(QStringLiteral("xclip"), args);
    ASSERT_TRUE(xclip.waitForStarted(5000)) << "xclip is needed";
    xclip.write(data);
    xclip.closeWriteChannel();
    ASSERT_TRUE(xclip.waitForFinished(10000));
}

class QtClipboardTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!OnX11())
            GTEST_SKIP() << "no X display";
    }
};

} // namespace

TEST_F(QtClipboardTest, OwnTextReadsBackWithoutATransfer)
{
    platform::QtClipboard clipboard;
    clipboard.setText(QStringLiteral("ours"));
    Pump(100);
    EXPECT_EQ(clipboard.text(), "ours");
    EXPECT_EQ(clipboard.transfers(), 0);
    clipboard.clear();
    Pump(100);
    EXPECT_EQ(clipboard.text(), "");
}

TEST_F(QtClipboardTest, AnotherProgramsTextIsTransferredOnlyAfterAChange)
{
    platform::QtClipboard clipboard;
    XclipCopy("first copy");
    ASSERT_TRUE(PumpUntil([&] { return clipboard.text() == QLatin1String("first copy"); }));
    Pump(200);
    clipboard.text();
    const int settled = clipboard.transfers();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(clipboard.text(), "first copy");
        Pump(10);
    }
    EXPECT_EQ(clipboard.transfers(), settled) << "reads without a change notice transferred the selection";

    XclipCopy("second copy");
    ASSERT_TRUE(PumpUntil([&] { return clipboard.text() == QLatin1String("second copy"); }));
    EXPECT_GT(clipboard.transfers(), settled);
    clipboard.clear();
    Pump(200);
    EXPECT_EQ(clipboard.text(), "");
    QProcess out;
    out.start(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
    out.waitForFinished(5000);
    EXPECT_TRUE(out.readAllStandardOutput().isEmpty()) << "the clear did not reach other programs";
}

TEST_F(QtClipboardTest, OwnerThatNeverAnswersDoesNotHoldTheReader)
{
    platform::QtClipboard clipboard;
    // A second connection takes the clipboard and then never reads its requests.
    xcb_connection_t *c = xcb_connect(nullptr, nullptr);
    ASSERT_FALSE(xcb_connection_has_error(c));
    xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const xcb_window_t w = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, w, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    const char *name = "CLIPBOARD";
    xcb_intern_atom_reply_t *atom =
        xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr);
    xcb_set_selection_owner(c, w, atom->atom, XCB_CURRENT_TIME);
    free(atom);
    xcb_flush(c);
    Pump(300);

    QElapsedTimer t;
    t.start();
    EXPECT_EQ(clipboard.text(), "");
    const qint64 first = t.restart();
    EXPECT_EQ(clipboard.text(), "");
    const qint64 second = t.elapsed();
    // A plain QClipboard read waits about five seconds here.
    EXPECT_LT(first, 1000);
    EXPECT_LT(second, 1000);
    xcb_disconnect(c);
}

TEST_F(QtClipboardTest, LargePictureFromAnotherProgramArrivesInPieces)
{
    QTemporaryDir dir;
    QImage image(900, 700, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, random.generate() | 0xff000000u);  // noise: the PNG stays large
    image.setPixel(0, 0, 0xffff0000u);
    const QString path = dir.filePath(QStringLiteral("noise.png"));
    ASSERT_TRUE(image.save(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray png = file.readAll();
    ASSERT_GT(png.size(), 1024 * 1024);

    platform::QtClipboard clipboard;
    XclipCopy(png, QStringLiteral("image/png"));
    platform::PicturePtr picture;
    ASSERT_TRUE(PumpUntil([&] { return bool(picture = clipboard.picture()); }, 10000));
    EXPECT_EQ(picture->width(), 900);
    EXPECT_EQ(picture->height(), 700);
    EXPECT_EQ(picture->pixel(0, 0), 0xffff0000u);
    EXPECT_EQ(picture->pixel(899, 699), image.pixel(899, 699));
    EXPECT_EQ(clipboard.text(), "");  // a picture has no text

    clipboard.setPicture(picture);  // put back, as a picked picture clip is
    Pump(100);
    platform::PicturePtr again = clipboard.picture();
    ASSERT_TRUE(again);
    EXPECT_EQ(again->pixel(0, 0), 0xffff0000u);
}

// Picture files in and out of the clipboard, for [LOADCLIP] and [SAVECLIP]: every format
// by the end of its name, read back with the size and colours kept (JPEG within its loss).
TEST_F(QtClipboardTest, PictureFilesGoOntoTheClipboardAndBackInEveryFormat)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QImage source(37, 21, QImage::Format_RGB32);
    source.fill(QColor(200, 40, 20));
    for (int y = 8; y < 16; ++y)  // a band wide enough for JPEG's colour blur
        for (int x = 0; x < 37; ++x)
            source.setPixel(x, y, qRgb(10, 30, 220));
    const QString input = dir.filePath("in.bmp");
    ASSERT_TRUE(source.save(input));

    platform::QtClipboard clipboard;
    ASSERT_TRUE(clipboard.setPictureFromFile(input));
    Pump(50);
    platform::PicturePtr held = clipboard.picture();
    ASSERT_TRUE(held);
    EXPECT_EQ(held->width(), 37);
    EXPECT_EQ(held->height(), 21);
    EXPECT_FALSE(clipboard.setPictureFromFile(dir.filePath("missing.bmp")));

    for (const char *name : {"out.bmp", "out.jpg", "out.JPEG", "out.gif", "out.tiff"}) {
        const QString path = dir.filePath(QString::fromLatin1(name));
        QString error;
        ASSERT_TRUE(clipboard.savePictureToFile(path, &error)) << name << ": " << error.toStdString();
        const QImage back(path);
        ASSERT_FALSE(back.isNull()) << name;
        EXPECT_EQ(back.size(), QSize(37, 21)) << name;
        const QColor top = back.pixelColor(3, 3), line = back.pixelColor(3, 12);
        EXPECT_NEAR(top.red(), 200, 24) << name;
        EXPECT_NEAR(line.blue(), 220, 24) << name;
    }
    QString error;
    EXPECT_FALSE(clipboard.savePictureToFile("/proc/sonamark.gif", &error));
    EXPECT_FALSE(error.isEmpty());
}

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    else
        qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
