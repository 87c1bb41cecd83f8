#include "platform/linux/serial_port_list.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSerialPortInfo>
#include <QStringList>

namespace orvalis {

std::vector<SerialPortEntry> ListSerialPorts() {
  QHash<QString, QString> lasting_names;
  const QDir by_id("/dev/serial/by-id");
  for (const QFileInfo& link : by_id.entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
    lasting_names.insert(link.canonicalFilePath(), link.absoluteFilePath());
  }
  std::vector<SerialPortEntry> ports;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    const QString device = port.systemLocation();
    const QString name = lasting_names.value(device, device);
    QStringList about{port.manufacturer(), port.description()};
    about.removeAll("");
    if (name != device) about << QFileInfo(device).fileName();
    ports.push_back({.name = name.toStdString(), .description = about.join(", ").toStdString()});
  }
  return ports;
}

}  // namespace orvalis
