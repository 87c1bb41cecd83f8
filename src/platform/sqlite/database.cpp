#include "platform/sqlite/database.h"

namespace orvalis {
namespace {

/// How long another program may hold the database. Everything waits meanwhile, so it is short.
constexpr int kPatienceMs = 200;

void Check(sqlite3* database, int code) {
  if (code != SQLITE_OK) throw DatabaseError(code & 0xff, sqlite3_errmsg(database));
}

}  // namespace

Statement::Statement(sqlite3* database, const std::string& sql) : database_(database) {
  sqlite3_stmt* statement = nullptr;
  Check(database, sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr));
  statement_.reset(statement);
}

void Statement::Bind(int parameter, std::optional<std::int64_t> value) {
  Check(database_, value ? sqlite3_bind_int64(statement_.get(), parameter + 1, *value)
                         : sqlite3_bind_null(statement_.get(), parameter + 1));
}

void Statement::BindText(int parameter, const std::string& text) {
  Check(database_,
        sqlite3_bind_text64(statement_.get(), parameter + 1, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

bool Statement::Step() {
  const int code = sqlite3_step(statement_.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  const DatabaseError error(code & 0xff, sqlite3_errmsg(database_));
  Reset();
  throw error;
}

void Statement::Run() {
  while (Step()) {
  }
  Reset();
}

std::optional<std::int64_t> Statement::Integer(int column) const {
  if (sqlite3_column_type(statement_.get(), column) == SQLITE_NULL) return std::nullopt;
  return sqlite3_column_int64(statement_.get(), column);
}

std::string Statement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  return text == nullptr ? "" : text;
}

Database::Database(const std::filesystem::path& file) {
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(reinterpret_cast<const char*>(file.u8string().c_str()), &handle,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  handle_.reset(handle);  // to be closed even when it could not be opened
  if (handle == nullptr) throw DatabaseError(code, sqlite3_errstr(code));
  Check(handle, code);
  Check(handle, sqlite3_busy_timeout(handle, kPatienceMs));
}

Statement& Database::Kept(const std::string& sql) {
  const auto found = kept_.find(sql);
  return found != kept_.end() ? found->second : kept_.emplace(sql, Prepare(sql)).first->second;
}

bool Database::HasMoved() {
  int moved = 0;
  const int code = sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return code == SQLITE_OK && moved != 0;
}

Transaction::~Transaction() {
  if (committed_) return;
  try {
    database_.Execute("ROLLBACK");
  } catch (const DatabaseError&) {
    // What made it fail has rolled it back already.
  }
}

void Transaction::Commit() {
  database_.Kept("COMMIT").Run();
  committed_ = true;
}

}  // namespace orvalis
