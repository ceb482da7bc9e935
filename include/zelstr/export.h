// export.h - visibility of the library's interface.
//
// Every exported function, class and variable of the library carries
// ZELSTR_API; everything else stays inside the module.  A program that links
// the library's objects statically (its own tests) defines ZELSTR_STATIC.
#ifndef ZELSTR_EXPORT_H
#define ZELSTR_EXPORT_H

#if defined(_WIN32)
#if defined(ZELSTR_BUILDING)
#define ZELSTR_API __declspec(dllexport)
#elif defined(ZELSTR_STATIC)
#define ZELSTR_API
#else
#define ZELSTR_API __declspec(dllimport)
#endif
#define ZELSTR_PRINTF_LIKE(fmt, args) __attribute__((format(gnu_printf, fmt, args)))
#else
#define ZELSTR_API __attribute__((visibility("default")))
#define ZELSTR_PRINTF_LIKE(fmt, args) __attribute__((format(printf, fmt, args)))
#endif

#endif  // ZELSTR_EXPORT_H
