// Wizards of the mouse statements: positions typed ([LEFTDOWN X Y] and its family,
// [CLICKZONE]) and points picked with the mouse (clicks, double clicks, drags, zones).
#include "hotkeys/wizard_steps.h"
#include "hotkeys/wizards.h"

#include "macro/commands.h"
#include "macro/numbers.h"
#include "macro/variables.h"

#include <QPoint>

namespace hotkeys {

using namespace wizard;

namespace {

const QString kDoubleClickPause = QStringLiteral("[WAIT .2]");
const QString kZoneTitle = QStringLiteral("CLICKZONE");


bool IsWholeNumber(const QString &text) { return IsPlainNumber(text) && !text.contains(QLatin1Char('.')); }

// A position on one axis: a whole number below limit, or a variable name.
Validator Position(const QString &axis, int limit)
{
    return [axis, limit](const QString &answer) -> QString {
        if (IsWholeNumber(answer))
            return macro::Val1(answer) < limit
                       ? QString()
                       : axis + QStringLiteral(" position must be less than ") + QString::number(limit) + QStringLiteral(" pixels");
        return macro::AllLetters(answer, QString()).isEmpty() ? QString()
                                                              : QStringLiteral("Invalid ") + axis + QStringLiteral(" mouse position");
    };
}

// The maximum of a click zone's axis, judged also against the minimum already given.
Validator ZoneMaximum(const QString &axis, int limit, const QString &minimum)
{
    const QString low = axis + QStringLiteral("min");
    const QString high = axis + QStringLiteral("max");
    const Validator onScreen = Position(high, limit);
    return [=](const QString &answer) -> QString {
        const QString fault = onScreen(answer);
        if (!fault.isEmpty())
            return fault;
        if (answer.compare(minimum, Qt::CaseInsensitive) == 0)
            return low + QStringLiteral(" and ") + high + QStringLiteral(" can not be the same");
        if (!IsWholeNumber(answer))
            return {};
        if (macro::Val1(answer) <= 0)
            return high + QStringLiteral(" mouse position must be > 0");
        if (IsWholeNumber(minimum) && macro::Val1(answer) < macro::Val1(minimum))
            return high + QStringLiteral(" position must be greater than ") + minimum + QStringLiteral(" (") + low
                   + QStringLiteral(") pixels");
        return {};
    };
}

// One point picked on the screen under the title; a mouse that can't be hooked is told.
bool PickPoint(WizardAsker &ask, const QString &title, const QString &statement, QPoint &at)
{
    bool hooked = true;
    if (ask.point(title, at, hooked))
        return true;
    if (!hooked)
        ask.message(QStringLiteral("Can't hook the mouse for ") + statement + QStringLiteral(" statement."), kOk,
                    QStringLiteral("Mouse Hook"));
    return false;
}

QString Button(const QString &word, const QPoint &at)
{
    return Statement(word, {QString::number(at.x()), QString::number(at.y())});
}

// A click: the button's down and up at one point.
QStringList Click(const QString &button, const QPoint &at)
{
    return {Button(button + QStringLiteral("DOWN"), at), Button(button + QStringLiteral("UP"), at)};
}

QStringList PickedClick(WizardAsker &ask, const WizardContext &context, const QString &button, const QString &name)
{
    if (ShowsHelp(ask, context, QLatin1Char('[') + button + QStringLiteral("DOWN ")))
        return {};
    QPoint at;
    if (!PickPoint(ask, QStringLiteral("Define ") + name, name, at))
        return {};
    return Click(button, at);
}

QStringList PickedDoubleClick(WizardAsker &ask, const WizardContext &context, const QString &button, const QString &side)
{
    if (ShowsHelp(ask, context, QLatin1Char('[') + button + QStringLiteral("DOWN ")))
        return {};
    QPoint at;
    if (!PickPoint(ask, QStringLiteral("Define ") + side + QStringLiteral(" Doubleclick"), side + QStringLiteral(" Doubleclick"), at))
        return {};
    return Click(button, at) + QStringList{kDoubleClickPause} + Click(button, at);
}

QStringList PickedDrag(WizardAsker &ask, const WizardContext &context, const QString &button, const QString &side)
{
    if (ShowsHelp(ask, context, QLatin1Char('[') + button + QStringLiteral("DOWN ")))
        return {};
    const QString statement = side + QStringLiteral(" Drag");
    QPoint down, up;
    if (!PickPoint(ask, QStringLiteral("Define ") + side + QStringLiteral(" Down"), statement, down)
        || !PickPoint(ask, QStringLiteral("Define ") + side + QStringLiteral(" Up"), statement, up))
        return {};
    return {Button(button + QStringLiteral("DOWN"), down), Button(button + QStringLiteral("UP"), up)};
}

// TRUE when the zone is to swallow the click, FALSE to let it through; "" on Cancel.
QString AskTrap(WizardAsker &ask)
{
    switch (AskChoice(ask, QStringLiteral("Would you like the click zone to trap the mouse click (Yes) or let it through (No)?"),
                      kZoneTitle)) {
    case WizardYes:
        return QStringLiteral("TRUE");
    case WizardNo:
        return QStringLiteral("FALSE");
    default:
        return {};
    }
}

QStringList TypedButton(WizardAsker &ask, const WizardContext &context, int command, const QString &word)
{
    if (ShowsHelp(ask, context, helpWord(command)))
        return {};
    return MouseFunction(ask, word);
}

} // namespace

QStringList MouseFunction(WizardAsker &ask, const QString &word)
{
    const QSize screen = ask.screen();
    QString x, y;
    if (!AskValue(ask, word, QStringLiteral("Enter the X position or variable name"), Position(QStringLiteral("X"), screen.width()), x)
        || !AskValue(ask, word, QStringLiteral("Enter the Y position or variable name"), Position(QStringLiteral("Y"), screen.height()),
                     y))
        return {};
    return {Statement(word, {x, y})};
}

QStringList mnuFunctionsMouseLEFTDOWN_Click(WizardAsker &ask, const WizardContext &context)
{
    return TypedButton(ask, context, macro::CmdLEFTDOWN, QStringLiteral("LEFTDOWN"));
}

QStringList mnuFunctionsMouseLEFTUP_Click(WizardAsker &ask, const WizardContext &context)
{
    return TypedButton(ask, context, macro::CmdLEFTUP, QStringLiteral("LEFTUP"));
}

QStringList mnuFunctionsMouseRIGHTDOWN_Click(WizardAsker &ask, const WizardContext &context)
{
    return TypedButton(ask, context, macro::CmdRIGHTDOWN, QStringLiteral("RIGHTDOWN"));
}

QStringList mnuFunctionsMouseRIGHTUP_Click(WizardAsker &ask, const WizardContext &context)
{
    return TypedButton(ask, context, macro::CmdRIGHTUP, QStringLiteral("RIGHTUP"));
}

QStringList mnuFunctionsMouseClickzone_Click(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdCLICKZONE)))
        return {};
    const QSize screen = ask.screen();
    QString xMin, yMin, xMax, yMax;
    if (!AskValue(ask, kZoneTitle, QStringLiteral("Enter the Xmin position or variable name"),
                  Position(QStringLiteral("Xmin"), screen.width()), xMin)
        || !AskValue(ask, kZoneTitle, QStringLiteral("Enter the Ymin position or variable name"),
                     Position(QStringLiteral("Ymin"), screen.height()), yMin)
        || !AskValue(ask, kZoneTitle, QStringLiteral("Enter the Xmax position or variable name"),
                     ZoneMaximum(QStringLiteral("X"), screen.width(), xMin), xMax)
        || !AskValue(ask, kZoneTitle, QStringLiteral("Enter the Ymax position or variable name"),
                     ZoneMaximum(QStringLiteral("Y"), screen.height(), yMin), yMax))
        return {};
    const QString trap = AskTrap(ask);
    if (trap.isEmpty())
        return {};
    return {Statement(kZoneTitle, {xMin, yMin, xMax, yMax, trap})};
}

QStringList mnuPUMouseLeftClick_Click(WizardAsker &ask, const WizardContext &context)
{
    return PickedClick(ask, context, QStringLiteral("LEFT"), QStringLiteral("Left Click"));
}

QStringList mnuPUMouseLeftDrag_Click(WizardAsker &ask, const WizardContext &context)
{
    return PickedDrag(ask, context, QStringLiteral("LEFT"), QStringLiteral("Left"));
}

QStringList mnuPUMouseLeftDbl_Click(WizardAsker &ask, const WizardContext &context)
{
    return PickedDoubleClick(ask, context, QStringLiteral("LEFT"), QStringLiteral("Left"));
}

QStringList mnuPUMouseRightDrag_Click(WizardAsker &ask, const WizardContext &context)
{
    return PickedDrag(ask, context, QStringLiteral("RIGHT"), QStringLiteral("Right"));
}

QStringList mnuPUMouseRightDbl_Click(WizardAsker &ask, const WizardContext &context)
{
    return PickedDoubleClick(ask, context, QStringLiteral("RIGHT"), QStringLiteral("Right"));
}

QStringList DefineMouseClickZone(WizardAsker &ask, const WizardContext &context)
{
    if (ShowsHelp(ask, context, helpWord(macro::CmdCLICKZONE)))
        return {};
    const QString statement = QStringLiteral("Click Zone");
    for (;;) {
        QPoint first, second;
        if (!PickPoint(ask, QStringLiteral("Define Top Left"), statement, first)
            || !PickPoint(ask, QStringLiteral("Define Bottom Right"), statement, second))
            return {};
        // The corners may be picked in any order; the zone is what they span.
        const int left = qMin(first.x(), second.x()), right = qMax(first.x(), second.x());
        const int top = qMin(first.y(), second.y()), bottom = qMax(first.y(), second.y());
        QString refusal;
        if (first.x() == second.x())
            refusal = QStringLiteral("Xmin and Xmax can not be the same");
        else if (first.y() == second.y())
            refusal = QStringLiteral("Ymin and Ymax can not be the same");
        if (!refusal.isEmpty()) {
            ask.message(TryAgain(refusal), kOk, kZoneTitle);
            continue;
        }
        const QString trap = AskTrap(ask);
        if (trap.isEmpty())
            return {};
        return {Statement(kZoneTitle, {QString::number(left), QString::number(top), QString::number(right),
                                       QString::number(bottom), trap})};
    }
}

} // namespace hotkeys
