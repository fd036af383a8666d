/// SQLite's statements with an owner.
#pragma once

#include "ports/KeyValueStore.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillo {

/// A prepared statement. The first code that is not a success stays, so that only the last step need be
/// looked at. Texts and bytes are not copied: what is bound must outlive the statement, what is read lasts
/// until the next step.
class Statement {
public:
    Statement(sqlite3* database, const char* sql)
        : code_(sqlite3_prepare_v2(database, sql, -1, &statement_, nullptr)) {}
    ~Statement() { sqlite3_finalize(statement_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(int place, std::string_view text) {
        note([&] {
            return sqlite3_bind_text64(statement_, place, text.data(), text.size(), SQLITE_STATIC,
                                       SQLITE_UTF8);
        });
    }
    void bind(int place, const std::string& text) { bind(place, std::string_view(text)); }
    void bind(int place, const Data& data) {
        note([&] {
            const std::string_view bytes = data.bytes();
            return sqlite3_bind_blob64(statement_, place, bytes.data() ? bytes.data() : "", bytes.size(),
                                       SQLITE_STATIC);
        });
    }
    /// Data of as many zeros.
    void bindZeros(int place, std::size_t size) {
        note([&] { return sqlite3_bind_zeroblob64(statement_, place, size); });
    }
    void bind(int place, std::int64_t number) {
        note([&] { return sqlite3_bind_int64(statement_, place, number); });
    }
    void bind(int place, bool flag) { bind(place, std::int64_t{flag}); }
    void bind(int place, double number) {
        note([&] { return sqlite3_bind_double(statement_, place, number); });
    }

    /// What the last call came to.
    int code() const { return code_; }

    /// SQLITE_ROW, SQLITE_DONE, or what went wrong.
    int step() {
        if (code_ == SQLITE_OK || code_ == SQLITE_ROW)
            code_ = sqlite3_step(statement_);
        return code_;
    }

    int type(int column) const { return sqlite3_column_type(statement_, column); }
    std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
    double real(int column) const { return sqlite3_column_double(statement_, column); }
    std::string_view text(int column) const { return bytes(column, sqlite3_column_text(statement_, column)); }
    std::string_view blob(int column) const { return bytes(column, sqlite3_column_blob(statement_, column)); }

private:
    template <class Bind>
    void note(Bind bind) {
        if (code_ == SQLITE_OK)
            code_ = bind();
    }

    /// The length must be asked for after the bytes, which may have to be converted first.
    std::string_view bytes(int column, const void* start) const {
        const int length = sqlite3_column_bytes(statement_, column);
        return start ? std::string_view(static_cast<const char*>(start), static_cast<std::size_t>(length))
                     : "";
    }

    sqlite3_stmt* statement_ = nullptr;
    int code_;
};

/// Runs statements that yield nothing. SQLITE_OK or what went wrong.
inline int execute(sqlite3* database, const char* sql) {
    return sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
}

} // namespace quillo
