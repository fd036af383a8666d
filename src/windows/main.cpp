/// What the library offers to the program that loads it.
#include "windows/ProgramWindows.h"

#include <QtQml/QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(QuilloPlugin)

extern "C" Q_DECL_EXPORT quillo::Windows* quilloMakeWindows(const quillo::WindowsDependencies& dependencies) {
    static_assert(std::is_same_v<decltype(&quilloMakeWindows), quillo::MakeWindows>);
    return new quillo::ProgramWindows(dependencies);
}
