#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

#include "base/error_boundary.h"
#include "base/message.h"
#include "base/tick_counter.h"
#include "config/settings_store.h"

namespace orvalis {

/// A row of the upload interval lists: the seconds, which are poll ticks, and the item value.
struct UploadInterval {
  std::string_view text;
  std::int32_t item_value;
};
inline constexpr std::array<UploadInterval, 8> kUploadIntervals{
    {{"5", 1}, {"10", 2}, {"15", 3}, {"30", 4}, {"60", 5}, {"120", 6}, {"300", 7}, {"600", 0}}};

/// The text of row `row`; outside the list "600", as when nothing is selected.
[[nodiscard]] std::string_view UploadIntervalText(std::int32_t row);
[[nodiscard]] std::int16_t UploadIntervalTicks(std::int32_t row);

/// What allows an upload: the setting, or the user for this time alone.
enum class Permission { kBySetting, kOnce };

/// What became of a due upload: it had its turn, successful or not, or it waits for the next frame.
enum class UploadTurn { kTaken, kStillDue };

/// Something that is uploaded periodically.
class ScheduledUpload {
 public:
  virtual ~ScheduledUpload() = default;
  /// The row chosen in its list of intervals.
  [[nodiscard]] virtual std::int32_t IntervalRow() const = 0;
  /// Starts an upload without waiting for its end.
  [[nodiscard]] virtual UploadTurn Start() = 0;
};

/// Starts an upload in the first working cycle after its interval has passed in which it is possible.
class UploadSchedule {
 public:
  struct Names {
    Phrase doing;                   ///< for a person: "publishing the readings"
    Phrase storing;                 ///< and "storing the readings interval"
    std::string_view index_key;     ///< stores the selected row
    std::string_view interval_key;  ///< stores the row's text
  };

  /// Whether a due upload has to wait.
  using Held = std::function<bool()>;

  UploadSchedule(ScheduledUpload& upload, SettingsStore& store, const Names& names, Held held)
      : upload_(upload), store_(store), names_(names), held_(std::move(held)) {}

  /// Takes the row from the loaded settings.
  void Load();

  /// One tick of the poll timer, with or without a frame: counts, and stores a changed interval. The count stops at the
  /// interval: after an outage the upload is due at once. Failures are reported to `boundary`.
  void Tick(ErrorBoundary& boundary);
  /// In a working cycle that got a frame. Failures are reported to `boundary`.
  void Work(ErrorBoundary& boundary);

 private:
  /// Applies a changed row and stores it for the next start.
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
