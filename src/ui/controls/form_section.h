#pragma once

#include <QString>
#include <QStringList>
#include <initializer_list>

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QWidget;

namespace orvalis {

class LiveNote;

/// Fills one titled section of a page of the setup dialog, row by row from the top. The controls get their object
/// names and belong to the page; "&" in a label makes a key for its control.
class FormSection {
 public:
  enum class Width { kNumber, kCoefficient };
  struct NamedBox {
    const char* name;
    QString text;
    QString tip = {};
  };
  struct AlertFile {
    const char* check_box;
    const char* file;
  };

  FormSection(const QString& title, QBoxLayout* column);

  /// Ends the object name of a text box's label for advice.
  static constexpr const char* kAdviceEnd = "Advice";

  /// End the object names of the button that tries out an alert's file, and of the label for what came of it.
  static constexpr const char* kTestEnd = "Test";
  static constexpr const char* kResultEnd = "Result";

  /// A text box for a number, with a hidden label below it for advice; returns the label in front of it.
  QLabel* Field(const char* name, const QString& label, const QString& unit, const QString& tip,
                Width width = Width::kNumber);
  /// A text box for a text, as wide as there is room.
  QLineEdit* Text(const char* name, const QString& label);
  /// A list to choose a row from.
  QComboBox* Choice(const char* name, const QString& label, const QStringList& rows, const QString& tip);
  QCheckBox* Check(const char* name, const QString& text, const QString& tip);
  /// What the last box means, below it.
  QLabel* Meaning(const QString& text);
  /// A check box with its meaning below it.
  void Explained(const char* name, const QString& text, const QString& meaning);
  /// A text over the whole width.
  void Paragraph(const QString& text);
  /// A note on a value of now beside the last `fields` text boxes.
  LiveNote* Live(const char* name, int fields);
  /// The same in a row of its own, in line with the boxes.
  LiveNote* Live(const char* name, const QString& label, const QString& tip);
  /// Check boxes side by side.
  void Checks(std::initializer_list<NamedBox> boxes);
  /// A control that takes what width there is.
  void Control(const QString& label, QWidget* control, const QString& tip);
  /// Controls side by side.
  void Row(std::initializer_list<QWidget*> controls);
  QLabel* Note(const QString& text);
  /// What is done about one condition: a sound and a program, each with a button that tries it out and a hidden label
  /// below for what came of that.
  void AlertRow(const QString& title, const AlertFile& sound, const AlertFile& program);

 private:
  /// The boxes of all sections stand in one line.
  void LineUp(const QWidget& control);
  /// A hidden label below a control, for a remark on it.
  static QLabel* MakeRemark(const QString& name);

  QGridLayout* grid_;
  int row_ = 0;
  QWidget* last_ = nullptr;  ///< the last box that one can set
};

}  // namespace orvalis
