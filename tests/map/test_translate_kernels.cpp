// Each translation kernel the build has (and this processor runs) against
// a byte loop, on random tables and spans: the span's bytes translated,
// every byte around it untouched, also where the kernel may read and write
// back the bytes after the span.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "frame/processor.h"
#include "map/translate.h"

namespace {

namespace map = zelstr::map;
using zelstr::frame::Isa;

// Tables as maps are made: the identity, a case map (two rows), a few rows
// changed, every byte anywhere.
void random_table(std::mt19937& rng, int kind, map::Byte (&table)[256]) {
  for (int c = 0; c < 256; ++c) table[c] = static_cast<map::Byte>(c);
  if (kind == 1) {
    for (int c = 'a'; c <= 'z'; ++c) table[c] = static_cast<map::Byte>(c - 32);
  } else if (kind == 2) {
    for (int n = 1 + static_cast<int>(rng() % 5); n > 0; --n) table[rng() % 256] = rng() % 256;
  } else if (kind == 3) {
    for (auto& image : table) image = static_cast<map::Byte>(rng());
  }
}

TEST(TranslateKernels, EachKernelTranslatesAsAByteLoopDoes) {
  int kernels = 0;
  for (Isa isa : {Isa::kPortable, Isa::kSsse3, Isa::kAvx2, Isa::kNeon}) {
    if (isa > zelstr::frame::processor_isa()) continue;
    map::Byte table[256];
    for (int c = 0; c < 256; ++c) table[c] = static_cast<map::Byte>(255 - c);
    if (isa != Isa::kPortable && !map::Translator(isa, table).kernel()) continue;
    ++kernels;
    std::mt19937 rng(static_cast<unsigned>(isa) * 104729 + 3);
    for (int round = 0; round < 4000; ++round) {
      random_table(rng, round % 4, table);
      std::string text(rng() % 400 + 2, '\0');
      for (char& c : text) c = static_cast<char>(rng());
      std::size_t const from = rng() % text.size(), to = from + rng() % (text.size() - from + 1);
      std::string want = text;
      for (std::size_t i = from; i < to; ++i) {
        want[i] = static_cast<char>(table[static_cast<map::Byte>(want[i])]);
      }
      auto* const bytes = reinterpret_cast<map::Byte*>(text.data());
      map::Translator const translate(isa, table);
      if (round % 2 == 0) {
        translate(bytes + from, bytes + to);
      } else {  // the bytes after the span may be read and written back
        translate(bytes + from, bytes + to, bytes + text.size());
      }
      ASSERT_EQ(want, text) << "kernel " << static_cast<int>(isa) << ", round " << round;
    }
  }
  EXPECT_GE(kernels, 1);
}

}  // namespace
