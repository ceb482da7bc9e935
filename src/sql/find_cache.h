// find_cache.h - the one-entry look-up cache of a connection-keyed list,
// kept by each thread.
//
// A list's Find remembers, per thread, the last key it was asked for and
// the answer.  The list counts the changes that can leave an answer
// dangling (an entry taken off it); a cache made before the latest such
// change is stale and is not used.
#ifndef ZELSTR_SQL_FIND_CACHE_H
#define ZELSTR_SQL_FIND_CACHE_H

#include <atomic>

namespace zelstr::sql {

template <class Entry>
struct FindCache {
  void const* connection = nullptr;
  char language = '\0';
  Entry* result = nullptr;
  unsigned long generation = 0;  // of the list, when the cache was written

  // The cached answer for the key, NULL when there is none or it is stale.
  Entry* hit(void const* key, char key_language, std::atomic<unsigned long> const& changes) const {
    if (result == nullptr || connection != key || language != key_language) return nullptr;
    return generation == changes.load(std::memory_order_acquire) ? result : nullptr;
  }
};

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_FIND_CACHE_H
