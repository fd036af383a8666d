/// Panels that ask for a folder, answered by the test.
#pragma once

#include "ports/FolderPanel.h"

#include <utility>
#include <vector>

namespace quillo::support {

class RecordingFolderPanel : public FolderPanel {
public:
    struct Asked {
        FolderQuestion question;
        Answer answer;
    };

    void ask(const FolderQuestion& question, Answer answer) override {
        asked.push_back({question, std::move(answer)});
    }

    std::vector<Asked> asked;
};

} // namespace quillo::support
