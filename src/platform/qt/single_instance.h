#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QString>
#include <chrono>
#include <functional>

namespace orvalis {

/// One program for each profile and user: two would both write its settings and fight over the unit.
class SingleInstance {
 public:
  enum class Start {
    kFirst,               ///< this program may run
    kPanelRaised,         ///< another one runs and has brought its panel to the front
    kOtherIsHeadless,     ///< another one runs headless
    kOtherNotResponding,  ///< another one runs and did not answer
    kNameIsTaken,         ///< another one runs and cannot be asked: another user has the name that it would answer at
  };

  explicit SingleInstance(const QString& profile_folder);

  /// Takes the place of the one program, or asks the one that has it to come to the front.
  [[nodiscard]] Start Claim();
  /// Takes the place as soon as it is free. Returns whether that was within `patience`; nobody is asked for anything.
  [[nodiscard]] bool ClaimWithin(std::chrono::milliseconds patience);

  /// Why a second start will not be able to ask for the panel, for a person; empty when it can. To be asked after the
  /// place was taken.
  [[nodiscard]] const QString& problem() const { return problem_; }

  /// What to do when a second start asks; it returns whether there is a panel.
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
