// line_quote.h - quote's work on a stretch of whole lines, 64 bytes at a
// time (tool/line_blocks.h): a block's line starts and line ends are found
// as masks, and the block is copied in the pieces between them, a quote
// written at each.
#ifndef ZELSTR_TOOL_LINE_QUOTE_H
#define ZELSTR_TOOL_LINE_QUOTE_H

#include <cstddef>

#include "tool/line_blocks.h"

namespace zelstr::tool {

// Bytes an output needs beyond 3 * length + 1: a line of the stretch, at
// least its line feed, gains two quotes, and a last line without one two.
inline constexpr std::size_t kQuoteOvershoot = kPieceOvershoot;

// Writes the stretch [text, text + length) of whole lines (the last may
// lack its line feed; no zero byte) with every line framed by `quote`, line
// ends kept, to `out`, which has room for 3 * length + 1 + kQuoteOvershoot
// bytes; returns the length written.
std::size_t quote_lines(char const* text, std::size_t length, char quote, char* out);

}  // namespace zelstr::tool

#endif  // ZELSTR_TOOL_LINE_QUOTE_H
