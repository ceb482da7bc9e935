// records.cpp - warning records: allocation, filing and inspection.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "errsvc/errsvc.h"
#include "service_lock.h"

namespace {

using zelstr::platform::CriticalSectionGuard;

// Filed records and NULL hand-overs since the last clear().  The list is
// never destroyed, so that reports made during static destruction stay
// safe; made empty, it needs no memory until the first record.
std::vector<errsvc::Record>& filed() noexcept {
  static auto& list = errsvc::detail::never_destroyed<std::vector<errsvc::Record>>();
  return list;
}
std::size_t g_null_records = 0;
errsvc::Sink g_sink = nullptr;
std::atomic<unsigned> g_failing_allocations{0};

char const* text_or_empty(char const* s) { return s ? s : ""; }

bool warnings_to_stderr() noexcept {
  char const* v = std::getenv("ZELSTR_WARNINGS");
  return v != nullptr && std::strcmp(v, "stderr") == 0;
}

void print_to_stderr(errsvc::Record const& r) noexcept {
  std::fprintf(stderr, "warning: severity %d, id %d, %s: %s\n", r.severity, r.id,
               r.function.c_str(), r.text.c_str());
}

// Takes one pending allocation failure, if any.
bool take_failure() {
  unsigned n = g_failing_allocations.load();
  while (n != 0) {
    if (g_failing_allocations.compare_exchange_weak(n, n - 1)) return true;
  }
  return false;
}

}  // namespace

void* CErrorDescription::operator new(std::size_t size) noexcept {
  if (take_failure()) return nullptr;
  return ::operator new(size, std::nothrow);
}

void CErrorDescription::operator delete(void* p) noexcept { ::operator delete(p); }

// The texts are copied into the record; when one of them cannot be, the
// record keeps none of them and says so (IsComplete), and the reporter files
// a NULL record instead.
CErrorDescription::CErrorDescription(int line, char const* file, char const* function, int id,
                                     char const* text, int severity, unsigned extra) noexcept
    : m_nLine(line), m_nId(id), m_nSeverity(severity), m_uExtra(extra), m_bComplete(false) {
  try {
    m_strFile = text_or_empty(file);
    m_strFunction = text_or_empty(function);
    m_strText = text_or_empty(text);
    m_bComplete = true;
  } catch (...) {
    m_strFile.clear();
    m_strFunction.clear();
    m_strText.clear();
  }
}

namespace {

// Keeps a copy of `record` in the list; false when memory is short.
bool file(CErrorDescription const& record, errsvc::Record& copy) noexcept {
  try {
    copy = errsvc::Record{record.Line(), record.File(),     record.Function(), record.Id(),
                          record.Text(), record.Severity(), record.Extra()};
    filed().push_back(copy);
    return true;
  } catch (...) {
    return false;
  }
}

// The sink is the program's code: what it throws stays here.
void tell(errsvc::Sink sink, errsvc::Record const& copy) noexcept {
  try {
    sink(copy);
  } catch (...) {
  }
}

}  // namespace

int ErrHandDLL_AddError(CErrorDescription* record) noexcept {
  errsvc::Sink sink;
  errsvc::Record copy;
  int filed_count;
  {
    CriticalSectionGuard guard(errsvc::detail::service_lock());
    bool const kept = record != nullptr && record->IsComplete() && file(*record, copy);
    delete record;
    filed_count = static_cast<int>(filed().size());
    if (!kept) {
      ++g_null_records;  // a record that could not be made or kept
      return filed_count;
    }
    sink = g_sink;
  }
  if (warnings_to_stderr()) print_to_stderr(copy);
  if (sink != nullptr) tell(sink, copy);
  return filed_count;
}

namespace errsvc {

std::vector<Record> records() noexcept {
  CriticalSectionGuard guard(detail::service_lock());
  try {
    return filed();
  } catch (...) {
    return {};
  }
}

void clear() noexcept {
  CriticalSectionGuard guard(detail::service_lock());
  std::vector<errsvc::Record>().swap(filed());  // the list's memory goes too
  g_null_records = 0;
}

Sink set_sink(Sink sink) noexcept {
  CriticalSectionGuard guard(detail::service_lock());
  Sink previous = g_sink;
  g_sink = sink;
  return previous;
}

std::size_t null_record_count() noexcept {
  CriticalSectionGuard guard(detail::service_lock());
  return g_null_records;
}

void fail_next_record_allocations(unsigned count) noexcept { g_failing_allocations = count; }

}  // namespace errsvc
