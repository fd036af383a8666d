#include "http/HttpCall.h"

#include "base/Host.h"

#include <algorithm>
#include <csignal>
#include <new>
#include <utility>

namespace quillo {

namespace {

std::string inLowerCase(std::string ascii) {
    std::transform(ascii.begin(), ascii.end(), ascii.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return ascii;
}

} // namespace

HttpCall::HttpCall(const std::string& url, Limits limits) : longest_(limits.answer), easy_(curl_easy_init()) {
    if (!easy_)
        throw std::bad_alloc();
    set(CURLOPT_URL, url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits.time.count()));
    if (const auto host = hostOf(url); host && isLoopback(*host))
        set(CURLOPT_NOPROXY, "*");
    set(CURLOPT_NOSIGNAL, 1L);
    // A name that is still being looked up is not waited for.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_HEADERFUNCTION, &HttpCall::receiveHead);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &HttpCall::receiveBody);
    set(CURLOPT_WRITEDATA, this);
}

void HttpCall::addHeader(const std::string& header) {
    curl_slist* const longer = curl_slist_append(headers_.get(), header.c_str());
    if (longer == nullptr)
        throw std::bad_alloc();
    static_cast<void>(headers_.release());
    headers_.reset(longer);
    set(CURLOPT_HTTPHEADER, headers_.get());
}

void HttpCall::setBody(std::string body) {
    sent_ = std::move(body);
    addHeader("Expect:"); // Nobody is asked first whether the body may be sent.
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(sent_.size()));
    set(CURLOPT_POSTFIELDS, sent_.data());
}

long HttpCall::status() const {
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    return status;
}

std::string HttpCall::header(const char* name) const {
    curl_header* header = nullptr;
    return curl_easy_header(easy_.get(), name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK ? header->value
                                                                                          : "";
}

std::string HttpCall::contentType() const {
    const std::string value = header("Content-Type");
    return inLowerCase(value.substr(0, value.find_first_of("; ")));
}

std::string HttpCall::challenge() const {
    std::string all;
    curl_header* header = nullptr;
    for (std::size_t which = 0;
         curl_easy_header(easy_.get(), "WWW-Authenticate", which, CURLH_HEADER, -1, &header) == CURLHE_OK;
         ++which)
        all.append(header->value).append(", ");
    return inLowerCase(std::move(all));
}

std::chrono::seconds HttpCall::retryAfter() const {
    curl_off_t seconds = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RETRY_AFTER, &seconds);
    return std::chrono::seconds(std::max<curl_off_t>(seconds, 0));
}

std::size_t HttpCall::receiveHead(char*, std::size_t size, std::size_t count, void* call) {
    auto& self = *static_cast<HttpCall*>(call);
    self.headReceived_ += size * count;
    return self.headReceived_ <= self.longest_ ? size * count : 0;
}

/// All of it or, where that is too much, nothing, which ends the call.
std::size_t HttpCall::receiveBody(char* bytes, std::size_t size, std::size_t count, void* call) {
    auto& self = *static_cast<HttpCall*>(call);
    if (size * count > self.longest_ - self.body_.size())
        return 0;
    self.body_.append(bytes, size * count);
    return size * count;
}

Error describeFailure(CURLcode code, const std::string& server) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
        return {"nobody answers there"};
    case CURLE_OPERATION_TIMEDOUT:
        return {server + " does not answer in time"};
    case CURLE_PEER_FAILED_VERIFICATION:
        return {"the certificate there cannot be trusted"};
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return {server + " breaks off the connection"};
    case CURLE_WRITE_ERROR: // Ours, where an answer is too long.
        return {server + " answers more than can be read"};
    default:
        return {server + " does not answer: " + curl_easy_strerror(code)};
    }
}

std::optional<std::string> hostOf(const std::string& url) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parts(curl_url(), &curl_url_cleanup);
    char* host = nullptr;
    if (!parts || curl_url_set(parts.get(), CURLUPART_URL, url.c_str(), 0) != CURLUE_OK ||
        curl_url_get(parts.get(), CURLUPART_HOST, &host, 0) != CURLUE_OK)
        return std::nullopt;
    std::string found = inLowerCase(host);
    curl_free(host);
    return found;
}

void blockBrokenPipeSignals() {
    sigset_t broken;
    sigemptyset(&broken);
    sigaddset(&broken, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &broken, nullptr);
}

} // namespace quillo
