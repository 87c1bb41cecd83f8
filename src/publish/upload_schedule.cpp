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

void UploadSchedule::Tick(ErrorBoundary& boundary) {
  // A store that fails is tried again at the next tick and does not prevent uploads.
  boundary.Run(names_.storing, [&] {
    FollowRow();
    boundary.Succeeded(names_.storing);
  });
  counter_.RaiseUpTo(interval_);
}

void UploadSchedule::Work(ErrorBoundary& boundary) {
  if (counter_.ticks() < interval_ || held_()) return;
  UploadTurn turn = UploadTurn::kTaken;
  boundary.Run(names_.doing, [&] {
    turn = upload_.Start();
    boundary.Succeeded(names_.doing);
  });
  if (turn == UploadTurn::kTaken) counter_.Reset();
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
