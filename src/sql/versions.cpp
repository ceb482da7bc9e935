// versions.cpp - membership of the version families.
#include "sql/versions.h"

#include <algorithm>
#include <iterator>

namespace zelstr::sql {
namespace {

template <std::size_t N>
bool listed(int const (&list)[N], int version) {
  return std::find(std::begin(list), std::end(list), version) != std::end(list);
}

constexpr int kSybase[] = {6, 7, 9, 11, 12, 13, 15, 2005, 2006, 2007, 2009, 2011, 2012, 2013, 2015};
constexpr int kSqlServer[] = {4, 8, 10, 14, 16, 17, 2004, 2008, 2010, 2014, 2016, 2017};
constexpr int kPlsql[] = {102, 103, 104, 105, 107, 108, 109, 110, 120, 130, 140, 150, 151, 152};

}  // namespace

bool is_sybase_version(int version) { return listed(kSybase, version); }
bool is_sql_server_version(int version) { return listed(kSqlServer, version); }
bool is_plsql_version(int version) {
  return listed(kPlsql, version) || (version >= 1160 && version <= 1165);
}

}  // namespace zelstr::sql
