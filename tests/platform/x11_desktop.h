#pragma once
// Helpers of the tests that run on the test desktop's X server (scripts/with-desktop.sh):
// the key_recorder window, raw XTest keys that bypass the code under test, key map dumps.
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <optional>
#include <string>

typedef struct _XDisplay Display;

namespace x11test {

// Bounds on waiting for the desktop; reaching one is a failure, not a measurement.
inline constexpr int kWindowTimeoutMs = 15000;
inline constexpr int kDeliveryTimeoutMs = 60000;

// The test's own connection, or nullptr (the test then fails: no desktop).
Display *TestDisplay();

// A key_recorder process whose window is up and managed.
class Recorder {
public:
    struct Contents {
        int mark = 0;
        QStringList events;
        QString text;
    };

    explicit Recorder(const QString &title = QStringLiteral("Sonamark key recorder test"));
    ~Recorder();

    bool ready() const { return m_window != 0; }
    unsigned long window() const { return m_window; }
    // Makes it the active window with the keyboard focus.
    bool activate();
    // Empties the box and the event list; false if the recorder did not answer.
    bool clear();
    // Presses F11 and waits for the recorder to write the new mark: all keys and clicks
    // sent before it have arrived by then.
    std::optional<Contents> sync();

private:
    QTemporaryDir m_dir;
    QString m_output;
    QString m_title;
    QProcess m_process;
    unsigned long m_window = 0;
    int m_mark = 0;
};

// The managed window whose title is title, 0 after kWindowTimeoutMs without one.
unsigned long WaitForManagedWindow(const QString &title);
unsigned long ActiveWindow();
// Presses and releases a key by its keysym name ("F11") with XTest on the test's own
// connection, not through the code under test.
void TapKey(const char *keysymName);
bool KeyIsDown(const char *keysymName);
bool CapsLockOn();
void SetCapsLock(bool on);
// The core keyboard map and modifier map as text, one line per keycode.
std::string KeymapDump();
// The root window property in which the key sender notes lent keycodes is absent.
bool NoLentKeycodesNoted();
// How many MappingNotify events (keyboard map changes) the server sent since the last call.
int TakeMappingNotifies();
// Runs xdotool with the arguments; true when it succeeded.
bool Xdotool(const QStringList &args);

} // namespace x11test
