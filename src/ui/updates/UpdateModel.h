/// What the update window shows and does.
#pragma once

#include "ports/Updater.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <cstdint>
#include <filesystem>
#include <string>

namespace quillo {

/// From a check to an archive in the download folder, one step at a time. Belongs to the main thread.
class UpdateModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The shell hands it over.")

    Q_PROPERTY(Stage stage READ stage NOTIFY stageChanged)
    Q_PROPERTY(QString heading READ heading NOTIFY stageChanged)
    Q_PROPERTY(QString message READ message NOTIFY stageChanged)
    Q_PROPERTY(QString notes READ notes NOTIFY stageChanged)
    Q_PROPERTY(QString packageCommand READ packageCommand NOTIFY stageChanged)
    Q_PROPERTY(bool downloadable READ downloadable NOTIFY stageChanged)
    Q_PROPERTY(bool retriable READ retriable NOTIFY stageChanged)
    Q_PROPERTY(qreal progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)

public:
    enum Stage { Idle, Checking, UpToDate, Available, Downloading, Downloaded, Failed };
    Q_ENUM(Stage)

    /// The updater outlives the model. `version` is that of this program, for people.
    UpdateModel(Updater& updater, const std::string& version);
    ~UpdateModel() override;

    Stage stage() const { return stage_; }

    /// What is the matter, in a line and in a few sentences. Empty while idle.
    QString heading() const;
    QString message() const;

    /// What is new in the release, as plain text; may be empty. Only while one is available.
    QString notes() const;

    /// What brings the release where a package manager does; empty where nothing is known or it is ours.
    QString packageCommand() const;

    /// Whether the release that is available is ours to download.
    bool downloadable() const;

    /// Whether the same may succeed at another time.
    bool retriable() const;

    /// From 0 to 1, and the same in words. While downloading.
    qreal progress() const;
    QString progressText() const;

    /// Asks for newer releases, because the user wants to know. What is under way goes on instead.
    Q_INVOKABLE void check();

    /// Shows a release that was found without being asked for.
    void offer(const UpdateOffer& offer);

    /// Fetches the release that is available.
    Q_INVOKABLE void download();

    /// The release that is available is not to be offered unasked again.
    Q_INVOKABLE void skip();

    /// Does again what failed.
    Q_INVOKABLE void retry();

    /// Shows the archive in the desktop's file manager.
    Q_INVOKABLE void reveal();

    /// The user has seen enough; what is under way is given up.
    Q_INVOKABLE void dismiss();

    /// Puts a text where others take it from.
    Q_INVOKABLE void copy(const QString& text);

Q_SIGNALS:
    void stageChanged();
    void progressChanged();

    /// A release is to be skipped: its build.
    void skipped(const std::string& build);

    /// There is nothing left to be seen.
    void finished();

private:
    void enter(Stage stage);
    void fail(UpdateFailure failure);
    void startDownload();

    Updater& updater_;
    const QString version_;
    Stage stage_ = Idle;
    Stage failedStage_ = Idle; ///< what was tried when it failed
    UpdateFailure failure_ = UpdateFailure::unreachable;
    UpdateOffer offer_;
    std::uint64_t received_ = 0;
    std::filesystem::path archive_;
};

} // namespace quillo
