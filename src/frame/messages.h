// messages.h - the library's messages as constants of the code.
#ifndef ZELSTR_FRAME_MESSAGES_H
#define ZELSTR_FRAME_MESSAGES_H

namespace zelstr::frame {

// A warning the library can report.  A string-table message has its id and
// no text here (the text is loaded from the module's string table when it is
// reported); a literal message has id -1 and its text.
struct Message {
  int id;
  int severity;
  char const* text;
};

// Highest id the module's string table may hold.
inline constexpr int kMaxMessageId = 210;

namespace msg {
#define ZELSTR_TABLE(id, name, text) inline constexpr Message name{id, 4, nullptr};
#define ZELSTR_LITERAL(name, severity, text) inline constexpr Message name{-1, severity, text};
#define ZELSTR_TEXT(name, text) inline constexpr char name[] = text;
#include "frame/messages.def"
}  // namespace msg

}  // namespace zelstr::frame

#endif  // ZELSTR_FRAME_MESSAGES_H
