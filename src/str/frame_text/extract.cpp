// extract.cpp - _zstrextract, _zstriextract: the pieces between a header and
// a footer, one call at a time.
#include "zelstr/extract.h"

#include <cstring>

#include "frame/per_thread.h"
#include "str/report.h"
#include "zelstr/position.h"
#include "zelstr/search.h"

using namespace zelstr::str;

namespace {

// One walk: where it stands, and the byte the last piece's NUL replaced.
struct Walk {
  char* position = nullptr;  // NULL: no walk running
  char saved = '\0';
  std::size_t header_length = 0;
  std::size_t footer_length = 0;
};

// A thread's two walks: one for each function.
struct Walks {
  Walk exact;
  Walk ignoring_case;
};
using WalkSlot = zelstr::frame::PerThread<Walks, zelstr::frame::ThreadSlot::kExtract>;

// A character search for fewer than two characters (an empty footer finds
// the terminator), the substring search otherwise.
char* find(char* from, char const* what, std::size_t length, bool ignore_case) {
  if (length < 2) return ignore_case ? _zstrichr(from, *what) : _zstrchr(from, *what);
  return ignore_case ? _zstristr(from, what) : _zstrstr(from, what);
}

void put_back(Walk& walk) {
  if (walk.position != nullptr) *walk.position = walk.saved;
}

char* extract(char* string, char const* header, char const* footer, int finished, Walk& walk,
              bool ignore_case) {
  if (finished != 0 && finished != 1) {
    warn(msg::kExtractBadFinished);
    return nullptr;
  }
  if (finished == 0) {
    put_back(walk);
    walk = Walk{};
    return nullptr;
  }
  if (header == nullptr || footer == nullptr) {
    warn(msg::kExtractNullHeaderFooter);
    return nullptr;
  }
  if (walk.position != nullptr) {
    put_back(walk);
    if (*header == '\0') walk.position += walk.footer_length;
    if (string != nullptr) {
      warn(msg::kExtractStringAgain);
      return nullptr;
    }
  } else {
    if (string == nullptr) {
      warn(msg::kExtractNullFirstString);
      return nullptr;
    }
    walk.position = string;
  }
  walk.saved = *walk.position;
  walk.header_length = std::strlen(header);
  walk.footer_length = std::strlen(footer);
  char* piece = walk.position;
  if (walk.header_length != 0) {
    char* const at = find(walk.position, header, walk.header_length, ignore_case);
    if (at == nullptr) return nullptr;
    piece = at + walk.header_length;
  } else if (walk.footer_length == 0) {
    walk.position += std::strlen(walk.position);
    walk.saved = '\0';
    return walk.position;
  }
  char* const end = find(piece, footer, walk.footer_length, ignore_case);
  if (end == nullptr) return nullptr;
  walk.position = end;
  walk.saved = *end;
  *end = '\0';
  return piece;
}

}  // namespace

char* _zstrextract(char* string, char const* header, char const* footer, int finished) noexcept {
  return extract(string, header, footer, finished, WalkSlot::get().exact, false);
}

char* _zstriextract(char* string, char const* header, char const* footer, int finished) noexcept {
  return extract(string, header, footer, finished, WalkSlot::get().ignoring_case, true);
}
