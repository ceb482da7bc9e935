// Uses the installed library as a program of the analyser would: a call, a
// bad argument, and the warning it filed.
#include <errsvc/errsvc.h>
#include <zelstr/zelstr.h>

#include <cstdio>
#include <vector>

int main() {
  if (_zstrcmp("dbo.a", "dbo.b") != -1) return 1;
  if (_zstrlen(nullptr) != 0) return 2;
  std::vector<errsvc::Record> const records = errsvc::records();
  if (records.size() != 1 || records[0].id != 86) return 3;
  std::printf("consumer: %s %s\n", ZELSTR_VERSION, records[0].text.c_str());
  return 0;
}
