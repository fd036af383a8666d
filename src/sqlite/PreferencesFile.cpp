#include "sqlite/PreferencesFile.h"

#include "base/Log.h"
#include "sqlite/DamagedFile.h"
#include "sqlite/PrivateFolder.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <utility>

namespace quillo {

namespace {

constexpr std::int64_t applicationId = 0x514C4C4F; // 'QLLO'
constexpr std::int64_t formatVersion = 1;

/// How long to wait for another program, such as the sqlite3 shell, to let go of the file.
constexpr int busyMilliseconds = 1000;

/// Nearly all bytes are in one large value, hence large pages and a small cache: measured, saving 1.8 MB
/// takes two thirds of the processor time that SQLite's defaults (4 KiB and 2 MiB) take, and a small value is
/// saved as quickly. secure_delete=FAST, as overwriting the pages of the list before would double what a save
/// writes. The log is copied into the file once it has 16 MiB (some nine saves of 10,000 tasks) and on
/// closing; up to 32 MiB of it are reused.
constexpr const char* settings = "PRAGMA page_size=16384;"
                                 "PRAGMA cache_size=-256;"
                                 "PRAGMA journal_mode=WAL;"
                                 "PRAGMA synchronous=FULL;"
                                 "PRAGMA secure_delete=FAST;"
                                 "PRAGMA wal_autocheckpoint=1024;"
                                 "PRAGMA journal_size_limit=33554432;";

constexpr const char* newTable = "BEGIN IMMEDIATE;"
                                 "CREATE TABLE preferences(key TEXT PRIMARY KEY, type TEXT NOT NULL, value);"
                                 "PRAGMA application_id=0x514C4C4F;"
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
constexpr const char* keepRow =
    "INSERT INTO preferences"
    " SELECT 'Quillo.linux.unread-' || strftime('%Y%m%dT%H%M%fZ') || '-' || key, type, value"
    " FROM preferences NOT INDEXED WHERE key = ?1 ORDER BY rowid DESC LIMIT 1";
constexpr const char* deleteRow = "DELETE FROM preferences NOT INDEXED WHERE key = ?1";
constexpr const char* insertRow = "INSERT INTO preferences(key, type, value) VALUES(?1, ?2, ?3)";

/// A prepared statement. The first code that is not a success stays, so that only the last step need be
/// looked at.
class Statement {
public:
    Statement(sqlite3* database, const char* sql)
        : code_(sqlite3_prepare_v2(database, sql, -1, &statement_, nullptr)) {}
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    // What is bound must outlive the statement.
    void bind(int place, std::string_view text) {
        note([&] {
            return sqlite3_bind_text64(statement_, place, text.data(), text.size(), SQLITE_STATIC,
                                       SQLITE_UTF8);
        });
    }
    void bind(int place, const std::string& text) { bind(place, std::string_view(text)); }
    void bind(int place, const Data& data) {
        note([&] {
            const std::string& bytes = data.bytes();
            return sqlite3_bind_blob64(statement_, place, bytes.data(), bytes.size(), SQLITE_STATIC);
        });
    }
    void bind(int place, std::int64_t number) {
        note([&] { return sqlite3_bind_int64(statement_, place, number); });
    }
    void bind(int place, bool flag) { bind(place, std::int64_t{flag}); }
    void bind(int place, double number) {
        note([&] { return sqlite3_bind_double(statement_, place, number); });
    }

    /// What the last call came to.
    int code() const { return code_; }

    /// SQLITE_ROW, SQLITE_DONE, or what went wrong.
    int step() {
        if (code_ == SQLITE_OK || code_ == SQLITE_ROW)
            code_ = sqlite3_step(statement_);
        return code_;
    }

    int type(int column) const { return sqlite3_column_type(statement_, column); }
    std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
    double real(int column) const { return sqlite3_column_double(statement_, column); }
    std::string_view text(int column) const { return bytes(column, sqlite3_column_text(statement_, column)); }
    std::string_view blob(int column) const { return bytes(column, sqlite3_column_blob(statement_, column)); }

private:
    template <class Bind>
    void note(Bind bind) {
        if (code_ == SQLITE_OK)
            code_ = bind();
    }

    /// The length must be asked for after the bytes, which may have to be converted first.
    std::string_view bytes(int column, const void* start) const {
        const int length = sqlite3_column_bytes(statement_, column);
        return start ? std::string_view(static_cast<const char*>(start), static_cast<std::size_t>(length))
                     : "";
    }

    sqlite3_stmt* statement_ = nullptr;
    int code_;
};

int execute(sqlite3* database, const char* sql) {
    return sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
}

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

bool isDamage(int code) {
    return (code & 0xFF) == SQLITE_CORRUPT || (code & 0xFF) == SQLITE_NOTADB;
}

/// The error number for which the system last refused to read the file or its log; 0 where it never did.
/// SQLite takes such a refusal for corruption, but it says something about the disk and nothing about the
/// file.
int readRefusal(sqlite3* database) {
    for (const int pointer : {SQLITE_FCNTL_FILE_POINTER, SQLITE_FCNTL_JOURNAL_POINTER}) {
        sqlite3_file* file = nullptr;
        int error = 0;
        if (sqlite3_file_control(database, "main", pointer, &file) != SQLITE_OK || !file || !file->pMethods)
            continue;
        file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &error);
        if (error == EIO || error == ENXIO || error == ERANGE)
            return error;
    }
    return 0;
}

/// Reads all of the file.
bool passesCheck(sqlite3* database) {
    Statement check(database, "PRAGMA quick_check(1)");
    const int code = check.step();
    return !isDamage(code) && (code != SQLITE_ROW || check.text(0) == "ok");
}

/// Why SQLite could not do something, in words for a user.
std::string reason(int code, int systemError) {
    switch (code & 0xFF) { // The upper bits only tell in which of its functions it failed.
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_READONLY:
        return "it is read-only";
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "another program holds it locked";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "it is damaged";
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
        if (systemError == ENOSPC)
            return "the disk is full";
        if (systemError == EROFS)
            return "it is read-only";
        return systemErrorText(systemError != 0 ? systemError : EIO);
    default:
        return sqlite3_errstr(code);
    }
}

std::string companion(const std::filesystem::path& path, std::string_view ending) {
    return path.string().append(ending);
}

/// Size in bytes; none where there is no such file.
std::optional<off_t> fileSize(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return status.st_size;
}

bool mayWrite(const std::filesystem::path& path) {
    return ::access(path.c_str(), W_OK) == 0;
}

/// Whether the log holds changes that are not in the file itself yet.
bool logHasContent(const std::filesystem::path& path) {
    return fileSize(companion(path, "-wal")).value_or(0) > 0;
}

/// SQLite gives the log and its index the mode of the file. One that was made by hand, or came from a backup,
/// may let others read what is nobody else's business.
void closeToOthers(const std::filesystem::path& path) {
    for (const std::string_view ending : {"", "-wal", "-shm"}) {
        const std::string name = companion(path, ending);
        struct stat status {};
        if (stat(name.c_str(), &status) == 0 && (status.st_mode & 0077) != 0)
            chmod(name.c_str(), status.st_mode & 0700);
    }
}

/// `path` as SQLite reads it in a URI.
std::string uriPath(const std::filesystem::path& path) {
    constexpr std::string_view hexDigits = "0123456789ABCDEF";
    std::string uri = "file:";
    for (const char character : path.string()) {
        if (character != '%' && character != '?' && character != '#') {
            uri += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        uri += {'%', hexDigits[byte >> 4], hexDigits[byte & 0x0F]};
    }
    return uri;
}

/// The file's own place, should the name be a link: there SQLite puts the companions.
std::filesystem::path resolved(const std::filesystem::path& folder) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(folder, error) / "preferences.sqlite";
    const std::filesystem::path real = std::filesystem::weakly_canonical(path, error);
    return error ? path : real;
}

} // namespace

bool PreferencesFile::Failure::damaged() const {
    return isDamage(code);
}

void PreferencesFile::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

PreferencesFile::PreferencesFile(const std::filesystem::path& folder, Access access)
    : path_(resolved(folder)), access_(access) {}

std::optional<PreferencesFile::Failure> PreferencesFile::open(Contents& contents) {
    std::optional<Failure> failed;
    switch (access_) {
    case Access::ReadWrite:
        failed = openForWriting();
        break;
    case Access::ReadOnly:
        failed = openForReading();
        break;
    }
    if (!failed && isOpen())
        failed = load(contents);
    if (failed)
        database_.reset();
    return failed;
}

std::optional<PreferencesFile::Failure> PreferencesFile::openForWriting() {
    if (auto failed = create())
        return failed;
    if (auto failed = connect(path_.string(), SQLITE_OPEN_READWRITE))
        return failed;
    if (sqlite3_db_readonly(database_.get(), "main") == 1)
        return failure("opened for writing", SQLITE_READONLY);
    Origin origin{};
    if (auto failed = identify(origin))
        return failed;
    return setUp(origin);
}

/// A file that is missing is made here rather than by SQLite, which would let others read it.
std::optional<PreferencesFile::Failure> PreferencesFile::create() const {
    const std::optional<off_t> size = fileSize(path_.string());
    if (size.value_or(0) > 0)
        return std::nullopt;
    if (const Outcome made = makePrivateFolder(path_.parent_path()); !made)
        return Failure{made.error()};
    // Somebody deleted the file and left the log. SQLite would delete that too, but it may be all there is.
    if (logHasContent(path_)) {
        const Result<std::filesystem::path> moved = moveDamagedAside(path_);
        if (!moved)
            return Failure{moved.error()};
        log("the log of a lost " + path_.string() + " is kept beside " + moved->string());
    } else if (size) {
        return std::nullopt;
    }
    const int descriptor = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0 && errno != EEXIST)
        return Failure{Error{"cannot make " + path_.string() + ": " + systemErrorText(errno)}};
    if (descriptor >= 0)
        close(descriptor);
    return std::nullopt;
}

std::optional<PreferencesFile::Failure> PreferencesFile::openForReading() {
    const std::optional<off_t> size = fileSize(path_.string());
    if (!size && errno != ENOENT && errno != ENOTDIR)
        return Failure{Error{path_.string() + " cannot be read: " + systemErrorText(errno)}};
    if (size.value_or(0) == 0)
        return std::nullopt;
    const bool writable = mayWrite(path_) && mayWrite(path_.parent_path());
    const bool companions = fileSize(companion(path_, "-wal")) && fileSize(companion(path_, "-shm"));
    if (!writable && !companions)
        return openWithoutCompanions();
    // Where it may write, SQLite removes the companions that it makes; a connection that may only read leaves
    // them.
    auto failed = connect(path_.string(), writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
    if (!failed)
        failed = beginLooking();
    if (!failed)
        return std::nullopt;
    switch (failed->code & 0xFF) {
    case SQLITE_CANTOPEN:
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_READONLY:
        return openWithoutCompanions();
    default:
        return failed;
    }
}

/// SQLite coordinates its users through the log and the log's index. Where these cannot be made (a read-only
/// folder, a full disk) no other process can have the file open for writing, or they would be there: it can
/// be read as it lies.
std::optional<PreferencesFile::Failure> PreferencesFile::openWithoutCompanions() {
    const bool log = logHasContent(path_);
    // A log that was left by a process that died holds the last changes. Reading it needs an index in this
    // process's memory, which is what an exclusive connection has, and that in turn a lock that cannot be
    // taken here either.
    const std::string name = uriPath(path_) + (log ? "?vfs=unix-none" : "?immutable=1");
    if (auto failed = connect(name, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI))
        return failed;
    if (const int code = execute(database_.get(), "PRAGMA locking_mode=EXCLUSIVE"); code != SQLITE_OK)
        return failure("opened", code);
    return beginLooking();
}

std::optional<PreferencesFile::Failure> PreferencesFile::connect(const std::string& name, int flags) {
    database_.reset();
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(database);
    if (code != SQLITE_OK)
        return failure("opened", code);
    sqlite3_extended_result_codes(database, 1);
    sqlite3_busy_timeout(database, busyMilliseconds);
    // Closing copies the log into the file: not before it is known that the file is ours, and not for
    // looking.
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, logHasContent(path_) ? 1 : 0, nullptr);
    // The file may have been made by anybody: nothing in it is run.
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    if (const int checked = execute(database, "PRAGMA cell_size_check=ON"); checked != SQLITE_OK)
        return failure("opened", checked);
    return std::nullopt;
}

/// Ours, or an empty one that becomes ours; a failure for every other.
std::optional<PreferencesFile::Failure> PreferencesFile::identify(Origin& origin) {
    std::int64_t application = 0;
    std::int64_t version = 0;
    std::int64_t tables = 0;
    const auto ask = [this](const char* sql, std::int64_t& answer) -> std::optional<Failure> {
        Statement statement(database_.get(), sql);
        if (const int code = statement.step(); code != SQLITE_ROW)
            return failure("opened", code);
        answer = statement.integer(0);
        return std::nullopt;
    };
    if (auto failed = ask("PRAGMA application_id", application))
        return failed;
    if (auto failed = ask("PRAGMA user_version", version))
        return failed;
    if (application == applicationId && version == formatVersion) {
        origin = Origin::Ours;
        return std::nullopt;
    }
    if (application == applicationId && version > formatVersion)
        return Failure{Error{path_.string() + " was written by a newer Quillo and is left as it is"}};
    if (application == 0 && version == 0) {
        if (auto failed = ask("SELECT count(*) FROM sqlite_schema", tables))
            return failed;
        if (tables == 0) {
            origin = Origin::Fresh;
            return std::nullopt;
        }
    }
    return Failure{Error{path_.string() + " does not hold Quillo's preferences and is left as it is"}};
}

/// Everything that is read until the file is closed is of one moment, also while another process writes.
std::optional<PreferencesFile::Failure> PreferencesFile::beginLooking() {
    if (const int code = execute(database_.get(), "PRAGMA query_only=ON; BEGIN"); code != SQLITE_OK)
        return failure("opened", code);
    Origin origin{};
    if (auto failed = identify(origin))
        return failed;
    switch (origin) {
    case Origin::Ours:
        break;
    case Origin::Fresh:
        database_.reset(); // Nothing in it yet.
        break;
    }
    return std::nullopt;
}

std::optional<PreferencesFile::Failure> PreferencesFile::setUp(Origin origin) {
    closeToOthers(path_);
    if (const int code = execute(database_.get(), settings); code != SQLITE_OK)
        return failure("opened for writing", code);
    switch (origin) {
    case Origin::Ours:
        break;
    case Origin::Fresh:
        if (const int code = execute(database_.get(), newTable); code != SQLITE_OK)
            return failure("made", code);
        break;
    }
    sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    return std::nullopt;
}

std::optional<PreferencesFile::Failure> PreferencesFile::load(Contents& contents) {
    Statement row(database_.get(), listRows);
    if (row.code() == SQLITE_ERROR || Statement(database_.get(), insertRow).code() == SQLITE_ERROR)
        return Failure{
            Error{path_.string() + " is not laid out as Quillo's preferences are and is left as it is"}};
    row.bind(1, std::int64_t{largeDataBytes});
    int code = SQLITE_OK;
    std::optional<std::int64_t> last;
    while ((code = row.step()) == SQLITE_ROW) {
        // Rows that are out of order, or lack what every row has, would have the next ones written over
        // others.
        if ((last && row.integer(0) <= *last) || row.type(2) == SQLITE_NULL)
            return failure("read", SQLITE_CORRUPT);
        last = row.integer(0);
        if (row.type(1) != SQLITE_TEXT || row.type(2) != SQLITE_TEXT)
            continue;
        const bool large = row.integer(3) == 1;
        if (large && row.text(2) == "data")
            contents.insert_or_assign(std::string(row.text(1)), LeftInFile{});
        else if (std::optional<Value> value = decode(row.text(2), row, 4))
            contents.insert_or_assign(std::string(row.text(1)), std::move(*value));
    }
    if (code != SQLITE_DONE)
        return failure("read", code);
    return std::nullopt;
}

std::optional<PreferencesFile::Failure> PreferencesFile::readData(std::string_view key,
                                                                  std::optional<Value>& value) {
    Statement row(database_.get(), findRow);
    row.bind(1, key);
    int code = row.step();
    if (code == SQLITE_ROW) {
        std::string bytes;
        code = readBlob(row.integer(0), bytes);
        if (code == SQLITE_OK)
            value = Data(std::move(bytes));
    }
    if (code != SQLITE_OK && code != SQLITE_DONE) {
        unread_.emplace(key);
        return failure("read", code);
    }
    if (const auto unread = unread_.find(key); unread != unread_.end())
        unread_.erase(unread);
    return std::nullopt;
}

/// Reads straight into `bytes`: measured, a quarter of the time that fetching it as a column of a query
/// takes.
int PreferencesFile::readBlob(std::int64_t row, std::string& bytes) {
    sqlite3_blob* opened = nullptr;
    if (const int code = sqlite3_blob_open(database_.get(), "main", "preferences", "value", row, 0, &opened);
        code != SQLITE_OK)
        return code;
    const std::unique_ptr<sqlite3_blob, decltype(&sqlite3_blob_close)> blob(opened, &sqlite3_blob_close);
    const int size = sqlite3_blob_bytes(blob.get());
    if (size > fileSize(path_.string()).value_or(0) + fileSize(companion(path_, "-wal")).value_or(0))
        return SQLITE_CORRUPT; // It claims to be larger than what it is kept in.
    bytes.resize(static_cast<std::size_t>(size));
    return sqlite3_blob_read(blob.get(), bytes.data(), size, 0);
}

std::optional<PreferencesFile::Failure> PreferencesFile::write(const Changes& changes) {
    int code = execute(database_.get(), "BEGIN IMMEDIATE");
    for (auto entry = changes.begin(); code == SQLITE_OK && entry != changes.end(); ++entry)
        code = change(entry->first, entry->second);
    if (code == SQLITE_OK)
        code = execute(database_.get(), "COMMIT");
    if (code != SQLITE_OK) {
        Failure failed = failure("written", code);
        if (sqlite3_get_autocommit(database_.get()) == 0)
            execute(database_.get(), "ROLLBACK");
        // A page number beyond all bounds looks like a full disk to SQLite.
        if (code == SQLITE_FULL && !passesCheck(database_.get()))
            failed = failure("written", SQLITE_CORRUPT);
        return failed;
    }
    for (const auto& [key, value] : changes)
        unread_.erase(key);
    return std::nullopt;
}

/// One change within a transaction. SQLITE_OK or what went wrong.
int PreferencesFile::change(const std::string& key, const std::optional<Value>& value) {
    if (unread_.contains(key)) {
        if (const int code = runForKey(database_.get(), keepRow, key); code != SQLITE_OK)
            return code;
    }
    // Deleting first, so that the pages of the old value are free for the new one.
    if (const int code = runForKey(database_.get(), deleteRow, key); code != SQLITE_OK || !value)
        return code;
    Statement insert(database_.get(), insertRow);
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

Outcome PreferencesFile::moveAside() {
    if (isOpen())
        sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, logHasContent(path_) ? 1 : 0,
                          nullptr);
    database_.reset();
    unread_.clear();
    const Result<std::filesystem::path> moved = moveDamagedAside(path_);
    if (!moved)
        return moved.error();
    log(path_.string() + " is damaged; it is kept as " + moved->string() + " and a new one is made");
    return success();
}

PreferencesFile::Failure PreferencesFile::failure(std::string_view what, int code) const {
    int systemError = database_ ? sqlite3_system_errno(database_.get()) : ENOMEM;
    if (const int refusal = database_ && isDamage(code) ? readRefusal(database_.get()) : 0; refusal != 0) {
        code = SQLITE_IOERR_READ;
        systemError = refusal;
    }
    return {Error{path_.string() + " cannot be " + std::string(what) + ": " + reason(code, systemError)},
            code};
}

} // namespace quillo
