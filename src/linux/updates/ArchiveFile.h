/// The archive of a release, on its way into the user's download folder.
#pragma once

#include "linux/updates/ReleaseKeys.h"
#include "ports/Updater.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryFile>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace quillo {

/// Without a name as long as it is not known to be what the makers signed, where the file system can do that:
/// then nothing is left of it, whatever happens. Used and dropped on one thread, as it waits for the disk;
/// made, and given up, on any.
class ArchiveFile {
public:
    /// The folder is asked for with the first part, and made where it is not there.
    explicit ArchiveFile(std::function<QString()> folder) : folder_(std::move(folder)) {}

    void append(const QByteArray& part);

    /// It is not wanted any more: keep() will not.
    void giveUp() { givenUp_ = true; }

    /// To be called when all of it is there. If it has that length and that signature it gets the name, or
    /// one like it where that is taken.
    Updater::DownloadResult keep(const QString& name, std::uint64_t length, const QByteArray& signature,
                                 const ReleaseKeys& keys);

private:
    void open();

    const std::function<QString()> folder_;
    std::atomic<bool> givenUp_ = false;
    bool written_ = true; ///< all that was appended
    std::unique_ptr<QTemporaryFile> file_;
};

} // namespace quillo
