/// Makes the system calls with which SQLite reads and writes files fail, as a full or broken disk does. For
/// the whole process, until it goes.
#pragma once

#include <atomic>
#include <cstdint>

namespace quillo::support {

class FaultySystemCalls {
public:
    FaultySystemCalls();
    ~FaultySystemCalls();
    FaultySystemCalls(const FaultySystemCalls&) = delete;
    FaultySystemCalls& operator=(const FaultySystemCalls&) = delete;

    /// Error number with which every read or write fails from now on; 0 for none.
    void failReads(int errorNumber);
    void failWrites(int errorNumber);

    /// Bytes read so far.
    std::uint64_t bytesRead() const;
};

} // namespace quillo::support
