// Connections and statements over SQLite's C interface. Every code that it returns is looked at in one place, which
// makes the message of it. Test: tests/store/Store_test.cpp.

#include "store/Sqlite.h"

#include <sys/mman.h>

#include <utility>

#include "checker/report/Characters.h"

namespace store {
namespace {

// What to tell of a failure, and what to do about it.
struct Advice {
  int code;
  const char* text;
};
constexpr Advice kAdvice[] = {
    {SQLITE_BUSY, "it is locked: another process is writing it; try again when that has ended"},
    {SQLITE_LOCKED, "it is locked: another process is writing it; try again when that has ended"},
    {SQLITE_FULL, "there is no room left for it; what was written before is whole"},
    {SQLITE_NOTADB, "it is no store, or a damaged one"},
    {SQLITE_CORRUPT, "it is damaged; 'sqlite3 FILE .recover' may save a part of it"},
    {SQLITE_READONLY, "it cannot be written"},
    {SQLITE_CANTOPEN, "it cannot be opened"},
};

constexpr int kPrimary = 0xFF;  // the part of a code that tells the kind

std::string explained(sqlite3* connection) {
  const int code = connection == nullptr ? SQLITE_NOMEM : sqlite3_extended_errcode(connection);
  const int kind = code & kPrimary;
  // A file that cannot grow: of its limit, no read or write error is told but this.
  const bool isFull = code == SQLITE_IOERR_WRITE || code == SQLITE_IOERR_TRUNCATE;
  for (const Advice& row : kAdvice) {
    if (row.code == (isFull ? SQLITE_FULL : kind)) return row.text;
  }
  return connection == nullptr ? "no memory" : sqlite3_errmsg(connection);
}

}  // namespace

void keepPagesFromForks() {
  constexpr std::size_t kBytes = std::size_t{17} << 20;  // for the 16 MiB of pages that a writer keeps
  constexpr int kPage = 4096;
  int header = 0;
  if (sqlite3_config(SQLITE_CONFIG_PCACHE_HDRSZ, &header) != SQLITE_OK) return;  // somebody uses it already
  void* const memory = mmap(nullptr, kBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return;
  (void)madvise(memory, kBytes, MADV_DONTFORK);
  const int slot = kPage + (header + 7) / 8 * 8;
  (void)sqlite3_config(SQLITE_CONFIG_PAGECACHE, memory, slot, static_cast<int>(kBytes) / slot);
}

Connection::Connection(const std::string& path, Mode mode, int patience) : path_(path) {
  // Also to read: what a writer that was killed left beside the file has to be taken into it. A file that cannot be
  // written is opened to be read all the same.
  const int flags = SQLITE_OPEN_READWRITE | (mode == Mode::write ? SQLITE_OPEN_CREATE : 0);
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  connection_.reset(opened);
  if (code != SQLITE_OK) fail();
  (void)sqlite3_extended_result_codes(get(), 1);
  (void)sqlite3_busy_timeout(get(), patience);
}

void Connection::execute(const std::string& sql) {
  if (sqlite3_exec(get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

std::int64_t Connection::integer(const std::string& sql) {
  Statement statement(*this, sql);
  return statement.next() ? statement.integer(0) : 0;
}

void Connection::fail() const {
  throw StoreError("the store '" + path_ + "': " + explained(get()));
}

Statement::Statement(Connection& connection, const std::string& sql) : connection_(&connection) {
  sqlite3_stmt* prepared = nullptr;
  if (sqlite3_prepare_v3(connection.get(), sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                         &prepared, nullptr) != SQLITE_OK)
    connection.fail();
  statement_.reset(prepared);
}

bool Statement::next() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) connection_->fail();
  return false;
}

std::int64_t Statement::run() {
  while (next()) {
  }
  reset();
  return sqlite3_last_insert_rowid(connection_->get());
}

std::string_view Statement::view(int column) const {
  const void* bytes = sqlite3_column_blob(statement_.get(), column);  // of a text, too
  const int size = sqlite3_column_bytes(statement_.get(), column);
  return bytes == nullptr ? std::string_view() : std::string_view(static_cast<const char*>(bytes), std::size_t(size));
}

void Statement::check(int code) {
  if (code != SQLITE_OK) connection_->fail();
}

void Statement::bind(int index, const Blob& value) {
  const char* bytes = value.bytes.empty() ? "" : value.bytes.data();  // null would be NULL
  check(sqlite3_bind_blob64(statement_.get(), index, bytes, value.bytes.size(), SQLITE_STATIC));
}

void Statement::bind(int index, std::string_view value) {
  const bool isText = value.find('\0') == std::string_view::npos && utf8(value) == value;
  if (!isText) return bind(index, Blob{value});
  const char* bytes = value.empty() ? "" : value.data();
  check(sqlite3_bind_text64(statement_.get(), index, bytes, value.size(), SQLITE_STATIC, SQLITE_UTF8));
}

Transaction::Transaction(Connection& connection) : connection_(&connection) {
  connection.execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  // SQLite has undone it already after some errors, and says so.
  if (connection_ != nullptr) (void)sqlite3_exec(connection_->get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
  connection_->execute("COMMIT");
  connection_ = nullptr;
}

}  // namespace store
