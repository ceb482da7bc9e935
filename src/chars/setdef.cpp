// setdef.cpp - the set-definition reader and its two one-entry caches.
#include "chars/setdef.h"

#include <cstring>

#include "frame/per_thread.h"

namespace zelstr::chars {
namespace {

constexpr char kEscape = '`';
constexpr std::size_t kCacheText = 256;

// The last definition compiled into one form, and its table.
struct CompiledSet {
  char text[kCacheText] = {};
  unsigned char table[256] = {};
};

// Each thread keeps its own two caches.
struct CompiledSets {
  CompiledSet members;
  CompiledSet non_members;
};
using SetSlot = frame::PerThread<CompiledSets, frame::ThreadSlot::kSetDef>;

void mark(unsigned char* table, unsigned char lo, unsigned char hi, unsigned char value) {
  if (lo <= hi) std::memset(table + lo, value, static_cast<std::size_t>(hi - lo) + 1);
}

// Reads `def` (of length n) into `table`, writing `value` for each member.
// One pass, left to right; false on a syntax error.
bool parse(char const* def, std::size_t n, unsigned char* table, unsigned char value) {
  if (n < 2 || def[0] != '[') return false;
  std::size_t i = 1;
  for (;;) {
    if (i >= n) return false;  // no closing "]", or it was escaped
    if (def[i] == ']' && i == n - 1) return true;
    if (def[i] == '-') return false;
    unsigned char lo;
    if (def[i] == kEscape) {
      if (i + 1 >= n) return false;
      lo = static_cast<unsigned char>(def[i + 1]);
      i += 2;
    } else {
      lo = static_cast<unsigned char>(def[i]);
      i += 1;
    }
    if (i < n && def[i] == '-') {
      std::size_t const j = i + 1;
      if (j >= n - 1) return false;  // the range would end on the last byte
      unsigned char hi;
      if (def[j] == kEscape) {
        if (j + 1 >= n) return false;
        hi = static_cast<unsigned char>(def[j + 1]);
        i = j + 2;
      } else {
        hi = static_cast<unsigned char>(def[j]);
        i = j + 1;
      }
      mark(table, lo, hi, value);
    } else {
      table[lo] = value;
    }
  }
}

// Compiles into `set`: members get `member`, the rest `other`.
unsigned char const* compile(CompiledSet& set, char const* setdef, unsigned char member,
                             unsigned char other) {
  if (std::strcmp(set.text, setdef) == 0 && set.text[0] != '\0') return set.table;
  set.text[0] = '\0';  // the table is rewritten below: forget what it held
  std::memset(set.table, other, sizeof set.table);
  std::size_t const n = std::strlen(setdef);
  if (!parse(setdef, n, set.table, member)) return nullptr;
  if (n < kCacheText) std::memcpy(set.text, setdef, n + 1);
  return set.table;
}

}  // namespace

unsigned char const* compile_members(char const* setdef) {
  if (setdef == nullptr || *setdef == '\0') return nullptr;
  return compile(SetSlot::get().members, setdef, 1, 0);
}

unsigned char const* compile_non_members(char const* setdef) {
  CompiledSet& non_members = SetSlot::get().non_members;
  if (setdef == nullptr || *setdef == '\0') {
    non_members.text[0] = '\0';
    std::memset(non_members.table, 1, sizeof non_members.table);
    non_members.table[0] = 0;
    return non_members.table;
  }
  unsigned char const* const table = compile(non_members, setdef, 0, 1);
  if (table != nullptr) non_members.table[0] = 0;
  return table;
}

}  // namespace zelstr::chars
