#pragma once
// Reads RTF, as word processors write it, into the rich-text model.
//
// Understood: the \rtf1 header with \ansi, \mac, \pc, \pca and \ansicpgN; \fonttbl (with
// \fcharsetN and \cpgN) and \colortbl; \f \fs \b \i \ul (and its styled variants) \ulnone
// \strike \striked \cf \v \plain; \pard \par \line \tab \ql \qr \qc \qj \li \lin \fi \ri
// \rin; paragraph and character styles of the \stylesheet; bullets written as {\pntext ...},
// {\listtext ...}, {\*\pn\pnlvlblt ...} or \lsN (a numbered item keeps its number, as the
// list text shows it, in its text); \uN with \ucN fallback skipping; \'hh bytes decoded
// with the code page of the current font or of the document; \binN; fields show their
// result. Groups it does not understand ({\* ...} and the known non-text destinations such
// as \info, \pict, \header, \footer, \fldinst) are skipped whole.
//
// Bad input: the reader never recurses and does a bounded amount of work per input byte.
// Groups nested deeper than kMaxRtfGroupDepth are skipped whole. Text after the group that
// closes the document is ignored.
//
// Failures, in *error (set to "" on success):
//  - bytes that do not begin with "{\rtf" (leading blanks aside): an empty document and
//    kRtfNotRtfMessage;
//  - text that ends before its groups are closed (a truncated file): every paragraph read
//    up to the cut, the unfinished one included, and kRtfTruncatedMessage.
#include "reader/rich_text.h"

#include <QByteArray>
#include <QString>

namespace reader {

inline constexpr int kMaxRtfGroupDepth = 200;
inline constexpr auto kRtfNotRtfMessage = "The file is not in rich text format (RTF).";
inline constexpr auto kRtfTruncatedMessage =
    "The rich text file is incomplete: it ends before its last group is closed.";

// True when the bytes begin, after blanks, with "{\rtf".
bool LooksLikeRtf(const QByteArray &bytes);

RichDocument ReadRtf(const QByteArray &bytes, QString *error = nullptr);

} // namespace reader
