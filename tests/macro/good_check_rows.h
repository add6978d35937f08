#pragma once
// Row types and fixtures shared by the statement-checker tables.
#include "macro/commands.h"
#include "macro/good_statements.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <initializer_list>
#include <ostream>
#include <vector>

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }

namespace goodtest {

// Messages carry this line number in the one-line tables.
inline constexpr int kLineNo = 7;

// One line checked on its own (the macro is that line alone): the full message.
struct LineCase {
    const char *line;
    const char *expected;
};
inline std::ostream &operator<<(std::ostream &os, const LineCase &c) { return os << c.line; }

// A whole small macro and the number of the line checked in it: the full message.
struct MacroCase {
    std::vector<const char *> lines;
    int checked;  // 1-based
    const char *expected;
};
inline std::ostream &operator<<(std::ostream &os, const MacroCase &c)
{
    for (const char *l : c.lines)
        os << l << " | ";
    return os << "line " << c.checked;
}

// The macro's text with CR LF line ends, and where each line begins.
struct MacroText {
    QString text;
    QList<int> starts;  // 1-based position of line n at index n-1
    explicit MacroText(const std::vector<const char *> &lines)
    {
        for (const char *l : lines) {
            starts << int(text.size()) + 1;
            text += QString::fromUtf8(l) + QStringLiteral("\r\n");
        }
    }
};

inline QString CheckAlone(const char *line)
{
    const QString l = QString::fromUtf8(line);
    return macro::GoodActionLine(l + QStringLiteral("\r\n"), l, 1, kLineNo);
}

inline QString CheckInMacro(const MacroCase &c)
{
    const MacroText m(c.lines);
    return macro::GoodActionLine(m.text, QString::fromUtf8(c.lines.at(c.checked - 1)), m.starts.at(c.checked - 1),
                                 c.checked);
}

// Leaves no screen width source and no hotkey lookup behind.
class ProvidersReset : public ::testing::Test
{
protected:
    void TearDown() override
    {
        macro::SetScreenWidthSource(nullptr);
        macro::SetHotkeyLookup(nullptr);
    }
};

} // namespace goodtest
