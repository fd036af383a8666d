#include "sqlite/FileFailure.h"

#include "sqlite/PrivateFolder.h"

#include <sqlite3.h>

#include <array>
#include <cerrno>
#include <string>

namespace quillo {

namespace {

bool isDamage(int code) {
    return (code & 0xFF) == SQLITE_CORRUPT || (code & 0xFF) == SQLITE_NOTADB;
}

/// What the system last refused for the log and for the file itself; 0 where nothing.
std::array<int, 2> systemErrors(sqlite3* database) {
    std::array<int, 2> errors{};
    for (const std::size_t which : {0, 1}) {
        sqlite3_file* file = nullptr;
        const int pointer = which == 0 ? SQLITE_FCNTL_JOURNAL_POINTER : SQLITE_FCNTL_FILE_POINTER;
        if (sqlite3_file_control(database, "main", pointer, &file) == SQLITE_OK && file && file->pMethods)
            file->pMethods->xFileControl(file, SQLITE_FCNTL_LAST_ERRNO, &errors[which]);
    }
    return errors;
}

/// The error number for which the system refused to read the file or its log; 0 where it did not. SQLite
/// takes such a refusal for corruption, but it says something about the disk and nothing about the file.
int readRefusal(sqlite3* database) {
    for (const int error : systemErrors(database)) {
        if (error == EIO || error == ENXIO || error == ERANGE)
            return error;
    }
    return 0;
}

/// SQLite forgets the error number where it is the end of a transaction that fails.
int systemError(sqlite3* database) {
    if (const int error = sqlite3_system_errno(database); error != 0)
        return error;
    const auto [log, file] = systemErrors(database);
    return log != 0 ? log : file;
}

/// Why SQLite could not do something, in words for a user.
std::string reason(int code, int error) {
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
        if (error == ENOSPC)
            return "the disk is full";
        if (error == EROFS)
            return "it is read-only";
        return systemErrorText(error != 0 ? error : EIO);
    default:
        return sqlite3_errstr(code);
    }
}

} // namespace

bool FileFailure::damaged() const {
    return isDamage(code);
}

FileFailure fileFailure(const std::filesystem::path& path, std::string_view done, int code,
                        sqlite3* database) {
    int error = database ? systemError(database) : ENOMEM;
    if (const int refusal = database && isDamage(code) ? readRefusal(database) : 0; refusal != 0) {
        code = SQLITE_IOERR_READ;
        error = refusal;
    }
    return {Error{path.string() + " cannot be " + std::string(done) + ": " + reason(code, error)}, code};
}

} // namespace quillo
