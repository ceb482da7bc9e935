// fixed_strings.cpp - reading and searching the words of grep -F and
// findall -f.
#include "tool/fixed_strings.h"

#include <cstdio>
#include <cstring>
#include <new>

#include "tool/input.h"
#include "tool/out_of_memory.h"
#include "tool/text_tools.h"
#include "zelstr/compare.h"

namespace zelstr::tool {
namespace {

// Appends the lines of `text` (a last line without its end, and a CR before
// an LF, are lines as grep reads them).
void add_lines(std::string_view text, std::vector<std::string>& out) {
  while (!text.empty()) {
    std::size_t const lf = text.find('\n');
    std::string_view line = text.substr(0, lf);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    out.emplace_back(line);
    if (lf == std::string_view::npos) break;
    text.remove_prefix(lf + 1);
  }
}

}  // namespace

bool FixedStrings::add_file(Invocation& inv, char const* name, std::vector<std::string>& out) {
  Input in(inv, name);
  if (!in.ok()) return false;
  std::string text;
  for (std::string_view b; !(b = in.next_block()).empty();) text.append(b);
  if (!in.ok()) return false;
  add_lines(text, out);
  return true;
}

bool FixedStrings::gather(Invocation& inv, char const* pattern, std::vector<std::string>& out,
                          bool& from_options) {
  for (char const* word : inv.values("-e")) out.emplace_back(word);
  for (char const* file : inv.values("-f")) {
    if (!add_file(inv, file, out)) return false;
  }
  from_options = inv.flag("-e") || inv.flag("-f");
  if (!from_options && pattern != nullptr) add_lines(pattern, out);
  if (!from_options && pattern != nullptr && *pattern == '\0') out.emplace_back();
  return true;
}

bool FixedStrings::read(Invocation& inv, char const* pattern, bool insensitive, bool words,
                        bool overlap, char const* word_set) {
  if (!gather(inv, pattern, m_words, m_from_options)) return false;
  return prepare(inv, insensitive, words, overlap, word_set);
}

bool FixedStrings::copy(Invocation& inv, FixedStrings const& other, bool insensitive, bool words,
                        char const* word_set) {
  m_words = other.m_words;
  m_from_options = other.m_from_options;
  return prepare(inv, insensitive, words, false, word_set);
}

bool FixedStrings::prepare(Invocation& inv, bool insensitive, bool words, bool overlap,
                           char const* word_set) {
  m_insensitive = insensitive;
  m_search.reset(new (std::nothrow) CFindManyStrHoary);
  bool added = m_search != nullptr;
  for (std::string const& w : m_words) {
    added = added && m_search->Add(w.c_str()) >= 0;
    m_lengths.push_back(w.size());
    m_has_empty = m_has_empty || w.empty();
    m_spans_lines = m_spans_lines || w.find_first_of("\r\n") != std::string::npos;
  }
  int const flags = (insensitive ? ZEAL_MANY_ICASE : 0) | (words ? ZEAL_MANY_WORDS : 0) |
                    (overlap ? ZEAL_MANY_OVERLAP : 0);
  char const* const set = word_set != nullptr ? word_set : kWordCharacters;
  if (!added || m_search->Prepare(flags, nullptr, words ? set : nullptr) != 1) {
    note_out_of_memory();
    inv.error("out of memory");
    return false;
  }
  return true;
}

bool FixedStrings::in(std::string_view line) const {
  if (m_has_empty) return true;
  int index = -1;
  return m_search->Find(line.data(), &index, static_cast<long>(line.size())) != nullptr;
}

bool FixedStrings::is_line(std::string_view line) const {
  for (std::string const& w : m_words) {
    if (w.size() == line.size() &&
        (m_insensitive && !line.empty() ? _zstrnicmp(w.c_str(), line.data(), line.size()) == 0
                                          : w == line)) {
      return true;
    }
  }
  return false;
}

char const* FixedStrings::find(char const* text, std::size_t length, char const* from) const {
  if (m_has_empty) return from;
  int index = -1;
  return m_search->Find(text, &index, static_cast<long>(length), from);
}

}  // namespace zelstr::tool
