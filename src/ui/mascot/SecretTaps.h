/// TapCounter for QML.
#pragma once

#include "ui/mascot/TapCounter.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>

namespace quillo {

/// Counts taps as they come. Lives on the main thread.
class SecretTaps : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    /// A tap now. True if it is the one that gives the secret away.
    Q_INVOKABLE bool tap() { return counter_.tap(std::chrono::steady_clock::now()); }

private:
    TapCounter counter_;
};

} // namespace quillo
