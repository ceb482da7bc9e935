// The error-handler service: filing, sinks, short names, registrations and
// per-thread buffers.
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "support/warnings.h"

namespace {

std::vector<std::string> g_sunk;
void sink(errsvc::Record const& r) { g_sunk.push_back(r.text); }

using Service = zelstr::test::WarningsTest;

TEST_F(Service, FilesRecordsInOrderAndHandsThemToTheSink) {
  g_sunk.clear();
  errsvc::Sink const before = errsvc::set_sink(sink);
  EXPECT_EQ(ErrHandDLL_AddError(new CErrorDescription(7, "unit", "f()", 12, "one", 4, 9)), 1);
  EXPECT_EQ(ErrHandDLL_AddError(new CErrorDescription(8, nullptr, nullptr, -1, "two", 2, 0)), 2);
  EXPECT_EQ(ErrHandDLL_AddError(nullptr), 2);
  EXPECT_EQ(errsvc::set_sink(before), sink);
  EXPECT_EQ(g_sunk, (std::vector<std::string>{"one", "two"}));
  std::vector<errsvc::Record> const r = errsvc::records();
  ASSERT_EQ(r.size(), 2u);
  EXPECT_EQ(r[0].line, 7);
  EXPECT_EQ(r[0].file, "unit");
  EXPECT_EQ(r[0].function, "f()");
  EXPECT_EQ(r[0].id, 12);
  EXPECT_EQ(r[0].extra, 9u);
  EXPECT_EQ(r[1].file, "");
  EXPECT_EQ(errsvc::null_record_count(), 1u);
  errsvc::clear();
  EXPECT_TRUE(errsvc::records().empty());
  EXPECT_EQ(errsvc::null_record_count(), 0u);
}

TEST_F(Service, AFailedAllocationYieldsNullOnce) {
  errsvc::fail_next_record_allocations(1);
  EXPECT_EQ(new CErrorDescription(1, "", "", 0, "", 4, 0), nullptr);
  CErrorDescription* const record = new CErrorDescription(1, "", "", 0, "", 4, 0);
  ASSERT_NE(record, nullptr);
  ErrHandDLL_AddError(record);
}

TEST(ServiceNames, RemovePathKeepsTheBaseName) {
  EXPECT_STREQ(CMarkerDescription::RemovePath("C:\\src\\zeal_str.cpp", 1), "zeal_str");
  EXPECT_STREQ(CMarkerDescription::RemovePath("src/str/zeal_str.cpp", 0), "zeal_str.cpp");
  EXPECT_STREQ(CMarkerDescription::RemovePath("dllmain", 1), "dllmain");
  EXPECT_STREQ(CMarkerDescription::RemovePath(nullptr, 1), "");
  int const first = ErrHandDLL_RegisterTowardsDll("a/b/unit_one.cpp");
  EXPECT_EQ(ErrHandDLL_RegisterTowardsDll("unit_two"), first + 1);
  EXPECT_EQ(errsvc::registered_sources().back(), "unit_two");
  EXPECT_EQ(ErrHandDLL_RegisterTowardsDll(nullptr), 0);
}

TEST(ServiceBuffers, EachThreadHasItsOwn) {
  char* const mine = ErrHand_BufferForLoadString();
  EXPECT_NE(mine, ErrHand_BufferForFormatMessage());
  char* theirs = nullptr;
  std::thread([&theirs] { theirs = ErrHand_BufferForLoadString(); }).join();
  EXPECT_NE(mine, theirs);
  std::memset(mine, 'x', 2047);  // 2048 bytes each
  mine[2047] = '\0';
  EXPECT_GT(std::strlen(ErrHand_Msg_ERRSVC_BAD_ARGUMENT()), 0u);
  EXPECT_GT(std::strlen(ErrHand_Msg_ERRSVC_INCOHERENT_FLAG()), 0u);
  EXPECT_GT(std::strlen(ErrHand_Msg_ERRSVC_INTERNAL_ERROR()), 0u);
}

}  // namespace
