#include "modelservers/Transfers.h"

#include "languagemodel/ServerAddress.h"

#include <pthread.h>

#include <climits>
#include <csignal>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

namespace quillo {

namespace {

constexpr long statusGood = 200;
constexpr long statusUnauthorized = 401;
constexpr long statusForbidden = 403;
constexpr long statusUnavailable = 503;

Error describe(CURLcode code) {
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_CONNECT:
        return {"nobody answers there"};
    case CURLE_OPERATION_TIMEDOUT:
        return {"it does not answer in time"};
    case CURLE_WRITE_ERROR: // Ours: see Transfer::take.
        return {"it answers more than can be read"};
    default:
        return {std::string("it does not answer: ") + curl_easy_strerror(code)};
    }
}

Error describeStatus(long status) {
    switch (status) {
    case statusUnauthorized:
    case statusForbidden:
        return {"it wants a key"};
    case statusUnavailable:
        return {"it is busy, or still loading its model"};
    default:
        return {"it answers with the HTTP status " + std::to_string(status)};
    }
}

/// "application/json; charset=utf-8"
bool isJson(const char* contentType) {
    constexpr std::string_view json = "application/json";
    const std::string_view type = contentType != nullptr ? contentType : "";
    return curl_strnequal(std::string(type).c_str(), json.data(), json.size()) != 0 &&
           (type.size() == json.size() || type[json.size()] == ';' || type[json.size()] == ' ');
}

} // namespace

/// One request, of the exchange that it belongs to.
class Transfers::Transfer {
public:
    Transfer(CURLM* multi, Task task, const HttpRequest& request, std::chrono::milliseconds left)
        : multi_(multi), task_(std::move(task)), easy_(curl_easy_init()) {
        if (!easy_)
            throw std::bad_alloc();
        set(CURLOPT_PRIVATE, this);
        set(CURLOPT_URL, request.url.c_str());
        set(CURLOPT_PROTOCOLS_STR, "http,https");
        set(CURLOPT_TIMEOUT_MS, static_cast<long>(left.count()));
        if (isOnThisMachine(request.url))
            set(CURLOPT_NOPROXY, "*");
        set(CURLOPT_NOSIGNAL, 1L);
        // A name that is still being looked up is not waited for.
        set(CURLOPT_QUICK_EXIT, 1L);
        set(CURLOPT_HEADERFUNCTION, &Transfer::takeHead);
        set(CURLOPT_HEADERDATA, this);
        set(CURLOPT_WRITEFUNCTION, &Transfer::takeBody);
        set(CURLOPT_WRITEDATA, this);
        addHeader("Accept: application/json");
        if (!request.body.empty()) {
            addHeader("Content-Type: application/json");
            addHeader("Expect:"); // Nobody is asked first whether the body may be sent.
            set(CURLOPT_POSTFIELDSIZE, static_cast<long>(request.body.size()));
            set(CURLOPT_COPYPOSTFIELDS, request.body.c_str());
        }
        set(CURLOPT_HTTPHEADER, headers_.get());
        curl_multi_add_handle(multi_, easy_.get());
    }

    ~Transfer() { curl_multi_remove_handle(multi_, easy_.get()); }

    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    static Transfer& of(CURL* easy) {
        Transfer* transfer = nullptr;
        curl_easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
        return *transfer;
    }

    Task& task() { return task_; }

    Result<std::string> answer(CURLcode code) {
        long status = 0;
        const char* contentType = nullptr;
        curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
        curl_easy_getinfo(easy_.get(), CURLINFO_CONTENT_TYPE, &contentType);
        if (code != CURLE_OK)
            return describe(code);
        if (status != statusGood)
            return describeStatus(status);
        if (!isJson(contentType))
            return Error{"it answers with something else than JSON"};
        return std::move(body_);
    }

private:
    struct CleanUpEasy {
        void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
    };
    struct FreeList {
        void operator()(curl_slist* list) const { curl_slist_free_all(list); }
    };

    template <class Value>
    void set(CURLoption option, Value value) {
        curl_easy_setopt(easy_.get(), option, value);
    }

    void addHeader(const char* header) {
        curl_slist* const longer = curl_slist_append(headers_.get(), header);
        if (longer == nullptr)
            throw std::bad_alloc();
        static_cast<void>(headers_.release());
        headers_.reset(longer);
    }

    static std::size_t takeHead(char*, std::size_t size, std::size_t count, void* transfer) {
        return static_cast<Transfer*>(transfer)->take(size * count);
    }

    static std::size_t takeBody(const char* bytes, std::size_t size, std::size_t count, void* transfer) {
        auto& self = *static_cast<Transfer*>(transfer);
        const std::size_t taken = self.take(size * count);
        self.body_.append(bytes, taken);
        return taken;
    }

    /// All of it or, where that is too much, nothing, which ends the transfer.
    std::size_t take(std::size_t size) {
        received_ += size;
        return received_ <= longestAnswer ? size : 0;
    }

    CURLM* const multi_;
    Task task_;
    std::string body_;
    std::size_t received_ = 0;
    std::unique_ptr<curl_slist, FreeList> headers_;
    const std::unique_ptr<CURL, CleanUpEasy> easy_;
};

Transfers::Transfers() : multi_(curl_multi_init()) {
    if (!multi_)
        throw std::bad_alloc();
}

Transfers::~Transfers() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    curl_multi_wakeup(multi_.get());
    thread_.join();
}

Transfers::Ticket Transfers::start(std::unique_ptr<Exchange> exchange, std::chrono::milliseconds limit) {
    Ticket ticket = 0;
    {
        const std::lock_guard lock(mutex_);
        ticket = ++last_;
        arrived_.push_back({ticket, std::move(exchange), Clock::now() + limit});
    }
    if (thread_.joinable())
        curl_multi_wakeup(multi_.get());
    else
        thread_ = std::thread(&Transfers::run, this);
    return ticket;
}

void Transfers::giveUp(Ticket ticket) {
    {
        const std::lock_guard lock(mutex_);
        givenUp_.insert(ticket);
    }
    curl_multi_wakeup(multi_.get());
}

void Transfers::run() {
    pthread_setname_np(pthread_self(), "Quillo.Models");
    // Who writes to a server that has just gone gets an error, not a signal that ends the program.
    sigset_t broken;
    sigemptyset(&broken);
    sigaddset(&broken, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &broken, nullptr);

    while (takeChanges()) {
        int running = 0;
        curl_multi_perform(multi_.get(), &running);
        int more = 0;
        while (const CURLMsg* const message = curl_multi_info_read(multi_.get(), &more)) {
            if (message->msg == CURLMSG_DONE)
                end(message->easy_handle, message->data.result);
        }
        curl_multi_poll(multi_.get(), nullptr, 0, INT_MAX, nullptr);
    }
    underWay_.clear();
}

/// Does what the main thread wants; false where that is to stop.
bool Transfers::takeChanges() {
    std::vector<Task> arrived;
    std::set<Ticket> givenUp;
    {
        const std::lock_guard lock(mutex_);
        if (stopping_)
            return false;
        arrived.swap(arrived_);
        givenUp.swap(givenUp_);
    }
    for (const Ticket ticket : givenUp)
        underWay_.erase(ticket);
    for (Task& task : arrived) {
        if (givenUp.count(task.ticket) == 0) {
            const HttpRequest first = task.exchange->first();
            begin(std::move(task), first);
        }
    }
    return true;
}

void Transfers::begin(Task task, const HttpRequest& request) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(task.deadline - Clock::now());
    if (left.count() <= 0) {
        task.exchange->next(describe(CURLE_OPERATION_TIMEDOUT));
        return;
    }
    const Ticket ticket = task.ticket;
    underWay_[ticket] = std::make_unique<Transfer>(multi_.get(), std::move(task), request, left);
}

void Transfers::end(CURL* easy, CURLcode code) {
    Transfer& transfer = Transfer::of(easy);
    const Result<std::string> answer = transfer.answer(code);
    Task task = std::move(transfer.task());
    underWay_.erase(task.ticket);
    if (const std::optional<HttpRequest> next = task.exchange->next(answer))
        begin(std::move(task), *next);
}

} // namespace quillo
