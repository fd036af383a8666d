#include "ui/updates/UpdateModel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLocale>
#include <QTextDocumentFragment>
#include <algorithm>
#include <variant>

namespace quillo {

namespace {

// Nobody reads more in a small window, and laying it out takes time.
constexpr qsizetype longestNotes = 20000;

QString sizeText(std::uint64_t bytes) {
    return QLocale().formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeSIFormat);
}

/// Plain, as what is written by others may otherwise make the window load pictures or look like something
/// else.
QString plainNotes(const std::string& notes) {
    QString text = QString::fromStdString(notes).left(longestNotes);
    if (!Qt::mightBeRichText(text))
        return text.trimmed();
    text.replace(QStringLiteral("<li>"), QStringLiteral("<li>• "));
    return QTextDocumentFragment::fromHtml(text).toPlainText().trimmed();
}

} // namespace

UpdateModel::UpdateModel(Updater& updater, const std::string& version)
    : updater_(updater), version_(QString::fromStdString(version)) {}

UpdateModel::~UpdateModel() {
    updater_.cancel();
}

QString UpdateModel::heading() const {
    switch (stage_) {
    case Idle:
        break;
    case Checking:
        return tr("Checking for updates…");
    case UpToDate:
        return tr("Quillo is up to date");
    case Available:
        return tr("A new version of Quillo is available");
    case Downloading:
        return tr("Downloading Quillo %1…").arg(QString::fromStdString(offer_.version));
    case Downloaded:
        return tr("Quillo %1 was downloaded").arg(QString::fromStdString(offer_.version));
    case Failed:
        if (failure_ == UpdateFailure::noFeed)
            return tr("This Quillo does not look for updates");
        return failedStage_ == Downloading ? tr("The update could not be downloaded")
                                           : tr("Quillo could not check for updates");
    }
    return {};
}

QString UpdateModel::message() const {
    const QString offered = QString::fromStdString(offer_.version);
    switch (stage_) {
    case Idle:
    case Checking:
    case Downloading:
        break;
    case UpToDate:
        return tr("Version %1 is the newest there is.").arg(version_);
    case Available:
        if (downloadable())
            return tr("Version %1 is there; you have %2. Would you like to download it?")
                .arg(offered, version_);
        if (offer_.packageCommand->empty())
            return tr("Version %1 is there; you have %2. Your system's package manager installed Quillo, and "
                      "brings the new version.")
                .arg(offered, version_);
        return tr("Version %1 is there; you have %2. A package manager installed Quillo, and brings the new "
                  "version with this command:")
            .arg(offered, version_);
    case Downloaded:
        return tr("“%1” is in your download folder, and is what the makers of Quillo signed. Quit Quillo "
                  "before "
                  "you install it.")
            .arg(QString::fromStdString(archive_.filename().string()));
    case Failed:
        switch (failure_) {
        case UpdateFailure::noFeed:
            return tr(
                "It was built without the address of new versions. They come from where you got Quillo.");
        case UpdateFailure::unreachable:
            return tr(
                "The server could not be reached, or the connection was lost. Check your connection to the "
                "internet, or try again later.");
        case UpdateFailure::tooSlow:
            return tr("The server takes too long to answer. Try again later.");
        case UpdateFailure::insecure:
            return tr(
                "The server leads to a connection that is not protected. Nothing was loaded from there.");
        case UpdateFailure::feedTooLarge:
            return tr("The server's list of versions is far too long. It was not used.");
        case UpdateFailure::feedForged:
            return tr(
                "The server's list of versions was not signed by the makers of Quillo. It was not used.");
        case UpdateFailure::feedUnreadable:
            return tr("The server's list of versions cannot be understood.");
        case UpdateFailure::feedOutdated:
            return tr(
                "The server's list of versions is older than one that was seen before. It was not used.");
        case UpdateFailure::systemTooOld:
            return tr("There is a new version, but it needs a newer system than this one.");
        case UpdateFailure::archiveWrongSize:
            return tr("The download does not have the size that it should have. It was not kept.");
        case UpdateFailure::archiveForged:
            return tr("The download was not signed by the makers of Quillo. It was not kept.");
        case UpdateFailure::archiveNotWritable:
            return tr("The download could not be saved. Is your download folder full, or closed to you?");
        }
    }
    return {};
}

QString UpdateModel::notes() const {
    return stage_ == Available ? plainNotes(offer_.notes) : QString();
}

QString UpdateModel::packageCommand() const {
    return stage_ == Available ? QString::fromStdString(offer_.packageCommand.value_or("")) : QString();
}

bool UpdateModel::downloadable() const {
    return stage_ == Available && !offer_.packageCommand;
}

bool UpdateModel::retriable() const {
    return stage_ == Failed && failure_ != UpdateFailure::noFeed && failure_ != UpdateFailure::systemTooOld;
}

qreal UpdateModel::progress() const {
    if (stage_ != Downloading || offer_.length == 0)
        return 0;
    return std::min(1.0, static_cast<qreal>(received_) / static_cast<qreal>(offer_.length));
}

QString UpdateModel::progressText() const {
    if (stage_ != Downloading)
        return {};
    return tr("%1 of %2").arg(sizeText(received_), sizeText(offer_.length));
}

void UpdateModel::check() {
    if (stage_ == Checking || stage_ == Available || stage_ == Downloading)
        return;
    enter(Checking);
    updater_.check([this](const Updater::CheckResult& result) {
        if (const auto* found = std::get_if<UpdateOffer>(&result))
            offer(*found);
        else if (const auto* failure = std::get_if<UpdateFailure>(&result))
            fail(*failure);
        else
            enter(UpToDate);
    });
}

void UpdateModel::offer(const UpdateOffer& offer) {
    offer_ = offer;
    enter(Available);
}

void UpdateModel::download() {
    if (downloadable())
        startDownload();
}

void UpdateModel::skip() {
    if (stage_ != Available)
        return;
    Q_EMIT skipped(offer_.build);
    dismiss();
}

void UpdateModel::retry() {
    if (!retriable())
        return;
    if (failedStage_ == Downloading)
        startDownload();
    else
        check();
}

void UpdateModel::reveal() {
    if (stage_ == Downloaded)
        updater_.reveal(archive_);
}

void UpdateModel::dismiss() {
    if (stage_ == Idle)
        return;
    updater_.cancel();
    Q_EMIT finished();
    enter(Idle);
}

void UpdateModel::copy(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

void UpdateModel::enter(Stage stage) {
    stage_ = stage;
    Q_EMIT stageChanged();
}

void UpdateModel::fail(UpdateFailure failure) {
    failure_ = failure;
    failedStage_ = stage_;
    enter(Failed);
}

void UpdateModel::startDownload() {
    received_ = 0;
    enter(Downloading);
    Q_EMIT progressChanged();
    updater_.download(
        [this](std::uint64_t received) {
            received_ = received;
            Q_EMIT progressChanged();
        },
        [this](const Updater::DownloadResult& result) {
            if (const auto* failure = std::get_if<UpdateFailure>(&result)) {
                fail(*failure);
                return;
            }
            archive_ = std::get<std::filesystem::path>(result);
            enter(Downloaded);
            reveal();
        });
}

} // namespace quillo
