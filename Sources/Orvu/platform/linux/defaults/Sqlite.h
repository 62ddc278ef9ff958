#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace orvu {

/// One prepared statement. A run of it is a `Turn`: bind, step, read the columns.
class SqliteStatement {
public:
    /// Puts the statement back to its beginning when the run is over, and so ends its hold on
    /// the database.
    class Turn {
    public:
        explicit Turn(SqliteStatement& statement) : statement_(statement.handle_.get()) {}
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn() { sqlite3_reset(statement_); }

        // What is bound must stand until the turn is over. Numbers of parameters count from 1.
        void bindText(int parameter, std::string_view text);
        void bindBlob(int parameter, std::string_view bytes);
        void bindInteger(int parameter, std::int64_t number);
        void bindReal(int parameter, double number);
        void bindNull(int parameter);

        /// A result code of the library: `SQLITE_ROW`, `SQLITE_DONE` or a failure.
        int step() { return sqlite3_step(statement_); }

        // Columns of the present row, counted from 0.
        [[nodiscard]] int type(int column) const;
        /// Bytes of a text or a blob, embedded zeros included; they stand until the next step.
        [[nodiscard]] std::string_view bytes(int column) const;
        /// A value as text in UTF-8, whatever it is kept as, up to its first zero; it stands until
        /// the next step. Empty for NULL.
        [[nodiscard]] std::string_view text(int column) const;
        [[nodiscard]] std::int64_t integer(int column) const;
        [[nodiscard]] double real(int column) const;

    private:
        sqlite3_stmt* statement_;
    };

    SqliteStatement() = default;
    explicit SqliteStatement(sqlite3_stmt* handle) : handle_(handle) {}
    /// False if the text did not fit the database.
    explicit operator bool() const { return handle_ != nullptr; }

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    std::unique_ptr<sqlite3_stmt, Finalize> handle_;
};

/// One connection to a database, used by one thread. Results are the library's own codes.
class SqliteConnection {
public:
    enum class Access {
        create,     ///< read and write; the file is made if there is none
        readWrite,  ///< read and write a file that is there
        readOnly,
        immutable,  ///< read alone, without locks or log: for a folder that can't be written
    };
    static constexpr std::string_view memory = ":memory:";

    SqliteConnection() = default;
    /// `status` tells whether it worked.
    SqliteConnection(const std::filesystem::path& file, Access access);

    [[nodiscard]] int status() const { return status_; }
    [[nodiscard]] sqlite3* handle() const { return handle_.get(); }
    /// Runs one or several statements and leaves their rows aside.
    int execute(const char* sql);
    [[nodiscard]] SqliteStatement prepare(std::string_view sql);
    /// The first column of the first row; nothing if there is none, with the code in `status`.
    [[nodiscard]] std::optional<std::int64_t> queryInteger(std::string_view sql);
    /// Takes the present transaction back, if one is left: some failures have ended it already.
    void rollBack();
    /// Leaves the log as it is at the end; by default the last connection empties it.
    void keepLogAtClose();
    /// Lets statements end early, with a failure, once a stop is asked for. `stop` must outlive
    /// the connection.
    void interruptOn(const std::stop_token& stop);

    /// The database as the bytes of its file; nothing if there is no memory for it.
    [[nodiscard]] std::string serialized() const;
    /// Reads a file's bytes instead of what is open. They are copied.
    [[nodiscard]] bool deserialize(std::string_view bytes);

private:
    struct Close {
        // This form waits for the statements, so that members may go in any order.
        void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    };
    std::unique_ptr<sqlite3, Close> handle_;
    int status_ = SQLITE_OK;
};

}  // namespace orvu
