#pragma once

namespace orvalis {

/// The driver platform's utility object, which every driver of that platform holds while it runs. Where there is no
/// such platform, a stand-in does nothing.
class UtilityObject {
 public:
  virtual ~UtilityObject() = default;
  /// Throws RunTimeError when the platform has the object and cannot make it.
  virtual void Create() = 0;
  virtual void Release() noexcept = 0;
};

/// For systems without that platform.
class NoUtilityObject : public UtilityObject {
 public:
  void Create() override {}
  void Release() noexcept override {}
};

}  // namespace orvalis
