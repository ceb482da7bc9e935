// connection_env.h - the dialect settings of each (connection, language).
//
// A connection is an opaque key chosen by the caller (never dereferenced);
// the language is 'T' (T-SQL) or 'P' (Oracle SQL and PL/SQL).  The entries
// form one process-wide doubly linked list, new entries at its end.  The key
// NULL owns the defaults of a language; its entry is created the first time
// the defaults are needed and lives until the module is unloaded.
//
// The list is guarded by the settings lock (frame/own_lock.h); an entry's
// settings must not change while other threads use them.
#ifndef ZELSTR_SQL_CONNECTION_ENV_H
#define ZELSTR_SQL_CONNECTION_ENV_H

namespace zelstr::sql {

// Defaults of the two languages.
inline constexpr int kTsqlDefaultVersion = 15;
inline constexpr int kTsqlDefaultMaxName = 1021;
inline constexpr char kTsqlDefaultFirst[] = "[A-Za-z_#@\x80-\xFF]";
inline constexpr char kPlsqlDefaultFirst[] = "[A-Z]";
inline constexpr int kPlsqlDefaultVersion = 152;
inline constexpr int kPlsqlDefaultMaxName = 31;
inline constexpr int kPlsqlDefaultMaxDbLinkName = 513;

}  // namespace zelstr::sql

class CConnectionEnv {
 public:
  // A T-SQL entry, to be appended to the registry by Register.
  // `allowedAs1st` is trimmed in place when it ends in blanks (see
  // ComputeCharsetsFor1stAndNthChars).
  CConnectionEnv(void const* connection, int version, int maxName, int quotedId, int bracketedId,
                 char defltQuote, char const* allowedAs1st) noexcept;
  // A PL/SQL entry, the same way.
  CConnectionEnv(void const* connection, int version, int maxName, int maxDbLinkName,
                 char const* allowedAs1st) noexcept;
  virtual ~CConnectionEnv();
  CConnectionEnv(CConnectionEnv const&) = delete;
  CConnectionEnv& operator=(CConnectionEnv const&) = delete;

  // The entry of (connection, language), through the one-entry cache.  The
  // key NULL creates the language's default entry when there is none yet.
  // NULL when there is no entry (and for an unknown language, with a
  // warning).
  static CConnectionEnv* Find(void const* connection, char i_cLanguage) noexcept;

  // The entry of (connection, language), else the language's default entry
  // (NULL only when it could not be created).  `own` (when not NULL) tells
  // whether the connection had an entry of its own.
  static CConnectionEnv* FindOrDefault(void const* connection, char language, bool* own) noexcept;

  // Appends `fresh` (a new entry, or NULL when there was no memory for it)
  // to the registry and returns it; an entry whose definitions could not be
  // allocated is deleted instead, so that the settings stay as they were.
  // NULL when nothing was appended.
  static CConnectionEnv* Register(CConnectionEnv* fresh) noexcept;

  // Destroys every entry and forgets the cached look-up.
  static void DeleteWholeArena() noexcept;

  // Recomputes both set definitions from the caller's first-character
  // definition: blanks around it are skipped (the trailing ones by writing
  // a NUL into the caller's string), NULL, blank or half-bracketed
  // definitions select the language's default, and the other-character
  // definition adds the digits and "$" (and "_#" for PL/SQL).
  // Both definitions are replaced together: false, the old ones kept, when
  // memory is short for the new ones.
  bool ComputeCharsetsFor1stAndNthChars(char const* definition) noexcept;

  // New definitions: the character tables must be built again from them.
  // False, nothing changed, when memory is short for them.
  bool Redefine(char const* allowedAs1st) noexcept;

  CConnectionEnv* m_pNext = nullptr;
  CConnectionEnv* m_pPrev = nullptr;
  void const* m_pConnection;
  char m_cLanguage;
  int m_nVersion;
  int m_nMaxName;
  int m_nMaxDbLinkName = 0;
  int m_bQuotedId = 0;
  int m_bBracketedId = 0;
  char m_cDefltQuote = '\0';
  char* m_pszAllowedAs1st = nullptr;
  char* m_pszAllowedAsOthers = nullptr;
  // Which definitions the character tables must be built from: a number no
  // other entry or earlier definition had (each thread notes the numbers
  // it built its tables from, see allowed_charsets.cpp).
  unsigned long m_nCharsetsVersion = 0;

  static CConnectionEnv* m_pFirst;
  static CConnectionEnv* m_pLast;

 private:
  void Append() noexcept;
  void FreeDefinitions() noexcept;
};

#endif  // ZELSTR_SQL_CONNECTION_ENV_H
