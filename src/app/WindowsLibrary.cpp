#include "app/WindowsLibrary.h"

#include "base/Log.h"
#include "base/ProgramFiles.h"

#include <QLibrary>
#include <QString>
#include <utility>

namespace quillo {

WindowsLibrary::WindowsLibrary(Dependencies dependencies) : dependencies_(std::move(dependencies)) {}

WindowsLibrary::~WindowsLibrary() = default;

Windows* WindowsLibrary::windows() {
    if (windows_)
        return windows_.get();
    QString problem;
    for (const std::filesystem::path& file : placesOf("quillo-windows.so")) {
        // It stays loaded until the end.
        QLibrary library(QString::fromStdString(file.string()));
        if (const auto make = reinterpret_cast<MakeWindows>(library.resolve(windowsMaker))) {
            windows_.reset(make(dependencies_()));
            return windows_.get();
        }
        problem = library.errorString();
    }
    log("there are no windows: " + problem.toStdString());
    return nullptr;
}

} // namespace quillo
