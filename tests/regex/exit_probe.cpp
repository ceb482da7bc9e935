// A program that leaves entries in both compiled-expression caches and
// simply returns: the library empties them when it is unloaded, after the
// program's own statics are gone, and the program must still end cleanly.
#include "zelstr/zelstr.h"

int main() {
  Tcl_Interp* interp = nullptr;
  Tcl_RegExp_* re = nullptr;
  int const compiled = Tcl_CompileRE("a(b|c)+", interp, re, 1);
  int const matched = Tcl_MatchRE("xabcb", "a(b|c)+");
  return compiled == 1 && matched == 1 ? 0 : 1;
}
