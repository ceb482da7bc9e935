// default_map.h - the map the library applies where a caller gives none of
// its own (NULL until set); released when the module is unloaded.
#ifndef ZELSTR_MAP_DEFAULT_MAP_H
#define ZELSTR_MAP_DEFAULT_MAP_H

namespace zelstr::map {

void*& default_map();

}  // namespace zelstr::map

#endif  // ZELSTR_MAP_DEFAULT_MAP_H
