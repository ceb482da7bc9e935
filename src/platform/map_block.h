// map_block.h - the memory block of a character map.
//
// A map is a 256-byte table handed out by its address; the word just before
// the table holds the block's owner (on Windows the global-heap handle), so
// that the table address alone is enough to release the block.
#ifndef ZELSTR_PLATFORM_MAP_BLOCK_H
#define ZELSTR_PLATFORM_MAP_BLOCK_H

namespace zelstr::platform {

// A zero-filled block with its owner word before the table; the table's
// address, or NULL when memory is short.
unsigned char* allocate_map_block();

// What releasing a block went through.
struct MapRelease {
  bool unlocked;  // the block was let go of cleanly
  bool freed;     // and returned to the system
};

MapRelease release_map_block(unsigned char* table);

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_MAP_BLOCK_H
