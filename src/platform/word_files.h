#pragma once
// Port: the text of word-processor (.doc) files, read by an outside program.
#include <QString>

namespace platform {

class WordFiles {
public:
    virtual ~WordFiles() = default;
    // True when the reading program is installed.
    virtual bool installed() const = 0;
    // The text of the document at path. False, with *error saying why, when it cannot be
    // read.
    virtual bool readText(const QString &path, QString *text, QString *error) = 0;
};

} // namespace platform
