#pragma once

#include <memory>
#include <string>
#include <vector>

#include "network/http/sockets.h"

namespace orvalis {

/// Connections and datagrams over Qt's sockets, on the one event loop.
class QtSockets : public network::Sockets {
 public:
  [[nodiscard]] std::unique_ptr<network::Listener> Listen(const std::string& address, std::uint16_t port,
                                                          Accept accept) override;
  [[nodiscard]] std::unique_ptr<network::DatagramListener> AnswerDatagrams(const SharedPort& port,
                                                                           Answer answer) override;
  [[nodiscard]] std::string MachineName() const override;
  [[nodiscard]] std::vector<std::string> MachineAddresses() const override;
};

}  // namespace orvalis
