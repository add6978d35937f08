#include "reader/rtf_reader.h"

#include "reader/rtf_codepage.h"

#include <QHash>
#include <QSet>
#include <QLoggingCategory>
#include <algorithm>
#include <cctype>
#include <climits>
#include <optional>
#include <utility>
#include <vector>

Q_LOGGING_CATEGORY(lcRtfReader, "sonamark.reader.rtf", QtWarningMsg)

namespace reader {
namespace {

constexpr int kMaxControlWordLength = 32;  // longer words are cut (letters still consumed)
constexpr int kMaxParameterDigits = 10;
constexpr int kMaxUnicodeSkip = 16;        // a \ucN larger than this is taken as this

// Where the text of the current group goes.
enum class Destination {
    Text,        // the document
    Skip,        // nowhere: an ignored destination
    FontTable,
    ColorTable,
    ListText,    // {\pntext} or {\listtext}: the bullet or number shown before a list item
    Numbering,   // {\*\pn ...}: old-style list settings of the paragraph around it
    StyleSheet,  // style definitions: format words describe the style being read
};

// Which properties a style sets; the rest stay as they are when the style is applied.
enum StyleProperty : quint32 {
    kSetFont = 1u << 0, kSetSize = 1u << 1, kSetBold = 1u << 2, kSetItalic = 1u << 3,
    kSetUnderline = 1u << 4, kSetStrike = 1u << 5, kSetHidden = 1u << 6, kSetColor = 1u << 7,
    kSetAlignment = 1u << 8, kSetLeft = 1u << 9, kSetRight = 1u << 10, kSetFirst = 1u << 11,
    kSetBullet = 1u << 12,
};
constexpr int kMaxStyleChain = 16;  // \sbasedon links followed when applying a style

struct GroupState {
    Destination destination = Destination::Text;
    int font = -1;          // \fN, -1 before any
    int halfPoints = 0;     // \fsN, 0 when not given
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strike = false;
    bool hidden = false;    // \v
    int colorIndex = 0;     // \cfN, 0 is automatic
    int unicodeSkip = 1;    // \ucN
    ParagraphFormat paragraph;
    quint32 setMask = 0;    // in a style definition: the StyleProperty bits given
};

struct Style {
    GroupState format;
    int basedOn = -1;
    bool character = false;  // \csN rather than \sN
};

struct FontEntry {
    QString name;
    int codePage = 0;       // 0: the document's page
};

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
int HexValue(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// The control words the reader acts on, each looked up once.
enum class Word {
    Other,
    ansi, ansicpg, b, bin, blue, cf, colortbl, cpg, cs, deff, f, fcharset, fi, fldrslt,
    fonttbl, fs, green, i, li, lin, listtext, ls, mac, page, par, pard, pc, pca, plain, pn,
    pnlvlblt, pntext, qc, qd, qj, ql, qr, red, ri, rin, row, s, sbasedon, sect, strike,
    striked, stylesheet, tab, u, uc, ulc, ulnone, v,
};

Word WordOf(const QByteArray &word)
{
    static const QHash<QByteArray, Word> kWords = [] {
        QHash<QByteArray, Word> words;
        const std::pair<const char *, Word> rows[] = {
            {"ansi", Word::ansi}, {"ansicpg", Word::ansicpg}, {"b", Word::b},
            {"bin", Word::bin}, {"blue", Word::blue}, {"cf", Word::cf},
            {"colortbl", Word::colortbl}, {"cpg", Word::cpg}, {"cs", Word::cs},
            {"deff", Word::deff}, {"f", Word::f}, {"fcharset", Word::fcharset},
            {"fi", Word::fi}, {"fldrslt", Word::fldrslt}, {"fonttbl", Word::fonttbl},
            {"fs", Word::fs}, {"green", Word::green}, {"i", Word::i}, {"li", Word::li},
            {"lin", Word::lin}, {"listtext", Word::listtext}, {"ls", Word::ls},
            {"mac", Word::mac}, {"page", Word::page}, {"par", Word::par}, {"pard", Word::pard},
            {"pc", Word::pc}, {"pca", Word::pca}, {"plain", Word::plain}, {"pn", Word::pn},
            {"pnlvlblt", Word::pnlvlblt}, {"pntext", Word::pntext}, {"qc", Word::qc},
            {"qd", Word::qd}, {"qj", Word::qj}, {"ql", Word::ql}, {"qr", Word::qr},
            {"red", Word::red}, {"ri", Word::ri}, {"rin", Word::rin}, {"row", Word::row},
            {"s", Word::s}, {"sbasedon", Word::sbasedon}, {"sect", Word::sect},
            {"strike", Word::strike}, {"striked", Word::striked},
            {"stylesheet", Word::stylesheet}, {"tab", Word::tab}, {"u", Word::u},
            {"uc", Word::uc}, {"ulc", Word::ulc}, {"ulnone", Word::ulnone}, {"v", Word::v},
        };
        for (const auto &[name, id] : rows)
            words.insert(name, id);
        return words;
    }();
    return kWords.value(word, Word::Other);
}

// Destinations whose text is never shown, skipped even when they lack the \* mark.
bool IsSkippedDestination(const QByteArray &word)
{
    static const QSet<QByteArray> kSkipped = {
        "info", "pict", "object", "objdata", "objclass", "header", "headerl",
        "headerr", "headerf", "footer", "footerl", "footerr", "footerf", "footnote",
        "fldinst", "annotation", "atnauthor", "atnid", "atndate", "xe", "tc", "txe", "rxe",
        "bkmkstart", "bkmkend", "filetbl", "revtbl", "rsidtbl", "listtable",
        "listoverridetable", "themedata", "colorschememapping", "datastore", "latentstyles",
        "generator", "mmathPr", "xmlnstbl", "pgdsctbl", "nonshppict", "shp", "shpinst",
        "do", "template", "private", "userprops", "docvar", "listpicture", "fchars",
        "lchars", "pnseclvl", "pntxta", "pntxtb", "ftnsep", "ftnsepc", "ftncn", "aftnsep",
        "aftnsepc", "aftncn", "falt", "panose", "fontemb", "fontfile", "keywords",
        "title", "subject", "author", "operator", "comment", "doccomm", "company",
        "wgrffmtfilter", "pgptbl", "protusertbl", "sv", "sn"};
    return kSkipped.contains(word);
}

class RtfParser {
public:
    explicit RtfParser(const QByteArray &bytes) : in_(bytes) {}

    RichDocument run(QString *error);

private:
    // One token step at pos_; returns false once the document's outer group has closed.
    bool step();
    void openGroup();
    bool closeGroup();
    void controlWord(const QByteArray &word, std::optional<int> parameter);
    bool formatWord(const QByteArray &word, Word w, std::optional<int> parameter, GroupState &s);
    void styleWord(Word w, int value);
    void commitStyle();
    void applyStyle(int number, bool character);
    void controlSymbol(char symbol);
    void literalByte(char byte);
    bool consumeSkippedUnit();
    void skipBinary(int length);

    void addByte(char byte);
    void flushBytes();
    void addText(const QString &text);
    void endParagraph();
    void commitFont();
    void commitColor();
    void finishListText();
    int codePage() const;
    CharFormat charFormat() const;
    GroupState &state() { return stack_.back(); }

    const QByteArray &in_;
    qsizetype pos_ = 0;
    std::vector<GroupState> stack_;
    int excessDepth_ = 0;           // groups opened past the depth limit, skipped
    bool starred_ = false;          // a \* opened the current group's destination
    bool groupStart_ = false;       // no token yet in the current group
    int pendingSkip_ = 0;           // fallback units still to drop after a \uN

    int documentCodePage_ = kRtfDefaultCodePage;
    int defaultFont_ = 0;
    QHash<int, FontEntry> fonts_;
    int fontEntryNumber_ = -1;
    FontEntry fontEntry_;
    std::vector<std::optional<quint32>> colors_;
    int red_ = 0, green_ = 0, blue_ = 0;
    bool colorGiven_ = false;
    QHash<int, Style> paragraphStyles_;
    QHash<int, Style> characterStyles_;
    int styleNumber_ = 0;           // the style definition being read
    int styleBase_ = -1;
    bool styleCharacter_ = false;

    QByteArray bytes_;              // text bytes not yet decoded
    int bytesCodePage_ = 0;
    Destination bytesDestination_ = Destination::Text;
    CodePageDecoder decoder_;

    RichDocument document_;
    RichParagraph paragraph_;
    bool paragraphBullet_ = false;  // a bullet text group was seen in this paragraph
    bool paragraphNumbered_ = false;// a number text group was: its text is in the paragraph
    QString listText_;              // the text of the list text group being read
    bool paragraphTouched_ = false; // the unfinished paragraph holds text
};

RichDocument RtfParser::run(QString *error)
{
    // The caller checked the header: pos_ is at the first "{".
    while (pos_ < in_.size() && in_[pos_] != '{')
        ++pos_;
    bool closed = false;
    while (pos_ < in_.size()) {
        if (!step()) {
            closed = true;
            break;
        }
    }
    flushBytes();
    if (!stack_.empty() && paragraphTouched_)
        endParagraph();
    if (error)
        *error = closed ? QString() : QString::fromLatin1(kRtfTruncatedMessage);
    if (!closed)
        qCDebug(lcRtfReader) << "input ended inside" << stack_.size() << "groups";
    return std::move(document_);
}

bool RtfParser::step()
{
    const char c = in_[pos_++];
    if (c == '{') {
        flushBytes();
        openGroup();
        return true;
    }
    if (c == '}') {
        flushBytes();
        return closeGroup();
    }
    // Inside a group past the depth limit only braces and \bin (whose data may hold
    // braces) matter.
    const bool skipping = excessDepth_ > 0;
    if (c != '\\') {
        if (!skipping)
            literalByte(c);
        return true;
    }
    if (pos_ >= in_.size())
        return true;
    const char next = in_[pos_];
    if (!IsLetter(next)) {
        ++pos_;
        if (!skipping) {
            controlSymbol(next);
            if (next != '*')
                groupStart_ = false;
        }
        return true;
    }
    QByteArray word;
    while (pos_ < in_.size() && IsLetter(in_[pos_])) {
        if (word.size() < kMaxControlWordLength)
            word += in_[pos_];
        ++pos_;
    }
    std::optional<int> parameter;
    bool negative = false;
    if (pos_ + 1 < in_.size() && in_[pos_] == '-' && IsDigit(in_[pos_ + 1])) {
        negative = true;
        ++pos_;
    }
    if (pos_ < in_.size() && IsDigit(in_[pos_])) {
        qint64 value = 0;
        int digits = 0;
        while (pos_ < in_.size() && IsDigit(in_[pos_])) {
            if (digits++ < kMaxParameterDigits)
                value = value * 10 + (in_[pos_] - '0');
            ++pos_;
        }
        value = std::clamp<qint64>(negative ? -value : value, INT_MIN, INT_MAX);
        parameter = static_cast<int>(value);
    }
    if (pos_ < in_.size() && in_[pos_] == ' ')
        ++pos_;
    if (skipping) {
        if (word == "bin")
            skipBinary(parameter.value_or(0));
        return true;
    }
    controlWord(word, parameter);
    groupStart_ = false;
    return true;
}

void RtfParser::skipBinary(int length)
{
    if (length > 0)
        pos_ += std::min<qsizetype>(length, in_.size() - pos_);
}

void RtfParser::openGroup()
{
    pendingSkip_ = 0;
    if (excessDepth_ > 0 || static_cast<int>(stack_.size()) >= kMaxRtfGroupDepth) {
        ++excessDepth_;
        return;
    }
    if (stack_.empty()) {
        stack_.push_back(GroupState());
    } else if (stack_.back().destination == Destination::StyleSheet) {
        // A style definition describes itself from the defaults up.
        GroupState entry;
        entry.destination = Destination::StyleSheet;
        entry.unicodeSkip = stack_.back().unicodeSkip;
        stack_.push_back(entry);
        styleNumber_ = 0;
        styleBase_ = -1;
        styleCharacter_ = false;
    } else {
        stack_.push_back(stack_.back());
    }
    starred_ = false;
    groupStart_ = true;
}

bool RtfParser::closeGroup()
{
    pendingSkip_ = 0;
    starred_ = false;
    groupStart_ = false;
    if (excessDepth_ > 0) {
        --excessDepth_;
        return true;
    }
    if (stack_.empty())
        return false;
    if (stack_.size() == 1 && paragraphTouched_)
        endParagraph();  // text after the last \par
    const Destination closing = stack_.back().destination;
    stack_.pop_back();
    if (closing == Destination::ListText && !stack_.empty()
        && stack_.back().destination != Destination::ListText) {
        finishListText();
    }
    if (closing == Destination::FontTable && fontEntryNumber_ >= 0 && !stack_.empty()
        && stack_.back().destination != Destination::FontTable) {
        commitFont();  // a last entry without its ";"
    }
    return !stack_.empty();
}

void RtfParser::commitFont()
{
    if (fontEntryNumber_ >= 0) {
        fontEntry_.name = fontEntry_.name.trimmed();
        fonts_.insert(fontEntryNumber_, fontEntry_);
    }
    fontEntryNumber_ = -1;
    fontEntry_ = FontEntry();
}

void RtfParser::commitColor()
{
    if (colorGiven_)
        colors_.push_back(quint32(std::clamp(red_, 0, 255) << 16 | std::clamp(green_, 0, 255) << 8
                                  | std::clamp(blue_, 0, 255)));
    else
        colors_.push_back(std::nullopt);
    red_ = green_ = blue_ = 0;
    colorGiven_ = false;
}

int RtfParser::codePage() const
{
    if (stack_.back().destination == Destination::FontTable && fontEntry_.codePage)
        return fontEntry_.codePage;
    auto font = fonts_.constFind(stack_.back().font);
    if (font != fonts_.constEnd() && font->codePage != 0)
        return font->codePage;
    return documentCodePage_;
}

CharFormat RtfParser::charFormat() const
{
    const GroupState &s = stack_.back();
    CharFormat format;
    auto font = fonts_.constFind(s.font >= 0 ? s.font : defaultFont_);
    if (font != fonts_.constEnd())
        format.family = font->name;
    format.pointSize = s.halfPoints / 2.0;
    format.bold = s.bold;
    format.italic = s.italic;
    format.underline = s.underline;
    format.strike = s.strike;
    if (s.colorIndex > 0 && static_cast<size_t>(s.colorIndex) < colors_.size())
        format.color = colors_[s.colorIndex];
    return format;
}

// Drops one fallback unit after \uN: returns true when the unit was dropped.
bool RtfParser::consumeSkippedUnit()
{
    if (pendingSkip_ <= 0)
        return false;
    --pendingSkip_;
    return true;
}

void RtfParser::addByte(char byte)
{
    const int page = codePage();
    const Destination destination = state().destination;
    if (!bytes_.isEmpty() && (page != bytesCodePage_ || destination != bytesDestination_))
        flushBytes();
    bytesCodePage_ = page;
    bytesDestination_ = destination;
    bytes_ += byte;
}

void RtfParser::flushBytes()
{
    if (bytes_.isEmpty())
        return;
    const QString text = decoder_.decode(bytesCodePage_, bytes_);
    bytes_.clear();
    addText(text);
}

// Control characters are not text: escapes like \'0d or \u1 must not bring them in.
QString WithoutControls(const QString &text, bool keepTab)
{
    auto isControl = [keepTab](QChar ch) {
        return ch.unicode() < 0x20 && !(keepTab && ch == QLatin1Char('\t'));
    };
    if (std::none_of(text.begin(), text.end(), isControl))
        return text;
    QString result = text;
    result.removeIf(isControl);
    return result;
}

void RtfParser::addText(const QString &text)
{
    if (stack_.empty())
        return;
    switch (state().destination) {
    case Destination::Text: {
        if (state().hidden)
            return;
        // Paragraphs end only at \par: a paragraph separator in the text (\u8233) is a
        // line break inside the paragraph, which is how it is written out again.
        QString kept = WithoutControls(text, true);
        kept.replace(QChar::ParagraphSeparator, kLineBreak);
        paragraph_.append(kept, charFormat());
        paragraphTouched_ = true;
        return;
    }
    case Destination::FontTable:
        if (fontEntryNumber_ >= 0)
            fontEntry_.name += WithoutControls(text, false);
        return;
    case Destination::ListText:
        listText_ += WithoutControls(text, true);
        return;
    default:
        return;
    }
}

void RtfParser::endParagraph()
{
    flushBytes();
    // Lone surrogates (a broken \uN pair) would upset text layout further on.
    for (TextRun &run : paragraph_.runs) {
        for (qsizetype i = 0; i < run.text.size(); ++i) {
            const QChar ch = run.text[i];
            if (ch.isHighSurrogate() && i + 1 < run.text.size() && run.text[i + 1].isLowSurrogate())
                ++i;
            else if (ch.isSurrogate())
                run.text[i] = QChar::ReplacementCharacter;
        }
    }
    paragraph_.format = state().paragraph;
    paragraph_.format.bullet = (paragraph_.format.bullet || paragraphBullet_) && !paragraphNumbered_;
    paragraph_.markFormat = charFormat();
    document_.paragraphs.append(std::move(paragraph_));
    paragraph_ = RichParagraph();
    paragraphBullet_ = false;
    paragraphNumbered_ = false;
    paragraphTouched_ = false;
}

// The end of a list text group. A bullet marks the paragraph; a number ("1.", "a)", "iv.")
// has no place in the model and stays in the text, so that nothing shown is lost.
void RtfParser::finishListText()
{
    QString marker = listText_;
    marker.removeIf([](QChar ch) { return ch.isSpace(); });
    const bool numbered = std::any_of(marker.begin(), marker.end(), [](QChar ch) { return ch.isDigit(); })
        || marker.endsWith(QLatin1Char('.')) || marker.endsWith(QLatin1Char(')'));
    if (numbered && state().destination == Destination::Text) {
        paragraph_.append(listText_, charFormat());
        paragraphTouched_ = true;
        paragraphNumbered_ = true;
    } else if (!numbered) {
        paragraphBullet_ = true;
    }
    listText_.clear();
}

void RtfParser::literalByte(char byte)
{
    if (byte == '\r' || byte == '\n')
        return;
    if (consumeSkippedUnit())
        return;
    switch (state().destination) {
    case Destination::Text:
    case Destination::ListText:
        if (byte == '\t')
            addText(QStringLiteral("\t"));
        else if (static_cast<unsigned char>(byte) >= 0x20)
            addByte(byte);
        return;
    case Destination::FontTable:
        if (byte == ';') {
            flushBytes();
            commitFont();
        } else if (static_cast<unsigned char>(byte) >= 0x20) {
            addByte(byte);
        }
        return;
    case Destination::ColorTable:
        if (byte == ';')
            commitColor();
        return;
    case Destination::StyleSheet:
        if (byte == ';')
            commitStyle();
        return;
    default:
        return;
    }
}

void RtfParser::controlSymbol(char symbol)
{
    if (symbol == '\'') {
        // \'hh: one byte in the current code page.
        int value = 0;
        int digits = 0;
        while (digits < 2 && pos_ < in_.size() && HexValue(in_[pos_]) >= 0) {
            value = value * 16 + HexValue(in_[pos_]);
            ++pos_;
            ++digits;
        }
        if (consumeSkippedUnit() || digits == 0)
            return;
        const Destination d = state().destination;
        if (d == Destination::Text || d == Destination::FontTable || d == Destination::ListText)
            addByte(static_cast<char>(value));
        return;
    }
    if (symbol == '*') {
        starred_ = true;
        return;
    }
    if (consumeSkippedUnit())
        return;
    switch (symbol) {
    case '\\': case '{': case '}':
        literalByte(symbol);
        return;
    case '~':
        flushBytes();
        addText(QString(QChar(0x00A0)));
        return;
    case '_':
        flushBytes();
        addText(QString(QChar(0x2011)));
        return;
    case '\r': case '\n':
        if (state().destination == Destination::Text)
            endParagraph();
        return;
    case '\t':
        flushBytes();
        addText(QStringLiteral("\t"));
        return;
    default:
        return;  // \- (optional hyphen), \: (index), \| (formula) and unknown symbols
    }
}

void RtfParser::controlWord(const QByteArray &word, std::optional<int> parameter)
{
    const Word w = WordOf(word);
    GroupState &s = state();
    const int value = parameter.value_or(1);

    if (w == Word::bin) {
        // Binary data: skipped whole, never counted as text.
        flushBytes();
        skipBinary(value);
        return;
    }
    if (w == Word::u) {
        flushBytes();
        if (consumeSkippedUnit())
            return;
        int code = parameter.value_or(0);
        if (code < 0)
            code += 65536;
        if (code > 0 && code <= 0xFFFF)
            addText(QString(QChar(char16_t(code))));
        pendingSkip_ = s.unicodeSkip;
        return;
    }
    if (consumeSkippedUnit())
        return;

    // Destinations: words that open a group of their own.
    if (groupStart_) {
        if (w == Word::fonttbl) {
            flushBytes();
            s.destination = Destination::FontTable;
            return;
        }
        if (w == Word::stylesheet) {
            flushBytes();
            s.destination = Destination::StyleSheet;
            return;
        }
        if (w == Word::colortbl) {
            flushBytes();
            s.destination = Destination::ColorTable;
            colors_.clear();
            return;
        }
        if (w == Word::pntext || w == Word::listtext) {
            flushBytes();
            if (s.destination == Destination::Text) {
                s.destination = Destination::ListText;
                listText_.clear();
            } else {
                s.destination = Destination::Skip;
            }
            return;
        }
        if (w == Word::pn) {
            flushBytes();
            s.destination = Destination::Numbering;
            return;
        }
        if (w == Word::fldrslt)
            return;
        if (s.destination == Destination::StyleSheet && w == Word::cs) {
            styleWord(w, value);  // {\*\csN ...}: a character style
            return;
        }
        if (starred_ || IsSkippedDestination(word)) {
            flushBytes();
            s.destination = Destination::Skip;
            return;
        }
    }
    if (s.destination == Destination::Skip)
        return;
    if (s.destination == Destination::Numbering) {
        // \pnlvlblt: the paragraph around this group is a bullet.
        if (w == Word::pnlvlblt && stack_.size() >= 2)
            stack_[stack_.size() - 2].paragraph.bullet = true;
        return;
    }
    if (s.destination == Destination::ListText) {
        // Only the font matters here (for its code page), and the tab after the marker.
        flushBytes();
        if (w == Word::tab)
            addText(QStringLiteral("\t"));
        else if (w == Word::uc)
            s.unicodeSkip = std::clamp(value, 0, kMaxUnicodeSkip);
        else
            formatWord(word, w, parameter, s);
        return;
    }

    if (s.destination == Destination::ColorTable) {
        if (w == Word::red) red_ = value, colorGiven_ = true;
        else if (w == Word::green) green_ = value, colorGiven_ = true;
        else if (w == Word::blue) blue_ = value, colorGiven_ = true;
        return;
    }
    if (s.destination == Destination::StyleSheet) {
        if (!formatWord(word, w, parameter, s))
            styleWord(w, value);
        return;
    }
    if (s.destination == Destination::FontTable) {
        if (w == Word::f) {
            flushBytes();
            if (fontEntryNumber_ >= 0 && !fontEntry_.name.isEmpty())
                commitFont();
            fontEntryNumber_ = value;
            fontEntry_ = FontEntry();
        } else if (w == Word::fcharset) {
            fontEntry_.codePage = CodePageOfCharset(value);
        } else if (w == Word::cpg) {
            fontEntry_.codePage = value;
        }
        return;
    }

    // Header words.
    if (w == Word::ansi) { documentCodePage_ = 1252; return; }
    if (w == Word::mac) { documentCodePage_ = 10000; return; }
    if (w == Word::pc) { documentCodePage_ = 437; return; }
    if (w == Word::pca) { documentCodePage_ = 850; return; }
    if (w == Word::ansicpg) {
        if (parameter && *parameter > 0)
            documentCodePage_ = *parameter;
        return;
    }
    if (w == Word::deff) { defaultFont_ = value; return; }
    if (w == Word::uc) { s.unicodeSkip = std::clamp(value, 0, kMaxUnicodeSkip); return; }

    flushBytes();
    if (w == Word::s || w == Word::cs) {
        applyStyle(value, w == Word::cs);
        return;
    }
    if (formatWord(word, w, parameter, s))
        return;

    if (s.destination != Destination::Text)
        return;
    // Breaks and special characters.
    if (w == Word::par || w == Word::row) { endParagraph(); return; }
    if (w == Word::sect || w == Word::page) {
        if (paragraphTouched_)
            endParagraph();
        return;
    }
    static const QHash<QByteArray, char16_t> kCharacters = {
        {"line", kLineBreak.unicode()}, {"tab", u'\t'}, {"cell", u'\t'}, {"nestcell", u'\t'},
        {"emdash", 0x2014}, {"endash", 0x2013}, {"bullet", 0x2022}, {"lquote", 0x2018},
        {"rquote", 0x2019}, {"ldblquote", 0x201C}, {"rdblquote", 0x201D},
        {"emspace", 0x2003}, {"enspace", 0x2002}, {"qmspace", 0x2005}, {"zwj", 0x200D},
        {"zwnj", 0x200C}, {"zwbo", 0x200B}, {"ltrmark", 0x200E}, {"rtlmark", 0x200F}};
    auto character = kCharacters.constFind(word);
    if (character != kCharacters.constEnd())
        addText(QString(QChar(*character)));
}


// Character and paragraph format words; true when the word was one of them.
bool RtfParser::formatWord(const QByteArray &word, Word w, std::optional<int> parameter, GroupState &s)
{
    const int value = parameter.value_or(1);
    const bool on = value != 0;
    const int amount = parameter.value_or(0);
    // Character format.
    if (w == Word::plain) {
        const quint32 kept = s.setMask & ~quint32(kSetFont | kSetSize | kSetBold | kSetItalic
                                                  | kSetUnderline | kSetStrike | kSetHidden | kSetColor);
        s.font = -1;
        s.halfPoints = 0;
        s.bold = s.italic = s.underline = s.strike = s.hidden = false;
        s.colorIndex = 0;
        s.setMask = kept;
        return true;
    }
    if (w == Word::f) { s.font = value; s.setMask |= kSetFont; return true; }
    if (w == Word::fs) { s.halfPoints = std::clamp(value, 0, 3276); s.setMask |= kSetSize; return true; }
    if (w == Word::b) { s.bold = on; s.setMask |= kSetBold; return true; }
    if (w == Word::i) { s.italic = on; s.setMask |= kSetItalic; return true; }
    if (w == Word::strike || w == Word::striked) { s.strike = on; s.setMask |= kSetStrike; return true; }
    if (w == Word::v) { s.hidden = on; s.setMask |= kSetHidden; return true; }
    if (w == Word::cf) { s.colorIndex = std::max(0, value); s.setMask |= kSetColor; return true; }
    if (w == Word::ulnone) { s.underline = false; s.setMask |= kSetUnderline; return true; }
    if (word.startsWith("ul") && w != Word::ulc) { s.underline = on; s.setMask |= kSetUnderline; return true; }

    // Paragraph format.
    ParagraphFormat &p = s.paragraph;
    if (w == Word::pard) {
        p = ParagraphFormat();
        s.setMask &= ~quint32(kSetAlignment | kSetLeft | kSetRight | kSetFirst | kSetBullet);
        return true;
    }
    if (w == Word::ql) { p.alignment = Alignment::Left; s.setMask |= kSetAlignment; return true; }
    if (w == Word::qr) { p.alignment = Alignment::Right; s.setMask |= kSetAlignment; return true; }
    if (w == Word::qc) { p.alignment = Alignment::Center; s.setMask |= kSetAlignment; return true; }
    if (w == Word::qj || w == Word::qd) { p.alignment = Alignment::Justify; s.setMask |= kSetAlignment; return true; }
    if (w == Word::li || w == Word::lin) { p.leftIndent = amount; s.setMask |= kSetLeft; return true; }
    if (w == Word::ri || w == Word::rin) { p.rightIndent = amount; s.setMask |= kSetRight; return true; }
    if (w == Word::fi) { p.firstLineIndent = amount; s.setMask |= kSetFirst; return true; }
    if (w == Word::ls) { p.bullet = value > 0; s.setMask |= kSetBullet; return true; }
    return false;
}

// A word inside a style definition that names the style or its base.
void RtfParser::styleWord(Word w, int value)
{
    if (w == Word::s || w == Word::cs) {
        styleNumber_ = value;
        styleCharacter_ = w == Word::cs;
    } else if (w == Word::sbasedon) {
        styleBase_ = value;
    }
}

void RtfParser::commitStyle()
{
    Style style;
    style.format = state();
    style.basedOn = styleBase_;
    style.character = styleCharacter_;
    (styleCharacter_ ? characterStyles_ : paragraphStyles_).insert(styleNumber_, style);
    // A table written without a group per style goes on with the next one from scratch.
    const Destination destination = state().destination;
    const int skip = state().unicodeSkip;
    state() = GroupState();
    state().destination = destination;
    state().unicodeSkip = skip;
    styleNumber_ = 0;
    styleBase_ = -1;
    styleCharacter_ = false;
}

void RtfParser::applyStyle(int number, bool character)
{
    const QHash<int, Style> &styles = character ? characterStyles_ : paragraphStyles_;
    // The chain of bases, applied from the root down; bounded against loops.
    std::vector<const Style *> chain;
    for (int n = number; chain.size() < kMaxStyleChain;) {
        auto found = styles.constFind(n);
        if (found == styles.constEnd())
            break;
        chain.push_back(&*found);
        if (found->basedOn < 0 || found->basedOn == n)
            break;
        n = found->basedOn;
    }
    GroupState &s = state();
    for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
        const GroupState &f = (*it)->format;
        const quint32 m = f.setMask;
        if (m & kSetFont) s.font = f.font;
        if (m & kSetSize) s.halfPoints = f.halfPoints;
        if (m & kSetBold) s.bold = f.bold;
        if (m & kSetItalic) s.italic = f.italic;
        if (m & kSetUnderline) s.underline = f.underline;
        if (m & kSetStrike) s.strike = f.strike;
        if (m & kSetHidden) s.hidden = f.hidden;
        if (m & kSetColor) s.colorIndex = f.colorIndex;
        if (character)
            continue;
        if (m & kSetAlignment) s.paragraph.alignment = f.paragraph.alignment;
        if (m & kSetLeft) s.paragraph.leftIndent = f.paragraph.leftIndent;
        if (m & kSetRight) s.paragraph.rightIndent = f.paragraph.rightIndent;
        if (m & kSetFirst) s.paragraph.firstLineIndent = f.paragraph.firstLineIndent;
        if (m & kSetBullet) s.paragraph.bullet = f.paragraph.bullet;
    }
}

} // namespace

bool LooksLikeRtf(const QByteArray &bytes)
{
    qsizetype i = 0;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        i = 3;
    while (i < bytes.size() && std::isspace(static_cast<unsigned char>(bytes[i])))
        ++i;
    return bytes.mid(i, 5) == "{\\rtf";
}

RichDocument ReadRtf(const QByteArray &bytes, QString *error)
{
    if (!LooksLikeRtf(bytes)) {
        if (error)
            *error = QString::fromLatin1(kRtfNotRtfMessage);
        return RichDocument();
    }
    RtfParser parser(bytes);
    return parser.run(error);
}

} // namespace reader
