// map_block.cpp - map blocks from the C heap: the owner word holds the
// block's own address.
#include "platform/map_block.h"

#include <cstdlib>

namespace zelstr::platform {
namespace {

constexpr std::size_t kOwnerWord = 8;
constexpr std::size_t kBlockSize = kOwnerWord + 256;

}  // namespace

unsigned char* allocate_map_block() {
  auto* const block = static_cast<unsigned char*>(std::calloc(1, kBlockSize));
  if (block == nullptr) return nullptr;
  *reinterpret_cast<void**>(block) = block;
  return block + kOwnerWord;
}

MapRelease release_map_block(unsigned char* table) {
  void* const owner = *reinterpret_cast<void**>(table - kOwnerWord);
  if (owner != table - kOwnerWord) return MapRelease{false, false};  // not a map block
  std::free(owner);
  return MapRelease{true, true};
}

}  // namespace zelstr::platform
