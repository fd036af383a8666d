/// Any bytes are either the weights of a network or refused; any text gets an answer.
#include "classifier/EmbeddedClassifier.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    using namespace quillo;
    (void)classifier::Weights::read({data, size});

    static EmbeddedClassifier model;
    static const PropertyGuide title{.name = "title", .description = {}};
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    ModelReference reference;
    bool answered = false;
    model.startSession("", reference)->respond(text, {&title, 1}, [&](const Result<GeneratedContent>&) {
        answered = true;
    });
    if (!answered)
        std::abort();
    return 0;
}
