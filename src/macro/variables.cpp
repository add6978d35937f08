#include "macro/variables.h"

#include "macro/macro_text.h"
#include "macro/number_format.h"
#include "platform/services.h"
#include "shell/on_top_message.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

namespace macro {

namespace {

Q_LOGGING_CATEGORY(lcVars, "sonamark.macro.vars", QtWarningMsg)

constexpr double kSecondsPerMinute = 60.0;
constexpr int kLastCharCode = 255;  // ASCII reads codes 0 to 255 as one character

VariableTable g_table;
DateTimeSource g_dateTime;

QDateTime now() { return g_dateTime ? g_dateTime() : QDateTime::currentDateTime(); }

bool is(const QString &upperName, const char *special) { return upperName == QLatin1String(special); }

// Names that GetVarVal answers without the table (ASCII reads the table differently).
bool readSpecial(const QString &up)
{
    switch (up.isEmpty() ? 0 : up.front().unicode()) {
    case u'A': return is(up, "ASCII");
    case u'D': return is(up, "DATE");
    case u'P': return is(up, "PATH");
    case u'S': return is(up, "SONAMARKTEXT");
    case u'T': return is(up, "TIME") || is(up, "TIMER") || is(up, "TIMEOUT");
    default: return false;
    }
}

MacroVar *find(const QString &upperName)
{
    const auto it = g_table.byUpperName.constFind(upperName);
    return it == g_table.byUpperName.cend() ? nullptr : &g_table.MacroVars[it.value()];
}

// GetVarVal of a name that readSpecial accepts.
QString specialValue(const QString &up, int &type)
{
    if (is(up, "ASCII")) {
        const MacroVar *var = find(up);
        if (!var)
            return {};  // result empty, type unchanged, name kept
        type = kTypeString;
        const double code = RoundEven(var->VarValue.toNumber());
        if (code < 0 || code > kLastCharCode)
            return {};
        return QString(QChar(static_cast<char16_t>(code)));
    }
    if (is(up, "DATE")) {
        type = kTypeString;
        return CurrentDateText();
    }
    if (is(up, "TIME")) {
        type = kTypeString;
        return CurrentTimeText();
    }
    if (is(up, "PATH")) {
        type = kTypeString;
        return QDir::toNativeSeparators(QDir::currentPath());
    }
    if (is(up, "SONAMARKTEXT")) {
        type = kTypeString;
        return ReaderTextValue();
    }
    if (is(up, "TIMEOUT")) {
        type = kTypeNumber;
        return GeneralFormat(TimeoutMinutes());
    }
    if (is(up, "TIMER")) {
        type = kTypeNumber;
        return GeneralFormat(TimerSeconds());
    }
    return {};
}

} // namespace

bool IsVarName(QStringView text)
{
    for (const QChar c : text)
        if (c < QLatin1Char('A') || c > QLatin1Char('z'))
            return false;
    constexpr qsizetype kShortestPlaceholder = 6;  // AEMPTY
    if (text.size() < kShortestPlaceholder)
        return true;
    return !text.contains(QLatin1String("ALITERAL")) && !text.contains(QLatin1String("AEMPTY"));
}

QString AllLetters(QStringView text, const QString &caption)
{
    if (text.contains(QLatin1String("ALITERAL")))
        return QStringLiteral("Strings not allowed in ") + caption + QStringLiteral("variable name");
    if (text.contains(QLatin1String("AEMPTY")))
        return QStringLiteral("Empty string in ") + caption + QStringLiteral("variable name");
    for (const QChar c : text)
        if (c < QLatin1Char('A') || c > QLatin1Char('z'))
            return QStringLiteral("Only letters allowed in ") + caption + QStringLiteral("variable name");
    return {};
}

QString Value::toText() const { return isDouble ? GeneralFormat(number) : text; }

double Value::toNumber() const { return isDouble ? number : Val1(text); }

void VariableTable::reset() { *this = VariableTable(); }

VariableTable &variableTable() { return g_table; }

void ResetVariables() { g_table.reset(); }

QString UpperSameLength(const QString &text)
{
    // The text is shared unchanged until its first character that changes.
    const qsizetype n = text.size();
    const QChar *in = text.constData();
    qsizetype i = 0;
    while (i < n && UpperChar(in[i]) == in[i])
        ++i;
    if (i == n)
        return text;
    QString out = text;
    QChar *o = out.data();
    for (; i < n; ++i)
        o[i] = UpperChar(o[i]);
    return out;
}

QString UpperNameView(QStringView name)
{
    for (const QChar c : name)
        if (UpperChar(c) != c)
            return UpperSameLength(name.toString());
    return Borrowed(name);
}

void SetVarVal(const QString &name, int type, const Value &value)
{
    const QString up = UpperSameLength(name);
    if (is(up, "TIMEOUT")) {
        const double minutes = value.toNumber();
        if (minutes > 0)
            g_table.MacroTimeout = minutes * kSecondsPerMinute;
        else
            qCDebug(lcVars) << "TIMEOUT not changed by" << minutes;
        return;
    }
    if (is(up, "PATH")) {
        const QString folder = value.toText().trimmed();
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            QDir::setCurrent(folder);
        else
            qCDebug(lcVars) << "PATH not changed to" << folder;
        return;
    }
    if (is(up, "SONAMARKTEXT")) {
        QString text = value.toText();
        RestoreQuotes(text);
        if (platform::ReaderText *reader = platform::services().readerText)
            reader->setText(text);
        return;
    }
    if (LeftSpecial(up))
        return;

    Value stored = value;
    if (type == kTypeString && !stored.isDouble)
        ReplaceQuotes(stored.text);
    if (MacroVar *var = find(up)) {
        var->VarValue = stored;
        var->VarType = type;
        return;
    }
    g_table.byUpperName.insert(up, g_table.VarCount());
    g_table.MacroVars.append(MacroVar{name, type, stored});
}

void SetVarVal(const QString &name, double number) { SetVarVal(name, kTypeNumber, Value::fromNumber(number)); }

void SetVarVal(const QString &name, const QString &text) { SetVarVal(name, kTypeString, Value::fromText(text)); }

QString GetVarVal(QString &name, int &type)
{
    if (name.isEmpty())
        return {};
    const QString up = UpperSameLength(name);
    if (readSpecial(up))
        return specialValue(up, type);
    const MacroVar *var = find(up);
    if (!var) {
        name.clear();
        return {};
    }
    type = var->VarType;
    return var->VarValue.toText();
}

bool GetVarNumber(const QString &upperName, double &number, int &type)
{
    if (upperName.isEmpty())
        return false;
    if (readSpecial(upperName)) {
        QString name = upperName;
        const QString text = GetVarVal(name, type);
        number = Val1(text);
        return !name.isEmpty();
    }
    const MacroVar *var = find(upperName);
    if (!var)
        return false;
    type = var->VarType;
    number = var->VarValue.toNumber();
    return true;
}

int GetVarIndex(const QString &name)
{
    const auto it = g_table.byUpperName.constFind(UpperSameLength(name));
    return it == g_table.byUpperName.cend() ? 0 : it.value() + 1;
}

bool LeftSpecial(const QString &name)
{
    const QString up = UpperSameLength(name);
    return is(up, "LEN") || is(up, "VAL") || is(up, "MID") || is(up, "TIME") || is(up, "TIMER") || is(up, "DATE")
           || is(up, "STR");
}

void SetDateTimeSource(DateTimeSource source) { g_dateTime = std::move(source); }

QString CurrentDateText() { return now().date().toString(QLatin1String(kDateFormat)); }

QString CurrentTimeText() { return now().time().toString(QLatin1String(kTimeFormat)); }

float TimerSeconds() { return static_cast<float>(shell::SecondsSinceMidnight()); }

double TimeoutMinutes() { return g_table.MacroTimeout / kSecondsPerMinute; }

QString ReaderTextValue()
{
    platform::ReaderText *reader = platform::services().readerText;
    return reader ? reader->text() : QString();
}

} // namespace macro
