// translate.h - bytes translated through a map's table, in place.
//
// A table changes few of its sixteen rows (the bytes that share a high
// nibble) in practice: a case map changes two.  The vector kernels keep
// each changed row as a 16-entry shuffle table and, for every vector of
// text, look the low nibbles up in each changed row and take the result
// where the high nibble names that row; unchanged rows cost nothing.  A
// table that changes all sixteen still costs about two instructions a byte.
#ifndef ZELSTR_MAP_TRANSLATE_H
#define ZELSTR_MAP_TRANSLATE_H

#include <cstddef>

#include "frame/processor.h"

namespace zelstr::map {

using Byte = unsigned char;

// Every byte of [from, to) replaced by its image in `table`, one at a time:
// short spans, and the bytes after a kernel's last whole vector.
inline void translate_bytes(Byte const* table, Byte* from, Byte* to) noexcept {
  for (Byte* p = from; p < to; ++p) *p = table[*p];
}

// The rows of a table as a kernel uses them: each changed row's images,
// and which rows those are.
struct TableRows {
  Byte images[16][16];
  Byte rows[16];
  int count = 0;
};
void read_rows(Byte const* table, TableRows& rows) noexcept;

// A kernel translates [from, to) and returns `to`, or returns `from`
// untouched when the span is shorter than its vector.  When the bytes up
// to `limit` are the caller's to read and write, a shorter span whose
// vector fits before `limit` is translated too, the bytes after `to`
// written back unchanged (`limit` = `to` touches nothing after the span).
using TranslateKernel = Byte* (*)(TableRows const& rows, Byte* from, Byte* to, Byte const* limit);
TranslateKernel translate_ssse3();
TranslateKernel translate_avx2();
TranslateKernel translate_neon();

// Translates spans through one table: the table's rows are read once, for
// every span after.
class Translator {
 public:
  // With the kernel this processor runs.
  explicit Translator(Byte const* table) noexcept;
  // With the kernel of `isa`, whether or not this processor runs it (for
  // tests); kernel() tells whether the build has one.
  Translator(frame::Isa isa, Byte const* table) noexcept;
  bool kernel() const { return m_kernel != nullptr; }

  // Every byte of [from, to) replaced by its image.  Short spans (most
  // runs of SQL code between literals are) take the plain loop inline.
  void operator()(Byte* from, Byte* to) const noexcept { (*this)(from, to, to); }
  // The same where the bytes from `to` up to `limit` may be read and written
  // back unchanged: a short span then costs one vector, not a loop.
  void operator()(Byte* from, Byte* to, Byte const* limit) const noexcept {
    if (to - from >= kKernelFrom || (to - from >= kWindowFrom && limit - from >= kKernelFrom)) {
      translate_long(from, to, limit);
      return;
    }
    translate_bytes(m_table, from, to);
  }

  // Below this many bytes the plain loop is as fast as a kernel; below
  // the second, as fast as one vector.
  static constexpr std::ptrdiff_t kKernelFrom = 32;
  static constexpr std::ptrdiff_t kWindowFrom = 4;

 private:
  void translate_long(Byte* from, Byte* to, Byte const* limit) const noexcept;

  Byte const* m_table;
  TranslateKernel m_kernel;
  TableRows m_rows;
};

// Every byte of [from, to) replaced by its image in `table` (256 bytes).
inline void translate_span(Byte const* table, Byte* from, Byte* to) noexcept {
  if (to - from < Translator::kKernelFrom) {
    translate_bytes(table, from, to);
    return;
  }
  Translator const translate(table);
  translate(from, to);
}

}  // namespace zelstr::map

#endif  // ZELSTR_MAP_TRANSLATE_H
