#pragma once

#include <QComboBox>
#include <QWheelEvent>

#include "ui/controls/night_proof.h"

namespace orvalis {

/// A list box that the wheel does not change: scrolling the page with the pointer over it must not choose another row.
class QuietComboBox : public NightProof<QComboBox> {
 public:
  using NightProof<QComboBox>::NightProof;

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

}  // namespace orvalis
