// errsvc.h - the error-handler service ERRSVC32.
//
// The string library reports every bad argument to this service instead of
// failing: it builds a CErrorDescription, hands it to ErrHandDLL_AddError and
// returns its fallback value.  This module is the service the library is
// shipped with: it keeps the records it receives in a list and lets programs
// watch the records as they arrive (namespace errsvc below).
//
// Setting the environment variable ZELSTR_WARNINGS=stderr prints every record
// on standard error as it arrives, one line each.
//
// Memory: nothing here throws.  A record that cannot be made or kept for
// lack of memory is counted as a NULL record (null_record_count); the
// functions that return lists return empty ones, and the registrations
// leave their lists as they were.  A sink must not throw: what it throws is
// dropped.
//
// Threads: every call here may run on several threads at once.  The lists,
// the sink and the counters are guarded by one lock; each thread has its own
// text buffers (ErrHand_BufferForLoadString, ErrHand_BufferForFormatMessage);
// a sink is called on the reporting thread, outside the lock, and may call
// records().  The string library passes the id of a string-table message
// through one library-wide variable: two threads reporting such messages at
// the same instant may exchange ids (the texts stay right).
#ifndef ERRSVC_ERRSVC_H
#define ERRSVC_ERRSVC_H

#include <cstddef>
#include <string>
#include <vector>

#include "errsvc/export.h"

// Short names of source files, used to name the reporting unit in records.
class ERRSVC_API CMarkerDescription {
 public:
  // Returns the base name of `path`: the text after its last '/' or '\\';
  // with `flag` non-zero the extension (from the last '.') is dropped too.
  // The returned text stays valid for the life of the service ("" when
  // memory is short).
  static char const* RemovePath(char const* path, int flag = 1) noexcept;
};

// Announces a source file of a client module.  Returns its registration
// number (1 for the first file registered, 2 for the next ...), or 0 when
// `path` is NULL or memory is short.
ERRSVC_API int ErrHandDLL_RegisterTowardsDll(char const* path) noexcept;

// The one global object of a client module: constructed when the module is
// loaded, destroyed when it is unloaded.  Without memory it is not listed.
class ERRSVC_API CErrSvcDllModule {
 public:
  CErrSvcDllModule(char const* display_name, char const* source_file) noexcept;
  ~CErrSvcDllModule();
  CErrSvcDllModule(CErrSvcDllModule const&) = delete;
  CErrSvcDllModule& operator=(CErrSvcDllModule const&) = delete;

 private:
  int m_nId;
};

// One warning.  Allocate it with its own operator new (the service frees it)
// and hand it over with ErrHandDLL_AddError.
class ERRSVC_API CErrorDescription {
 public:
  // Returns NULL when memory is short: a new-expression then yields NULL and
  // the constructor does not run.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* p) noexcept;

  // Copies the texts.  When one cannot be copied for lack of memory, the
  // record keeps none of them and IsComplete() is false: the reporter then
  // deletes it and files a NULL record (ErrHandDLL_AddError files an
  // incomplete record as a NULL one too).
  CErrorDescription(int line, char const* file, char const* function, int id, char const* text,
                    int severity, unsigned extra) noexcept;

  bool IsComplete() const { return m_bComplete; }

  int Line() const { return m_nLine; }
  char const* File() const { return m_strFile.c_str(); }
  char const* Function() const { return m_strFunction.c_str(); }
  int Id() const { return m_nId; }
  char const* Text() const { return m_strText.c_str(); }
  int Severity() const { return m_nSeverity; }
  unsigned Extra() const { return m_uExtra; }

 private:
  int m_nLine;
  std::string m_strFile;
  std::string m_strFunction;
  int m_nId;
  std::string m_strText;
  int m_nSeverity;
  unsigned m_uExtra;
  bool m_bComplete;
};

// Takes ownership of `record` (which may be NULL: the reporter could not
// allocate one) and files it; a NULL or incomplete record, or one the list
// has no room for, is counted as a NULL record.  Returns the number of
// records filed so far.
ERRSVC_API int ErrHandDLL_AddError(CErrorDescription* record) noexcept;

// The topmost marker text of the calling thread (always empty here).
ERRSVC_API char const* ErrHandDLL_GetTopMarkerText() noexcept;

// Per-thread buffers of 2048 bytes for message texts: the target of a
// resource-string load and of a system error text.
ERRSVC_API char* ErrHand_BufferForLoadString() noexcept;
ERRSVC_API char* ErrHand_BufferForFormatMessage() noexcept;

// Standard texts of the service.
ERRSVC_API char const* ErrHand_Msg_ERRSVC_BAD_ARGUMENT() noexcept;
ERRSVC_API char const* ErrHand_Msg_ERRSVC_INCOHERENT_FLAG() noexcept;
ERRSVC_API char const* ErrHand_Msg_ERRSVC_INTERNAL_ERROR() noexcept;

// Inspection of what the service received.
namespace errsvc {

// A copy of one filed CErrorDescription.
struct Record {
  int line;
  std::string file;
  std::string function;
  int id;
  std::string text;
  int severity;
  unsigned extra;
};

// Every record handed to ErrHandDLL_AddError since the last clear(), oldest
// first (an empty list when memory is short for the copy).  NULL records are
// counted by null_record_count() instead.
ERRSVC_API std::vector<Record> records() noexcept;

// Forgets the filed records (releasing the list's memory) and the count of
// NULL records.
ERRSVC_API void clear() noexcept;

// Called for each record as it arrives (after it is filed).
using Sink = void (*)(Record const&);
// Installs `sink` (nullptr for none); returns the previous one.
ERRSVC_API Sink set_sink(Sink sink) noexcept;

// How many NULL records ErrHandDLL_AddError received since the last clear().
ERRSVC_API std::size_t null_record_count() noexcept;

// Makes the next `count` allocations of CErrorDescription fail, so that the
// reporters' out-of-memory path can be exercised.
ERRSVC_API void fail_next_record_allocations(unsigned count) noexcept;

// Short names registered with ErrHandDLL_RegisterTowardsDll, in order (an
// empty list when memory is short).
ERRSVC_API std::vector<std::string> registered_sources() noexcept;

// Display names of the CErrSvcDllModule objects alive now, oldest first (an
// empty list when memory is short).
ERRSVC_API std::vector<std::string> live_modules() noexcept;

}  // namespace errsvc

#endif  // ERRSVC_ERRSVC_H
