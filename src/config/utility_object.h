#pragma once

namespace orvalis {

/// The driver platform's utility object, which every driver holds while it runs. Systems without that platform use a
/// stand-in that does nothing.
class UtilityObject {
 public:
  virtual ~UtilityObject() = default;
  /// Throws RunTimeError when the platform has the object but cannot create it.
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
