/// The table of the preferences file: one row a key, with the name of its type and its value.
///
/// All functions work on a connection that the caller owns and return one of SQLite's codes, SQLITE_OK if all
/// went well.
#pragma once

#include "ports/KeyValueStore.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

struct sqlite3;

namespace quillo {

/// Stands for large data, which is left in the file until it is asked for.
struct LeftInFile {};

using PreferencesContents = std::map<std::string, std::variant<Value, LeftInFile>, std::less<>>;

using PreferencesKeys = std::set<std::string, std::less<>>;

/// The new value of each key that changes; none where the key is removed.
using PreferencesChanges = std::map<std::string, std::optional<Value>, std::less<>>;

namespace preferences_table {

/// Data of more bytes is large.
inline constexpr std::size_t largeDataBytes = 64 * 1024;

bool isLarge(const Value& value);

/// Makes the table and marks the file as holding preferences, in one transaction.
int create(sqlite3* database);

/// Whether there is a table with the columns that are expected.
bool isLaidOutAsExpected(sqlite3* database);

/// Adds all rows to `contents`, except those whose value does not fit the name of its type: their keys go to
/// `unfit`.
int load(sqlite3* database, PreferencesContents& contents, PreferencesKeys& unfit);

/// Reads the data under `key` into `value`, which stays empty where there is none. Data that claims to be
/// larger than `bound` bytes is corrupt.
int readData(sqlite3* database, std::string_view key, std::size_t bound, std::optional<Value>& value);

/// Sets or removes one key. Within a transaction.
int change(sqlite3* database, const std::string& key, const std::optional<Value>& value);

/// Copies a row that could not be read to a key of its own, `Quillo.linux.unread-<UTC time>-<key>`.
int keepUnread(sqlite3* database, const std::string& key);

} // namespace preferences_table

} // namespace quillo
