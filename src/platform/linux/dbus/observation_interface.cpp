#include "platform/linux/dbus/observation_interface.h"

#include <QStringList>
#include <array>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvalis {
namespace {

/// The types on the bus, in the order of the alternatives.
constexpr std::array<const char*, std::variant_size_v<ObservationValue>> kSignatures{"b", "x", "d", "s", "as", "a{sv}"};

QString Text(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

}  // namespace

QString IntrospectObservation() {
  QString xml = "  <interface name=\"" + kObservationInterface + "\">\n";
  for (const ObservationMember& member : ObservationMembers()) {
    xml += "    <property name=\"" + Text(member.name) + "\" type=\"" + kSignatures.at(member.read({}).index()) +
           "\" access=\"read\"";
    xml += member.steady ? "/>\n"
                         : ">\n"
                           "      <annotation name=\"org.freedesktop.DBus.Property.EmitsChangedSignal\" "
                           "value=\"false\"/>\n"
                           "    </property>\n";
  }
  return xml + "  </interface>\n";
}

const ObservationMember* FindObservationMember(const QString& name) {
  for (const ObservationMember& member : ObservationMembers()) {
    if (Text(member.name) == name) return &member;
  }
  return nullptr;
}

QVariant BusValue(const ObservationMember& member, const Observation& now) {
  struct Convert {
    QVariant operator()(bool flag) const { return flag; }
    QVariant operator()(std::int64_t number) const { return QVariant::fromValue<qlonglong>(number); }
    QVariant operator()(double number) const { return number; }
    QVariant operator()(const std::string& text) const { return Text(text); }
    QVariant operator()(const std::vector<std::string_view>& names) const {
      QStringList list;
      for (const std::string_view name : names) list << Text(name);
      return list;
    }
    QVariant operator()(const std::vector<NamedValue>& values) const {
      QVariantMap map;
      for (const NamedValue& value : values) map.insert(Text(value.name), value.value);
      return map;
    }
  };
  return std::visit(Convert{}, member.read(now));
}

QVariantMap BusValues(const Observation& now) {
  QVariantMap values;
  for (const ObservationMember& member : ObservationMembers()) values.insert(Text(member.name), BusValue(member, now));
  return values;
}

}  // namespace orvalis
