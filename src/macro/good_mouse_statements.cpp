// Checkers of [LEFTDOWN x y], [LEFTUP x y], [RIGHTDOWN x y], [RIGHTUP x y] and
// [CLICKZONE Xmn Ymn Xmx Ymx Trap]. A position written as a number is tested against
// the screen here; one held in a variable only when the macro runs.
#include "macro/good_statements.h"

#include "macro/commands.h"
#include "macro/good_operands.h"
#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "macro/numbers.h"
#include "macro/variables.h"

namespace macro {

namespace {

const QString kClickZoneForm = QStringLiteral("[CLICKZONE Xmn Ymn Xmx Ymx Trap]");

ScreenWidthSource &screenWidthSource()
{
    static ScreenWidthSource source;
    return source;
}

// "[LEFTDOWN xp yp]": the mouse statements' own form in their position messages.
QString mouseForm(int number) { return Commands().value(number - 1).trimmed() + QStringLiteral(" xp yp]"); }

// A position: a number from 0 to the screen's width (when ranged), or a name.
QString goodPosition(const QString &word, const char *caption, bool ranged, const QString &invalid,
                     const QString &form)
{
    if (word.isEmpty())
        return good::InvalidFormat(form);
    if (IsNumber(word)) {
        const double value = Val1(word);
        return ranged && (value < 0 || value > CheckScreenWidth()) ? invalid : QString();
    }
    const QString message = AllLetters(word, QLatin1String(caption));
    return message.isEmpty() ? QString() : message + good::For(form);
}

// Position of the last token that begins before pos, 0 when none.
int lastBefore(const QString &up, const QString &token, int pos)
{
    return pos <= 1 ? 0 : int(up.lastIndexOf(token, pos - 2)) + 1;
}

} // namespace

void SetScreenWidthSource(ScreenWidthSource source) { screenWidthSource() = std::move(source); }

int CheckScreenWidth()
{
    const ScreenWidthSource &source = screenWidthSource();
    const int width = source ? source() : 0;
    return width > 0 ? width : kDefaultScreenWidth;
}

QString GoodMOUSE(const QString &macro, int number, const QString &line, int pos)
{
    const QString form = mouseForm(number);
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    const QStringList words = good::OperandWords(s.words);
    if (words.size() != 2)
        return good::InvalidFormat(form);
    QString message = goodPosition(words.at(0), "X position ", true, QStringLiteral("Invalid X position") + good::For(form), form);
    if (message.isEmpty())
        message = goodPosition(words.at(1), "Y position ", true, QStringLiteral("Invalid Y position") + good::For(form), form);
    if (!message.isEmpty())
        return message;
    return GoodMatchButton(macro, number, pos);
}

QString GoodMatchButton(const QString &macro, int number, int pos)
{
    const bool right = number == CmdRIGHTDOWN || number == CmdRIGHTUP;
    const bool down = number == CmdLEFTDOWN || number == CmdRIGHTDOWN;
    const QString downRow = right ? QStringLiteral("[RIGHTDOWN ") : QStringLiteral("[LEFTDOWN ");
    const QString upRow = right ? QStringLiteral("[RIGHTUP ") : QStringLiteral("[LEFTUP ");
    const QString up = UpperSameLength(macro);
    const bool partnerAfter = up.indexOf(down ? upRow : downRow, qMax(pos, 1) - 1) >= 0;
    const bool partnerBefore = lastBefore(up, down ? upRow : downRow, pos) > 0;
    if (down ? partnerAfter : partnerBefore)
        return {};
    const QString self = CanonicalStatement(number);
    if (down ? partnerBefore : partnerAfter)
        return QStringLiteral("Wrong [DOWN/UP] order for ") + self + QStringLiteral(" statement");
    return QStringLiteral("Missing matching ") + CanonicalStatement(down ? number + 1 : number - 1)
        + QStringLiteral(" statement");
}

QString GoodCLICKZONE(const QString &line)
{
    const QString &form = kClickZoneForm;
    const good::StatementText s = good::Prepare(line);
    if (!s.missingQuote.isEmpty())
        return s.missingQuote;
    if (!s.words.endsWith(QLatin1String(" TRUE]")) && !s.words.endsWith(QLatin1String(" FALSE]")))
        return QStringLiteral("The TRAP parameter must be TRUE or FALSE") + good::For(form);
    QStringList words = good::OperandWords(s.words);
    words.removeLast();  // TRUE or FALSE
    // Four positions, and optionally the two names that receive the click's position.
    if (words.size() != 4 && words.size() != 6)
        return good::InvalidFormat(form);

    struct Field {
        const char *caption;
        const char *invalid;  // nullptr: no range test
    };
    static const Field kFields[4] = {{"Xmin position ", "Invalid Xmin position"},
                                     {"Ymin position ", nullptr},
                                     {"Xmax position ", "Invalid Xmax position"},
                                     {"Ymax position ", "Invalid Ymax position"}};
    for (int i = 0; i < 4; ++i) {
        const Field &f = kFields[i];
        const QString invalid = f.invalid ? QLatin1String(f.invalid) + good::For(form) : QString();
        const QString message = goodPosition(words.at(i), f.caption, f.invalid != nullptr, invalid, form);
        if (!message.isEmpty())
            return message;
    }
    const auto notAbove = [&](int low, int high) {
        return IsNumber(words.at(low)) && IsNumber(words.at(high)) && Val1(words.at(high)) <= Val1(words.at(low));
    };
    if (notAbove(0, 2))
        return QStringLiteral("Xmax position must be greater than Xmin pixels") + good::For(form);
    if (notAbove(1, 3))
        return QStringLiteral("Ymax position must be greater than Ymin pixels") + good::For(form);
    if (words.size() == 6)
        return good::CheckOperands(words.mid(4), form, {good::OperandRule{}, good::OperandRule{}});
    return {};
}

} // namespace macro
