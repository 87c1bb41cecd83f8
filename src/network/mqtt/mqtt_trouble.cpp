#include <string_view>

#include "network/mqtt/mqtt_client.h"

namespace orvalis::network {
namespace {

std::string_view Pattern(MqttFailure failure, bool has_user) {
  switch (failure) {
    case MqttFailure::kNameNotFound:
      return "the name \"%H\" was not found";
    case MqttFailure::kUnreachable:
      return "%P cannot be reached: %D";
    case MqttFailure::kNoAnswer:
      return "no answer from %P";
    case MqttFailure::kClosed:
      return "%P ended the connection";
    case MqttFailure::kBadLogin:
      return has_user ? "%P does not accept the user name and password" : "%P wants a user name and a password";
    case MqttFailure::kNotPermitted:
      return "%P does not permit it";
    case MqttFailure::kRefused:
      return "%P refuses: %D";
    case MqttFailure::kCertificate:
      return "the certificate of %P is not from an authority that is trusted here, or is not valid now";
    case MqttFailure::kWrongName:
      return "the certificate of %P is for another name";
    case MqttFailure::kCaFile:
      return "the CA file \"%C\" cannot be used";
    case MqttFailure::kNoTlsThere:
      return "no encrypted line to %P: %D";
    case MqttFailure::kNoTlsHere:
      return "this version of the program cannot use TLS; nothing is sent unencrypted in its place";
    case MqttFailure::kPlainPassword:
      return "the password would go to another machine over an unencrypted line: use TLS, or allow it in the settings";
    case MqttFailure::kNameTaken:
      return "another program (%D) publishes under the same name on %P: give one of the two another station name";
    case MqttFailure::kOther:
      return "%D";
  }
  return "";
}

}  // namespace

std::string Explain(const MqttTrouble& trouble, const MqttAccess& access) {
  std::string text;
  const std::string_view pattern = Pattern(trouble.failure, !access.user.empty());
  for (std::size_t at = 0; at < pattern.size(); ++at) {
    if (pattern[at] != '%') {
      text += pattern[at];
      continue;
    }
    switch (pattern[++at]) {
      case 'H':
        text += access.host;
        break;
      case 'P':
        text += access.host + ":" + std::to_string(access.port);
        break;
      case 'C':
        text += access.ca_file;
        break;
      default:
        text += trouble.detail;
    }
  }
  return text;
}

}  // namespace orvalis::network
