// Every wizard, answered with generated valid answers, pastes lines that the statement
// checker takes as they stand, alone and as a block inside a macro.
#include "hotkeys/hotkey_status.h"
#include "hotkeys/hotkeys_table.h"
#include "hotkeys/wizards.h"
#include "macro/good_statements.h"

#include <QDate>
#include <QLocale>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <random>

inline void PrintTo(const QString &text, std::ostream *os) { *os << '"' << text.toStdString() << '"'; }

namespace {

constexpr int kRunsPerWizard = 60;
constexpr int kMostQuestions = 60;  // a wizard that keeps asking longer is stopped
const QSize kScreen(1920, 1080);
const QString kCrLf = QStringLiteral("\r\n");

// Answers every question with something valid for it, chosen at random.
class GeneratingAsker : public hotkeys::WizardAsker {
public:
    explicit GeneratingAsker(std::mt19937 &rng) : m_rng(rng) {}

    int message(const QString &text, int type, const QString &title) override
    {
        if (++m_questions > kMostQuestions)
            return hotkeys::WizardCancel;
        if (type == 3)
            return pick(2) ? hotkeys::WizardYes : hotkeys::WizardNo;
        if (type == 4) {
            faults << title + QStringLiteral(": ") + text;  // a checker's fault with a valid answer
            return hotkeys::WizardNo;
        }
        // Refusals of a generated answer that misses another's constraint are fine, and so
        // is the warning of a file id that the macro never opens.
        if (!text.endsWith(QLatin1String("Try again.")) && !text.startsWith(QLatin1String("Warning, no matching OPEN")))
            faults << title + QStringLiteral(": ") + text;
        return hotkeys::WizardOk;
    }
    bool input(const QString &, const QString &prompt, QString &reply, const QString &) override
    {
        if (++m_questions > kMostQuestions)
            return false;
        reply = answer(prompt);
        return true;
    }
    bool file(const QString &, const QString &, bool, QString &path, const QString &) override
    {
        path = QStringLiteral("/tmp/") + text() + QStringLiteral(".txt");
        return ++m_questions <= kMostQuestions;
    }
    bool folder(const QString &, QString &path) override
    {
        path = QStringLiteral("/tmp/") + text();
        return ++m_questions <= kMostQuestions;
    }
    bool point(const QString &, QPoint &at, bool &hooked) override
    {
        hooked = true;
        at = QPoint(pick(kScreen.width()), pick(kScreen.height()));
        return ++m_questions <= kMostQuestions;
    }
    bool windowClass(const QString &, QString &className, bool &hooked) override
    {
        hooked = true;
        className = name().mid(1);
        return ++m_questions <= kMostQuestions;
    }
    bool dateTime(bool, QString &date, QString &time) override
    {
        const QDate day = QDate(2030, 1, 1).addDays(pick(3000));
        date = QLocale::c().toString(day, QStringLiteral("dd/MMMM/yyyy"));
        time = QStringLiteral("%1:%2:%3 %4")
                   .arg(1 + pick(12))
                   .arg(pick(60), 2, 10, QLatin1Char('0'))
                   .arg(pick(60), 2, 10, QLatin1Char('0'))
                   .arg(pick(2) ? QStringLiteral("AM") : QStringLiteral("PM"));
        return ++m_questions <= kMostQuestions;
    }
    QSize screen() override { return kScreen; }
    void help(const QString &statement) override { faults << QStringLiteral("help asked: ") + statement; }

    QStringList faults;

private:
    int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_rng); }
    QString number(int low, int high) { return QString::number(low + pick(high - low + 1)); }
    QString name()
    {
        static const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
        QString n = QStringLiteral("V");
        for (int i = pick(6); i >= 0; --i)
            n += letters.at(pick(int(letters.size())));
        return n;
    }
    QString word()
    {
        static const QString chars = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCXYZ0123456789.,:/~?-");
        QString w;
        for (int i = pick(7); i >= 0; --i)
            w += chars.at(pick(int(chars.size())));
        return w;
    }
    QString text()
    {
        QString t = word();
        for (int i = pick(3); i > 0; --i)
            t += QLatin1Char(' ') + word();
        return t;
    }
    QString literal() { return QLatin1Char('"') + text() + QLatin1Char('"'); }
    QString value()
    {
        switch (pick(3)) {
        case 0:
            return number(0, 999);
        case 1:
            return name();
        default:
            return literal();
        }
    }
    QString term()
    {
        static const QStringList ops = {QStringLiteral("="), QStringLiteral("<>"), QStringLiteral("<"), QStringLiteral(">"),
                                        QStringLiteral("<="), QStringLiteral(">=")};
        return name() + ops.at(pick(int(ops.size()))) + value();
    }
    QString condition()
    {
        QString c = term();
        for (int i = pick(3); i > 0; --i)
            c += (pick(2) ? QStringLiteral(" AND ") : QStringLiteral(" OR ")) + term();
        return c;
    }
    QString loopCondition()
    {
        switch (pick(3)) {
        case 0:
            return name() + QStringLiteral("=1,3-10");
        case 1:
            return name() + QStringLiteral("=") + number(1, 5) + QLatin1Char('-') + number(6, 20);
        default:
            return name() + QStringLiteral("<") + number(1, 99);
        }
    }
    QString rightSide()
    {
        switch (pick(5)) {
        case 0:
            return number(0, 99999);
        case 1:
            return name();
        case 2:
            return name() + QStringLiteral("+") + number(1, 9);
        case 3:
            return literal();
        default:
            return literal() + QStringLiteral("&") + name();
        }
    }
    QString orName(const QString &n) { return pick(4) ? n : name(); }

    QString answer(const QString &prompt)
    {
        const auto has = [&prompt](const char *part) { return prompt.contains(QLatin1String(part)); };
        if (has("LOOP condition"))
            return loopCondition();
        if (has("condition"))
            return condition();
        if (has("right hand side"))
            return rightSide();
        if (has("ID number"))
            return number(1, 9);
        if (has("clip number"))
            return orName(number(1, 5));
        if (has("Xmax") || has("Ymax"))
            return number(500, 1000);
        if (has("Xmin") || has("Ymin") || has("X position") || has("Y position"))
            return orName(number(0, 499));
        if (has("seconds to wait or"))
            return orName(QStringList{QStringLiteral("0.1"), QStringLiteral("12.5"), QStringLiteral("3600"), QStringLiteral("7")}.at(pick(4)));
        if (has("seconds to wait for a response"))
            return number(0, 3599);
        if (has("hotkey index"))
            return orName(number(1, 2));
        if (has("hotkey descriptor"))
            return QStringList{QStringLiteral("Select All"), QStringLiteral("^{F1}"), QStringLiteral("mail")}.at(pick(3));
        if (has("start character position"))
            return QStringLiteral("1");
        if (has("optional text"))
            return pick(2) ? text() : QString();
        if (has("variable") || has("e.g. REC") || has("e.g. CLIPVAR") || has("e.g. INVAR") || has("RESET"))
            return name();
        return text();
    }

    std::mt19937 &m_rng;
    int m_questions = 0;
};

// The block inside a macro that gives each pasted statement the partners it needs: a loop
// around, an OPEN before and a CLOSE after a file id, the other half of a mouse button.
QString Surround(const QStringList &block)
{
    static const QRegularExpression fileId(QStringLiteral("^\\[(OPEN|READ|CLOSE) (\\S+)"));
    static const QRegularExpression button(QStringLiteral("^\\[(LEFT|RIGHT)(DOWN|UP) "));
    QStringList before{QStringLiteral("[LOOP VLOOP=1,3]")};
    QStringList after;
    bool opened = false;
    for (const QString &line : block) {
        const QRegularExpressionMatch file = fileId.match(line);
        if (file.hasMatch()) {
            const QString id = file.captured(2).remove(QLatin1Char(']'));
            if (file.captured(1) == QLatin1String("OPEN"))
                opened = true;
            else if (!opened)
                before << QStringLiteral("[OPEN ") + id + QStringLiteral(" \"/tmp/f.txt\"]");
            if (file.captured(1) != QLatin1String("CLOSE"))
                after << QStringLiteral("[CLOSE ") + id + QLatin1Char(']');
        }
        const QRegularExpressionMatch mouse = button.match(line);
        if (mouse.hasMatch()) {
            const QString side = mouse.captured(1);
            const bool down = mouse.captured(2) == QLatin1String("DOWN");
            const bool partnered = block.indexOf(QRegularExpression(QStringLiteral("^\\[") + side + (down ? "UP " : "DOWN "))) >= 0;
            if (!partnered)
                (down ? after : before) << QLatin1Char('[') + side + (down ? QStringLiteral("UP 1 1]") : QStringLiteral("DOWN 1 1]"));
        }
    }
    after << QStringLiteral("[ENDLOOP]");
    return (before + block + after).join(kCrLf) + kCrLf;
}

class WizardProperty : public ::testing::Test {
protected:
    void SetUp() override
    {
        hotkeys::table().reset();
        hotkeys::table().at(1) = {true, QStringLiteral("^{F1}"), QStringLiteral("Select All"), QStringLiteral("^a")};
        hotkeys::table().at(2) = {true, QStringLiteral("^%K"), QStringLiteral("Mail"), QStringLiteral("^m")};
        hotkeys::table().HotkeyCount = 2;
    }
    void TearDown() override { hotkeys::table().reset(); }
};

} // namespace

TEST_F(WizardProperty, GeneratedAnswersGiveLinesThatPassTheChecker)
{
    hotkeys::WizardContext context;
    context.macro = QStringLiteral("[OPEN 1 \"a.txt\"]\r\n[LOOP I=1,2]\r\n");
    context.caret = int(context.macro.size());
    context.hotkeys = {{QStringLiteral("^{F1}"), QStringLiteral("Select All")}, {QStringLiteral("^%K"), QStringLiteral("Mail")}};

    std::mt19937 rng(20240917);
    for (const hotkeys::WizardEntry &entry : hotkeys::Wizards()) {
        int pasted = 0;
        for (int run = 0; run < kRunsPerWizard; ++run) {
            GeneratingAsker ask(rng);
            const QStringList block = entry.function(ask, context);
            SCOPED_TRACE(entry.handler.toStdString() + ": " + block.join(QLatin1Char('|')).toStdString());
            EXPECT_TRUE(ask.faults.isEmpty()) << ask.faults.join(QLatin1Char('\n')).toStdString();
            if (block.isEmpty())
                continue;
            ++pasted;
            QString macro = Surround(block);
            for (const QString &line : block) {
                EXPECT_EQ(line, line.trimmed());
                const int pos = int(macro.indexOf(kCrLf + line + kCrLf)) + 3;
                ASSERT_GT(pos, 2) << line.toStdString();
                const int lineNo = int(macro.left(pos).count(QLatin1Char('\n'))) + 1;
                EXPECT_EQ(macro::GoodActionLine(macro, line, pos, lineNo), QString()) << line.toStdString();
            }
            EXPECT_EQ(hotkeys::HotkeyStatus(macro), QString()) << macro.toStdString();
        }
        // Valid answers lead to a paste nearly every time (a Cancel only past the question limit).
        EXPECT_GT(pasted, kRunsPerWizard / 2) << entry.handler.toStdString();
    }
}
