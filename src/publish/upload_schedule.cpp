#include "publish/upload_schedule.h"

#include <string>

#include "base/text.h"

namespace orvalis {

std::string_view UploadIntervalText(std::int32_t row) {
  if (row < 0 || static_cast<std::size_t>(row) >= kUploadIntervals.size()) return kUploadIntervals.back().text;
  return kUploadIntervals[static_cast<std::size_t>(row)].text;
}

std::int16_t UploadIntervalTicks(std::int32_t row) {
  return static_cast<std::int16_t>(ValInteger(UploadIntervalText(row)));
}

void UploadSchedule::Load() {
  stored_row_ = upload_.IntervalRow();
  interval_ = UploadIntervalTicks(stored_row_);
}

void UploadSchedule::Work(ErrorBoundary& boundary) {
  // A store that fails is tried again in the next cycle and keeps nothing from being sent.
  boundary.Run(names_.keeping, [&] {
    FollowRow();
    boundary.Succeeded(names_.keeping);
  });
  if (counter_.ticks() < interval_) return;
  counter_.Reset();
  boundary.Run(names_.doing, [&] {
    upload_.Start();
    boundary.Succeeded(names_.doing);
  });
}

void UploadSchedule::FollowRow() {
  const std::int32_t row = upload_.IntervalRow();
  interval_ = UploadIntervalTicks(row);
  if (row == stored_row_) return;
  Profile::Batch batch(store_.profile());
  store_.WriteText(names_.index_key, std::to_string(row));
  store_.WriteText(names_.interval_key, UploadIntervalText(row));
  batch.Commit();
  stored_row_ = row;
}

}  // namespace orvalis
