// collation.h - the system's collator, for ZealStrHelper.
//
// The helper converts its code page 1252 text into UTF-16 (one unit per
// byte) and hands it here; each system compares, searches and changes case
// with its own collation: ICU on Linux, CompareStringEx, FindNLSStringEx
// and LCMapStringEx on Windows.
//
// A collation is only read once it is open: every call below may run on
// several threads at once with the same collation.
#ifndef ZELSTR_PLATFORM_COLLATION_H
#define ZELSTR_PLATFORM_COLLATION_H

#include <cstdint>

namespace zelstr::platform {

// The collation of one locale at one strength (1 primary, 2 secondary,
// 3 tertiary); defined by each system.
struct Collation;

// Opens the collation of `locale` ("" or "root": the root collation;
// parts joined by "_" or "-") at `strength`, which must be 1, 2 or 3.  An
// unknown locale opens the root collation and sets `known` to false.  NULL
// when none can be opened (memory, or the system's data missing).
Collation* open_collation(char const* locale, int strength, bool& known) noexcept;

void close_collation(Collation* collation) noexcept;

// -1, 0 or +1 as `a[0..na)` sorts before, equal to or after `b[0..nb)`.
int collate(Collation const& collation, char16_t const* a, int na, char16_t const* b,
            int nb) noexcept;

// Returned by collate_ascii when the system compares UTF-16 only.
inline constexpr int kNoAsciiCollate = 2;

// As collate, for two strings of bytes below 0x80 (which are their own
// code points), read in place: the collator reads no further than it needs
// to decide.  kNoAsciiCollate when the system cannot.
int collate_ascii(Collation const& collation, char const* a, int na, char const* b,
                  int nb) noexcept;

// Whether comparing two strings from just after an identical head may
// give another answer than comparing them whole when `unit` stands on
// either side of the cut (it may join the characters beside it in one
// collation element, say).  True for every unit when the system gives no
// such guarantee.
bool joins_neighbours(Collation const& collation, char16_t unit) noexcept;

// The most units primary_ranks ranks: the rest get 0.
inline constexpr int kMaxRanked = 256;

// For each of `units[0..n)`, into `ranks[0..n)`: a rank that decides an
// order alone.  Two strings that agree up to a place where one has a unit
// of rank r and the other a unit of rank s, both other than 0 and r != s,
// sort as r to s, whatever follows.  0 for a unit that cannot decide so
// (one that joins its neighbours, one the first level ignores, a digit
// read as part of a number), and for every unit when the system gives no
// such guarantee.
void primary_ranks(Collation const& collation, char16_t const* units, int n,
                   std::uint16_t* ranks) noexcept;

// Outcomes of find other than an offset.
inline constexpr int kNotFound = -1;
inline constexpr int kCannotSearch = -2;  // memory was short

// The offset of the first piece of `text[0..n)` that collates equal to
// `pattern[0..m)` (m > 0), ignoring case too when `ignore_case`; its length
// goes to `length`.  kNotFound, or kCannotSearch.
int find(Collation const& collation, char16_t const* text, int n, char16_t const* pattern, int m,
         bool ignore_case, int& length) noexcept;

// Replaces each of `units[0..n)` by its upper case (or lower case) in the
// collation's locale when that is a single unit; leaves it otherwise.
void change_case(Collation const& collation, char16_t* units, int n, bool upper) noexcept;

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_COLLATION_H
