#include "ui/controls/form_section.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>

#include "ui/controls/live_note.h"
#include "ui/controls/night_proof.h"
#include "ui/controls/path_button.h"
#include "ui/controls/quiet_combo_box.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

// Columns of the grid: label, control, unit, and what is left over. The rows of alerts have more.
constexpr int kLabelColumn = 0;
constexpr int kControlColumn = 1;
constexpr int kUnitColumn = 2;
constexpr int kRestColumn = 3;
constexpr int kColumns = 7;

int FieldWidth(const QWidget& field, FormSection::Width width) {
  const char* widest = width == FormSection::Width::kNumber ? "00000.000" : "-0.000000000000";
  constexpr int kFrame = 16;
  return field.fontMetrics().horizontalAdvance(widest) + kFrame;
}

/// As a screen reader says it.
QString PlainLabel(QString label) { return label.remove('&'); }

}  // namespace

FormSection::FormSection(const QString& title, QBoxLayout* column) {
  auto* box = new QGroupBox(title);
  grid_ = new QGridLayout(box);
  grid_->setColumnStretch(kRestColumn, 1);
  grid_->setVerticalSpacing(4);
  column->addWidget(box);
}

QLabel* FormSection::Field(const char* name, const QString& label, const QString& unit, const QString& tip,
                           Width width) {
  auto* field = new NightProof<QLineEdit>;
  field->setObjectName(name);
  field->setAlignment(Qt::AlignRight);
  field->setToolTip(tip);
  field->setFixedWidth(FieldWidth(*field, width));
  LineUp(*field);
  auto* title = new QLabel(label);
  title->setBuddy(field);
  title->setToolTip(tip);
  grid_->addWidget(title, row_, kLabelColumn);
  grid_->addWidget(field, row_, kControlColumn);
  if (!unit.isEmpty()) grid_->addWidget(new QLabel(unit), row_, kUnitColumn);
  ++row_;
  grid_->addWidget(MakeRemark(QString(name) + kAdviceEnd), row_++, kControlColumn, 1, kColumns - kControlColumn);
  last_ = field;
  return title;
}

QLineEdit* FormSection::Text(const char* name, const QString& label) {
  auto* box = new NightProof<QLineEdit>;
  box->setObjectName(name);
  Control(label, box, {});
  return box;
}

QComboBox* FormSection::Choice(const char* name, const QString& label, const QStringList& rows, const QString& tip) {
  auto* list = new QuietComboBox;
  list->setObjectName(name);
  list->addItems(rows);
  LineUp(*list);
  Control(label, list, tip);
  return list;
}

QLabel* FormSection::MakeRemark(const QString& name) {
  auto* remark = new QLabel;
  remark->setObjectName(name);
  remark->setTextFormat(Qt::PlainText);
  remark->setWordWrap(true);
  QFont slanted = remark->font();
  slanted.setItalic(true);
  remark->setFont(slanted);
  remark->hide();
  return remark;
}

QCheckBox* FormSection::Check(const char* name, const QString& text, const QString& tip) {
  auto* box = new QCheckBox(text);
  box->setObjectName(name);
  box->setToolTip(tip);
  grid_->addWidget(box, row_++, kLabelColumn, 1, kColumns);
  last_ = box;
  return box;
}

QLabel* FormSection::Meaning(const QString& text) {
  auto* meaning = new QLabel(text);
  meaning->setWordWrap(true);
  meaning->setBuddy(last_);
  last_->setToolTip(text);  // screen readers tell it where a box has no description
  // Below the text of a check box.
  constexpr int kBesideMark = 6;
  const int mark = meaning->style()->pixelMetric(QStyle::PM_IndicatorWidth) + kBesideMark;
  meaning->setContentsMargins(mark, 0, 0, 4);
  grid_->addWidget(meaning, row_++, kLabelColumn, 1, kColumns);
  return meaning;
}

void FormSection::Explained(const char* name, const QString& text, const QString& meaning) {
  Check(name, text, {});
  Meaning(meaning);
}

void FormSection::Paragraph(const QString& text) { Note(text)->setWordWrap(true); }

LiveNote* FormSection::Live(const char* name, int fields) {
  auto* note = new LiveNote;
  note->setObjectName(name);
  // Each box has a row of its own and one for advice.
  const int first = row_ - 2 * fields;
  grid_->addWidget(note, first, kRestColumn, 2 * fields - 1, kColumns - kRestColumn, Qt::AlignVCenter);
  return note;
}

LiveNote* FormSection::Live(const char* name, const QString& label, const QString& tip) {
  auto* note = new LiveNote;
  note->setObjectName(name);
  LineUp(*note);
  Control(label, note, tip);
  return note;
}

void FormSection::LineUp(const QWidget& control) {
  grid_->setColumnMinimumWidth(kLabelColumn, control.fontMetrics().horizontalAdvance(Words::tr("Temperatures over: ")));
}

void FormSection::Checks(std::initializer_list<NamedBox> boxes) {
  auto* row = new QHBoxLayout;
  for (const NamedBox& named : boxes) {
    auto* box = new QCheckBox(named.text);
    box->setObjectName(named.name);
    box->setToolTip(named.tip);
    row->addWidget(box, 1);
  }
  grid_->addLayout(row, row_++, kLabelColumn, 1, kColumns);
}

void FormSection::Control(const QString& label, QWidget* control, const QString& tip) {
  auto* title = new QLabel(label);
  title->setBuddy(control);
  title->setToolTip(tip);
  if (!tip.isEmpty()) control->setToolTip(tip);
  if (auto* list = qobject_cast<QComboBox*>(control); list != nullptr && list->isEditable()) {
    list->lineEdit()->setAccessibleName(PlainLabel(label));
  }
  grid_->addWidget(title, row_, kLabelColumn);
  grid_->addWidget(control, row_++, kControlColumn, 1, kColumns - kControlColumn);
  last_ = control;
}

void FormSection::Row(std::initializer_list<QWidget*> controls) {
  auto* row = new QHBoxLayout;
  for (QWidget* control : controls) row->addWidget(control);
  row->addStretch(1);
  grid_->addLayout(row, row_++, kLabelColumn, 1, kColumns);
}

QLabel* FormSection::Note(const QString& text) {
  auto* note = new QLabel(text);
  grid_->addWidget(note, row_++, kLabelColumn, 1, kColumns);
  return note;
}

void FormSection::AlertRow(const QString& title, const AlertFile& sound, const AlertFile& program) {
  // This grid has no units to leave room for; the files share what there is.
  grid_->setColumnStretch(kRestColumn, 0);
  int column = kLabelColumn;
  auto* label = new QLabel(title + ":");
  // The boxes of all sections stand in one line.
  grid_->setColumnMinimumWidth(column, label->fontMetrics().horizontalAdvance(Words::tr("No readings:")));
  grid_->addWidget(label, row_, column++);
  struct Half {
    const AlertFile& names;
    QString text;
    QString tip;
    QString test_tip;
  };
  constexpr int kHalfColumns = 3;
  for (const Half& half :
       {Half{sound, Words::tr("Sound"), Words::tr("Played when it begins; ticking it asks for the file"),
             Words::tr("Plays this sound now")},
        Half{program, Words::tr("Program"), Words::tr("Started when it begins; ticking it asks for the file"),
             Words::tr("Starts this program now, with ORVALIS_TEST=1")}}) {
    auto* box = new QCheckBox(half.text);
    box->setObjectName(half.names.check_box);
    box->setToolTip(half.tip);
    box->setAccessibleName(title + ": " + half.text);
    auto* file = new PathButton(PathButton::Shows::kName);
    file->setObjectName(half.names.file);
    file->setAccessibleName(Words::tr("%1: %2 file").arg(title, half.text));
    auto* test = new QPushButton(Words::tr("Test"));
    test->setObjectName(QString(half.names.file) + kTestEnd);
    test->setAccessibleName(Words::tr("%1: %2 test").arg(title, half.text));
    test->setToolTip(half.test_tip);
    test->setAutoDefault(false);
    constexpr int kMargins = 18;
    test->setFixedWidth(test->fontMetrics().horizontalAdvance(test->text()) + kMargins);
    grid_->addWidget(MakeRemark(QString(half.names.file) + kResultEnd), row_ + 1, column, 1, kHalfColumns);
    grid_->addWidget(box, row_, column++);
    grid_->addWidget(file, row_, column);
    grid_->setColumnStretch(column++, 1);
    grid_->addWidget(test, row_, column++);
  }
  row_ += 2;
}

}  // namespace orvalis
