// collator.h - the database server's upper-casing of 8-bit source text.
//
// The analyser's text comes from Windows code page 1252.  A collator knows
// how the server upper-cases each of its characters: simple case mapping
// (one character to one character, so the result is never longer), and a
// character whose upper case the code page lacks stays as it is.  The
// system decides the mapping (ICU on Linux, the system's own case mapping
// on Windows); the collator keeps it as a 256-entry table.
#ifndef ZELSTR_PLATFORM_COLLATOR_H
#define ZELSTR_PLATFORM_COLLATOR_H

namespace zelstr::platform {

// Fills `upper` with the upper case of each character of the code page, as
// the system decides it (the system-specific part).
void code_page_upper_case(unsigned char (&upper)[256]);

class SourceCodeCollator {
 public:
  SourceCodeCollator() { code_page_upper_case(m_upper); }

  // Upper-cases `text` in place.
  void to_upper(char* text) const {
    for (unsigned char* p = reinterpret_cast<unsigned char*>(text); *p != '\0'; ++p) {
      *p = m_upper[*p];
    }
  }

 private:
  unsigned char m_upper[256];
};

// The collator of the server selected by `language` (9: Oracle), obtained
// the first time it is asked for and kept for the life of the process.
inline SourceCodeCollator const& source_code_collator(int /*language*/) {
  static SourceCodeCollator const collator;
  return collator;
}

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_COLLATOR_H
