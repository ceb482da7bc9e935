// types.h - values shared by every part of the library.
//
// Threads: only constants are defined here; they may be used on any thread.
#ifndef ZELSTR_TYPES_H
#define ZELSTR_TYPES_H

#include <cstdint>

// Error result of the length-variation functions: the signed 32-bit value
// -2147483647 (bit pattern 0x80000001).
#define ZEAL_STR_ERR (-2147483647)

// A character map handle (map.h): the address of the map's 256-byte table,
// passed as void*.  NULL is the identity map.  A name for the type only:
// the functions that take or give a ZelStrMap take or give void*.
typedef void* ZelStrMap;

// The invalid map handle: the same bit pattern, sign-extended to a pointer.
#define ZEAL_STR_BAD_MAP (reinterpret_cast<ZelStrMap>(static_cast<std::intptr_t>(ZEAL_STR_ERR)))

#endif  // ZELSTR_TYPES_H
