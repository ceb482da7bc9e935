// per_thread.cpp - the threads' blocks of state, and their release when a
// thread ends or the module is unloaded.
#include "frame/per_thread.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <mutex>

#include "frame/memory.h"
#include "frame/module.h"
#include "platform/thread_key.h"

namespace zelstr::frame {
namespace {

constexpr int kSlots = static_cast<int>(ThreadSlot::kCount);

// One thread's objects, on the list of all threads' blocks.  The objects
// come first: detail::existing reads them through the thread's pointer.
struct Block {
  void* objects[kSlots] = {};
  Block* prev = nullptr;
  Block* next = nullptr;
};
static_assert(offsetof(Block, objects) == 0, "the objects must come first");

// Guards the list, the kinds, the fallbacks and the claim of the static
// block.  A std::mutex is constant-initialised and needs no destruction, so
// it serves before load and after unload alike.
std::mutex g_lock;
Block* g_blocks = nullptr;
detail::SlotKind const* g_kinds[kSlots] = {};
void* g_fallbacks[kSlots] = {};  // each slot's fallback object, once made

// The first thread to need state gets this block, whose objects are the
// slots' fallback objects: a program that calls the library from one
// thread allocates nothing for it.  When that thread ends, the block is
// emptied and the next thread to need state takes it.
Block g_static_block;
bool g_static_claimed = false;

void link(Block* b) {
  b->next = g_blocks;
  if (g_blocks != nullptr) g_blocks->prev = b;
  g_blocks = b;
}

void unlink(Block* b) {
  if (b->prev != nullptr) b->prev->next = b->next;
  if (b->next != nullptr) b->next->prev = b->prev;
  if (g_blocks == b) g_blocks = b->next;
  b->prev = b->next = nullptr;
}

bool listed(Block const* b) {
  for (Block const* i = g_blocks; i != nullptr; i = i->next) {
    if (i == b) return true;
  }
  return false;
}

// Destroys (or, for the static block, empties) a block that is no longer
// listed.  Outside the lock: an object's destructor may call the library (a
// cache releasing its expressions).
void destroy(Block* b) {
  // The kinds are read under the lock: another thread may be recording
  // one (detail::make) meanwhile.
  detail::SlotKind const* kinds[kSlots];
  {
    std::lock_guard<std::mutex> const guard(g_lock);
    std::copy(std::begin(g_kinds), std::end(g_kinds), kinds);
  }
  bool const is_static = b == &g_static_block;
  for (int i = 0; i < kSlots; ++i) {
    void* const object = b->objects[i];
    if (object == nullptr) continue;
    b->objects[i] = nullptr;
    if (is_static) {
      kinds[i]->reset(object);
    } else {
      kinds[i]->destroy(object);
    }
  }
  if (is_static) {
    std::lock_guard<std::mutex> const guard(g_lock);
    g_static_claimed = false;
  } else {
    delete b;
  }
}

// The system calls this when a thread that has a block ends (and, on some
// systems, for each block still set when the key is deleted).  A block the
// unload sequence already released is no longer listed.
void at_thread_exit(void* value) {
  auto* const b = static_cast<Block*>(value);
  {
    std::lock_guard<std::mutex> const guard(g_lock);
    if (!listed(b)) return;
    unlink(b);
  }
  destroy(b);
}

Block* this_block() { return static_cast<Block*>(platform::thread_pointer()); }

// This thread's block, made on first need: the static block when it is
// free, a new one otherwise; NULL without memory.
Block* own_block() {
  if (Block* const b = this_block()) return b;
  Block* b = nullptr;
  {
    std::lock_guard<std::mutex> const guard(g_lock);
    if (!g_static_claimed) {
      g_static_claimed = true;
      b = &g_static_block;
    }
  }
  if (b == nullptr) b = new (std::nothrow) Block;
  if (b == nullptr) return nullptr;
  if (!platform::set_thread_pointer(b)) {
    destroy(b);
    return nullptr;
  }
  std::lock_guard<std::mutex> const guard(g_lock);
  link(b);
  return b;
}

void* fallback_of(int slot, detail::SlotKind const& kind) {
  void* const object = kind.fallback();
  std::lock_guard<std::mutex> const guard(g_lock);
  g_fallbacks[slot] = object;
  return object;
}

void create_key() { platform::create_thread_key(at_thread_exit); }

// The last unload step: every block still listed, then the fallbacks.
void release_all() {
  Block* blocks;
  {
    std::lock_guard<std::mutex> const guard(g_lock);
    blocks = g_blocks;
    g_blocks = nullptr;
  }
  while (blocks != nullptr) {
    Block* const next = blocks->next;
    blocks->prev = blocks->next = nullptr;
    destroy(blocks);
    blocks = next;
  }
  platform::set_thread_pointer(nullptr);
  platform::delete_thread_key();
  for (int i = 0; i < kSlots; ++i) {
    if (g_fallbacks[i] != nullptr) g_kinds[i]->reset(g_fallbacks[i]);
  }
}

ZELSTR_MODULE_HOOK LoadHook g_create(LoadStep::kThreadKey, create_key);
ZELSTR_MODULE_HOOK UnloadHook g_release(UnloadStep::kThreadStates, release_all);

}  // namespace

namespace detail {

void* make(ThreadSlot slot, SlotKind const& kind) noexcept {
  int const i = static_cast<int>(slot);
  {
    std::lock_guard<std::mutex> const guard(g_lock);
    g_kinds[i] = &kind;
  }
  Block* const b = own_block();
  if (b == &g_static_block) return b->objects[i] = fallback_of(i, kind);
  void* const object = b != nullptr ? kind.make() : nullptr;
  if (object == nullptr) {
    note_allocation_failure();
    return fallback_of(i, kind);
  }
  b->objects[i] = object;
  return object;
}

void visit_all(ThreadSlot slot, void (*visit)(void*, void*), void* context) noexcept {
  int const i = static_cast<int>(slot);
  std::lock_guard<std::mutex> const guard(g_lock);
  for (Block* b = g_blocks; b != nullptr; b = b->next) {
    if (b->objects[i] != nullptr && b->objects[i] != g_fallbacks[i]) visit(b->objects[i], context);
  }
  if (g_fallbacks[i] != nullptr) visit(g_fallbacks[i], context);
}

void release_slot(ThreadSlot slot) noexcept {
  int const i = static_cast<int>(slot);
  // One object at a time is taken off its block under the lock and
  // destroyed outside it, as a thread's end does.
  for (;;) {
    void* object = nullptr;
    {
      std::lock_guard<std::mutex> const guard(g_lock);
      for (Block* b = g_blocks; b != nullptr && object == nullptr; b = b->next) {
        if (b->objects[i] != nullptr && b->objects[i] != g_fallbacks[i]) {
          object = b->objects[i];
          b->objects[i] = nullptr;
        }
      }
    }
    if (object == nullptr) break;
    g_kinds[i]->destroy(object);
  }
  if (g_fallbacks[i] != nullptr) g_kinds[i]->reset(g_fallbacks[i]);
}

}  // namespace detail
}  // namespace zelstr::frame
