#pragma once

#include <string>
#include <string_view>

#include "config/store_rules.h"

namespace orvalis {

/// The platform's store of settings: a text for each (driver ID, name, subkey). Every operation throws RunTimeError
/// when the store fails; the description names the store and the reason.
class Profile {
 public:
  virtual ~Profile() = default;

  /// Set once, before anything else.
  virtual void SetDeviceType(std::string_view type) = 0;
  virtual void Register(std::string_view driver_id, std::string_view description) = 0;
  /// The text stored, or "" where there is none.
  [[nodiscard]] virtual std::string GetValue(std::string_view driver_id, std::string_view name,
                                             std::string_view subkey) = 0;
  /// The value is safe in the store when this returns.
  virtual void WriteValue(std::string_view driver_id, std::string_view name, std::string_view value,
                          std::string_view subkey) = 0;

  /// What shows that the store was destroyed, "" when nothing does. Changes nothing.
  [[nodiscard]] virtual std::string Fault(const StoreRules& /*rules*/) { return {}; }
  /// From now on the store keeps a copy of itself, renewed at each write. One that was destroyed is put aside, and its
  /// copy takes its place, or nothing at all where there is no good one, in either case with a notice under
  /// `notice_key`. Where that cannot be written it is so in memory until it can be. False for a platform's own store,
  /// which does nothing of this.
  virtual bool KeepSafe(const StoreRules& /*rules*/) { return false; }

  /// Writes that belong together. Where the store can, they reach it in one step at `Commit`, or not at all; elsewhere
  /// each of them is written at once.
  class Batch {
   public:
    explicit Batch(Profile& profile) : profile_(profile) { profile_.BeginBatch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    ~Batch() {
      if (!committed_) profile_.AbandonBatch();
    }
    void Commit() {
      profile_.CommitBatch();
      committed_ = true;
    }

   private:
    Profile& profile_;
    bool committed_ = false;
  };

  /// Where a person finds the store: a file's path or a registry key.
  [[nodiscard]] virtual std::string Location() const = 0;

 protected:
  virtual void BeginBatch() {}
  virtual void CommitBatch() {}
  virtual void AbandonBatch() noexcept {}
};

inline constexpr std::string_view kDriverId = "Orvalis.Weather";
inline constexpr std::string_view kDriverDescription = "Orvalis";
inline constexpr std::string_view kDeviceType = "Weather";

}  // namespace orvalis
