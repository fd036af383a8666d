/// The list of releases, as its file has it.
#pragma once

#include "linux/updates/BuildNumber.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>
#include <cstdint>
#include <optional>
#include <vector>

namespace quillo {

/// A release that is said completely and is meant for everybody on Linux.
struct AppcastItem {
    BuildNumber build;
    QString buildText;
    QString version;       ///< for people; the build's text where it has none
    QString minimumSystem; ///< version of the system that it needs; may be empty
    QString notes;         ///< text or HTML; may be empty
    QDateTime published;   ///< may be invalid
    QUrl archive;          ///< absolute
    std::uint64_t length = 0;
    QByteArray signature; ///< of the archive: Ed25519, 64 bytes
};

/// Reads an RSS feed with the elements of the appcast namespace; absent where it is none. Items that lack
/// something, or are meant for others, are passed over. Document type declarations are refused: they can make
/// a small file large. Bounded in time and stack by the size of the feed, whatever it is. Any thread.
/// https://www.rssboard.org/rss-specification
std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& feed);

} // namespace quillo
