// registry.cpp - source files and module objects of the client modules.
#include <cstring>
#include <list>
#include <string>
#include <utility>
#include <vector>

#include "errsvc/errsvc.h"
#include "service_lock.h"

namespace {

using zelstr::platform::CriticalSectionGuard;

// Short names handed out by RemovePath; a list keeps their addresses stable.
std::list<std::string>& short_names() {
  static auto* const names = new std::list<std::string>;
  return *names;
}
std::vector<std::string>& registrations() {
  static auto* const regs = new std::vector<std::string>;
  return *regs;
}
// Live module objects: (id, display name).
std::vector<std::pair<int, std::string>>& modules() {
  static auto* const mods = new std::vector<std::pair<int, std::string>>;
  return *mods;
}
int g_next_module_id = 1;

std::string base_name(char const* path, bool drop_extension) {
  std::string name(path);
  std::size_t const slash = name.find_last_of("/\\");
  if (slash != std::string::npos) name.erase(0, slash + 1);
  if (drop_extension) {
    std::size_t const dot = name.rfind('.');
    if (dot != std::string::npos && dot != 0) name.erase(dot);
  }
  return name;
}

}  // namespace

char const* CMarkerDescription::RemovePath(char const* path, int flag) {
  if (path == nullptr) return "";
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  short_names().push_back(base_name(path, flag != 0));
  return short_names().back().c_str();
}

int ErrHandDLL_RegisterTowardsDll(char const* path) {
  if (path == nullptr) return 0;
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  registrations().push_back(base_name(path, true));
  return static_cast<int>(registrations().size());
}

CErrSvcDllModule::CErrSvcDllModule(char const* display_name, char const* /*source_file*/) {
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  m_nId = g_next_module_id++;
  modules().emplace_back(m_nId, display_name ? display_name : "");
}

CErrSvcDllModule::~CErrSvcDllModule() {
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  auto& mods = modules();
  for (auto it = mods.begin(); it != mods.end(); ++it) {
    if (it->first == m_nId) {
      mods.erase(it);
      break;
    }
  }
}

namespace errsvc {

std::vector<std::string> registered_sources() {
  CriticalSectionGuard guard(detail::service_lock());
  return registrations();
}

std::vector<std::string> live_modules() {
  CriticalSectionGuard guard(detail::service_lock());
  std::vector<std::string> names;
  for (auto const& m : modules()) names.push_back(m.second);
  return names;
}

}  // namespace errsvc
