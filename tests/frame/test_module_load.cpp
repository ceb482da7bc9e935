// Loading and unloading the module at run time: registration with the
// error-handler service, the module object, and the order of the load and
// unload steps.
#include <string>
#include <vector>

#include "support/dynamic_library.h"
#include "support/warnings.h"

namespace {

using zelstr::test::load_module;
using zelstr::test::unload_module;

std::vector<std::string> const kUnits = {
    "codeformater",       "connectionenv", "connforplsqlstrfncs", "connforstrfncs",
    "connfortsqlstrfncs", "dllmain",       "findmanystrhoary",    "findmanystrold",
    "growingstring",      "zeal_str",      "zealstrhelper",       "zelstroraclefnc",
    "zelstrsqlserverfnc", "regexptcl",     "stringscan"};

std::vector<std::string> texts() {
  std::vector<std::string> out;
  for (auto const& r : errsvc::records()) out.push_back(r.text);
  return out;
}

TEST(ModuleLoad, RegistersItsUnitsAndModuleObjectUntilUnload) {
  std::size_t const before = errsvc::registered_sources().size();
  ASSERT_TRUE(errsvc::live_modules().empty());
  void* module = load_module(ZELSTR_MODULE);
  ASSERT_NE(module, nullptr) << zelstr::test::last_load_error();
  std::vector<std::string> const sources = errsvc::registered_sources();
  ASSERT_EQ(sources.size(), before + kUnits.size());
  EXPECT_EQ(std::vector<std::string>(sources.begin() + before, sources.end()), kUnits);
  EXPECT_EQ(errsvc::live_modules(), std::vector<std::string>{"Strings Library"});
  ASSERT_TRUE(unload_module(module));
  EXPECT_TRUE(errsvc::live_modules().empty());
}

TEST(ModuleLoad, RunsTheLoadAndUnloadStepsInTheirOrder) {
  errsvc::clear();
  void* module = load_module(ZELSTR_PROBE_MODULE);
  ASSERT_NE(module, nullptr) << zelstr::test::last_load_error();
  EXPECT_EQ(texts(), std::vector<std::string>{"load step"});
  EXPECT_EQ(errsvc::live_modules(), std::vector<std::string>{"Strings Library"});
  ASSERT_TRUE(unload_module(module));
  std::vector<std::string> expected = {"load step"};
  for (char n = '1'; n <= '9'; ++n) {
    if (n == '8') expected.push_back("unload step 8a");  // the first half of step 8
    expected.push_back(std::string("unload step ") + n);
  }
  EXPECT_EQ(texts(), expected);
  EXPECT_TRUE(errsvc::live_modules().empty());
}

}  // namespace
