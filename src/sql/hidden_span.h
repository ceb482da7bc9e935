// hidden_span.h - which bytes of a part the ZEAL_HIDE_* flags hide: the
// one rule hiding and HideCodeParts both follow.
#ifndef ZELSTR_SQL_HIDDEN_SPAN_H
#define ZELSTR_SQL_HIDDEN_SPAN_H

#include "sql/code_grammar.h"
#include "zelstr/codehide.h"

namespace zelstr::sql::code {

inline constexpr int kHideFlags = ZEAL_HIDE_COMMENTS | ZEAL_HIDE_STRINGS | ZEAL_HIDE_NAMES |
                                  ZEAL_HIDE_COMMANDS | ZEAL_HIDE_DELIMITERS;

// The bytes of `part` that `flags` hide, in [*from, *to); false when they
// hide none of it.  Comments and command lines go whole; literals and
// names keep their delimiters unless ZEAL_HIDE_DELIMITERS is given.
inline bool hidden_span(Part const& part, int flags, Byte const** from, Byte const** to) {
  int const kind_flag = part.kind == Kind::kLineComment || part.kind == Kind::kBlockComment
                            ? ZEAL_HIDE_COMMENTS
                        : part.kind == Kind::kCommand ? ZEAL_HIDE_COMMANDS
                        : part.kind == Kind::kString  ? ZEAL_HIDE_STRINGS
                                                      : ZEAL_HIDE_NAMES;
  if (!(flags & kind_flag)) return false;
  bool const whole = kind_flag == ZEAL_HIDE_COMMENTS || kind_flag == ZEAL_HIDE_COMMANDS ||
                     (flags & ZEAL_HIDE_DELIMITERS) != 0;
  *from = whole ? part.begin : part.content;
  *to = whole ? part.end : part.close;
  return true;
}

}  // namespace zelstr::sql::code

#endif  // ZELSTR_SQL_HIDDEN_SPAN_H
