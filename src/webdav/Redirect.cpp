#include "webdav/Redirect.h"

#include "base/Host.h"
#include "http/HttpCall.h"

#include <curl/curl.h>

#include <memory>

namespace quillo {

namespace {

class Address {
public:
    explicit Address(const std::string& url) : parts_(curl_url(), &curl_url_cleanup) { follow(url); }

    /// To where that leads from here.
    void follow(const std::string& location) {
        sound_ =
            sound_ && parts_ && curl_url_set(parts_.get(), CURLUPART_URL, location.c_str(), 0) == CURLUE_OK;
    }

    bool isSound() const { return sound_; }

    /// Empty where there is none.
    std::string part(CURLUPart which, unsigned flags = 0) const {
        char* text = nullptr;
        if (!sound_ || curl_url_get(parts_.get(), which, &text, flags) != CURLUE_OK)
            return "";
        std::string found = text;
        curl_free(text);
        return found;
    }

private:
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parts_;
    bool sound_ = true;
};

} // namespace

bool isConfidential(const std::string& url) {
    const std::string scheme = Address(url).part(CURLUPART_SCHEME);
    const auto host = hostOf(url);
    return host && (scheme == "https" || (scheme == "http" && isLoopback(*host)));
}

std::optional<std::string> followed(const std::string& url, const std::string& location) {
    const Address from(url);
    Address to(url);
    to.follow(location);
    if (!from.isSound() || !to.isSound() || !to.part(CURLUPART_USER).empty() ||
        !to.part(CURLUPART_PASSWORD).empty())
        return std::nullopt;
    const std::string there = to.part(CURLUPART_URL);
    const std::string fromPort = from.part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
    const std::string toPort = to.part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
    const std::string fromScheme = from.part(CURLUPART_SCHEME);
    const std::string toScheme = to.part(CURLUPART_SCHEME);
    const bool isSame = toScheme == fromScheme && toPort == fromPort;
    const bool isSafer = fromScheme == "http" && toScheme == "https" &&
                         (toPort == fromPort || (fromPort == "80" && toPort == "443"));
    if (hostOf(url) != hostOf(there) || !(isSame || isSafer) || !isConfidential(there))
        return std::nullopt;
    return there;
}

} // namespace quillo
