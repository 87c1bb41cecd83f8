#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "base/clock.h"
#include "history/history_store.h"
#include "platform/sqlite/database.h"

namespace orvalis {

/// The history in an SQLite file, described in docs/history.md. It is opened and checked when it is first needed. A
/// damaged file is set aside under a name with the date, and a new one begun; after any other failure the file is
/// opened again at the next attempt.
///
/// SQLite's own interface rather than Qt's: errors (damaged, full, in use) are distinguished by number, and the
/// file is served the same way where Qt is built without its driver.
class SqliteHistory : public HistoryStore {
 public:
  /// Called with what the user needs to know about the file.
  using Notice = std::function<void(const std::string& text)>;

  SqliteHistory(std::filesystem::path file, const Clock& clock, Notice notice)
      : file_(std::move(file)), clock_(clock), notice_(std::move(notice)) {}

  [[nodiscard]] Part Load(std::int64_t spans_from, std::int64_t samples_from, std::int64_t to) override;
  [[nodiscard]] std::optional<std::int64_t> Begin() override;
  [[nodiscard]] std::vector<Span> Spans(std::int64_t from, std::int64_t to, std::size_t most) override;
  [[nodiscard]] std::vector<RecordedVerdict> Verdicts(std::int64_t from, std::int64_t to, std::size_t most) override;
  void Write(const Batch& batch) override;
  void Forget(std::int64_t samples_before, std::int64_t spans_before) override;

 private:
  /// Runs `work` on the open database. A file that turns out to be damaged is set aside, and the work done on the new
  /// one. `doing` is for the message: "read", "store".
  template <typename Work>
  void Serve(const char* doing, Work work);
  Database& Open();
  /// Whether there is a file to read; one is made with the first value.
  [[nodiscard]] bool Exists() const;
  void SetAside(const std::string& reason);

  std::filesystem::path file_;
  const Clock& clock_;
  Notice notice_;
  std::optional<Database> database_;
};

}  // namespace orvalis
