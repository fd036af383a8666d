#include "modelservers/Transfers.h"

#include "http/HttpCall.h"

#include <pthread.h>

#include <climits>
#include <new>
#include <optional>
#include <utility>

namespace quillo {

namespace {

constexpr long statusGood = 200;
constexpr long statusUnauthorized = 401;
constexpr long statusForbidden = 403;
constexpr long statusUnavailable = 503;

/// What errors call the server.
constexpr const char* it = "it";

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

} // namespace

/// One request, of the exchange that it belongs to.
class Transfers::Transfer {
public:
    Transfer(CURLM* multi, Task task, const HttpRequest& request, std::chrono::milliseconds left)
        : multi_(multi), task_(std::move(task)), call_(request.url, {left, longestAnswer}) {
        call_.set(CURLOPT_PRIVATE, this);
        call_.addHeader("Accept: application/json");
        if (!request.body.empty()) {
            call_.addHeader("Content-Type: application/json");
            call_.setBody(request.body);
        }
        curl_multi_add_handle(multi_, call_.handle());
    }

    ~Transfer() { curl_multi_remove_handle(multi_, call_.handle()); }

    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    static Transfer& of(CURL* easy) {
        Transfer* transfer = nullptr;
        curl_easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
        return *transfer;
    }

    Task& task() { return task_; }

    Result<std::string> answer(CURLcode code) {
        if (code != CURLE_OK)
            return describeFailure(code, it);
        if (call_.status() != statusGood)
            return describeStatus(call_.status());
        if (call_.contentType() != "application/json")
            return Error{"it answers with something else than JSON"};
        return call_.takeBody();
    }

private:
    CURLM* const multi_;
    Task task_;
    HttpCall call_;
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
    blockBrokenPipeSignals();

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
        task.exchange->next(describeFailure(CURLE_OPERATION_TIMEDOUT, it));
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
