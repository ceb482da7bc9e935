// ctype_key.h - tells when the C library's character mapping may have
// changed.
#ifndef ZELSTR_PLATFORM_CTYPE_KEY_H
#define ZELSTR_PLATFORM_CTYPE_KEY_H

namespace zelstr::platform {

// True when toupper may map some byte differently than it did the last time
// this was asked (the first call returns true).  Cheap enough to ask on
// every case-insensitive search.
bool ctype_changed();

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_CTYPE_KEY_H
