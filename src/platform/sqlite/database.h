#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace orvalis {

/// What SQLite answered other than that it is done.
class DatabaseError : public std::runtime_error {
 public:
  DatabaseError(int code, const std::string& text) : std::runtime_error(text), code_(code) {}

  /// SQLite's primary result code.
  [[nodiscard]] int code() const { return code_; }
  /// The file is no database, or is damaged. Anything else may be mended without it.
  [[nodiscard]] bool damaged() const { return code_ == SQLITE_CORRUPT || code_ == SQLITE_NOTADB; }

 private:
  int code_;
};

/// A prepared statement of a `Database`, which has to live longer.
class Statement {
 public:
  Statement(sqlite3* database, const std::string& sql);

  /// Parameters and columns are counted from 0.
  void Bind(int parameter, std::optional<std::int64_t> value);
  void BindText(int parameter, const std::string& text);
  /// To the next row; false when there is none. Throws DatabaseError.
  bool Step();
  /// Runs to the end and makes the statement ready for another run. Throws DatabaseError.
  void Run();
  void Reset() noexcept { sqlite3_reset(statement_.get()); }
  /// Nothing for NULL.
  [[nodiscard]] std::optional<std::int64_t> Integer(int column) const;
  [[nodiscard]] std::string Text(int column) const;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  sqlite3* database_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// An open SQLite database.
class Database {
 public:
  /// Opens `file`, which is made when it is not there. Throws DatabaseError.
  explicit Database(const std::filesystem::path& file);

  [[nodiscard]] Statement Prepare(const std::string& sql) { return {handle_.get(), sql}; }
  /// As `Prepare`, once for each text: for what is done again and again. Only one use of it at a time.
  [[nodiscard]] Statement& Kept(const std::string& sql);
  void Execute(const std::string& sql) { Prepare(sql).Run(); }
  /// The file was renamed or removed under it.
  [[nodiscard]] bool HasMoved();

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
  std::unordered_map<std::string, Statement> kept_;
};

/// All that is done while it lives, or nothing unless `Commit` was reached.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(database) { database_.Kept("BEGIN IMMEDIATE").Run(); }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();
  void Commit();

 private:
  Database& database_;
  bool committed_ = false;
};

}  // namespace orvalis
