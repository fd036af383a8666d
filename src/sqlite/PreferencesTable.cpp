#include "sqlite/PreferencesTable.h"

#include "sqlite/Statement.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
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
constexpr const char* insertRowText = "INSERT INTO preferences(key, type, value) VALUES(?1, ?2, ?3)";

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

/// Reads straight into the bytes of the value: measured, a quarter of the time that fetching it as a column
/// of a query takes.
int readBlob(sqlite3* database, std::int64_t row, std::size_t bound, std::optional<Value>& value) {
    sqlite3_blob* opened = nullptr;
    const int code = sqlite3_blob_open(database, "main", "preferences", "value", row, 0, &opened);
    const std::unique_ptr<sqlite3_blob, decltype(&sqlite3_blob_close)> blob(opened, &sqlite3_blob_close);
    if (code != SQLITE_OK)
        return code;
    const int size = sqlite3_blob_bytes(blob.get());
    if (static_cast<std::size_t>(size) > bound)
        return SQLITE_CORRUPT;
    const std::shared_ptr<char[]> bytes(new char[static_cast<std::size_t>(size)]);
    const int read = sqlite3_blob_read(blob.get(), bytes.get(), size, 0);
    if (read == SQLITE_OK)
        value = Data(bytes, {std::string_view(bytes.get(), static_cast<std::size_t>(size))});
    return read;
}

/// Writes the pieces over the bytes of as many zeros.
int writeBlob(sqlite3* database, std::int64_t row, const Data& data) {
    sqlite3_blob* opened = nullptr;
    int code = sqlite3_blob_open(database, "main", "preferences", "value", row, 1, &opened);
    const std::unique_ptr<sqlite3_blob, decltype(&sqlite3_blob_close)> blob(opened, &sqlite3_blob_close);
    int offset = 0;
    for (const std::string_view piece : data.pieces()) {
        if (code != SQLITE_OK)
            break;
        const int size = static_cast<int>(piece.size());
        code = sqlite3_blob_write(blob.get(), piece.data(), size, offset);
        offset += size;
    }
    return code;
}

/// For as long as this lives the connection's page cache has room for `bytes` more, 64 MiB at most. Pages
/// that do not fit go to the log before they are complete, and once more afterwards.
class RoomInCache {
public:
    RoomInCache(sqlite3* database, std::size_t bytes) : database_(database) {
        Statement size(database, "PRAGMA cache_size");
        before_ = size.step() == SQLITE_ROW ? size.integer(0) : 0;
        set(before_ - static_cast<std::int64_t>(std::min(bytes, atMost) / 1024));
    }
    ~RoomInCache() { set(before_); }
    RoomInCache(const RoomInCache&) = delete;
    RoomInCache& operator=(const RoomInCache&) = delete;

private:
    static constexpr std::size_t atMost = std::size_t{64} << 20;

    void set(std::int64_t size) { execute(database_, ("PRAGMA cache_size=" + std::to_string(size)).c_str()); }

    sqlite3* database_;
    std::int64_t before_;
};

/// Inserts a row that is not there yet. `bindValue` is to bind its value at place 3.
template <class BindValue>
int insertRow(sqlite3* database, const std::string& key, const Value& value, BindValue bindValue) {
    Statement insert(database, insertRowText);
    insert.bind(1, key);
    insert.bind(2, std::visit([](const auto& held) { return std::string_view(typeWord(held)); }, value));
    bindValue(insert);
    const int code = insert.step();
    if (code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_UNIQUE)
        return SQLITE_CORRUPT_INDEX; // The key that was just deleted is still in the index.
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

/// SQLite would copy a large value as a whole before it writes it: measured, room for it as zeros and the
/// pieces over them take a third less of its time.
int insertLarge(sqlite3* database, const std::string& key, const Data& data) {
    const RoomInCache room(database, data.size() + data.size() / 8);
    const int code =
        insertRow(database, key, data, [&](Statement& insert) { insert.bindZeros(3, data.size()); });
    return code == SQLITE_OK ? writeBlob(database, sqlite3_last_insert_rowid(database), data) : code;
}

} // namespace

bool isLarge(const Value& value) {
    const auto* data = std::get_if<Data>(&value);
    return data && data->size() > largeDataBytes;
}

int create(sqlite3* database) {
    return execute(database, newTable);
}

bool isLaidOutAsExpected(sqlite3* database) {
    return Statement(database, listRows).code() != SQLITE_ERROR &&
           Statement(database, insertRowText).code() != SQLITE_ERROR;
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
    return readBlob(database, row.integer(0), bound, value);
}

int change(sqlite3* database, const std::string& key, const std::optional<Value>& value) {
    // Deleting first, so that the pages of the old value are free for the new one.
    if (const int code = runForKey(database, deleteRow, key); code != SQLITE_OK || !value)
        return code;
    if (isLarge(*value))
        return insertLarge(database, key, std::get<Data>(*value));
    return insertRow(database, key, *value, [&value](Statement& insert) {
        std::visit([&insert](const auto& held) { insert.bind(3, held); }, *value);
    });
}

int keepUnread(sqlite3* database, const std::string& key) {
    return runForKey(database, keepRow, key);
}

} // namespace quillo::preferences_table
