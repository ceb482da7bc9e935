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

// Filed records and NULL hand-overs since the last clear().  Heap objects
// never freed, so that reports made during static destruction stay safe.
std::vector<errsvc::Record>& filed() {
  static auto* const list = new std::vector<errsvc::Record>;
  return *list;
}
std::size_t g_null_records = 0;
errsvc::Sink g_sink = nullptr;
std::atomic<unsigned> g_failing_allocations{0};

char const* text_or_empty(char const* s) { return s ? s : ""; }

bool warnings_to_stderr() {
  char const* v = std::getenv("ZELSTR_WARNINGS");
  return v != nullptr && std::strcmp(v, "stderr") == 0;
}

void print_to_stderr(errsvc::Record const& r) {
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

CErrorDescription::CErrorDescription(int line, char const* file, char const* function, int id,
                                     char const* text, int severity, unsigned extra)
    : m_nLine(line),
      m_strFile(text_or_empty(file)),
      m_strFunction(text_or_empty(function)),
      m_nId(id),
      m_strText(text_or_empty(text)),
      m_nSeverity(severity),
      m_uExtra(extra) {}

int ErrHandDLL_AddError(CErrorDescription* record) {
  errsvc::Sink sink;
  errsvc::Record copy;
  int filed_count;
  {
    CriticalSectionGuard guard(errsvc::detail::service_lock());
    if (record == nullptr) {
      ++g_null_records;
      return static_cast<int>(filed().size());
    }
    copy = errsvc::Record{record->Line(), record->File(),     record->Function(), record->Id(),
                          record->Text(), record->Severity(), record->Extra()};
    delete record;
    filed().push_back(copy);
    filed_count = static_cast<int>(filed().size());
    sink = g_sink;
  }
  if (warnings_to_stderr()) print_to_stderr(copy);
  if (sink != nullptr) sink(copy);
  return filed_count;
}

namespace errsvc {

std::vector<Record> records() {
  CriticalSectionGuard guard(detail::service_lock());
  return filed();
}

void clear() {
  CriticalSectionGuard guard(detail::service_lock());
  filed().clear();
  g_null_records = 0;
}

Sink set_sink(Sink sink) {
  CriticalSectionGuard guard(detail::service_lock());
  Sink previous = g_sink;
  g_sink = sink;
  return previous;
}

std::size_t null_record_count() {
  CriticalSectionGuard guard(detail::service_lock());
  return g_null_records;
}

void fail_next_record_allocations(unsigned count) { g_failing_allocations = count; }

}  // namespace errsvc
