// dump.cpp - CGrwStr::get_dump: the object shown line by line.
#include <cstdint>

#include "frame/messages.h"
#include "zelstr/grwstr.h"
#include "zelstr/scratch.h"

namespace {

namespace msg = zelstr::frame::msg;

// Addresses are shown by their low 32 bits, as the format has them.
unsigned low_bits(void const* p) {
  return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(p));
}

}  // namespace

// Settings first, then the list of registered pointers, the length, the
// buffer and its end, the text, and the registered pointers as offsets into
// the buffer (-1 for one that is NULL).  Every append is checked: a dump
// that lost a line for lack of memory is not handed out (NULL).
char const* CGrwStr::get_dump() const noexcept {
  CGrwStr dump(1024);
  bool ok =
      dump.strcatf(msg::kDumpGrowSize, m_dwGrowSize) != nullptr &&
      dump.strcatf(msg::kDumpGrowFactor, m_dwGrowFactor) != nullptr &&
      dump.strcatf(msg::kDumpSize, m_dwSize) != nullptr &&
      dump.strcatf(msg::kDumpResync, low_bits(m_apResync), m_nQtyUsed, m_nQtyAlloc) != nullptr &&
      dump.strcatf(msg::kDumpLen, m_dwLen) != nullptr;
  if (ok && m_lpszHOS == nullptr) {
    ok = dump.strcatf(msg::kDumpNoEos) != nullptr;
  } else if (ok) {
    ok = dump.strcatf(msg::kDumpHos, low_bits(m_lpszHOS), _zstrprintf("-%u", m_dwLen)) != nullptr &&
         dump.strcatf(msg::kDumpEos, low_bits(m_lpszEOS)) != nullptr &&
         dump.strcatf(msg::kDumpText, m_lpszHOS) != nullptr &&
         dump.strcat(msg::kDumpListOpen) != nullptr;
    for (int i = 0; ok && i < m_nQtyUsed; ++i) {
      char const* const p = *m_apResync[i];
      ok = dump.strcatf(msg::kDumpListItem, p != nullptr ? static_cast<int>(p - m_lpszHOS) : -1) !=
           nullptr;
    }
    ok = ok && dump.strcat(msg::kDumpListClose) != nullptr;
  }
  return ok ? _zstrclone(dump.gethos(), 0) : nullptr;
}
