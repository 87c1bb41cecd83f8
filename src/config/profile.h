#pragma once

#include <string>
#include <string_view>

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
