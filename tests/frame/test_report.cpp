// The warning convention: records built from literal and string-table
// messages, the bad-resource text, and the NULL record when memory is short.
#include <string>
#include <vector>

#include "frame/messages.h"
#include "frame/report.h"
#include "support/warnings.h"

namespace {

using zelstr::frame::Message;
using zelstr::frame::report;
using zelstr::frame::Unit;
using zelstr::test::ExpectedWarning;
using zelstr::test::filed_exactly;

struct TableEntry {
  int id;
  char const* text;
};

std::vector<TableEntry> const kTable = {
#define ZELSTR_TABLE(id, name, text) {id, text},
#include "frame/messages.def"
};

using Reporting = zelstr::test::WarningsTest;

TEST_F(Reporting, ALiteralMessageKeepsItsFieldsAndIdMinusOne) {
  Message const notice{-1, 2, "a literal notice"};
  report(Unit::growingstring, notice, "CGrwStr::insert()", 1234);
  std::vector<errsvc::Record> const r = errsvc::records();
  ASSERT_EQ(r.size(), 1u);
  EXPECT_EQ(r[0].line, 1234);
  EXPECT_EQ(r[0].file, "growingstring");
  EXPECT_EQ(r[0].function, "CGrwStr::insert()");
  EXPECT_EQ(r[0].id, -1);
  EXPECT_EQ(r[0].text, "a literal notice");
  EXPECT_EQ(r[0].severity, 2);
  EXPECT_EQ(r[0].extra, 0u);
}

TEST_F(Reporting, ATableMessageCarriesItsIdAndLoadedText) {
  report(Unit::zeal_str, zelstr::frame::msg::kStrlenNullString);
  EXPECT_TRUE(filed_exactly({ExpectedWarning{
      86,
      "_zstrlen() - Warning: <string> given in argument was NULL: 0L was returned as length."}}));
  EXPECT_EQ(zelstr::frame::current_message_id(), 86);
}

// Both platforms build their string table from the one message list: every
// entry must load back verbatim under its id.
TEST_F(Reporting, EveryTableEntryLoadsVerbatim) {
  std::vector<bool> seen(zelstr::frame::kMaxMessageId + 1);
  for (TableEntry const& e : kTable) {
    ASSERT_GE(e.id, 0);
    ASSERT_LE(e.id, zelstr::frame::kMaxMessageId);
    ASSERT_FALSE(seen[e.id]) << "id " << e.id << " defined twice";
    seen[e.id] = true;
    errsvc::clear();
    report(Unit::zeal_str, Message{e.id, 4, nullptr});
    ASSERT_TRUE(filed_exactly({ExpectedWarning{e.id, e.text}}));
  }
}

TEST_F(Reporting, AnAbsentIdGivesTheBadResourceText) {
  for (int id : {5, 300}) {
    errsvc::clear();
    report(Unit::zeal_str, Message{id, 4, nullptr});
    std::vector<errsvc::Record> const r = errsvc::records();
    ASSERT_EQ(r.size(), 1u);
    std::string const head = "<Bad resource ID=" + std::to_string(id) + " - message='";
    EXPECT_EQ(r[0].id, id);
    EXPECT_EQ(r[0].text.rfind(head, 0), 0u) << r[0].text;
    EXPECT_GT(r[0].text.size(), head.size() + 2) << "the system's text is missing";
    EXPECT_EQ(r[0].text.substr(r[0].text.size() - 2), "'>");
  }
}

TEST_F(Reporting, ARecordThatCannotBeAllocatedIsHandedOverAsNull) {
  errsvc::fail_next_record_allocations(2);
  report(Unit::zeal_str, Message{-1, 4, "literal"});
  report(Unit::zeal_str, zelstr::frame::msg::kStrcmpBothNull);
  EXPECT_TRUE(errsvc::records().empty());
  EXPECT_EQ(errsvc::null_record_count(), 2u);
  EXPECT_EQ(zelstr::frame::current_message_id(), 192);
  report(Unit::zeal_str, Message{-1, 4, "literal"});
  EXPECT_EQ(errsvc::records().size(), 1u);
}

}  // namespace
