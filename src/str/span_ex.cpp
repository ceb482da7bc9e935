// span_ex.cpp - spans and positions over a set definition: _zstr[i]spnex,
// _zstr[i]cspnex, _zstr[i]posex, _zstr[i]cposex, _zchrspnex.
#include <cstddef>
#include <cstdint>

#include "chars/setdef.h"
#include "str/report.h"
#include "zelstr/case.h"
#include "zelstr/setdef.h"

using namespace zelstr::str;
using zelstr::chars::compile_members;
using zelstr::chars::compile_non_members;

namespace {

using Table = unsigned char const*;

// The other-case form of an ASCII letter, the byte itself otherwise.
unsigned char swapped(unsigned char b) {
  return static_cast<unsigned char>(CCharCaseRelatedOps::m_acSwpCaseUC[b]);
}

// Counts bytes while the flag `in(byte)` (0 or 1) is set; the terminator's
// flag is always 0.
//
// The bytes are taken eight at a time from an address aligned to eight, and
// the group's flags are combined: only the group where the run ends is
// walked byte by byte.  An aligned group never crosses a page, so reading
// the bytes after the terminator in its group is safe; they are read on
// purpose and the address sanitizer does not watch this loop.
template <class In>
__attribute__((no_sanitize_address)) std::size_t run_while(char const* s, In in) {
  auto const* p = reinterpret_cast<unsigned char const*>(s);
  std::size_t i = 0;
  for (; (reinterpret_cast<std::uintptr_t>(p + i) & 7) != 0; ++i) {
    if (!in(p[i])) return i;
  }
  for (;; i += 8) {
    unsigned const all = in(p[i]) & in(p[i + 1]) & in(p[i + 2]) & in(p[i + 3]) & in(p[i + 4]) &
                         in(p[i + 5]) & in(p[i + 6]) & in(p[i + 7]);
    if (!all) break;
  }
  while (in(p[i])) ++i;
  return i;
}

// The run of members (the terminator is never a member).
std::size_t member_run(char const* s, Table members, bool ignore_case) {
  if (ignore_case) {
    return run_while(
        s, [members](unsigned char b) -> unsigned { return members[b] | members[swapped(b)]; });
  }
  return run_while(s, [members](unsigned char b) -> unsigned { return members[b]; });
}

// The run of non-members (byte 0 is flagged as a member of the complement
// table, so the scan stops at the terminator).
std::size_t non_member_run(char const* s, Table others, bool ignore_case) {
  if (ignore_case) {
    return run_while(
        s, [others](unsigned char b) -> unsigned { return others[b] & others[swapped(b)]; });
  }
  return run_while(s, [others](unsigned char b) -> unsigned { return others[b]; });
}

// The three warnings of one family.
struct SpanWarnings {
  zelstr::frame::Message const& null_string;
  zelstr::frame::Message const& null_setdef;
  zelstr::frame::Message const& bad_setdef;
};

constexpr SpanWarnings kSpnexWarnings{msg::kSpnexNullString, msg::kSpnexNullSetdef,
                                      msg::kSpnexBadSetdef};
constexpr SpanWarnings kCspnexWarnings{msg::kCspnexNullString, msg::kCspnexNullSetdef,
                                       msg::kCspnexBadSetdef};

// The checks shared by the span functions; the compiled table, or NULL
// after reporting (or, quietly, for an empty string).
Table checked_table(char const* string, char const* setdef, SpanWarnings const& warnings,
                    Table (*compile)(char const*)) {
  if (string == nullptr) {
    warn(warnings.null_string);
    return nullptr;
  }
  if (setdef == nullptr) {
    warn(warnings.null_setdef);
    return nullptr;
  }
  if (*string == '\0') return nullptr;
  Table const table = *setdef != '\0' ? compile(setdef) : nullptr;
  if (table == nullptr) warn(warnings.bad_setdef);
  return table;
}

unsigned int spnex(char const* string, char const* setdef, bool ignore_case) {
  Table const members = checked_table(string, setdef, kSpnexWarnings, compile_members);
  return members ? static_cast<unsigned int>(member_run(string, members, ignore_case)) : 0;
}

unsigned int cspnex(char const* string, char const* setdef, bool ignore_case) {
  Table const others = checked_table(string, setdef, kCspnexWarnings, compile_non_members);
  return others ? static_cast<unsigned int>(non_member_run(string, others, ignore_case)) : 0;
}

// The position functions report nothing and give NULL for any bad argument
// or when the position found is the terminator.
bool quiet_arguments(char const* string, char const* setdef) {
  return string != nullptr && setdef != nullptr && *string != '\0' && *setdef != '\0';
}

char const* after_members(char const* string, char const* setdef, bool ignore_case) {
  if (!quiet_arguments(string, setdef)) return nullptr;
  Table const members = compile_members(setdef);
  if (members == nullptr) return nullptr;
  char const* const at = string + member_run(string, members, ignore_case);
  return *at != '\0' ? at : nullptr;
}

char const* first_member(char const* string, char const* setdef, bool ignore_case) {
  if (!quiet_arguments(string, setdef)) return nullptr;
  Table const others = compile_non_members(setdef);
  if (others == nullptr) return nullptr;
  char const* const at = string + non_member_run(string, others, ignore_case);
  return *at != '\0' ? at : nullptr;
}

}  // namespace

unsigned int _zstrspnex(char const* string, char const* setdef) noexcept {
  return spnex(string, setdef, false);
}
unsigned int _zstrispnex(char const* string, char const* setdef) noexcept {
  return spnex(string, setdef, true);
}
unsigned int _zstrcspnex(char const* string, char const* setdef) noexcept {
  return cspnex(string, setdef, false);
}
unsigned int _zstricspnex(char const* string, char const* setdef) noexcept {
  return cspnex(string, setdef, true);
}

char const* _zstrposex(char const* string, char const* setdef) noexcept {
  return after_members(string, setdef, false);
}
char const* _zstriposex(char const* string, char const* setdef) noexcept {
  return after_members(string, setdef, true);
}
char const* _zstrcposex(char const* string, char const* setdef) noexcept {
  return first_member(string, setdef, false);
}
char const* _zstricposex(char const* string, char const* setdef) noexcept {
  return first_member(string, setdef, true);
}
char* _zstrposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(after_members(string, setdef, false));
}
char* _zstriposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(after_members(string, setdef, true));
}
char* _zstrcposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(first_member(string, setdef, false));
}
char* _zstricposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(first_member(string, setdef, true));
}

int _zchrspnex(char c, char* setdef) noexcept {
  if (setdef == nullptr) {
    warn(msg::kChrspnexNullSetdef);
    return 0;
  }
  if (*setdef == '\0') {
    warn(msg::kChrspnexEmptySetdef);
    return 0;
  }
  Table const members = compile_members(setdef);
  if (members == nullptr) {
    warn(msg::kChrspnexBadSetdef);
    return 0;
  }
  return members[static_cast<unsigned char>(c)];
}
