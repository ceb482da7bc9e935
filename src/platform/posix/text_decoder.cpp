// text_decoder.cpp - decoding with ICU's converters: the input's converter
// and UTF-8's, through a pivot of UTF-16 kept between pieces (ucnv_convertEx
// carries a character cut at a piece's end over to the next call).
#include "platform/text_decoder.h"

#include <unicode/ucnv.h>

#include <new>

namespace zelstr::platform {
namespace {

class IcuDecoder final : public TextDecoder {
 public:
  IcuDecoder(UConverter* from, UConverter* to) : m_from(from), m_to(to) {}
  ~IcuDecoder() override {
    ucnv_close(m_from);
    ucnv_close(m_to);
  }
  IcuDecoder(IcuDecoder const&) = delete;
  IcuDecoder& operator=(IcuDecoder const&) = delete;

  bool decode(std::string_view piece, bool last, std::string& out) override {
    char const* source = piece.data();
    char const* const source_end = piece.data() + piece.size();
    for (;;) {
      std::size_t const done = out.size();
      // UTF-8 takes at most 3 bytes for each unit of UTF-16 the piece can
      // give, and every input byte gives at most one.
      out.resize(done + 3 * (static_cast<std::size_t>(source_end - source) + 8));
      char* target = out.data() + done;
      char* const target_end = out.data() + out.size();
      UErrorCode error = U_ZERO_ERROR;
      ucnv_convertEx(m_to, m_from, &target, target_end, &source, source_end, m_pivot,
                     &m_pivot_source, &m_pivot_target, m_pivot + kPivot, m_first, last, &error);
      m_first = false;
      out.resize(static_cast<std::size_t>(target - out.data()));
      if (error == U_BUFFER_OVERFLOW_ERROR) continue;
      return U_SUCCESS(error);
    }
  }

 private:
  static constexpr int kPivot = 1024;
  UConverter* m_from;
  UConverter* m_to;
  UChar m_pivot[kPivot];
  UChar* m_pivot_source = m_pivot;
  UChar* m_pivot_target = m_pivot;
  bool m_first = true;
};

}  // namespace

std::unique_ptr<TextDecoder> TextDecoder::open(char const* name) {
  UErrorCode error = U_ZERO_ERROR;
  UConverter* const from = ucnv_open(name, &error);
  if (U_FAILURE(error) || from == nullptr) return nullptr;
  UConverter* const to = ucnv_open("UTF-8", &error);
  if (U_FAILURE(error) || to == nullptr) {
    ucnv_close(from);
    return nullptr;
  }
  std::unique_ptr<TextDecoder> decoder(new (std::nothrow) IcuDecoder(from, to));
  if (decoder == nullptr) {
    ucnv_close(from);
    ucnv_close(to);
  }
  return decoder;
}

}  // namespace zelstr::platform
