#pragma once
// The statement reference of the macro language: read from its one source text
// (help/statements.txt) and written out as HTML for the help viewer, as rich text for the
// editor's statement help, and as man page text.
//
// Source format, line by line:
//   "# ..."          a comment, outside entries only
//   "## Title"       starts a group of statements
//   "== [FORM]"      starts an entry: the statement as written, e.g. "[OPEN n File]"
//   text lines       the description; a blank line starts a new paragraph
//   "Example:"       the rest of the entry, up to the next "==" or "##", is the example
//                    macro, kept as written (blank lines at its end are dropped)
#include <QList>
#include <QString>
#include <QStringList>

namespace help {

struct StatementEntry {
    QString group;             // the "##" title it stands under
    QString form;              // "[OPEN n File]"
    QStringList paragraphs;    // description, one string a paragraph
    QString example;           // the example macro, "\n" between lines
    int line = 0;              // line of the "==" in the source, for messages
};

// The entries in source order. A malformed source gives what could be read and sets
// error to "line N: what is wrong" (an entry without description or example, text
// outside an entry, an entry before the first group).
QList<StatementEntry> ParseStatementReference(const QString &source, QString *error);

// The statement word an entry is found by: "[OPEN" for "[OPEN n File]", "[VAR=" for
// "[VAR=Val]", "[SPELLCHECK]" for "[SPELLCHECK]".
QString StatementWord(const StatementEntry &entry);

// HTML of the whole reference: a list of links by group, then one section a statement,
// each with its anchor (StatementAnchor).
QString StatementReferenceHtml(const QList<StatementEntry> &entries);
// The anchor name of an entry: "st-" and the word's letters, "st-OPEN", "st-VAR".
QString StatementAnchor(const StatementEntry &entry);

// Rich text body (no group braces of its own) of the reference, for "Hotkeys.rtf".
// In its plain text each entry starts with a line holding only its form, at the start
// of the line; example lines are indented by four blanks and group titles stand between
// "== " and " ==", so that reader::StatementHelpText can cut out one statement.
QString StatementReferenceRtf(const QList<StatementEntry> &entries);

// Text made safe for rich text: backslash and braces escaped, characters outside ASCII
// as \uN? escapes, "\n" as \par.
QString RtfEscaped(const QString &text);

// Text made safe for roff: backslashes, dashes and leading dots or quotes escaped.
QString RoffEscaped(const QString &text);

// Man page text of the reference: one tagged paragraph a statement.
QString StatementReferenceRoff(const QList<StatementEntry> &entries);

// The comment that stands where page 10 takes the statement reference.
inline const QString kStatementReferenceMark = QStringLiteral("<!-- STATEMENT REFERENCE -->");

// A help page with the statement reference put in place of kStatementReferenceMark.
QString PageWithReference(const QString &page, const QList<StatementEntry> &entries);

// Man page text of a help page. Pages are written in a small, well-formed XHTML subset:
// h1 to h4, p, ul, ol, li, dl, dt, dd, pre, table, tr, th, td, br, code, kbd, b, strong,
// i, em, a, span, div. The comment kStatementReferenceMark becomes referenceRoff. Sets
// error to "line N: what is wrong" for text that is not well formed or uses another
// element; the result then is what was converted before it.
QString HtmlPageToRoff(const QString &html, const QString &referenceRoff, QString *error);

// The help viewer's pages, in the order of Help > Instructions ("Reading the Clipboard"
// for page 1 ... "Hotkeys Editor" for page 11).
const QStringList &HelpPageTitles();

// The file of help page n (1-based): "01.html".
QString HelpPageFileName(int page);

// The HTML of help page n from the first of folders that holds it. When none does, or
// the file cannot be read, found is false and the result is an error page that names the
// file and every folder looked in.
QString HelpPageHtml(int page, const QStringList &folders, bool *found);

// The style sheet the help viewer sets on its pages: headings, lists, and code and
// examples in a monospaced font.
QString HelpStyleSheet();

} // namespace help
