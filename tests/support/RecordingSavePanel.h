/// In-memory twin of the port that asks where to save: the test answers.
#pragma once

#include "ports/SavePanel.h"

#include <utility>
#include <vector>

namespace quillo::support {

class RecordingSavePanel : public SavePanel {
public:
    void ask(const SaveQuestion& question, Answer answer) override {
        asked.emplace_back(question, std::move(answer));
    }

    std::vector<std::pair<SaveQuestion, Answer>> asked; ///< the latest last
};

} // namespace quillo::support
