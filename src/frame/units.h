// units.h - the source units of the module, as the error-handler service
// knows them.
//
// Every warning record names the unit that reported it.  The fifteen units
// register with the service during static initialisation, before the
// module's entry runs, and keep their short name and registration number.
#ifndef ZELSTR_FRAME_UNITS_H
#define ZELSTR_FRAME_UNITS_H

namespace zelstr::frame {

enum class Unit {
  codeformater,
  connectionenv,
  connforplsqlstrfncs,
  connforstrfncs,
  connfortsqlstrfncs,
  dllmain,
  findmanystrhoary,
  findmanystrold,
  growingstring,
  zeal_str,
  zealstrhelper,
  zelstroraclefnc,
  zelstrsqlserverfnc,
  regexptcl,
  stringscan,
};
inline constexpr int kUnitCount = 15;

// The unit's short name as the service gave it ("" before registration).
char const* unit_short_name(Unit unit);

// The unit's registration number with the service (0 before registration).
int unit_registration(Unit unit);

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_UNITS_H
