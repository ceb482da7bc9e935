// ctype_key.cpp - the C library's toupper table moves when the calling
// thread's LC_CTYPE locale changes, so its address tells.
#include "platform/ctype_key.h"

#include <ctype.h>

namespace zelstr::platform {

bool ctype_changed(CtypeKey& key) {
  void const* const table = *__ctype_toupper_loc();
  if (table == key.table) return false;
  key.table = table;
  return true;
}

}  // namespace zelstr::platform
