#include "linux/loginitem/AutostartEntry.h"

#include "base/Product.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QString>
#include <string>
#include <system_error>

namespace quillo {

namespace {

constexpr const char* entry = "[Desktop Entry]\n"
                              "Type=Application\n"
                              "Name=Quillo\n"
                              "Icon=org.quillo.Quillo\n"
                              "Exec=quillo-desktop\n"
                              "Terminal=false\n"
                              "X-GNOME-Autostart-enabled=true\n";

/// An entry that is worth reading is not longer.
constexpr qint64 longestEntry = 65536;

QString text(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

} // namespace

AutostartEntry::AutostartEntry(const std::filesystem::path& folder)
    : file_(folder / (std::string(product::desktopFile) + ".desktop")) {}

std::filesystem::path AutostartEntry::folderOfTheUser() {
    const QString configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::filesystem::path(QFile::encodeName(configuration).toStdString()) / "autostart";
}

bool AutostartEntry::isOn() const {
    QFile file(text(file_));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bool inEntry = false;
    for (QByteArray line : file.read(longestEntry).split('\n')) {
        line = line.trimmed();
        if (line.startsWith('['))
            inEntry = line == "[Desktop Entry]";
        const qsizetype equals = line.indexOf('=');
        if (!inEntry || equals < 0)
            continue;
        const QByteArray key = line.left(equals).trimmed();
        const QByteArray value = line.mid(equals + 1).trimmed();
        if ((key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false"))
            return false;
    }
    return true;
}

Outcome AutostartEntry::turnOn() const {
    std::error_code failure;
    std::filesystem::create_directories(file_.parent_path(), failure);
    if (failure)
        return Error{"the autostart folder cannot be made: " + failure.message()};
    QSaveFile file(text(file_));
    file.setDirectWriteFallback(false);
    if (!file.open(QIODevice::WriteOnly) || file.write(entry) < 0 || !file.commit())
        return Error{"the autostart file cannot be written: " + file.errorString().toStdString()};
    return success();
}

Outcome AutostartEntry::turnOff() const {
    std::error_code failure;
    std::filesystem::remove(file_, failure);
    // Where the folder is none, the file is not there either.
    if (failure && failure != std::errc::not_a_directory)
        return Error{"the autostart file cannot be removed: " + failure.message()};
    return success();
}

} // namespace quillo
