#include "cli/LineReader.h"

namespace quillo::cli {

bool LineReader::next(std::string& line) {
    line.clear();
    tooLong_ = false;
    int byte = std::getc(input_);
    if (byte == EOF)
        return false;
    ++number_;
    for (; byte != EOF && byte != '\n'; byte = getc_unlocked(input_)) {
        if (line.size() < longest)
            line.push_back(static_cast<char>(byte));
        else
            tooLong_ = true;
    }
    return true;
}

} // namespace quillo::cli
