#include "platform/key_sequence.h"

#include <QStringList>
#include <algorithm>
#include <array>

namespace platform {

namespace {

constexpr int kFunctionKeys = 16;
constexpr int kMaxCountDigits = 6;  // enough for kMaxKeyRepeat; longer counts are cut

struct KeyNameRow {
    const char *name;
    NamedKey key;
};

// Brace names, compared without regard to case. The function keys are worked out apart.
constexpr KeyNameRow kKeyNames[] = {
    {"BACKSPACE", NamedKey::Backspace}, {"BS", NamedKey::Backspace},     {"BKSP", NamedKey::Backspace},
    {"BREAK", NamedKey::Break},         {"CAPSLOCK", NamedKey::CapsLock}, {"DELETE", NamedKey::Delete},
    {"DEL", NamedKey::Delete},          {"DOWN", NamedKey::Down},         {"END", NamedKey::End},
    {"ENTER", NamedKey::Enter},         {"ESC", NamedKey::Escape},        {"HELP", NamedKey::Help},
    {"HOME", NamedKey::Home},           {"INSERT", NamedKey::Insert},     {"INS", NamedKey::Insert},
    {"LEFT", NamedKey::Left},           {"NUMLOCK", NamedKey::NumLock},   {"PGDN", NamedKey::PageDown},
    {"PGUP", NamedKey::PageUp},         {"PRTSC", NamedKey::PrintScreen}, {"RIGHT", NamedKey::Right},
    {"SCROLLLOCK", NamedKey::ScrollLock}, {"TAB", NamedKey::Tab},         {"UP", NamedKey::Up},
};

// ORDER NamedKey
constexpr std::array<const char *, int(NamedKey::F1)> kDisplayNames = {
    "Enter", "Tab", "Backspace", "Delete", "Insert", "Up", "Down", "Left", "Right", "Home", "End",
    "PageUp", "PageDown", "Escape", "CapsLock", "NumLock", "ScrollLock", "Break", "Help", "PrintScreen",
};
static_assert(int(NamedKey::F16) - int(NamedKey::F1) == kFunctionKeys - 1);

bool LookUpKey(const QString &name, NamedKey &key)
{
    const QString upper = name.toUpper();
    for (const KeyNameRow &row : kKeyNames)
        if (upper == QLatin1String(row.name)) {
            key = row.key;
            return true;
        }
    if (upper.startsWith(QLatin1Char('F'))) {
        bool ok = false;
        const int n = upper.mid(1).toInt(&ok);
        // "F01" and "F+1" are no key names.
        if (ok && n >= 1 && n <= kFunctionKeys && upper.mid(1) == QString::number(n)) {
            key = NamedKey(int(NamedKey::F1) + n - 1);
            return true;
        }
    }
    return false;
}

bool IsModifierChar(char32_t c) { return c == U'+' || c == U'^' || c == U'%'; }

Modifier ModifierOf(char32_t c)
{
    return c == U'+' ? Modifier::Shift : c == U'^' ? Modifier::Control : Modifier::Alt;
}

// Recursive descent over the code points; positions are indices, "end" is exclusive.
// Whatever does not fit the grammar is typed as it stands: a key sender must never drop
// the user's text, and a macro that sends a stray "{" or ")" means that character.
class Parser {
public:
    explicit Parser(const QString &text) : m_cp(text.toUcs4()) {}

    KeySequence run()
    {
        sequence(0, m_cp.size());
        return std::move(m_out);
    }

private:
    // sequence -> unit*
    void sequence(qsizetype pos, qsizetype end)
    {
        while (pos < end)
            pos = unit(pos, end);
    }

    // unit -> modifier+ unit | "(" sequence ")" | "{" token "}" | "~" | line break | character
    qsizetype unit(qsizetype pos, qsizetype end)
    {
        const char32_t c = m_cp[pos];
        if (IsModifierChar(c))
            return modified(pos, end);
        if (c == U'(') {
            const qsizetype close = matchingParen(pos, end);
            if (close < 0) {
                typeChar(c);
                return pos + 1;
            }
            sequence(pos + 1, close);
            return close + 1;
        }
        if (c == U'{') {
            const qsizetype close = braceClose(pos, end);
            if (close < 0) {
                typeChar(c);
                return pos + 1;
            }
            braceToken(pos, close);
            return close + 1;
        }
        if (c == U'~') {
            tap(NamedKey::Enter, 1);
            return pos + 1;
        }
        if (c == U'\r' && pos + 1 < end && m_cp[pos + 1] == U'\n') {
            tap(NamedKey::Enter, 1);  // one line break, one Enter
            return pos + 2;
        }
        typeChar(c);
        return pos + 1;
    }

    // modifier+ unit: the modifiers are held for the one unit that follows. One that is
    // already held by an enclosing group is neither pressed again nor let go early.
    qsizetype modified(qsizetype pos, qsizetype end)
    {
        qsizetype next = pos;
        while (next < end && IsModifierChar(m_cp[next]))
            ++next;
        if (next == end) {
            // Nothing follows to hold them for: they were meant as characters.
            for (qsizetype i = pos; i < end; ++i)
                typeChar(m_cp[i]);
            return end;
        }
        std::vector<Modifier> pressed;
        for (qsizetype i = pos; i < next; ++i) {
            const Modifier m = ModifierOf(m_cp[i]);
            if (m_held[int(m)])
                continue;
            m_held[int(m)] = true;
            pressed.push_back(m);
            m_out.push_back({KeyStep::Kind::Press, m});
        }
        next = unit(next, end);
        for (auto it = pressed.rbegin(); it != pressed.rend(); ++it) {
            m_held[int(*it)] = false;
            m_out.push_back({KeyStep::Kind::Release, *it});
        }
        return next;
    }

    // The ")" that closes the "(" at pos, skipping brace tokens such as "{)}"; -1 if none.
    qsizetype matchingParen(qsizetype pos, qsizetype end) const
    {
        int depth = 0;
        for (qsizetype i = pos + 1; i < end; ++i) {
            const char32_t c = m_cp[i];
            if (c == U'{') {
                const qsizetype close = braceClose(i, end);
                if (close >= 0)
                    i = close;
            } else if (c == U'(') {
                ++depth;
            } else if (c == U')') {
                if (depth == 0)
                    return i;
                --depth;
            }
        }
        return -1;
    }

    // The "}" of the token whose "{" is at pos, or -1 when this "{" opens no token. The
    // name's first character may be any one, "}" and "{" included ("{}}", "{{}"); a "{"
    // further in means the first one was a stray brace ("{a{ENTER}").
    qsizetype braceClose(qsizetype pos, qsizetype end) const
    {
        for (qsizetype i = pos + 2; i < end; ++i) {
            if (m_cp[i] == U'{')
                return -1;
            if (m_cp[i] == U'}')
                return i;
        }
        return -1;
    }

    // token -> name [" " count]: a key of the table, or one character to type.
    void braceToken(qsizetype open, qsizetype close)
    {
        const QList<uint> content = m_cp.mid(open + 1, close - open - 1);
        qsizetype nameLength = content.size();
        int count = 1;
        const qsizetype blank = content.lastIndexOf(U' ');
        if (blank > 0 && blank + 1 < content.size()
            && std::all_of(content.begin() + blank + 1, content.end(), [](uint c) { return c >= '0' && c <= '9'; })) {
            nameLength = blank;
            if (content.size() - blank - 1 > kMaxCountDigits) {
                count = kMaxKeyRepeat;
            } else {
                count = 0;
                for (qsizetype i = blank + 1; i < content.size(); ++i)
                    count = count * 10 + int(content[i] - '0');
                count = std::min(count, kMaxKeyRepeat);
            }
        }
        if (nameLength == 1) {
            for (int i = 0; i < count; ++i)
                typeChar(content[0]);
            return;
        }
        NamedKey key;
        if (LookUpKey(QString::fromUcs4(reinterpret_cast<const char32_t *>(content.constData()), nameLength), key)) {
            if (count > 0)
                tap(key, count);
            return;
        }
        // An unknown key name is text that happens to stand in braces.
        for (qsizetype i = open; i <= close; ++i)
            typeChar(m_cp[i]);
    }

    void tap(NamedKey key, int count)
    {
        KeyStep step{KeyStep::Kind::Tap};
        step.key = key;
        step.count = count;
        m_out.push_back(step);
    }

    // Tabs and line breaks in the text are the keys that type them.
    void typeChar(char32_t c)
    {
        if (c == U'\t') {
            tap(NamedKey::Tab, 1);
        } else if (c == U'\r' || c == U'\n') {
            tap(NamedKey::Enter, 1);
        } else {
            KeyStep step{KeyStep::Kind::Type};
            step.character = c;
            m_out.push_back(step);
        }
    }

    const QList<uint> m_cp;
    KeySequence m_out;
    bool m_held[3] = {};
};

} // namespace

KeySequence ParseKeyNotation(const QString &notation) { return Parser(notation).run(); }

QString KeyNameText(NamedKey key)
{
    if (key >= NamedKey::F1)
        return QStringLiteral("F%1").arg(int(key) - int(NamedKey::F1) + 1);
    return QLatin1String(kDisplayNames[size_t(key)]);
}

QString ModifierText(Modifier modifier)
{
    switch (modifier) {
    case Modifier::Shift: return QStringLiteral("Shift");
    case Modifier::Control: return QStringLiteral("Control");
    case Modifier::Alt: return QStringLiteral("Alt");
    }
    return {};
}

QString DescribeKeySequence(const KeySequence &steps)
{
    QStringList parts;
    for (const KeyStep &step : steps) {
        switch (step.kind) {
        case KeyStep::Kind::Press:
            parts << QLatin1Char('+') + ModifierText(step.modifier);
            break;
        case KeyStep::Kind::Release:
            parts << QLatin1Char('-') + ModifierText(step.modifier);
            break;
        case KeyStep::Kind::Tap:
            parts << (step.count == 1 ? QStringLiteral("{%1}").arg(KeyNameText(step.key))
                                      : QStringLiteral("{%1*%2}").arg(KeyNameText(step.key)).arg(step.count));
            break;
        case KeyStep::Kind::Type: {
            const char32_t c = step.character;
            if (c <= 0x20 || c == 0x7f || (c >= 0x80 && c < 0xa0) || (c >= 0xd800 && c < 0xe000) || c > 0x10ffff)
                parts << QStringLiteral("U+%1").arg(uint(c), 4, 16, QLatin1Char('0')).toUpper();
            else
                parts << QString::fromUcs4(&c, 1);
            break;
        }
        }
    }
    return parts.join(QLatin1Char(' '));
}

} // namespace platform
