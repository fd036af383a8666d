/// What the feedback sheet leads to.
#pragma once

#include "ports/UrlOpener.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <optional>
#include <string>

namespace quillo {

/// Where feedback goes, and what is said of the program there.
struct FeedbackAddresses {
    std::string mailbox;                ///< the makers' mail address; empty: there is none
    std::string page;                   ///< https, percent-encoded; empty: there is none
    std::optional<std::string> version; ///< for people, such as "1.2"
    std::optional<std::string> build;   ///< such as "34"
};

/// The addresses are what the product was made with (base/Product.h).
FeedbackAddresses productFeedbackAddresses();

/// Belongs to the main thread.
class Feedback : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the shell.")

public:
    /// `opener` outlives this.
    Feedback(UrlOpener& opener, FeedbackAddresses addresses);

    /// Begins a letter to the makers in the user's mail program, which names version and build.
    Q_INVOKABLE void writeMail();

    /// Opens the page for reviews.
    Q_INVOKABLE void writeReview();

private:
    UrlOpener& opener_;
    const FeedbackAddresses addresses_;
};

} // namespace quillo
