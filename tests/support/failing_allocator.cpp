// failing_allocator.cpp - malloc, calloc, realloc, free, the aligned forms
// and every global operator new and delete, replaced for the test program.
//
// Everything forwards to the C library's own allocator (__libc_malloc and
// its kin, which glibc exports for replacements like this one), so the
// blocks stay interchangeable with those allocated before the program's
// own code ran.  Nothing here allocates: the remembered blocks live in a
// static open-addressing table.
#include "support/failing_allocator.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* p, std::size_t size);
void __libc_free(void* p);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace zelstr::test::alloc {
namespace {

int g_depth = 0;       // library calls under way
bool g_quiet = false;  // set while a failure is thrown: its exception is not counted
Failing g_how = Failing::kNothing;
std::size_t g_target = 0;
std::size_t g_counted = 0;
std::size_t g_failed = 0;

// The blocks allocated inside library calls: linear probing, deletion by
// shifting the following entries back (no tombstones).
constexpr std::size_t kSlots = std::size_t{1} << 18;
std::uintptr_t g_slots[kSlots];
std::size_t g_live = 0;

std::size_t slot_of(std::uintptr_t p) {
  return static_cast<std::size_t>((p >> 4) * 0x9E3779B97F4A7C15u) & (kSlots - 1);
}

void remember(void* block) {
  auto const p = reinterpret_cast<std::uintptr_t>(block);
  if (g_live + 1 >= kSlots) std::abort();  // the table would never find a free slot
  std::size_t i = slot_of(p);
  while (g_slots[i] != 0) i = (i + 1) & (kSlots - 1);
  g_slots[i] = p;
  ++g_live;
}

// Forgets `block`; false when it was not remembered.
bool forget(void* block) {
  auto const p = reinterpret_cast<std::uintptr_t>(block);
  std::size_t i = slot_of(p);
  while (g_slots[i] != p) {
    if (g_slots[i] == 0) return false;
    i = (i + 1) & (kSlots - 1);
  }
  // Moves back each following entry that may no longer be reached.
  for (std::size_t j = (i + 1) & (kSlots - 1); g_slots[j] != 0; j = (j + 1) & (kSlots - 1)) {
    std::size_t const home = slot_of(g_slots[j]);
    bool const reachable = i <= j ? (home > i && home <= j) : (home > i || home <= j);
    if (!reachable) {
      g_slots[i] = g_slots[j];
      i = j;
    }
  }
  g_slots[i] = 0;
  --g_live;
  return true;
}

// Counts one allocation of a library call; true when it must fail.
bool must_fail() {
  if (g_depth == 0 || g_quiet) return false;
  ++g_counted;
  bool const fail = (g_how == Failing::kOnce && g_counted == g_target) ||
                    (g_how == Failing::kFromThenOn && g_counted >= g_target);
  if (fail) ++g_failed;
  return fail;
}

void* kept(void* block) {
  if (block != nullptr && g_depth > 0 && !g_quiet) remember(block);
  return block;
}

void* refused() {
  errno = ENOMEM;
  return nullptr;
}

void* aligned(std::size_t alignment, std::size_t size) {
  if (must_fail()) return refused();
  return kept(__libc_memalign(alignment, size));
}

// operator new: a failure is a std::bad_alloc, whose own memory is not an
// allocation of the library.
[[noreturn]] void throw_bad_alloc() {
  g_quiet = true;
  try {
    throw std::bad_alloc();
  } catch (...) {
    g_quiet = false;
    throw;
  }
}

void* new_block(std::size_t size) {
  void* const p = std::malloc(size != 0 ? size : 1);
  if (p == nullptr) throw_bad_alloc();
  return p;
}

void* new_aligned(std::size_t size, std::align_val_t alignment) {
  void* const p = aligned(static_cast<std::size_t>(alignment), size != 0 ? size : 1);
  if (p == nullptr) throw_bad_alloc();
  return p;
}

}  // namespace

LibraryCall::LibraryCall() noexcept { ++g_depth; }
LibraryCall::~LibraryCall() { --g_depth; }

void arm(std::size_t n, Failing how) noexcept {
  g_how = how;
  g_target = n;
  g_counted = 0;
  g_failed = 0;
}

std::size_t counted() noexcept { return g_counted; }
std::size_t failed() noexcept { return g_failed; }
std::size_t live_blocks() noexcept { return g_live; }

}  // namespace zelstr::test::alloc

namespace alloc = zelstr::test::alloc;

extern "C" {

void* malloc(std::size_t size) {
  if (alloc::must_fail()) return alloc::refused();
  return alloc::kept(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
  if (alloc::must_fail()) return alloc::refused();
  return alloc::kept(__libc_calloc(count, size));
}

void* realloc(void* p, std::size_t size) {
  if (p == nullptr) return malloc(size);
  if (size == 0) {
    free(p);
    return nullptr;
  }
  if (alloc::must_fail()) return alloc::refused();
  void* const moved = __libc_realloc(p, size);
  if (moved == nullptr) return nullptr;
  // A block of the library stays one, and so does one a library call grows.
  if (alloc::forget(p) || alloc::g_depth > 0) alloc::remember(moved);
  return moved;
}

void free(void* p) {
  if (p == nullptr) return;
  alloc::forget(p);
  __libc_free(p);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return alloc::aligned(alignment, size);
}

void* memalign(std::size_t alignment, std::size_t size) { return alloc::aligned(alignment, size); }

int posix_memalign(void** out, std::size_t alignment, std::size_t size) {
  void* const p = alloc::aligned(alignment, size);
  if (p == nullptr) return ENOMEM;
  *out = p;
  return 0;
}

}  // extern "C"

void* operator new(std::size_t size) { return alloc::new_block(size); }
void* operator new[](std::size_t size) { return alloc::new_block(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return std::malloc(size != 0 ? size : 1);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return std::malloc(size != 0 ? size : 1);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return alloc::new_aligned(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return alloc::new_aligned(size, alignment);
}
void* operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
  return alloc::aligned(static_cast<std::size_t>(alignment), size != 0 ? size : 1);
}
void* operator new[](std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
  return alloc::aligned(static_cast<std::size_t>(alignment), size != 0 ? size : 1);
}

void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, std::nothrow_t const&) noexcept { std::free(p); }
void operator delete[](void* p, std::nothrow_t const&) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete(void* p, std::align_val_t, std::nothrow_t const&) noexcept { std::free(p); }
void operator delete[](void* p, std::align_val_t, std::nothrow_t const&) noexcept { std::free(p); }
