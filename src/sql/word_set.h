// word_set.h - a sorted set of short upper-case words, built by the
// compiler from sorted word lists, and its binary search.
//
// The words are kept packed (packed_word.h), so a set in ascending packed
// order is in ascending byte order.  The first numbers of a set's words
// are kept apart from the rest: the binary search reads only them, and
// most words differ there.
//
// A set is built at compile time from lists (each sorted, checked by the
// compiler) with `+` (union) and `-` (difference), both merges of sorted
// sequences, so a version's set reads like the rule that defines it.
#ifndef ZELSTR_SQL_WORD_SET_H
#define ZELSTR_SQL_WORD_SET_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "sql/packed_word.h"

namespace zelstr::sql {

inline constexpr std::size_t kSetCapacity = 256;

// A sorted sequence of packed words, the compile-time form of a set.
struct WordSequence {
  std::size_t size = 0;
  PackedWord words[kSetCapacity] = {};

  constexpr void push(PackedWord const& w) {
    if (size == kSetCapacity) throw "a set holds at most 256 words";
    words[size++] = w;
  }
};

// The words of a sorted list; a list out of order, with a word longer than
// 24 bytes or with anything but upper-case letters, digits and "_" does not
// compile.
template <std::size_t N>
constexpr WordSequence words(char const* const (&list)[N]) {
  WordSequence seq;
  for (char const* text : list) {
    for (char const* c = text; *c != '\0'; ++c) {
      if (!((*c >= 'A' && *c <= 'Z') || (*c >= '0' && *c <= '9') || *c == '_')) {
        throw "a listed word holds only upper-case letters, digits and _";
      }
    }
    std::size_t length = 0;
    while (text[length] != '\0') ++length;
    if (length > kPackedBytes) throw "a listed word is at most 24 bytes long";
    PackedWord const w = pack_upper(text, length);
    if (seq.size > 0 && !(seq.words[seq.size - 1] < w)) throw "a list is sorted";
    seq.push(w);
  }
  return seq;
}

// Union of two sorted sequences.
constexpr WordSequence operator+(WordSequence const& a, WordSequence const& b) {
  WordSequence out;
  std::size_t i = 0, j = 0;
  while (i < a.size || j < b.size) {
    if (j == b.size || (i < a.size && a.words[i] < b.words[j])) {
      out.push(a.words[i++]);
    } else if (i == a.size || b.words[j] < a.words[i]) {
      out.push(b.words[j++]);
    } else {
      out.push(a.words[i++]);
      ++j;
    }
  }
  return out;
}

// The words of `a` that are not in `b`.
constexpr WordSequence operator-(WordSequence const& a, WordSequence const& b) {
  WordSequence out;
  std::size_t j = 0;
  for (std::size_t i = 0; i < a.size; ++i) {
    while (j < b.size && b.words[j] < a.words[i]) ++j;
    if (j == b.size || !(b.words[j] == a.words[i])) out.push(a.words[i]);
  }
  return out;
}

// The class of a listed word's second byte, in byte order: 0 for the end
// of the word, then the digits, the letters and "_"; kNotListed for any
// other byte, which no listed word holds.
inline constexpr unsigned kSecondClasses = 38;
inline constexpr unsigned char kNotListed = 0xFF;

struct SecondByteClasses {
  unsigned char of[256];
  constexpr SecondByteClasses() : of() {
    for (unsigned char& c : of) c = kNotListed;
    unsigned n = 0;
    of[0] = static_cast<unsigned char>(n++);
    for (int c = '0'; c <= '9'; ++c) of[c] = static_cast<unsigned char>(n++);
    for (int c = 'A'; c <= 'Z'; ++c) of[c] = static_cast<unsigned char>(n++);
    of[int{'_'}] = static_cast<unsigned char>(n++);
  }
};
inline constexpr SecondByteClasses kSecondByteClass;

// The bucket of a packed word: its first two bytes, numbered in byte order
// (the first a letter), or kBuckets when no listed word can begin so.
inline constexpr unsigned kBuckets = 26 * kSecondClasses;

constexpr unsigned bucket_of(std::uint64_t head) {
  unsigned const letter = static_cast<unsigned>(head >> 56) - 'A';
  unsigned const second = kSecondByteClass.of[(head >> 48) & 0xFF];
  if (letter >= 26 || second == kNotListed) return kBuckets;
  return letter * kSecondClasses + second;
}

// For each bucket (a word's first two bytes), the lengths of the words of
// a family of sets that begin so: bit n set when one has n bytes.  Shared
// by the sets of one language, which differ in a few words only.
struct LengthFilter {
  std::uint32_t lengths[kBuckets] = {};

  template <typename... Sequences>
  constexpr explicit LengthFilter(Sequences const&... sets) {
    (add(sets), ...);
  }

 private:
  constexpr void add(WordSequence const& seq) {
    for (std::size_t i = 0; i < seq.size; ++i) {
      unsigned const bucket = bucket_of(seq.words[i].part[0]);
      if (bucket == kBuckets) throw "a listed word begins with a letter";
      lengths[bucket] |= std::uint32_t{1} << packed_length(seq.words[i]);
    }
  }
};

// The searched form of a set of N words.  head[i] is the first number of
// the i-th word, tail[i] the two others.  The words are grouped by their
// first two bytes: bucket b holds the words from start[b] to
// start[b + 1] - 1 (a run of the sorted order, as the bucket numbers follow
// the byte order).
template <std::size_t N>
struct WordSetData {
  static_assert(N > 0 && N < 256, "a bucket's bounds fit a byte");
  std::uint64_t head[N] = {};
  std::uint64_t tail[N][2] = {};
  unsigned char start[kBuckets + 1] = {};

  constexpr explicit WordSetData(WordSequence const& seq) {
    if (seq.size != N) throw "the set has N words";
    for (std::size_t i = 0; i < N; ++i) {
      head[i] = seq.words[i].part[0];
      tail[i][0] = seq.words[i].part[1];
      tail[i][1] = seq.words[i].part[2];
    }
    std::size_t i = 0;
    for (unsigned bucket = 0; bucket <= kBuckets; ++bucket) {
      while (i < N && bucket_of(head[i]) < bucket) ++i;
      start[bucket] = static_cast<unsigned char>(i);
    }
  }
};

// A set as searched: a WordSetData and the length filter of its family.
// A word whose first two bytes and length no word of the family has is
// ruled out without a search, and a search looks at a handful of words.
class WordSet {
 public:
  template <std::size_t N>
  constexpr WordSet(WordSetData<N> const& data, LengthFilter const& filter)
      : head_(data.head), tail_(data.tail), start_(data.start), lengths_(filter.lengths) {}

  // Whether the upper case of the zero-terminated `word` is in the set.
  // Its first two bytes and its length come first: most words that are not
  // in the set stop there, before the word is packed.
  bool contains(char const* word) const {
    std::size_t const length = strnlen(word, kPackedBytes + 1);
    if (length == 0 || length > kPackedBytes) return false;
    std::uint64_t const first_two =
        (std::uint64_t{upper_ascii(word[0])} << 56) | (std::uint64_t{upper_ascii(word[1])} << 48);
    unsigned const bucket = bucket_of(first_two);
    if (bucket == kBuckets || ((lengths_[bucket] >> length) & 1) == 0) return false;
    std::size_t const end = start_[bucket + 1];
    if (start_[bucket] == end) return false;
    PackedWord const w = pack_upper_loaded(word, length);
    std::size_t i = lower_bound(start_[bucket], end, w.part[0]);
    for (; i < end && head_[i] == w.part[0]; ++i) {
      if (tail_[i][0] == w.part[1] && tail_[i][1] == w.part[2]) return true;
    }
    return false;
  }

 private:
  // The first index in [first, end), a non-empty range, whose head is not
  // below `key`.  The halving takes no branch on the comparison, so it
  // costs the same whatever the word.
  std::size_t lower_bound(std::size_t first, std::size_t end, std::uint64_t key) const {
    std::size_t n = end - first;
    std::uint64_t const* base = head_ + first;
    while (n > 1) {
      std::size_t const half = n / 2;
      base = base[half] < key ? base + half : base;
      n -= half;
    }
    return static_cast<std::size_t>(base - head_) + (*base < key ? 1 : 0);
  }

  std::uint64_t const* head_;
  std::uint64_t const (*tail_)[2];
  unsigned char const* start_;
  std::uint32_t const* lengths_;
};

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_WORD_SET_H
