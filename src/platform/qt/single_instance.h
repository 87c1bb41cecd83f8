#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QString>
#include <chrono>
#include <functional>

namespace orvalis {

/// Ensures one program per profile and user: two would both write its settings and compete for the unit.
class SingleInstance {
 public:
  enum class Start {
    kFirst,               ///< this program may run
    kPanelRaised,         ///< another one is running and has raised its panel
    kOtherIsHeadless,     ///< another one is running headless
    kOtherNotResponding,  ///< another one is running and did not answer
    kNameIsTaken,         ///< another one is running and cannot be contacted: another user has its socket name
  };

  explicit SingleInstance(const QString& profile_folder);

  /// Claims the profile, or asks the program that has it to raise its panel.
  [[nodiscard]] Start Claim();
  /// Claims the profile as soon as it is free, without contacting the other program. False when `patience` runs out.
  [[nodiscard]] bool ClaimWithin(std::chrono::milliseconds patience);

  /// Why a second start cannot raise the panel, as a text for the user; empty when it can. Valid after a claim.
  [[nodiscard]] const QString& problem() const { return problem_; }

  /// Called when a second start asks for the panel; returns whether there is one.
  void OnActivate(std::function<bool()> bring_to_front) { bring_to_front_ = std::move(bring_to_front); }

 private:
  [[nodiscard]] bool Lock(std::chrono::milliseconds patience);
  [[nodiscard]] Start ContactRunning() const;
  void RemoveLeftovers() const;
  void Listen();
  void Answer();

  QString socket_name_;
  QLockFile lock_;
  QLocalServer server_;
  QString problem_;
  std::function<bool()> bring_to_front_;
};

}  // namespace orvalis
