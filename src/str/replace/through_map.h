// through_map.h - the replacement of every occurrence found through a
// character map, for the mapped replacement of the maps.
#ifndef ZELSTR_STR_REPLACE_THROUGH_MAP_H
#define ZELSTR_STR_REPLACE_THROUGH_MAP_H

namespace zelstr::str::replace {

// _zstrNreplace with `s1` found wherever the images of its bytes through
// `map` (a 256-byte table) stand: the run of _zstriNreplace with the map in
// place of toupper, linear in the length of `string`.  Equal `s1` and `s2`
// still replace (an occurrence may differ from `s1`).  Warning 120 for a
// NULL `s1` or `s2`.
char* replace_every_through(unsigned char const* map, char* string, char const* s1, char const* s2,
                            unsigned long size);

}  // namespace zelstr::str::replace

#endif  // ZELSTR_STR_REPLACE_THROUGH_MAP_H
