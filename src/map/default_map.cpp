// default_map.cpp - the module's default character map, released at unload.
#include "map/default_map.h"

#include "frame/module.h"
#include "zelstr/map.h"

namespace zelstr::map {
namespace {

void* g_default_map = nullptr;

// Neither the identity (NULL) nor the invalid map own memory.
void release_default_map() {
  if (g_default_map != nullptr && g_default_map != ZEAL_STR_BAD_MAP) _zmapfree(g_default_map);
  g_default_map = nullptr;
}

ZELSTR_MODULE_HOOK frame::UnloadHook g_release(frame::UnloadStep::kDefaultMap, release_default_map);

}  // namespace

void*& default_map() { return g_default_map; }

}  // namespace zelstr::map
