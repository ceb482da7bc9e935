// failing_malloc.cpp - a shared object for LD_PRELOAD that makes the
// allocations of a program fail, to watch how the program copes.
//
// Counting starts when main is entered (the start-up of the C and C++
// libraries is left alone), and covers every malloc, calloc, realloc and
// aligned allocation from there to the end of the process, the program's
// own and its libraries' (operator new allocates through malloc).
//
//   ZELSTR_FAIL_ALLOCATION=N    the N-th allocation fails (N from 1)
//   ZELSTR_FAIL_ALLOCATION=N+   the N-th allocation and every later one fail
//   ZELSTR_COUNT_ALLOCATIONS=F  the number of allocations counted is written
//                               to file F when the process exits
#include <dlfcn.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* p, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

bool g_counting = false;
unsigned long g_count = 0;
unsigned long g_target = 0;  // 0: nothing fails
bool g_from_then_on = false;

bool must_fail() {
  if (!g_counting) return false;
  ++g_count;
  return g_target != 0 && (g_count == g_target || (g_from_then_on && g_count > g_target));
}

void* refused() {
  errno = ENOMEM;
  return nullptr;
}

using Main = int (*)(int, char**, char**);
Main g_main = nullptr;

// Run when this object is unloaded, after the program's and its libraries'
// own exit work.
__attribute__((destructor)) void write_count() {
  char const* const path = std::getenv("ZELSTR_COUNT_ALLOCATIONS");
  if (path == nullptr) return;
  g_counting = false;
  if (std::FILE* const f = std::fopen(path, "w")) {
    std::fprintf(f, "%lu\n", g_count);
    std::fclose(f);
  }
}

int counted_main(int argc, char** argv, char** env) {
  if (char const* const n = std::getenv("ZELSTR_FAIL_ALLOCATION")) {
    char* end = nullptr;
    g_target = std::strtoul(n, &end, 10);
    g_from_then_on = *end == '+';
  }
  g_counting = true;
  return g_main(argc, argv, env);
}

}  // namespace

extern "C" {

// The C library calls main through here: counting starts with main.
int __libc_start_main(Main main, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*rtld_fini)(), void* stack_end) {
  using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
  auto const start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
  g_main = main;
  return start(counted_main, argc, argv, init, fini, rtld_fini, stack_end);
}

void* malloc(std::size_t size) { return must_fail() ? refused() : __libc_malloc(size); }

void* calloc(std::size_t count, std::size_t size) {
  return must_fail() ? refused() : __libc_calloc(count, size);
}

void* realloc(void* p, std::size_t size) {
  if (p != nullptr && size == 0) return __libc_realloc(p, 0);
  return must_fail() ? refused() : __libc_realloc(p, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return must_fail() ? refused() : __libc_memalign(alignment, size);
}

void* memalign(std::size_t alignment, std::size_t size) {
  return must_fail() ? refused() : __libc_memalign(alignment, size);
}

int posix_memalign(void** out, std::size_t alignment, std::size_t size) {
  if (must_fail()) return ENOMEM;
  void* const p = __libc_memalign(alignment, size);
  if (p == nullptr) return ENOMEM;
  *out = p;
  return 0;
}

}  // extern "C"
