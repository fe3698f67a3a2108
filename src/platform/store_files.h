// Databases of the relational store as files: copied, replaced and deleted with what the engine keeps beside
// them.
#pragma once

#include <string_view>

#include "platform/files.h"

namespace zorvel {

// Copies a database file that nobody writes to. The target appears whole or not at all; what an earlier
// database of its name left beside it is removed. Raises error 53 for a missing source, an OutputError for
// the target.
void CopyDatabase(const Files& files, std::string_view from, std::string_view to);

// Raises 0x80004005 when another program uses the database. What a killed program left unfinished in it is
// undone, so that nothing but the file itself belongs to it afterwards.
void RequireUnused(const Files& files, std::string_view path);

// Puts a database that nobody uses in the place of another one, at once. Raises error 53, 70 or 75.
void ReplaceDatabase(const Files& files, std::string_view from, std::string_view to);

// Deletes a database file and what lies beside it for a recovery. Raises error 53 or 70, or 0x80004005 when
// another program uses the database.
void RemoveDatabase(const Files& files, std::string_view path);

// Deletes what a killed program left of a database that it was making, if there is anything. Raises error 70.
void RemoveUnfinished(const Files& files, std::string_view path);

}  // namespace zorvel
