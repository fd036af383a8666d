#include "linux/MainThreadExecutor.h"

#include <QCoreApplication>
#include <utility>

namespace quillo {

void MainThreadExecutor::post(Work task) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(task), Qt::QueuedConnection);
}

} // namespace quillo
