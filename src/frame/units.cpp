// units.cpp - registration of the source units and the module object.
#include "frame/units.h"

#include "errsvc/errsvc.h"
#include "frame/init_order.h"

namespace zelstr::frame {
namespace {

constexpr char const* kUnitPaths[kUnitCount] = {
    "codeformater",       "connectionenv", "connforplsqlstrfncs", "connforstrfncs",
    "connfortsqlstrfncs", "dllmain",       "findmanystrhoary",    "findmanystrold",
    "growingstring",      "zeal_str",      "zealstrhelper",       "zelstroraclefnc",
    "zelstrsqlserverfnc", "regexptcl",     "stringscan",
};

struct UnitState {
  char const* short_name;
  int registration;
};
UnitState g_units[kUnitCount];

struct UnitRegistrar {
  UnitRegistrar() {
    for (int i = 0; i < kUnitCount; ++i) {
      g_units[i].short_name = CMarkerDescription::RemovePath(kUnitPaths[i], 1);
      g_units[i].registration = ErrHandDLL_RegisterTowardsDll(kUnitPaths[i]);
    }
  }
};

ZELSTR_INIT_UNITS UnitRegistrar g_registrar;
// The module's one object of the service, alive from load to unload.
ZELSTR_INIT_UNITS CErrSvcDllModule g_module("Strings Library", "dllmain");

}  // namespace

char const* unit_short_name(Unit unit) {
  char const* name = g_units[static_cast<int>(unit)].short_name;
  return name ? name : "";
}

int unit_registration(Unit unit) { return g_units[static_cast<int>(unit)].registration; }

}  // namespace zelstr::frame
