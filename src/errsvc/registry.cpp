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

using errsvc::detail::never_destroyed;

// Short names handed out by RemovePath; a list keeps their addresses stable.
std::list<std::string>& short_names() noexcept { return never_destroyed<std::list<std::string>>(); }
std::vector<std::string>& registrations() noexcept {
  return never_destroyed<std::vector<std::string>>();
}
// Live module objects: (id, display name).
std::vector<std::pair<int, std::string>>& modules() noexcept {
  return never_destroyed<std::vector<std::pair<int, std::string>>>();
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

// Each of the three below leaves its list as it was when memory is short.
char const* CMarkerDescription::RemovePath(char const* path, int flag) noexcept {
  if (path == nullptr) return "";
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  try {
    short_names().push_back(base_name(path, flag != 0));
  } catch (...) {
    return "";
  }
  return short_names().back().c_str();
}

int ErrHandDLL_RegisterTowardsDll(char const* path) noexcept {
  if (path == nullptr) return 0;
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  try {
    registrations().push_back(base_name(path, true));
  } catch (...) {
    return 0;
  }
  return static_cast<int>(registrations().size());
}

CErrSvcDllModule::CErrSvcDllModule(char const* display_name, char const* /*source_file*/) noexcept {
  CriticalSectionGuard guard(errsvc::detail::service_lock());
  m_nId = g_next_module_id++;
  try {
    modules().emplace_back(m_nId, display_name ? display_name : "");
  } catch (...) {
  }
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

std::vector<std::string> registered_sources() noexcept {
  CriticalSectionGuard guard(detail::service_lock());
  try {
    return registrations();
  } catch (...) {
    return {};
  }
}

std::vector<std::string> live_modules() noexcept {
  CriticalSectionGuard guard(detail::service_lock());
  try {
    std::vector<std::string> names;
    for (auto const& m : modules()) names.push_back(m.second);
    return names;
  } catch (...) {
    return {};
  }
}

}  // namespace errsvc
