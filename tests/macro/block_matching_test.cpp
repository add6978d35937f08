// The partner searches of the whole-macro check, on whole small macros.
#include "macro/block_matching.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace macro;

namespace {

// The macro's text with CR LF line ends, and where line n (1-based) begins.
struct Macro {
    QString text;
    explicit Macro(const QStringList &lines) : text(lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")) {}
    int pos(int line) const
    {
        int p = 1;
        for (int n = 1; n < line; ++n)
            p = int(text.indexOf(QStringLiteral("\r\n"), p - 1)) + 3;
        return p;
    }
};

const QString kNoIf = QStringLiteral("Missing matching [IF Cond] statement");
const QString kNoEndIf = QStringLiteral("Missing matching [ENDIF] statement");

} // namespace

TEST(BlockMatching, IfAndEndIfFindEachOtherAcrossNestedBlocks)
{
    const Macro m({"[IF A=1]", "[IF B=1]", "x", "[ENDIF]", "[CANCEL IF C=1]", "[ENDIF]"});
    EXPECT_EQ(Matching_ENDIF(m.text, m.pos(1)), "");
    EXPECT_EQ(Matching_ENDIF(m.text, m.pos(2)), "");
    EXPECT_EQ(Matching_IF(m.text, m.pos(4)), "");
    EXPECT_EQ(Matching_IF(m.text, m.pos(6)), "");

    const Macro open({"[IF A=1]", "[IF B=1]", "[ENDIF]"});
    EXPECT_EQ(Matching_ENDIF(open.text, open.pos(1)), kNoEndIf);
    EXPECT_EQ(Matching_ENDIF(open.text, open.pos(2)), "");
    const Macro closed({"[ENDIF]", "[IF A=1]", "[ENDIF]", "[ENDIF]"});
    EXPECT_EQ(Matching_IF(closed.text, closed.pos(1)), kNoIf);
    EXPECT_EQ(Matching_IF(closed.text, closed.pos(4)), kNoIf);
    EXPECT_EQ(Matching_IF(closed.text, closed.pos(3)), "");
}

TEST(BlockMatching, QuotedStatementWordsCountToo)
{
    const Macro m({"[IF A=1]", "[SENDKEYS \"[ENDIF]\"]", "[ENDIF]"});
    EXPECT_EQ(Matching_IF(m.text, m.pos(3)), kNoIf);  // the quoted [ENDIF] closed the block
}

TEST(BlockMatching, ElseBelongsToTheOpenIfBeforeIt)
{
    EXPECT_EQ(Matching_ELSE(Macro({"[ELSE]", "[ENDIF]"}).text, 1), kNoIf);
    const Macro nested({"[IF A=1]", "[IF B=1]", "[ELSE]", "[ENDIF]", "[ELSE]", "[ENDIF]"});
    EXPECT_EQ(Matching_ELSE(nested.text, nested.pos(3)), "");
    EXPECT_EQ(Matching_ELSE(nested.text, nested.pos(5)), "");
    const Macro unclosed({"[IF A=1]", "[ELSE]", "x"});
    EXPECT_EQ(Matching_ELSE(unclosed.text, unclosed.pos(2)), kNoEndIf);
    // Two [ELSE] in one block: the count rule finds the extra one.
    const Macro twice({"[IF A=1]", "a", "[ELSE]", "b", "[ELSE]", "c", "[ENDIF]"});
    EXPECT_EQ(Matching_ELSE(twice.text, twice.pos(5)), kNoIf);
}

TEST(BlockMatching, LoopsNestAndQuitLoopMustStandInsideOne)
{
    const Macro m({"[LOOP I<3]", "[LOOP J<3]", "[QUITLOOP]", "[ENDLOOP]", "[ENDLOOP]", "[QUITLOOP]"});
    EXPECT_EQ(Matching_ENDLOOP(m.text, m.pos(1)), "");
    EXPECT_EQ(Matching_ENDLOOP(m.text, m.pos(2)), "");
    EXPECT_EQ(Matching_LOOP(m.text, m.pos(4)), "");
    EXPECT_EQ(Matching_LOOP(m.text, m.pos(5)), "");
    EXPECT_EQ(GoodQUITLOOP(m.text, m.pos(3)), "");
    EXPECT_EQ(GoodQUITLOOP(m.text, m.pos(6)), "No matching LOOP/ENDLOOP for [QUITLOOP] statement.");

    const Macro broken({"[ENDLOOP]", "[LOOP I<3]"});
    EXPECT_EQ(Matching_LOOP(broken.text, broken.pos(1)), "Missing matching [LOOP Cond] statement");
    EXPECT_EQ(Matching_ENDLOOP(broken.text, broken.pos(2)), "Missing matching [ENDLOOP] statement");
}

TEST(BlockMatching, FileStatementsNeedTheirOpenAndCloseAndKeepToOneDirection)
{
    const Macro m({"[OPEN 1 \"a\"]", "[READ 1 X]", "[WRITE 1 Y]", "[CLOSE 1]", "[OPEN 2 \"b\"]", "[WRITE 2 Z]",
                   "[CLOSE 2]"});
    EXPECT_EQ(Matching_OPEN_CLOSE(m.text, "1", m.pos(1)), "");
    EXPECT_EQ(Matching_OPEN_CLOSE(m.text, "1", m.pos(2)), "Can't mix READ/WRITE statements");
    EXPECT_EQ(Matching_OPEN_CLOSE(m.text, "1", m.pos(3)), "Can't mix READ/WRITE statements");
    EXPECT_EQ(Matching_OPEN_CLOSE(m.text, "1", m.pos(4)), "");
    EXPECT_EQ(Matching_OPEN_CLOSE(m.text, "2", m.pos(6)), "");

    const struct {
        QStringList lines;
        int line;
        const char *id;
        const char *message;
    } rows[] = {
        {{"[READ 1 X]"}, 1, "1", "Missing [OPEN n File] statement"},
        {{"[OPEN 2 \"f\"]", "[READ 1 X]"}, 2, "1", "No matching [OPEN n File] file ID"},
        {{"[OPEN 1 \"f\"]", "[READ 1 X]"}, 2, "1", "Missing [CLOSE n] statement"},
        {{"[OPEN 1 \"f\"]", "[READ 1 X]", "[CLOSE 2]"}, 2, "1", "No matching [CLOSE n] file ID"},
        {{"[CLOSE 1]"}, 1, "1", "Missing [OPEN n File] statement"},
        {{"[OPEN 1 \"f\"]"}, 1, "1", "Missing [CLOSE n] statement"},
        {{"[OPEN f \"f\"]", "[READ F X]", "[CLOSE F]"}, 2, "F", ""},  // ids compare as text, in any case
    };
    for (const auto &row : rows) {
        const Macro macro(row.lines);
        EXPECT_EQ(Matching_OPEN_CLOSE(macro.text, QString::fromLatin1(row.id), macro.pos(row.line)),
                  QString::fromLatin1(row.message))
            << row.lines.join(QLatin1Char('|')).toStdString();
    }
}
