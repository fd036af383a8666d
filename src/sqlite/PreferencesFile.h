/// The file `preferences.sqlite`: one table of typed values, each under its key.
#pragma once

#include "base/Result.h"
#include "ports/KeyValueStore.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

struct sqlite3;

namespace quillo {

/// Opens, checks, reads and writes the file; remembers nothing of what is in it. One thread at a time may use
/// it.
///
/// A row whose value does not fit the word in its type column is skipped, and stays until its key is written.
class PreferencesFile {
public:
    enum class Access {
        ReadWrite, ///< Makes folder and file where they are missing. Only for whoever holds the
                   ///< PreferencesLock.
        ReadOnly,  ///< Only looks: what is missing stays missing and counts as empty. Needs no lock.
    };

    /// Data of more bytes is not loaded with the rest but read when asked for.
    static constexpr std::size_t largeDataBytes = 64 * 1024;
    /// No key and no value may have more bytes.
    static constexpr std::size_t maximumBytes = 512 * 1024 * 1024;

    struct LeftInFile {}; ///< Stands for large data.
    using Contents = std::map<std::string, std::variant<Value, LeftInFile>, std::less<>>;
    /// The new value of each key that changes; none where the key is removed.
    using Changes = std::map<std::string, std::optional<Value>, std::less<>>;

    struct Failure {
        Error error;
        int code = 0; ///< SQLite's extended result code; 0 where it was not SQLite that refused.

        /// The file is no database or a broken one, which no waiting and no trying again will change.
        bool damaged() const;
    };

    PreferencesFile(const std::filesystem::path& folder, Access access);

    const std::filesystem::path& path() const { return path_; }
    Access access() const { return access_; }

    /// Opens the file and adds what it holds to `contents`. After a failure the file is closed and as it was
    /// before.
    [[nodiscard]] std::optional<Failure> open(Contents& contents);
    bool isOpen() const { return database_ != nullptr; }

    /// Reads the data under `key` into `value`, which stays empty where there is none.
    [[nodiscard]] std::optional<Failure> readData(std::string_view key, std::optional<Value>& value);

    /// Makes all changes in one transaction, on disk when it returns; after a failure none is made. A value
    /// that could not be read when somebody asked for it is not overwritten without being kept, under a key
    /// of its own.
    [[nodiscard]] std::optional<Failure> write(const Changes& changes);

    /// Closes the file, leaving what is in the folder exactly as it is, and moves it aside (see
    /// moveDamagedAside).
    Outcome moveAside();

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    enum class Origin { Ours, Fresh };

    std::optional<Failure> openForWriting();
    std::optional<Failure> openForReading();
    std::optional<Failure> openWithoutCompanions();
    std::optional<Failure> create() const;
    std::optional<Failure> connect(const std::string& name, int flags);
    std::optional<Failure> identify(Origin& origin);
    std::optional<Failure> beginLooking();
    std::optional<Failure> setUp(Origin origin);
    std::optional<Failure> load(Contents& contents);
    int readBlob(std::int64_t row, std::string& bytes);
    int change(const std::string& key, const std::optional<Value>& value);
    Failure failure(std::string_view what, int code) const;

    const std::filesystem::path path_;
    const Access access_;
    std::unique_ptr<sqlite3, Close> database_;
    std::set<std::string, std::less<>> unread_; ///< Keys whose value could not be read.
};

} // namespace quillo
