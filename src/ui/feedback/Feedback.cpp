#include "ui/feedback/Feedback.h"

#include "base/Product.h"

#include <QCoreApplication>
#include <QUrl>
#include <string_view>
#include <utility>

namespace quillo {

namespace {

std::optional<std::string> owned(std::optional<std::string_view> given) {
    return given ? std::optional<std::string>(*given) : std::nullopt;
}

std::string encoded(const QString& text) {
    return QUrl::toPercentEncoding(text).toStdString();
}

QString orUnknown(const std::optional<std::string>& text) {
    return text ? QString::fromStdString(*text) : QStringLiteral("?");
}

} // namespace

FeedbackAddresses productFeedbackAddresses() {
    return {.mailbox = product::supportAddress,
            .page = product::feedbackPage,
            .version = owned(product::present(product::version)),
            .build = owned(product::present(product::build))};
}

Feedback::Feedback(UrlOpener& opener, FeedbackAddresses addresses)
    : opener_(opener), addresses_(std::move(addresses)) {}

void Feedback::writeMail() {
    if (addresses_.mailbox.empty())
        return;
    const QString product = QCoreApplication::translate("Quillo", "Quillo %1 (%2) on macOS")
                                .arg(orUnknown(addresses_.version), orUnknown(addresses_.build));
    const QString subject = QCoreApplication::translate("Quillo", "Quillo feedback");
    const std::string mailbox =
        QUrl::toPercentEncoding(QString::fromStdString(addresses_.mailbox), "@").toStdString();
    opener_.open("mailto:" + mailbox + "?subject=" + encoded(subject) +
                 "&body=" + encoded(QStringLiteral("\n\n---\n") + product));
}

void Feedback::writeReview() {
    if (!addresses_.page.empty())
        opener_.open(addresses_.page);
}

} // namespace quillo
