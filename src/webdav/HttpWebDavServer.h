/// A WebDAV server, asked over HTTP.
#pragma once

#include "http/HttpCall.h"
#include "sync/WebDavServer.h"

#include <curl/curl.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <variant>

namespace quillo {

/// The password goes over https only, or stays on this machine; it is never sent to another host. A server
/// that leads elsewhere on its own host is followed, with the same request, five times at most.
class HttpWebDavServer final : public WebDavServer {
public:
    static constexpr std::chrono::seconds longestRequest{20};
    static constexpr std::chrono::seconds longestConnecting{10};
    static constexpr int mostRedirects = 5;

    explicit HttpWebDavServer(std::string url);
    ~HttpWebDavServer() override;

    void authenticate(const std::string& user, const std::string& password) override;
    FromWebDav<std::vector<ListedFile>> list(const std::string& folder) override;
    FromWebDav<FetchedFile> fetch(const std::string& file, const std::string& etag) override;
    FromWebDav<std::monostate> store(const std::string& file, const std::string& bytes) override;
    FromWebDav<std::monostate> remove(const std::string& file) override;
    FromWebDav<std::monostate> makeFolder(const std::string& folder) override;
    void giveUp() override;

private:
    struct Request {
        const char* method;
        std::vector<std::string> headers = {};
        std::string_view body = {};
        std::size_t largestAnswer = 0;
    };
    struct Answer {
        long status = 0;
        std::string contentType; ///< lower case, without parameters
        std::string etag;
        std::string location;
        std::string challenge; ///< how the server wants to know who asks
        std::chrono::seconds retryAfter{0};
        std::string body;
    };
    struct CleanUp {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };

    FromWebDav<Answer> send(const std::string& path, const Request& request);
    FromWebDav<Answer> sendOnce(const std::string& url, const Request& request);
    FromWebDav<Answer> carryOut(const std::string& url, const Request& request);
    CURLcode perform(HttpCall& call);
    WebDavFailure failureOf(const Answer& answer) const;

    const std::string url_;
    std::string user_;
    std::string password_;
    unsigned long authentication_ = CURLAUTH_BASIC;

    std::mutex mutex_;
    std::condition_variable idle_;
    std::unique_ptr<CURLM, CleanUp> multi_; ///< the asker's alone while it is busy
    bool busy_ = false;
    bool givenUp_ = false;
};

} // namespace quillo
