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
// Threads: the registry takes the module's locks, so its calls may run on
// several threads at once: building, copying, assigning and destroying an
// object and the walk of Find hold the list's lock, and Delete and
// DeleteWholeArena are each serialised by a lock of their own (mind the one
// Delete keeps, below).  Two things are not guarded: Find first checks a
// one-entry cache of its last answer without the lock (it may hand back an
// object another thread is destroying), and a walk with GetArenaEntry and
// GetNext is the caller's to protect.  CHSQL itself and DeleteComponents
// share nothing; the dialect headers say which of their members do.
#ifndef ZELSTR_DIALECT_H
#define ZELSTR_DIALECT_H

#include "zelstr/export.h"

class ZELSTR_API CConnForStrFncs {
 public:
  // Stores the key and the language ('T' or 'P') and appends the object to
  // the list.
  CConnForStrFncs(void const* const connection, char language);
  // A new entry of the list with the key and language of `other`.
  CConnForStrFncs(CConnForStrFncs const& other);
  // Copies key and language; an object not yet in the list joins it.
  CConnForStrFncs const& operator=(CConnForStrFncs const& other);
  // Unlinks the object.
  virtual ~CConnForStrFncs();

  // The first object registered with that key and language, or NULL.
  static CConnForStrFncs* Find(void const* const connection, char language);

  // Destroys (with delete) the first object registered with that key,
  // whatever its language: 1 if there was one, else 0.  On success the
  // calling thread keeps holding the lock that serialises Delete, so that a
  // Delete from another thread waits for ever while one from the same
  // thread goes through: callers that delete from several threads must
  // arrange that themselves.
  static int Delete(void const* const connection);

  // Destroys (with delete) every object of the list.
  static void DeleteWholeArena();

  // The first object of the list, to walk it with GetNext().
  static CConnForStrFncs* GetArenaEntry();
  CConnForStrFncs* GetNext() const;

  void const* GetConnection() const;
  char GetLanguageChar() const;

 protected:
  static CConnForStrFncs* m_p1stCnctEnv;
  static CConnForStrFncs* m_pLastCnctEnv;

 private:
  void Append();
  void Unlink();

  CConnForStrFncs* m_pNext;
  CConnForStrFncs* m_pPrev;
  void const* m_pConnection;
  char m_cLanguage;
};

class ZELSTR_API CHSQL {
 public:
  CHSQL(void const* const connection, char language);
  CHSQL(CHSQL const& other);
  CHSQL& operator=(CHSQL const& other);
  virtual ~CHSQL();

  // 1 when `name` is a valid system name of the given kind.
  virtual int IsValidSysName(char const* name, unsigned long kind) const = 0;
  // System form to source form, in place (the buffer has room to quote).
  virtual int DenormalizeId(char* buffer, unsigned long flags) const = 0;
  // The same on a new copy (free it with _zstrdupfree), or NULL.
  virtual char const* GetDenormalizedId(char const* name, unsigned long flags) const = 0;
  // Source form to system form, in place.
  virtual int NormalizeId(char* buffer, unsigned long kind) const = 0;
  virtual char const* GetNormalizedId(char const* name, unsigned long kind) const = 0;
  // Qualified names (a.b.c), where the dialect supports them.
  virtual int DenormalizeQualId(char* buffer, unsigned long flags) const = 0;
  virtual char const* GetDenormalizedQualId(char const* name, unsigned long flags) const = 0;
  // 1 when `word` is reserved in the server version `version`.
  virtual int IsReservedWord(char const* word, int version) const = 0;
  // Splits a qualified name into a NULL-terminated array of new strings.
  virtual int SplitQualCodeName(char const* name, char*** components,
                                unsigned long flags) const = 0;

  void const* GetConnection() const;
  char GetLanguageChar() const;

  // Frees the NULL-terminated array `*components` and its strings, then
  // `*more` and each further char** argument up to a NULL one, setting each
  // to NULL.  Any pointer may be NULL.
  static void DeleteComponents(char*** components, char** more, ...);

 private:
  void const* m_pConnection;
  char m_cLanguage;
};

#endif  // ZELSTR_DIALECT_H
