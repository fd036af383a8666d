#include "modelservers/ModelNames.h"

#include <simdjson.h>

namespace quillo {

HttpRequest modelNamesRequest(const std::string& address) {
    return {address + "/v1/models"};
}

Result<std::vector<std::string>> readModelNames(std::string_view answer) {
    simdjson::dom::parser parser;
    simdjson::dom::array models;
    if (parser.parse(answer.data(), answer.size())["data"].get_array().get(models) != simdjson::SUCCESS)
        return Error{"its list of models cannot be read"};
    std::vector<std::string> names;
    for (const simdjson::dom::element model : models) {
        std::string_view name;
        if (model["id"].get_string().get(name) == simdjson::SUCCESS && !name.empty())
            names.emplace_back(name);
    }
    if (names.empty())
        return Error{"it has no model"};
    return names;
}

bool isOfLlamaServer(std::string_view answer) {
    simdjson::dom::parser parser;
    std::string_view owner;
    return parser.parse(answer.data(), answer.size())["data"].at(0)["owned_by"].get_string().get(owner) ==
               simdjson::SUCCESS &&
           owner == "llamacpp";
}

} // namespace quillo
