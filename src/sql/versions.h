// versions.h - the server versions the dialect settings accept.
//
// T-SQL versions come in two families, each with its short and its year
// forms: the Sybase family (6, 7, 9, 11, 12, 13, 15 and 2005, 2006, 2007,
// 2009, 2011, 2012, 2013, 2015) and the SQL Server family (4, 8, 10, 14, 16,
// 17 and 2004, 2008, 2010, 2014, 2016, 2017).  5 belongs to neither.
// PL/SQL versions: 102 to 105, 107 to 110, 120, 130, 140, 150, 151, 152 and
// 1160 to 1165 (106 is not one).
#ifndef ZELSTR_SQL_VERSIONS_H
#define ZELSTR_SQL_VERSIONS_H

namespace zelstr::sql {

bool is_sybase_version(int version);
bool is_sql_server_version(int version);
inline bool is_tsql_version(int version) {
  return is_sybase_version(version) || is_sql_server_version(version);
}
bool is_plsql_version(int version);

}  // namespace zelstr::sql

#endif  // ZELSTR_SQL_VERSIONS_H
