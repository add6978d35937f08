#include "cli/spell_command.h"

#include "platform/hunspell/hunspell_checker.h"
#include "shell/legacy_text.h"
#include "spell/dictionary_choice.h"
#include "spell/unknown_words.h"

#include <QFile>
#include <QLocale>

namespace cli {

namespace {

constexpr int kAllKnown = 0;
constexpr int kSomeUnknown = 1;
constexpr int kUsage = 2;
// Distinct unknown words that get suggestions; the rest are listed without.
constexpr qsizetype kSuggestLimit = 5000;

const char *const kSpellUsage =
    "Usage: sonamark-cli spell [--dict LANG] [--no-suggestions] FILE|-\n"
    "\n"
    "Lists the words of a text (a file, or standard input for -) that the spelling\n"
    "dictionary does not know, in text order, one a line:\n"
    "  line:column<TAB>word<TAB>suggestion, suggestion, ...\n"
    "Lines and columns count from 1; columns in characters. --dict names the dictionary\n"
    "(en_US, de_DE, ...); without it the system's locale chooses, else en_US. Each\n"
    "distinct word is looked up once; the first 5000 distinct unknown words get\n"
    "suggestions, later ones are listed without.\n"
    "--no-suggestions leaves the third field empty (a check only, as hunspell -l).\n"
    "--list-dicts prints the installed dictionaries.\n"
    "Exit status: 0 every word is known, 1 some are not, 2 bad arguments, an unreadable\n"
    "or binary file, or no dictionary.\n";

bool ReadInput(const QString &name, QByteArray &bytes, QTextStream &err)
{
    QFile in;
    const bool ok = name == QLatin1String("-") ? in.open(stdin, QIODevice::ReadOnly)
                                               : (in.setFileName(name), in.open(QIODevice::ReadOnly));
    if (!ok) {
        err << "spell: cannot read " << name << ": " << in.errorString() << "\n";
        return false;
    }
    bytes = in.readAll();
    return true;
}

} // namespace

QString SpellUsageText() { return QString::fromLatin1(kSpellUsage); }

int RunSpell(const QStringList &args, QTextStream &out, QTextStream &err)
{
    QString dictionary, input;
    bool haveInput = false, listDictionaries = false, suggest = true;
    for (int i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if (a == QLatin1String("--help") || a == QLatin1String("-h")) {
            out << kSpellUsage;
            return kAllKnown;
        }
        if (a == QLatin1String("--dict")) {
            if (i + 1 >= args.size()) {
                err << "spell: --dict needs a dictionary name\n\n" << kSpellUsage;
                return kUsage;
            }
            dictionary = args.at(++i);
        } else if (a == QLatin1String("--no-suggestions")) {
            suggest = false;
        } else if (a == QLatin1String("--list-dicts")) {
            listDictionaries = true;
        } else if (!haveInput && (a == QLatin1String("-") || !a.startsWith(QLatin1Char('-')))) {
            input = a;
            haveInput = true;
        } else {
            err << "spell: unexpected argument " << a << "\n\n" << kSpellUsage;
            return kUsage;
        }
    }
    platform::HunspellChecker checker;
    const QStringList installed = checker.dictionaries();
    if (listDictionaries) {
        for (const QString &language : installed)
            out << language << "\n";
        return installed.isEmpty() ? kUsage : kAllKnown;
    }
    if (!haveInput) {
        err << kSpellUsage;
        return kUsage;
    }
    if (dictionary.isEmpty())
        dictionary = spell::ChooseDictionary(installed, QString(), QLocale::system().name());
    if (dictionary.isEmpty()) {
        err << "spell: no spelling dictionary is installed (Debian: apt-get install hunspell-en-us)\n";
        return kUsage;
    }
    QString why;
    if (!checker.useDictionary(dictionary, &why)) {
        err << "spell: " << why << "\n";
        if (!installed.isEmpty())
            err << "spell: installed dictionaries: " << installed.join(QStringLiteral(", ")) << "\n";
        return kUsage;
    }
    QByteArray bytes;
    if (!ReadInput(input, bytes, err))
        return kUsage;
    if (bytes.contains('\0')) {
        err << "spell: " << input << " is not a text (it holds NUL bytes); nothing was checked\n";
        return kUsage;
    }
    QString text = shell::DecodeLegacyText(bytes);
    bytes = QByteArray();  // the text alone from here; a long file is held once
    const qsizetype unknown = spell::FindUnknownWords(
        text, checker, [&](const spell::UnknownWord &u) { out << spell::UnknownWordLine(u) << '\n'; },
        suggest ? kSuggestLimit : 0);
    out.flush();
    return unknown > 0 ? kSomeUnknown : kAllKnown;
}

} // namespace cli
