// allocation_workload.cpp - the steps of the allocation-failure suite.
//
// Texts are long enough (more than 15 characters) that the standard
// library's strings and the library's copies of them really allocate, and
// every family also files a warning or two, so that the records' own
// allocations are failed as well.
#include "frame/allocation_workload.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "errsvc/errsvc.h"
#include "support/failing_allocator.h"
#include "zelstr/zelstr.h"

namespace zelstr::test {
namespace {

// Runs `f` as one call into the library.
template <class F>
auto library(F f) -> decltype(f()) {
  alloc::LibraryCall const call;
  return f();
}

std::string text(char const* s) { return s != nullptr ? std::string(s) : "(null)"; }
std::string text(long n) { return std::to_string(n); }

// Bytes as hexadecimal pairs, for text beyond ASCII.
std::string hex(char const* s) {
  std::string shown;
  for (; *s != '\0'; ++s) {
    char pair[4];
    std::snprintf(pair, sizeof pair, "%02X ", static_cast<unsigned char>(*s));
    shown += pair;
  }
  return shown;
}

// A compile that gave NULL, with the engine's error text.
std::string failed_compile() { return std::string("NULL: ").append(text(Tcl_GetRegError())); }

std::string map_text(void* map) {
  if (map == ZEAL_STR_BAD_MAP) return "bad map";
  return map == nullptr ? "identity" : "map";
}

// The objects a run keeps from one step to the next.
struct Kept {
  void* upper = nullptr;
  void* clone = nullptr;
  Tcl_RegExp_* re = nullptr;
  CHTSQL* tsql = nullptr;
  CHPLSQL* plsql = nullptr;
  CConnForStrFncs* entry = nullptr;
};
Kept g_kept;

// Each name through `dialect`, source form then system form (normalized
// with `kind`), the copies released.
std::string converted_names(CHSQL const& dialect, std::initializer_list<char const*> names,
                            unsigned long kind) {
  std::string shown;
  for (char const* name : names) {
    char* denormalized =
        const_cast<char*>(library([&] { return dialect.GetDenormalizedId(name, 0); }));
    char* normalized =
        const_cast<char*>(library([&] { return dialect.GetNormalizedId(name, kind); }));
    shown += text(denormalized) + " | " + text(normalized) + "; ";
    library([&] { CHSQL::DeleteComponents(nullptr, &denormalized, &normalized, nullptr); });
  }
  return shown;
}

int const kConnection = 0;
void const* const kKey = &kConnection;

// Makes a dialect object for the connection, kept in `kept`.
template <class Dialect>
std::string made_object(Dialect*& kept) {
  kept = library([] { return new Dialect(kKey); });
  return kept != nullptr ? std::string("made") : "(null)";
}

// converted_names on a copy of the kept object.
template <class Dialect>
std::string names_of_copy(Dialect const* kept, std::initializer_list<char const*> names,
                          unsigned long kind) {
  if (kept == nullptr) return "no object";
  Dialect const copy(*kept);
  return converted_names(copy, names, kind);
}

// A pattern longer than the search keeps in place: searching it ignoring
// case (or through a map) allocates its folded copy.
constexpr char kLongPattern[] =
    "select customer_id, order_id, order_date, ship_date from dbo.order_details";
constexpr char kLongText[] =
    "-- report\nSELECT CUSTOMER_ID, ORDER_ID, ORDER_DATE, SHIP_DATE FROM DBO.ORDER_DETAILS;\n"
    "Select Customer_Id, Order_Id, Order_Date, Ship_Date From Dbo.Order_Details;\n";

// The warnings named for memory running out, as the outcomes show them: id,
// severity, function and text.
constexpr char kNoRamMap[] = "-1/4 _zmapdefine(): Not enough RAM to allocate a new map, sorry.";
constexpr char kNoRamClone[] = "-1/4 _zmapclone(): Not enough RAM to clone a map, sorry.";
constexpr char kNoRamSort[] =
    "-1/4 _zsortdefine(): Not enough RAM to allocate a new sort order, sorry.";
constexpr char kNoSpace[] = "Out of space for creating a new TCL reg.exp. interpretor.";
// Tcl_MatchRE without memory: for its compile, or for the pattern's copy
// and the interp (alternatives separated by '|').
constexpr char kNoSpaceOrNoInterp[] =
    "Out of space for creating a new TCL reg.exp. interpretor.|"
    "Internal error during regular expression interpretor creation!";
constexpr char kPurgeNoMemory[] =
    "199/4 <unknown>: _zstrpurge() - Warning: Not enough memory for internal buffers: NULL has "
    "been returned as result, sorry.";

// ---- character maps ---------------------------------------------------------

std::vector<Step> map_steps() {
  return {
      {"maps", "define",
       [] { return map_text(g_kept.upper = library([] { return _zmapdefine("A-Z=a-z"); })); },
       "bad map", kNoRamMap},
      {"maps", "conflict",
       [] {
         void* m = library([] { return _zmapdefine("b=a c=a=k=l=m=n=o=p=q=r=s"); });
         std::string const shown = map_text(m);
         library([&] { return _zmapfree(m); });
         return shown;
       },
       "bad map", kNoRamMap},
      {"maps", "syntax error",
       [] { return map_text(library([] { return _zmapdefine("A-Z=a-z abcdefghijklmnopqrst"); })); },
       "bad map", kNoRamMap},
      {"maps", "clone",
       [] { return map_text(g_kept.clone = library([] { return _zmapclone(g_kept.upper); })); },
       "bad map", kNoRamClone},
      {"maps", "dump",
       [] { return text(library([] { return _zmapdump2string(g_kept.upper, 1); })); }, "(null)"},
      {"maps", "mapped search",
       [] {
         return text(library([] { return _zmapstristr(g_kept.upper, kLongText, kLongPattern); }));
       },
       "(null)"},
      {"maps", "sort order",
       [] {
         void* order =
             library([] { return _zsortdefine(_zsortreadydef(ZEAL_SORT_CP1252_CI_AI)); });
         std::string shown = map_text(order);
         if (order != ZEAL_STR_BAD_MAP) {
           shown += library([&] { return _zsortstrcmp(order, "\xC9t\xE9", "ETE"); }) == 0 ? " =" : " !";
           library([&] { return _zmapfree(order); });
         }
         return shown;
       },
       "bad map", kNoRamSort},
      {"maps", "sort order syntax error",
       [] { return map_text(library([] { return _zsortdefine("a-z=A-Z b abcdefghijklmnopq"); })); },
       "bad map", kNoRamSort},
      {"maps", "sorted array",
       [] {
         // The sort's buffer may be refused: it then sorts in place, to the
         // same order.
         char const* names[40];
         std::string const pool = "usp_Load usp_read usp_Main usp_report";
         for (int i = 0; i < 40; ++i) names[i] = pool.c_str() + 9 * (i % 4) + (i % 2);
         library([&] { return _zsortstrarray(nullptr, names, 40, 1); });
         std::string shown;
         for (int i = 1; i < 40; ++i) shown += std::strcmp(names[i - 1], names[i]) <= 0 ? "" : "!";
         return shown + names[0];
       }},
      {"maps", "mapped replace",
       [] {
         char buffer[400];
         std::strcpy(buffer, kLongText);
         char* const r = library(
             [&] { return _zmapstrNreplace(g_kept.upper, buffer, kLongPattern, "t", 399); });
         return text(r);
       },
       "(null)"},
  };
}

// ---- growing string -----------------------------------------------------------

// The promise of a failed growth: NULL, the object empty without a buffer,
// the registered pointer cleared, and the object still usable.
std::string after_growth(CGrwStr& g, char* result, char* const& registered) {
  if (result != nullptr) return text(result);
  if (g.gethos() != nullptr || g.strlen() != 0 || registered != nullptr) {
    return "!a failed growth left text or pointers behind";
  }
  char* const again = library([&] { return g.strcat("usable again"); });
  return again != nullptr && std::strcmp(again, "usable again") == 0 ? "failed, usable"
                                                                     : "failed twice";
}

std::vector<Step> growing_string_steps() {
  return {
      {"grwstr", "initial text",
       [] {
         CGrwStr* g = nullptr;
         alignas(CGrwStr) unsigned char room[sizeof(CGrwStr)];
         library([&] { g = new (room) CGrwStr("SELECT name FROM sys.objects", 16); });
         std::string shown = text(g->gethos()) + " " + text(static_cast<long>(g->strlen()));
         library([&] { g->~CGrwStr(); });
         return shown;
       },
       "(null) 0"},
      {"grwstr", "oversized step",
       [] {
         char* hos = reinterpret_cast<char*>(1);
         library([&] {
           CGrwStr const g(40000000, -1, 0);
           hos = g.gethos();
         });
         return text(hos);
       },
       "(null)"},
      {"grwstr", "growth",
       [] {
         CGrwStr g(8, 0, 0);
         char* p = nullptr;
         std::string shown;
         shown += after_growth(g, library([&] { return g.strcpy("abc"); }), p);
         p = g.gethos();
         if (library([&] { return g.resync_ptr(0, &p, nullptr); }) == 0)
           return shown + " resync failed";
         shown += ' ' + after_growth(
                            g, library([&] { return g.strcat("a text longer than one step"); }), p);
         shown +=
             ' ' + after_growth(g, library([&] {
                                  return g.strcatf("%s-%d", "formatted text of some length", 42);
                                }),
                                p);
         char const* pos = g.gethos() != nullptr ? g.gethos() + 1 : nullptr;
         if (pos != nullptr) {
           shown +=
               ' ' +
               after_growth(g, library([&] { return g.insert(pos, "[inserted text, long]"); }), p);
         }
         shown += ' ' + after_growth(g, library([&] { return g += g; }), p);
         return shown;
       }},
      {"grwstr", "copy and dump",
       [] {
         CGrwStr g("a text for the copy constructor", 4);
         CGrwStr* copy = nullptr;
         alignas(CGrwStr) unsigned char room[sizeof(CGrwStr)];
         library([&] { copy = new (room) CGrwStr(g); });
         std::string shown = text(copy->gethos());
         char const* dump = library([&] { return copy->get_dump(); });
         shown +=
             dump != nullptr && std::strstr(dump, "m_dwLen") != nullptr ? " dumped" : " no dump";
         library([&] { copy->~CGrwStr(); });
         return shown;
       }},
  };
}

// ---- regular expressions ----------------------------------------------------------

std::string match_text(int r, Tcl_RegExp_* re) {
  std::string shown = text(static_cast<long>(r));
  if (r < 0) return shown + ": " + text(Tcl_GetRegError());
  char const *start = nullptr, *end = nullptr;
  if (r == 1 && Tcl_RegExpRange(re, 1, &start, &end) == 1 && start != nullptr) {
    shown += ' ' + std::string(start, end);
  }
  return shown;
}

std::vector<Step> regex_steps() {
  static char const kLine[] = "SELECT o.id FROM dbo.order_details o WHERE o.qty > 10";
  return {
      {"regex", "compile",
       [] {
         g_kept.re =
             library([] { return Tcl_RegExpCompile("FROM +([A-Za-z_.]+)( +WHERE +(.*))?"); });
         return g_kept.re != nullptr ? std::string("compiled") : failed_compile();
       },
       "NULL: Out of space for creating a new TCL reg.exp. interpretor."},
      {"regex", "match",
       [] {
         return match_text(library([] { return Tcl_RegExpMatch(kLine, g_kept.re); }), g_kept.re);
       },
       "-1: Out of space for creating a new TCL reg.exp. interpretor."},
      {"regex", "every match",
       [] {
         std::string shown;
         for (char const* from = kLine;;) {
           int const r = library([&] { return Tcl_RegExpExec(nullptr, g_kept.re, from, kLine); });
           shown += match_text(r, g_kept.re) + ";";
           char const *start = nullptr, *end = nullptr;
           if (r != 1 || Tcl_RegExpRange(g_kept.re, 0, &start, &end) != 1 || end == start) break;
           from = end;
         }
         return shown;
       }},
      {"regex", "attached text",
       [] {
         Tcl_RegExp_* const re =
             library([] { return Tcl_RegExpCompile("(@A=(a+)b)c@$$$(A named group text)"); });
         std::string const shown = re != nullptr ? "compiled" : failed_compile();
         library([&] { Tcl_DeleteInterp(re); });
         return shown;
       },
       "NULL: Out of space for creating a new TCL reg.exp. interpretor."},
      {"regex", "validity",
       [] {
         return text(
             static_cast<long>(library([] { return Tcl_IsValidRegularExpression("a(b|c"); })));
       }},
      {"regex", "compile cache",
       [] {
         std::string shown;
         for (char const* pattern :
              {"^CREATE +PROCEDURE +([a-z_.]+)", "^CREATE +PROCEDURE +([a-z_.]+)", "a(b"}) {
           Tcl_Interp* interp = nullptr;
           Tcl_RegExp_* re = nullptr;
           // A wrong pattern found in the cache is reported with the engine's
           // current error text: the same one, whether it was cached or not.
           library([&] { return Tcl_IsValidRegularExpression(pattern); });
           shown += text(
               static_cast<long>(library([&] { return Tcl_CompileRE(pattern, interp, re, 0); })));
           shown += re != nullptr ? "+;" : "-;";
         }
         return shown;
       },
       nullptr, kNoSpace},
      {"regex", "match cache",
       [] {
         std::string shown;
         for (char const* pattern :
              {"sel.*\\tfrom", "sel.*\\tfrom", "dbo\\.order_details", "x(y"}) {
           library([&] { return Tcl_IsValidRegularExpression(pattern); });  // as above
           shown += text(static_cast<long>(library([&] {
                      return Tcl_MatchRE("select *\tfrom dbo.order_details", pattern);
                    }))) +
                    ";";
         }
         return shown;
       },
       nullptr, kNoSpaceOrNoInterp},
  };
}

// ---- replacement, purge, searches -----------------------------------------------------

std::vector<Step> replace_steps() {
  return {
      {"replace", "growing",
       [] {
         char buffer[300] = "x = a.customer_id + b.customer_id + c.customer_id + d.customer_id";
         return text(library([&] {
           return _zstrNreplace(buffer, "customer_id", "customer_identifier_long", 299);
         }));
       },
       "(null)"},
      {"replace", "ignoring case",
       [] {
         char buffer[400];
         std::strcpy(buffer, kLongText);
         return text(
             library([&] { return _zstriNreplace(buffer, kLongPattern, "select * from t", 399); }));
       },
       "(null)"},
      {"replace", "whole words",
       [] {
         char buffer[300] = "id=grid+id*id_2+id";
         return text(library(
             [&] { return _zstrNreplaceEx(buffer, "id", "identifier", 299, "[a-zA-Z0-9_]"); }));
       },
       "(null)"},
      {"replace", "couples",
       [] {
         char buffer[300] = "select a, b from t where a = b";
         zstr_couple couples[] = {{"a", "alpha_column"}, {"b", "beta_column"}, {nullptr, nullptr}};
         return text(library([&] { return _zstrmultireplace(buffer, couples, 299); }));
       },
       "(null)"},
      {"replace", "clean",
       [] {
         std::string source;
         for (int i = 0; i < 40; ++i) source += "code /* comment " + std::to_string(i) + " */ ";
         std::vector<char> buffer(source.begin(), source.end());
         buffer.push_back('\0');
         return text(library([&] { return _zstrclean(buffer.data(), "/*", "*/", 0, 0); }));
       },
       "(null)"},
      {"purge", "purge",
       [] {
         char buffer[] = "keep /* drop /* nested */ drop */ keep (* not a span *) end";
         char s1[] = "/*", s2[] = "*/";
         return text(library([&] { return _zstrpurge(buffer, s1, s2, 0); }));
       },
       "(null)", kPurgeNoMemory},
      {"replace", "bad arguments",
       [] {
         char buffer[] = "text";
         return text(library([&] { return _zstrclean(buffer, nullptr, "*/", 0, 0); }));
       }},
      {"search", "ignoring case",
       [] { return text(library([] { return _zstristr(kLongText, kLongPattern); })); }, "(null)"},
      {"search", "last ignoring case",
       [] { return text(library([] { return _zstrristr(kLongText, kLongPattern); })); }, "(null)"},
      {"search", "count ignoring case",
       [] {
         return text(
             static_cast<long>(library([] { return _zstristrcnt(kLongText, kLongPattern); })));
       },
       "-1"},
      {"search", "first replacement ignoring case",
       [] {
         char buffer[400];
         std::strcpy(buffer, kLongText);
         return text(library([&] { return _zstri1replace(buffer, kLongPattern, "t", 399); }));
       },
       "(null)"},
      {"search", "count through a map",
       [] {
         void* upper = library([] { return _zmapdefine("A-Z=a-z"); });
         long const n = library([&] {
           return _zmapstrstrcnt(upper, const_cast<char*>(kLongText),
                                 const_cast<char*>(kLongPattern));
         });
         long const delta = library([&] {
           return _zmapstrdeltalen(upper, const_cast<char*>(kLongText),
                                   const_cast<char*>(kLongPattern), const_cast<char*>("t"));
         });
         if (upper != ZEAL_STR_BAD_MAP) library([&] { return _zmapfree(upper); });
         return text(n) + " " + text(delta);
       }},
  };
}

// ---- copies, arenas, warnings ---------------------------------------------------------

std::vector<Step> copy_steps() {
  return {
      {"copies", "dupalloc",
       [] {
         char* copy = library([] { return _zstrdupalloc("a heap copy of some length", 8); });
         std::string const shown = text(copy);
         library([&] { _zstrdupfree(copy); });
         return shown;
       },
       "(null)"},
      {"copies", "dupnalloc",
       [] {
         char* copy = library([] { return _zstrdupnalloc("a heap copy of some length", 20, 0); });
         std::string const shown = text(copy);
         library([&] { _zstrdupfree(copy); });
         return shown;
       },
       "(null)"},
      {"copies", "owner",
       [] {
         return library([] {
                  CStringAlloc const owned("an owned copy of some length");
                  return static_cast<char const*>(owned) != nullptr ? 1 : 0;
                }) != 0
                    ? std::string("owned")
                    : "(null)";
       },
       "(null)"},
      {"copies", "arenas",
       [] {
         std::string shown = text(library([] { return _zstrgetbefore("dbo.order_details", '.'); }));
         shown += ' ' + text(library([] { return _zstrupperized("upper case copy"); }));
         shown += ' ' + text(library([] { return _zstrprintf("%s=%d", "formatted", 7); }));
         return shown;
       }},
      {"warnings", "bad arguments",
       [] {
         char buffer[8] = "abc";
         std::string shown = text(static_cast<long>(library([] { return _zstrlen(nullptr); })));
         shown += ' ' + text(library([&] { return _zstrcpy(buffer, nullptr); }));
         shown += ' ' + text(library([] { return _zplsqlstrupper(nullptr); }));
         return shown;
       }},
      {"warnings", "service lists",
       [] {
         std::size_t const kept = library([] { return errsvc::records().size(); });
         return kept == 0 ? std::string("none") : "some";
       }},
  };
}

// ---- SQL settings, dialect objects, T-SQL code ---------------------------------------------

std::vector<Step> sql_steps() {
  return {
      {"settings", "default settings",
       [] {
         int const tsql =
             library([] { return _ztsqlsetdefaults(nullptr, 15, 1021, 0, 0, '"', nullptr); });
         int const plsql =
             library([] { return _zplsqlsetdefaults(nullptr, 152, 31, 513, nullptr); });
         return text(static_cast<long>(tsql)) + " " + text(static_cast<long>(plsql));
       }},
      {"settings", "defaults",
       [] {
         char* first = nullptr;
         char* others = nullptr;
         int const built =
             library([&] { return _zstr_build_tsql_allowed_charsets(first, others, nullptr); });
         return text(static_cast<long>(built)) +
                (first != nullptr && first[static_cast<unsigned char>('A')] ? " A allowed" : " -");
       }},
      {"settings", "set",
       [] {
         char definition[] = "[A-Za-z_@]  ";
         return text(static_cast<long>(
             library([&] { return _ztsqlsetdefaults(kKey, 2016, 128, 1, 1, '[', definition); })));
       },
       "0"},
      {"settings", "read",
       [] {
         int version = 0;
         char const* first = nullptr;
         int const own = library([&] {
           return _ztsqlgetdefaults(kKey, &version, nullptr, nullptr, nullptr, nullptr, &first);
         });
         return text(static_cast<long>(own)) + " " + text(static_cast<long>(version)) + " " +
                text(first);
       }},
      {"settings", "bad version",
       [] {
         return text(static_cast<long>(
             library([] { return _ztsqlsetdefaults(kKey, 5, 128, 0, 0, '"', nullptr); })));
       }},
      {"settings", "plsql",
       [] {
         int const set = library([] { return _zplsqlsetdefaults(kKey, 1160, 128, 128, "[A-Z$]"); });
         char* first = nullptr;
         char* others = nullptr;
         int const built =
             library([&] { return _zstr_build_plsql_allowed_charsets(first, others, kKey); });
         return text(static_cast<long>(set)) + " " + text(static_cast<long>(built));
       }},
      {"dialects", "settings",
       [] {
         int const defaults =
             library([] { return _ztsqlsetdefaults(nullptr, 15, 1021, 0, 0, '"', nullptr); });
         int const tsql =
             library([] { return _ztsqlsetdefaults(kKey, 2016, 128, 1, 1, '[', "[A-Za-z_]"); });
         int const plsql =
             library([] { return _zplsqlsetdefaults(nullptr, 152, 31, 513, nullptr); });
         return text(static_cast<long>(defaults)) + text(static_cast<long>(tsql)) +
                text(static_cast<long>(plsql));
       }},
      {"dialects", "tsql object", [] { return made_object(g_kept.tsql); }, "(null)"},
      {"dialects", "tsql names",
       [] {
         return names_of_copy(g_kept.tsql,
                              {"Order Details of the year", "[Order]]Details of the year]"}, 0);
       }},
      {"dialects", "plsql object", [] { return made_object(g_kept.plsql); }, "(null)"},
      {"dialects", "plsql names",
       [] {
         return names_of_copy(g_kept.plsql,
                              {"Mixed Case Name Here", "\"Delimited \"\"Name\"\" Here\""}, 1);
       }},
      {"dialects", "plsql copies",
       [] {
         char* sys = library([] { return _zplsql2sysname("employee_records_table", 1); });
         char* source = library([] { return _zsysname2plsql("Mixed Case Table Name"); });
         std::string shown = text(sys) + " | " + text(source);
         library([&] { CHSQL::DeleteComponents(nullptr, &sys, &source, nullptr); });
         return shown;
       }},
      {"dialects", "oracle upper case",
       [] {
         char buffer[] =
             "stra\xDF"
             "e \xE9"
             "l\xE8ve na\xEFve";
         char const* const upper = library([&] { return _zplsqlstrupper(buffer); });
         return upper != nullptr ? hex(upper) : "(null)";
       }},
      {"dialects", "registry",
       [] {
         g_kept.entry = library([] { return new CConnForStrFncs(kKey, 'T'); });
         CConnForStrFncs* const found = library([] { return CConnForStrFncs::Find(kKey, 'T'); });
         return std::string(g_kept.entry != nullptr ? "made" : "(null)") +
                (found == g_kept.entry ? " found" : " not found");
       },
       "(null) found"},
      {"dialects", "code in one case",
       [] {
         void* lower = library([] { return _zmapdefine("a-z=A-Z"); });
         char code[] = "SELECT [Name], N'Keep Me' FROM T -- As Is\nWHERE \"Col\" = 1";
         library([&] { _zmaptsqlapply(lower, code, 0); });
         if (lower != ZEAL_STR_BAD_MAP) library([&] { return _zmapfree(lower); });
         return std::string(code);
       }},
      {"dialects", "hidden copy",
       [] {
         char* const hidden = library([] {
           return _ztsqlhidenonsqlcode("SELECT 'secret' FROM T -- note", ZEAL_HIDE_DEFAULT, '.');
         });
         std::string const shown = text(hidden);
         library([&] { delete[] hidden; });
         return shown;
       },
       "(null)"},
      {"dialects", "parts set aside",
       [] {
         // Hide gives NULL when it cannot hold its parts; Restore when it
         // cannot make its copy.  Either way nothing leaks.
         auto* const parts = library([] { return new HideCodeParts; });
         if (parts == nullptr) return std::string("(null)");
         char const* const hidden = library(
             [&] { return parts->HidePlSql("x := q'[it's]'; -- done", ZEAL_HIDE_DEFAULT); });
         char* back = hidden != nullptr ? library([&] { return parts->Restore(hidden); }) : nullptr;
         std::string const shown = text(back);
         library([&] {
           _zstrdupfree(back);
           delete parts;
         });
         return shown;
       }},
  };
}

// ---- all occurrences ------------------------------------------------------------------

std::vector<Step> findall_steps() {
  return {
      {"findall", "walk",
       [] {
         static char text_[] = "aaXaaXaa";
         std::string shown;
         library([&] {
           CFindAllStr find(text_, "aa", 0);
           char const* last = nullptr;
           for (;;) {
             char* const at = find.FindByXOR(0);
             if (at != nullptr) shown += std::to_string(at - text_) + ",";
             if (at == nullptr && find.GetLastFindPos() == last) break;
             last = find.GetLastFindPos();
           }
         });
         return shown;
       }},
      {"findall", "bad argument",
       [] {
         return text(library([] {
           CFindAllStr find(nullptr, "aa", 0);
           return find.FindByXOR(0);
         }));
       }},
  };
}

void release(Kept& k) {
  if (k.re != nullptr) Tcl_DeleteInterp(k.re);
  for (void* m : {k.upper, k.clone}) {
    if (m != nullptr && m != ZEAL_STR_BAD_MAP) _zmapfree(m);
  }
  delete k.tsql;
  delete k.plsql;
  delete k.entry;
  k = Kept{};
}

// Every step, family after family.
std::vector<Step> all_steps() {
  std::vector<Step> steps;
  for (auto part : {map_steps, growing_string_steps, regex_steps, replace_steps, copy_steps,
                    sql_steps, findall_steps}) {
    for (Step& s : part()) steps.push_back(std::move(s));
  }
  return steps;
}

}  // namespace

std::vector<char const*> families() {
  std::vector<char const*> names;
  for (Step const& s : all_steps()) {
    auto const same = [&s](char const* name) { return std::strcmp(name, s.family) == 0; };
    if (std::none_of(names.begin(), names.end(), same)) names.push_back(s.family);
  }
  return names;
}

std::vector<Step> workload(std::string const& family) {
  std::vector<Step> steps;
  for (Step& s : all_steps()) {
    if (family == s.family) steps.push_back(std::move(s));
  }
  return steps;
}

void end_run() {
  library([] { release(g_kept); });
}

void release_caches() {
  library([] {
    Tcl_Interp* interp = nullptr;
    Tcl_RegExp_* re = nullptr;
    Tcl_CompileRE(reinterpret_cast<char const*>(-1), interp, re, 0);
    Tcl_MatchRE(reinterpret_cast<char const*>(-1), nullptr);
    _zstrpurge(nullptr, nullptr, nullptr, 0);
    CConnForStrFncs::DeleteWholeArena();
    // The search ignoring case keeps the folded copy of a long pattern until
    // a shorter one replaces it.
    _zstristr("", "x");
  });
  errsvc::clear();
}

}  // namespace zelstr::test
