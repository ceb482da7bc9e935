// span_ex.cpp - spans and positions over a set definition: _z[map]str[i]spnex,
// _z[map]str[i]cspnex, _z[map]str[i]posex, _z[map]str[i]cposex, _zchrspnex.
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "chars/setdef.h"
#include "map/map_handle.h"
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

// How the string's bytes are read before the membership test: as they
// are or as their images through a map (NULL: none); with `fold`, a byte
// (or image) counts also by its other-case ASCII letter.  A map keeps 0 as
// 0, so the terminator is never a member, nor the complement's member.
struct Reading {
  Table map;
  bool fold;
};

// The run of bytes whose flag in `table` is set, the bytes read as `how`
// says; with folding, a byte's flag is combined with its other case's:
// either may be set (kBoth false) or both must be (kBoth true).  One
// instance per reading, so that the plain forms pay for no map.
template <bool kBoth>
std::size_t run_of(char const* s, Table t, Reading how) {
  auto const folded = [t](unsigned char x) -> unsigned {
    return kBoth ? t[x] & t[swapped(x)] : t[x] | t[swapped(x)];
  };
  if (how.map == nullptr) {
    if (how.fold) return run_while(s, folded);
    return run_while(s, [t](unsigned char b) -> unsigned { return t[b]; });
  }
  Table const map = how.map;
  if (how.fold) return run_while(s, [=](unsigned char b) { return folded(map[b]); });
  return run_while(s, [t, map](unsigned char b) -> unsigned { return t[map[b]]; });
}

// The run of members (the terminator is never a member).
std::size_t member_run(char const* s, Table members, Reading how) {
  return run_of<false>(s, members, how);
}

// The run of non-members (byte 0 is flagged as a member of the complement
// table, so the scan stops at the terminator); with folding, the run also
// ends at a byte whose other case is a member.
std::size_t non_member_run(char const* s, Table others, Reading how) {
  return run_of<true>(s, others, how);
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

unsigned int spnex(char const* string, char const* setdef, Reading how) {
  Table const members = checked_table(string, setdef, kSpnexWarnings, compile_members);
  return members ? static_cast<unsigned int>(member_run(string, members, how)) : 0;
}

unsigned int cspnex(char const* string, char const* setdef, Reading how) {
  Table const others = checked_table(string, setdef, kCspnexWarnings, compile_non_members);
  return others ? static_cast<unsigned int>(non_member_run(string, others, how)) : 0;
}

// The position functions report nothing and give NULL for any bad argument
// or when the position found is the terminator.
bool quiet_arguments(char const* string, char const* setdef) {
  return string != nullptr && setdef != nullptr && *string != '\0' && *setdef != '\0';
}

char const* after_members(char const* string, char const* setdef, Reading how) {
  if (!quiet_arguments(string, setdef)) return nullptr;
  Table const members = compile_members(setdef);
  if (members == nullptr) return nullptr;
  char const* const at = string + member_run(string, members, how);
  return *at != '\0' ? at : nullptr;
}

char const* first_member(char const* string, char const* setdef, Reading how) {
  if (!quiet_arguments(string, setdef)) return nullptr;
  Table const others = compile_non_members(setdef);
  if (others == nullptr) return nullptr;
  char const* const at = string + non_member_run(string, others, how);
  return *at != '\0' ? at : nullptr;
}

constexpr Reading kPlain{nullptr, false};
constexpr Reading kFolded{nullptr, true};

// The reading of a mapped form.  A NULL map reads the bytes as they are
// (the plain form, quietly); ZEAL_STR_BAD_MAP too, after its warning,
// which comes before any other (the plain form's checks follow).
Reading through(void* map, bool fold, char const* function, char const* plain) {
  if (zelstr::map::is_bad(map)) {
    char text[192];
    std::snprintf(text, sizeof text, msg::kMappedSpanBadMapFormat, function, plain);
    warn(zelstr::frame::Message{-1, 4, text});
    return Reading{nullptr, fold};
  }
  return Reading{map != nullptr ? zelstr::map::table_of(map) : nullptr, fold};
}

}  // namespace

unsigned int _zstrspnex(char const* string, char const* setdef) noexcept {
  return spnex(string, setdef, kPlain);
}
unsigned int _zstrispnex(char const* string, char const* setdef) noexcept {
  return spnex(string, setdef, kFolded);
}
unsigned int _zstrcspnex(char const* string, char const* setdef) noexcept {
  return cspnex(string, setdef, kPlain);
}
unsigned int _zstricspnex(char const* string, char const* setdef) noexcept {
  return cspnex(string, setdef, kFolded);
}

unsigned int _zmapstrspnex(void* map, char const* string, char const* setdef) noexcept {
  return spnex(string, setdef, through(map, false, "_zmapstrspnex", "_zstrspnex"));
}
unsigned int _zmapstrispnex(void* map, char const* string, char const* setdef) noexcept {
  return spnex(string, setdef, through(map, true, "_zmapstrispnex", "_zstrispnex"));
}
unsigned int _zmapstrcspnex(void* map, char const* string, char const* setdef) noexcept {
  return cspnex(string, setdef, through(map, false, "_zmapstrcspnex", "_zstrcspnex"));
}
unsigned int _zmapstricspnex(void* map, char const* string, char const* setdef) noexcept {
  return cspnex(string, setdef, through(map, true, "_zmapstricspnex", "_zstricspnex"));
}

char const* _zstrposex(char const* string, char const* setdef) noexcept {
  return after_members(string, setdef, kPlain);
}
char const* _zstriposex(char const* string, char const* setdef) noexcept {
  return after_members(string, setdef, kFolded);
}
char const* _zstrcposex(char const* string, char const* setdef) noexcept {
  return first_member(string, setdef, kPlain);
}
char const* _zstricposex(char const* string, char const* setdef) noexcept {
  return first_member(string, setdef, kFolded);
}
char* _zstrposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zstrposex(static_cast<char const*>(string), setdef));
}
char* _zstriposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zstriposex(static_cast<char const*>(string), setdef));
}
char* _zstrcposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zstrcposex(static_cast<char const*>(string), setdef));
}
char* _zstricposex(char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zstricposex(static_cast<char const*>(string), setdef));
}

char const* _zmapstrposex(void* map, char const* string, char const* setdef) noexcept {
  return after_members(string, setdef, through(map, false, "_zmapstrposex", "_zstrposex"));
}
char const* _zmapstriposex(void* map, char const* string, char const* setdef) noexcept {
  return after_members(string, setdef, through(map, true, "_zmapstriposex", "_zstriposex"));
}
char const* _zmapstrcposex(void* map, char const* string, char const* setdef) noexcept {
  return first_member(string, setdef, through(map, false, "_zmapstrcposex", "_zstrcposex"));
}
char const* _zmapstricposex(void* map, char const* string, char const* setdef) noexcept {
  return first_member(string, setdef, through(map, true, "_zmapstricposex", "_zstricposex"));
}
char* _zmapstrposex(void* map, char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zmapstrposex(map, static_cast<char const*>(string), setdef));
}
char* _zmapstriposex(void* map, char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zmapstriposex(map, static_cast<char const*>(string), setdef));
}
char* _zmapstrcposex(void* map, char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zmapstrcposex(map, static_cast<char const*>(string), setdef));
}
char* _zmapstricposex(void* map, char* string, char const* setdef) noexcept {
  return const_cast<char*>(_zmapstricposex(map, static_cast<char const*>(string), setdef));
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
