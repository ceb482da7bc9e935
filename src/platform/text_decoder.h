// text_decoder.h - text in another encoding turned into UTF-8, a piece at
// a time, for the tool's inputs (UTF-16 scripts, code pages).
#ifndef ZELSTR_PLATFORM_TEXT_DECODER_H
#define ZELSTR_PLATFORM_TEXT_DECODER_H

#include <memory>
#include <string>
#include <string_view>

namespace zelstr::platform {

class TextDecoder {
 public:
  virtual ~TextDecoder() = default;

  // A decoder from the encoding `name`, or NULL when the name is not known.
  // On Linux ICU's converters decode, by any name or alias ICU knows
  // ("UTF-16LE", "UTF-16BE", "windows-1252", "ISO-8859-15", "Shift_JIS"...);
  // on Windows the system's: UTF-16LE, UTF-16BE, UTF-8, and the code pages
  // of one byte a character named "windows-N" or "cpN".
  static std::unique_ptr<TextDecoder> open(char const* name);

  // Appends the UTF-8 of `piece`, the next bytes of the text, to `out`.
  // The bytes of a character cut at the piece's end wait for the next
  // piece; with `last` (the text ends there) they are decoded as a bad
  // sequence.  Bad sequences become the encoding's substitute (U+FFFD from
  // UTF-16).  False when memory runs out.
  virtual bool decode(std::string_view piece, bool last, std::string& out) = 0;
};

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_TEXT_DECODER_H
