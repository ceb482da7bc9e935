// The connection settings and the connection-keyed objects are dropped by
// the module's unload sequence.
#include <gtest/gtest.h>

#include "support/module_reload.h"
#include "zelstr/dialect.h"
#include "zelstr/sqlsettings.h"

namespace {

TEST(ConnectionArena, UnloadDropsSettingsAndObjects) {
  static char const connection = 0;
  ASSERT_EQ(1, _ztsqlsetdefaults(&connection, 8, 50, 1, 1, '[', "[a-z]"));
  ASSERT_EQ(1, _ztsqlsetquotedid(nullptr, 1));
  new CConnForStrFncs(&connection, 'T');  // owned by the arena from now on
  zelstr::test::reload_module();
  EXPECT_EQ(nullptr, CConnForStrFncs::GetArenaEntry());
  EXPECT_EQ(nullptr, CConnForStrFncs::Find(&connection, 'T'));
  int version = 0, quoted = -1;
  EXPECT_EQ(0,
            _ztsqlgetdefaults(&connection, &version, nullptr, &quoted, nullptr, nullptr, nullptr));
  EXPECT_EQ(15, version);  // the defaults, created afresh
  EXPECT_EQ(0, quoted);
}

}  // namespace
