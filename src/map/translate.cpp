// translate.cpp - translation through a table: the row kernel this
// processor runs for long spans, a plain loop for short ones and for the
// bytes after the last whole vector.
#include "map/translate.h"

namespace zelstr::map {
namespace {

// The byte shuffle has no form in the compiler's generic vectors that every
// compiler takes, so the kernel is written for each instruction set that
// has one; other processors, and SSE2 alone, use the plain loop.
TranslateKernel kernel_for(frame::Isa isa) {
  switch (isa) {
#if ZELSTR_X86_KERNELS
    case frame::Isa::kAvx2:
      return translate_avx2();
    case frame::Isa::kSsse3:
      return translate_ssse3();
#endif
#if ZELSTR_NEON_KERNELS
    case frame::Isa::kNeon:
      return translate_neon();
#endif
    default:
      return nullptr;
  }
}

TranslateKernel chosen_kernel() {
  static TranslateKernel const kernel = kernel_for(frame::kernel_isa());
  return kernel;
}

}  // namespace

void read_rows(Byte const* table, TableRows& rows) noexcept {
  rows.count = 0;
  for (int row = 0; row < 16; ++row) {
    bool changed = false;
    for (int i = 0; i < 16; ++i) {
      rows.images[rows.count][i] = table[row * 16 + i];
      changed |= table[row * 16 + i] != row * 16 + i;
    }
    if (changed) rows.rows[rows.count++] = static_cast<Byte>(row);
  }
}

Translator::Translator(Byte const* table) noexcept : m_table(table), m_kernel(chosen_kernel()) {
  read_rows(table, m_rows);
}

Translator::Translator(frame::Isa isa, Byte const* table) noexcept
    : m_table(table), m_kernel(kernel_for(isa)) {
  read_rows(table, m_rows);
}

void Translator::translate_long(Byte* from, Byte* to, Byte const* limit) const noexcept {
  if (m_rows.count == 0) return;  // the identity
  if (m_kernel != nullptr) from = m_kernel(m_rows, from, to, limit);
  translate_bytes(m_table, from, to);
}

}  // namespace zelstr::map
