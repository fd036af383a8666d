/// The file `preferences.sqlite`: one table of typed values, each under its key.
#pragma once

#include "base/Result.h"
#include "ports/KeyValueStore.h"
#include "sqlite/FileFailure.h"
#include "sqlite/PreferencesTable.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;

namespace quillo {

/// Opens, checks, reads and writes the file; remembers nothing of what is in it. One thread at a time may use
/// it.
///
/// A row whose value does not fit the word in its type column is skipped, and stays until its key is written;
/// then it is kept under a key of its own.
class PreferencesFile {
public:
    enum class Access {
        ReadWrite, ///< Makes folder and file where they are missing. Only for whoever holds the
                   ///< PreferencesLock.
        ReadOnly,  ///< Only looks: what is missing stays missing and counts as empty. Needs no lock.
    };

    PreferencesFile(const std::filesystem::path& folder, Access access);

    const std::filesystem::path& path() const { return path_; }
    Access access() const { return access_; }

    /// Opens the file and sets `contents` to what it holds. After a failure the file is closed and as it was
    /// before.
    [[nodiscard]] std::optional<FileFailure> open(PreferencesContents& contents);
    bool isOpen() const { return database_ != nullptr; }

    /// Reads the data under `key` into `value`, which stays empty where there is none.
    [[nodiscard]] std::optional<FileFailure> readData(std::string_view key, std::optional<Value>& value);

    /// Makes all changes in one transaction, on disk when it returns; after a failure none is made. A value
    /// that could not be read when somebody asked for it is not overwritten without being kept, under a key
    /// of its own.
    [[nodiscard]] std::optional<FileFailure> write(const PreferencesChanges& changes);

    /// Closes the file, leaving what is in the folder exactly as it is, and moves it aside (see
    /// moveDamagedAside).
    Outcome moveAside();

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    enum class Origin { Ours, Fresh };

    std::optional<FileFailure> openForWriting(PreferencesContents& contents);
    std::optional<FileFailure> openForReading(PreferencesContents& contents);
    std::optional<FileFailure> openWithoutCompanions(PreferencesContents& contents);
    std::optional<FileFailure> create() const;
    std::optional<FileFailure> connect(const std::string& name, int flags);
    std::optional<FileFailure> identify(Origin& origin);
    std::optional<FileFailure> examine(Origin& origin, PreferencesContents& contents);
    std::optional<FileFailure> beginLooking(PreferencesContents& contents);
    std::optional<FileFailure> setUp(Origin origin);
    int writeTogether(const PreferencesChanges& changes);
    FileFailure failure(std::string_view done, int code) const;

    const std::filesystem::path path_;
    const Access access_;
    std::unique_ptr<sqlite3, Close> database_;
    PreferencesKeys unread_; ///< Keys whose value could not be read, or does not fit the name of its type.
};

} // namespace quillo
