#include "webdav/Listing.h"

#include <expat.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace quillo {

const std::string_view listingQuestion =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    "\n"
    R"(<D:propfind xmlns:D="DAV:"><D:prop><D:getetag/><D:getcontentlength/><D:getlastmodified/>)"
    R"(<D:resourcetype/></D:prop></D:propfind>)"
    "\n";

namespace {

/// Between an element's namespace and its name, as expat tells them.
constexpr char separator = ' ';

constexpr int deepest = 32;
constexpr std::size_t longestText = 4096;

/// "https://host/a/b%20c" or "/a/b%20c": "b c". Empty for "/a/", and for what is not encoded soundly.
std::string lastName(std::string_view href) {
    const std::string_view encoded = href.substr(href.rfind('/') + 1);
    std::string name;
    for (std::size_t at = 0; at < encoded.size(); ++at) {
        if (encoded[at] != '%') {
            name += encoded[at];
            continue;
        }
        std::uint8_t byte = 0;
        const std::string_view digits = encoded.substr(at + 1, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (error != std::errc() || end != digits.data() + 2)
            return "";
        name += static_cast<char>(byte);
        at += 2;
    }
    return name;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

/// "HTTP/1.1 200 OK"
bool isGood(std::string_view status) {
    const std::size_t blank = std::min(status.find(' '), status.size());
    return status.substr(blank).starts_with(" 200");
}

class Reader {
public:
    Reader() : parser_(XML_ParserCreateNS(nullptr, separator)) {
        if (!parser_)
            throw std::bad_alloc();
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(
            parser_.get(), [](void* self, const XML_Char* name, const XML_Char**) { of(self).begin(name); },
            [](void* self, const XML_Char* name) { of(self).end(name); });
        XML_SetCharacterDataHandler(parser_.get(), [](void* self, const XML_Char* text, int length) {
            of(self).take({text, static_cast<std::size_t>(length)});
        });
        XML_SetStartDoctypeDeclHandler(parser_.get(),
                                       [](void* self, const XML_Char*, const XML_Char*, const XML_Char*,
                                          int) { of(self).stop("it has a document type"); });
    }

    Result<std::vector<ListedFile>> read(std::string_view xml) {
        const XML_Status status =
            XML_Parse(parser_.get(), xml.data(), static_cast<int>(xml.size()), XML_TRUE);
        if (problem_)
            return *problem_;
        if (status != XML_STATUS_OK)
            return Error{XML_ErrorString(XML_GetErrorCode(parser_.get()))};
        if (!isListing_)
            return Error{"it is another document"};
        return std::move(files_);
    }

private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    static Reader& of(void* self) { return *static_cast<Reader*>(self); }

    void stop(const char* problem) {
        if (!problem_)
            problem_ = Error{problem};
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    void begin(std::string_view name) {
        text_.clear();
        if (++depth_ > deepest)
            stop("it is nested too deeply");
        if (depth_ == 1)
            isListing_ = name == "DAV: multistatus";
        else if (name == "DAV: response")
            response_ = {};
        else if (name == "DAV: propstat")
            found_ = {};
        else if (name == "DAV: collection")
            found_.isFolder = true;
    }

    void end(std::string_view name) {
        --depth_;
        const std::string_view text = trimmed(text_);
        if (name == "DAV: href" && depth_ == 2) // Others are in properties.
            response_.file.name = lastName(text);
        else if (name == "DAV: getetag")
            found_.file.etag = text;
        else if (name == "DAV: getcontentlength")
            found_.file.length = text;
        else if (name == "DAV: getlastmodified")
            found_.file.modified = text;
        else if (name == "DAV: status")
            status_ = text;
        else if (name == "DAV: propstat")
            endProperties();
        else if (name == "DAV: response" && !response_.isFolder && !response_.file.name.empty())
            files_.push_back(std::move(response_.file));
        text_.clear();
    }

    /// Those that the server does not have are told apart, with another status.
    void endProperties() {
        if (!isGood(status_))
            return;
        response_.isFolder |= found_.isFolder;
        response_.file.etag = std::move(found_.file.etag);
        response_.file.length = std::move(found_.file.length);
        response_.file.modified = std::move(found_.file.modified);
    }

    void take(std::string_view text) {
        if (text_.size() + text.size() > longestText)
            stop("a text in it is too long");
        else
            text_ += text;
    }

    struct Response {
        ListedFile file;
        bool isFolder = false;
    };

    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser_;
    std::optional<Error> problem_;
    std::vector<ListedFile> files_;
    bool isListing_ = false;
    int depth_ = 0;
    std::string text_; ///< of the innermost element
    Response response_;
    Response found_; ///< what the properties at hand say
    std::string status_;
};

} // namespace

Result<std::vector<ListedFile>> readListing(std::string_view xml) {
    if (xml.size() > largestListing)
        return Error{"it is too large"};
    return Reader().read(xml);
}

} // namespace quillo
