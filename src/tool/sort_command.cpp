// sort_command.cpp - zelstr sort: the lines of every input sorted by a sort
// order of the library or by a collator (ZealStrHelper).
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tool/command.h"
#include "tool/input.h"
#include "tool/invocation.h"
#include "zelstr/strhelper.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {

namespace {

struct ReadyOrder {
  char const* name;
  int order;
};

constexpr ReadyOrder kReadyOrders[] = {
    {"bytes", ZEAL_SORT_BYTES},
    {"ascii-ci", ZEAL_SORT_ASCII_CI},
    {"cp1252-ci-ai", ZEAL_SORT_CP1252_CI_AI},
    {"cp1252-ci-as", ZEAL_SORT_CP1252_CI_AS},
};

// The definition --order names: a ready order's name, or a definition.
char const* definition_of(char const* order) {
  for (ReadyOrder const& r : kReadyOrders) {
    if (std::strcmp(order, r.name) == 0) return _zsortreadydef(r.order);
  }
  return order;
}

// The order of the lines: the sort order of --order, the collator of
// --locale and --strength, or byte order; bad() when the library refused
// the definition (reported).
class LineOrder {
 public:
  explicit LineOrder(Invocation& inv) {
    char const* const locale = inv.value("--locale");
    char const* const strength = inv.value("--strength");
    if (locale != nullptr || strength != nullptr) {
      open_collator(inv, locale, strength);
      return;
    }
    char const* const order = inv.value("--order");
    if (order == nullptr) return;
    inv.clear_warning();
    m_order = _zsortdefine(definition_of(order));
    if (m_order == ZEAL_STR_BAD_MAP) {
      inv.error("bad sort order '%s': %s", order, inv.first_warning().c_str());
      m_order = nullptr;
      m_bad = true;
    }
  }
  ~LineOrder() { _zmapfree(m_order); }
  LineOrder(LineOrder const&) = delete;
  LineOrder& operator=(LineOrder const&) = delete;

  bool bad() const { return m_bad; }

  // -1, 0 or +1; equal lines tie unless `break_ties` orders them by bytes.
  int compare(char const* a, char const* b, bool break_ties) const {
    if (m_collator == nullptr) return _zsortstrcmp(m_order, a, b, break_ties ? 1 : 0);
    int const r = m_collator->compare(a, b);
    return r != 0 || !break_ties ? r : _zsortstrcmp(nullptr, a, b);
  }

  // Stable: lines that tie keep their input order.
  void sort(std::vector<char const*>& lines, bool break_ties) const {
    if (m_collator == nullptr) {
      _zsortstrarray(m_order, lines.data(), lines.size(), break_ties ? 1 : 0);
      return;
    }
    std::stable_sort(lines.begin(), lines.end(), [&](char const* a, char const* b) {
      return compare(a, b, break_ties) < 0;
    });
  }

 private:
  // --strength alone takes the root collation; --locale alone, tertiary.
  void open_collator(Invocation& inv, char const* locale, char const* strength) {
    int level = ZealStrHelper::tertiary;
    if (strength != nullptr) {
      if (std::strlen(strength) != 1 || strength[0] < '1' || strength[0] > '3') {
        inv.usage_error("--strength takes 1, 2 or 3, not '%s'", strength);
        m_bad = true;
        return;
      }
      level = strength[0] - '0';
    }
    inv.clear_warning();
    m_collator = std::make_unique<ZealStrHelper>(locale != nullptr ? locale : "", level);
    std::string const& warning = inv.first_warning();
    if (warning.empty()) return;
    // The library goes on with the root collation; the tool stops instead.
    if (warning.find("is not known to the collator") != std::string::npos) {
      inv.error("the collator knows no locale '%s'", locale);
    } else {
      inv.error("%s", warning.c_str());
    }
    m_bad = true;
  }

  void* m_order = nullptr;
  std::unique_ptr<ZealStrHelper> m_collator;
  bool m_bad = false;
};

// Every line of every input, each zero-terminated, in one text.
bool read_lines(Invocation& inv, std::string& text, std::vector<std::size_t>& starts) {
  for_each_line(inv, inv.operands(), [&](Input&, char* line, std::size_t length) {
    starts.push_back(text.size());
    text.append(line, length);
    text.push_back('\0');
    return true;
  });
  return inv.exit_status() != kError;
}

// The first line of each run of equal lines.
void keep_first_of_equals(LineOrder const& order, std::vector<char const*>& lines) {
  auto const end = std::unique(lines.begin(), lines.end(), [&](char const* a, char const* b) {
    return order.compare(a, b, false) == 0;
  });
  lines.erase(end, lines.end());
}

}  // namespace

// sort [--order ORDER|--locale L [--strength S]] [-r] [-u] [FILE...]: with -u equal lines are not
// told apart by their bytes, so the sort keeps them in input order and the
// first of each run stays; otherwise ties go by the bytes, and the reverse
// order is that order backwards.
int run_sort(Invocation& inv) {
  LineOrder const order(inv);
  if (order.bad()) return kError;
  std::string text;
  std::vector<std::size_t> starts;
  if (!read_lines(inv, text, starts)) return kError;
  std::vector<char const*> lines;
  lines.reserve(starts.size());
  for (std::size_t start : starts) lines.push_back(text.data() + start);
  bool const unique = inv.flag("-u");
  order.sort(lines, !unique);
  if (unique) keep_first_of_equals(order, lines);
  if (inv.flag("-r")) std::reverse(lines.begin(), lines.end());
  for (char const* line : lines) {
    write_out(line, std::strlen(line));
    write_out("\n", 1);
  }
  return lines.empty() ? kNothingFound : kFound;
}

}  // namespace zelstr::tool
