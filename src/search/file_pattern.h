#pragma once
// The file list's Pattern: wildcards separated by semicolons ("*.txt;*.rtf").
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace search {

// "*" stands for any run of characters (none included), "?" for exactly one. Letters
// match in either case, as the file lists of the desktop do, and "*.*" takes every name,
// with or without a dot. Names that begin with "." are hidden: only a wildcard that
// itself begins with "." takes them. Blanks around each wildcard are dropped; an empty
// pattern is "*.*".
class FilePattern {
public:
    explicit FilePattern(const QString &pattern = QString());

    bool matches(const QString &name) const;
    // The same test on a name as the file system holds it (UTF-8 or other bytes).
    bool matches(const QByteArray &name) const;
    const QStringList &wildcards() const { return m_wildcards; }

private:
    struct Wildcard {
        QString text;          // case-folded
        QByteArray ascii;      // lower-cased, when the wildcard is ASCII
        bool takesHidden = false;
        bool takesAll = false; // "*" or "*.*"
    };
    QStringList m_wildcards;
    QList<Wildcard> m_parts;
    bool m_allAscii = true;
};

} // namespace search
