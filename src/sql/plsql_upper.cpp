// plsql_upper.cpp - upper case as the Oracle server makes it.
#include "platform/collator.h"
#include "sql/report.h"
#include "zelstr/plsql.h"

namespace {

// The collator language of Oracle SQL and PL/SQL source code.
constexpr int kOracleLanguage = 9;

}  // namespace

char* _zplsqlstrupper(char* text) noexcept {
  if (text == nullptr) {
    zelstr::sql::warn(zelstr::frame::Unit::zelstroraclefnc,
                      zelstr::sql::msg::kPlsqlUpperNullString);
    return nullptr;
  }
  zelstr::platform::source_code_collator(kOracleLanguage).to_upper(text);
  return text;
}
