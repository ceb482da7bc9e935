// findall_stream.cpp - CFindAllStr one window at a time.
#include "tool/findall_stream.h"

#include <algorithm>
#include <utility>

#include "zelstr/findall.h"

namespace zelstr::tool {

FindAllStream::FindAllStream(std::string pattern, bool insensitive, bool overlap, std::size_t limit,
                             Found found)
    : m_pattern(std::move(pattern)),
      m_insensitive(insensitive),
      m_overlap(overlap),
      m_limit(limit),
      m_found(std::move(found)) {}

void FindAllStream::write(std::string_view text) {
  m_window.append(text);
  if (m_window.size() >= m_limit) search();
}

void FindAllStream::finish() { search(); }

// Reports the occurrences of the window, all found by one call, then keeps
// its tail.
void FindAllStream::search() {
  CFindAllStr find(m_window.c_str(), m_pattern.c_str(), m_insensitive ? 1 : 0);
  find.FindAll(
      [](char const* at, void* context) {
        auto& self = *static_cast<FindAllStream*>(context);
        std::uint64_t const offset =
            self.m_base + static_cast<std::uint64_t>(at - self.m_window.c_str());
        if (self.m_overlap || offset >= self.m_free_from) {
          self.m_found(offset);
          self.m_free_from = offset + self.m_pattern.size();
        }
        return 1;
      },
      this);
  std::size_t const keep = std::min(m_window.size(), m_pattern.size() - 1);
  m_base += m_window.size() - keep;
  m_window.erase(0, m_window.size() - keep);
}

}  // namespace zelstr::tool
