// scratch.h - results in the library's rotating scratch arenas.
//
// _zstrclone, _zstrprintf and _zstrvprintf each write into an arena of
// 640 KB of the calling thread and hand out areas of it one after the other.
// Their results are never released by the caller; each stays valid until
// that thread's arena wraps and later results overwrite it, or the thread
// ends.
//
// Memory: the first thread's arenas are static; every other thread
// allocates each of its arenas at its first call of that function (alloc.h
// says what a call does without that memory).  A handler that throws has
// its exception dropped (the message counts as answered by OK).
//
// Threads: the three functions, and the library's functions that take their
// results or compose their warnings there (each header says which), may run
// on several threads at once: each thread has its own three arenas.
// set_message_box_handler may run on any thread; the handler runs on the
// thread whose area or result was cut.
#ifndef ZELSTR_SCRATCH_H
#define ZELSTR_SCRATCH_H

#include <cstdarg>

#include "zelstr/export.h"

// Copies `src` into the clone arena with `extra` more bytes reserved behind
// its terminator, and returns the copy.  The area starts where the previous
// clone's reserved area ended, or at the arena's start when it would not fit.
// A NULL `src` gives an empty string with `extra` bytes reserved.  An area of
// more than 655360 bytes is cut to 655360 (at most 655359 characters) after
// the message box "Cloned area truncated to 640 Kb.".
ZELSTR_API char* _zstrclone(char const* src, unsigned long extra) noexcept;

// Formats like printf into the print arena and returns the text.  Each
// result starts one past the previous result's terminator; past 512 KB the
// arena starts over.  A NULL or empty `format` gives an empty string.  A text
// that would not fit even from the arena's start is cut (to 655358
// characters) after the message box "Result string truncated to 639 Kb.".
ZELSTR_API char* _zstrprintf(char const* format, ...) noexcept ZELSTR_PRINTF_LIKE(1, 2);

// _zstrprintf with an argument list, in an arena of its own.
ZELSTR_API char* _zstrvprintf(char const* format, va_list args) noexcept ZELSTR_PRINTF_LIKE(1, 0);

namespace zelstr {

// Shows the two messages of the scratch arenas (an area or result cut to
// size).  `style` is a Windows message-box style; the result is the button
// pressed.
using MessageBoxHandler = int (*)(char const* text, char const* caption, unsigned style);

// Installs `h` and returns the previous handler; nullptr restores the
// default: MessageBoxA on Windows, one line "caption: text" on standard
// error elsewhere.
ZELSTR_API MessageBoxHandler set_message_box_handler(MessageBoxHandler h) noexcept;

}  // namespace zelstr

#endif  // ZELSTR_SCRATCH_H
