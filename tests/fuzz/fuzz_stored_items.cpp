// Any bytes as a stored list: reading them never crashes; what is read was well-formed JSON to its last byte,
// and comes back equal when it is written and read again. What a survey finds in it is what reading finds.
#include "model/StoredItemsSurvey.h"
#include "model/TodoItemJson.h"

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// A second opinion, from a parser that looks at everything by its nature.
bool isWellFormed(std::string_view bytes) {
    rapidjson::MemoryStream stream(bytes.data(), bytes.size());
    rapidjson::BaseReaderHandler<> nobody;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    const rapidjson::ParseErrorCode error = rapidjson::Reader().Parse<flags>(stream, nobody).Code();
    // It holds 0e999 to be too big; there it has no opinion on the rest.
    return error == rapidjson::kParseErrorNone || error == rapidjson::kParseErrorNumberTooBig;
}

bool surveyAgrees(std::string_view bytes, const std::vector<quillo::TodoItem>& items) {
    const auto stretches = quillo::surveyStoredItems(bytes, 2);
    if (!stretches)
        return true;
    std::vector<quillo::TodoItem> found;
    for (const quillo::StoredStretch& stretch : *stretches) {
        const auto part = quillo::decodeStoredItems("[" + std::string(stretch.bytes) + "]");
        if (!part || part->size() != stretch.ids.size())
            return false;
        for (std::size_t i = 0; i < part->size(); ++i) {
            if ((*part)[i].id != stretch.ids[i])
                return false;
            found.push_back((*part)[i]);
        }
    }
    return found == items;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto items = quillo::decodeStoredItems(bytes);
    if (!items) {
        if (quillo::surveyStoredItems(bytes, 2))
            std::abort();
        return 0;
    }
    if (!surveyAgrees(bytes, *items))
        std::abort();
    if (!isWellFormed(bytes))
        std::abort();
    const auto again = quillo::encodeStoredItems(*items);
    if (!again || quillo::decodeStoredItems(*again) != items)
        std::abort();
    return 0;
}
