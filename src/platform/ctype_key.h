// ctype_key.h - tells when the C library's character mapping may have
// changed.
#ifndef ZELSTR_PLATFORM_CTYPE_KEY_H
#define ZELSTR_PLATFORM_CTYPE_KEY_H

namespace zelstr::platform {

// What identifies the mapping a table was built for: the C library's own
// table where it has one per locale, the locale's name elsewhere.  Each
// thread keeps its own, since a thread may have a locale of its own.
struct CtypeKey {
  void const* table = nullptr;
  char name[128] = {};
};

// True when toupper may map some byte differently than it did when `key`
// was last updated (a new key gives true); updates `key`.  Cheap enough to
// ask on every case-insensitive search.
bool ctype_changed(CtypeKey& key);

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_CTYPE_KEY_H
