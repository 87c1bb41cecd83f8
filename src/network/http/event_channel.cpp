#include "network/http/event_channel.h"

namespace orvalis::network {

std::string EventChannel::Format(std::string_view data) {
  std::string bytes;
  for (bool more = true; more;) {
    const std::string_view line = data.substr(0, data.find('\n'));
    more = line.size() < data.size();
    data.remove_prefix(line.size() + (more ? 1 : 0));
    bytes.append("data: ").append(line).append("\n");
  }
  return bytes.append("\n");
}

}  // namespace orvalis::network
