#pragma once
// The batch window's helper: a `sonamark-cli batch --worker` process that reads one
// document while the window reads another.
#include "platform/batch_helper.h"

#include <QProcess>
#include <memory>

namespace audio {

class ProcessBatchHelper : public platform::BatchHelper {
public:
    // program: the sonamark-cli to start.
    explicit ProcessBatchHelper(QString program);
    ~ProcessBatchHelper() override;

    bool start(const platform::BatchHelperJob &job) override;
    State state() const override { return m_state; }
    int percent() const override { return m_percent; }
    QString error() const override { return m_error; }
    void wait(int ms) override;
    void cancel() override;

private:
    void readOutput();
    void finished(int code, QProcess::ExitStatus status);

    QString m_program;
    std::unique_ptr<QProcess> m_process;
    QString m_mp3Name;
    State m_state = State::Idle;
    int m_percent = 0;
    QString m_error;
};

} // namespace audio
