/// In-memory twin of the updater port.
#pragma once

#include "ports/Updater.h"

#include <utility>
#include <vector>

namespace quillo::support {

/// Answers when the test says so, and keeps what it was asked.
class ScriptedUpdater : public Updater {
public:
    void check(CheckAnswer answer) override {
        cancel();
        ++checks;
        checked_ = std::move(answer);
    }
    void download(DownloadProgress progress, DownloadAnswer answer) override {
        cancel();
        ++downloads;
        progress_ = std::move(progress);
        downloaded_ = std::move(answer);
    }
    void cancel() override {
        checked_ = nullptr;
        progress_ = nullptr;
        downloaded_ = nullptr;
    }
    void reveal(const std::filesystem::path& file) override { revealed.push_back(file); }

    bool isChecking() const { return checked_ != nullptr; }
    bool isDownloading() const { return downloaded_ != nullptr; }

    void answerCheck(const CheckResult& result) { std::exchange(checked_, nullptr)(result); }
    void tellProgress(std::uint64_t received) { progress_(received); }
    void answerDownload(const DownloadResult& result) {
        progress_ = nullptr;
        std::exchange(downloaded_, nullptr)(result);
    }

    int checks = 0;
    int downloads = 0;
    std::vector<std::filesystem::path> revealed;

private:
    CheckAnswer checked_;
    DownloadProgress progress_;
    DownloadAnswer downloaded_;
};

} // namespace quillo::support
