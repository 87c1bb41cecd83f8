#pragma once

#include <QWidget>
#include <vector>

#include "publish/http_request.h"
#include "ui/controls/night_proof.h"

class QLineEdit;
class QVBoxLayout;

namespace orvalis {

/// An editable list of name and value pairs.
class RowsEditor : public QWidget, public NightAware {
  Q_OBJECT
 public:
  /// The button that adds a row, and the boxes' names for screen readers.
  struct Texts {
    QString add;
    QString name;
    QString value;
  };
  /// `name` begins the object names of the controls: "Header" gives "cmdAddHeader", and "txtHeaderName" and
  /// "txtHeaderValue" to each row.
  RowsEditor(const QString& name, Texts texts, QWidget* parent = nullptr);

  [[nodiscard]] std::vector<RequestRow> Rows() const;
  /// For rows added later; existing ones are called themselves.
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
  Texts texts_;
  bool night_ = false;
  QVBoxLayout* column_;
  std::vector<Row> rows_;
};

}  // namespace orvalis
