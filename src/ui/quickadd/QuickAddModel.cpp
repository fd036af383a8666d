#include "ui/quickadd/QuickAddModel.h"

#include <utility>

namespace quillo {

QuickAddModel::QuickAddModel(Submission submission) : submission_(std::move(submission)) {}

void QuickAddModel::setText(const QString& text) {
    if (!locked_)
        replaceText(text);
}

void QuickAddModel::begin() {
    setLocked(false);
    replaceText({});
    Q_EMIT begun();
}

void QuickAddModel::submit() {
    if (locked_)
        return;
    const QString submitted = text_.trimmed();
    if (!submitted.isEmpty()) {
        replaceText({});
        setLocked(true);
        submission_(submitted.toStdString());
    }
    Q_EMIT finished();
}

void QuickAddModel::cancel() {
    Q_EMIT finished();
}

void QuickAddModel::move() {
    Q_EMIT moveRequested();
}

void QuickAddModel::replaceText(const QString& text) {
    if (text_ == text)
        return;
    text_ = text;
    Q_EMIT textChanged();
}

void QuickAddModel::setLocked(bool locked) {
    if (locked_ == locked)
        return;
    locked_ = locked;
    Q_EMIT lockedChanged();
}

} // namespace quillo
