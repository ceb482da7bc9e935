// sort_ready.cpp - _zsortreadydef: the texts of the ready sort orders.
//
// The code page 1252 orders rank each character by the root collation of
// Unicode (ICU's, primary strength for the accent-insensitive order,
// secondary for the accent-sensitive one), which is also how the database
// servers order these characters.  A weight table gives one weight per
// byte, so three things differ from the collation:
// - the control characters and the soft hyphen, which the collation
//   ignores, weigh least, all together, instead of being skipped;
// - a character the collation expands (\xC6 as "AE", \xDF as "ss", the
//   fractions) weighs one step of its own, placed where its expansion
//   sorts;
// - bytes that code page 1252 leaves undefined count as control
//   characters.
#include "map/map_handle.h"
#include "zelstr/scratch.h"
#include "zelstr/sortorder.h"

namespace {

// Byte order with the ASCII letters folded to lower case, as _zstricmp
// compares: the letters come after "[\\]^_`".
constexpr char kAsciiCaseInsensitive[] = "\\x01-@ [-` A-Z=a-z {-\\xFF";

// The controls (together), blanks, punctuation, symbols and digits, in the
// collation's order: alike in both code page 1252 orders.
#define CP1252_SIGNS_AND_DIGITS \
    "\\x01=\\x02=\\x03=\\x04=\\x05=\\x06=\\x07=\\x08=\\x0E=\\x0F=\\x10=\\x11=\\x12=\\x13=\\x14=\\x15=" \
    "\\x16=\\x17=\\x18=\\x19=\\x1A=\\x1B=\\x1C=\\x1D=\\x1E=\\x1F=\\x7F=\\x81=\\x8D=\\x8F=\\x90=\\x9D=\\xAD\n" \
    "\\x09-\\x0D \\x20=\\xA0 _ \\- \\x96 \\x97 , ; : ! \\xA1 ? \\xBF .\n" \
    "\\x85 \\xB7 ' \\x91 \\x92 \\x82 \\x8B \\x9B \" \\x93 \\x94 \\x84\n" \
    "\\xAB \\xBB ( ) [ ] { } \\xA7 \\xB6 @ * / \\\\ & # % \\x89 \\x86\n" \
    "\\x87 \\x95 ` \\xB4 \\x98 ^ \\xAF \\xA8 \\xB8 \\x88 \\xB0 \\xA9\n" \
    "\\xAE + \\xB1 \\xF7 \\xD7 <-> \\xAC | \\xA6 ~ \\xA4 \\xA2 $ \\xA3\n" \
    "\\xA5 \\x80 0 1=\\xB9 \\xBD \\xBC 2=\\xB2 3=\\xB3 \\xBE 4-9\n"

constexpr char kCp1252AccentInsensitive[] =
    CP1252_SIGNS_AND_DIGITS
    "A=a=\\xAA=\\xC0=\\xC1=\\xC2=\\xC3=\\xC4=\\xC5=\\xE0=\\xE1=\\xE2=\\xE3=\\xE4=\\xE5\n"
    "\\xC6=\\xE6 B=b C=c=\\xC7=\\xE7 D=d=\\xD0=\\xF0\n"
    "E=e=\\xC8=\\xC9=\\xCA=\\xCB=\\xE8=\\xE9=\\xEA=\\xEB F=f \\x83 G=g\n"
    "H=h I=i=\\xCC=\\xCD=\\xCE=\\xCF=\\xEC=\\xED=\\xEE=\\xEF J=j K=k L=l\n"
    "M=m N=n=\\xD1=\\xF1\n"
    "O=o=\\xBA=\\xD2=\\xD3=\\xD4=\\xD5=\\xD6=\\xD8=\\xF2=\\xF3=\\xF4=\\xF5=\\xF6=\\xF8\n"
    "\\x8C=\\x9C P=p Q=q R=r S=s=\\x8A=\\x9A \\xDF T=t \\x99\n"
    "U=u=\\xD9=\\xDA=\\xDB=\\xDC=\\xF9=\\xFA=\\xFB=\\xFC V=v W=w X=x\n"
    "Y=y=\\x9F=\\xDD=\\xFD=\\xFF Z=z=\\x8E=\\x9E \\xDE=\\xFE \\xB5\n";

constexpr char kCp1252AccentSensitive[] =
    CP1252_SIGNS_AND_DIGITS
    "A=a=\\xAA \\xC1=\\xE1 \\xC0=\\xE0 \\xC2=\\xE2 \\xC5=\\xE5\n"
    "\\xC4=\\xE4 \\xC3=\\xE3 \\xC6=\\xE6 B=b C=c \\xC7=\\xE7 D=d\n"
    "\\xD0=\\xF0 E=e \\xC9=\\xE9 \\xC8=\\xE8 \\xCA=\\xEA \\xCB=\\xEB F=f\n"
    "\\x83 G=g H=h I=i \\xCD=\\xED \\xCC=\\xEC \\xCE=\\xEE \\xCF=\\xEF\n"
    "J=j K=k L=l M=m N=n \\xD1=\\xF1 O=o=\\xBA \\xD3=\\xF3 \\xD2=\\xF2\n"
    "\\xD4=\\xF4 \\xD6=\\xF6 \\xD5=\\xF5 \\xD8=\\xF8 \\x8C=\\x9C P=p Q=q\n"
    "R=r S=s \\x8A=\\x9A \\xDF T=t \\x99 U=u \\xDA=\\xFA \\xD9=\\xF9\n"
    "\\xDB=\\xFB \\xDC=\\xFC V=v W=w X=x Y=y \\xDD=\\xFD \\x9F=\\xFF Z=z\n"
    "\\x8E=\\x9E \\xDE=\\xFE \\xB5\n";

}  // namespace

char const* _zsortreadydef(int order) noexcept {
  switch (order) {
    case ZEAL_SORT_BYTES:
      return "";
    case ZEAL_SORT_ASCII_CI:
      return kAsciiCaseInsensitive;
    case ZEAL_SORT_CP1252_CI_AI:
      return kCp1252AccentInsensitive;
    case ZEAL_SORT_CP1252_CI_AS:
      return kCp1252AccentSensitive;
    default:
      zelstr::map::warn(
          zelstr::frame::Message{-1, 4, _zstrprintf(zelstr::frame::msg::kSortReadyUnknownFormat, order)},
          "_zsortreadydef()");
      return nullptr;
  }
}
