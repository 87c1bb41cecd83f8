#pragma once

#include <QWidget>
#include <vector>

#include "publish/http_request.h"
#include "ui/controls/night_proof.h"

class QLineEdit;
class QVBoxLayout;

namespace orvalis {

/// Rows of a name and a value each, as many as the user wants.
class RowsEditor : public QWidget, public NightAware {
  Q_OBJECT
 public:
  /// `name` begins the object names of the controls: "Header" gives "cmdAddHeader", and "txtHeaderName" and
  /// "txtHeaderValue" to each row. `add_text` is the button that adds one.
  RowsEditor(const QString& name, const QString& add_text, QWidget* parent = nullptr);

  [[nodiscard]] std::vector<RequestRow> Rows() const;
  /// For the rows that are added later; those that are there are told themselves.
  void SetNight(bool night) override { night_ = night; }

 signals:
  void Changed();

 private:
  struct Row {
    QWidget* box;
    QLineEdit* name;
    QLineEdit* value;
  };

  void Add();
  void Remove(QWidget* box);

  QString name_;
  bool night_ = false;
  QVBoxLayout* column_;
  std::vector<Row> rows_;
};

}  // namespace orvalis
