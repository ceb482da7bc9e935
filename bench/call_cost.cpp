// call_cost - runs one short library call a given number of times, for
// counting its instructions under callgrind (bench/instructions_per_call.py
// runs it with 0 and with N calls and divides the difference by N).  Short
// calls show the fixed cost of a call best: finding the calling thread's
// state, preparing a pattern, clearing the error text.
//
//   call_cost CASE N        CASE: one of the names printed by call_cost --list
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zelstr/zelstr.h"

namespace {

char const kLine[] =
    "SELECT c.name, o.total FROM dbo.Customers c JOIN dbo.Orders o ON o.customer_id = c.id";

struct Case {
  char const* name;
  void (*run)(long n);
};

Tcl_RegExp_* g_re = nullptr;
char g_buffer[512];
volatile long g_sink;  // keeps the results alive

template <class F>
void repeat(long n, F f) {
  for (long i = 0; i < n; ++i) f();
}

Case const kCases[] = {
    {"search", [](long n) { repeat(n, [] { g_sink = _zstrstr(kLine, "Orders") != nullptr; }); }},
    {"isearch", [](long n) { repeat(n, [] { g_sink = _zstristr(kLine, "orders") != nullptr; }); }},
    {"delimited",
     [](long n) { repeat(n, [] { g_sink = _zstrstr1(kLine, "o", " .") != nullptr; }); }},
    {"replace",
     [](long n) {
       repeat(n, [] {
         std::strcpy(g_buffer, kLine);
         _zstrNreplace(g_buffer, "o.", "ord.", sizeof g_buffer - 1);
       });
     }},
    {"ireplace",
     [](long n) {
       repeat(n, [] {
         std::strcpy(g_buffer, kLine);
         _zstriNreplace(g_buffer, "O.", "ord.", sizeof g_buffer - 1);
       });
     }},
    {"quoted", [](long n) { repeat(n, [] { g_sink = _zstrquoted("Customers", '\'')[0]; }); }},
    {"clone", [](long n) { repeat(n, [] { g_sink = _zstrclone("Customers", 0)[0]; }); }},
    {"printf",
     [](long n) { repeat(n, [] { g_sink = _zstrprintf("%s.%s", "dbo", "Orders")[0]; }); }},
    {"upperized", [](long n) { repeat(n, [] { g_sink = _zstrupperized("Customers")[0]; }); }},
    {"setdef", [](long n) { repeat(n, [] { g_sink = _zstrspnex(kLine, "[A-Z]"); }); }},
    {"regex.match",
     [](long n) {
       g_re = Tcl_RegExpCompile("JOIN +([a-z.]+)");
       repeat(n, [] { g_sink = Tcl_RegExpMatch(kLine, g_re); });
     }},
    {"regex.matchre", [](long n) { repeat(n, [] { g_sink = Tcl_MatchRE(kLine, "FROM +dbo"); }); }},
    {"settings",
     [](long n) {
       repeat(n, [] {
         int version = 0;
         g_sink = _ztsqlgetdefaults(nullptr, &version, nullptr, nullptr, nullptr, nullptr, nullptr);
       });
     }},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
    for (Case const& c : kCases) std::printf("%s\n", c.name);
    return 0;
  }
  if (argc != 3) {
    std::fprintf(stderr, "usage: call_cost CASE N | --list\n");
    return 2;
  }
  for (Case const& c : kCases) {
    if (std::strcmp(c.name, argv[1]) != 0) continue;
    // One call first, so that the counted calls find their state made.
    c.run(1);
    c.run(std::atol(argv[2]));
    return 0;
  }
  std::fprintf(stderr, "call_cost: no case '%s'\n", argv[1]);
  return 2;
}
