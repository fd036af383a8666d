#include "sqlite/FileFailure.h"

#include "sqlite/PrivateFolder.h"

#include <sqlite3.h>

#include <cerrno>
#include <string>

namespace quillo {

namespace {

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

} // namespace

bool FileFailure::damaged() const {
    return isDamage(code);
}

FileFailure fileFailure(const std::filesystem::path& path, std::string_view done, int code,
                        sqlite3* database) {
    int systemError = database ? sqlite3_system_errno(database) : ENOMEM;
    if (const int refusal = database && isDamage(code) ? readRefusal(database) : 0; refusal != 0) {
        code = SQLITE_IOERR_READ;
        systemError = refusal;
    }
    return {Error{path.string() + " cannot be " + std::string(done) + ": " + reason(code, systemError)},
            code};
}

} // namespace quillo
