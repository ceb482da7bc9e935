// copy_before.cpp - copies that stop before a character or a set:
// _zstrcpybefore, _zstrncpybefore, _zstrgetbefore.
#include <cstring>

#include "str/copy_run.h"
#include "str/report.h"
#include "zelstr/copy.h"
#include "zelstr/scratch.h"

using namespace zelstr::str;

namespace {

// The NULL checks of one function name; true when both pointers are given.
bool checked(char* dest, char const* src, zelstr::frame::Message const& null_dest,
             zelstr::frame::Message const& null_src, int line = __builtin_LINE()) {
  if (dest == nullptr) {
    warn(null_dest, line);
    return false;
  }
  if (src == nullptr) {
    warn(null_src, line);
    return false;
  }
  return true;
}

char* copy_and_terminate(char* dest, char const* src, std::size_t run) {
  std::memmove(dest, src, run);
  dest[run] = '\0';
  return dest;
}

char* get_before(char const* src, std::size_t run) {
  char* const area = _zstrclone(nullptr, static_cast<unsigned long>(run + 1));
  return copy_and_terminate(area, src, run);
}

}  // namespace

char* _zstrcpybefore(char* dest, char const* src, char const* reject) noexcept {
  if (!checked(dest, src, msg::kCpybeforeNullDest, msg::kCpybeforeNullSrc)) return nullptr;
  return copy_and_terminate(dest, src, run_before(src, reject));
}

char* _zstrcpybefore(char* dest, char const* src, char c) noexcept {
  if (!checked(dest, src, msg::kCpybeforeNullDest, msg::kCpybeforeNullSrc)) return nullptr;
  return copy_and_terminate(dest, src, run_before(src, c));
}

// The set form reports under _zstrcpybefore(), as it always has.
char* _zstrncpybefore(char* dest, char const* src, char const* reject,
                      unsigned long count) noexcept {
  if (!checked(dest, src, msg::kCpybeforeNullDest, msg::kCpybeforeNullSrc)) return nullptr;
  std::uint32_t const n = count32(count);
  if (reject == nullptr || *reject == '\0' || n == 0) return strncpy_rule(dest, src, n);
  return copy_run(dest, src, std::strcspn(src, reject), n);
}

char* _zstrncpybefore(char* dest, char const* src, char c, unsigned long count) noexcept {
  if (!checked(dest, src, msg::kNcpybeforeNullDest, msg::kNcpybeforeNullSrc)) return nullptr;
  return copy_run(dest, src, run_before(src, c), count32(count));
}

char* _zstrgetbefore(char const* src, char const* reject) noexcept {
  if (src == nullptr) {
    warn(msg::kGetbeforeNullSrc);
    return nullptr;
  }
  return get_before(src, run_before(src, reject));
}

char* _zstrgetbefore(char const* src, char c) noexcept {
  if (src == nullptr) {
    warn(msg::kGetbeforeNullSrc);
    return nullptr;
  }
  return get_before(src, run_before(src, c));
}
