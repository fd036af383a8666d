/// Bytes that may be many.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillo {

/// Immutable and shared, never copied. The bytes may lie in pieces, wherever they were made: a list of
/// megabytes can so be written without being put together first. Thread-safe.
class Data {
public:
    using Pieces = std::vector<std::string_view>;

    Data() : Data(std::string()) {}
    explicit Data(std::string bytes) : content_(std::make_shared<const Content>(std::move(bytes))) {}

    /// The pieces in a row. They must stay as they are for as long as `owner` lives, which this keeps alive.
    Data(std::shared_ptr<const void> owner, Pieces pieces)
        : content_(std::make_shared<const Content>(std::move(owner), std::move(pieces))) {}

    std::size_t size() const { return content_->size; }

    const Pieces& pieces() const { return content_->pieces; }

    /// All bytes in one place, which is made for those that lie in several when first asked for. The view is
    /// good for as long as this, or a copy, lives.
    std::string_view bytes() const {
        if (pieces().size() == 1)
            return pieces().front();
        std::call_once(content_->wholeOnce, [this] {
            content_->whole.reserve(size());
            for (const std::string_view piece : pieces())
                content_->whole += piece;
        });
        return content_->whole;
    }

    friend bool operator==(const Data& left, const Data& right) {
        return left.size() == right.size() && left.bytes() == right.bytes();
    }

private:
    struct Content {
        explicit Content(std::string bytes) : whole(std::move(bytes)), pieces{whole}, size(whole.size()) {}
        Content(std::shared_ptr<const void> pieceOwner, Pieces givenPieces)
            : owner(std::move(pieceOwner)), pieces(std::move(givenPieces)) {
            for (const std::string_view piece : pieces)
                size += piece.size();
        }

        mutable std::once_flag wholeOnce;
        mutable std::string whole; ///< Where one text or several pieces are put together.
        std::shared_ptr<const void> owner;
        Pieces pieces;
        std::size_t size = 0;
    };

    std::shared_ptr<const Content> content_;
};

} // namespace quillo
