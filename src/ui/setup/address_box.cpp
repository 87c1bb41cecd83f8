#include "ui/setup/address_box.h"

#include <QHostAddress>
#include <QLineEdit>

#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

struct Choice {
  const char* text;
  const char* address;
};
constexpr Choice kChoices[] = {
    //: Of the machine's network addresses.
    {QT_TRANSLATE_NOOP("orvalis::Words", "This machine only"), "127.0.0.1"},
    {QT_TRANSLATE_NOOP("orvalis::Words", "All interfaces"), "0.0.0.0"},
    {QT_TRANSLATE_NOOP("orvalis::Words", "All interfaces, IPv6 too"), "::"},
};

}  // namespace

AddressBox::AddressBox(QWidget* parent) : QuietComboBox(parent) {
  setEditable(true);
  setLineEdit(new NightProof<QLineEdit>(this));
  setInsertPolicy(NoInsert);
  setCompleter(nullptr);
  setFocusPolicy(Qt::StrongFocus);
  for (const Choice& choice : kChoices) addItem(Words::tr(choice.text), QString(choice.address));
}

void AddressBox::SetAddress(const std::string& address) {
  const int index = findData(ToQString(address));
  setCurrentIndex(index);
  // Always: a row that is chosen already does not replace what was typed.
  setEditText(index < 0 ? ToQString(address) : itemText(index));
}

std::string AddressBox::address() const {
  const QString text = currentText().trimmed();
  const int index = findText(text);
  return (index < 0 ? text : itemData(index).toString()).toStdString();
}

QString AddressBox::Meaning() const {
  const QHostAddress host(ToQString(address()));
  if (host.isNull()) return Words::tr("↑ Not an address: nothing would be served there");
  if (host.isLoopback()) return Words::tr("Only programs on this machine can read.");
  return Words::tr("Everybody on the network can read; nothing can be changed from there.");
}

}  // namespace orvalis
