#pragma once
// Asks the program that has the keyboard focus to answer a _NET_WM_PING. A program reads
// its events in order, so its answer means it has read every key sent to it before the
// ping: how the typist knows, rather than guesses, that keys typed on lent keycodes were
// read with the map they were typed with. Qt and GTK programs answer pings; others do
// not, and the typist then goes by its time estimate.
#include <chrono>

typedef struct _XDisplay Display;

namespace platform::x11 {

class FocusPing {
public:
    explicit FocusPing(Display *display);

    // Whether the focused program said it answers pings.
    bool available() const { return m_client != 0; }
    // Pings it and waits for the answer, at most limit; false if none came.
    bool roundTrip(std::chrono::milliseconds limit);

private:
    Display *m_display;
    unsigned long m_client = 0;  // the focused top-level window that takes pings
    long m_token = 0;
};

// Reads and drops the events queued on the connection, keeping Xlib's copy of the
// keyboard map current.
void DrainEvents(Display *display);

} // namespace platform::x11
