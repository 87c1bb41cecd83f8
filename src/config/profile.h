#pragma once

#include <string>
#include <string_view>

#include "config/store_rules.h"

namespace orvalis {

/// The platform's settings store: one text for each (driver ID, name, subkey). Every operation throws RunTimeError when
/// the store fails; the description names the store and the reason.
class Profile {
 public:
  virtual ~Profile() = default;

  /// Set once, before anything else.
  virtual void SetDeviceType(std::string_view type) = 0;
  virtual void Register(std::string_view driver_id, std::string_view description) = 0;
  /// The stored text, or "".
  [[nodiscard]] virtual std::string GetValue(std::string_view driver_id, std::string_view name,
                                             std::string_view subkey) = 0;
  /// The value is on disk when this returns.
  virtual void WriteValue(std::string_view driver_id, std::string_view name, std::string_view value,
                          std::string_view subkey) = 0;

  /// Why the store counts as destroyed, or "". Changes nothing.
  [[nodiscard]] virtual std::string Fault(const StoreRules& /*rules*/) { return {}; }
  /// From now on the store keeps a backup copy, updated at each write. A destroyed store is set aside and replaced by
  /// its copy, or by an empty store when there is no good one; either way a notice is stored under `notice_key`. While
  /// the disk is not writable this holds in memory. False for a platform's own store, which does none of this.
  virtual bool KeepSafe(const StoreRules& /*rules*/) { return false; }

  /// Writes that belong together. Where the store supports it they are applied atomically by `Commit`; otherwise each
  /// is written at once.
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

  /// The location of the store, for a person: a file path or a registry key.
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
