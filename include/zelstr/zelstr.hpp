// zelstr.hpp - a C++17 face of the library: owners that release what the
// library hands out, and std::string_view forms of the everyday calls.
//
//   auto names = zelstr::define_map("A-Z=a-z -=_");        // released by its owner
//   zelstr::find(*names, "SELECT Order_Id", "order-id");   // 7
//   zelstr::replace_all("a.b.c", ".", "::");                // "a::b::c"
//   auto re = zelstr::compile("FROM +([a-z.]+)");
//   zelstr::group(re, "select * from dbo.t", 1);           // "dbo.t"
//
// Everything here calls the exported functions of zelstr.h, which work on
// zero-terminated strings: each std::string_view argument is copied into a
// zero-terminated buffer first (on the stack when short), so a view that
// holds a zero byte is seen up to that byte.  The calls report bad
// arguments as the functions they call do (warnings to the error-handler
// service) and throw nothing but std::bad_alloc from the standard strings
// they build.
//
// Threads: as the functions they call.  The owners may be moved between
// threads; a map may be read by several threads at once, a compiled
// expression by one at a time (it keeps its last match).
#ifndef ZELSTR_ZELSTR_HPP
#define ZELSTR_ZELSTR_HPP

#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "zelstr/zelstr.h"

namespace zelstr {

// ---- owners -----------------------------------------------------------------

struct MapRelease {
  void operator()(void* map) const { _zmapfree(map); }
};
struct RegexRelease {
  void operator()(Tcl_RegExp_* re) const { Tcl_DeleteInterp(re); }
};
struct CopyRelease {
  void operator()(char* copy) const { _zstrdupfree(copy); }  // takes its pointer by reference
};

// A character map (map.h), released with _zmapfree.
using Map = std::unique_ptr<void, MapRelease>;
// A compiled expression (regex.h), released with Tcl_DeleteInterp.
using Regex = std::unique_ptr<Tcl_RegExp_, RegexRelease>;
// A heap copy (alloc.h), released with _zstrdupfree.
using HeapCopy = std::unique_ptr<char, CopyRelease>;

namespace detail {

// A string_view as a zero-terminated string, for the time of one call.
class Terminated {
 public:
  explicit Terminated(std::string_view s) {
    if (s.size() < sizeof m_small) {
      std::memcpy(m_small, s.data(), s.size());
      m_small[s.size()] = '\0';
      m_text = m_small;
    } else {
      m_big.assign(s);
      m_text = m_big.c_str();
    }
  }
  Terminated(Terminated const&) = delete;
  Terminated& operator=(Terminated const&) = delete;
  char const* get() const { return m_text; }

 private:
  char m_small[128];
  std::string m_big;
  char const* m_text;
};

// The offset in `text` of what `search(text, pattern)` finds, both as
// zero-terminated strings, or nullopt when it finds nothing.
template <class Search>
std::optional<std::size_t> first_offset(std::string_view text, std::string_view pattern,
                                        Search search) {
  Terminated const t(text);
  char const* const at = search(t.get(), Terminated(pattern).get());
  if (at == nullptr) return std::nullopt;
  return static_cast<std::size_t>(at - t.get());
}

}  // namespace detail

// The map of `definition`: nullopt when the library refuses it (a warning
// says why); an owner of NULL, the identity map, when it maps nothing.
inline std::optional<Map> define_map(std::string_view definition) {
  void* const map = _zmapdefine(detail::Terminated(definition).get());
  if (map == ZEAL_STR_BAD_MAP) return std::nullopt;
  return Map(map);
}

// `pattern` compiled: NULL when it does not compile (Tcl_GetRegError()
// says why).
inline Regex compile(std::string_view pattern) {
  return Regex(Tcl_RegExpCompile(detail::Terminated(pattern).get()));
}

// A heap copy of `s`.
inline HeapCopy copy(std::string_view s) {
  return HeapCopy(_zstrdupalloc(detail::Terminated(s).get(), 0));
}

// ---- comparing and searching --------------------------------------------------

// -1, 0 or +1, bytes compared unsigned; `icompare` ignores the case of ASCII
// letters.
inline int compare(std::string_view a, std::string_view b) {
  return _zstrcmp(detail::Terminated(a).get(), detail::Terminated(b).get());
}
inline int icompare(std::string_view a, std::string_view b) {
  return _zstricmp(detail::Terminated(a).get(), detail::Terminated(b).get());
}

// The offset of the first occurrence of `pattern` in `text`, or nullopt;
// `ifind` ignores the case of ASCII letters, the map form compares through
// `map`.
inline std::optional<std::size_t> find(std::string_view text, std::string_view pattern) {
  return detail::first_offset(text, pattern,
                              [](char const* t, char const* p) { return _zstrstr(t, p); });
}
inline std::optional<std::size_t> ifind(std::string_view text, std::string_view pattern) {
  return detail::first_offset(text, pattern,
                              [](char const* t, char const* p) { return _zstristr(t, p); });
}
inline std::optional<std::size_t> find(Map const& map, std::string_view text,
                                       std::string_view pattern) {
  return detail::first_offset(
      text, pattern, [&map](char const* t, char const* p) { return _zmapstrstr(map.get(), t, p); });
}

// ---- new strings --------------------------------------------------------------

// `text` with every occurrence of `from` (not empty) replaced by `to`, from
// left to right without overlap; `ireplace_all` finds them ignoring the
// case of ASCII letters.
inline std::string replace_all(std::string_view text, std::string_view from, std::string_view to,
                               bool ignore_case = false) {
  if (from.empty()) return std::string(text);
  // Room for the longest result: every from-length stretch replaced.
  std::size_t room = text.size();
  if (to.size() > from.size()) room += text.size() / from.size() * (to.size() - from.size());
  std::string result(text);
  result.resize(room + 1, '\0');
  detail::Terminated const f(from), t(to);
  auto const size = static_cast<unsigned long>(room);
  if (ignore_case) {
    _zstriNreplace(result.data(), f.get(), t.get(), size);
  } else {
    _zstrNreplace(result.data(), f.get(), t.get(), size);
  }
  result.resize(std::strlen(result.c_str()));
  return result;
}
inline std::string ireplace_all(std::string_view text, std::string_view from, std::string_view to) {
  return replace_all(text, from, to, true);
}

// `text` without its leading and trailing spaces.
inline std::string trimmed(std::string_view text) {
  std::string s(text);
  _zstrbtrim(s.data());
  s.resize(std::strlen(s.c_str()));
  return s;
}

// `quote` + `text` + `quote`, whatever the length.
inline std::string quoted(std::string_view text, char quote = '\'') {
  std::string s(text);
  s.resize(text.size() + 3, '\0');
  _zstrenquote(s.data(), quote);
  s.resize(text.size() + 2);
  return s;
}

// `text` translated through `map`.
inline std::string translated(Map const& map, std::string_view text) {
  std::string s(text);
  _zmapstrapply(map.get(), s.data());
  return s;
}

// ---- regular expressions ------------------------------------------------------

// True when `re` matches somewhere in `text`.  A NULL expression is no
// match.
inline bool matches(Regex const& re, std::string_view text) {
  return Tcl_RegExpMatch(detail::Terminated(text).get(), re.get()) == 1;
}

// What group `index` (0: the whole match) matched in the first match of
// `re` in `text`; nullopt when there is no match or the group took no part.
inline std::optional<std::string> group(Regex const& re, std::string_view text, int index = 0) {
  detail::Terminated const t(text);
  if (Tcl_RegExpMatch(t.get(), re.get()) != 1) return std::nullopt;
  char const *start = nullptr, *end = nullptr;
  if (Tcl_RegExpRange(re.get(), index, &start, &end) != 1 || start == nullptr) return std::nullopt;
  return std::string(start, static_cast<std::size_t>(end - start));
}

// ---- SQL -----------------------------------------------------------------------

// Whether `word` is reserved in the T-SQL (Oracle) server version `version`.
inline bool is_tsql_reserved(std::string_view word, int version) {
  return _zistsqlresword(detail::Terminated(word).get(), version) != 0;
}
inline bool is_oracle_reserved(std::string_view word, int version) {
  return _zisosqlresword(detail::Terminated(word).get(), version) != 0;
}

}  // namespace zelstr

#endif  // ZELSTR_ZELSTR_HPP
