#include "ui/feedback/Feedback.h"

#include "support/RecordingUrlOpener.h"

#include <gmock/gmock.h>

#include <QUrl>
#include <QUrlQuery>

namespace quillo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct FeedbackTest : testing::Test {
    support::RecordingUrlOpener opener;

    /// What the letter says that was begun last.
    QString body() const {
        const QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(opener.opened.back()), QUrl::StrictMode);
        return QUrlQuery(url).queryItemValue(QStringLiteral("body"), QUrl::FullyDecoded);
    }
};

TEST_F(FeedbackTest, BeginsALetterThatNamesTheProgram) {
    Feedback(opener, {"makers@example.org", "", "1.2", "34"}).writeMail();
    EXPECT_THAT(opener.opened, ElementsAre("mailto:makers@example.org?subject=Quillo%20feedback"
                                           "&body=%0A%0A---%0AQuillo%201.2%20%2834%29%20on%20macOS"));
    EXPECT_EQ(body(), QStringLiteral("\n\n---\nQuillo 1.2 (34) on macOS"));
}

TEST_F(FeedbackTest, SaysWhatItDoesNotKnow) {
    Feedback(opener, {"makers@example.org", "", std::nullopt, std::nullopt}).writeMail();
    EXPECT_EQ(body(), QStringLiteral("\n\n---\nQuillo ? (?) on macOS"));
}

TEST_F(FeedbackTest, NothingInTheLetterCanBeTakenForAnotherPartOfTheAddress) {
    Feedback(opener, {"a?b&c@example.org", "", "1&cc=x@y.z#", "+%0A"}).writeMail();
    EXPECT_EQ(body(), QStringLiteral("\n\n---\nQuillo 1&cc=x@y.z# (+%0A) on macOS"));
    const QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(opener.opened.back()), QUrl::StrictMode);
    EXPECT_EQ(url.path(QUrl::FullyDecoded), QStringLiteral("a?b&c@example.org"));
    EXPECT_EQ(QUrlQuery(url).queryItems().size(), 2);
}

TEST_F(FeedbackTest, OpensThePageForReviews) {
    Feedback(opener, {"", "https://example.org/review?of=quillo", "1.2", "34"}).writeReview();
    EXPECT_THAT(opener.opened, ElementsAre("https://example.org/review?of=quillo"));
}

TEST_F(FeedbackTest, WithoutAddressesOpensNothing) {
    Feedback feedback(opener, {});
    feedback.writeMail();
    feedback.writeReview();
    EXPECT_THAT(opener.opened, IsEmpty());
}

} // namespace
} // namespace quillo
