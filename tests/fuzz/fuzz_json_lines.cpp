/// Whatever comes in, each line that is not blank gets one answer to each kind of question, and each answer
/// is a line of JSON text.
#include "base/Log.h"
#include "base/ManualExecutor.h"
#include "cli/JsonLines.h"
#include "entry/Place.h"

#include <rapidjson/reader.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

bool isJson(const std::string& text) {
    rapidjson::Reader reader;
    rapidjson::StringStream stream(text.c_str());
    rapidjson::BaseReaderHandler<> nobody;
    return !reader
                .Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(stream, nobody)
                .IsError();
}

std::size_t linesThatAreNotBlank(const std::string& input) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < input.size();) {
        const std::size_t end = std::min(input.find('\n', at), input.size());
        count += input.substr(at, end - at).find_first_not_of(" \t\r") != std::string::npos;
        at = end + 1;
    }
    return count;
}

void ask(const quillo::cli::JsonQuestion& question, const std::string& input) {
    static quillo::Places places;
    static const auto place = places.at("UTC", "en_US");
    std::FILE* in = fmemopen(const_cast<char*>(input.data()), input.size(), "r");
    char* answers = nullptr;
    std::size_t length = 0;
    std::FILE* out = open_memstream(&answers, &length);
    (void)quillo::cli::answerJsonLines(
        in, out, {[] { return quillo::Instant::fromUnixSeconds(1741496400.5); }, *place}, places, question);
    std::fclose(in);
    std::fclose(out);

    std::size_t given = 0;
    const std::string all(answers, length);
    std::free(answers);
    for (std::size_t at = 0; at < all.size(); ++given) {
        const std::size_t end = all.find('\n', at);
        if (end == std::string::npos || !all.substr(at).starts_with("{\"id\":") ||
            !isJson(all.substr(at, end - at)))
            std::abort();
        at = end + 1;
    }
    if (given != linesThatAreNotBlank(input))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    quillo::setLogSink([](std::string_view) {});
    const std::string input(reinterpret_cast<const char*>(data), size);
    static quillo::ManualExecutor mainExecutor;
    static const quillo::cli::BlockingParser parser(mainExecutor);
    ask(quillo::cli::textQuestion(parser), input);
    ask(quillo::cli::classificationQuestion(), input);
    return 0;
}
