/// The preferences in an SQLite file.
#pragma once

#include "base/Result.h"
#include "ports/Preferences.h"
#include "sqlite/PreferencesFile.h"

#include <filesystem>
#include <memory>

namespace quillo {

/// Thread-safe. Values are read from memory, except data larger than preferences_table::largeDataBytes that
/// is on disk already: value() reads that from the file, after the writes before it, and so waits for the
/// disk. Writes happen on a thread of their own, in the order of the calls; several apply() calls may become
/// one transaction, none is ever split.
///
/// What cannot be written is logged, stays visible to this process and is tried again with the next apply()
/// or flush(). A damaged file is moved aside (moveDamagedAside) and a new one made, with every value that can
/// still be read if the damage shows only while the preferences are open; with Access::ReadOnly nothing is
/// moved.
class SqlitePreferences : public Preferences {
public:
    using Access = PreferencesFile::Access;

    /// No key and no value may have more bytes.
    static constexpr std::size_t maximumBytes = 512 * 1024 * 1024;

    /// Opens `<folder>/preferences.sqlite`; see Access for what may be missing. The error is a line for the
    /// user.
    static Result<std::unique_ptr<SqlitePreferences>> open(const std::filesystem::path& folder,
                                                           Access access);

    /// Writes what is not on disk yet.
    ~SqlitePreferences() override;

    std::optional<Value> value(std::string_view key) const override;

    /// Changes with a key or value above maximumBytes, or a double that is no finite number,
    /// are refused together with those they came with: logged, and reported by the next flush().
    void apply(std::vector<Change> changes) override;

    /// Returns when everything applied before is on disk. Otherwise the error says in a line for the user
    /// what is in the way (a full disk, a read-only file, another program that locks it, ...), or that since
    /// the last flush() a value could not be read or was refused.
    Outcome flush();

    /// Gives up what is not on disk: for a command that has said that it could not do it.
    void discard();

    /// From now on nothing is written before the next flush(), and then all of it in one transaction: for a
    /// command that is to be done as a whole or not at all. Without effect on what was applied before.
    void writeOnFlushOnly();

private:
    class Writer;
    explicit SqlitePreferences(std::unique_ptr<Writer> writer);

    const std::unique_ptr<Writer> writer_;
};

} // namespace quillo
