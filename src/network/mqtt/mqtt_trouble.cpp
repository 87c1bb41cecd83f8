#include <string>

#include "network/mqtt/mqtt_client.h"

namespace orvalis::network {
namespace {

/// In each, %1 is the broker's place and %2 what was found out besides.
Message::Text Pattern(MqttFailure failure, bool has_user) {
  switch (failure) {
    case MqttFailure::kNameNotFound:
      return Message::Text("the name \"%2\" was not found");
    case MqttFailure::kUnreachable:
      return Message::Text("%1 cannot be reached: %2");
    case MqttFailure::kNoAnswer:
      return Message::Text("no answer from %1");
    case MqttFailure::kClosed:
      return Message::Text("%1 ended the connection");
    case MqttFailure::kBadLogin:
      return has_user ? Message::Text("%1 does not accept the user name and password")
                      : Message::Text("%1 wants a user name and a password");
    case MqttFailure::kNotPermitted:
      return Message::Text("%1 does not permit it");
    case MqttFailure::kRefused:
      return Message::Text("%1 refuses: %2");
    case MqttFailure::kCertificate:
      return Message::Text("the certificate of %1 is not from an authority that is trusted here, or is not valid now");
    case MqttFailure::kWrongName:
      return Message::Text("the certificate of %1 is for another name");
    case MqttFailure::kCaFile:
      return Message::Text("the CA file \"%2\" cannot be used");
    case MqttFailure::kNoTlsThere:
      return Message::Text("no encrypted line to %1: %2");
    case MqttFailure::kNoTlsHere:
      return Message::Text("this version of the program cannot use TLS; nothing is sent unencrypted in its place");
    case MqttFailure::kPlainPassword:
      return Message::Text(
          "the password would go to another machine over an unencrypted line: use TLS, or allow it in the settings");
    case MqttFailure::kNameTaken:
      return Message::Text(
          "another program (%2) publishes under the same name on %1: give one of the two another station name");
    case MqttFailure::kOther:
      break;
  }
  return Message::Text("");
}

std::string Detail(const MqttTrouble& trouble, const MqttAccess& access) {
  if (trouble.failure == MqttFailure::kNameNotFound) return access.host;
  return trouble.failure == MqttFailure::kCaFile ? access.ca_file : trouble.detail;
}

}  // namespace

Message Explain(const MqttTrouble& trouble, const MqttAccess& access) {
  if (trouble.failure == MqttFailure::kOther) return trouble.detail;
  return Pattern(trouble.failure, !access.user.empty())
      .With(access.host + ":" + std::to_string(access.port), Detail(trouble, access));
}

}  // namespace orvalis::network
