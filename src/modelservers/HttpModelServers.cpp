#include "modelservers/HttpModelServers.h"

#include "modelservers/HttpLanguageModel.h"
#include "modelservers/ModelNames.h"
#include "modelservers/Transfers.h"

#include <future>
#include <utility>

namespace quillo {

namespace {

using Names = Result<std::vector<std::string>>;

/// Asks which models there are.
class ListExchange final : public Exchange {
public:
    ListExchange(std::string address, std::promise<Names> promise)
        : address_(std::move(address)), promise_(std::move(promise)) {}

    HttpRequest first() override { return modelNamesRequest(address_); }

    std::optional<HttpRequest> next(const Result<std::string>& answer) override {
        promise_.set_value(answer ? readModelNames(*answer) : Names(answer.error()));
        return std::nullopt;
    }

private:
    const std::string address_;
    std::promise<Names> promise_;
};

} // namespace

std::unique_ptr<LanguageModel> HttpModelServers::model(ServedModel choice, Executor& mainExecutor,
                                                       std::chrono::milliseconds limit) {
    return std::make_unique<HttpLanguageModel>(std::move(choice), mainExecutor, limit);
}

std::vector<Names> HttpModelServers::modelNames(const std::vector<std::string>& addresses,
                                                std::chrono::milliseconds limit) {
    Transfers transfers;
    std::vector<std::future<Names>> answers;
    for (const std::string& address : addresses) {
        std::promise<Names> promise;
        answers.push_back(promise.get_future());
        transfers.start(std::make_unique<ListExchange>(address, std::move(promise)), limit);
    }
    std::vector<Names> names;
    names.reserve(answers.size());
    for (std::future<Names>& answer : answers)
        names.push_back(answer.get());
    return names;
}

} // namespace quillo
