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
// the buffer (-1 for one that is NULL).
char const* CGrwStr::get_dump() const {
  CGrwStr dump(1024);
  dump.strcatf(msg::kDumpGrowSize, m_dwGrowSize);
  dump.strcatf(msg::kDumpGrowFactor, m_dwGrowFactor);
  dump.strcatf(msg::kDumpSize, m_dwSize);
  dump.strcatf(msg::kDumpResync, low_bits(m_apResync), m_nQtyUsed, m_nQtyAlloc);
  dump.strcatf(msg::kDumpLen, m_dwLen);
  if (m_lpszHOS == nullptr) {
    dump.strcatf(msg::kDumpNoEos);
    return _zstrclone(dump.gethos(), 0);
  }
  dump.strcatf(msg::kDumpHos, low_bits(m_lpszHOS), _zstrprintf("-%u", m_dwLen));
  dump.strcatf(msg::kDumpEos, low_bits(m_lpszEOS));
  dump.strcatf(msg::kDumpText, m_lpszHOS);
  dump.strcat(msg::kDumpListOpen);
  for (int i = 0; i < m_nQtyUsed; ++i) {
    char const* const p = *m_apResync[i];
    dump.strcatf(msg::kDumpListItem, p != nullptr ? static_cast<int>(p - m_lpszHOS) : -1);
  }
  dump.strcat(msg::kDumpListClose);
  return _zstrclone(dump.gethos(), 0);
}
