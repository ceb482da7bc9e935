// dialect.h - connection-keyed objects and the dialect interface.
//
// CConnForStrFncs is a registry: each object links itself into one
// process-wide list when it is built and unlinks itself when it is
// destroyed, so that callers can find the object registered for a
// (connection, language) pair.  Objects that may be removed with Delete or
// DeleteWholeArena (the module does the latter when it is unloaded) must be
// allocated with new.
//
// CHSQL is the interface of the dialect objects CHTSQL (tsql.h) and CHPLSQL
// (plsql.h): conversions between the source form of a name (as written in
// SQL text, possibly delimited) and its system form (as the server stores
// it), validation and the reserved-word test.
//
// Memory: CConnForStrFncs, CHSQL and the dialect objects take their memory
// from the library when made with new: the new-expression gives NULL when
// memory is short (no constructor runs).  Nothing else here allocates.
//
// Threads: the registry takes the module's locks, so its calls may run on
// several threads at once: building, copying, assigning and destroying an
// object and the walk of Find hold the list's lock, and Delete and
// DeleteWholeArena are each serialised by a lock of their own (mind the one
// Delete keeps, below).  Two things are not guarded: Find first checks the
// calling thread's one-entry cache of its last answer without the lock (it
// may hand back an object another thread is destroying), and a walk with
// GetArenaEntry and GetNext is the caller's to protect.  CHSQL itself and
// DeleteComponents share nothing; the dialect headers say which of their
// members do.
#ifndef ZELSTR_DIALECT_H
#define ZELSTR_DIALECT_H

#include <cstddef>

#include "zelstr/export.h"

class ZELSTR_API CConnForStrFncs {
 public:
  // Objects made with new take their memory from the library: the
  // new-expression gives NULL when memory is short (the constructor does
  // not run), and the library's delete releases them.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* p) noexcept;

  // Stores the key and the language ('T' or 'P') and appends the object to
  // the list.
  CConnForStrFncs(void const* const connection, char language) noexcept;
  // A new entry of the list with the key and language of `other`.
  CConnForStrFncs(CConnForStrFncs const& other) noexcept;
  // Copies key and language; an object not yet in the list joins it.
  CConnForStrFncs const& operator=(CConnForStrFncs const& other) noexcept;
  // Unlinks the object.
  virtual ~CConnForStrFncs();

  // The first object registered with that key and language, or NULL.
  static CConnForStrFncs* Find(void const* const connection, char language) noexcept;

  // Destroys (with delete) the first object registered with that key,
  // whatever its language: 1 if there was one, else 0.  On success the
  // calling thread keeps holding the lock that serialises Delete, so that a
  // Delete from another thread waits for ever while one from the same
  // thread goes through: callers that delete from several threads must
  // arrange that themselves.
  static int Delete(void const* const connection) noexcept;

  // Destroys (with delete) every object of the list.
  static void DeleteWholeArena() noexcept;

  // The first object of the list, to walk it with GetNext().
  static CConnForStrFncs* GetArenaEntry() noexcept;
  CConnForStrFncs* GetNext() const noexcept;

  void const* GetConnection() const noexcept;
  char GetLanguageChar() const noexcept;

  // The ends of the list, exported for callers that walk it from either
  // end: read them only (the objects keep them up to date as they join and
  // leave the list), under the same care as a walk with GetArenaEntry.
  static CConnForStrFncs* m_p1stCnctEnv;
  static CConnForStrFncs* m_pLastCnctEnv;

 private:
  void Append() noexcept;
  void Unlink() noexcept;

  CConnForStrFncs* m_pNext;
  CConnForStrFncs* m_pPrev;
  void const* m_pConnection;
  char m_cLanguage;
};

class ZELSTR_API CHSQL {
 public:
  // As for CConnForStrFncs: new gives NULL when memory is short.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* p) noexcept;

  CHSQL(void const* const connection, char language) noexcept;
  CHSQL(CHSQL const& other) noexcept;
  CHSQL& operator=(CHSQL const& other) noexcept;
  virtual ~CHSQL();

  // 1 when `name` is a valid system name of the given kind.
  virtual int IsValidSysName(char const* name, unsigned long kind) const noexcept = 0;
  // System form to source form, in place (the buffer has room to quote).
  virtual int DenormalizeId(char* buffer, unsigned long flags) const noexcept = 0;
  // The same on a new copy (free it with _zstrdupfree), or NULL.
  virtual char const* GetDenormalizedId(char const* name, unsigned long flags) const noexcept = 0;
  // Source form to system form, in place.
  virtual int NormalizeId(char* buffer, unsigned long kind) const noexcept = 0;
  virtual char const* GetNormalizedId(char const* name, unsigned long kind) const noexcept = 0;
  // Qualified names (a.b.c), where the dialect supports them.
  virtual int DenormalizeQualId(char* buffer, unsigned long flags) const noexcept = 0;
  virtual char const* GetDenormalizedQualId(char const* name,
                                            unsigned long flags) const noexcept = 0;
  // 1 when `word` is reserved in the server version `version`.
  virtual int IsReservedWord(char const* word, int version) const noexcept = 0;
  // Splits a qualified name into a NULL-terminated array of new strings.
  virtual int SplitQualCodeName(char const* name, char*** components,
                                unsigned long flags) const noexcept = 0;

  void const* GetConnection() const noexcept;
  char GetLanguageChar() const noexcept;

  // Frees the NULL-terminated array `*components` and its strings, then
  // `*more` and each further char** argument up to a NULL one, setting each
  // to NULL.  Any pointer may be NULL.
  static void DeleteComponents(char*** components, char** more, ...) noexcept;

 private:
  void const* m_pConnection;
  char m_cLanguage;
};

#endif  // ZELSTR_DIALECT_H
