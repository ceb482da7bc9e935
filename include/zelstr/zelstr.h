// zelstr.h - the whole interface of the ZelStr32 string library.
//
// The library works on 8-bit zero-terminated strings.  A bad argument never
// stops a call: the function reports a warning to the error-handler service
// (errsvc/errsvc.h) and returns the fallback value its message names.  No
// function throws: one that cannot get memory returns the failure value
// its header names (alloc.h has the rule).
//
// Threads: every function may run on several threads at once, as long as the
// threads share no object (each header names its objects).  What a function
// keeps from one call to the next is the calling thread's own: a result in a
// static buffer or an arena stays valid until that thread overwrites it, and
// a thread's state is released when the thread ends.  Unloading the library
// releases every thread's state; no call may follow the unload.
#ifndef ZELSTR_ZELSTR_H
#define ZELSTR_ZELSTR_H

#include "zelstr/alloc.h"
#include "zelstr/append.h"
#include "zelstr/bytes.h"
#include "zelstr/case.h"
#include "zelstr/codehide.h"
#include "zelstr/compare.h"
#include "zelstr/copy.h"
#include "zelstr/dialect.h"
#include "zelstr/extract.h"
#include "zelstr/findall.h"
#include "zelstr/findmany.h"
#include "zelstr/grwstr.h"
#include "zelstr/length.h"
#include "zelstr/map.h"
#include "zelstr/mapped.h"
#include "zelstr/sortorder.h"
#include "zelstr/plsql.h"
#include "zelstr/position.h"
#include "zelstr/quote.h"
#include "zelstr/regex.h"
#include "zelstr/regextras.h"
#include "zelstr/replace.h"
#include "zelstr/reserved.h"
#include "zelstr/scanner.h"
#include "zelstr/scratch.h"
#include "zelstr/search.h"
#include "zelstr/setdef.h"
#include "zelstr/sqlsettings.h"
#include "zelstr/strhelper.h"
#include "zelstr/textutil.h"
#include "zelstr/tokens.h"
#include "zelstr/tree.h"
#include "zelstr/trim.h"
#include "zelstr/tsql.h"
#include "zelstr/types.h"
#include "zelstr/version.h"
#include "zelstr/wildcard.h"

#endif  // ZELSTR_ZELSTR_H
