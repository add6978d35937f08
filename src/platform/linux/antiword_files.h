#pragma once
// WordFiles through antiword: .doc text as UTF-8, one line per paragraph.
#include "platform/word_files.h"

namespace platform {

class AntiwordFiles : public WordFiles {
public:
    // program: the antiword to run; "" finds it on PATH.
    explicit AntiwordFiles(QString program = QString());
    bool installed() const override;
    bool readText(const QString &path, QString *text, QString *error) override;

private:
    QString m_program;
};

} // namespace platform
