#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "network/http/http_message.h"

namespace orvalis::network {

/// Something that can be asked for.
struct Resource {
  using Handler = std::function<HttpResponse(const HttpRequest& request)>;

  std::string path;       ///< in full, or, ending in "*", the beginning of those that no other resource has
  Handler get = {};       ///< none: cannot be read
  Handler put = {};       ///< none: cannot be written
  std::string help = {};  ///< for a person, one line; "" keeps it out of the list
  /// Pages of the origin that the settings name may read it.
  bool shared = false;
};

/// The table of all resources.
class Resources {
 public:
  void Add(Resource resource);

  /// The resource for `path`; null when there is none.
  [[nodiscard]] const Resource* Find(std::string_view path) const;
  /// The answer to `request`. What a handler throws goes through.
  [[nodiscard]] HttpResponse Answer(const HttpRequest& request) const;

  /// The methods of `resource`, for the field "Allow".
  [[nodiscard]] static std::string Methods(const Resource& resource);
  /// All resources with their help, a line each.
  [[nodiscard]] std::string Help() const;
  [[nodiscard]] std::vector<const Resource*> All() const;

 private:
  std::map<std::string, Resource, std::less<>> exact_;
  std::vector<Resource> prefixes_;
};

}  // namespace orvalis::network
