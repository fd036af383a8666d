#include "FaultySystemCalls.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>

namespace quillo::support {

namespace {

// SQLite calls plain functions, so what they need is global.
std::atomic<int> readError = 0;
std::atomic<int> writeError = 0;
std::atomic<std::uint64_t> bytes = 0;

ssize_t faultyPread(int descriptor, void* buffer, size_t count, off_t offset) {
    if (readError != 0) {
        errno = readError;
        return -1;
    }
    const ssize_t result = pread(descriptor, buffer, count, offset);
    if (result > 0)
        bytes += static_cast<std::uint64_t>(result);
    return result;
}

ssize_t faultyPwrite(int descriptor, const void* buffer, size_t count, off_t offset) {
    if (writeError != 0) {
        errno = writeError;
        return -1;
    }
    return pwrite(descriptor, buffer, count, offset);
}

void replace(sqlite3_syscall_ptr forReading, sqlite3_syscall_ptr forWriting) {
    sqlite3_vfs* files = sqlite3_vfs_find(nullptr);
    for (const char* name : {"pread", "pread64"})
        files->xSetSystemCall(files, name, forReading);
    for (const char* name : {"pwrite", "pwrite64"})
        files->xSetSystemCall(files, name, forWriting);
}

} // namespace

FaultySystemCalls::FaultySystemCalls() {
    readError = 0;
    writeError = 0;
    bytes = 0;
    replace(reinterpret_cast<sqlite3_syscall_ptr>(&faultyPread),
            reinterpret_cast<sqlite3_syscall_ptr>(&faultyPwrite));
}

FaultySystemCalls::~FaultySystemCalls() {
    replace(nullptr, nullptr);
}

void FaultySystemCalls::failReads(int errorNumber) {
    readError = errorNumber;
}

void FaultySystemCalls::failWrites(int errorNumber) {
    writeError = errorNumber;
}

std::uint64_t FaultySystemCalls::bytesRead() const {
    return bytes;
}

} // namespace quillo::support
