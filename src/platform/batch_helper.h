#pragma once
// Port: a second reader in a process of its own, so that a batch reads two documents at
// once. The speech library speaks one text at a time per process; a helper process is
// how the batch window keeps a second core busy.
#include <QString>

namespace platform {

// One document for the helper: the text as the window would speak it (exceptions already
// applied) and what the window would speak and encode it with.
struct BatchHelperJob {
    QString document;  // its MP3 goes beside it, as the window names it
    QString text;
    QString pitch = QStringLiteral("0");
    int voice = -1;    // engine voice; -1 keeps the engine's
    int qualityRow = 0;
    int bitRate = 128;
};

class BatchHelper {
public:
    enum class State { Idle, Speaking, Encoding, Converted, Failed };
    virtual ~BatchHelper() = default;
    // Starts the job; false when no helper can be started (the caller converts itself).
    virtual bool start(const BatchHelperJob &job) = 0;
    // Where the job stands; Converted and Failed last until the next start.
    virtual State state() const = 0;
    virtual int percent() const = 0;
    // Why it failed.
    virtual QString error() const = 0;
    // Waits up to ms for news of the job (its state or percent may change).
    virtual void wait(int ms) = 0;
    // Stops the job; its MP3 and any temporary file are removed. The state becomes Idle.
    // An MP3 that the helper finished before stays.
    virtual void cancel() = 0;
};

} // namespace platform
