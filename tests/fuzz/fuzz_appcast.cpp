// Any bytes as a list of releases: reading them never crashes, and what is read is complete.
#include "linux/updates/Appcast.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto items =
        quillo::readAppcast(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!items)
        return 0;
    for (const quillo::AppcastItem& item : *items) {
        if (quillo::BuildNumber::parse(item.buildText.toStdString()) != item.build ||
            item.version.isEmpty() || item.archive.isRelative() || item.length == 0 ||
            item.signature.size() != 64)
            std::abort();
    }
    return 0;
}
