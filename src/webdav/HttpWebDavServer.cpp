#include "webdav/HttpWebDavServer.h"

#include "base/Product.h"
#include "sync/DeviceFile.h"
#include "webdav/Listing.h"
#include "webdav/Redirect.h"

#include <algorithm>
#include <climits>
#include <utility>
#include <vector>

namespace quillo {

namespace {

using Kind = WebDavFailure::Kind;

constexpr const char* theServer = "the server";
constexpr std::size_t longestHead = std::size_t{64} << 10;

enum Status : long {
    good = 200,
    created = 201,
    accepted = 202,
    noContent = 204,
    multiStatus = 207,
    movedPermanently = 301,
    found = 302,
    seeOther = 303,
    notModified = 304,
    temporaryRedirect = 307,
    permanentRedirect = 308,
    unauthorized = 401,
    forbidden = 403,
    notFound = 404,
    methodNotAllowed = 405,
    requestTimeout = 408,
    conflict = 409,
    gone = 410,
    contentTooLarge = 413,
    locked = 423,
    tooManyRequests = 429,
    notImplemented = 501,
    unavailable = 503,
    gatewayTimeout = 504,
    insufficientStorage = 507,
};

std::string userAgent() {
    const auto version = product::present(product::version);
    return version ? "Quillo/" + std::string(*version) : "Quillo";
}

bool isRedirect(long status) {
    return status == movedPermanently || status == found || status == seeOther ||
           status == temporaryRedirect || status == permanentRedirect;
}

bool isDone(long status) {
    return status == good || status == created || status == noContent;
}

bool isRemoved(long status) {
    return status == good || status == accepted || status == noContent || status == notFound ||
           status == gone;
}

/// Where the network wants its user to log in first, or the server does.
bool isWebPage(const std::string& contentType, const std::string& body) {
    return contentType == "text/html" && body.find_first_not_of(" \t\r\n") != body.find('{');
}

template <class Answer>
WebDavFailure* failed(FromWebDav<Answer>& answer) {
    return std::get_if<WebDavFailure>(&answer);
}

} // namespace

HttpWebDavServer::HttpWebDavServer(std::string url) : url_(std::move(url)) {}

HttpWebDavServer::~HttpWebDavServer() = default;

void HttpWebDavServer::authenticate(const std::string& user, const std::string& password) {
    user_ = user;
    password_ = password;
}

FromWebDav<std::vector<ListedFile>> HttpWebDavServer::list(const std::string& folder) {
    auto answer = send(folder, {"PROPFIND",
                                {"Depth: 1", "Content-Type: application/xml; charset=utf-8"},
                                listingQuestion,
                                largestListing});
    if (auto* const failure = failed(answer))
        return std::move(*failure);
    const Answer& listing = std::get<Answer>(answer);
    if (listing.status != multiStatus)
        return failureOf(listing);
    auto files = readListing(listing.body);
    if (!files)
        return WebDavFailure{Kind::Other,
                             Error{"what the server lists cannot be read: " + files.error().message}};
    return *std::move(files);
}

FromWebDav<FetchedFile> HttpWebDavServer::fetch(const std::string& file, const std::string& etag) {
    Request request{"GET", {}, {}, largestDeviceFile};
    if (!etag.empty())
        request.headers.push_back("If-None-Match: " + etag);
    auto answer = send(file, request);
    if (auto* const failure = failed(answer))
        return std::move(*failure);
    Answer& fetched = std::get<Answer>(answer);
    if (fetched.status == notModified && !etag.empty())
        return FetchedFile{std::nullopt, etag};
    if (fetched.status != good || isWebPage(fetched.contentType, fetched.body))
        return failureOf(fetched);
    return FetchedFile{std::move(fetched.body), std::move(fetched.etag)};
}

FromWebDav<std::monostate> HttpWebDavServer::store(const std::string& file, const std::string& bytes) {
    auto answer = send(file, {"PUT", {"Content-Type: application/json"}, bytes, longestHead});
    if (auto* const failure = failed(answer))
        return std::move(*failure);
    Answer& stored = std::get<Answer>(answer);
    if (stored.status == conflict) // Its folder is not there.
        stored.status = notFound;
    // Apache says in HTML that it has created something.
    if (!isDone(stored.status) || (stored.status == good && isWebPage(stored.contentType, stored.body)))
        return failureOf(stored);
    return std::monostate{};
}

FromWebDav<std::monostate> HttpWebDavServer::remove(const std::string& file) {
    auto answer = send(file, {"DELETE", {}, {}, longestHead});
    if (auto* const failure = failed(answer))
        return std::move(*failure);
    Answer& removed = std::get<Answer>(answer);
    if (removed.status == methodNotAllowed) // Of all that WebDAV is, this.
        removed.status = forbidden;
    if (!isRemoved(removed.status) ||
        (removed.status == good && isWebPage(removed.contentType, removed.body)))
        return failureOf(removed);
    return std::monostate{};
}

FromWebDav<std::monostate> HttpWebDavServer::makeFolder(const std::string& folder) {
    auto answer = send(folder, {"MKCOL", {}, {}, longestHead});
    if (auto* const failure = failed(answer))
        return std::move(*failure);
    Answer& made = std::get<Answer>(answer);
    if (made.status == conflict) // The one that it is to be in is not there.
        made.status = notFound;
    if (!isDone(made.status) && made.status != methodNotAllowed)
        return failureOf(made);
    return std::monostate{};
}

void HttpWebDavServer::giveUp() {
    std::unique_lock lock(mutex_);
    givenUp_ = true;
    if (busy_)
        curl_multi_wakeup(multi_.get());
    idle_.wait(lock, [this] { return !busy_; });
    multi_.reset();
}

/// Goes where the server leads.
FromWebDav<HttpWebDavServer::Answer> HttpWebDavServer::send(const std::string& path, const Request& request) {
    std::string url = url_ + '/' + path;
    for (int redirects = 0; redirects <= mostRedirects; ++redirects) {
        auto answer = sendOnce(url, request);
        const Answer* const got = std::get_if<Answer>(&answer);
        if (got == nullptr || !isRedirect(got->status) || got->location.empty())
            return answer;
        const auto next = followed(url, got->location);
        if (!next)
            return WebDavFailure{Kind::Other,
                                 Error{"the server leads to another one, which is not followed"}};
        url = *next;
    }
    return WebDavFailure{Kind::Other, Error{"the server leads round in circles"}};
}

/// In the way that the server wants to know who asks: the plainest that it knows, as nobody listens.
FromWebDav<HttpWebDavServer::Answer> HttpWebDavServer::sendOnce(const std::string& url,
                                                                const Request& request) {
    auto answer = carryOut(url, request);
    const Answer* const got = std::get_if<Answer>(&answer);
    const auto wants = [&](const char* scheme) { return got->challenge.find(scheme) != std::string::npos; };
    if (got == nullptr || got->status != unauthorized || user_.empty() ||
        authentication_ == CURLAUTH_DIGEST || !wants("digest ") || wants("basic "))
        return answer;
    authentication_ = CURLAUTH_DIGEST;
    return carryOut(url, request);
}

FromWebDav<HttpWebDavServer::Answer> HttpWebDavServer::carryOut(const std::string& url,
                                                                const Request& request) {
    if (!isConfidential(url))
        return WebDavFailure{Kind::Other,
                             Error{"the address must begin with https, unless it is this machine's"}};
    {
        const std::lock_guard lock(mutex_);
        if (givenUp_)
            return WebDavFailure{Kind::Other, Error{"it was given up"}};
        busy_ = true;
        if (!multi_)
            multi_.reset(curl_multi_init());
    }
    blockBrokenPipeSignals();
    FromWebDav<Answer> result = WebDavFailure{};
    {
        HttpCall call(url, {longestRequest, std::max(request.largestAnswer, longestHead)});
        call.set(CURLOPT_CUSTOMREQUEST, request.method);
        call.set(CURLOPT_CONNECTTIMEOUT_MS,
                 static_cast<long>(std::chrono::milliseconds(longestConnecting).count()));
        call.set(CURLOPT_USERAGENT, userAgent().c_str());
        call.addHeader("Accept-Encoding: identity"); // Some servers' etags are not the file's else.
        for (const std::string& header : request.headers)
            call.addHeader(header);
        if (!request.body.empty())
            call.setBody(std::string(request.body));
        if (!user_.empty()) {
            call.set(CURLOPT_HTTPAUTH, authentication_);
            call.set(CURLOPT_USERNAME, user_.c_str());
            call.set(CURLOPT_PASSWORD, password_.c_str());
        }
        const CURLcode code = perform(call);
        if (code != CURLE_OK)
            result = WebDavFailure{code == CURLE_WRITE_ERROR ? Kind::TooLarge : Kind::Other,
                                   describeFailure(code, theServer)};
        else
            result =
                Answer{call.status(),    call.contentType(), call.header("ETag"), call.header("Location"),
                       call.challenge(), call.retryAfter(),  call.takeBody()};
    }
    const std::lock_guard lock(mutex_);
    busy_ = false;
    idle_.notify_all();
    return result;
}

CURLcode HttpWebDavServer::perform(HttpCall& call) {
    CURLM* const multi = multi_.get();
    curl_multi_add_handle(multi, call.handle());
    CURLcode code = CURLE_ABORTED_BY_CALLBACK;
    for (bool over = false; !over;) {
        int running = 0;
        curl_multi_perform(multi, &running);
        int more = 0;
        while (const CURLMsg* const message = curl_multi_info_read(multi, &more)) {
            if (message->msg == CURLMSG_DONE) {
                code = message->data.result;
                over = true;
            }
        }
        if (!over)
            curl_multi_poll(multi, nullptr, 0, INT_MAX, nullptr);
        const std::lock_guard lock(mutex_);
        over = over || givenUp_;
    }
    curl_multi_remove_handle(multi, call.handle());
    return code;
}

/// What an answer means that is not what was asked for.
WebDavFailure HttpWebDavServer::failureOf(const Answer& answer) const {
    const auto failure = [&](const char* why, Kind kind = Kind::Other) {
        return WebDavFailure{kind, Error{why}, answer.retryAfter};
    };
    switch (answer.status) {
    case unauthorized:
        return failure(user_.empty() ? "the server wants a user's name and password"
                                     : "the server says that the password is wrong",
                       Kind::Unauthorized);
    case forbidden:
        return failure("the server does not allow that", Kind::Forbidden);
    case notFound:
    case gone:
        return failure("it is not there", Kind::Missing);
    case methodNotAllowed:
    case notImplemented:
        return failure("there is no WebDAV at that address");
    case requestTimeout:
    case gatewayTimeout:
        return failure("the server does not answer in time");
    case contentTooLarge:
        return failure("the list is too large for the server");
    case locked:
        return failure("somebody has locked the file at the server");
    case tooManyRequests:
        return failure("the server wants to be asked less often");
    case unavailable:
        return failure("the server is not ready for the moment");
    case insufficientStorage:
        return failure("the server's disk is full");
    default:
        break;
    }
    if (answer.contentType == "text/html" && answer.status == good)
        return failure("a web page comes instead of the file; perhaps somebody has to log in");
    return failure(("the server answers with the HTTP status " + std::to_string(answer.status)).c_str());
}

} // namespace quillo
