#include "sqlite/PreferencesTable.h"

#include "sqlite/Statement.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>

namespace quillo::preferences_table {

namespace {

constexpr const char* newTable = "BEGIN IMMEDIATE;"
                                 "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value);"
                                 "PRAGMA application_id=0x514C4C4F;" // 'QLLO'
                                 "PRAGMA user_version=1;"
                                 "COMMIT;";

// Rows are looked up without the index: there are few, and an index that a damaged file lets contradict its
// table would hide them, whereas deleting a row from the table brings the contradiction to light. Of two rows
// under one key, which only such a file can have, the later one counts.
//
// For type and length SQLite looks at a row's first bytes only: large data is not touched by listing.
constexpr const char* listRows =
    "SELECT rowid, key, type, typeof(value) = 'blob' AND length(value) > ?1,"
    " CASE WHEN typeof(value) = 'blob' AND length(value) > ?1 THEN NULL ELSE value END"
    " FROM preferences NOT INDEXED";
constexpr const char* findRow = "SELECT rowid FROM preferences NOT INDEXED"
                                " WHERE key = ?1 AND type = 'data' AND typeof(value) = 'blob'"
                                " ORDER BY rowid DESC LIMIT 1";
constexpr std::string_view unreadPrefix = "Quillo.linux.unread-";
constexpr const char* keepRow =
    "INSERT INTO preferences"
    " SELECT 'Quillo.linux.unread-' || strftime('%Y%m%dT%H%M%fZ') || '-' || key, type, value"
    " FROM preferences NOT INDEXED WHERE key = ?1 ORDER BY rowid DESC LIMIT 1";
constexpr const char* deleteRow = "DELETE FROM preferences NOT INDEXED WHERE key = ?1";
constexpr const char* insertRow = "INSERT INTO preferences(key, type, value) VALUES(?1, ?2, ?3)";

/// Runs a statement that yields nothing and asks for a key only.
int runForKey(sqlite3* database, const char* sql, const std::string& key) {
    Statement statement(database, sql);
    statement.bind(1, key);
    const int code = statement.step();
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

constexpr const char* typeWord(const Data&) {
    return "data";
}
constexpr const char* typeWord(std::int64_t) {
    return "integer";
}
constexpr const char* typeWord(double) {
    return "double";
}
constexpr const char* typeWord(bool) {
    return "boolean";
}
const char* typeWord(const std::string&) {
    return "string";
}

/// The value in a row's `column`, if it is stored as the word says.
std::optional<Value> decode(std::string_view word, const Statement& row, int column) {
    const int type = row.type(column);
    if (word == "data" && type == SQLITE_BLOB)
        return Data(std::string(row.blob(column)));
    if (word == "integer" && type == SQLITE_INTEGER)
        return row.integer(column);
    if (word == "double" && type == SQLITE_FLOAT && std::isfinite(row.real(column)))
        return row.real(column);
    if (word == "boolean" && type == SQLITE_INTEGER && (row.integer(column) == 0 || row.integer(column) == 1))
        return row.integer(column) == 1;
    if (word == "string" && type == SQLITE_TEXT)
        return std::string(row.text(column));
    return std::nullopt;
}

/// Reads straight into `bytes`: measured, a quarter of the time that fetching it as a column of a query
/// takes.
int readBlob(sqlite3* database, std::int64_t row, std::size_t bound, std::string& bytes) {
    sqlite3_blob* opened = nullptr;
    const int code = sqlite3_blob_open(database, "main", "preferences", "value", row, 0, &opened);
    const std::unique_ptr<sqlite3_blob, decltype(&sqlite3_blob_close)> blob(opened, &sqlite3_blob_close);
    if (code != SQLITE_OK)
        return code;
    const int size = sqlite3_blob_bytes(blob.get());
    if (static_cast<std::size_t>(size) > bound)
        return SQLITE_CORRUPT;
    bytes.resize(static_cast<std::size_t>(size));
    return sqlite3_blob_read(blob.get(), bytes.data(), size, 0);
}

} // namespace

int create(sqlite3* database) {
    return execute(database, newTable);
}

bool isLaidOutAsExpected(sqlite3* database) {
    return Statement(database, listRows).code() != SQLITE_ERROR &&
           Statement(database, insertRow).code() != SQLITE_ERROR;
}

int load(sqlite3* database, PreferencesContents& contents, PreferencesKeys& unfit) {
    Statement row(database, listRows);
    row.bind(1, std::int64_t{largeDataBytes});
    int code = SQLITE_OK;
    std::optional<std::int64_t> last;
    while ((code = row.step()) == SQLITE_ROW) {
        // Rows that are out of order, or lack what every row has, would have the next ones written over
        // others.
        if ((last && row.integer(0) <= *last) || row.type(2) == SQLITE_NULL)
            return SQLITE_CORRUPT;
        last = row.integer(0);
        if (row.type(1) != SQLITE_TEXT)
            continue;
        const std::string key(row.text(1));
        const bool large = row.integer(3) == 1;
        const bool hasWord = row.type(2) == SQLITE_TEXT;
        if (hasWord && large && row.text(2) == "data")
            contents.insert_or_assign(key, LeftInFile{});
        else if (std::optional<Value> value = hasWord ? decode(row.text(2), row, 4) : std::nullopt)
            contents.insert_or_assign(key, std::move(*value));
        else if (!key.starts_with(unreadPrefix)) // Those were put there to stay as they are.
            unfit.insert(key);
    }
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

int readData(sqlite3* database, std::string_view key, std::size_t bound, std::optional<Value>& value) {
    Statement row(database, findRow);
    row.bind(1, key);
    if (const int code = row.step(); code != SQLITE_ROW)
        return code == SQLITE_DONE ? SQLITE_OK : code;
    std::string bytes;
    const int code = readBlob(database, row.integer(0), bound, bytes);
    if (code == SQLITE_OK)
        value = Data(std::move(bytes));
    return code;
}

int change(sqlite3* database, const std::string& key, const std::optional<Value>& value) {
    // Deleting first, so that the pages of the old value are free for the new one.
    if (const int code = runForKey(database, deleteRow, key); code != SQLITE_OK || !value)
        return code;
    Statement insert(database, insertRow);
    insert.bind(1, key);
    std::visit(
        [&insert](const auto& held) {
            insert.bind(2, std::string_view(typeWord(held)));
            insert.bind(3, held);
        },
        *value);
    const int code = insert.step();
    if (code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_UNIQUE)
        return SQLITE_CORRUPT_INDEX; // The key that was just deleted is still in the index.
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

int keepUnread(sqlite3* database, const std::string& key) {
    return runForKey(database, keepRow, key);
}

} // namespace quillo::preferences_table
