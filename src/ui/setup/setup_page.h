#pragma once

#include <QString>
#include <QVBoxLayout>

class QScrollArea;

namespace orvalis {

/// A page of the setup dialog, which scrolls: sections one below the other, in one column, or in two where there is
/// room for them.
struct SetupPage {
  enum class Columns { kOne, kTwo };

  QScrollArea* scroll;
  QVBoxLayout* left;
  QVBoxLayout* right;  ///< null with one column

  /// To be called when all sections are there: they stay at the top.
  void Finish() const;
};

/// `frame_name` is the object name of the frame around the controls, `title` its name for screen readers.
[[nodiscard]] SetupPage MakeSetupPage(const char* frame_name, const QString& title, SetupPage::Columns columns);

}  // namespace orvalis
