#include "linux/loginitem/LoginItemOfThisSession.h"

#include "linux/loginitem/AutostartLoginItem.h"
#include "linux/loginitem/PortalLoginItem.h"

#include <QFile>

namespace quillo {

std::unique_ptr<LoginItem> loginItemOfThisSession(Executor& mainExecutor, const QString& reason) {
    if (QFile::exists(QStringLiteral("/.flatpak-info")))
        return std::make_unique<PortalLoginItem>(reason);
    return std::make_unique<AutostartLoginItem>(AutostartEntry::folderOfTheUser(), mainExecutor);
}

} // namespace quillo
