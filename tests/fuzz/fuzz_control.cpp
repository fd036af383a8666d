// Any bytes as what comes over the control socket: reading a request or an answer never crashes, and what was
// read comes back equal when it is written and read again.
#include "control/Answer.h"
#include "control/Request.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillo::control;
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    if (const auto request = decodeRequest(line)) {
        const auto again = decodeRequest(encode(*request));
        if (!again || *again != *request)
            std::abort();
    }
    if (const auto answer = decodeAnswer(line)) {
        const auto again = decodeAnswer(encode(answer));
        if (!again || *again != *answer)
            std::abort();
    }
    return 0;
}
