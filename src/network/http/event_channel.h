#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvalis::network {

/// What a stream of server-sent events carries. Everyone who reads the stream gets every event published while they do.
class EventChannel {
 public:
  /// A connection that reads the stream.
  class Reader {
   public:
    /// `bytes` are complete events. The reader drops itself when it cannot keep up, and does not leave meanwhile.
    virtual void Push(std::string_view bytes) = 0;

   protected:
    ~Reader() = default;
  };

  EventChannel() = default;
  EventChannel(const EventChannel&) = delete;
  EventChannel& operator=(const EventChannel&) = delete;

  /// Sends an event of the default kind to all readers.
  void Publish(std::string_view data) {
    if (readers_.empty()) return;
    const std::string bytes = Format(data);
    for (Reader* const reader : readers_) reader->Push(bytes);
  }
  /// Whether anyone reads, so that there is a point in making an event.
  [[nodiscard]] bool HasReaders() const { return !readers_.empty(); }

  /// One event on the wire, each line of `data` in a field of its own.
  [[nodiscard]] static std::string Format(std::string_view data);

  void Join(Reader& reader) { readers_.push_back(&reader); }
  void Leave(Reader& reader) { std::erase(readers_, &reader); }

 private:
  std::vector<Reader*> readers_;
};

}  // namespace orvalis::network
