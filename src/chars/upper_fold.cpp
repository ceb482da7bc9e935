// upper_fold.cpp - toupper, tabulated.
#include "chars/upper_fold.h"

#include <cctype>

#include "frame/per_thread.h"
#include "platform/ctype_key.h"

namespace zelstr::chars {

namespace {

void build(UpperFold& fold) {
  int count[256] = {};
  int first[256];
  for (int b = 0; b < 256; ++b) {
    fold.upper[b] = static_cast<unsigned char>(std::toupper(b));
    ++count[fold.upper[b]];
  }
  for (int u = 0; u < 256; ++u) first[u] = -1;
  for (int b = 0; b < 256; ++b) {
    unsigned char const u = fold.upper[b];
    fold.other[b] = static_cast<unsigned char>(b);
    fold.crowded[b] = count[u] > 2;
    if (first[u] < 0) {
      first[u] = b;
    } else {  // pair b with the first byte of its group
      fold.other[b] = static_cast<unsigned char>(first[u]);
      fold.other[first[u]] = static_cast<unsigned char>(b);
    }
  }
}

}  // namespace

namespace {

// A thread's table and the mapping it was built for.
struct ThreadFold {
  UpperFold fold;
  platform::CtypeKey key;
};
using FoldSlot = frame::PerThread<ThreadFold, frame::ThreadSlot::kUpperFold>;

}  // namespace

UpperFold const& upper_fold() {
  ThreadFold& t = FoldSlot::get();
  if (platform::ctype_changed(t.key)) build(t.fold);
  return t.fold;
}

}  // namespace zelstr::chars
