#include "platform/hunspell/hunspell_checker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <hunspell/hunspell.hxx>
#include <iconv.h>
#include <cerrno>
#include <string>

Q_LOGGING_CATEGORY(lcHunspell, "sonamark.spell.hunspell", QtWarningMsg)

namespace platform {

namespace {

// Longer words are never in a dictionary; looking them up costs time and nothing else.
constexpr qsizetype kMaxWordLength = 100;
// Suggestions for long words take Hunspell a tenth of a second and more, and are useless.
constexpr qsizetype kMaxSuggestLength = 50;
// How much of a dictionary file is looked at for signs of damage.
constexpr qint64 kProbeBytes = 64 * 1024;

// A conversion between UTF-8 and a dictionary's 8-bit encoding.
class Iconv {
public:
    Iconv(const char *to, const char *from) : m_cd(iconv_open(to, from)) {}
    ~Iconv()
    {
        if (ok())
            iconv_close(m_cd);
    }
    Iconv(const Iconv &) = delete;
    Iconv &operator=(const Iconv &) = delete;
    bool ok() const { return m_cd != reinterpret_cast<iconv_t>(-1); }
    // False when some character has no equivalent.
    bool convert(const std::string &in, std::string &out)
    {
        iconv(m_cd, nullptr, nullptr, nullptr, nullptr);
        out.assign(in.size() * 4 + 4, '\0');
        char *src = const_cast<char *>(in.data());
        size_t srcLeft = in.size();
        char *dst = out.data();
        size_t dstLeft = out.size();
        if (iconv(m_cd, &src, &srcLeft, &dst, &dstLeft) == size_t(-1))
            return false;
        out.resize(out.size() - dstLeft);
        return true;
    }

private:
    iconv_t m_cd;
};

// The encoding named by the SET line of an .aff text; UTF-8 when there is none.
QByteArray AffEncoding(const QByteArray &aff)
{
    for (const QByteArray &line : aff.split('\n')) {
        const QByteArray t = line.trimmed();
        if (t.startsWith("SET ") || t.startsWith("SET\t"))
            return t.mid(4).trimmed().toUpper();
    }
    return "UTF-8";
}

bool IsUtf8(const QByteArray &encoding) { return encoding == "UTF-8" || encoding == "UTF8"; }

// Why the pair cannot be used, or "" when it looks sound. Hunspell itself trusts its
// files: a wrong word count makes it reserve memory for that many words.
QString Damage(const QString &aff, const QString &dic, QByteArray *affText)
{
    QFile affFile(aff), dicFile(dic);
    if (!affFile.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read (%2)").arg(aff, affFile.errorString());
    if (!dicFile.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read (%2)").arg(dic, dicFile.errorString());
    *affText = affFile.read(kProbeBytes);
    if (affText->contains('\0'))
        return QStringLiteral("%1 is not a dictionary affix file").arg(aff);
    const QByteArray head = dicFile.read(kProbeBytes);
    if (head.contains('\0'))
        return QStringLiteral("%1 is not a dictionary word list").arg(dic);
    QByteArray first = head.left(head.indexOf('\n')).trimmed();
    if (first.startsWith("\xEF\xBB\xBF"))
        first = first.mid(3);
    bool number = false;
    const qint64 count = first.toLongLong(&number);
    // Every word takes at least two bytes of the file (a letter and a line end).
    if (!number || count <= 0 || count > dicFile.size() / 2)
        return QStringLiteral("%1 is damaged: its first line does not give its word count").arg(dic);
    return {};
}

} // namespace

struct HunspellChecker::Loaded {
    std::unique_ptr<Hunspell> hunspell;
    std::unique_ptr<Iconv> toDictionary;  // none for UTF-8 dictionaries
    std::unique_ptr<Iconv> fromDictionary;

    bool encode(const QString &word, std::string &out)
    {
        const std::string utf8 = word.toStdString();
        if (!toDictionary) {
            out = utf8;
            return true;
        }
        return toDictionary->convert(utf8, out);
    }
    QString decode(const std::string &text)
    {
        std::string utf8;
        if (!fromDictionary)
            utf8 = text;
        else if (!fromDictionary->convert(text, utf8))
            return {};
        return QString::fromStdString(utf8);
    }
};

HunspellChecker::HunspellChecker(QStringList folders)
    : m_folders(folders.isEmpty() ? DefaultFolders() : std::move(folders))
{
}

HunspellChecker::~HunspellChecker() = default;

QStringList HunspellChecker::DefaultFolders()
{
    QStringList folders;
    for (const QString &f : qEnvironmentVariable("DICPATH").split(QLatin1Char(':'), Qt::SkipEmptyParts))
        folders << f;
    folders << QStringLiteral("/usr/share/hunspell") << QStringLiteral("/usr/share/myspell/dicts");
    return folders;
}

QStringList HunspellChecker::dictionaries() const
{
    QStringList languages;
    for (const QString &folder : m_folders) {
        const QDir dir(folder);
        for (const QFileInfo &dic : dir.entryInfoList({QStringLiteral("*.dic")}, QDir::Files | QDir::Readable)) {
            const QString language = dic.completeBaseName();
            if (!languages.contains(language) && QFileInfo::exists(dir.filePath(language + QStringLiteral(".aff"))))
                languages << language;
        }
    }
    languages.sort();
    return languages;
}

bool HunspellChecker::useDictionary(const QString &language, QString *error)
{
    auto fail = [&](const QString &why) {
        qCInfo(lcHunspell).noquote() << why;
        if (error)
            *error = why;
        return false;
    };
    if (language == m_language && m_loaded)
        return true;
    QString aff, dic;
    for (const QString &folder : m_folders) {
        const QDir dir(folder);
        if (QFileInfo::exists(dir.filePath(language + QStringLiteral(".dic")))
            && QFileInfo::exists(dir.filePath(language + QStringLiteral(".aff")))) {
            aff = dir.filePath(language + QStringLiteral(".aff"));
            dic = dir.filePath(language + QStringLiteral(".dic"));
            break;
        }
    }
    if (language.isEmpty() || language.contains(QLatin1Char('/')) || aff.isEmpty())
        return fail(QStringLiteral("No spelling dictionary for \"%1\" is installed.").arg(language));
    QByteArray affText;
    const QString damage = Damage(aff, dic, &affText);
    if (!damage.isEmpty())
        return fail(QStringLiteral("The spelling dictionary \"%1\" cannot be used: %2.").arg(language, damage));

    auto loaded = std::make_unique<Loaded>();
    const QByteArray encoding = AffEncoding(affText);
    if (!IsUtf8(encoding)) {
        loaded->toDictionary = std::make_unique<Iconv>(encoding.constData(), "UTF-8");
        loaded->fromDictionary = std::make_unique<Iconv>("UTF-8", encoding.constData());
        if (!loaded->toDictionary->ok() || !loaded->fromDictionary->ok())
            return fail(QStringLiteral("The spelling dictionary \"%1\" cannot be used: its encoding %2 is unknown.")
                            .arg(language, QString::fromLatin1(encoding)));
    }
    try {
        loaded->hunspell = std::make_unique<Hunspell>(QFile::encodeName(aff).constData(),
                                                      QFile::encodeName(dic).constData());
    } catch (const std::exception &e) {
        return fail(QStringLiteral("The spelling dictionary \"%1\" cannot be used: %2.")
                        .arg(language, QString::fromLocal8Bit(e.what())));
    }
    qCDebug(lcHunspell) << "loaded" << language << "from" << dic << "in" << encoding;
    m_loaded = std::move(loaded);
    m_language = language;
    return true;
}

bool HunspellChecker::isCorrect(const QString &word)
{
    if (word.isEmpty())
        return true;
    if (!m_loaded || word.size() > kMaxWordLength)
        return false;
    std::string encoded;
    if (!m_loaded->encode(word, encoded))
        return false;  // a character the dictionary's alphabet lacks
    return m_loaded->hunspell->spell(encoded);
}

QStringList HunspellChecker::suggestions(const QString &word)
{
    QStringList rows;
    if (!m_loaded || word.isEmpty() || word.size() > kMaxSuggestLength || isCorrect(word))
        return rows;
    std::string encoded;
    if (!m_loaded->encode(word, encoded))
        return rows;
    for (const std::string &s : m_loaded->hunspell->suggest(encoded)) {
        const QString row = m_loaded->decode(s);
        if (!row.isEmpty())
            rows << row;
    }
    return rows;
}

} // namespace platform
