#include "sqlite/PreferencesFile.h"

#include "base/Log.h"
#include "sqlite/DamagedFile.h"
#include "sqlite/PrivateFolder.h"
#include "sqlite/Statement.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <utility>

namespace quillo {

namespace {

constexpr std::int64_t applicationId = 0x514C4C4F; // 'QLLO'
constexpr std::int64_t formatVersion = 1;

/// How long to wait for another program, such as the sqlite3 shell, to let go of the file.
constexpr int busyMilliseconds = 1000;

/// Nearly all bytes are in one large value, hence large pages and a small cache: measured, saving 1.8 MB
/// takes three fifths of the processor time that SQLite's defaults (4 KiB and 2 MiB) take, and a small value
/// is saved as quickly. secure_delete=FAST, as overwriting the pages of the list before would double what a
/// save writes. The log is copied into the file once it has 16 MiB (some nine saves of 10,000 tasks) and on
/// closing; up to 32 MiB of it are reused.
constexpr const char* settings = "PRAGMA page_size=32768;"
                                 "PRAGMA cache_size=-256;"
                                 "PRAGMA journal_mode=WAL;"
                                 "PRAGMA synchronous=FULL;"
                                 "PRAGMA secure_delete=FAST;"
                                 "PRAGMA wal_autocheckpoint=512;"
                                 "PRAGMA journal_size_limit=33554432;";

/// Reads all of the file.
bool passesCheck(sqlite3* database) {
    Statement check(database, "PRAGMA quick_check(1)");
    const int code = check.step();
    return (code & 0xFF) != SQLITE_CORRUPT && (code != SQLITE_ROW || check.text(0) == "ok");
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

void PreferencesFile::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

PreferencesFile::PreferencesFile(const std::filesystem::path& folder, Access access)
    : path_(resolved(folder)), access_(access) {}

std::optional<FileFailure> PreferencesFile::open(PreferencesContents& contents) {
    std::optional<FileFailure> failed;
    switch (access_) {
    case Access::ReadWrite:
        failed = openForWriting(contents);
        break;
    case Access::ReadOnly:
        failed = openForReading(contents);
        break;
    }
    if (failed)
        database_.reset();
    return failed;
}

std::optional<FileFailure> PreferencesFile::openForWriting(PreferencesContents& contents) {
    if (auto failed = create())
        return failed;
    if (auto failed = connect(path_.string(), SQLITE_OPEN_READWRITE))
        return failed;
    if (sqlite3_db_readonly(database_.get(), "main") == 1)
        return failure("opened for writing", SQLITE_READONLY);
    Origin origin{};
    if (auto failed = examine(origin, contents))
        return failed;
    return setUp(origin);
}

/// A file that is missing is made here rather than by SQLite, which would let others read it.
std::optional<FileFailure> PreferencesFile::create() const {
    const std::optional<off_t> size = fileSize(path_.string());
    if (size.value_or(0) > 0)
        return std::nullopt;
    if (const Outcome made = makePrivateFolder(path_.parent_path()); !made)
        return FileFailure{made.error()};
    // Somebody deleted the file and left the log. SQLite would delete that too, but it may be all there is.
    if (logHasContent(path_)) {
        const Result<std::filesystem::path> moved = moveDamagedAside(path_);
        if (!moved)
            return FileFailure{moved.error()};
        log("the log of a lost " + path_.string() + " is kept beside " + moved->string());
    } else if (size) {
        return std::nullopt;
    }
    const int descriptor = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0 && errno != EEXIST)
        return FileFailure{Error{"cannot make " + path_.string() + ": " + systemErrorText(errno)}};
    if (descriptor >= 0)
        close(descriptor);
    return std::nullopt;
}

std::optional<FileFailure> PreferencesFile::openForReading(PreferencesContents& contents) {
    const std::optional<off_t> size = fileSize(path_.string());
    if (!size && errno != ENOENT && errno != ENOTDIR)
        return FileFailure{Error{path_.string() + " cannot be read: " + systemErrorText(errno)}};
    if (size.value_or(0) == 0)
        return std::nullopt;
    const bool writable = mayWrite(path_) && mayWrite(path_.parent_path());
    const bool companions = fileSize(companion(path_, "-wal")) && fileSize(companion(path_, "-shm"));
    if (!writable && !companions)
        return openWithoutCompanions(contents);
    // Where it may write, SQLite removes the companions that it makes; a connection that may only read leaves
    // them.
    auto failed = connect(path_.string(), writable ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
    if (!failed)
        failed = beginLooking(contents);
    if (!failed)
        return std::nullopt;
    switch (failed->code & 0xFF) {
    case SQLITE_CANTOPEN:
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_READONLY:
        return openWithoutCompanions(contents);
    default:
        return failed;
    }
}

/// SQLite coordinates its users through the log and the log's index. Where these cannot be made (a read-only
/// folder, a full disk) no other process can have the file open for writing, or they would be there: it can
/// be read as it lies.
std::optional<FileFailure> PreferencesFile::openWithoutCompanions(PreferencesContents& contents) {
    const bool log = logHasContent(path_);
    // A log that was left by a process that died holds the last changes. Reading it needs an index in this
    // process's memory, which is what an exclusive connection has, and that in turn a lock that cannot be
    // taken here either.
    const std::string name = uriPath(path_) + (log ? "?vfs=unix-none" : "?immutable=1");
    if (auto failed = connect(name, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI))
        return failed;
    if (const int code = execute(database_.get(), "PRAGMA locking_mode=EXCLUSIVE"); code != SQLITE_OK)
        return failure("opened", code);
    return beginLooking(contents);
}

std::optional<FileFailure> PreferencesFile::connect(const std::string& name, int flags) {
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
std::optional<FileFailure> PreferencesFile::identify(Origin& origin) {
    std::int64_t application = 0;
    std::int64_t version = 0;
    std::int64_t tables = 0;
    const auto ask = [this](const char* sql, std::int64_t& answer) -> std::optional<FileFailure> {
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
        return FileFailure{Error{path_.string() + " was written by a newer Quillo and is left as it is"}};
    if (application == 0 && version == 0) {
        if (auto failed = ask("SELECT count(*) FROM sqlite_schema", tables))
            return failed;
        if (tables == 0) {
            origin = Origin::Fresh;
            return std::nullopt;
        }
    }
    return FileFailure{Error{path_.string() + " does not hold Quillo's preferences and is left as it is"}};
}

/// Reads everything that is needed without having changed a byte.
std::optional<FileFailure> PreferencesFile::examine(Origin& origin, PreferencesContents& contents) {
    contents.clear();
    if (auto failed = identify(origin))
        return failed;
    switch (origin) {
    case Origin::Fresh: // It is small, if it has anything at all.
        if (!passesCheck(database_.get()))
            return failure("read", SQLITE_CORRUPT);
        return std::nullopt;
    case Origin::Ours:
        break;
    }
    if (!preferences_table::isLaidOutAsExpected(database_.get()))
        return FileFailure{
            Error{path_.string() + " is not laid out as Quillo's preferences are and is left as it is"}};
    if (const int code = preferences_table::load(database_.get(), contents, unread_); code != SQLITE_OK)
        return failure("read", code);
    return std::nullopt;
}

/// Everything that is read until the file is closed is of one moment, also while another process writes.
std::optional<FileFailure> PreferencesFile::beginLooking(PreferencesContents& contents) {
    if (const int code = execute(database_.get(), "PRAGMA query_only=ON; BEGIN"); code != SQLITE_OK)
        return failure("opened", code);
    Origin origin{};
    return examine(origin, contents);
}

std::optional<FileFailure> PreferencesFile::setUp(Origin origin) {
    closeToOthers(path_);
    if (const int code = execute(database_.get(), settings); code != SQLITE_OK)
        return failure("opened for writing", code);
    switch (origin) {
    case Origin::Ours:
        break;
    case Origin::Fresh:
        if (const int code = preferences_table::create(database_.get()); code != SQLITE_OK)
            return failure("made", code);
        break;
    }
    sqlite3_db_config(database_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    return std::nullopt;
}

std::optional<FileFailure> PreferencesFile::readData(std::string_view key, std::optional<Value>& value) {
    // No value is larger than what it is kept in.
    const off_t bound = fileSize(path_.string()).value_or(0) + fileSize(companion(path_, "-wal")).value_or(0);
    const int code =
        preferences_table::readData(database_.get(), key, static_cast<std::size_t>(bound), value);
    if (code != SQLITE_OK) {
        unread_.emplace(key);
        return failure("read", code);
    }
    if (const auto unread = unread_.find(key); unread != unread_.end())
        unread_.erase(unread);
    return std::nullopt;
}

std::optional<FileFailure> PreferencesFile::write(const PreferencesChanges& changes) {
    const int code = writeTogether(changes);
    if (code == SQLITE_OK) {
        for (const auto& [key, value] : changes)
            unread_.erase(key);
        return std::nullopt;
    }
    FileFailure failed = failure("written", code);
    if (sqlite3_get_autocommit(database_.get()) == 0)
        execute(database_.get(), "ROLLBACK");
    // A page number beyond all bounds looks like a full disk to SQLite.
    if (code == SQLITE_FULL && !passesCheck(database_.get()))
        failed = failure("written", SQLITE_CORRUPT);
    return failed;
}

/// All changes in a transaction, which is left open where something goes wrong.
int PreferencesFile::writeTogether(const PreferencesChanges& changes) {
    if (const int code = execute(database_.get(), "BEGIN IMMEDIATE"); code != SQLITE_OK)
        return code;
    for (const auto& [key, value] : changes) {
        if (unread_.contains(key)) {
            if (const int code = preferences_table::keepUnread(database_.get(), key); code != SQLITE_OK)
                return code;
            log("the old value of " + key + " is kept in " + path_.string() + " as Quillo.linux.unread-...");
        }
        if (const int code = preferences_table::change(database_.get(), key, value); code != SQLITE_OK)
            return code;
    }
    return execute(database_.get(), "COMMIT");
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

FileFailure PreferencesFile::failure(std::string_view done, int code) const {
    return fileFailure(path_, done, code, database_.get());
}

} // namespace quillo
