// export.h - visibility of the error-handler service's interface.
#ifndef ERRSVC_EXPORT_H
#define ERRSVC_EXPORT_H

#if defined(_WIN32)
#if defined(ERRSVC_BUILDING)
#define ERRSVC_API __declspec(dllexport)
#else
#define ERRSVC_API __declspec(dllimport)
#endif
#else
#define ERRSVC_API __attribute__((visibility("default")))
#endif

#endif  // ERRSVC_EXPORT_H
