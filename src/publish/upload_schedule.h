#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

#include "base/error_boundary.h"
#include "base/tick_counter.h"
#include "config/settings_store.h"

namespace orvalis {

/// A row of the lists of upload intervals: the seconds, which are poll ticks, and the number behind the row.
struct UploadInterval {
  std::string_view text;
  std::int32_t item_value;
};
inline constexpr std::array<UploadInterval, 8> kUploadIntervals{
    {{"5", 1}, {"10", 2}, {"15", 3}, {"30", 4}, {"60", 5}, {"120", 6}, {"300", 7}, {"600", 0}}};

/// The text of row `row`; outside the list it is what the lists say before anything is chosen: "600".
[[nodiscard]] std::string_view UploadIntervalText(std::int32_t row);
[[nodiscard]] std::int16_t UploadIntervalTicks(std::int32_t row);

/// What becomes of an upload that is due: it has had its turn, whatever came of it, or it waits for the next frame.
enum class UploadTurn { kTaken, kStillDue };

/// Something that is uploaded again and again.
class ScheduledUpload {
 public:
  virtual ~ScheduledUpload() = default;
  /// The row chosen in its list of intervals.
  [[nodiscard]] virtual std::int32_t IntervalRow() const = 0;
  /// Begins an upload, without waiting for its end.
  [[nodiscard]] virtual UploadTurn Start() = 0;
};

/// Starts an upload in the working cycle in which its interval is over, or in the first one after that in which it can
/// be done.
class UploadSchedule {
 public:
  struct Names {
    std::string_view doing;         ///< for a person: "publishing the readings"
    std::string_view keeping;       ///< and "keeping the interval of the readings"
    std::string_view index_key;     ///< where the chosen row is kept
    std::string_view interval_key;  ///< where the row's text is kept
  };

  /// Says whether what is due has to wait.
  using Held = std::function<bool()>;

  UploadSchedule(ScheduledUpload& upload, SettingsStore& store, const Names& names, Held held)
      : upload_(upload), store_(store), names_(names), held_(std::move(held)) {}

  /// Takes the row over that the settings were loaded with.
  void Load();

  /// One tick of the poll timer, with a frame or without: counts, and keeps another choice of the interval. The count
  /// stops at the interval: after an outage the upload is due at once. What fails is reported to `boundary`.
  void Tick(ErrorBoundary& boundary);
  /// In a working cycle that got a frame. What fails is reported to `boundary`.
  void Work(ErrorBoundary& boundary);

 private:
  /// Takes over a change of the row and keeps it for the next start.
  void FollowRow();

  ScheduledUpload& upload_;
  SettingsStore& store_;
  Names names_;
  Held held_;
  TickCounter counter_;
  std::int32_t stored_row_ = -1;
  std::int16_t interval_ = UploadIntervalTicks(-1);
};

}  // namespace orvalis
