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
  // The returned text stays valid for the life of the service.
  static char const* RemovePath(char const* path, int flag = 1);
};

// Announces a source file of a client module.  Returns its registration
// number (1 for the first file registered, 2 for the next ...), or 0 when
// `path` is NULL.
ERRSVC_API int ErrHandDLL_RegisterTowardsDll(char const* path);

// The one global object of a client module: constructed when the module is
// loaded, destroyed when it is unloaded.
class ERRSVC_API CErrSvcDllModule {
 public:
  CErrSvcDllModule(char const* display_name, char const* source_file);
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

  CErrorDescription(int line, char const* file, char const* function, int id, char const* text,
                    int severity, unsigned extra);

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
};

// Takes ownership of `record` (which may be NULL: the reporter could not
// allocate one) and files it.  Returns the number of records filed so far.
ERRSVC_API int ErrHandDLL_AddError(CErrorDescription* record);

// The topmost marker text of the calling thread (always empty here).
ERRSVC_API char const* ErrHandDLL_GetTopMarkerText();

// Per-thread buffers of 2048 bytes for message texts: the target of a
// resource-string load and of a system error text.
ERRSVC_API char* ErrHand_BufferForLoadString();
ERRSVC_API char* ErrHand_BufferForFormatMessage();

// Standard texts of the service.
ERRSVC_API char const* ErrHand_Msg_ERRSVC_BAD_ARGUMENT();
ERRSVC_API char const* ErrHand_Msg_ERRSVC_INCOHERENT_FLAG();
ERRSVC_API char const* ErrHand_Msg_ERRSVC_INTERNAL_ERROR();

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
// first.  NULL records are counted by null_record_count() instead.
ERRSVC_API std::vector<Record> records();

// Forgets the filed records and the count of NULL records.
ERRSVC_API void clear();

// Called for each record as it arrives (after it is filed).
using Sink = void (*)(Record const&);
// Installs `sink` (nullptr for none); returns the previous one.
ERRSVC_API Sink set_sink(Sink sink);

// How many NULL records ErrHandDLL_AddError received since the last clear().
ERRSVC_API std::size_t null_record_count();

// Makes the next `count` allocations of CErrorDescription fail, so that the
// reporters' out-of-memory path can be exercised.
ERRSVC_API void fail_next_record_allocations(unsigned count);

// Short names registered with ErrHandDLL_RegisterTowardsDll, in order.
ERRSVC_API std::vector<std::string> registered_sources();

// Display names of the CErrSvcDllModule objects alive now, oldest first.
ERRSVC_API std::vector<std::string> live_modules();

}  // namespace errsvc

#endif  // ERRSVC_ERRSVC_H
