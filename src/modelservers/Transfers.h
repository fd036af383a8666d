/// HTTP in the background.
#pragma once

#include "modelservers/Exchange.h"

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace quillo {

/// Carries out any number of exchanges at a time, on a thread of its own, which begins with the first.
/// Belongs to the main thread. Going, it gives up all that is under way at once, whatever the servers do.
///
/// An answer is one with the status 200.
class Transfers {
public:
    using Ticket = std::uint64_t;

    /// The most bytes of an answer, of its head and its body each.
    static constexpr std::size_t longestAnswer = std::size_t{256} << 10;

    Transfers();
    ~Transfers();
    Transfers(const Transfers&) = delete;
    Transfers& operator=(const Transfers&) = delete;

    /// Begins the exchange. All its requests together have as long as the limit.
    Ticket start(std::unique_ptr<Exchange> exchange, std::chrono::milliseconds limit);

    /// Gives the exchange up, unless it is over. It may just be hearing an answer.
    void giveUp(Ticket ticket);

private:
    class Transfer;
    using Clock = std::chrono::steady_clock;
    struct Task {
        Ticket ticket;
        std::unique_ptr<Exchange> exchange;
        Clock::time_point deadline;
    };
    struct CleanUp {
        void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
    };

    void run();
    bool takeChanges();
    void begin(Task task, const HttpRequest& request);
    void end(CURL* easy, CURLcode code);

    const std::unique_ptr<CURLM, CleanUp> multi_;
    std::map<Ticket, std::unique_ptr<Transfer>> underWay_; ///< the thread's alone

    std::mutex mutex_;
    Ticket last_ = 0;
    std::vector<Task> arrived_;
    std::set<Ticket> givenUp_;
    bool stopping_ = false;
    std::thread thread_;
};

} // namespace quillo
