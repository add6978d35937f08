// key_recorder OUTPUT [--title TITLE]: a window with one text box that writes what it
// receives to OUTPUT, for the end-to-end tests of the key and mouse senders and for the
// typing benchmark.
//
// Two keys steer it and never reach the box: F11 writes the file with the next mark
// number (keys arrive in order, so once the file shows the mark pressed after some
// typing, all of that typing has arrived); F12 clears the box and the event list, then
// writes the file. The file is written whole each time (atomically):
//   mark N
//   press left|right|middle X Y    a mouse press, in pixels from the window's top left
//   key NAME                       a key that typed no text ("Left", "F5", "Ctrl+H")
//   --- text ---
//   the text of the box, as it stands
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QStringList>

#include <cstdio>

namespace {

const QString kDefaultTitle = QStringLiteral("Sonamark key recorder");
constexpr int kWidth = 640, kHeight = 400;

class RecorderBox : public QPlainTextEdit {
public:
    explicit RecorderBox(QString output) : m_output(std::move(output))
    {
        setContextMenuPolicy(Qt::NoContextMenu);  // a right click must not open a menu
    }

    void write()
    {
        QSaveFile file(m_output);
        if (!file.open(QIODevice::WriteOnly))
            return;
        QByteArray data = "mark " + QByteArray::number(m_mark) + '\n';
        for (const QString &event : m_events)
            data += event.toUtf8() + '\n';
        data += "--- text ---\n" + toPlainText().toUtf8();
        file.write(data);
        file.commit();
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_F11 && event->modifiers() == Qt::NoModifier) {
            ++m_mark;
            write();
            return;
        }
        if (event->key() == Qt::Key_F12 && event->modifiers() == Qt::NoModifier) {
            clear();
            m_events.clear();
            write();
            return;
        }
        const QString text = event->text();
        const bool typesText = !text.isEmpty() && text.at(0).unicode() >= 0x20 && text.at(0).unicode() != 0x7f;
        if (!typesText && !IsModifier(event->key()))
            m_events << QStringLiteral("key ") + QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText);
        QPlainTextEdit::keyPressEvent(event);
    }

    void mousePressEvent(QMouseEvent *event) override
    {
        const QPoint at = window()->mapFromGlobal(event->globalPosition()).toPoint();
        const char *button = event->button() == Qt::LeftButton    ? "left"
                             : event->button() == Qt::RightButton ? "right"
                                                                  : "middle";
        m_events << QStringLiteral("press %1 %2 %3").arg(QLatin1String(button)).arg(at.x()).arg(at.y());
        QPlainTextEdit::mousePressEvent(event);
    }

private:
    static bool IsModifier(int key)
    {
        return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta
               || key == Qt::Key_AltGr || key == Qt::Key_Super_L || key == Qt::Key_Super_R;
    }

    QString m_output;
    int m_mark = 0;
    QStringList m_events;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QStringList args = QApplication::arguments();
    args.removeFirst();
    QString title = kDefaultTitle;
    const qsizetype titleAt = args.indexOf(QStringLiteral("--title"));
    if (titleAt >= 0 && titleAt + 1 < args.size()) {
        title = args.at(titleAt + 1);
        args.remove(titleAt, 2);
    }
    if (args.size() != 1) {
        std::fprintf(stderr, "usage: key_recorder OUTPUT [--title TITLE]\n");
        return 2;
    }
    RecorderBox box(args.first());
    box.setWindowTitle(title);
    box.resize(kWidth, kHeight);
    box.show();
    box.activateWindow();
    box.setFocus();
    box.write();
    return QApplication::exec();
}
