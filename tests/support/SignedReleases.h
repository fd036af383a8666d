/// Lists of releases and archives, signed with keys of the test's own.
#pragma once

#include "linux/updates/ReleaseKeys.h"
#include "support/TemporaryFolder.h"

#include <sodium.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace quillo::support {

/// A pair of keys that did not exist before.
class SigningKey {
public:
    SigningKey() {
        if (sodium_init() < 0)
            std::abort();
        crypto_sign_keypair(public_.data(), secret_.data());
    }

    /// In Base64, as is everything here.
    std::string publicKey() const { return base64(public_); }

    std::string sign(std::string_view bytes) const {
        std::array<unsigned char, crypto_sign_BYTES> signature{};
        crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(bytes.data()),
                             bytes.size(), secret_.data());
        return base64(signature);
    }

private:
    static std::string base64(std::span<const unsigned char> bytes) {
        std::string text(sodium_base64_encoded_len(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
        sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(),
                          sodium_base64_VARIANT_ORIGINAL);
        text.pop_back(); // the zero at its end
        return text;
    }

    std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> public_{};
    std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret_{};
};

/// A release as the feed is to have it.
struct ReleaseEntry {
    std::string build = "20";
    std::string version = "2.0";
    std::string url = {};
    std::size_t length = 0;
    std::string signature = {};
    std::string notes = "Faster.";
    std::string minimumSystem = {};
    std::string published = "Thu, 05 Mar 2026 10:00:00 +0000";
};

inline std::string feedOf(std::span<const ReleaseEntry> releases) {
    std::string feed =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
        "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
        "<channel><title>Quillo</title>\n";
    for (const ReleaseEntry& release : releases) {
        feed += "<item><title>" + release.version + "</title><pubDate>" + release.published +
                "</pubDate><sparkle:version>" + release.build +
                "</sparkle:version><sparkle:shortVersionString>" + release.version +
                "</sparkle:shortVersionString>";
        if (!release.minimumSystem.empty())
            feed +=
                "<sparkle:minimumSystemVersion>" + release.minimumSystem + "</sparkle:minimumSystemVersion>";
        feed += "<description><![CDATA[" + release.notes + "]]></description><enclosure url=\"" +
                release.url + "\" length=\"" + std::to_string(release.length) +
                "\" type=\"application/gzip\" sparkle:edSignature=\"" + release.signature + "\"/></item>\n";
    }
    return feed + "</channel></rss>\n";
}

inline ReleaseKeys keysOf(std::string_view first, std::string_view second = {}) {
    const std::array keys{first, second};
    return ReleaseKeys(keys);
}

/// Puts a feed, with its signature by that key, into a folder that a server serves.
inline void publish(const std::filesystem::path& folder, const std::string& feed, const SigningKey& key) {
    writeFile(folder / "appcast.xml", feed);
    writeFile(folder / "appcast.xml.sig", key.sign(feed) + "\n");
}

} // namespace quillo::support
