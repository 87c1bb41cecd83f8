#include <string>

#include "network/mqtt/mqtt_client.h"

namespace orvalis::network {
namespace {

/// In each, %1 is the broker's place and %2 what was found out besides.
Phrase Pattern(MqttFailure failure, bool has_user) {
  switch (failure) {
    case MqttFailure::kNameNotFound:
      return Message::Of("the name \"%2\" was not found");
    case MqttFailure::kUnreachable:
      return Message::Of("%1 cannot be reached: %2");
    case MqttFailure::kNoAnswer:
      return Message::Of("no answer from %1");
    case MqttFailure::kClosed:
      return Message::Of("%1 ended the connection");
    case MqttFailure::kBadLogin:
      return has_user ? Message::Of("%1 does not accept the user name and password")
                      : Message::Of("%1 wants a user name and a password");
    case MqttFailure::kNotPermitted:
      return Message::Of("%1 does not permit it");
    case MqttFailure::kRefused:
      return Message::Of("%1 refuses: %2");
    case MqttFailure::kCertificate:
      return Message::Of("the certificate of %1 is not from an authority that is trusted here, or is not valid now");
    case MqttFailure::kWrongName:
      return Message::Of("the certificate of %1 is for another name");
    case MqttFailure::kCaFile:
      return Message::Of("the CA file \"%2\" cannot be used");
    case MqttFailure::kNoTlsThere:
      return Message::Of("no encrypted line to %1: %2");
    case MqttFailure::kNoTlsHere:
      return Message::Of("this version of the program cannot use TLS; nothing is sent unencrypted in its place");
    case MqttFailure::kPlainPassword:
      return Message::Of(
          "the password would go to another machine over an unencrypted line: use TLS, or allow it in the settings");
    case MqttFailure::kNameTaken:
      return Message::Of(
          "another program (%2) publishes under the same name on %1: give one of the two another station name");
    case MqttFailure::kOther:
      break;
  }
  return Message::Of("");
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
