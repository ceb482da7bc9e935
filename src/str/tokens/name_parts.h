// name_parts.h - reading the parts of a name: delimited runs with doubled
// closing marks, and the arrays of parts the splitters hand out.
//
// Shared by the tokenisers (a quote in _zstrcrack), _zstrsplitqname and the
// T-SQL qualified-name splitter, which differ only in which delimiters count
// and what a plain part may hold.
#ifndef ZELSTR_STR_TOKENS_NAME_PARTS_H
#define ZELSTR_STR_TOKENS_NAME_PARTS_H

#include <cstddef>

namespace zelstr::str::tokens {

// The closing mark of a name's opening one: "]" for "[", else the mark.
inline char closing_mark(char open) { return open == '[' ? ']' : open; }

// The closing mark of a run opened just before `p`: a doubled `close`
// stands inside the run.  The terminator when the run is not closed.
char const* run_end(char const* p, char close);

inline bool is_blank(char c) { return c == ' ' || c == '\t'; }
inline char const* skip_blanks(char const* p) {
  while (is_blank(*p)) ++p;
  return p;
}

// One part of a name.
struct NamePart {
  char const* begin = nullptr;  // the part's text, delimiters excluded
  char const* end = nullptr;
  char close = '\0';       // the closing mark when delimited, doubled inside
  std::size_t length = 0;  // as returned (a doubled mark counts once)
};

// Reads a delimited part whose opening mark is at `p`: fills `part` and
// returns the position just past the closing mark, or NULL when the part is
// not closed before the terminator.
char const* read_delimited(char const* p, NamePart& part);

// A plain part from `p` to the first byte that `stops` (the terminator
// always does), without the blanks at its end; returns that byte's place.
template <class Stops>
char const* read_plain(char const* p, NamePart& part, Stops stops) {
  part.close = '\0';
  part.begin = p;
  while (*p != '\0' && !stops(*p)) ++p;
  char const* end = p;
  while (end > part.begin && is_blank(end[-1])) --end;
  part.end = end;
  part.length = static_cast<std::size_t>(end - part.begin);
  return p;
}

// Copies `part` as returned, doubled marks made single, cut to `size` - 1
// bytes (room for part.length + 1 holds it whole).
void copy_part(NamePart const& part, char* out, std::size_t size);

// The parts as a NULL-terminated array of new strings (array delete, as
// CHSQL::DeleteComponents releases them), or NULL, counted, without memory.
char** new_components(NamePart const* parts, int count);

}  // namespace zelstr::str::tokens

#endif  // ZELSTR_STR_TOKENS_NAME_PARTS_H
