#include "network/http/resources.h"

#include <algorithm>
#include <utility>

namespace orvalis::network {
namespace {

std::string_view Stem(const Resource& resource) {
  return std::string_view(resource.path).substr(0, resource.path.size() - 1);
}

}  // namespace

void Resources::Add(Resource resource) {
  if (resource.path.ends_with('*')) {
    prefixes_.push_back(std::move(resource));
  } else {
    std::string path = resource.path;
    exact_.insert_or_assign(std::move(path), std::move(resource));
  }
}

const Resource* Resources::Find(std::string_view path) const {
  if (const auto found = exact_.find(path); found != exact_.end()) return &found->second;
  const auto found =
      std::ranges::find_if(prefixes_, [&](const Resource& resource) { return path.starts_with(Stem(resource)); });
  return found == prefixes_.end() ? nullptr : &*found;
}

HttpResponse Resources::Answer(const HttpRequest& request) const {
  const Resource* const resource = Find(request.path);
  if (resource == nullptr) return TextAnswer(kNotFound, "There is nothing here. The list of what there is: /help");
  switch (request.method) {
    case Method::kGet:
    case Method::kHead:
      if (resource->get) return resource->get(request);
      break;
    case Method::kPut:
      if (resource->put) return resource->put(request);
      break;
    case Method::kOptions:
      return {.status = kNoContent, .headers = {{"Allow", Methods(*resource)}}};
    case Method::kOther:
      break;
  }
  HttpResponse refusal =
      TextAnswer(kMethodNotAllowed, "This is not how it is asked for. It takes " + Methods(*resource));
  refusal.headers.emplace_back("Allow", Methods(*resource));
  return refusal;
}

std::string Resources::Methods(const Resource& resource) {
  std::string methods = "OPTIONS";
  if (resource.put) methods = "PUT, " + methods;
  if (resource.get) methods = "GET, HEAD, " + methods;
  return methods;
}

std::vector<const Resource*> Resources::All() const {
  std::vector<const Resource*> all;
  for (const auto& entry : exact_) all.push_back(&entry.second);
  for (const Resource& resource : prefixes_) all.push_back(&resource);
  return all;
}

std::string Resources::Help() const {
  std::string text;
  for (const Resource* const resource : All()) {
    if (resource->help.empty()) continue;
    const char* const methods = resource->get ? (resource->put ? "GET PUT " : "GET     ") : "PUT     ";
    text.append(methods).append(resource->path).append("  ").append(resource->help).append("\n");
  }
  return text;
}

}  // namespace orvalis::network
