// The registry of connection-keyed objects, and the dialect objects seen
// through their common interface.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/library_text.h"
#include "support/warnings.h"
#include "zelstr/zelstr.h"

namespace {

using zelstr::test::owned;

char g_keys[8];
void const* key(int i) { return &g_keys[i]; }

// The registry, walked from its start: (key index, language) pairs.  The
// exported ends of the list are its first and last objects.
std::vector<std::pair<int, char>> arena() {
  std::vector<std::pair<int, char>> out;
  CConnForStrFncs* last = nullptr;
  for (CConnForStrFncs* e = CConnForStrFncs::GetArenaEntry(); e != nullptr; e = e->GetNext()) {
    int const index = static_cast<int>(static_cast<char const*>(e->GetConnection()) - g_keys);
    out.emplace_back(index, e->GetLanguageChar());
    last = e;
  }
  EXPECT_EQ(CConnForStrFncs::GetArenaEntry(), CConnForStrFncs::m_p1stCnctEnv);
  EXPECT_EQ(last, CConnForStrFncs::m_pLastCnctEnv);
  return out;
}

using Entries = std::vector<std::pair<int, char>>;

TEST(ConnForStrFncs, ObjectsLinkAndUnlinkThemselves) {
  ASSERT_TRUE(arena().empty());
  auto* a = new CConnForStrFncs(key(0), 'T');
  auto* b = new CConnForStrFncs(key(1), 'P');
  auto* c = new CConnForStrFncs(*a);  // a new entry with a's key and language
  EXPECT_EQ((Entries{{0, 'T'}, {1, 'P'}, {0, 'T'}}), arena());
  *c = *b;  // already linked: only key and language change
  EXPECT_EQ((Entries{{0, 'T'}, {1, 'P'}, {1, 'P'}}), arena());
  EXPECT_EQ(b, CConnForStrFncs::Find(key(1), 'P'));
  EXPECT_EQ(nullptr, CConnForStrFncs::Find(key(1), 'T'));
  delete b;  // Find must not answer from a stale look-up
  EXPECT_EQ(c, CConnForStrFncs::Find(key(1), 'P'));
  EXPECT_EQ((Entries{{0, 'T'}, {1, 'P'}}), arena());
  delete a;
  delete c;
  EXPECT_TRUE(arena().empty());
  EXPECT_EQ(nullptr, CConnForStrFncs::Find(key(1), 'P'));
}

// Delete removes the first entry of the key in list order, whatever its
// language; it keeps its lock afterwards, which the same thread re-enters.
TEST(ConnForStrFncs, DeleteTakesTheFirstEntryOfTheKey) {
  new CConnForStrFncs(key(2), 'P');
  new CConnForStrFncs(key(3), 'T');
  new CConnForStrFncs(key(2), 'T');
  EXPECT_EQ(1, CConnForStrFncs::Delete(key(2)));
  EXPECT_EQ((Entries{{3, 'T'}, {2, 'T'}}), arena());
  EXPECT_EQ(1, CConnForStrFncs::Delete(key(2)));
  EXPECT_EQ(0, CConnForStrFncs::Delete(key(2)));
  EXPECT_EQ((Entries{{3, 'T'}}), arena());
  new CConnForStrFncs(key(4), 'P');
  CConnForStrFncs::DeleteWholeArena();
  EXPECT_TRUE(arena().empty());
  EXPECT_EQ(nullptr, CConnForStrFncs::Find(key(3), 'T'));
}

TEST(CHSQL, DeleteComponentsFreesAndClears) {
  char** parts = new char* [3] { _zstrdupalloc("a", 0), _zstrdupalloc("b", 0), nullptr };
  char* one = _zstrdupalloc("x", 0);
  char* two = _zstrdupalloc("y", 0);
  CHSQL::DeleteComponents(&parts, &one, &two, static_cast<char**>(nullptr));
  EXPECT_EQ(nullptr, parts);
  EXPECT_EQ(nullptr, one);
  EXPECT_EQ(nullptr, two);
  CHSQL::DeleteComponents(&parts, nullptr);  // nothing left: nothing happens
  CHSQL::DeleteComponents(nullptr, nullptr);
}

TEST(CHSQL, PlsqlObjectThroughTheInterface) {
  CHPLSQL const plsql(key(5));
  CHSQL const& dialect = plsql;
  EXPECT_EQ('P', dialect.GetLanguageChar());
  EXPECT_EQ(key(5), dialect.GetConnection());
  EXPECT_EQ("EMP", owned(dialect.GetDenormalizedId("EMP", 0)));
  // 0x200 with '"': quoted once more, even when quoted already.
  EXPECT_EQ("\"EMP\"", owned(dialect.GetDenormalizedId("EMP", 0x200 | '"')));
  EXPECT_EQ("\"\"\"Emp\"\"\"", owned(dialect.GetDenormalizedId("Emp", 0x200 | '"')));
  EXPECT_EQ("\"Emp\"", owned(dialect.GetDenormalizedId("Emp", 0x200 | '[')));
  EXPECT_EQ("EMP", owned(dialect.GetNormalizedId("emp", 4)));
  EXPECT_EQ("<null>", owned(dialect.GetNormalizedId("\"a\"b\"", 4)));
  EXPECT_EQ(1, dialect.IsValidSysName("EMP", 4));
  EXPECT_EQ(0, dialect.IsValidSysName("1EMP", 4));
  EXPECT_EQ(1, dialect.IsReservedWord("varray", 152));
  EXPECT_EQ(0, dialect.IsReservedWord("varray", 102));
  char buffer[16] = "a.b";
  char** parts = nullptr;
  EXPECT_EQ(0, dialect.DenormalizeQualId(buffer, 0));
  EXPECT_EQ(nullptr, dialect.GetDenormalizedQualId("a.b", 0));
  EXPECT_EQ(0, dialect.SplitQualCodeName("a.b", &parts, 0));
}

TEST(CHSQL, TsqlObjectThroughTheInterface) {
  ASSERT_EQ(1, _ztsqlsetdefaults(key(6), 14, 20, 0, 1, '[', nullptr));
  CHTSQL const tsql(key(6));
  CHSQL const& dialect = tsql;
  EXPECT_EQ('T', dialect.GetLanguageChar());
  EXPECT_EQ(1, dialect.IsReservedWord("pivot", 14));
  EXPECT_EQ(0, dialect.IsReservedWord("pivot", 8));  // the argument's version, not the setting
  EXPECT_EQ("Orders", owned(dialect.GetDenormalizedId("Orders", 0)));
  EXPECT_EQ("[PIVOT]", owned(dialect.GetDenormalizedId("PIVOT", 0)));
  EXPECT_EQ("[order]]s]", owned(dialect.GetDenormalizedId("order]s", 0)));
  EXPECT_EQ("order]s", owned(dialect.GetNormalizedId("[order]]s]", 0)));
  EXPECT_EQ("a\"b", owned(dialect.GetNormalizedId("\"a\"\"b\"", 0)));
  EXPECT_EQ(1, dialect.IsValidSysName("_tmp#1", 0));
  EXPECT_EQ(0, dialect.IsValidSysName("1tmp", 0));
  EXPECT_EQ(0, dialect.IsValidSysName("a_name_of_twenty_chr", 0));  // limit 20
}

}  // namespace
