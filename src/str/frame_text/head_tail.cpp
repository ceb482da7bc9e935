// head_tail.cpp - _zstrishead, _zstristail.
#include <cstring>

#include "platform/case_compare.h"
#include "str/report.h"
#include "zelstr/quote.h"

using namespace zelstr::str;

namespace {

bool same_bytes(char const* a, char const* b, std::size_t n, int case_sensitive) {
  return (case_sensitive ? std::strncmp(a, b, n) : zelstr::platform::case_compare_n(a, b, n)) == 0;
}

}  // namespace

int _zstrishead(char const* string, char const* head, int caseSensitive) noexcept {
  if (string == nullptr || head == nullptr) {
    bool const both = string == nullptr && head == nullptr;
    warn(both ? msg::kIsheadBothNull : msg::kIsheadOneNull);
    return both ? 1 : 0;
  }
  return same_bytes(string, head, std::strlen(head), caseSensitive) ? 1 : 0;
}

int _zstristail(char const* string, char const* tail, int caseSensitive) noexcept {
  if (string == nullptr || tail == nullptr) {
    bool const both = string == nullptr && tail == nullptr;
    warn(both ? msg::kIstailBothNull : msg::kIstailOneNull);
    return both ? 1 : 0;
  }
  std::size_t const length = std::strlen(string), n = std::strlen(tail);
  if (n > length) return 0;
  return same_bytes(string + length - n, tail, n, caseSensitive) ? 1 : 0;
}
