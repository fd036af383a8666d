/// The preferences file as any other program sees it: through SQLite alone.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <vector>

namespace quillo::support {

class RawDatabase {
public:
    explicit RawDatabase(const std::filesystem::path& path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &database_), SQLITE_OK);
    }
    ~RawDatabase() { sqlite3_close(database_); }
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    /// Runs statements and returns SQLite's code.
    int run(const std::string& sql) {
        return sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr);
    }

    /// The first column of every row as text, "NULL" where it is null.
    std::vector<std::string> column(const std::string& sql) {
        std::vector<std::string> values;
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database_);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
            values.emplace_back(
                text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, 0)))
                     : "NULL");
        }
        sqlite3_finalize(statement);
        return values;
    }

    /// The single value that a query yields.
    std::string value(const std::string& sql) {
        const std::vector<std::string> values = column(sql);
        EXPECT_EQ(values.size(), 1U) << sql;
        return values.empty() ? "" : values.front();
    }

private:
    sqlite3* database_ = nullptr;
};

} // namespace quillo::support
