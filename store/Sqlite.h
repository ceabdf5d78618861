#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

// The few things that the store needs of SQLite, as objects that let go of what they hold.
//
// Whatever fails throws StoreError, with a message that names the file and tells the user what to do.

namespace store {

struct StoreError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Bytes that are no text: a hash.
struct Blob {
  std::string_view bytes;
};

// For a process that writes a store and forks, before its first connection: keeps memory for pages that forks do not
// inherit. What they share is copied page by page when either side writes it, and a store's pages are written all the
// time. Its forks must not use SQLite then.
void keepPagesFromForks();

class Connection {
 public:
  enum class Mode { read, write };  // to write creates the file if there is none

  // Waits `patience` milliseconds for another process that writes, whenever it has to.
  Connection(const std::string& path, Mode mode, int patience = 10'000);

  const std::string& path() const { return path_; }
  sqlite3* get() const { return connection_.get(); }

  // Runs statements that give nothing back.
  void execute(const std::string& sql);

  // The first value of the first row; 0 if there is none.
  std::int64_t integer(const std::string& sql);

  // Throws what came out of SQLite last.
  [[noreturn]] void fail() const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const { (void)sqlite3_close_v2(connection); }
  };

  std::string path_;
  std::unique_ptr<sqlite3, Close> connection_;
};

// A prepared statement. It must not outlive its connection.
//
//   Statement find(connection, "SELECT id, name FROM plugin WHERE name > ?");
//   for (find.with("M"); find.next();) use(find.integer(0), find.bytes(1));
class Statement {
 public:
  Statement(Connection& connection, const std::string& sql);

  // Begins anew with these values for the parameters: numbers, texts, Blob, std::optional of these, nullptr. A text
  // that is not UTF-8 becomes a BLOB, so that no byte of it is lost. Texts must live until the last row was taken.
  template <typename... Values>
  Statement& with(const Values&... values) {
    reset();
    int index = 0;
    (bind(++index, values), ...);
    return *this;
  }

  // Whether there is another row, whose columns count from 0. Views are good until the next call.
  bool next();

  // Takes all rows; the number of the row that was inserted last.
  std::int64_t run();

  bool isNull(int column) const { return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL; }
  std::int64_t integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
  double real(int column) const { return sqlite3_column_double(statement_.get(), column); }
  std::string_view view(int column) const;
  std::string bytes(int column) const { return std::string(view(column)); }

  sqlite3_stmt* get() const { return statement_.get(); }

  // Gives up the read lock that a statement holds between its rows.
  void reset() { (void)sqlite3_reset(statement_.get()); }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { (void)sqlite3_finalize(statement); }
  };

  void check(int code);
  void bind(int index, std::int64_t value) { check(sqlite3_bind_int64(statement_.get(), index, value)); }
  void bind(int index, int value) { bind(index, std::int64_t{value}); }
  void bind(int index, std::uint64_t value) { bind(index, static_cast<std::int64_t>(value)); }
  void bind(int index, bool value) { bind(index, std::int64_t{value}); }
  void bind(int index, double value) { check(sqlite3_bind_double(statement_.get(), index, value)); }
  void bind(int index, std::nullptr_t) { check(sqlite3_bind_null(statement_.get(), index)); }
  void bind(int index, const Blob& value);
  void bind(int index, std::string_view value);
  void bind(int index, const std::string& value) { bind(index, std::string_view(value)); }
  void bind(int index, const char* value) { bind(index, std::string_view(value)); }
  template <typename T>
  void bind(int index, const std::optional<T>& value) {
    if (value) {
      bind(index, *value);
    } else {
      bind(index, nullptr);
    }
  }

  Connection* connection_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

// All or nothing: what is not committed when it ends is undone. Only one at a time.
class Transaction {
 public:
  // Takes the lock to write at once.
  explicit Transaction(Connection& connection);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit();

 private:
  Connection* connection_;
};

}  // namespace store
