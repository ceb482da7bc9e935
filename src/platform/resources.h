// resources.h - the module's string table and the system's error texts.
#ifndef ZELSTR_PLATFORM_RESOURCES_H
#define ZELSTR_PLATFORM_RESOURCES_H

namespace zelstr::platform {

// Loads string `id` of the string table of `module` into `buffer` (`size`
// bytes), cut to size - 1 characters and terminated.  Returns the number of
// characters loaded; 0 when the table has no such string, in which case the
// last error code says why.
int load_string(void* module, unsigned id, char* buffer, int size);

// The calling thread's last error code.
unsigned long last_error();

// Writes the system's text for error `code` into `buffer` (`size` bytes),
// terminated; an empty text when the system has none.
void system_error_text(unsigned long code, char* buffer, unsigned size);

}  // namespace zelstr::platform

#endif  // ZELSTR_PLATFORM_RESOURCES_H
