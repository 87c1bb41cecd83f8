#include "ui/publishing/rows_editor.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace orvalis {

RowsEditor::RowsEditor(const QString& name, Texts texts, QWidget* parent)
    : QWidget(parent), name_(name), texts_(std::move(texts)) {
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  column_ = new QVBoxLayout;
  column_->setSpacing(4);
  outer->addLayout(column_);
  auto* add = new QPushButton(texts_.add);
  add->setObjectName("cmdAdd" + name_);
  add->setAutoDefault(false);
  outer->addWidget(add, 0, Qt::AlignLeft);
  connect(add, &QPushButton::clicked, this, &RowsEditor::Add);
}

std::vector<RequestRow> RowsEditor::Rows() const {
  std::vector<RequestRow> rows;
  for (const Row& row : rows_) rows.push_back({row.name->text().toStdString(), row.value->text().toStdString()});
  return rows;
}

void RowsEditor::Add() {
  auto* box = new QWidget;
  auto* line = new QHBoxLayout(box);
  line->setContentsMargins(0, 0, 0, 0);
  const auto edit = [&](const char* suffix, const QString& hint, const QString& spoken, int stretch) {
    auto* made = new NightProof<QLineEdit>;
    made->setObjectName("txt" + name_ + suffix);
    made->setPlaceholderText(hint);
    made->setAccessibleName(spoken);
    made->SetNight(night_);
    connect(made, &QLineEdit::textEdited, this, &RowsEditor::Changed);
    line->addWidget(made, stretch);
    return made;
  };
  //: Grey in the empty boxes of a row: the name of a variable or header, and its value.
  const Row row{.box = box,
                .name = edit("Name", tr("name"), texts_.name, 2),
                .value = edit("Value", tr("value"), texts_.value, 3)};
  auto* remove = new QPushButton(tr("Remove"));
  remove->setObjectName("cmdRemove" + name_);
  remove->setAutoDefault(false);
  connect(remove, &QPushButton::clicked, this, [this, box] { Remove(box); });
  line->addWidget(remove);
  column_->addWidget(box);
  rows_.push_back(row);
  row.name->setFocus();
}

void RowsEditor::Remove(QWidget* box) {
  std::erase_if(rows_, [box](const Row& row) { return row.box == box; });
  column_->removeWidget(box);
  box->hide();
  box->deleteLater();  // its button is being clicked
  emit Changed();
}

}  // namespace orvalis
