// text_decoder.cpp - decoding with the system's conversions: UTF-16 (either
// byte order) through WideCharToMultiByte, and the code pages of one byte a
// character through MultiByteToWideChar first.  (Code pages of several
// bytes a character would need the bytes of a cut character carried over,
// which these calls cannot tell: they are not offered.)
#include "platform/text_decoder.h"

#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace zelstr::platform {
namespace {

bool same_name(char const* a, char const* b) { return _stricmp(a, b) == 0; }

// Appends the UTF-8 of `n` UTF-16 units (a surrogate cut at the end is the
// caller's to keep).
bool append_utf8(wchar_t const* units, int n, std::string& out) {
  if (n == 0) return true;
  int const size = WideCharToMultiByte(CP_UTF8, 0, units, n, nullptr, 0, nullptr, nullptr);
  if (size <= 0) return false;
  std::size_t const done = out.size();
  out.resize(done + static_cast<std::size_t>(size));
  WideCharToMultiByte(CP_UTF8, 0, units, n, out.data() + done, size, nullptr, nullptr);
  return true;
}

class Utf16Decoder final : public TextDecoder {
 public:
  explicit Utf16Decoder(bool big_endian) : m_big_endian(big_endian) {}

  bool decode(std::string_view piece, bool last, std::string& out) override {
    m_bytes.append(piece);
    std::size_t const whole = m_bytes.size() / 2;
    std::wstring units(whole, L'\0');
    for (std::size_t i = 0; i < whole; ++i) {
      auto const a = static_cast<unsigned char>(m_bytes[2 * i]);
      auto const b = static_cast<unsigned char>(m_bytes[2 * i + 1]);
      units[i] = static_cast<wchar_t>(m_big_endian ? (a << 8) | b : (b << 8) | a);
    }
    // A high surrogate at the end waits for its pair, unless the text ends.
    std::size_t n = whole;
    if (!last && n > 0 && units[n - 1] >= 0xD800 && units[n - 1] <= 0xDBFF) --n;
    if (!append_utf8(units.data(), static_cast<int>(n), out)) return false;
    m_bytes.erase(0, 2 * n);
    if (last && !m_bytes.empty()) {  // an odd byte at the end
      out += "\xEF\xBF\xBD";
      m_bytes.clear();
    }
    return true;
  }

 private:
  bool m_big_endian;
  std::string m_bytes;  // those not yet decoded
};

class CodePageDecoder final : public TextDecoder {
 public:
  explicit CodePageDecoder(UINT code_page) : m_code_page(code_page) {}

  bool decode(std::string_view piece, bool, std::string& out) override {
    if (piece.empty()) return true;
    int const n = MultiByteToWideChar(m_code_page, 0, piece.data(), static_cast<int>(piece.size()),
                                      nullptr, 0);
    if (n <= 0) return false;
    std::wstring units(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(m_code_page, 0, piece.data(), static_cast<int>(piece.size()), units.data(),
                        n);
    return append_utf8(units.data(), n, out);
  }

 private:
  UINT m_code_page;
};

class Utf8Decoder final : public TextDecoder {
 public:
  bool decode(std::string_view piece, bool, std::string& out) override {
    out.append(piece);
    return true;
  }
};

// The code page of "windows-N" or "cpN", when it has one byte a character.
UINT single_byte_code_page(char const* name) {
  char const* digits = nullptr;
  if (_strnicmp(name, "windows-", 8) == 0) digits = name + 8;
  if (_strnicmp(name, "cp", 2) == 0) digits = name + 2;
  if (digits == nullptr || *digits == '\0') return 0;
  char* end = nullptr;
  unsigned long const page = std::strtoul(digits, &end, 10);
  CPINFO info;
  if (*end != '\0' || page == 0 || page > 65535 || !GetCPInfo(static_cast<UINT>(page), &info) ||
      info.MaxCharSize != 1) {
    return 0;
  }
  return static_cast<UINT>(page);
}

}  // namespace

std::unique_ptr<TextDecoder> TextDecoder::open(char const* name) {
  if (same_name(name, "UTF-16LE")) return std::unique_ptr<TextDecoder>(new (std::nothrow) Utf16Decoder(false));
  if (same_name(name, "UTF-16BE")) return std::unique_ptr<TextDecoder>(new (std::nothrow) Utf16Decoder(true));
  if (same_name(name, "UTF-8")) return std::unique_ptr<TextDecoder>(new (std::nothrow) Utf8Decoder);
  UINT const page = single_byte_code_page(name);
  if (page == 0) return nullptr;
  return std::unique_ptr<TextDecoder>(new (std::nothrow) CodePageDecoder(page));
}

}  // namespace zelstr::platform
