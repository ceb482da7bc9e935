// state.h - the engine's state between calls: the last error text and the
// backslashes-in-intervals switch.  Each thread has its own of both.
#ifndef ZELSTR_REGEX_STATE_H
#define ZELSTR_REGEX_STATE_H

namespace zelstr::regex {

// The text of the last error (a constant text, or one of the two buffers of
// the sub-match messages), NULL when none.
char const* error_text();
void set_error(char const* text);
inline void clear_error() { set_error(nullptr); }
// Memory ran short: the failure is counted with the library's others and
// "Out of space ..." becomes the error text.
void set_out_of_space();

// Formats a sub-match naming error into buffer 0 (prefix form) or 1
// (suffix form) and makes it the error text.
void set_name_error(int buffer, char const* format, char letter, int group);

// The backslashes-in-intervals switch (0: off).
int backslashes_in_intervals();
void set_backslashes_in_intervals(int handled);

}  // namespace zelstr::regex

#endif  // ZELSTR_REGEX_STATE_H
