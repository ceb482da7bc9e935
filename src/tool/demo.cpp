// demo.cpp - the built-in example: a short tour of the library's calls on
// SQL-flavoured text, each line a call and its result, with the warnings
// that bad arguments draw.
#include <cstdio>
#include <span>

#include "errsvc/errsvc.h"
#include "tool/invocation.h"
#include "zelstr/zelstr.h"

namespace zelstr::tool {
namespace {

void print_indented_record(errsvc::Record const& r) {
  std::printf("    -> warning %d (severity %d, %s): %s\n", r.id, r.severity, r.file.c_str(),
              r.text.c_str());
}

void show(char const* call, char const* result) {
  if (result != nullptr) {
    std::printf("%-52s = \"%s\"\n", call, result);
  } else {
    std::printf("%-52s = NULL\n", call);
  }
}

void show(char const* call, long result) { std::printf("%-52s = %ld\n", call, result); }

}  // namespace

int run_demo(Invocation& /*invocation*/) {
  errsvc::Sink const previous = errsvc::set_sink(print_indented_record);
  char const* const query = "SELECT name FROM sys.objects WHERE type = 'U'";
  char buffer[128];

  std::printf("ZelStr32 %s - built-in example\n\n", ZELSTR_VERSION);
  std::printf("query: %s\n\n", query);
  show("_zstrlen(query)", static_cast<long>(_zstrlen(query)));
  show("_zstrgetbefore(query, \" \")", _zstrgetbefore(query, " "));
  show("_zstrcpybefore(buffer, query, 'W')", _zstrcpybefore(buffer, query, 'W'));
  show("_zstrcmp(\"sys.objects\", \"sys.columns\")",
       static_cast<long>(_zstrcmp("sys.objects", "sys.columns")));
  show("_zstricmp(\"SELECT\", \"select\")", static_cast<long>(_zstricmp("SELECT", "select")));
  show("_zstrncmp(\"dbo.Orders\", \"dbo.OrderLines\", 9)",
       static_cast<long>(_zstrncmp("dbo.Orders", "dbo.OrderLines", 9)));
  show("_zstrdiffpoint(\"dbo.Orders\", \"DBO.ORDERS\", 0)",
       _zstrdiffpoint("dbo.Orders", "DBO.ORDERS", 0));
  _zstrcpy(buffer, "FROM t");
  show("_zstrins(\"FROM t\", \"SELECT * \")", _zstrins(buffer, "SELECT * "));
  show("_zstrprintf(\"%s.%s\", \"dbo\", \"Orders\")", _zstrprintf("%s.%s", "dbo", "Orders"));
  show("_zstrclone(\"sp_help\", 16)", _zstrclone("sp_help", 16));

  std::printf("\nbad arguments are reported, never fatal:\n");
  show("_zstrlen(NULL)", static_cast<long>(_zstrlen(nullptr)));
  show("_zstrcpy(buffer, NULL)", _zstrcpy(buffer, nullptr));
  show("_zstrcmp(NULL, \"x\")", static_cast<long>(_zstrcmp(nullptr, "x")));
  show("_zstrsafecpyf0(buffer, NULL, 8)", _zstrsafecpyf0(buffer, nullptr, 8));

  errsvc::set_sink(previous);
  return 0;
}

}  // namespace zelstr::tool
