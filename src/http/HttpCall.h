/// HTTP as all of ours do it.
#pragma once

#include "base/Result.h"

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace quillo {

/// One request, which some multi handle carries out, and the answer. Redirects are not followed, as they
/// could lead anywhere. No cookies are kept; certificates are verified. Proxies of the environment are left
/// out for addresses on this machine. Belongs to one thread.
class HttpCall {
public:
    struct Limits {
        std::chrono::milliseconds time; ///< until the end of the answer
        std::size_t answer;             ///< bytes, of the head and of the body each
    };

    HttpCall(const std::string& url, Limits limits);

    /// "Name: value"; "Name:" for one that libcurl is not to send by itself.
    void addHeader(const std::string& header);

    /// The method is POST, unless another one is set.
    void setBody(std::string body);

    template <class Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    /// To be added to a multi handle, and removed before this goes.
    CURL* handle() { return easy_.get(); }

    // Of the answer, once the call has ended well.
    long status() const;
    std::string header(const char* name) const; ///< of several, the first; empty where there is none
    std::string contentType() const;            ///< lower case, without parameters
    std::string challenge() const;              ///< all of WWW-Authenticate, in lower case
    std::chrono::seconds retryAfter() const;    ///< zero where the server does not mind
    std::string takeBody() { return std::move(body_); }

private:
    struct CleanUp {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };
    struct FreeList {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    static std::size_t receiveHead(char* bytes, std::size_t size, std::size_t count, void* call);
    static std::size_t receiveBody(char* bytes, std::size_t size, std::size_t count, void* call);

    const std::size_t longest_;
    std::size_t headReceived_ = 0;
    std::string sent_;
    std::string body_;
    std::unique_ptr<curl_slist, FreeList> headers_;
    const std::unique_ptr<CURL, CleanUp> easy_; ///< goes first, as it uses the others
};

/// Why a call has not ended well, in words for the user about `server`: "the server does not answer in time".
Error describeFailure(CURLcode code, const std::string& server);

/// The host of an address, in lower case, as libcurl understands it; absent where it is none.
std::optional<std::string> hostOf(const std::string& url);

/// Who writes on this thread to a server that has just gone gets an error, not a signal that ends the
/// program.
void blockBrokenPipeSignals();

} // namespace quillo
