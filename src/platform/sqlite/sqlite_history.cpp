#include "platform/sqlite/sqlite_history.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

/// 1 had no verdicts, 2 neither rain nor light.
constexpr int kLayout = 3;
/// The columns of numbers in the order of `Quantity`, in hundredths.
constexpr std::array<std::string_view, kQuantities> kColumns{"sky",  "clear_sky", "ambient", "dew_point", "wind",
                                                             "gust", "humidity",  "rain",    "light"};
/// Those of the first two layouts.
constexpr std::size_t kFirstColumns = 7;
constexpr double kStepsPerUnit = 100;
constexpr std::array<const char*, 2> kCompanions{"-wal", "-shm"};

/// "sky INTEGER, clear_sky INTEGER, …" with what goes before and after each name.
std::string ColumnList(std::string_view suffix, std::string_view after = {}) {
  std::string list;
  for (const std::string_view column : kColumns) {
    list += ", ";
    list += column;
    list += suffix;
    list += after;
  }
  return list;
}

std::string Parameters(std::size_t count) {
  std::string list = "?";
  for (std::size_t i = 1; i < count; ++i) list += ", ?";
  return list;
}

constexpr const char* kVerdictColumns = "time, until, safe, source, reasons, explanation";
constexpr std::size_t kVerdictColumnCount = 6;
constexpr int kFirstSampleValue = 3;
constexpr int kFirstSpanValue = 4;
constexpr int kHighestAfter = static_cast<int>(kQuantities);

std::string SampleColumns() { return "time, conditions, held" + ColumnList(""); }
std::string SpanColumns() { return "first, last, conditions, held" + ColumnList("_low") + ColumnList("_high"); }

void BindValues(Statement& statement, int first, const Values& values) {
  for (int i = 0; i < static_cast<int>(kQuantities); ++i) {
    const auto quantity = static_cast<Quantity>(i);
    std::optional<std::int64_t> steps;
    if (values.Knows(quantity)) steps = std::llround(static_cast<double>(values[quantity]) * kStepsPerUnit);
    statement.Bind(first + i, steps);
  }
}

Values ReadValues(const Statement& row, int first) {
  Values values;
  for (int i = 0; i < static_cast<int>(kQuantities); ++i) {
    const std::optional<std::int64_t> steps = row.Integer(first + i);
    if (steps) values[static_cast<Quantity>(i)] = static_cast<float>(static_cast<double>(*steps) / kStepsPerUnit);
  }
  return values;
}

template <typename Member>
SmallSet<Member> ReadSet(const Statement& row, int column) {
  return SmallSet<Member>::FromBits(static_cast<std::uint16_t>(row.Integer(column).value_or(0)));
}

ReadingSource SourceOf(const std::string& name) {
  for (const ReadingSource source : {ReadingSource::kUnit, ReadingSource::kDemo}) {
    if (Name(source) == name) return source;
  }
  return ReadingSource::kNone;
}

/// Those between `from` and `to`, in `order`: the first or the last `most` of them.
std::vector<RecordedVerdict> ReadVerdicts(Database& database, std::int64_t from, std::int64_t to, std::size_t most,
                                          const char* order) {
  // They do not overlap: only the last one that began before may reach beyond `from`.
  Statement rows = database.Prepare(std::string("SELECT ") + kVerdictColumns +
                                    " FROM verdict WHERE time >= coalesce((SELECT max(time) FROM verdict WHERE "
                                    "time < ?1), ?1) AND time <= ?2 AND until >= ?1 ORDER BY time " +
                                    order + " LIMIT ?3");
  rows.Bind(0, from);
  rows.Bind(1, to);
  rows.Bind(2, static_cast<std::int64_t>(most));
  std::vector<RecordedVerdict> verdicts;
  while (rows.Step()) {
    verdicts.push_back({.first = rows.Integer(0).value_or(0),
                        .last = rows.Integer(1).value_or(0),
                        .safe = rows.Integer(2) == 1,
                        .source = SourceOf(rows.Text(3)),
                        .reasons = rows.Text(4),
                        .explanation = rows.Text(5)});
  }
  return verdicts;
}

Span ReadSpan(const Statement& row) {
  return {.first = row.Integer(0).value_or(0),
          .last = row.Integer(1).value_or(0),
          .lowest = ReadValues(row, kFirstSpanValue),
          .highest = ReadValues(row, kFirstSpanValue + kHighestAfter),
          .held = ReadSet<Quantity>(row, 3),
          .conditions = ReadSet<Condition>(row, 2)};
}

void WriteVerdicts(Database& database, const std::vector<RecordedVerdict>& verdicts) {
  Statement& clear = database.Kept("DELETE FROM verdict WHERE time > ? AND time < ?");
  Statement& shorten = database.Kept(
      "UPDATE verdict SET until = ?1 WHERE time = (SELECT max(time) FROM verdict WHERE time < ?1) AND until > ?1");
  static const std::string insert_sql = std::string("INSERT OR REPLACE INTO verdict (") + kVerdictColumns +
                                        ") VALUES (" + Parameters(kVerdictColumnCount) + ")";
  Statement& insert = database.Kept(insert_sql);
  for (const RecordedVerdict& verdict : verdicts) {
    clear.Bind(0, verdict.first);
    clear.Bind(1, verdict.last);
    clear.Run();
    shorten.Bind(0, verdict.first);
    shorten.Run();
    insert.Bind(0, verdict.first);
    insert.Bind(1, verdict.last);
    insert.Bind(2, verdict.safe ? 1 : 0);
    insert.BindText(3, std::string(Name(verdict.source)));
    insert.BindText(4, verdict.reasons);
    insert.BindText(5, verdict.explanation);
    insert.Run();
  }
}

std::string OneText(Database& database, const std::string& sql) {
  Statement statement = database.Prepare(sql);
  return statement.Step() ? statement.Text(0) : "";
}

/// The layout of the file, 0 for a new one. Throws DatabaseError when it is damaged or of another program.
std::int64_t CheckFile(Database& database) {
  const std::string verdict = OneText(database, "PRAGMA quick_check(1)");
  if (verdict != "ok") throw DatabaseError(SQLITE_CORRUPT, verdict);
  Statement layout = database.Prepare("PRAGMA user_version");
  if (!layout.Step() || layout.Integer(0) < 0 || layout.Integer(0) > kLayout) {
    throw DatabaseError(SQLITE_ERROR, "it was written by a newer version of the program");
  }
  return layout.Integer(0).value_or(0);
}

/// Gives the tables of an older layout the columns that they lack: what they hold knows nothing of these.
void AddColumns(Database& database) {
  for (std::size_t i = kFirstColumns; i < kColumns.size(); ++i) {
    const std::string column(kColumns[i]);
    database.Execute("ALTER TABLE cycle ADD COLUMN " + column + " INTEGER");
    for (const char* suffix : {"_low", "_high"}) {
      database.Execute("ALTER TABLE span ADD COLUMN " + column + suffix + " INTEGER");
    }
  }
}

/// Asks for every column. Throws DatabaseError: a file that says it is `ours` and lacks one is damaged, and any other
/// is another program's.
void CheckColumns(Database& database, bool ours) {
  try {
    for (const std::string& columns : {SampleColumns() + " FROM cycle", SpanColumns() + " FROM span",
                                       std::string(kVerdictColumns) + " FROM verdict"}) {
      static_cast<void>(database.Prepare("SELECT " + columns));
    }
  } catch (const DatabaseError& error) {
    if (ours && error.code() == SQLITE_ERROR) throw DatabaseError(SQLITE_CORRUPT, error.what());
    throw;
  }
}

void Prepare(Database& database) {
  const std::int64_t layout = CheckFile(database);
  // A batch is in the file as soon as it is written, whatever becomes of the program, and the disk is not waited for.
  database.Execute("PRAGMA journal_mode = WAL");
  database.Execute("PRAGMA synchronous = NORMAL");
  Transaction transaction(database);
  if (layout > 0 && layout < kLayout) AddColumns(database);
  database.Execute(
      "CREATE TABLE IF NOT EXISTS cycle (time INTEGER PRIMARY KEY, conditions INTEGER NOT NULL, "
      "held INTEGER NOT NULL" +
      ColumnList(" INTEGER") + ")");
  database.Execute(
      "CREATE TABLE IF NOT EXISTS span (first INTEGER PRIMARY KEY, last INTEGER NOT NULL, conditions "
      "INTEGER NOT NULL, held INTEGER NOT NULL" +
      ColumnList("_low INTEGER") + ColumnList("_high INTEGER") + ")");
  database.Execute(
      "CREATE TABLE IF NOT EXISTS verdict (time INTEGER PRIMARY KEY, until INTEGER NOT NULL, safe INTEGER NOT NULL, "
      "source TEXT NOT NULL, reasons TEXT NOT NULL, explanation TEXT NOT NULL)");
  CheckColumns(database, layout > 0);
  database.Execute("PRAGMA user_version = " + std::to_string(kLayout));
  transaction.Commit();
}

std::string Shown(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

/// "history-damaged-2026-11-21.sqlite", with a number when that is taken.
fs::path NameAside(const fs::path& file, const CivilTime& today) {
  for (int number = 1;; ++number) {
    fs::path name = file.parent_path() / file.stem();
    name += "-damaged-" + FormatIsoDate(today);
    if (number > 1) name += "-" + std::to_string(number);
    name += file.extension();
    std::error_code error;
    if (!fs::exists(fs::symlink_status(name, error))) return name;
  }
}

}  // namespace

Database& SqliteHistory::Open() {
  // A file that was removed or moved would keep taking samples that are lost.
  if (database_ && database_->HasMoved()) database_.reset();
  if (!database_) {
    std::error_code error;
    // Failures show when the file is opened. Nobody else may read it; its journal gets the same permissions.
    fs::create_directories(file_.parent_path(), error);
    if (!fs::exists(file_, error)) std::ofstream(file_, std::ios::app).flush();
    if (fs::is_regular_file(file_, error)) {
      fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write, error);
    }
    // SQLite looks for the journal of a crash and would wait for whoever writes to a pipe of that name.
    fs::path journal = file_;
    if (fs::is_fifo(journal += "-journal", error)) fs::remove(journal, error);
    Database database(file_);
    orvalis::Prepare(database);
    database_.emplace(std::move(database));
  }
  return *database_;
}

template <typename Work>
void SqliteHistory::Serve(const char* doing, Work work) {
  const auto fail = [&](const std::string& reason) {
    database_.reset();
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       std::string("cannot ") + doing + " the history " + Shown(file_) + ": " + reason);
  };
  try {
    try {
      work(Open());
    } catch (const DatabaseError& error) {
      if (!error.damaged()) throw;
      SetAside(error.what());
      work(Open());
    }
  } catch (const DatabaseError& error) {
    fail(error.what());
  } catch (const fs::filesystem_error& error) {
    fail(error.what());
  }
}

void SqliteHistory::SetAside(const std::string& reason) {
  database_.reset();
  const fs::path aside = NameAside(file_, clock_.LocalNow());
  fs::rename(file_, aside);
  // The journal goes with the file: it may help to recover the data.
  for (const char* companion : kCompanions) {
    std::error_code error;
    fs::path from = file_;
    fs::path to = aside;
    fs::rename(from += companion, to += companion, error);
  }
  notice_("the history was damaged (" + reason + "); it was moved to " + Shown(aside) + " and a new one was started");
}

HistoryStore::Part SqliteHistory::Load(std::int64_t spans_from, std::int64_t samples_from, std::int64_t to) {
  Part part;
  if (!Exists()) return part;
  Serve("read", [&](Database& database) {
    part = {};
    // A span across the limit would leave a hole: its samples are read instead.
    Statement across = database.Prepare("SELECT min(first) FROM span WHERE first >= ? AND first < ? AND last >= ?");
    across.Bind(0, std::max(spans_from, samples_from - kSpanMs));
    across.Bind(1, samples_from);
    across.Bind(2, samples_from);
    if (across.Step()) samples_from = across.Integer(0).value_or(samples_from);
    Statement spans = database.Prepare("SELECT " + SpanColumns() +
                                       " FROM span WHERE first >= ? AND first < ? AND last < ? ORDER BY first");
    spans.Bind(0, spans_from);
    spans.Bind(1, samples_from);
    spans.Bind(2, samples_from);
    while (spans.Step()) part.spans.push_back(ReadSpan(spans));
    Statement samples =
        database.Prepare("SELECT " + SampleColumns() + " FROM cycle WHERE time >= ? AND time <= ? ORDER BY time");
    samples.Bind(0, samples_from);
    samples.Bind(1, to);
    while (samples.Step()) {
      part.samples.push_back({.time = samples.Integer(0).value_or(0),
                              .values = ReadValues(samples, kFirstSampleValue),
                              .held = ReadSet<Quantity>(samples, 2),
                              .conditions = ReadSet<Condition>(samples, 1)});
    }
    part.verdicts = ReadVerdicts(database, spans_from, to, VerdictHistory::kMostKept, "DESC");
    std::reverse(part.verdicts.begin(), part.verdicts.end());
  });
  return part;
}

bool SqliteHistory::Exists() const {
  std::error_code error;
  return fs::exists(file_, error) || error;
}

std::optional<std::int64_t> SqliteHistory::Begin() {
  std::optional<std::int64_t> begin;
  if (!Exists()) return begin;
  Serve("read", [&](Database& database) {
    begin.reset();
    for (const char* sql : {"SELECT min(first) FROM span", "SELECT min(time) FROM verdict"}) {
      Statement oldest = database.Prepare(sql);
      const std::optional<std::int64_t> time = oldest.Step() ? oldest.Integer(0) : std::nullopt;
      if (time) begin = std::min(*time, begin.value_or(*time));
    }
  });
  return begin;
}

std::vector<Span> SqliteHistory::Spans(std::int64_t from, std::int64_t to, std::size_t most) {
  std::vector<Span> spans;
  if (!Exists()) return spans;
  Serve("read", [&](Database& database) {
    spans.clear();
    spans.reserve(most);
    Statement rows = database.Prepare("SELECT " + SpanColumns() +
                                      " FROM span WHERE first >= ? AND first < ? ORDER BY first LIMIT ?");
    rows.Bind(0, from);
    rows.Bind(1, to);
    rows.Bind(2, static_cast<std::int64_t>(most));
    while (rows.Step()) spans.push_back(ReadSpan(rows));
  });
  return spans;
}

std::vector<RecordedVerdict> SqliteHistory::Verdicts(std::int64_t from, std::int64_t to, std::size_t most) {
  std::vector<RecordedVerdict> verdicts;
  if (!Exists()) return verdicts;
  Serve("read", [&](Database& database) { verdicts = ReadVerdicts(database, from, to, most, "ASC"); });
  return verdicts;
}

void SqliteHistory::Write(const Batch& batch) {
  Serve("store", [&](Database& database) {
    Transaction transaction(database);
    Statement& clear = database.Kept("DELETE FROM cycle WHERE time > ? AND time < ?");
    static const std::string insert_sql = "INSERT OR REPLACE INTO cycle (" + SampleColumns() + ") VALUES (" +
                                          Parameters(kFirstSampleValue + kQuantities) + ")";
    Statement& insert = database.Kept(insert_sql);
    std::optional<std::int64_t> before = batch.follows;
    for (const Sample& sample : batch.samples) {
      if (before && sample.time > *before && sample.time - *before <= kLongestStepMs) {
        clear.Bind(0, *before);
        clear.Bind(1, sample.time);
        clear.Run();
      }
      before = sample.time;
      insert.Bind(0, sample.time);
      insert.Bind(1, sample.conditions.bits());
      insert.Bind(2, sample.held.bits());
      BindValues(insert, kFirstSampleValue, sample.values);
      insert.Run();
    }
    Statement& clear_spans = database.Kept("DELETE FROM span WHERE first > ? AND first <= ?");
    // One that began before and is not over yet keeps its beginning.
    Statement& shorten_spans = database.Kept("UPDATE span SET last = ? WHERE first > ? AND first < ? AND last >= ?");
    static const std::string insert_span_sql = "INSERT OR REPLACE INTO span (" + SpanColumns() + ") VALUES (" +
                                               Parameters(kFirstSpanValue + 2 * kQuantities) + ")";
    Statement& insert_span = database.Kept(insert_span_sql);
    for (const Span& span : batch.spans) {
      clear_spans.Bind(0, span.first);
      clear_spans.Bind(1, span.last);
      clear_spans.Run();
      shorten_spans.Bind(0, span.first - 1);
      shorten_spans.Bind(1, span.first - kSpanMs);
      shorten_spans.Bind(2, span.first);
      shorten_spans.Bind(3, span.first);
      shorten_spans.Run();
      insert_span.Bind(0, span.first);
      insert_span.Bind(1, span.last);
      insert_span.Bind(2, span.conditions.bits());
      insert_span.Bind(3, span.held.bits());
      BindValues(insert_span, kFirstSpanValue, span.lowest);
      BindValues(insert_span, kFirstSpanValue + kHighestAfter, span.highest);
      insert_span.Run();
    }
    WriteVerdicts(database, batch.verdicts);
    transaction.Commit();
  });
}

void SqliteHistory::Forget(std::int64_t samples_before, std::int64_t spans_before) {
  Serve("clear", [&](Database& database) {
    Transaction transaction(database);
    for (const auto& [sql, limit] :
         {std::pair{"DELETE FROM cycle WHERE time < ?", samples_before},
          std::pair{"DELETE FROM span WHERE first < ?", spans_before},
          std::pair{"DELETE FROM verdict WHERE time < ?1 AND until < ?1", spans_before},
          std::pair{"DELETE FROM verdict WHERE time <= (SELECT time FROM verdict ORDER BY time DESC LIMIT 1 OFFSET ?)",
                    kMostVerdicts}}) {
      Statement remove = database.Prepare(sql);
      remove.Bind(0, limit);
      remove.Run();
    }
    transaction.Commit();
  });
}

}  // namespace orvalis
